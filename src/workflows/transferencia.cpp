#include "workflows/transferencia.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <stdexcept>

#include "core/carpetas.h"
#include "core/texto.h"
#include "platform/acceso_inicio.h"
#include "workflows/espacio.h"
#include "workflows/marca_transferencia.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoFallo = 1250;
constexpr std::string_view seccion = "NETBACKUP";
constexpr std::string_view sinSitio = "NO";
constexpr std::string_view tipoPersonal = "PERSONAL";
constexpr std::string_view tipoVeldorix = "VELDORIX";
constexpr std::string_view nombreAcceso = "Tarvoline";

std::int32_t longitudEnviable(std::uint64_t longitud, std::string_view archivo) {
    if (longitud > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) {
        throw std::overflow_error("Desbordamiento: " + std::string(archivo) + " ocupa 2 GiB o más");
    }
    return static_cast<std::int32_t>(longitud);
}

}  // namespace

std::string Transferencia::SubirArchivo(std::string_view archivo, std::string_view tipo, bool mostrar,
                                        std::int32_t posicion) {
    envio_ = {};
    avisadoAjustes_ = false;
    if (!entorno_.carpetas.ArchivoExiste(archivo)) {
        // A problem text of the packing that travels on in place of a path ends here.
        return "ERROR: " + std::string(archivo);
    }
    std::optional<service::ClienteServicio> cliente;
    try {
        return subir(archivo, tipo, mostrar, posicion, cliente);
    } catch (const std::exception& error) {
        const auto detalle = cliente ? cliente->detail() : std::string();
        entorno_.registro.error("SubirArchivo " + std::string(archivo) + ": " + error.what());
        return texto(textoFallo) + " " + error.what() + ", " + detalle;
    }
}

std::string Transferencia::subir(std::string_view archivo, std::string_view tipo, bool mostrar,
                                 std::int32_t posicion, std::optional<service::ClienteServicio>& cliente) {
    auto retenido =
        entorno_.archivos.abrir(archivo, platform::Apertura::lectura, platform::Comparticion::compartida);
    if (!flujos_.espacio().HayEspacio(archivo)) {
        estado().gInterrumpido = true;
        return std::string(sinSitio);
    }
    if (estado().gDetener) {
        estado().gInterrumpido = true;
        return {};
    }
    const auto longitud = longitudEnviable(retenido->longitud(), archivo);
    if (core::igualSinCaja(tipo, tipoPersonal)) {
        retenido.reset();
    }
    anotarSubida(archivo, tipo, posicion);
    CrearAcceso();
    cliente.emplace(flujos_.nuevoCliente());
    enviar(*cliente, {std::string(archivo), std::string(tipo), core::SoloNombre(archivo), longitud, posicion},
           mostrar);
    retenido.reset();
    terminarSubida(archivo, tipo);
    return envio_.respuesta;
}

void Transferencia::enviar(service::ClienteServicio& cliente, const service::Envio& envio, bool mostrar) {
    auto& panel = flujos_.panel();
    const auto progreso = [&](std::int64_t total, std::int64_t actual) {
        if (mostrar) {
            panel.MostrarProgreso(envio.ruta, total, actual);
        }
    };
    MarcaTransferencia marca(vista(), flujos_.conexion(), true, envio.nombre, envio.longitud,
                             envio.posicion - 1);
    progreso(envio.longitud, 0);
    const bool porPiezas = envio.longitud >= service::longitudPieza;
    if (porPiezas) {
        panel.Barra(-1);
    }
    service::AvisosPiezas avisos;
    avisos.detener = [&] { return estado().gDetener; };
    avisos.turno = [&] { panel.Turno(); };
    avisos.antesDePieza = [&](std::int32_t posicion) { grabarPosicion(std::to_string(posicion)); };
    avisos.avance = [&](std::int32_t posicion) {
        progreso(envio.longitud, posicion);
        panel.Barra(posicion, envio.longitud);
        marca.avanzar(posicion - 1, envio_.piezas);
    };
    service::EnviarPiezas(entorno_.archivos, cliente, flujos_.enVigor(), envio, avisos, envio_);
    if (envio_.detenido) {
        estado().gInterrumpido = true;
    }
    avisarCambio(envio);
    if (porPiezas) {
        progreso(100, 100);
    } else {
        progreso(envio.longitud, envio.longitud);
    }
    if (envio_.completo) {
        marca.avanzar(envio.longitud, envio_.piezas);
    }
}

// What went up of a file that others wrote to meanwhile is no state it ever had: the log says so.
void Transferencia::avisarCambio(const service::Envio& envio) {
    const auto ahora = entorno_.archivos.estado(envio.ruta);
    if (ahora && ahora->longitud != static_cast<std::uint64_t>(envio.longitud)) {
        entorno_.registro.aviso(envio.ruta + ": length changed while it was sent, " +
                                std::to_string(envio.longitud) + " -> " + std::to_string(ahora->longitud));
    }
}

