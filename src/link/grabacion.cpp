#include "link/grabacion.h"

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

// A step that fails empties the collection: its lines end there.
template <typename Linea, typename Grabar>
void cadaUna(const Coleccion<Linea>& lineas, Grabar&& grabar) {
    for (std::int32_t i = 1; i <= lineas.contar(); ++i) {
        const auto linea = lineas(i);
        grabar(*linea);
    }
}

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
    Pasos paso(sesion_);
    std::optional<TablasAbiertas> abiertas;
    entera_ = false;
    paso("AbrirTablasEmpresa", [&] { abiertas.emplace(sesion_); });
    if (!abiertas) return;
    AsientoEnCurso asiento(sesion_, paso);
    paso("Moneda", [&] { MonedaSesion(sesion_).resolver(); });
    paso("EXTRA", [&] {
        cadaUna(sesion_.pendientes.apuntes, [&](const auto& linea) { grabarApunte(asiento, linea); });
    });
    paso("IVA01", [&] {
        if (sesion_.pendientes.ivas.vacia()) return;
        GrabacionIva iva(asiento);
        cadaUna(sesion_.pendientes.ivas, [&](const auto& linea) { iva.grabar(linea); });
    });
    paso("EFECT", [&] {
        cadaUna(sesion_.pendientes.carteras, [&](const auto& linea) { grabarCartera(asiento, linea); });
    });
    paso("Anali", [&] {
        cadaUna(sesion_.pendientes.analiticas, [&](const auto& linea) { grabarAnalitica(asiento, linea); });
    });
    aplazado = asiento.aplazado;
    entera_ = !paso.algunoFallo() && !asiento.algunaRehusada;
}

}  // namespace tarvoline::link
