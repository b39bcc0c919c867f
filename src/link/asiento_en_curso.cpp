#include "link/asiento_en_curso.h"

#include "core/texto.h"
#include "data/codec.h"
#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace estado = motor::estado;
namespace tabla = data::tabla;

void Pasos::operator()(std::string_view cual, const std::function<void()>& paso) {
    try {
        paso();
    } catch (const std::exception& error) {
        sesion_.pendientes.vaciar();
        const data::CapaDatos& datos = sesion_.contexto.datos;
        const std::string fallo = std::string(cual) + ": " + error.what();
        datos.avisar(fallo);
        if (!contado_ && datos.alMostrar) datos.mostrar({fallo, core::Icono::exclamacion, {}});
        contado_ = true;
    }
}

AsientoEnCurso::AsientoEnCurso(Sesion& suya, Pasos& pasos)
    : sesion(suya), paso(pasos), tablas(suya.contexto.tablas()), hoy(fechaDeHoy(suya)) {}

void AsientoEnCurso::poner(int tabla, int posicion, std::string_view utf8) {
    tablas.ponerTexto(tabla, posicion, utf8);
}

void AsientoEnCurso::poner(int tabla, int posicion, double valor) {
    data::ponerTextoDeNumero(valor, tablas.gCampos(tabla, tablas.gCampoDePosicion(tabla, posicion)));
}

std::optional<std::int32_t> AsientoEnCurso::anadir(int tabla) {
    tablas.AnadirRegistro(tabla);
    if (tablas.gEstado != estado::bien) {
        algunaRehusada = true;
        return std::nullopt;
    }
    return tablas.gRegistro;
}

bool AsientoEnCurso::conFila(int tabla, std::string_view codigo,
                             const std::function<void(const Fila&)>& usar) {
    constexpr int posicionCodigo = 1;
    const std::string buscado = core::aAnsi(core::Mid(codigo, 1, ancho::cuenta)).bytes();
    RecorridoClave filas(tablas, tabla, 1);
    filas.desde(buscado);
    if (filas.fila() == nullptr || filas.fila()->ansi(posicionCodigo) != sinRelleno(buscado)) return false;
    usar(*filas.fila());
    return true;
}

std::optional<AsientoEnCurso::Cuenta> AsientoEnCurso::buscarCuenta(std::string_view codigo) {
    std::optional<Cuenta> cuenta;
    conFila(tabla::planc, codigo, [&](const Fila& fila) {
        cuenta = Cuenta{fila.texto(posicion::planc::titulo), fila.ansi(posicion::planc::analitica) == "1"};
    });
    return cuenta;
}

AsientoEnCurso::Tercero AsientoEnCurso::buscarTercero(std::string_view codigo) {
    Tercero tercero;
    const bool conDatos = conFila(tabla::datos, codigo, [&](const Fila& fila) {
        tercero = {fila.texto(posicion::datos::nombre), fila.texto(posicion::datos::nif)};
    });
    if (conDatos) return tercero;
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
