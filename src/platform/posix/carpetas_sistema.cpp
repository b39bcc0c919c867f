#include "platform/carpetas_sistema.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <optional>
#include <vector>

#include "platform/posix/entorno_proceso.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

const char separador = '/';

namespace {

std::string sinFinal(std::string ruta) {
    while (ruta.size() > 1 && ruta.back() == '/')
        ruta.pop_back();
    return ruta;
}

// A relative path in such a variable is a mistake and counts as none.
std::optional<std::string> carpetaDeVariable(const char* nombre) {
    const auto valor = posix::variable(nombre);
    if (!valor || valor->front() != '/') return std::nullopt;
    return sinFinal(*valor);
}

std::string carpetaDelUsuario() {
    if (const auto deVariable = carpetaDeVariable("HOME")) return *deVariable;
    passwd datos{};
    passwd* hallado = nullptr;
    std::vector<char> textos(4096);
    while (::getpwuid_r(::getuid(), &datos, textos.data(), textos.size(), &hallado) == ERANGE) {
        textos.resize(textos.size() * 2);
    }
    if (hallado != nullptr && hallado->pw_dir != nullptr && hallado->pw_dir[0] == '/') {
        return sinFinal(hallado->pw_dir);
    }
    return "/";
}

std::string xdg(const char* variable, const char* defecto) {
    if (const auto deVariable = carpetaDeVariable(variable)) return *deVariable;
    return unirRuta(carpetaDelUsuario(), defecto);
}

// The value of a line NAME="$HOME/..." or NAME="/..." as the desktop writes it; nothing else counts.
std::optional<std::string> valorDeDirs(std::string_view linea, std::string_view nombre) {
    while (!linea.empty() && (linea.front() == ' ' || linea.front() == '\t'))
        linea.remove_prefix(1);
    if (linea.substr(0, nombre.size()) != nombre) return std::nullopt;
    linea.remove_prefix(nombre.size());
    if (linea.substr(0, 2) != "=\"") return std::nullopt;
    linea.remove_prefix(2);
    std::string valor;
    constexpr std::string_view personal = "$HOME";
    if (linea.substr(0, personal.size()) == personal) {
        valor = carpetaDelUsuario();
        linea.remove_prefix(personal.size());
        if (!linea.empty() && linea.front() != '/' && linea.front() != '"') return std::nullopt;
    }
    for (std::size_t i = 0; i < linea.size(); ++i) {
        if (linea[i] == '"')
            return valor.empty() || valor.front() != '/' ? std::nullopt : std::optional(valor);
        if (linea[i] == '\\' && i + 1 < linea.size()) ++i;
        valor.push_back(linea[i]);
    }
    return std::nullopt;
}

}  // namespace

std::string carpetaConfiguracion() {
    return xdg("XDG_CONFIG_HOME", ".config");
}

std::string carpetaDatosUsuario() {
    return xdg("XDG_DATA_HOME", ".local/share");
}

std::string carpetaEstado() {
    return xdg("XDG_STATE_HOME", ".local/state");
}

std::string carpetaTemporal() {
    return carpetaDeVariable("TMPDIR").value_or(carpetaEstado());
}

std::string carpetaDatosComunes() {
    return "/var/lib/tarvoline";
}

std::string carpetaConfiguracionMaquina() {
    return "/etc/xdg";
}

std::string carpetaInicioSesion() {
    return unirRuta(carpetaConfiguracion(), "autostart");
}

std::string carpetaPersonal() {
    // The file of the desktop that names the user's folders; the last line of a name counts, as in a shell.
    std::ifstream archivo(unirRuta(carpetaConfiguracion(), "user-dirs.dirs"));
    std::string carpeta = carpetaDelUsuario();
    for (std::string linea; std::getline(archivo, linea);) {
        if (const auto valor = valorDeDirs(linea, "XDG_DOCUMENTS_DIR")) carpeta = sinFinal(*valor);
    }
    return carpeta;
}

std::string ejecutablePropio() {
    std::vector<char> texto(4096);
    const ssize_t largo = ::readlink("/proc/self/exe", texto.data(), texto.size());
    if (largo <= 0) return {};
    std::string ruta(texto.data(), static_cast<std::size_t>(largo));
    // A program replaced by an update while it runs still lives under its old name.
    constexpr std::string_view borrado = " (deleted)";
    const bool marcado = ruta.size() > borrado.size() && ruta.ends_with(borrado);
    if (marcado && ::access(ruta.c_str(), F_OK) != 0) ruta.resize(ruta.size() - borrado.size());
    return ruta;
}

std::string carpetaEjecutable() {
    return carpetaDe(ejecutablePropio());
}

}  // namespace tarvoline::platform
