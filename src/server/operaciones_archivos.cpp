// The operations on a user's files, folders, room and history.
#include <algorithm>

#include "core/credencial.h"
#include "core/texto.h"
#include "server/llamada.h"
#include "server/operaciones.h"
#include "server/textos.h"

namespace tarvoline::server {
namespace {

constexpr std::size_t maximoNombre = 512;  // characters
constexpr std::size_t maximoCarpeta = 128;
constexpr std::size_t maximoTipo = 32;
constexpr std::int64_t bytesPorGb = 1024LL * 1024 * 1024;
constexpr const char* carpetaInicial = "DATOS";

// A list whose first five letters are "ERROR" reads as a failure, and there is no escape: such names go last.
std::string unir(std::vector<std::string> nombres) {
    std::stable_partition(nombres.begin(), nombres.end(),
                          [](const std::string& nombre) { return !core::esError(nombre); });
    std::string lista;
    for (const std::string& nombre : nombres) {
        if (!lista.empty()) lista += '\t';
        lista += nombre;
    }
    return lista;
}

std::string carpetaDe(const std::string& dada) {
    std::string carpeta = core::Recortar(dada);
    return carpeta.empty() ? carpetaInicial : carpeta;
}

}  // namespace

// Reads folder, kind and name from the arguments `primero` and the two that follow. "" or a refusal.
std::string Operaciones::ubicar(const Llamada& llamada, std::size_t primero, Ubicacion& ubicacion) {
    ubicacion.usuario = llamada.usuario->id;
    ubicacion.raiz = llamada.usuario->carpetaRaiz();
    ubicacion.carpeta = carpetaDe(llamada.texto(primero));
    ubicacion.tipo = core::Mayusculas(llamada.texto(primero + 1));
    ubicacion.nombre = core::DecodificarNombre(llamada.texto(primero + 2));
    if (!textoLimpio(ubicacion.carpeta, maximoCarpeta)) return respuesta::carpetaNoValida;
    if (!textoLimpio(ubicacion.tipo, maximoTipo)) return respuesta::tipoNoValido;
    if (!textoLimpio(ubicacion.nombre, maximoNombre) || core::Recortar(ubicacion.nombre).empty()) {
        return respuesta::nombreNoValido;
    }
    return {};
}

Cupo Operaciones::cupo(const Usuario& usuario) {
    Cupo cupo;
    if (usuario.cuenta.empty()) return cupo;
    cupo.bytes = usuarios_.capacidadGb(usuario.cuenta) * bytesPorGb;
    if (cupo.bytes == 0) return cupo;
    for (const UsuarioLeido& otro : usuarios_.porCuenta(usuario.cuenta))
        cupo.usuarios.push_back(otro->id);
    return cupo;
}

void Operaciones::recordarCarpeta(std::int64_t usuario, const std::string& carpeta) {
    const std::lock_guard guardia(cerrojoCarpetas_);
    ultimaCarpeta_[usuario] = carpeta;
}

std::string Operaciones::listadocarpetas(Llamada& llamada) {
    return unir(archivos_.indice().carpetas(llamada.usuario->id));
}

std::string Operaciones::ListadoArchivos(Llamada& llamada) {
    return unir(
        archivos_.indice().nombres(llamada.usuario->id, carpetaDe(llamada.texto(2)), llamada.texto(3)));
}

std::string Operaciones::FileSize(Llamada& llamada) {
    Ubicacion ubicacion;
    if (std::string rechazo = ubicar(llamada, 2, ubicacion); !rechazo.empty()) return rechazo;
    const GuardadoLeido guardado = archivos_.indice().buscar(ubicacion);
    return guardado ? std::to_string(guardado->longitud) : respuesta::noExiste;
}

// The account code that comes along is not asked: a user's account is what the service knows of him.
std::string Operaciones::Backup(Llamada& llamada) {
    Ubicacion ubicacion;
    if (std::string rechazo = ubicar(llamada, 3, ubicacion); !rechazo.empty()) return rechazo;
    recordarCarpeta(ubicacion.usuario, ubicacion.carpeta);
    return archivos_.guardarPieza(ubicacion, llamada.bytes(6), llamada.entero(7), cupo(*llamada.usuario));
}

std::string Operaciones::Restore(Llamada& llamada) {
    Ubicacion ubicacion;
    llamada.bytes(7).clear();
    if (std::string rechazo = ubicar(llamada, 2, ubicacion); !rechazo.empty()) return rechazo;
    recordarCarpeta(ubicacion.usuario, ubicacion.carpeta);
    return archivos_.leerPieza(ubicacion, llamada.entero(5), llamada.entero(6), llamada.bytes(7));
}

std::string Operaciones::EliminarArchivo(Llamada& llamada) {
    Ubicacion ubicacion;
    if (std::string rechazo = ubicar(llamada, 2, ubicacion); !rechazo.empty()) return rechazo;
    recordarCarpeta(ubicacion.usuario, ubicacion.carpeta);
    return archivos_.eliminar(ubicacion);
}

std::string Operaciones::CalcularEspacioTotal(Llamada& llamada) {
    return std::to_string(archivos_.indice().ocupado(llamada.usuario->id));
}

// A history line says that a transfer is done: what it moved has then reached the disk.
std::string Operaciones::GrabarHistorico(Llamada& llamada) {
    const std::int64_t usuario = llamada.usuario->id;
    archivos_.sincronizar(usuario);
    std::string carpeta = carpetaInicial;
    {
        const std::lock_guard guardia(cerrojoCarpetas_);
        if (const auto ultima = ultimaCarpeta_.find(usuario); ultima != ultimaCarpeta_.end()) {
            carpeta = ultima->second;
        }
    }
    historial_.grabar(usuario, llamada.texto(2), carpeta);
    return {};
}

std::string Operaciones::LeerHistorico(Llamada& llamada) {
    return historial_.leer(llamada.usuario->id, llamada.texto(2));
}

}  // namespace tarvoline::server