// The service has had its last word, good or bad: nothing is left to resume. An empty position says so to the
// next start, should this run die before its record is gone. The archive goes first, so that its path never
// stands without its file for longer than a moment.
void Transferencia::terminarSubida(std::string_view archivo, std::string_view tipo) {
    grabarPosicion("");
    if (core::Mayusculas(tipo) == tipoVeldorix) {
        core::ignorandoErrores(entorno_, "sent archive", [&] { entorno_.archivos.borrar(archivo); });
    }
    borrarRegistroSubida();
    QuitarAccesoInicio();
    flujos_.panel().Barra(0);
    flujos_.panel().limpiarProgreso();
    estado().gDetener = false;
}

std::string Transferencia::ContinuarSubida() {
    auto& estado = this->estado();
    estado.gUsuario = leerClave("User");
    estado.gPassword = leerClave("Password");
    if (auto carpeta = leerClave("CarpetaDestino"); !carpeta.empty()) {
        estado.gCarpeta = std::move(carpeta);
    }
    if (auto cuenta = leerClave("Cuenta"); !cuenta.empty()) {
        estado.gCuenta = core::Mayusculas(cuenta);
    }
    const auto archivo = leerClave("Active");
    const auto tipo = leerClave("Carpeta");
    const auto posicion = leerClave("Offset");
    // A company's archive that is gone does not come back; a personal file may, with its disk.
    if (core::Mayusculas(tipo) == tipoVeldorix && !entorno_.archivos.estado(archivo)) {
        borrarRegistroSubida();
        QuitarAccesoInicio();
        return posicion.empty() ? "" : "ERROR: " + archivo;
    }
    flujos_.espacio().EspacioOcupado();
    // A damaged position starts the file anew.
    return SubirArchivo(archivo, tipo, false, std::max(core::ValEntero(posicion), 1));
}

// "Active" makes the record count, so it is written last; before that it does not name another file.
void Transferencia::anotarSubida(std::string_view archivo, std::string_view tipo, std::int32_t posicion) {
    if (const auto otra = leerClave("Active"); !otra.empty() && otra != archivo) {
        grabarClave("Active", "");
    }
    grabarClave("Offset", std::to_string(posicion));
    grabarClave("Carpeta", tipo);
    grabarClave("User", estado().gUsuario);
    grabarClave("Password", estado().gPassword);
    grabarClave("CarpetaDestino", estado().gCarpeta);
    grabarClave("Cuenta", estado().gCuenta);
    grabarClave("Active", archivo);
}

void Transferencia::borrarRegistroSubida() {
    for (const auto clave : {"Active", "Offset", "Carpeta", "User", "Password", "CarpetaDestino", "Cuenta"}) {
        grabarClave(clave, "");
    }
}

void Transferencia::grabarClave(std::string_view clave, std::string_view valor) {
    anotando(clave, valor,
             [&] { entorno_.ajustes.GrabarRegistro(clave, valor, seccion, estado().gProducto); });
}

// Before every piece. An older position only sends pieces again, so it need not survive a power failure.
void Transferencia::grabarPosicion(std::string_view valor) {
    anotando("Offset", valor,
             [&] { entorno_.ajustes.grabarLigero("Offset", valor, seccion, estado().gProducto); });
}

void Transferencia::anotando(std::string_view clave, std::string_view valor,
                             const std::function<void()>& paso) {
    try {
        paso();
    } catch (const platform::ErrorAjustes& error) {
        entorno_.registro.error(std::string(clave) + ": " + error.what());
        if (!avisadoAjustes_) {
            avisadoAjustes_ = true;
            entorno_.almacen.Grabar(clave, valor, seccion, estado().gProducto);  // tells it in its box
        }
    }
}

std::string Transferencia::leerClave(std::string_view clave) const {
    return entorno_.almacen.Leer(clave, seccion, "", estado().gProducto);
}

void Transferencia::CrearAcceso() {
    core::ignorandoErrores(entorno_, "CrearAcceso", [&] {
        const auto destino = entorno_.carpetas.rutaPrograma();
        platform::crearAccesoInicio(entorno_.archivos, {std::string(nombreAcceso), destino,
                                                        entorno_.carpetas.DirectorioPrograma(), destino});
    });
}

void Transferencia::QuitarAccesoInicio() {
    core::ignorandoErrores(entorno_, "QuitarAccesoInicio",
                           [&] { platform::quitarAccesoInicio(entorno_.archivos, nombreAcceso); });
}

}  // namespace tarvoline::workflows
