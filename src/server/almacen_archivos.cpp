#include "server/almacen_archivos.h"

#include <algorithm>
#include <limits>
#include <map>

#include "server/almacen_usuarios.h"
#include "server/textos.h"

namespace tarvoline::server {
namespace {

std::string rutaDe(const std::string& carpetaDatos, const std::string& raiz, std::int64_t id) {
    return carpetaDatos + "/" + raiz + "/" + std::to_string(id);
}

}  // namespace

AlmacenArchivos::AlmacenArchivos(platform::SistemaArchivos& archivos, BaseDatos& base,
                                 core::Registro& registro, std::string carpetaDatos)
    : archivos_(archivos), base_(base), registro_(registro), carpetaDatos_(std::move(carpetaDatos)) {
    archivos_.crearDirectorios(carpetaDatos_, 0700);
    cargar();
}

void AlmacenArchivos::cargar() {
    std::map<std::string, std::map<std::string, std::uint64_t>> enDisco;
    for (const auto& carpeta : archivos_.listar(carpetaDatos_)) {
        if (!carpeta.esDirectorio) continue;
        for (const auto& archivo : archivos_.listar(carpetaDatos_ + "/" + carpeta.nombre)) {
            enDisco[carpeta.nombre][archivo.nombre] = archivo.longitud;
        }
    }
    std::size_t sinArchivo = 0;
    base_.consultar("SELECT id, usuario, carpeta, tipo, nombre FROM archivos ORDER BY id",
                    [&](const BaseDatos::Fila& fila) {
                        auto guardado = std::make_shared<Guardado>();
                        guardado->id = fila.entero(0);
                        Usuario dueno;
                        dueno.id = fila.entero(1);
                        guardado->ubicacion = {dueno.id, dueno.carpetaRaiz(), fila.texto(2), fila.texto(3),
                                               fila.texto(4)};
                        guardado->ruta = rutaDe(carpetaDatos_, guardado->ubicacion.raiz, guardado->id);
                        const auto& suyos = enDisco[guardado->ubicacion.raiz];
                        const auto hallado = suyos.find(std::to_string(guardado->id));
                        if (hallado == suyos.end()) {
                            // The row stays: the disk may only be missing for now. A new upload of the name
                            // drops it.
                            ++sinArchivo;
                            return;
                        }
                        guardado->longitud = static_cast<std::int64_t>(hallado->second);
                        indice_.poner(guardado);
                    });
    if (sinArchivo > 0) {
        registro_.aviso(std::to_string(sinArchivo) + " archivo(s) anotados no están en " + carpetaDatos_);
    }
}

std::string AlmacenArchivos::guardarPieza(const Ubicacion& ubicacion, std::span<const std::byte> bytes,
                                          std::int32_t posicion, const Cupo& cupo) {
    if (posicion < 1 || bytes.empty() || bytes.size() > maximoPieza) return respuesta::posicionNoValida;
    Tramo tramo{bytes, posicion - 1, posicion == 1, bytes.size() < maximoPieza};
    const bool formaCorta = tramo.nuevo && bytes.size() < maximoPieza && bytes.back() == std::byte{0};
    if (formaCorta) tramo.bytes = bytes.first(bytes.size() - 1);
    const auto fin = tramo.desde + static_cast<std::int64_t>(tramo.bytes.size());
    if (fin > std::numeric_limits<std::int32_t>::max()) return respuesta::posicionNoValida;

    try {
        for (;;) {
            GuardadoLeido guardado = indice_.buscar(ubicacion);
            if (!guardado && !tramo.nuevo) return respuesta::hueco;
            if (!guardado && indice_.cuantos(ubicacion.usuario) >= maximoArchivos) {
                return respuesta::demasiadosArchivos;
            }
            if (!guardado) guardado = crear(ubicacion);
            const std::lock_guard guardia(guardado->cerrojo);
            if (guardado->borrado) continue;  // deleted since it was looked up
            {
                const std::lock_guard guardiaPendientes(cerrojoPendientes_);
                pendientes_.insert(guardado);
            }
            return escribir(*guardado, tramo, cupo);
        }
    } catch (const platform::ErrorArchivo& error) {
        registro_.error(std::string("no se puede guardar: ") + error.what());
        return respuesta::falloAlGuardar;
    }
}

GuardadoLeido AlmacenArchivos::crear(const Ubicacion& ubicacion) {
    const std::lock_guard guardia(cerrojoAltas_);
    if (GuardadoLeido otro = indice_.buscar(ubicacion)) return otro;
    auto guardado = std::make_shared<Guardado>();
    guardado->ubicacion = ubicacion;
    guardado->ubicacion.carpeta = indice_.grafia(ubicacion.usuario, ubicacion.carpeta);
    const Ubicacion& lugar = guardado->ubicacion;
    base_.enTransaccion([&] {
        base_.ejecutar("DELETE FROM archivos WHERE usuario = ? AND carpeta = ? AND tipo = ? AND nombre = ?",
                       lugar.usuario, lugar.carpeta, lugar.tipo, lugar.nombre);
        base_.ejecutar("INSERT INTO archivos (usuario, carpeta, tipo, nombre) VALUES (?, ?, ?, ?)",
                       lugar.usuario, lugar.carpeta, lugar.tipo, lugar.nombre);
        guardado->id = base_.ultimoId();
    });
    guardado->ruta = rutaDe(carpetaDatos_, lugar.raiz, guardado->id);
    const std::string carpeta = carpetaDatos_ + "/" + lugar.raiz;
    if (!platform::existe(archivos_, carpeta)) {
        archivos_.crearDirectorios(carpeta, 0700);
        archivos_.sincronizarDirectorio(carpetaDatos_);
    }
    archivos_.abrir(guardado->ruta, platform::Apertura::crear, platform::Comparticion::libre, 0600);
    archivos_.sincronizarDirectorio(carpeta);
    indice_.poner(guardado);
    return guardado;
}

// Under the file's lock.
std::string AlmacenArchivos::escribir(Guardado& guardado, const Tramo& tramo, const Cupo& cupo) {
    const std::int64_t antes = guardado.longitud;
    const std::int64_t fin = tramo.desde + static_cast<std::int64_t>(tramo.bytes.size());
    if (tramo.desde > antes) return respuesta::hueco;
    const std::int64_t despues = tramo.nuevo ? fin : std::max(antes, fin);
    if (!indice_.reservar(guardado, despues, cupo)) return respuesta::sinEspacio;
    bool empezado = false;
    try {
        volcar(guardado, tramo, empezado);
        return {};
    } catch (const platform::ErrorArchivo& error) {
        registro_.error(std::string("no se puede guardar: ") + error.what());
    }
    // The length goes back to the truth: to what it was, or to what the disk says when it cannot be cut.
    std::int64_t queda = tramo.nuevo && empezado ? 0 : antes;
    try {
        const auto archivo = archivos_.abrir(guardado.ruta, platform::Apertura::escritura);
        const auto enDisco = static_cast<std::int64_t>(archivo->longitud());
        if (enDisco < queda) queda = enDisco;
        if (enDisco > queda) archivo->truncar(static_cast<std::uint64_t>(queda));
    } catch (const platform::ErrorArchivo& error) {
        registro_.error(std::string("no se puede cortar: ") + error.what());
        const auto estado = archivos_.estado(guardado.ruta);
        queda = estado ? static_cast<std::int64_t>(estado->longitud) : 0;
    }
    indice_.fijarLongitud(guardado, queda);
    return respuesta::falloAlGuardar;
}

// `empezado` is set once the file may differ from what it was.
void AlmacenArchivos::volcar(Guardado& guardado, const Tramo& tramo, bool& empezado) {
    const auto archivo = archivos_.abrir(guardado.ruta, platform::Apertura::escritura);
    empezado = true;
    if (tramo.nuevo) archivo->truncar(0);
    archivo->escribir(static_cast<std::uint64_t>(tramo.desde), tramo.bytes);
    if (tramo.ultimo) archivo->sincronizar();
}

std::string AlmacenArchivos::leerPieza(const Ubicacion& ubicacion, std::int32_t posicion,
                                       std::int32_t cuantos, soap::Bytes& bytes) {
    bytes.clear();
    if (posicion < 1 || cuantos < 0 || cuantos > maximoLectura) return respuesta::posicionNoValida;
    const GuardadoLeido guardado = indice_.buscar(ubicacion);
    if (!guardado) return respuesta::noExiste;
    const std::int64_t desde = posicion - 1;
    const std::int64_t quedan = std::max<std::int64_t>(guardado->longitud - desde, 0);
    bytes.resize(static_cast<std::size_t>(std::min<std::int64_t>(cuantos, quedan)));
    if (bytes.empty()) return {};
    try {
        const auto archivo = archivos_.abrir(guardado->ruta, platform::Apertura::lectura);
        bytes.resize(archivo->leer(static_cast<std::uint64_t>(desde), bytes));
        return {};
    } catch (const platform::ErrorArchivo& error) {
        registro_.error(std::string("no se puede leer: ") + error.what());
        bytes.clear();
        return respuesta::falloAlLeer;
    }
}

std::string AlmacenArchivos::eliminar(const Ubicacion& ubicacion) {
    const GuardadoLeido guardado = indice_.buscar(ubicacion);
    if (!guardado) return respuesta::noExiste;
    const std::lock_guard guardia(guardado->cerrojo);
    if (guardado->borrado) return respuesta::noExiste;
    try {
        archivos_.borrar(guardado->ruta);
    } catch (const platform::ErrorArchivo& error) {
        registro_.error(std::string("no se puede borrar: ") + error.what());
        return respuesta::falloAlGuardar;
    }
    guardado->borrado = true;
    indice_.quitar(*guardado);
    {
        const std::lock_guard guardiaPendientes(cerrojoPendientes_);
        pendientes_.erase(guardado);
    }
    base_.ejecutar("DELETE FROM archivos WHERE id = ?", guardado->id);
    return {};
}

void AlmacenArchivos::sincronizar(std::int64_t usuario) {
    std::vector<GuardadoLeido> cuales;
    {
        const std::lock_guard guardia(cerrojoPendientes_);
        std::ranges::copy_if(
            pendientes_, std::back_inserter(cuales),
            [usuario](const GuardadoLeido& guardado) { return guardado->ubicacion.usuario == usuario; });
        for (const auto& guardado : cuales)
            pendientes_.erase(guardado);
    }
    sincronizarEstos(cuales);
}

void AlmacenArchivos::sincronizarTodo() {
    std::vector<GuardadoLeido> cuales;
    {
        const std::lock_guard guardia(cerrojoPendientes_);
        cuales.assign(pendientes_.begin(), pendientes_.end());
        pendientes_.clear();
    }
    sincronizarEstos(cuales);
}

void AlmacenArchivos::sincronizarEstos(const std::vector<GuardadoLeido>& cuales) {
    for (const auto& guardado : cuales) {
        try {
            archivos_.abrir(guardado->ruta, platform::Apertura::escritura)->sincronizar();
        } catch (const platform::ErrorArchivo& error) {
            // Deleted in the meantime is no failure.
            if (error.numero() != platform::error_archivo::noExiste) {
                registro_.error(std::string("no se puede sincronizar: ") + error.what());
            }
        }
    }
}

}  // namespace tarvoline::server
