#include "workflows/restauracion.h"

#include <algorithm>
#include <set>

#include "core/carpetas.h"
#include "core/formato.h"
#include "core/texto.h"
#include "data/crear_empresa.h"
#include "workflows/colocacion.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/temporales.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoClave = 310;
constexpr int textoSinEmpresa = 971;
constexpr int textoArchivo = 371;
constexpr int textoRuta = 515;
constexpr int textoNoCompletado = 1227;
constexpr int ultimoCodigoSinError = 100;
// In the work folder: the unpacked files, the replaced ones, and the file that keeps other processes out.
constexpr std::string_view nuevos = "nuevo";
constexpr std::string_view anteriores = "anterior";
constexpr std::string_view testigo = "en-uso";

std::string sinExtension(std::string_view nombre) {
    return core::SepararRuta(nombre).nombre;
}

}  // namespace

struct Restauracion::Trabajo {
    explicit Trabajo(platform::SistemaArchivos& archivos, std::string_view ruta)
        : zip(archivos), archivo(ruta) {
        zip.destino = archivo;
    }

    zip::Zip zip;
    std::string archivo;
    std::vector<zip::EntradaListada> entradas;
    std::uint64_t totalDescomprimido = 0;
    std::string nombreEmpresa;  // the company file's name in the archive
    std::string nombreLibre;    // and the one that it gets
    std::string numero;         // the number that it gets
    bool sobrescribir = false;
    std::string carpeta;                         // the work folder, with final separator
    std::unique_ptr<platform::Archivo> testigo;  // keeps another process out of it
    std::vector<Colocacion> plan;
};

void Restauracion::avisar(const std::string& mensaje, core::Icono icono) {
    entorno_.escritorio.Mensaje({mensaje, icono, {}});
}

bool Restauracion::RestaurarEmpresa(std::string_view archivoZip) {
    rutaRestaurada_.clear();
    if (archivoZip.empty() || !platform::existe(entorno_.archivos, archivoZip)) {
        return false;
    }
    entorno_.escritorio.Puntero(true);
    bool hecha = false;
    try {
        Trabajo trabajo(entorno_.archivos, archivoZip);
        hecha = restaurar(trabajo);
    } catch (const std::exception& error) {
        entorno_.registro.error("RestaurarEmpresa " + std::string(archivoZip) + ": " + error.what());
        avisar(std::string(error.what()) + "\r\n" + texto(982));
    }
    entorno_.escritorio.Puntero(false);
    return hecha;
}

bool Restauracion::restaurar(Trabajo& trabajo) {
    if (!leerContenido(trabajo) || !elegirDestino(trabajo)) {
        return false;
    }
    prepararCarpeta(trabajo);
    if (!hayEspacioEnDisco(trabajo) || !descomprimir(trabajo)) {
        quitarCarpeta(trabajo);
        return false;
    }
    planear(trabajo);
    colocar(trabajo);
    rutaRestaurada_ = estado().gDatosDir + trabajo.nombreLibre;
    entorno_.escritorio.Puntero(false);
    entorno_.carpetas.PonerDirectorioDatos(estado().gProducto);
    contar(trabajo);
    return true;
}

// Finds the one company file among the archive's root entries.
bool Restauracion::leerContenido(Trabajo& trabajo) {
    const int codigo = trabajo.zip.listar(trabajo.entradas);
    if (codigo > ultimoCodigoSinError) {
        avisar(zip::TextoErrorZip(codigo, texto(textoRuta)), core::Icono::parada);
        return false;
    }
    int empresas = 0;
    for (const auto& entrada : trabajo.entradas) {
        trabajo.totalDescomprimido += entrada.longitud;
        if (!core::contieneSeparador(entrada.nombre) &&
            core::Minusculas(entrada.nombre).find(".qzt") != std::string::npos) {
            trabajo.nombreEmpresa = entrada.nombre;
            ++empresas;
        }
    }
    if (empresas == 1) {
        return true;
    }
    avisar(texto(textoArchivo) + " " + trabajo.archivo + "\r\n" + texto(textoSinEmpresa));
    return false;
}

