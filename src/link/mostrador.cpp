#include "link/mostrador.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/texto.h"
#include "data/empresa_suelta.h"
#include "data/fechas.h"
#include "link/consultas.h"
#include "link/enlace_interior.h"
#include "link/fechas_enlace.h"

namespace tarvoline::link {

namespace {

constexpr const char* valorAbsoluto = "ABS(IMPORTE)";
constexpr int posicionImporte = 6;  // of EXTRA

// The conditions of a filter, but for the one on an amount without its sign, which no column holds.
struct FiltroLineas {
    std::vector<data::Condicion> condiciones;
    std::optional<double> absoluto;

    explicit FiltroLineas(std::string_view texto) : condiciones(data::interpretarFiltro(texto)) {
        std::erase_if(condiciones, [&](const data::Condicion& una) {
            const bool suya = core::igualSinCaja(una.columna, valorAbsoluto);
            if (suya) absoluto = std::fabs(core::Val(una.valor));
            return suya;
        });
    }
    bool cumple(data::TablaCursor& cursor) const {
        return !absoluto || std::fabs(cursor.LeerNumero(posicionImporte)) == *absoluto;
    }
};

std::string celda(std::string texto) {
    std::ranges::replace_if(
        texto, [](unsigned char c) { return c < ' '; }, ' ');
    return texto;
}

}  // namespace

void Mostrador::situar(std::string_view fecha, std::string_view numero) {
    Sesion& sesion = enlace_.interior_->sesion;
    sesion.entrar();
    sesion.Fecha = fecha.empty() ? std::string() : ValidarFecha(sesion, fecha);
    sesion.Número = numero;
}

std::string Mostrador::fechaLarga() const {
    return data::FechaCompleta(enlace_.interior_->sesion.Fecha);
}

std::string Mostrador::buscar(std::string_view tabla, std::string_view filtro) {
    Sesion& sesion = enlace_.interior_->sesion;
    std::string texto;
    const data::DefinicionTabla* definicion = nullptr;
    const auto titulos = [&](const data::DefinicionTabla& suya) {
        definicion = &suya;
        for (int i = 1; i <= suya.gNumeroCampos; ++i)
            texto += (i > 1 ? "\t" : "") + celda(suya.campo(i).nombre);
        texto += '\n';
    };
    recorrer(tabla, filtro, [&](data::TablaCursor& fila) {
        if (definicion == nullptr) titulos(fila.definicion());
        for (int i = 1; i <= definicion->gNumeroCampos; ++i) {
            const data::CampoTabla& campo = definicion->campo(i);
            const std::string valor = fila.LeerCampo(campo.posicion);
            const bool esFecha = campo.forma == data::FormaCampo::fecha;
            texto += (i > 1 ? "\t" : "") + (esFecha ? fechaCorta(sesion, valor) : celda(valor));
        }
        texto += '\n';
    });
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
    const FiltroLineas pedido(filtro);
    data::TablaCursor cursor(sesion.contexto.datos, sesion.contexto.tablas());
    abrirCursor(cursor, data::rutaDeTabla(sesion.contexto.datos, tabla));
    cursor.Filtrar(pedido.condiciones);
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente()) {
        if (pedido.cumple(cursor)) alPasar(cursor);
    }
}

}  // namespace tarvoline::link
