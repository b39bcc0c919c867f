#include "data/fechas.h"

#include <algorithm>

#include "core/texto.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr int anioLimiteNormal = 60;    // two digits below mean 20yy
constexpr int anioLimiteCompleta = 81;  // the same in the routine of posting: its own limit, on purpose
constexpr char pasoSiglo21 = 17;        // "0" + 17 = "A": tens digit of the years 2000 to 2099
constexpr char pasoSiglo22 = 27;        // "0" + 27 = "K": of the years from 2100
constexpr std::string_view noEsFecha = "ERROR";

std::string trozo(std::string_view texto, std::size_t desde, std::size_t cuantos) {
    return std::string(texto.substr(desde - 1, cuantos));
}

bool esSiglo21(char decena) {
    return decena >= 'A' && decena <= 'J';
}
bool esSiglo22(char decena) {
    return decena > 'J';
}

// Two digits of the year, the first one shifted.
std::string desplazar(std::string anio, int paso) {
    anio[0] = static_cast<char>(anio[0] + paso);
    return anio;
}

std::string anioGuardado(const std::string& anio) {
    return core::ValEntero(anio) < anioLimiteNormal ? desplazar(anio, pasoSiglo21) : anio;
}

std::string mostrar(std::string_view guardada, bool completa) {
    if (guardada[0] == '\0') return "00/00/00";
    const auto diaMes = trozo(guardada, 5, 2) + "/" + trozo(guardada, 3, 2) + "/";
    const auto anio = trozo(guardada, 1, 2);
    if (esSiglo22(anio[0])) return diaMes + "21" + desplazar(anio, -pasoSiglo22);
    if (!esSiglo21(anio[0])) return diaMes + anio;
    return diaMes + (completa ? "20" : "") + desplazar(anio, -pasoSiglo21);
}

std::string guardar(std::string_view fecha) {
    if (fecha == "  /  /  ") return {};
    return anioGuardado(trozo(fecha, 7, 2)) + trozo(fecha, 4, 2) + trozo(fecha, 1, 2);
}

std::string mostrarCompleta(std::string_view guardada) {
    if (guardada[0] == '\0') return "00/00/0000";
    const auto diaMes = trozo(guardada, 5, 2) + "/" + trozo(guardada, 3, 2) + "/";
    const auto anio = trozo(guardada, 1, 2);
    if (esSiglo22(anio[0])) return diaMes + "21" + desplazar(anio, -pasoSiglo22);
    if (esSiglo21(anio[0])) return diaMes + "20" + desplazar(anio, -pasoSiglo21);
    return diaMes + (core::ValEntero(anio) < anioLimiteCompleta ? "20" : "19") + anio;
}

std::string guardarCompleta(std::string_view fecha) {
    const auto siglo = trozo(fecha, 7, 2);
    const auto anio = trozo(fecha, 9, 2);
    const auto mesDia = trozo(fecha, 4, 2) + trozo(fecha, 1, 2);
    if (siglo == "19") return anio + mesDia;
    if (siglo == "20") return desplazar(anio, pasoSiglo21) + mesDia;
    if (siglo == "21") return desplazar(anio, pasoSiglo22) + mesDia;
    return std::string(noEsFecha);
}

// The year of today with its last digits replaced: "24" and "024" both give 2024.
std::string conSiglo(const CapaDatos& capa, const std::string& ultimasCifras) {
    const auto hoy = core::conCeros(capa.reloj.local().anio, 4);
    return hoy.substr(0, hoy.size() - std::min(hoy.size(), ultimasCifras.size())) + ultimasCifras;
}

}  // namespace

std::string FechaNormal(const CapaDatos& capa, std::string_view fecha, bool completa) {
    switch (fecha.size()) {
        case 0:
            return {};
        case 2:
            return anioGuardado(std::string(fecha));
        case 5:
            return guardar(std::string(fecha) + "/" + AnoEjercicio(capa, trozo(fecha, 4, 2)));
        case 6:
            return mostrar(fecha, completa);
        case 7:
            return trozo(fecha, 6, 2) + trozo(fecha, 3, 2) + "0" + trozo(fecha, 1, 1);
        case 8:
            return guardar(fecha);
        case 9:
            return trozo(fecha, 1, 2) + "/" + trozo(fecha, 4, 2) + "/" +
                   conSiglo(capa, core::Recortar(trozo(fecha, 7, 3)));
        case 10:
            return trozo(fecha, 4, 2) + "/" + trozo(fecha, 1, 2) + "/" + trozo(fecha, 9, 2);
        default:
            return std::string(noEsFecha);
    }
}

std::string FechaCompleta(std::string_view fecha) {
    switch (fecha.size()) {
        case 0:
            return {};
        case 6:
            return mostrarCompleta(fecha);
        case 10:
            return guardarCompleta(fecha);
        default:
            return std::string(noEsFecha);
    }
}

std::string AnoEjercicio(const CapaDatos& capa, std::string_view mes) {
    const auto& empresa = capa.enVigor.cabecera;
    const auto anio = empresa.texto(cabecera::AÑO);
    const auto numero = core::ValEntero(mes);
    if (numero == 0 || numero >= core::ValEntero(empresa.texto(cabecera::APERTURA))) {
        return core::conCeros(core::ValEntero(anio), 2);
    }
    return core::conCeros((core::ValEntero(anio) + 1) % 100, 2);
}

bool fechaVacia(std::string_view guardada) {
    return guardada.empty() || guardada[0] == '\0' ||
           guardada.find_first_not_of(' ') == std::string_view::npos;
}

}  // namespace tarvoline::data
