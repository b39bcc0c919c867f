// The downloads. They keep no record: one that was cut starts over.
#include <optional>

#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/marca_transferencia.h"
#include "workflows/panel.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoArchivo = 371;
constexpr int textoSobrescribir = 617;
constexpr int textoYaExiste = 827;
constexpr int textoSinSeleccion = 1935;

}  // namespace

bool Transferencia::DescargarArchivo(std::string_view tipo, std::string_view destino) {
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto nombre = vista().fx1.celda(vista().fx1.Row, columna_rejilla::nombre);
    if (core::Recortar(nombre).empty()) {
        entorno_.escritorio.Mensaje({texto(textoSinSeleccion), core::Icono::ninguno, {}});
        return false;
    }
    std::string ruta(destino);
    if (ruta.empty() && !pedirDestino(nombre, ruta)) {
        return false;
    }
    return recibir({std::string(tipo), nombre, 0}, ruta, true);
}

bool Transferencia::AbrirArchivoServicio(std::string_view tipo, std::string_view destino) {
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto nombre = core::SoloNombre(destino);
    if (core::Recortar(nombre).empty()) {
        entorno_.escritorio.Mensaje({texto(textoSinSeleccion), core::Icono::ninguno, {}});
        return false;
    }
    if (!recibir({std::string(tipo), nombre, 0}, destino, false)) {
        return false;
    }
    entorno_.almacen.Abrir(destino);
    return true;
}

// Where the person wants the file; false when nowhere.
bool Transferencia::pedirDestino(const std::string& nombre, std::string& ruta) {
    const auto elegida = entorno_.escritorio.GuardarComo({{}, {"*.*", "*.*"}, {}, nombre});
    if (!elegida || elegida->empty()) {
        return false;
    }
    ruta = *elegida;
    if (!platform::existe(entorno_.archivos, ruta)) {
        return true;
    }
    return entorno_.escritorio.Preguntar({texto(textoArchivo) + " " + ruta + " " + texto(textoYaExiste) +
                                              "\r\n" + texto(textoSobrescribir) + "?",
                                          core::Icono::pregunta,
                                          {}});
}

// The number of bytes to come; nothing when the service has none to give, which was shown.
std::optional<std::int32_t> Transferencia::pedirLongitud(service::ClienteServicio& cliente,
                                                         const service::Recepcion& recepcion) {
    const auto resultado = cliente.FileSize(flujos_.enVigor(), recepcion.tipo, recepcion.nombre);
    if (core::esError(resultado)) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
        return std::nullopt;
    }
    return service::leerTamano(resultado);
}

bool Transferencia::recibir(service::Recepcion recepcion, std::string_view destino, bool borrarSinEmpezar) {
    bool completo = false;
    try {
        auto cliente = flujos_.nuevoCliente();
        const auto total = pedirLongitud(cliente, recepcion);
        if (!total) {
            return false;
        }
        recepcion.total = *total;
        const auto resultado = recibirPiezas(cliente, recepcion, destino);
        completo = resultado.completo;
        if (resultado.detenido && (borrarSinEmpezar || resultado.piezas > 0)) {
            entorno_.archivos.borrar(destino);
        }
        if (core::esError(resultado.respuesta)) {
            entorno_.registro.aviso("Restore " + recepcion.nombre + ": " + resultado.respuesta);
        }
    } catch (const std::exception& error) {
        completo = false;
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    flujos_.panel().limpiarProgreso();
    flujos_.panel().Barra(0);
    return completo;
}

service::ResultadoPiezas Transferencia::recibirPiezas(service::ClienteServicio& cliente,
                                                      const service::Recepcion& recepcion,
                                                      std::string_view destino) {
    auto& panel = flujos_.panel();
    entorno_.carpetas.CrearDirectorios(core::SepararRuta(destino).directorio);
    const auto archivo =
        entorno_.archivos.abrir(destino, platform::Apertura::vaciar, platform::Comparticion::compartida);
    panel.Barra(-1);
    MarcaTransferencia marca(vista(), flujos_.conexion(), false, recepcion.nombre, recepcion.total);
    service::ResultadoPiezas resultado;
    service::AvisosPiezas avisos;
    avisos.detener = [&] { return estado().gDetener; };
    avisos.turno = [&] { panel.Turno(); };
    avisos.avance = [&](std::int32_t posicion) {
        panel.MostrarProgreso(recepcion.nombre, recepcion.total, posicion);
        panel.Barra(posicion, recepcion.total);
        marca.avanzar(posicion - 1, resultado.piezas);
    };
    service::RecibirPiezas(cliente, flujos_.enVigor(), recepcion, *archivo, avisos, resultado);
    if (resultado.completo) {
        marca.avanzar(recepcion.total, resultado.piezas);
    }
    return resultado;
}

}  // namespace tarvoline::workflows
