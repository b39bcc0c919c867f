#include "link/asiento_en_curso.h"

#include "core/texto.h"
#include "data/codec.h"
#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace estado = motor::estado;
namespace tabla = data::tabla;

AsientoEnCurso::AsientoEnCurso(Sesion& suya)
    : sesion(suya), tablas(suya.contexto.tablas()), hoy(fechaDeHoy(suya)) {}

void AsientoEnCurso::poner(int tabla, int posicion, std::string_view utf8) {
    tablas.ponerTexto(tabla, posicion, utf8);
}

void AsientoEnCurso::poner(int tabla, int posicion, double valor) {
    data::ponerTextoDeNumero(valor, tablas.gCampos(tabla, tablas.gCampoDePosicion(tabla, posicion)));
}

std::optional<std::int32_t> AsientoEnCurso::anadir(int tabla) {
    tablas.AnadirRegistro(tabla);
    if (tablas.gEstado != estado::bien) return std::nullopt;
    return tablas.gRegistro;
}

std::int32_t AsientoEnCurso::buscar(int tabla, std::string_view codigo) {
    std::string valor = core::aAnsi(codigo).bytes();
    valor.resize(ancho::cuenta, ' ');
    return tablas.orden("S\\1\\" + std::to_string(tabla) + "\\" + valor) == estado::bien ? tablas.gRegistro
                                                                                         : 0;
}

std::optional<AsientoEnCurso::Cuenta> AsientoEnCurso::buscarCuenta(std::string_view codigo) {
    const std::int32_t registro = buscar(tabla::planc, codigo);
    if (registro == 0) return std::nullopt;
    LectorRegistros lector(tablas, tabla::planc);
    const auto fila = lector.leer(registro);
    if (!fila) return std::nullopt;
    return Cuenta{fila->texto(posicion::planc::titulo), fila->ansi(posicion::planc::analitica) == "1"};
}

AsientoEnCurso::Tercero AsientoEnCurso::buscarTercero(std::string_view codigo) {
    if (const std::int32_t registro = buscar(tabla::datos, codigo); registro > 0) {
        LectorRegistros lector(tablas, tabla::datos);
        if (const auto fila = lector.leer(registro)) {
            return {fila->texto(posicion::datos::nombre), fila->texto(posicion::datos::nif)};
        }
    }
    const auto cuenta = buscarCuenta(codigo);
    return {cuenta ? cuenta->titulo : std::string(), std::string()};
}

data::TablaCursor& AsientoEnCurso::cursorDe(std::optional<data::TablaCursor>& cursor, int tabla) {
    if (!cursor) {
        cursor.emplace(sesion.contexto.datos, tablas);
        abrirCursor(sesion, *cursor, tabla);
    }
    return *cursor;
}

}  // namespace tarvoline::link