// The name and the number that the company gets; false when the person gave up or no number is free.
bool Restauracion::elegirDestino(Trabajo& trabajo) {
    const auto ruta = estado().gDatosDir + trabajo.nombreEmpresa;
    const auto libre = data::NombreLibre(entorno_.archivos, estado().gDatosDir, trabajo.nombreEmpresa);
    trabajo.nombreLibre = libre;
    if (platform::existe(entorno_.archivos, ruta)) {
        core::EntradaDatos datos;
        datos.titulo = texto(1243);
        datos.campos.push_back(
            {.etiqueta = texto(588) + " " + texto(617) + " '" + trabajo.nombreEmpresa + "'",
             .tipo = core::TipoCampo::opcion,
             .longitud = 0,
             .valor = {},
             .elecciones = {}});
        datos.campos.push_back({.etiqueta = texto(165) + " " + libre,
                                .tipo = core::TipoCampo::opcion,
                                .longitud = 0,
                                .valor = {},
                                .elecciones = {}});
        datos.opcion = 1;
        if (!entorno_.escritorio.PedirDatos(datos)) {
            return false;
        }
        if (datos.opcion == 0) {
            return prepararSobrescritura(trabajo);
        }
    }
    trabajo.numero = data::NumeroLibre(entorno_.archivos, estado().gDatosDir);
    if (trabajo.numero.empty()) {
        entorno_.escritorio.Puntero(false);
        avisar(texto(830));
        return false;
    }
    return true;
}

bool Restauracion::prepararSobrescritura(Trabajo& trabajo) {
    trabajo.sobrescribir = true;
    trabajo.nombreLibre = trabajo.nombreEmpresa;
    terminarProgramaContable();
    const auto ruta = estado().gDatosDir + trabajo.nombreEmpresa;
    trabajo.numero = data::NumeroEmpresa(entorno_.archivos, ruta);
    while (!EmpresaLibre(ruta)) {
        if (!entorno_.escritorio.Confirmar(
                {trabajo.nombreEmpresa + "\r\n" + texto(29) + "\r\n" + texto(1742) + "\r\n" + texto(1743),
                 core::Icono::exclamacion,
                 {}})) {
            avisar(texto(textoNoCompletado));
            return false;
        }
    }
    return true;
}

bool Restauracion::hayEspacioEnDisco(const Trabajo& trabajo) {
    std::uint64_t libres = trabajo.totalDescomprimido;
    core::ignorandoErrores(entorno_, "free space",
                           [&] { libres = entorno_.archivos.espacioLibre(estado().gDatosDir); });
    if (libres >= trabajo.totalDescomprimido) {
        return true;
    }
    const auto cifra = [](std::uint64_t valor) {
        return core::formatoEntero(static_cast<std::int64_t>(valor));
    };
    return entorno_.escritorio.Preguntar({texto(977) + "\r\n" + texto(978) + " " + cifra(libres) + "\r\n" +
                                              texto(979) + " " + cifra(trabajo.totalDescomprimido) +
                                              "\r\n\r\n" + texto(980),
                                          core::Icono::pregunta,
                                          {}});
}

void Restauracion::prepararCarpeta(Trabajo& trabajo) {
    auto& archivos = entorno_.archivos;
    trabajo.carpeta = core::conSeparadorFinal(estado().gDatosDir + "ZIP");
    archivos.crearDirectorios(trabajo.carpeta);
    trabajo.testigo = archivos.abrir(trabajo.carpeta + std::string(testigo), platform::Apertura::crear,
                                     platform::Comparticion::exclusiva);
    apartarAnteriores(trabajo.carpeta);
    vaciarCarpeta(archivos, trabajo.carpeta + std::string(nuevos), {});
    for (const auto& entrada : archivos.listar(trabajo.carpeta)) {
        if (!entrada.esDirectorio && entrada.nombre != testigo) {
            archivos.borrar(trabajo.carpeta + entrada.nombre);
        }
    }
}

