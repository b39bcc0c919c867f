// The PDF of a line of the journal.
#include <algorithm>

#include "core/carpetas.h"
#include "core/texto.h"
#include "link/grabacion_lineas.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

constexpr std::string_view extension = ".pdf";

// A name that nobody has yet: the first PDF of an entry and account has none, the next ones "~2" and so on.
std::string rutaLibre(platform::SistemaArchivos& archivos, const std::string& sinExtension) {
    std::string ruta = sinExtension + std::string(extension);
    for (int i = 2; platform::existe(archivos, ruta); ++i)
        ruta = sinExtension + "~" + std::to_string(i) + std::string(extension);
    return ruta;
}

}  // namespace

void guardarPdf(AsientoEnCurso& asiento, const ApunteClass& linea) {
    if (linea.ArchivoImagen.empty()) return;
    const Sesion& sesion = asiento.sesion;
    data::CapaDatos& datos = sesion.contexto.datos;
    if (core::Mayusculas(linea.ArchivoImagen).find(".PDF") == std::string::npos) {
        asiento.aplazado = {error_enlace::soloPdf, {}};
        return;
    }
    if (!datos.carpetas.ArchivoExiste(linea.ArchivoImagen)) return;
    const core::PartesRuta empresa = core::SepararRuta(sesion.empresa.gArchivoEmpresa);
    const std::string carpeta = core::conSeparadorFinal(empresa.directorio + empresa.nombre);
    datos.carpetas.CrearDirectorios(carpeta);
    // Named by what the row holds, so that whoever has the row finds it.
    std::string nombre;
    for (const int campo : {posicion::extra::fecha, posicion::extra::asiento, posicion::extra::cuenta})
        nombre += core::Recortar(asiento.tablas.texto(data::tabla::extra, campo));
    std::ranges::replace_if(
        nombre, [](char c) { return c == '/' || c == '\\'; }, '-');
    platform::escribirAtomico(datos.archivos, rutaLibre(datos.archivos, carpeta + nombre),
                              platform::leerTodo(datos.archivos, linea.ArchivoImagen));
}

}  // namespace tarvoline::link
