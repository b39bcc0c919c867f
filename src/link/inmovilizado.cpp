#include "link/inmovilizado.h"

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "link/campos_registros.h"
#include "link/consultas.h"

namespace tarvoline::link {

namespace {

constexpr std::string_view tabla = "inmo3";
constexpr std::size_t anchoCodigo = 10;

std::vector<data::Condicion> deCodigo(std::string_view codigo) {
    return {iguales("CODIGO", codigo, anchoCodigo)};
}

[[noreturn]] void rehusar(const char* texto) {
    throw ErrorEnlace(error_enlace::registroRehusado, texto);
}

}  // namespace

std::int32_t Inmovilizado::LeerInmovilizado(std::string_view codigo) {
    auto& bienes = sesion_.resultados.inmovilizado;
    bienes.vaciar();
    data::TablaCursor cursor(sesion_.contexto.datos, sesion_.contexto.tablas());
    abrirCursor(cursor, data::rutaDeTabla(sesion_.contexto.datos, tabla));
    if (!codigo.empty()) cursor.Filtrar(deCodigo(codigo));
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente())
        bienes.anadir(leerRegistro<InmoClass>(sesion_, cursor));
    return bienes.contar();
}

void Inmovilizado::CrearInmovilizado(const InmoClass& datos) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    const std::string ruta = data::rutaDeTabla(sesion_.contexto.datos, tabla);
    data::TablaCursor cursor(sesion_.contexto.datos, tablas);
    if (!cursor.Abrir(ruta)) rehusar("Empresa no Abierta");
    if (core::Recortar(datos.I01_Codigo_String_10).empty()) rehusar("Codigo sin contenido");
    data::conTurnoEnTabla(sesion_.contexto.datos, ruta, [&] {
        cursor.Filtrar(deCodigo(datos.I01_Codigo_String_10));
        cursor.Primero();
        if (!cursor.FinDeTabla()) rehusar("Codigo ya existe");
        cursor.Nuevo();
        escribirRegistro(sesion_, cursor, datos);
        cursor.Actualizar();
    });
    exigirClaves(tablas);
}

}  // namespace tarvoline::link
