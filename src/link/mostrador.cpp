#include "link/mostrador.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "core/texto.h"
#include "data/empresa_suelta.h"
#include "data/fechas.h"
#include "link/consultas.h"
#include "link/enlace_interior.h"
#include "link/fechas_enlace.h"
#include "link/lector_registros.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

constexpr const char* valorAbsoluto = "ABS(IMPORTE)";
constexpr std::string_view diario = "EXTRA";
constexpr int posicionImporte = posicion::extra::importe;

// The conditions of a filter, but for the one on an amount without its sign, which no column holds.
struct FiltroLineas {
    std::vector<data::Condicion> condiciones;
    std::optional<double> absoluto;

    FiltroLineas(std::string_view tabla, std::string_view texto)
        : condiciones(data::interpretarFiltro(texto)) {
        if (!core::igualSinCaja(tabla, diario)) return;
        std::erase_if(condiciones, [&](const data::Condicion& una) {
            const bool suya =
                una.operador == data::Operador::igual && core::igualSinCaja(una.columna, valorAbsoluto);
            if (suya) absoluto = std::fabs(core::Val(una.valor));
            return suya;
        });
    }
    bool cumple(data::TablaCursor& cursor) const {
        return !absoluto || std::fabs(cursor.LeerNumero(posicionImporte)) == *absoluto;
    }
};

// Records of the journal by account and day, as statements have them: of the account that the filter names,
// or of all.
std::vector<std::int32_t> lineasPorCuenta(Sesion& sesion, const FiltroLineas& filtro) {
    constexpr int claveCuenta = 2;
    const auto una = std::ranges::find_if(filtro.condiciones, [](const data::Condicion& condicion) {
        return core::igualSinCaja(condicion.columna, columna::cuenta);
    });
    if (una == filtro.condiciones.end()) return {};
    const bool sola = una->operador == data::Operador::igual;
    const std::string cuenta(sinRelleno(core::aAnsi(core::Recortar(una->valor)).bytes()));
    const TablasAbiertas abiertas(sesion);
    RecorridoClave lineas(sesion.contexto.tablas(), data::tabla::extra, claveCuenta);
    std::vector<std::int32_t> registros;
    if (sola) {
        lineas.desde(cuenta);
    } else {
        lineas.desdeExtremo();
    }
    for (; lineas.fila() != nullptr; lineas.avanzar()) {
        if (sola && lineas.fila()->ansi(posicion::extra::cuenta) != cuenta) break;
        registros.push_back(lineas.registro());
    }
    return registros;
}

std::string celda(std::string texto) {
    std::ranges::replace_if(
        texto, [](unsigned char c) { return c < ' '; }, ' ');
    return texto;
}

}  // namespace

void Mostrador::situar(std::string_view fecha, std::string_view numero) {
    Sesion& sesion = enlace_.interior_->sesion;
    sesion.entrar();
    // As in LeerAsiento, a date outside the accounting year is one without entries.
    sesion.Fecha = fechaSinComprobar(sesion, fecha);
    if (sesion.Fecha.empty() && !fecha.empty()) rechazarFecha(fecha);
    sesion.Número = numero;
}

void Mostrador::comprobarFecha(std::string_view texto) const {
    fechaDeTexto(enlace_.interior_->sesion, texto);
}

std::string Mostrador::fechaLarga() const {
    return data::FechaCompleta(enlace_.interior_->sesion.Fecha);
}

std::string Mostrador::buscar(std::string_view tabla, std::string_view filtro) {
    const Sesion& sesion = enlace_.interior_->sesion;
    std::string titulos;
    std::vector<std::string> filas;
    std::map<std::int32_t, std::size_t> lugares;  // by record
    recorrer(tabla, filtro, [&](data::TablaCursor& fila) {
        const data::DefinicionTabla& definicion = fila.definicion();
        lugares[fila.registro()] = filas.size();
        std::string& texto = filas.emplace_back();
        for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
            const data::CampoTabla& campo = definicion.campo(i);
            if (filas.size() == 1) titulos += (i > 1 ? "\t" : "") + celda(campo.nombre);
            const std::string valor = fila.LeerCampo(campo.posicion);
            const bool esFecha = campo.forma == data::FormaCampo::fecha;
            texto += (i > 1 ? "\t" : "") + (esFecha ? fechaCorta(sesion, valor) : celda(valor));
        }
    });
    if (filas.empty()) return {};
    std::string texto = titulos + "\n";
    if (core::igualSinCaja(tabla, diario)) {
        for (const std::int32_t registro :
             lineasPorCuenta(enlace_.interior_->sesion, FiltroLineas(diario, filtro))) {
            const auto suya = lugares.find(registro);
            if (suya != lugares.end()) texto += std::exchange(filas[suya->second], {}) + "\n";
        }
    }
    for (const std::string& fila : filas) {
        if (!fila.empty()) texto += fila + "\n";
    }
    return texto;
}

std::int32_t Mostrador::cambiar(std::string_view tabla, std::string_view filtro, int posicion,
                                std::string_view valor) {
    std::int32_t cuantas = 0;
    recorrer(tabla, filtro, [&](data::TablaCursor& fila) {
        fila.Editar();
        fila.EscribirCampo(posicion, 0, valor);
        fila.Actualizar();
        exigirClaves(enlace_.interior_->sesion.contexto.tablas());
        ++cuantas;
    });
    return cuantas;
}

std::int32_t Mostrador::borrar(std::string_view tabla, std::string_view filtro) {
    std::int32_t cuantas = 0;
    recorrer(tabla, filtro, [&](data::TablaCursor& fila) {
        fila.Borrar();
        exigirClaves(enlace_.interior_->sesion.contexto.tablas());
        ++cuantas;
    });
    return cuantas;
}

void Mostrador::recorrer(std::string_view tabla, std::string_view filtro,
                         const std::function<void(data::TablaCursor&)>& alPasar) {
    Sesion& sesion = enlace_.interior_->sesion;
    sesion.entrar();
    const FiltroLineas pedido(tabla, filtro);
    data::TablaCursor cursor(sesion.contexto.datos, sesion.contexto.tablas());
    abrirCursor(cursor, data::rutaDeTabla(sesion.contexto.datos, tabla));
    cursor.Filtrar(pedido.condiciones);
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente()) {
        if (pedido.cumple(cursor)) alPasar(cursor);
    }
}

}  // namespace tarvoline::link
