#include "server/enlace_tablas.h"

#include <algorithm>
#include <array>
#include <map>

#include "core/texto.h"
#include "link/campos_datos.h"
#include "link/mostrador.h"
#include "link/posiciones.h"
#include "server/enlace_asiento.h"

namespace tarvoline::server {

namespace {

using link::Enlace;
namespace posicion = link::posicion;

// Names as forms call the tables, and as their definitions do.
struct Tabla {
    std::string_view nombre, archivo;
};
constexpr std::array<Tabla, 8> tablas{{{"PLANC", "PLANC"},
                                       {"EXTRA", "EXTRA"},
                                       {"DATOS", "DATOS"},
                                       {"IVA01", "IVA01"},
                                       {"EFECT", "EFECT"},
                                       {"PRESU", "Presu"},
                                       {"COSTO", "Costo"},
                                       {"PLANA", "PlanA"}}};
constexpr std::string_view sinCambio = "-1";

std::string tablaDe(const FormaEnlace& forma) {
    std::string nombre = core::Mayusculas(core::Recortar(forma.campo("ARCHIVO")));
    if (std::ranges::none_of(tablas, [&](const Tabla& una) { return una.nombre == nombre; }))
        throw ErrorForma("ERROR: no hay ningún archivo " + nombre);
    return nombre;
}

// By position; those that are not there are as if they were "-1".
class Cambios {
  public:
    explicit Cambios(const std::string& texto) {
        for (const auto& uno : core::Partir(texto, "\t")) {
            if (uno.empty()) continue;
            const auto igual = uno.find('=');
            const std::string lugar = uno.substr(0, igual);
            const bool numero = !lugar.empty() && lugar.find_first_not_of("0123456789") == std::string::npos;
            if (igual == std::string::npos || !numero) throw ErrorForma("ERROR: campo " + uno);
            valores_[core::ValEntero(lugar)] = uno.substr(igual + 1);
        }
    }
    std::string operator()(int lugar) const {
        const auto suyo = valores_.find(lugar);
        return suyo == valores_.end() ? std::string(sinCambio) : suyo->second;
    }
    bool tiene(int lugar) const { return valores_.contains(lugar); }
    const std::map<int, std::string>& todos() const { return valores_; }

  private:
    std::map<int, std::string> valores_;
};

// As the books keep it.
std::string cuentaGuardada(std::string_view cuenta) {
    constexpr std::size_t ancho = 10;
    return core::Recortar(core::Mid(cuenta, 1, ancho));
}

std::string crearCuenta(Enlace& enlace, const std::string& tabla, const Cambios& cambios) {
    namespace campo = posicion::planc;
    std::string cuenta = cambios(campo::cuenta);
    const std::string titulo = cambios(campo::titulo), nivel = cambios(campo::nivel);
    bool hecha = false;
    if (tabla == "PLANC") {
        hecha =
            enlace.CrearCuenta(cuenta, titulo, nivel, cambios(campo::analitica) == "1", cambios(campo::nif));
    } else if (tabla == "COSTO") {
        hecha = enlace.CrearAnalitica(cuenta, titulo, nivel);
    } else {
        hecha = enlace.CrearAlterna(cuenta, titulo, nivel);
    }
    return hecha ? cuentaGuardada(cuenta) : "ERROR: no se ha podido crear la cuenta " + cuenta;
}

std::string crearDatos(Enlace& enlace, const Cambios& cambios) {
    link::DatosNuevos datos;
    datos.Cuenta = cambios(posicion::datos::cuenta);
    for (const link::CampoDatos& uno : link::camposDeDatos())
        datos.*uno.valor = cambios(uno.posicion);
    enlace.CrearDatos(datos);
    return cuentaGuardada(datos.Cuenta);
}

std::string crearPresupuesto(Enlace& enlace, const Cambios& cambios) {
    namespace campo = posicion::presu;
    constexpr int meses = 12;
    std::string cuenta = cambios(campo::cuenta);
    for (int mes = 1; mes <= meses; ++mes) {
        if (cambios.tiene(campo::antesDeEnero + mes)) exigirImporte(cambios(campo::antesDeEnero + mes));
    }
    if (cambios.tiene(campo::titulo) || cambios.tiene(campo::nivel) || cambios.tiene(campo::analitica)) {
        enlace.CrearPresupuesto(cuenta, cambios(campo::titulo), cambios(campo::nivel),
                                cambios(campo::analitica) == "1");
    }
    for (int mes = 1; mes <= meses; ++mes) {
        const int lugar = campo::antesDeEnero + mes;
        if (cambios.tiene(lugar)) enlace.ModificarPresupuesto(cuenta, mes, core::Val(cambios(lugar)));
    }
    return cuentaGuardada(cuenta);
}

// A filter may be empty and then means all rows; one that is not there means nothing.
void exigirCartera(const FormaEnlace& forma) {
    if (tablaDe(forma) != "EFECT") throw ErrorForma("ERROR: ese archivo no se cambia por un filtro");
    if (!forma.campos.contains("FILTER")) throw ErrorForma("ERROR: falta el filtro");
}

}  // namespace

std::string buscarFilas(const FormaEnlace& forma, Enlace& enlace) {
    const std::string nombre = tablaDe(forma);
    const auto* const tabla = std::ranges::find(tablas, nombre, &Tabla::nombre);
    return link::Mostrador(enlace).buscar(tabla->archivo, forma.campo("FILTER"));
}

std::string cambiarFila(const FormaEnlace& forma, Enlace& enlace) {
    const std::string tabla = tablaDe(forma);
    const Cambios cambios(forma.campo("CAMPOS"));
    if (core::Recortar(cambios(1)).empty() || !cambios.tiene(1)) throw ErrorForma("ERROR: falta la cuenta");
    if (tabla == "PLANC" || tabla == "COSTO" || tabla == "PLANA") return crearCuenta(enlace, tabla, cambios);
    if (tabla == "DATOS") return crearDatos(enlace, cambios);
    if (tabla == "PRESU") return crearPresupuesto(enlace, cambios);
    throw ErrorForma("ERROR: el archivo " + tabla + " no se cambia por sus campos");
}

std::string cambiarFilas(const FormaEnlace& forma, Enlace& enlace) {
    exigirCartera(forma);
    const Cambios cambios(forma.campo("CAMPOS"));
    const bool soloMarca = cambios.todos().size() == 1 && cambios.tiene(posicion::efect::marca);
    if (!soloMarca) throw ErrorForma("ERROR: de la cartera solo se cambia la marca");
    return std::to_string(link::Mostrador(enlace).cambiar(
        "EFECT", forma.campo("FILTER"), posicion::efect::marca, cambios(posicion::efect::marca)));
}

std::string borrarFilas(const FormaEnlace& forma, Enlace& enlace) {
    exigirCartera(forma);
    return std::to_string(link::Mostrador(enlace).borrar("EFECT", forma.campo("FILTER")));
}

}  // namespace tarvoline::server
