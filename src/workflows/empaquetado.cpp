#include "workflows/empaquetado.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "core/carpetas.h"
#include "core/texto.h"
#include "platform/procesos.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoNoCopiado = 179;
constexpr int textoRuta = 515;
constexpr std::string_view imagenesDanadas =
    " no se han podido copiar algunas imagenes porque están dañadas. Revise principalmente aquellas que no "
    "tengan "
    "fecha de modificación";

// A name that any file system takes, from a text that a person wrote.
std::string nombreDeArchivo(std::string_view texto) {
    std::string nombre(texto);
    std::replace_if(
        nombre.begin(), nombre.end(),
        [](char c) { return std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos; }, '_');
    return nombre;
}

std::string sinExtension(std::string_view nombre) {
    return core::SepararRuta(nombre).nombre;
}

}  // namespace

struct Empaquetado::Trabajo {
    Trabajo(platform::SistemaArchivos& archivos, std::string_view archivoEmpresa)
        : empresa(archivoEmpresa),
          carpeta(core::SepararRuta(archivoEmpresa).directorio),
          nombre(core::SoloNombre(archivoEmpresa)),
          zip(archivos) {}

    std::string empresa;  // full path of the company file
    std::string carpeta;  // its folder
    std::string nombre;   // its file name
    std::vector<std::string> tablas;
    std::string copias;  // folder of this run's copies
    std::unique_ptr<platform::Archivo> testigo;
    std::string archivo;  // the archive
    zip::Zip zip;
    std::string problemas;
};

// Runs one statement of the packing; what it raises joins the problem text, and the packing goes on.
template <typename Paso>
void Empaquetado::anotando(Trabajo& trabajo, Paso&& paso) {
    try {
        paso();
    } catch (const std::exception& error) {
        entorno_.registro.error(std::string("ZipEmpresa: ") + error.what());
        trabajo.problemas += error.what();
    }
}

void Empaquetado::traza(std::string_view texto) {
    if (estado().gModoComprobacion) {
        entorno_.escritorio.Mensaje({std::string(texto), core::Icono::ninguno, {}});
    }
}

std::string Empaquetado::ZipEmpresa(std::string_view archivoEmpresa, std::string_view carpetaDestino,
                                    bool conImagenes, bool conFecha, int nivel,
                                    std::string_view nombreDestino) {
    flujos_.panel().Barra(-1);
    Trabajo trabajo(entorno_.archivos, archivoEmpresa);
    trabajo.zip.nivel = nivel;
    prepararZip(trabajo.zip);

    copiarTablas(trabajo);
    anotando(trabajo, [&] { nombrarArchivo(trabajo, carpetaDestino, conFecha, nombreDestino); });
    trabajo.zip.recursivo = conImagenes;
    comprimirTablas(trabajo);
    if (conImagenes) {
        comprimirImagenes(trabajo);
        traza("ZipEmpresa.10");
    }
    trabajo.zip.recursivo = false;
    traza("ZipEmpresa.11");
    comprimirAdjuntos(trabajo);
    traza("ZipEmpresa.12");
    borrarCopias(trabajo);
    traza("ZipEmpresa.15");
    entorno_.carpetas.PonerDirectorioDatos(estado().gProducto);
    traza("ZipEmpresa.15.1 " + trabajo.archivo);
    traza("ZipEmpresa.16");
    traza("ZipEmpresa Process: " + trabajo.problemas);
    traza("ZipEmpresa DestZip: " + trabajo.archivo);
    return trabajo.problemas.empty() ? trabajo.archivo : trabajo.problemas;
}

void Empaquetado::prepararZip(zip::Zip& zip) {
    zip.hilos = hilos;
    zip.progreso = [this](std::uint64_t hecho, std::uint64_t total) {
        if (!estado().gDetener && !estado().gDesatendido) {
            flujos_.panel().Barra(static_cast<double>(std::max<std::uint64_t>(hecho, 1)),
                                  static_cast<double>(std::max<std::uint64_t>(total, 1)));
        }
        flujos_.panel().Turno();
        return !estado().gDetener;
    };
}

void Empaquetado::copiarTablas(Trabajo& trabajo) {
    auto& archivos = entorno_.archivos;
    anotando(trabajo, [&] {
        traza("ZipEmpresa.01");
        trabajo.tablas =
            tablasDeEmpresa(archivos, trabajo.carpeta, numeroDeEmpresa(archivos, trabajo.empresa));
        std::erase_if(trabajo.tablas,
                      [&](const auto& tabla) { return core::igualSinCaja(tabla, trabajo.nombre); });
        traza("ZipEmpresa.02");
    });
    anotando(trabajo, [&] {
        trabajo.copias = entorno_.carpetas.CarpetaTemporal(std::string(prefijoCopias) +
                                                           std::to_string(platform::procesoPropio()) + "-" +
                                                           std::to_string(++copias_));
        archivos.crearDirectorios(trabajo.copias, 0700);
        trabajo.testigo = archivos.abrir(trabajo.copias + "/" + std::string(testigo),
                                         platform::Apertura::crear, platform::Comparticion::exclusiva);
    });
    const auto copia = [&](std::string_view nombre) { return trabajo.copias + "/" + std::string(nombre); };
    if (!CopiarArchivo(trabajo.empresa, copia(trabajo.nombre))) {
        trabajo.problemas +=
            texto(textoNoCopiado) + " " + trabajo.empresa + "\r\na " + copia(trabajo.nombre) + "\r\n\r\n";
    }
    traza("ZipEmpresa.03");
    for (const auto& tabla : trabajo.tablas) {
        if (!CopiarArchivo(trabajo.carpeta + tabla, copia(tabla))) {
            trabajo.problemas += texto(textoNoCopiado) + " " + tabla + "\r\n";
        }
        flujos_.panel().Turno();
    }
    traza("ZipEmpresa.04");
}

