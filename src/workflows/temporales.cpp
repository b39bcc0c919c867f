#include "workflows/temporales.h"

#include <array>

#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/empaquetado.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int nombresComoMucho = 1000;
constexpr int textoInterrumpida = 2257;
constexpr std::array<std::string_view, 2> productos = {"VELDORIX", "VXCRM"};

}  // namespace

// True for the archive of an interrupted upload of either product: the bytes that a resume needs.
bool Temporales::esSubidaInterrumpida(std::string_view ruta) const {
    const auto normal = core::Mayusculas(entorno_.archivos.resolver(ruta));
    for (const auto producto : productos) {
        const auto activa = entorno_.almacen.Leer("Active", "NETBACKUP", "", producto);
        if (!activa.empty() && core::Mayusculas(entorno_.archivos.resolver(activa)) == normal) {
            return true;
        }
    }
    return false;
}

// A transfer keeps its file open shared for as long as it works (workflows/transferencia.h), so a file that
// can be had exclusively belongs to nobody.
void Temporales::borrarSiLibre(std::string_view ruta) {
    if (esSubidaInterrumpida(ruta)) {
        return;
    }
    core::ignorandoErrores(entorno_, "temporary file", [&] {
        const auto mio =
            entorno_.archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::exclusiva);
        entorno_.archivos.borrar(ruta);
    });
}

void Temporales::VaciarTemporal() {
    const auto carpeta = entorno_.carpetas.carpetaTransferencia();
    auto nombres = platform::listarMascara(entorno_.archivos, carpeta, "*.*");
    if (nombres.size() > nombresComoMucho) {
        nombres.resize(nombresComoMucho);
    }
    for (const auto& nombre : nombres) {
        borrarSiLibre(core::conSeparadorFinal(carpeta) + nombre);
        flujos_.panel().Turno();
    }
}

std::string Temporales::rutaDescarga(std::string_view nombre) const {
    if (nombre.empty() || nombre == "." || nombre == ".." || core::contieneSeparador(nombre) ||
        nombre.find('\0') != std::string_view::npos) {
        throw platform::ErrorArchivo(platform::error_archivo::ruta, std::string(nombre),
                                     estado().gErrores(333) + " " + std::string(nombre));
    }
    auto ruta = core::conSeparadorFinal(entorno_.carpetas.carpetaTransferencia()) + std::string(nombre);
    if (esSubidaInterrumpida(ruta)) {
        throw platform::ErrorArchivo(platform::error_archivo::permisoDenegado, ruta,
                                     texto(textoInterrumpida) + " " + std::string(nombre));
    }
    return ruta;
}

void Temporales::LimpiarZipsTemporales(bool otraInstancia) {
    if (otraInstancia) {
        return;
    }
    const auto carpeta = core::conSeparadorFinal(entorno_.carpetas.carpetaTransferencia());
    for (const auto& nombre : platform::listarMascara(entorno_.archivos, carpeta, "*.zip")) {
        borrarSiLibre(carpeta + nombre);
    }
    borrarCopiasViejas();
}

// Folders of table copies that a packing left behind when its process died.
void Temporales::borrarCopiasViejas() {
    const auto raiz = core::conSeparadorFinal(entorno_.carpetas.CarpetaTemporal());
    for (const auto& entrada : entorno_.archivos.listar(raiz)) {
        if (!entrada.esDirectorio || !core::empiezaPor(entrada.nombre, Empaquetado::prefijoCopias)) {
            continue;
        }
        core::ignorandoErrores(entorno_, "stale table copies", [&] {
            auto& archivos = entorno_.archivos;
            const auto carpeta = raiz + entrada.nombre + "/";
            auto mia = archivos.abrir(carpeta + std::string(Empaquetado::testigo), platform::Apertura::crear,
                                      platform::Comparticion::exclusiva);
            for (const auto& copia : archivos.listar(carpeta)) {
                archivos.borrar(carpeta + copia.nombre);
            }
            mia.reset();
            archivos.borrarDirectorio(carpeta);
        });
    }
}

}  // namespace tarvoline::workflows
