#include "platform/posix/archivo_posix.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <thread>

#include "platform/posix/errores.h"

namespace tarvoline::platform::posix {

namespace {

constexpr std::uint64_t ultimaPosicion = std::numeric_limits<off_t>::max();

off_t comoPosicion(std::uint64_t posicion, const std::string& ruta) {
    if (posicion > ultimaPosicion) lanzar(EFBIG, ruta);
    return static_cast<off_t>(posicion);
}

// Length 0 would mean "to the end of all files" to the system; callers turn empty ranges away.
struct flock bloqueoDe(Rango rango, short tipo, const std::string& ruta) {
    if (rango.desde > ultimaPosicion || rango.longitud > ultimaPosicion - rango.desde) lanzar(EINVAL, ruta);
    struct flock bloqueo {};
    bloqueo.l_type = tipo;
    bloqueo.l_whence = SEEK_SET;
    bloqueo.l_start = static_cast<off_t>(rango.desde);
    bloqueo.l_len = static_cast<off_t>(rango.longitud);
    return bloqueo;
}

short tipoDe(TipoBloqueo tipo) {
    return tipo == TipoBloqueo::exclusivo ? F_WRLCK : F_RDLCK;
}

}  // namespace

EstadoArchivo estadoDe(const struct ::stat& datos) {
    EstadoArchivo estado;
    estado.esDirectorio = S_ISDIR(datos.st_mode);
    estado.longitud = static_cast<std::uint64_t>(std::max<off_t>(datos.st_size, 0));
    estado.modificado = std::int64_t{datos.st_mtim.tv_sec} * 1'000'000'000 + datos.st_mtim.tv_nsec;
    estado.dispositivo = datos.st_dev;
    estado.identidad = datos.st_ino;
    return estado;
}

ArchivoPosix::ArchivoPosix(Descriptor descriptor, std::string ruta, Comparticion comparticion,
                           Derechos derechos)
    : descriptor_(std::move(descriptor)),
      ruta_(std::move(ruta)),
      comparticion_(comparticion),
      derechos_(derechos) {}

bool ArchivoPosix::tomarCentinela() {
    if (comparticion_ == Comparticion::libre) return true;
    return intentarBloqueo({byteCentinela, 1}, comparticion_ == Comparticion::exclusiva ? F_WRLCK : F_RDLCK);
}

std::size_t ArchivoPosix::leer(std::uint64_t posicion, std::span<std::byte> destino) {
    if (destino.empty()) return 0;
    exigirLibre({posicion, destino.size()}, TipoBloqueo::compartido);
    std::size_t leidos = 0;
    while (leidos < destino.size()) {
        const off_t donde = comoPosicion(posicion + leidos, ruta_);
        const auto n = repetir([&] {
            return ::pread(descriptor_.numero(), destino.data() + leidos, destino.size() - leidos, donde);
        });
        if (n < 0) lanzar(errno, ruta_);
        if (n == 0) break;
        leidos += static_cast<std::size_t>(n);
    }
    return leidos;
}

void ArchivoPosix::escribir(std::uint64_t posicion, std::span<const std::byte> origen) {
    exigirEscritura();
    if (origen.empty()) return;
    exigirLibre({posicion, origen.size()}, TipoBloqueo::exclusivo);
    std::size_t escritos = 0;
    while (escritos < origen.size()) {
        const off_t donde = comoPosicion(posicion + escritos, ruta_);
        const auto n = repetir([&] {
            return ::pwrite(descriptor_.numero(), origen.data() + escritos, origen.size() - escritos, donde);
        });
        if (n < 0) lanzar(errno, ruta_);
        if (n == 0) lanzar(EIO, ruta_);
        escritos += static_cast<std::size_t>(n);
    }
}

EstadoArchivo ArchivoPosix::estado() {
    struct stat datos {};
    if (::fstat(descriptor_.numero(), &datos) != 0) lanzar(errno, ruta_);
    return estadoDe(datos);
}

std::uint64_t ArchivoPosix::longitud() {
    return estado().longitud;
}

void ArchivoPosix::truncar(std::uint64_t longitud) {
    exigirEscritura();
    const off_t nueva = comoPosicion(longitud, ruta_);
    if (comparticion_ == Comparticion::compartida) {
        // What is cut off or added is what is written here.
        const std::uint64_t actual = this->longitud();
        const auto [desde, hasta] = std::minmax(actual, longitud);
        exigirLibre({desde, hasta - desde}, TipoBloqueo::exclusivo);
    }
    if (repetir([&] { return ::ftruncate(descriptor_.numero(), nueva); }) != 0) lanzar(errno, ruta_);
}

void ArchivoPosix::sincronizar() {
    if (repetir([&] { return ::fdatasync(descriptor_.numero()); }) != 0) lanzar(errno, ruta_);
}

bool ArchivoPosix::bloquear(Rango rango, TipoBloqueo tipo, std::chrono::milliseconds espera) {
    using std::chrono::microseconds;
    using std::chrono::steady_clock;
    if (rango.longitud == 0) return true;
    // The system's own waiting call has no time limit, and ending it by a signal would need a handler of the
    // whole process; so this asks again, soon at first.
    constexpr microseconds pausaMayor{2000};
    const auto limite = steady_clock::now() + espera;
    microseconds pausa{100};
    while (!intentarBloqueo(rango, tipoDe(tipo))) {
        const auto resto = std::chrono::duration_cast<microseconds>(limite - steady_clock::now());
        if (resto <= microseconds::zero()) return false;
        std::this_thread::sleep_for(std::min(pausa, resto));
        pausa = std::min(pausa * 2, pausaMayor);
    }
    return true;
}

void ArchivoPosix::desbloquear(Rango rango) {
    if (rango.longitud != 0) intentarBloqueo(rango, F_UNLCK);
}

bool ArchivoPosix::podriaBloquear(Rango rango, TipoBloqueo tipo) {
    if (rango.longitud == 0) return true;
    struct flock bloqueo = bloqueoDe(rango, tipoDe(tipo), ruta_);
    if (repetir([&] { return ::fcntl(descriptor_.numero(), F_OFD_GETLK, &bloqueo); }) != 0) {
        lanzar(errno, ruta_);
    }
    return bloqueo.l_type == F_UNLCK;
}

bool ArchivoPosix::esLocal() {
    if (!volumen_) volumen_ = volumenDe(descriptor_.numero());
    return volumen_->local;
}

void ArchivoPosix::exigirEscritura() const {
    if (!derechos_.escribible) lanzar(EACCES, ruta_);
}

void ArchivoPosix::exigirLibre(Rango rango, TipoBloqueo tipo) {
    if (comparticion_ == Comparticion::compartida && !podriaBloquear(rango, tipo)) lanzar(EAGAIN, ruta_);
}

bool ArchivoPosix::intentarBloqueo(Rango rango, short tipo) {
    if (tipo == F_WRLCK && !derechos_.puedeExcluir) lanzar(EACCES, ruta_);
    struct flock bloqueo = bloqueoDe(rango, tipo, ruta_);
    if (repetir([&] { return ::fcntl(descriptor_.numero(), F_OFD_SETLK, &bloqueo); }) == 0) return true;
    if (errno == EAGAIN || errno == EACCES) return false;
    lanzar(errno, ruta_);
}

}  // namespace tarvoline::platform::posix
