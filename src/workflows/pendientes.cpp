#include "workflows/pendientes.h"

#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/empaquetado.h"
#include "workflows/espacio.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/sesion.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int ranuras = 100;
constexpr int textoClave = 310;
constexpr int textoTerminado = 214;
constexpr int textoSinUsuario = 2215;
constexpr int textoSinEspacio = 2234;

}  // namespace

std::string QuitarComillas(std::string_view texto) {
    return core::longitudTexto(texto) < 2 ? std::string()
                                          : core::Mid(texto, 2, core::longitudTexto(texto) - 2);
}

std::string Pendientes::leer(std::string_view clave, int ranura) const {
    return entorno_.almacen.Leer(std::string(clave) + std::to_string(ranura), "NETBACKUP", "",
                                 estado().gProducto);
}

void Pendientes::grabar(std::string_view clave, int ranura, std::string_view valor) {
    entorno_.almacen.Grabar(std::string(clave) + std::to_string(ranura), valor, "NETBACKUP",
                            estado().gProducto);
}

bool Pendientes::SubirPendientesBatch(bool mostrar) {
    carpetas_.emplace(vista());
    Vuelta vuelta;
    do {
        vuelta = recorrer(mostrar);  // what failed in an earlier scan is tried again in this one
    } while (vuelta.sigue && vuelta.huboExito);
    const bool interrumpido = !vuelta.sigue && estado().gInterrumpido;
    reponer();
    estado().gInterrumpido = interrumpido;
    return vuelta.sigue && vuelta.todoBien;
}

Pendientes::Vuelta Pendientes::recorrer(bool mostrar) {
    Vuelta vuelta;
    for (int ranura = 1; ranura <= ranuras && vuelta.sigue; ++ranura) {
        auto fin = Fin::fallida;
        core::ignorandoErrores(entorno_, "SubirPendientesBatch", [&] { fin = subirRanura(ranura, mostrar); });
        vuelta.sigue = fin != Fin::detenida;
        vuelta.huboExito = vuelta.huboExito || fin == Fin::enviada;
        vuelta.todoBien = vuelta.todoBien && (fin == Fin::vacia || fin == Fin::enviada);
    }
    return vuelta;
}

// Each company goes up under its own user and folder; nothing of one may leak into the next, nor into what
// comes after the run.
void Pendientes::reponer() {
    if (carpetas_) {
        carpetas_->reponer();
    }
    flujos_.sesion().reponerUsuario();
    flujos_.configuracion().reponerCarpeta();
    estado().gInterrumpido = false;
}

Pendientes::Fin Pendientes::subirRanura(int ranura, bool mostrar) {
    const auto ruta = QuitarComillas(leer("EMP", ranura));
    if (ruta.empty()) {
        return Fin::vacia;
    }
    if (!entorno_.carpetas.ArchivoExiste(ruta)) {
        entorno_.registro.aviso("Pending company is gone: " + ruta);
        grabar("EMP", ranura, "");
        return Fin::vacia;
    }
    reponer();
    estado().gCarpeta = "DATOS";
    try {
        if (const auto fallo = cargarEmpresa(ruta); !fallo.empty()) {
            return anotarFallo(ranura, ruta, fallo);
        }
        return empaquetarYSubir(ranura, ruta, mostrar);
    } catch (const std::exception& error) {
        return anotarFallo(ranura, ruta, texto(1250) + error.what());
    }
}

// Loads the company's own user; the reason when it has none.
std::string Pendientes::cargarEmpresa(const std::string& ruta) {
    flujos_.configuracion().CargarConfiguracionEmpresa(ruta);
    if (flujos_.configuracion().claveRechazada()) {
        return texto(textoClave) + " incorrecta";
    }
    return core::Recortar(estado().gUsuario).empty() ? texto(textoSinUsuario) : std::string();
}

Pendientes::Fin Pendientes::empaquetarYSubir(int ranura, const std::string& ruta, bool mostrar) {
    auto& panel = flujos_.panel();
    if (mostrar) {
        panel.MostrarEmpaquetado(core::SoloNombre(ruta));
    }
    const auto zip = flujos_.empaquetado().ZipEmpresa(ruta, entorno_.carpetas.carpetaTransferencia(), true);
    if (mostrar) {
        panel.limpiarProgreso();
    }
    if (estado().gDetener) {
        return Fin::detenida;
    }
    if (core::esError(zip)) {
        return anotarFallo(ranura, ruta, zip);
    }
    const auto respuesta = flujos_.transferencia().SubirArchivo(zip, "VELDORIX", mostrar, 1);
    if (core::esError(respuesta)) {
        return anotarFallo(ranura, ruta, respuesta);
    }
    if (respuesta == "NO") {
        const auto& motivo = flujos_.espacio().motivo();
        return anotarFallo(ranura, ruta, motivo.empty() ? texto(textoSinEspacio) : motivo);
    }
    if (estado().gInterrumpido) {
        return Fin::detenida;
    }
    return anotarExito(ranura, ruta) ? Fin::enviada : Fin::detenida;
}

Pendientes::Fin Pendientes::anotarFallo(int ranura, const std::string& ruta, const std::string& fallo) {
    entorno_.registro.error("Not sent: " + ruta + ": " + fallo);
    estado().resumen.anotar({ranura, ruta, false, fallo});
    grabar("ERROR", ranura, fallo);
    return Fin::fallida;
}

// False when the slot cannot be cleared: to go on would send the company for ever.
bool Pendientes::anotarExito(int ranura, const std::string& ruta) {
    grabar("EMP", ranura, "");
    if (!leer("ERROR", ranura).empty()) {
        grabar("ERROR", ranura, "");
    }
    const bool limpia = leer("EMP", ranura).empty();
    estado().resumen.anotar(
        {ranura, ruta, limpia, limpia ? std::string() : "No se ha podido quitar la marca de pendiente"});
    entorno_.registro.info((limpia ? "Sent: " : "Sent, but its mark could not be cleared: ") + ruta);
    return limpia;
}

void Pendientes::SubirPendientes_Click() {
    auto& panel = flujos_.panel();
    panel.entrada([&] {
        entorno_.escritorio.Puntero(true);
        panel.Desabilitar_Formulario(false);
        panel.Barra(-1);
        SubirPendientesBatch(true);
        core::ignorandoErrores(entorno_, "SubirPendientes", [&] { flujos_.listados().RefrescarVista(); });
        entorno_.escritorio.Puntero(false);
        entorno_.escritorio.Mensaje({texto(textoTerminado), core::Icono::informacion, {}});
    });
}

}  // namespace tarvoline::workflows
