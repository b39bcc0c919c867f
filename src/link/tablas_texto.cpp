#include "link/tablas_texto.h"

#include <algorithm>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/definicion_tabla.h"
#include "data/empresa_suelta.h"
#include "data/tabla_cursor.h"
#include "link/consultas.h"

namespace tarvoline::link {

namespace {

constexpr std::string_view finLinea = "\r\n";

// A text in a cell: what parts cells and lines cannot stand in it.
std::string celda(std::string texto) {
    std::ranges::replace_if(
        texto, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return texto;
}

}  // namespace

void exigirNombreTabla(std::string_view tabla) {
    const std::string nombre = core::Recortar(tabla);
    if (nombre.empty()) throw ErrorEnlace(error_enlace::registroRehusado, "Tabla Obligatorio");
    const bool deNombre = std::ranges::all_of(nombre, [](unsigned char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    });
    if (!deNombre) {
        throw platform::ErrorArchivo(platform::error_archivo::noExiste, nombre,
                                     "no hay ninguna tabla con ese nombre");
    }
}

std::string TablasTexto::directorio() const {
    return sesion_.contexto.datos.carpetas.DirectorioPrograma();
}

std::shared_ptr<const data::DefinicionTabla> TablasTexto::definicion(std::string_view tabla) const {
    const std::string ruta = directorio() + core::Mayusculas(core::Recortar(tabla)) + ".QZA";
    return std::make_shared<data::DefinicionTabla>(
        data::interpretarDefinicion(platform::leerTodo(sesion_.contexto.datos.archivos, ruta)));
}

// A file that is no definition has no title, and is named all the same.
std::string TablasTexto::Util_LeerTablas() {
    auto& archivos = sesion_.contexto.datos.archivos;
    const std::string carpeta = directorio();
    std::string texto;
    for (const auto& archivo : platform::listarMascara(archivos, carpeta, "*.qza")) {
        std::string titulo;
        pasandoErrores(sesion_.contexto.datos, archivo,
                       [&] { titulo = data::TituloArchivo(archivos, carpeta + archivo); });
        texto.append(core::SepararRuta(archivo).nombre).append("\t").append(celda(titulo)).append(finLinea);
    }
    return texto;
}

std::string TablasTexto::Util_LeerCampos(std::string_view tabla) {
    exigirNombreTabla(tabla);
    const auto campos = definicion(tabla);
    std::string texto;
    for (int numero = 1; numero <= campos->gNumeroCampos; ++numero) {
        const data::CampoTabla& campo = campos->campo(numero);
        texto.append(celda(campo.nombre)).append("\t");
        texto.append(std::to_string(campo.posicion)).append("\t");
        texto.append(std::to_string(campo.tipo)).append("\t");
        texto.append(std::to_string(campo.ancho)).append(finLinea);
    }
    return texto;
}

std::string TablasTexto::Util_LeerDatos(std::string_view tabla, std::string_view campo,
                                        std::string_view valor, std::string_view filtro) {
    const std::string ruta = data::rutaDeTabla(sesion_.contexto.datos, core::Recortar(tabla));
    // A table that the company does not have is not made by looking at it.
    if (!sesion_.contexto.datos.archivos.estado(ruta))
        throw platform::ErrorArchivo(platform::error_archivo::noExiste, ruta,
                                     "no hay ninguna tabla con ese nombre");
    data::TablaCursor cursor(sesion_.contexto.datos, sesion_.contexto.tablas());
    abrirCursor(cursor, ruta);
    const std::string columna = core::Recortar(campo);
    if (columna.empty() || valor.empty()) {
        cursor.Filtrar(filtro);
    } else {
        cursor.Filtrar({{columna, data::Operador::igual, std::string(valor)}});
    }
    const data::DefinicionTabla& campos = cursor.definicion();
    std::string texto;
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente()) {
        for (int numero = 1; numero <= campos.gNumeroCampos; ++numero) {
            if (numero > 1) texto.append("\t");
            texto.append(celda(cursor.LeerCampo(campos.campo(numero).posicion)));
        }
        texto.append(finLinea);
    }
    return texto;
}

}  // namespace tarvoline::link