// The date and time behind a company's name; a name already given in this run takes the next free minute,
// since two archives of one name would be one file on the service.
std::string Empaquetado::conSello(std::string_view nombre) {
    for (auto instante = entorno_.reloj.ahora();; instante += std::chrono::minutes(1)) {
        const auto hora = platform::aLocal(instante);
        const auto completo =
            core::Mayusculas(std::string(nombre) + " " + core::conCeros(hora.anio, 4) + "-" +
                             core::conCeros(hora.mes, 2) + "-" + core::conCeros(hora.dia, 2) + "  " +
                             core::conCeros(hora.hora, 2) + " " + core::conCeros(hora.minuto, 2) + ".ZIP");
        if (nombresUsados_.insert(completo).second) {
            return completo;
        }
    }
}

void Empaquetado::nombrarArchivo(Trabajo& trabajo, std::string_view carpetaDestino, bool conFecha,
                                 std::string_view nombreDestino) {
    const auto carpeta = core::conSeparadorFinal(carpetaDestino);
    entorno_.archivos.crearDirectorios(carpeta, 0700);
    if (!nombreDestino.empty()) {
        trabajo.archivo = carpeta + core::Mayusculas(nombreDeArchivo(nombreDestino));
        traza("ZipEmpresa.06");
    } else {
        const auto nombre = core::Mid(trabajo.nombre, 1, core::longitudTexto(trabajo.nombre) - 4);
        trabajo.archivo = carpeta + (conFecha ? conSello(nombre) : core::Mayusculas(nombre) + ".ZIP");
        traza("ZipEmpresa.05");
    }
    if (platform::existe(entorno_.archivos, trabajo.archivo)) {
        entorno_.archivos.borrar(trabajo.archivo);  // a fixed name would keep the entries of the time before
    }
    trabajo.zip.destino = trabajo.archivo;
}

void Empaquetado::comprimirTablas(Trabajo& trabajo) {
    anotando(trabajo, [&] {
        std::vector<std::string> lista{trabajo.nombre};
        lista.insert(lista.end(), trabajo.tablas.begin(), trabajo.tablas.end());
        const int codigo = trabajo.zip.comprimir(trabajo.copias, lista);
        if (codigo != zip::codigo::bien) {
            trabajo.problemas += zip::TextoErrorZip(codigo, texto(textoRuta));
        }
    });
}

// The tables go in a second time, from the live folder, with the images beside them; one that cannot be read
// now keeps its locked copy.
void Empaquetado::comprimirImagenes(Trabajo& trabajo) {
    anotando(trabajo, [&] {
        std::vector<std::string> lista{trabajo.nombre};
        lista.insert(lista.end(), trabajo.tablas.begin(), trabajo.tablas.end());
        lista.push_back(sinExtension(trabajo.nombre));
        const int codigo = trabajo.zip.comprimir(trabajo.carpeta, lista);
        if (codigo == zip::codigo::errorArchivo) {
            trabajo.problemas += imagenesDanadas;
        } else if (codigo != zip::codigo::bien && codigo != zip::codigo::nadaQueHacer) {
            trabajo.problemas += "ERROR: ZIP " + zip::TextoErrorZip(codigo, texto(textoRuta)) + ",";
        }
    });
}

void Empaquetado::comprimirAdjuntos(Trabajo& trabajo) {
    const auto& adjuntos = estado().gAdjuntarCarpetas;
    if (adjuntos.size() < 2) {
        return;
    }
    traza("ZipEmpresa.11.1");
    for (std::size_t i = 1; i < adjuntos.size(); ++i) {
        const auto& entrada = adjuntos[i];
        if (entrada.empty() && i > 1) {
            break;
        }
        if (!core::contieneSeparador(entrada)) {
            continue;
        }
        traza("ZipEmpresa.11.2 " + entrada);
        core::ignorandoErrores(entorno_, "ZipEmpresa, attached folder", [&] {
            trabajo.zip.recursivo = true;
            const auto limpia = entrada.find_last_not_of("\\/") == std::string::npos
                                    ? entrada
                                    : entrada.substr(0, entrada.find_last_not_of("\\/") + 1);
            const auto padre = core::SepararRuta(limpia).directorio;
            const int codigo = trabajo.zip.comprimir(padre, {core::SoloNombre(limpia)});
            if (codigo != zip::codigo::bien && codigo != zip::codigo::nadaQueHacer &&
                codigo != zip::codigo::errorArchivo) {
                trabajo.problemas += "ERROR: ZIP " + zip::TextoErrorZip(codigo, texto(textoRuta)) + ",";
            }
        });
    }
    trabajo.zip.recursivo = false;
}

void Empaquetado::borrarCopias(Trabajo& trabajo) {
    const auto borrar = [&](std::string_view nombre) {
        core::ignorandoErrores(entorno_, "ZipEmpresa, temporary copy",
                               [&] { entorno_.archivos.borrar(trabajo.copias + "/" + std::string(nombre)); });
    };
    if (trabajo.copias.empty()) {
        return;
    }
    borrar(trabajo.nombre);
    traza("ZipEmpresa.13");
    std::ranges::for_each(trabajo.tablas, borrar);
    traza("ZipEmpresa.14");
    trabajo.testigo.reset();
    borrar(testigo);
    core::ignorandoErrores(entorno_, "ZipEmpresa, temporary folder",
                           [&] { entorno_.archivos.borrarDirectorio(trabajo.copias); });
}

}  // namespace tarvoline::workflows
