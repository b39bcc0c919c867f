// The logon entry as a desktop file in the autostart folder, in the form that freedesktop.org gives both.
#include "platform/acceso_inicio.h"

#include "platform/carpetas_sistema.h"
#include "platform/comillas.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

namespace {

// A value of a desktop file.
std::string valor(std::string_view texto) {
    std::string salida;
    for (const char c : texto) {
        const auto escape = escapeDe(c);
        salida += escape.empty() ? std::string_view(&c, 1) : escape;
    }
    if (!salida.empty() && salida.front() == ' ') salida.replace(0, 1, "\\s");
    return salida;
}

// One argument of a command line; it becomes a value of the file on top, which doubles backslashes again.
std::string argumento(std::string_view texto) {
    std::string salida = "\"";
    for (const char c : texto) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') salida.push_back('\\');
        if (c == '%') salida.push_back('%');
        salida.push_back(c);
    }
    return salida + '"';
}

std::string rutaDe(std::string_view nombre) {
    const std::string archivo = std::string(nombre) + ".desktop";
    if (nombre.empty() || nombre.find_first_of("/\\") != std::string_view::npos) {
        throw ErrorArchivo(error_archivo::ruta, archivo, archivo + ": no es el nombre de una entrada");
    }
    return unirRuta(carpetaInicioSesion(), archivo);
}

}  // namespace

void crearAccesoInicio(SistemaArchivos& archivos, const AccesoInicio& acceso) {
    const std::string ruta = rutaDe(acceso.nombre);
    std::string texto = "[Desktop Entry]\nType=Application\nVersion=1.0\n";
    const auto linea = [&](std::string_view clave, const std::string& contenido) {
        if (!contenido.empty()) texto.append(clave).append("=").append(valor(contenido)).append("\n");
    };
    linea("Name", acceso.nombre);
    linea("Exec", argumento(acceso.destino));
    linea("Path", acceso.carpeta);
    linea("Icon", acceso.icono);
    texto += "Terminal=false\n";
    archivos.crearDirectorios(carpetaDe(ruta), 0700);
    escribirAtomico(archivos, ruta, texto);
}

void quitarAccesoInicio(SistemaArchivos& archivos, std::string_view nombre) {
    try {
        archivos.borrar(rutaDe(nombre));
    } catch (const ErrorArchivo& error) {
        const int numero = error.numero();
        if (numero != error_archivo::noExiste && numero != error_archivo::rutaNoExiste) throw;
    }
}

bool existeAccesoInicio(SistemaArchivos& archivos, std::string_view nombre) {
    return existe(archivos, rutaDe(nombre));
}

}  // namespace tarvoline::platform
