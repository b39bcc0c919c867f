#include "link/fechas_enlace.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/texto.h"
#include "data/fechas.h"

namespace tarvoline::link {

namespace {

// Lengths of the three forms.
constexpr std::size_t largoYymmdd = 6;     // yymmdd
constexpr std::size_t largoBarras = 8;     // dd/mm/yy
constexpr std::size_t largoCompleta = 10;  // dd/mm/yyyy
// The digits "0" to "7" at the head of yymmdd mean the years from 2000 on, which are stored as letters.
constexpr char ultimaDecadaNueva = '7';
constexpr char pasoDeSiglo = 'A' - '0';

struct Partes {
    std::string anio, mes, dia;
};

// Nothing for a length that no form has.
std::optional<Partes> partir(std::string_view valor) {
    if (valor.size() == largoYymmdd) {
        return Partes{core::Mid(valor, 1, 2), core::Mid(valor, 3, 2), core::Mid(valor, 5, 2)};
    }
    if (valor.size() != largoBarras && valor.size() != largoCompleta) return std::nullopt;
    const std::size_t anio = valor.size() == largoBarras ? 7 : 9;
    return Partes{core::Mid(valor, anio, 2), core::Mid(valor, 4, 2), core::Mid(valor, 1, 2)};
}

bool esCifra(char c) {
    return c >= '0' && c <= '9';
}

bool esCifraDeAnio(char c) {
    return esCifra(c) || (c >= 'A' && c <= 'T');
}

bool esDiaDeMes(int dia, int mes) {
    constexpr int febrero = 2;
    constexpr std::array<int, 4> mesesCortos{4, 6, 9, 11};
    if (mes < 1 || mes > 12 || dia < 1) return false;
    if (mes == febrero) return dia <= 29;
    return dia <= (std::ranges::find(mesesCortos, mes) == mesesCortos.end() ? 31 : 30);
}

void comprobarForma(const Partes& partes, std::string_view valor) {
    const bool bien =
        std::ranges::all_of(partes.anio, esCifraDeAnio) &&
        (valor.size() == largoCompleta || std::ranges::all_of(partes.dia + partes.mes, esCifra)) &&
        esDiaDeMes(core::ValEntero(partes.dia), core::ValEntero(partes.mes));
    if (!bien) rechazarFecha(valor);
}

bool esGuardada(std::string_view texto) {
    return texto.size() == largoYymmdd && esCifraDeAnio(texto[0]) && esCifra(texto[1]) &&
           std::ranges::all_of(texto.substr(2), esCifra) &&
           esDiaDeMes(core::ValEntero(texto.substr(4)), core::ValEntero(texto.substr(2, 2)));
}

// Day, month and year of a text with separators, the year first when it has four digits there; nothing for
// another text.
std::optional<std::array<std::string, 3>> diaMesAnio(std::string texto) {
    std::ranges::replace_if(
        texto, [](char c) { return c == '-' || c == '.'; }, '/');
    const auto partes = core::Partir(texto, "/");
    const auto cifras = [](const std::string& parte) {
        return !parte.empty() && std::ranges::all_of(parte, esCifra);
    };
    if (partes.size() != 3 || !std::ranges::all_of(partes, cifras)) return std::nullopt;
    if (partes[0].size() == 4) return std::array{partes[2], partes[1], partes[0]};
    return std::array{partes[0], partes[1], partes[2]};
}

void comprobarEjercicio(const Sesion& sesion, const Partes& partes, std::string_view valor) {
    if (añoDeMes(sesion, core::ValEntero(partes.mes)) == partes.anio) return;
    const auto& cabecera = sesion.empresa.cabecera;
    const std::string apertura = cabecera.texto(data::cabecera::APERTURA);
    throw ErrorEnlace(error_enlace::fechaNoValida,
                      "Año contable: " + cabecera.texto(data::cabecera::AÑO) + "\r\n" +
                          (apertura == "01" ? std::string() : "Apertura: " + apertura + "\r\n") +
                          "Fecha no válida: " + std::string(valor));
}

}  // namespace

void rechazarFecha(std::string_view valor) {
    throw ErrorEnlace(error_enlace::fechaNoValida, "Formato Fecha no válido: " + std::string(valor) +
                                                       "\nFormatos aceptados son: 31/12/13 o 131231");
}

std::string ValidarFecha(const Sesion& sesion, std::string_view valor) {
    if (const auto partes = partir(valor)) {
        comprobarForma(*partes, valor);
        comprobarEjercicio(sesion, *partes, valor);
    }
    std::string guardada = fechaSinComprobar(sesion, valor);
    if (guardada.empty() && partir(valor)) rechazarFecha(valor);
    return guardada;
}

std::string fechaDeTexto(const Sesion& sesion, std::string_view texto) {
    constexpr int primerAnio = 1960, ultimoAnio = 2199;  // what the stored form can tell
    const std::string limpio = core::Recortar(texto);
    if (limpio.empty()) return {};
    if (esGuardada(limpio)) return fechaSinComprobar(sesion, limpio);
    const auto partes = diaMesAnio(limpio);
    if (!partes) rechazarFecha(texto);
    const auto& [dia, mes, anio] = *partes;
    const int ano = core::ValEntero(anio);
    const bool cabe = anio.size() == 2 || (anio.size() == 4 && ano >= primerAnio && ano <= ultimoAnio);
    if (!cabe || !esDiaDeMes(core::ValEntero(dia), core::ValEntero(mes))) rechazarFecha(texto);
    const std::string diaMes =
        core::conCeros(core::ValEntero(dia), 2) + "/" + core::conCeros(core::ValEntero(mes), 2) + "/";
    return anio.size() == 2 ? data::FechaNormal(sesion.contexto.datos, diaMes + anio)
                            : data::FechaCompleta(diaMes + anio);
}

std::string fechaSinComprobar(const Sesion& sesion, std::string_view valor) {
    const auto partes = partir(valor);
    if (!partes) return {};
    if (valor.size() == largoBarras) return data::FechaNormal(sesion.contexto.datos, valor);
    if (valor.size() == largoCompleta) {
        std::string guardada = data::FechaCompleta(core::conCeros(core::ValEntero(partes->dia), 2) + "/" +
                                                   core::conCeros(core::ValEntero(partes->mes), 2) + "/" +
                                                   core::Mid(valor, 7, 4));
        return esGuardada(guardada) ? guardada : std::string();
    }
    std::string guardada(valor);
    if (guardada.front() >= '0' && guardada.front() <= ultimaDecadaNueva) {
        guardada.front() = static_cast<char>(guardada.front() + pasoDeSiglo);
    }
    return guardada;
}

std::string fechaSinSiglo(std::string_view guardada) {
    std::string fecha(guardada);
    if (!fecha.empty() && fecha.front() >= 'A')
        fecha.front() = static_cast<char>(fecha.front() - pasoDeSiglo);
    return fecha;
}

std::string fechaCorta(const Sesion& sesion, std::string_view guardada) {
    return data::fechaVacia(guardada) ? std::string() : data::FechaNormal(sesion.contexto.datos, guardada);
}

std::string fechaDeHoy(const Sesion& sesion) {
    const platform::FechaHora hoy = sesion.contexto.datos.reloj.local();
    const auto dos = [](int numero) { return core::conCeros(numero, 2); };
    return data::FechaCompleta(dos(hoy.dia) + "/" + dos(hoy.mes) + "/" + std::to_string(hoy.anio));
}

std::string añoDeMes(const Sesion& sesion, int mes) {
    constexpr int regularizacion = 13;
    constexpr int cierre = 14;
    const auto& cabecera = sesion.empresa.cabecera;
    const auto anio = core::ValEntero(cabecera.texto(data::cabecera::AÑO));
    const auto apertura = core::ValEntero(cabecera.texto(data::cabecera::APERTURA));
    const bool deCierre = mes == regularizacion || mes == cierre;
    const bool siguiente = deCierre ? apertura > 1 : mes < apertura && mes != 0;
    return core::conCeros(anio + (siguiente ? 1 : 0), 2);
}

}  // namespace tarvoline::link
