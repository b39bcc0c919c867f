// Opening, set and walk of a cursor. tabla_cursor_fila.cpp has the row.
#include "data/tabla_cursor.h"

#include <algorithm>
#include <array>

#include "core/texto.h"
#include "data/seleccion.h"

namespace tarvoline::data {

namespace {

constexpr std::array ranurasLibres{11, 12, 13, 14, 15, 0, 7};
constexpr std::array<std::string_view, 3> tablasPorCuenta{"PLANC", "COSTO", "PLANA"};
constexpr std::size_t letrasDeNombre = 5;
constexpr std::size_t letrasDeSufijo = 2;

}  // namespace

bool TablaCursor::Abrir(std::string_view ruta) {
    Cerrar();
    const std::size_t barra = ruta.find_last_of("/\\");
    const std::size_t comienzo = barra == std::string_view::npos ? 0 : barra + 1;
    const std::string_view archivo = ruta.substr(comienzo);
    directorio_ = ruta.substr(0, comienzo);
    nombre_ = core::Mid(archivo, 1, letrasDeNombre);
    sufijo_ = core::Mid(archivo, letrasDeNombre + 1, letrasDeSufijo);
    if (!ocupar()) return false;
    filtro_ = Filtro();
    tomado_ = perdida_ = false;
    soltarFila();
    return true;
}

void TablaCursor::Cerrar() {
    if (esSuya()) tablas_.cerrarRanura(ranura_);
    ranura_ = -1;
    archivo_ = nullptr;
    soltarFila();
}

// Opens the table in the first slot that is free.
bool TablaCursor::ocupar() {
    const auto* libre =
        std::ranges::find_if(ranurasLibres, [&](int ranura) { return !tablas_.abierta(ranura); });
    if (libre == ranurasLibres.end()) throw ErrorCursor("no queda lugar para un cursor en " + nombre_);
    if (!tablas_.AbrirTabla(*libre, nombre_, 1, directorio_, sufijo_)) return false;
    ranura_ = *libre;
    archivo_ = tablas_.ranura(ranura_).archivo.get();
    ruta_ = tablas_.ranura(ranura_).rutaDatos;
    return true;
}

// Whether its slot is still as it left it. Two cursors on one table that came to share a slot do no harm to
// each other: rows are read into buffers of their own.
bool TablaCursor::esSuya() const {
    if (ranura_ < 0) return false;
    const Ranura& ranura = tablas_.ranura(ranura_);
    return ranura.archivo && ranura.archivo.get() == archivo_ && ranura.rutaDatos == ruta_;
}

void TablaCursor::asegurarAbierta() {
    if (ranura_ < 0) throw ErrorCursor("el cursor no está abierto");
    if (!esSuya() && !ocupar()) throw ErrorCursor("no se ha podido volver a abrir la tabla " + nombre_);
}

void TablaCursor::Filtrar(std::string_view texto) {
    Filtrar(interpretarFiltro(texto));
}

void TablaCursor::Filtrar(const std::vector<Condicion>& condiciones) {
    asegurarAbierta();
    filtro_ = Filtro(capa_, tablas_.definicion(ranura_), condiciones);
    tomado_ = perdida_ = false;
    filtrada_ = true;
    soltarFila();
}

void TablaCursor::tomarConjunto() {
    asegurarAbierta();
    const bool porCuenta = std::ranges::any_of(
        tablasPorCuenta, [&](std::string_view tabla) { return core::igualSinCaja(tabla, nombre_); });
    conjunto_ =
        seleccionar(tablas_, ranura_, filtro_, porCuenta ? OrdenFilas::porCodigo : OrdenFilas::natural);
    tomado_ = reciente_ = true;
    lugar_ = 0;
}

void TablaCursor::Primero() {
    asegurarAbierta();
    if (!tomado_ || !reciente_) tomarConjunto();
    reciente_ = perdida_ = false;
    lugar_ = 0;
    situarDesde();
}

void TablaCursor::Ultimo() {
    asegurarAbierta();
    if (!tomado_ || !reciente_) tomarConjunto();
    reciente_ = perdida_ = false;
    soltarFila();
    for (lugar_ = conjunto_.size(); lugar_ > 0;) {
        if (cargar(conjunto_[--lugar_])) return;
    }
    lugar_ = conjunto_.size();
}

void TablaCursor::Siguiente() {
    asegurarAbierta();
    if (!tomado_) {
        Primero();
        return;
    }
    perdida_ = false;
    if (!yaSiguiente_ && lugar_ < conjunto_.size()) ++lugar_;
    situarDesde();
}

// The first row at `lugar_` or behind it that is still there.
void TablaCursor::situarDesde() {
    soltarFila();
    for (; lugar_ < conjunto_.size(); ++lugar_) {
        if (cargar(conjunto_[lugar_])) return;
    }
}

void TablaCursor::IrARegistro(std::int32_t registro) {
    asegurarAbierta();
    soltarFila();
    perdida_ = registro < 1 || !cargar(registro);
    if (perdida_) return;
    if (!tomado_ && filtrada_) tomarConjunto();
    if (!tomado_) {
        conjunto_ = {registro};
        tomado_ = true;
    }
    reciente_ = false;
    const auto donde = std::ranges::find(conjunto_, registro);
    if (donde != conjunto_.end()) lugar_ = static_cast<std::size_t>(donde - conjunto_.begin());
}

std::int32_t TablaCursor::ContarRegistros() {
    if (perdida_) return 0;
    if (!tomado_) tomarConjunto();
    return static_cast<std::int32_t>(conjunto_.size());
}

}  // namespace tarvoline::data
