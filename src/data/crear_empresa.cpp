#include "data/crear_empresa.h"

#include <array>

#include "core/texto.h"
#include "data/actualizacion.h"
#include "data/error_datos.h"
#include "data/opciones_empresa.h"

namespace tarvoline::data {

namespace {

using platform::Apertura;
using platform::Comparticion;
using platform::ErrorArchivo;

constexpr int numeroMayor = 99;
constexpr std::string_view extensionEmpresa = ".QZT";
constexpr std::size_t largoExtension = 4;

std::string dosCifras(int numero) {
    return core::conCeros(numero, 2);
}

bool tieneExtension(std::string_view ruta) {
    return ruta.size() >= largoExtension &&
           core::igualSinCaja(ruta.substr(ruta.size() - largoExtension), extensionEmpresa);
}

// Index n: number n is free. One walk through the directory answers for all of them.
std::array<bool, numeroMayor + 1> numerosLibres(platform::SistemaArchivos& archivos,
                                                std::string_view directorio) {
    std::array<bool, numeroMayor + 1> libres{};
    libres.fill(true);
    for (const auto& entrada : archivos.listar(directorio)) {
        // A company file is never a table, whatever its name.
        if (entrada.esDirectorio || !platform::coincideMascara(entrada.nombre, "???????.*") ||
            platform::coincideMascara(entrada.nombre, "*.QZT")) {
            continue;
        }
        const auto cifras = core::Mid(entrada.nombre, 6, 2);
        const auto numero = core::ValEntero(cifras);
        if (numero >= 1 && numero <= numeroMayor && dosCifras(numero) == cifras) {
            libres[static_cast<std::size_t>(numero)] = false;
        }
    }
    return libres;
}

[[noreturn]] void sinNumero(std::string_view directorio) {
    throw ErrorDatos(error_datos::sinNumeroLibre, "No hay espacio en el directorio " +
                                                      std::string(directorio) + "  para crear otra empresa");
}

void exigirDirectorio(const CapaDatos& capa, std::string_view directorio) {
    if (directorio.empty()) {
        throw ErrorDatos(error_datos::sinDirectorio, "RUTA= " + capa.ajustes.leerCarpeta("DATOS_DIR"));
    }
}

std::string rutaTabla(std::string_view directorio, std::string_view numero, std::string_view extension) {
    return std::string(directorio) + "PLANC" + std::string(numero) + std::string(extension);
}

// Creates a file that must not exist yet. False when somebody else has it already.
bool crearNuevo(platform::SistemaArchivos& archivos, const std::string& ruta,
                std::unique_ptr<platform::Archivo>* abierto = nullptr) {
    try {
        auto archivo = archivos.abrir(ruta, Apertura::nuevo, Comparticion::compartida);
        if (abierto != nullptr) *abierto = std::move(archivo);
        return true;
    } catch (const ErrorArchivo& error) {
        if (error.numero() != platform::error_archivo::yaExiste) throw;
        return false;
    }
}

// The number is ours once its first table is: two programs cannot both create that file.
std::string reclamarNumero(CapaDatos& capa, const std::string& directorio) {
    exigirDirectorio(capa, directorio);
    const auto libres = numerosLibres(capa.archivos, directorio);
    for (int n = 1; n <= numeroMayor; ++n) {
        if (libres[static_cast<std::size_t>(n)] &&
            crearNuevo(capa.archivos, rutaTabla(directorio, dosCifras(n), ".QZD"))) {
            return dosCifras(n);
        }
    }
    sinNumero(directorio);
}

// Creates the company file under the first free name and writes its head; a file that could not be written
// whole goes away again.
std::string grabarCabecera(CapaDatos& capa, const std::string& pedida, const CabeceraEmpresa& cabecera) {
    constexpr int intentos = 100;
    std::unique_ptr<platform::Archivo> archivo;
    for (int intento = 1;; ++intento) {
        auto ruta = NombreCabeceraLibre(capa.archivos, pedida);
        if (!crearNuevo(capa.archivos, ruta, &archivo)) {
            if (intento < intentos) continue;
            throw ErrorArchivo(platform::error_archivo::yaExiste, ruta,
                               ruta + ": no queda ningún nombre libre");
        }
        try {
            cabecera.grabar(*archivo);
            return ruta;
        } catch (const ErrorArchivo&) {
            archivo.reset();
            capa.archivos.borrar(ruta);
            throw;
        }
    }
}

std::string rutaPlantilla(const CapaDatos& capa, int plan, std::string_view extension) {
    return rutaTabla(capa.carpetas.DirectorioPrograma(), dosCifras(plan), extension);
}

void exigirPlantilla(CapaDatos& capa, std::optional<int> plan) {
    if (!plan) return;
    const auto ruta = rutaPlantilla(capa, *plan, ".QZD");
    if (!platform::existe(capa.archivos, ruta)) {
        throw ErrorArchivo(platform::error_archivo::noExiste, ruta, ruta + ": no existe el plan contable");
    }
}

void copiar(CapaDatos& capa, const std::string& origen, const std::string& destino) {
    const auto contenido = platform::leerTodo(capa.archivos, origen);
    capa.archivos.abrir(destino, Apertura::vaciar, Comparticion::compartida)
        ->escribir(0, platform::comoBytes(contenido));
}

void copiarPlantilla(CapaDatos& capa, int plan, const std::string& directorio, const std::string& numero) {
    copiar(capa, rutaPlantilla(capa, plan, ".QZD"), rutaTabla(directorio, numero, ".QZD"));
    // Keys can be made from the records, so a plan may come without them.
    const auto claves = rutaPlantilla(capa, plan, ".QZC");
    if (platform::existe(capa.archivos, claves)) copiar(capa, claves, rutaTabla(directorio, numero, ".QZC"));
}

CabeceraEmpresa cabeceraNueva(const CapaDatos& capa) {
    return CabeceraEmpresa::nueva(dosCifras(capa.reloj.local().anio % 100),
                                  static_cast<float>(capa.ajustes.LeerRegistro("Version").numero()));
}

std::string nombreLibre(platform::SistemaArchivos& archivos, std::string_view ruta,
                        std::string_view extension) {
    std::string libre(ruta);
    const auto base = ruta.substr(0, ruta.size() - std::min(ruta.size(), largoExtension));
    for (int n = 1; platform::existe(archivos, libre); ++n) {
        libre = std::string(base) + "~" + std::to_string(n) + std::string(extension);
    }
    return libre;
}

}  // namespace

std::string rutaCabecera(const core::Ajustes& ajustes, std::string_view nombre) {
    auto ruta = core::Recortar(nombre);
    if (!tieneExtension(ruta)) ruta += extensionEmpresa;
    if (!core::contieneSeparador(ruta)) ruta = ajustes.leerCarpeta("DATOS_DIR") + ruta;
    return ruta;
}

std::string CrearEmpresaArchivos(CapaDatos& capa, std::string_view ruta, std::string_view opciones) {
    if (core::Recortar(ruta).empty()) {
        throw ErrorArchivo(platform::error_archivo::ruta, {}, "la empresa nueva no tiene nombre");
    }
    const auto pedida = rutaCabecera(capa.ajustes, ruta);
    const auto directorio = core::SepararRuta(pedida).directorio;
    auto cabecera = cabeceraNueva(capa);
    const auto plan = aplicarOpciones(cabecera, opciones);
    exigirPlantilla(capa, plan);

    const auto numero = reclamarNumero(capa, directorio);
    cabecera.poner(cabecera::COMUN, numero);
    std::string archivo;
    try {
        archivo = grabarCabecera(capa, pedida, cabecera);
    } catch (const ErrorArchivo&) {
        capa.archivos.borrar(rutaTabla(directorio, numero, ".QZD"));  // gives the number back
        throw;
    }
    if (plan) copiarPlantilla(capa, *plan, directorio, numero);

    const GuardaVersionDatos guarda(capa);
    if (guarda.Comprobar(archivo) == respuestaBien) guarda.Actualizar(archivo);
    return archivo;
}

std::string NumeroEmpresaLibre(CapaDatos& capa, std::optional<std::string_view> directorio,
                               std::string_view evitar) {
    const std::string donde = directorio ? std::string(*directorio) : capa.ajustes.leerCarpeta("DATOS_DIR");
    exigirDirectorio(capa, donde);
    const auto libres = numerosLibres(capa.archivos, donde);
    for (int n = 1; n <= numeroMayor; ++n) {
        if (libres[static_cast<std::size_t>(n)] && dosCifras(n) != evitar) return dosCifras(n);
    }
    sinNumero(donde);
}

std::string NumeroLibre(platform::SistemaArchivos& archivos, std::string_view directorio) {
    const auto libres = numerosLibres(archivos, directorio);
    for (int n = 1; n <= numeroMayor; ++n) {
        if (libres[static_cast<std::size_t>(n)]) return dosCifras(n);
    }
    return {};
}

std::string NombreCabeceraLibre(platform::SistemaArchivos& archivos, std::string_view ruta) {
    return nombreLibre(archivos, ruta, ".QZt");
}

std::string NombreLibre(platform::SistemaArchivos& archivos, std::string_view carpeta,
                        std::string_view nombre) {
    const auto donde = core::conSeparadorFinal(carpeta);
    return nombreLibre(archivos, donde + std::string(nombre), extensionEmpresa).substr(donde.size());
}

std::string NumeroEmpresa(platform::SistemaArchivos& archivos, std::string_view archivo,
                          std::string_view directorioDatos) {
    std::string ruta(archivo);
    if (!core::contieneSeparador(ruta)) ruta = core::conSeparadorFinal(directorioDatos) + ruta;
    if (!tieneExtension(ruta)) ruta += extensionEmpresa;
    std::string numero(2, '\0');
    const auto abierto = archivos.abrir(ruta, Apertura::lectura, Comparticion::compartida);
    numero.resize(abierto->leer(0, std::as_writable_bytes(std::span(numero))));
    return numero;
}

}  // namespace tarvoline::data
