#include "link/grabacion.h"

#include <functional>
#include <optional>

#include "link/grabacion_iva.h"
#include "link/grabacion_lineas.h"
#include "link/moneda_sesion.h"

namespace tarvoline::link {

namespace {

std::string textoDeError(const ErrorAplazado& error) {
    switch (error.numero) {
        case error_enlace::errorEnIva:
            return "\nSe produjo un error en el cálculo del IVA/IGIC"
                   "Se ha grabado el apunte, pero debe comprobar el Tipo, la Base y el Total";
        case error_enlace::analiticaSinApunte:
            return "Hay datos para grabar analítica en la cuenta: " + error.texto +
                   " pero no hay un apunte contable con esa cuenta, o no es una cuenta de analitica";
        case error_enlace::tipoIvaNoExiste:
            return "Se ha pasado al servidor OLE un tipo de Iva que no existe: " + error.texto;
        default:
            return "Solo se puede importar archivos PDF";
    }
}

// Each step has a guard of its own: what fails empties the pending collections, so that the lines behind it
// are not stored, and the next step runs. Only the first failure is shown.
class Pasos {
  public:
    explicit Pasos(Sesion& sesion) : sesion_(sesion) {}

    void operator()(std::string_view cual, const std::function<void()>& paso) {
        try {
            paso();
        } catch (const std::exception& error) {
            sesion_.pendientes.vaciar();
            contar(std::string(cual) + ": " + error.what());
        }
    }

  private:
    void contar(const std::string& fallo) {
        const data::CapaDatos& datos = sesion_.contexto.datos;
        datos.avisar(fallo);
        if (!contado_ && datos.alMostrar) datos.mostrar({.texto = fallo, .icono = core::Icono::exclamacion});
        contado_ = true;
    }

    Sesion& sesion_;
    bool contado_ = false;
};

}  // namespace

std::int32_t Grabacion::GrabarAsiento() {
    if (!sesion_.pendientes.HayPendientes) return 0;
    ErrorAplazado aplazado;
    grabarLineas(aplazado);
    sesion_.LimpiarPendientes();
    if (aplazado.numero != 0) throw ErrorEnlace(aplazado.numero, textoDeError(aplazado));
    return 0;
}

// The tables are closed again when it returns.
void Grabacion::grabarLineas(ErrorAplazado& aplazado) {
    const Pendientes& pendientes = sesion_.pendientes;
    Pasos paso(sesion_);
    std::optional<TablasAbiertas> abiertas;
    paso("AbrirTablasEmpresa", [&] { abiertas.emplace(sesion_); });
    if (!abiertas) return;
    AsientoEnCurso asiento(sesion_);
    paso("Moneda", [&] { MonedaSesion(sesion_).resolver(); });
    paso("EXTRA", [&] {
        for (const auto& linea : pendientes.apuntes)
            grabarApunte(asiento, *linea);
    });
    paso("IVA01", [&] {
        if (pendientes.ivas.vacia()) return;
        GrabacionIva iva(asiento);
        for (const auto& linea : pendientes.ivas)
            iva.grabar(*linea);
    });
    paso("EFECT", [&] {
        for (const auto& linea : pendientes.carteras)
            grabarCartera(asiento, *linea);
    });
    paso("Anali", [&] {
        for (const auto& linea : pendientes.analiticas)
            grabarAnalitica(asiento, *linea);
    });
    aplazado = asiento.aplazado;
}

}  // namespace tarvoline::link