// Replaced files that a restore left behind when its process died are the only copy of them: they are put
// aside, never deleted.
void Restauracion::apartarAnteriores(const std::string& carpeta) {
    auto& archivos = entorno_.archivos;
    const auto restos = carpeta + std::string(anteriores);
    if (archivos.listar(restos).empty()) {
        return;
    }
    std::string sitio;
    for (int k = 1; sitio.empty() || platform::existe(archivos, sitio); ++k) {
        sitio = carpeta + "interrumpida-" + std::to_string(k);
    }
    archivos.renombrar(restos, sitio);
    entorno_.registro.error("Files that an interrupted restore had replaced are kept in " + sitio);
}

void Restauracion::quitarCarpeta(Trabajo& trabajo) {
    core::ignorandoErrores(entorno_, "work folder", [&] {
        auto& archivos = entorno_.archivos;
        for (const auto propia : {nuevos, anteriores}) {
            const auto carpeta = trabajo.carpeta + std::string(propia);
            vaciarCarpeta(archivos, carpeta, {});
            if (platform::existe(archivos, carpeta)) {
                archivos.borrarDirectorio(carpeta);
            }
        }
        trabajo.testigo.reset();
        archivos.borrar(trabajo.carpeta + std::string(testigo));
        if (archivos.listar(trabajo.carpeta).empty()) {
            archivos.borrarDirectorio(trabajo.carpeta);
        }
    });
}

bool Restauracion::descomprimir(Trabajo& trabajo) {
    // Beneath the work folder, so that no entry of the archive meets a file of ours.
    const int codigo = trabajo.zip.descomprimir(trabajo.carpeta + std::string(nuevos));
    if (codigo == zip::codigo::bien) {
        return true;
    }
    avisar(codigo == zip::codigo::entradasOmitidas ? texto(textoClave)
                                                   : zip::TextoErrorZip(codigo, texto(textoRuta)),
           core::Icono::parada);
    return false;
}

// Where each unpacked file belongs. Attached folders do not come back, nor do root entries whose names have
// no room for a number.
void Restauracion::planear(Trabajo& trabajo) {
    const auto prefijo = core::Mayusculas(sinExtension(trabajo.nombreEmpresa));
    const auto imagenes = core::conSeparadorFinal(estado().gDatosDir + sinExtension(trabajo.nombreLibre));
    std::set<std::string> usados;
    for (const auto& entrada : trabajo.entradas) {
        if (entrada.esDirectorio) {
            continue;
        }
        const auto origen = trabajo.carpeta + std::string(nuevos) + "/" + entrada.nombre;
        if (entrada.nombre == trabajo.nombreEmpresa) {
            trabajo.plan.push_back({origen, estado().gDatosDir + trabajo.nombreLibre, trabajo.numero});
        } else if (core::contieneSeparador(entrada.nombre)) {
            if (core::empiezaPor(core::Mayusculas(entrada.nombre), prefijo)) {
                trabajo.plan.push_back(
                    {origen, imagenes + nombreSinRepetir(usados, core::SoloNombre(entrada.nombre)), {}});
            }
        } else if (!numeroDeTabla(entrada.nombre).empty()) {
            trabajo.plan.push_back(
                {origen, estado().gDatosDir + conNumeroDeTabla(entrada.nombre, trabajo.numero), {}});
        }
    }
}

void Restauracion::colocar(Trabajo& trabajo) {
    Colocador colocador(entorno_.archivos, trabajo.carpeta + std::string(anteriores));
    colocador.preparar(trabajo.plan);
    colocador.colocar(trabajo.plan);
    quitarCarpeta(trabajo);
}

void Restauracion::contar(const Trabajo& trabajo) {
    avisar(texto(981), core::Icono::informacion);
    if (trabajo.nombreLibre != trabajo.nombreEmpresa) {
        avisar(texto(1569) + " " + trabajo.nombreEmpresa + "\r\n" + texto(1570) + " " + trabajo.nombreLibre,
               core::Icono::informacion);
    }
    if (trabajo.sobrescribir) {
        core::ignorandoErrores(entorno_, "accounting program", [&] { abrirProgramaContable(); });
    }
}

}  // namespace tarvoline::workflows
