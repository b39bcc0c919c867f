#include "link/extractos.h"

#include "core/texto.h"
#include "data/filtro.h"
#include "data/utilidades.h"
#include "link/consultas.h"
#include "link/linea_extracto.h"
#include "link/posiciones.h"
#include "link/texto_extracto.h"

namespace tarvoline::link {

namespace {

namespace extra = posicion::extra;

constexpr int archivoAnalitico = 10;
constexpr std::string_view sinPrincipio = "      ";
constexpr std::string_view sinFin = "zzzzzz";

// As the books have it.
std::string codigoAnsi(std::string_view cuenta) {
    return std::string(sinRelleno(core::aAnsi(core::Mid(cuenta, 1, ancho::cuenta)).bytes()));
}

}  // namespace

Extractos::Origen Extractos::origenDe(int archivo) {
    if (archivo == archivoAnalitico) {
        return {data::tabla::anali, 4, extra::cuentaAnalitica, data::tabla::costo};
    }
    return {data::tabla::extra, 2, extra::cuenta, data::tabla::planc};
}

void Extractos::LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta,
                             int archivo) {
    sesion_.resultados.extracto.vaciar();
    if (core::Recortar(cuenta).empty()) return;
    const TablasAbiertas abiertas(sesion_);
    const Origen origen = origenDe(archivo);
    if (cuenta.find_first_of("*?") == std::string_view::npos) {
        extractoDe(origen, codigoAnsi(cuenta), desde, hasta);
        return;
    }
    for (const std::string& una : cuentasComo(origen, core::aAnsi(cuenta).bytes()))
        extractoDe(origen, una, desde, hasta);
}

std::vector<std::string> Extractos::cuentasComo(const Origen& origen, const std::string& patron) {
    std::vector<std::string> cuentas;
    RecorridoClave plan(sesion_.contexto.tablas(), origen.cuentas, 1);
    for (plan.desdeExtremo(); plan.fila() != nullptr; plan.avanzar()) {
        const std::string_view cuenta = plan.fila()->ansi(posicion::planc::cuenta);
        if (data::coincideComodines(cuenta, patron)) cuentas.emplace_back(cuenta);
    }
    return cuentas;
}

// From the first line of all on: what lies before the limit counts in the balance.
void Extractos::extractoDe(const Origen& origen, const std::string& cuenta, std::string_view desde,
                           std::string_view hasta) {
    double saldo = 0;
    recorrer(origen, cuenta, {}, hasta, [&](const Fila& fila, std::int32_t registro) {
        saldo += fila.numero(extra::importe);
        if (fila.bytes(extra::fecha) < desde) return;
        saldo = data::Redondear(sesion_.contexto.datos, saldo);
        ExtractoClass linea = lineaExtracto(sesion_, fila, registro, origen.posicionCuenta);
        linea.Saldo = saldo;
        sesion_.resultados.extracto.anadir(std::move(linea));
    });
}

std::string Extractos::LeerExtractoEx(std::string_view cuenta, std::string_view desde,
                                      std::string_view hasta) {
    const std::string codigo = codigoAnsi(cuenta);
    TextoExtracto texto(sesion_, codigo);
    if (core::Recortar(codigo).empty()) return {};
    const TablasAbiertas abiertas(sesion_);
    recorrer(origenDe(data::tabla::extra), codigo, desde, hasta,
             [&](const Fila& fila, std::int32_t) { texto.anadir(fila); });
    return texto.tomar();
}

void Extractos::recorrer(const Origen& origen, const std::string& cuenta, std::string_view desde,
                         std::string_view hasta,
                         const std::function<void(const Fila& fila, std::int32_t registro)>& alPasar) {
    if (hasta.empty()) hasta = sinFin;
    std::string principio = cuenta;
    principio.resize(ancho::cuenta, ' ');
    principio += desde.empty() ? sinPrincipio : desde;
    RecorridoClave lineas(sesion_.contexto.tablas(), origen.lineas, origen.clave);
    for (lineas.desde(principio); const Fila* fila = lineas.fila(); lineas.avanzar()) {
        const bool dentro = fila->ansi(origen.posicionCuenta) == cuenta && fila->bytes(extra::fecha) <= hasta;
        if (!dentro) return;
        alPasar(*fila, lineas.registro());
    }
}

}  // namespace tarvoline::link
