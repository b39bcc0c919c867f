#include "core/carpetas.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "core/texto.h"
#include "platform/carpetas_sistema.h"
#include "platform/procesos.h"

namespace tarvoline::core {
namespace {

constexpr std::string_view separadores = "\\/";
constexpr std::string_view nombrePrograma = "tarvoline";
constexpr unsigned soloDuenio = 0700;
constexpr unsigned paraTodos = 0755;

bool esSeparador(char caracter) {
    return separadores.find(caracter) != std::string_view::npos;
}

// One separator between, unless `resto` brings its own.
std::string unir(std::string_view carpeta, std::string_view resto) {
    std::string ruta(carpeta);
    if (!resto.empty() && !esSeparador(resto.front()) && !(ruta.empty() || esSeparador(ruta.back()))) {
        ruta += platform::separador;
    }
    return ruta.append(resto);
}

std::string carpetaPropia(std::string_view raiz) {
    const char s = platform::separador;
    return std::string(raiz) + s + "QZ" + s + "Veldorix" + s + "5";
}

std::string conNombre(const std::string& carpeta, std::string_view nombre) {
    return nombre.empty() ? carpeta : unir(carpeta, nombre);
}

// Makes the folder if that can be done; whoever opens a file in it gets the error.
bool crearCarpeta(platform::SistemaArchivos& archivos, std::string_view ruta, unsigned modo) {
    try {
        archivos.crearDirectorios(ruta, modo);
        return true;
    } catch (const platform::ErrorArchivo&) {
        return false;
    }
}

// Whether this user may make files in the folder: only trying tells.
bool sePuedeEscribir(platform::SistemaArchivos& archivos, const std::string& carpeta) {
    const std::string prueba = unir(carpeta, "prueba." + std::to_string(platform::procesoPropio()));
    try {
        archivos.abrir(prueba, platform::Apertura::vaciar).reset();
        archivos.borrar(prueba);
        return true;
    } catch (const platform::ErrorArchivo&) {
        return false;
    }
}

}  // namespace

PartesRuta SepararRuta(std::string_view ruta) {
    const auto separador = ruta.find_last_of(separadores);
    const std::size_t comienzo = separador == std::string_view::npos ? 0 : separador + 1;
    const std::string_view nombre = ruta.substr(comienzo);
    const auto punto = nombre.rfind('.');
    PartesRuta partes;
    partes.directorio = ruta.substr(0, comienzo);
    partes.nombre = nombre.substr(0, punto);
    if (punto != std::string_view::npos) {
        partes.extension = nombre.substr(punto + 1);
    }
    return partes;
}

std::string SoloNombre(std::string_view ruta) {
    const auto separador = ruta.find_last_of(separadores);
    return std::string(separador == std::string_view::npos ? ruta : ruta.substr(separador + 1));
}

bool contieneSeparador(std::string_view ruta) {
    return ruta.find_first_of(separadores) != std::string_view::npos;
}

std::string conSeparadorFinal(std::string_view carpeta) {
    std::string ruta(carpeta);
    if (!ruta.empty() && !esSeparador(ruta.back())) {
        ruta += platform::separador;
    }
    return ruta;
}

std::string rutaCompleta(std::string_view ruta) {
    const bool desdeRaiz = !ruta.empty() && esSeparador(ruta.front());
    const bool conUnidad = ruta.size() > 1 && ruta[1] == ':';
    if (desdeRaiz || conUnidad) {
        return std::string(ruta);
    }
    std::error_code sinCarpeta;  // a process whose folder is gone keeps the path as it was given
    const auto actual = std::filesystem::current_path(sinCarpeta).u8string();
    return unir(std::string(actual.begin(), actual.end()), ruta);
}

Carpetas::Carpetas(platform::SistemaArchivos& archivos, Ajustes& ajustes, std::string raizTemporal,
                   std::string carpetaEjecutable)
    : archivos_(archivos),
      ajustes_(ajustes),
      raizTemporal_(std::move(raizTemporal)),
      carpetaEjecutable_(std::move(carpetaEjecutable)) {}

Carpetas::Carpetas(platform::SistemaArchivos& archivos, Ajustes& ajustes, std::string raizTemporal)
    : Carpetas(archivos, ajustes, std::move(raizTemporal), platform::carpetaEjecutable()) {}

std::string Carpetas::CarpetaTemporal(std::string_view resto) const {
    const std::string carpeta = unir(raizTemporal_, "Veldorix");
    crearCarpeta(archivos_, carpeta, soloDuenio);
    return conNombre(carpeta, resto);
}

std::string Carpetas::carpetaTransferencia() const {
    std::string carpeta =
        CarpetaTemporal(std::string(1, platform::separador) + "Tarvoline" + platform::separador);
    crearCarpeta(archivos_, carpeta, soloDuenio);
    return carpeta;
}

std::string Carpetas::CarpetaUsuario(std::string_view nombre) const {
    const std::string carpeta =
        carpetaPropia(CarpetaEspecial(CarpetaConocida::datosLocales, CarpetaConocida::datosItinerantes));
    crearCarpeta(archivos_, carpeta, paraTodos);
    return conNombre(carpeta, nombre);
}

std::string Carpetas::CarpetaComun(std::string_view nombre) const {
    const std::string carpeta =
        carpetaPropia(CarpetaEspecial(CarpetaConocida::datosComunes, CarpetaConocida::datosItinerantes));
    crearCarpeta(archivos_, carpeta, paraTodos);
    return conNombre(carpeta, nombre);
}

std::string Carpetas::CarpetaEspecial(CarpetaConocida primera, CarpetaConocida segunda) const {
    if (auto carpeta = carpetaConocida(primera)) {
        return std::move(*carpeta);
    }
    return carpetaConocida(segunda).value_or("");
}

std::optional<std::string> Carpetas::carpetaConocida(CarpetaConocida cual) const {
    switch (cual) {
        case CarpetaConocida::datosLocales:
            return platform::carpetaDatosUsuario();
        case CarpetaConocida::datosItinerantes:
            return platform::carpetaConfiguracion();
        case CarpetaConocida::datosComunes:
            break;
    }
    // The shared root is the administrator's to make, and may be closed to this user.
    const std::string raiz = platform::carpetaDatosComunes();
    const std::string propia = carpetaPropia(raiz);
    const bool abierta = platform::existe(archivos_, raiz) && crearCarpeta(archivos_, propia, paraTodos) &&
                         sePuedeEscribir(archivos_, propia);
    return abierta ? std::optional(raiz) : std::nullopt;
}

std::string Carpetas::rutaPrograma() const {
    for (const std::string& carpeta : {DirectorioPrograma(), conSeparadorFinal(carpetaEjecutable_)}) {
        if (std::string ruta = carpeta + std::string(nombrePrograma); platform::existe(archivos_, ruta)) {
            return ruta;
        }
    }
    return platform::ejecutablePropio();
}

std::string Carpetas::DirectorioPrograma() const {
    if (std::string carpeta = ajustes_.leerCarpeta("Directory"); !carpeta.empty()) {
        return carpeta;
    }
    const char s = platform::separador;
    const std::string junto = SepararRuta(carpetaEjecutable_).directorio + "share" + s + "tarvoline" + s;
    return platform::existe(archivos_, junto) ? junto : conSeparadorFinal(carpetaEjecutable_);
}

void Carpetas::CrearDirectorios(std::string_view ruta) const {
    crearCarpeta(archivos_, ruta, paraTodos);
}

void Carpetas::PonerDirectorioDatos(std::string_view producto) const {
    const bool esCrm = igualSinCaja(producto, "VXCRM");
    const std::string carpeta = ajustes_.leerCarpeta(esCrm ? "DATOS_DIR" : "Directory", producto);
    const std::string ruta = archivos_.resolver(carpeta);
    std::error_code seIgnora;  // every file is opened by its whole path: the current one is a courtesy
    std::filesystem::current_path(std::filesystem::path(std::u8string(ruta.begin(), ruta.end())), seIgnora);
}

bool Carpetas::ArchivoExiste(std::string_view ruta) const {
    try {
        return archivos_.abrir(ruta, platform::Apertura::lectura) != nullptr;
    } catch (const platform::ErrorArchivo&) {
        return false;
    }
}

}  // namespace tarvoline::core
