// The file system of POSIX systems.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>

#include "platform/archivos.h"
#include "platform/caja.h"
#include "platform/posix/archivo_posix.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/errores.h"
#include "platform/posix/quietud.h"
#include "platform/posix/resolucion.h"
#include "platform/posix/volumenes.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

namespace {

using posix::ArchivoPosix;
using posix::Descriptor;
using posix::lanzar;
using posix::repetir;

// A file may be replaced between its open and its sentinel lock as often as another process likes; this often
// is more than any honest one does.
constexpr int intentosDeApertura = 100;

bool esDirectorio(const std::string& ruta) {
    struct stat datos {};
    return ::stat(ruta.c_str(), &datos) == 0 && S_ISDIR(datos.st_mode);
}

// A missing name in a folder that exists is one error, a missing folder another.
[[noreturn]] void lanzarDeRuta(int codigo, const std::string& ruta) {
    if (codigo == ENOENT && !esDirectorio(carpetaDe(ruta))) codigo = ENOTDIR;
    lanzar(codigo, ruta);
}

// O_NONBLOCK keeps a pipe that bears the name from stopping the program; regular files do not care. Cutting
// to length 0 waits until the locks are held.
int banderas(Apertura apertura, Comparticion comparticion) {
    const int siempre = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    switch (apertura) {
        case Apertura::lectura:
            return siempre | (comparticion == Comparticion::exclusiva ? O_RDWR : O_RDONLY);
        case Apertura::escritura:
            return siempre | O_RDWR;
        case Apertura::crear:
        case Apertura::vaciar:
            return siempre | O_RDWR | O_CREAT;
        case Apertura::nuevo:
            return siempre | O_RDWR | O_CREAT | O_EXCL;
    }
    return siempre;
}

void exigirRegular(const struct stat& datos, const std::string& ruta) {
    if (!S_ISREG(datos.st_mode)) lanzar(S_ISDIR(datos.st_mode) ? EISDIR : EINVAL, ruta);
}

bool sigueConSuNombre(const struct stat& abierto, const std::string& ruta) {
    struct stat nombrado {};
    if (::stat(ruta.c_str(), &nombrado) != 0) return false;
    return abierto.st_dev == nombrado.st_dev && abierto.st_ino == nombrado.st_ino;
}

// The spelling given is nearly always the one on disk: only when it is not there is the folder looked through
// for another, which then stands in `nativa`.
Descriptor abrirPorNombre(std::string& nativa, int modo, unsigned permisos) {
    if ((modo & O_EXCL) == 0) {
        const int sinCrear = modo & ~O_CREAT;
        Descriptor descriptor(repetir([&] { return ::open(nativa.c_str(), sinCrear); }));
        if (descriptor.abierto() || errno != ENOENT) return descriptor;
    }
    nativa = posix::resolverRuta(nativa);
    return Descriptor(repetir([&] { return ::open(nativa.c_str(), modo, static_cast<mode_t>(permisos)); }));
}

class SistemaPosix final : public SistemaArchivos {
  public:
    std::unique_ptr<Archivo> abrir(std::string_view ruta, Apertura apertura, Comparticion comparticion,
                                   unsigned permisos) override {
        for (int intento = 1; intento <= intentosDeApertura; ++intento) {
            auto archivo = abrirUnaVez(posix::normalizar(ruta), apertura, comparticion, permisos);
            if (!archivo) continue;
            if (apertura == Apertura::vaciar) archivo->truncar(0);
            return archivo;
        }
        lanzar(EAGAIN, ruta);
    }

    std::optional<EstadoArchivo> estado(std::string_view ruta) override {
        struct stat datos {};
        if (ruta.empty() || ruta.find('\0') != std::string_view::npos) return std::nullopt;
        std::string nativa = posix::normalizar(ruta);
        if (::stat(nativa.c_str(), &datos) == 0) return posix::estadoDe(datos);
        nativa = posix::resolverRuta(nativa);
        if (::stat(nativa.c_str(), &datos) == 0) return posix::estadoDe(datos);
        const bool sinNombre = errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG || errno == ELOOP;
        if (!sinNombre) lanzar(errno, nativa);
        return std::nullopt;
    }

    void borrar(std::string_view ruta) override {
        const std::string nativa = posix::resolverRuta(ruta);
        if (::unlink(nativa.c_str()) == 0) return;
        // Some systems name the folder's case EPERM.
        const int codigo = errno;
        if (codigo == EPERM && esDirectorio(nativa)) lanzar(EISDIR, nativa);
        lanzarDeRuta(codigo, nativa);
    }

    void renombrar(std::string_view origen, std::string_view destino) override {
        const std::string desde = posix::resolverRuta(origen);
        std::string hasta = posix::resolverRuta(destino);
        if (desde == hasta) hasta = unirRuta(carpetaDe(hasta), nombreDe(destino));
        if (::rename(desde.c_str(), hasta.c_str()) == 0) return;
        const int codigo = errno;
        struct stat datos {};
        const bool faltaOrigen = codigo == ENOENT && ::lstat(desde.c_str(), &datos) != 0;
        if (faltaOrigen) lanzarDeRuta(codigo, desde);
        // A file onto a folder, or the reverse: the names are there, they do not fit.
        const bool noEncajan = codigo == ENOTDIR && ::lstat(hasta.c_str(), &datos) == 0;
        const bool carpetaLlena = codigo == EEXIST;
        if (noEncajan || carpetaLlena) lanzar(EISDIR, hasta);
        lanzarDeRuta(codigo, hasta);
    }

    void crearDirectorios(std::string_view ruta, unsigned modo) override {
        crearConPadres(posix::resolverRuta(ruta), modo);
    }

    void borrarDirectorio(std::string_view ruta) override {
        const std::string nativa = posix::resolverRuta(ruta);
        if (::rmdir(nativa.c_str()) == 0) return;
        if (errno == ENOENT) lanzar(ENOTDIR, nativa);
        if (errno == EEXIST) lanzar(ENOTEMPTY, nativa);
        lanzar(errno, nativa);
    }

    std::vector<EntradaDirectorio> listar(std::string_view directorio) override {
        const std::string nativa = posix::resolverRuta(directorio);
        std::vector<EntradaDirectorio> entradas;
        const auto cerrar = [](DIR* abierto) { ::closedir(abierto); };
        const std::unique_ptr<DIR, decltype(cerrar)> abierto(::opendir(nativa.c_str()), cerrar);
        if (!abierto) {
            if (errno == ENOENT || errno == ENOTDIR) return entradas;
            lanzar(errno, nativa);
        }
        for (;;) {
            errno = 0;
            const dirent* leida = ::readdir(abierto.get());
            if (leida == nullptr) break;
            anadirEntrada(::dirfd(abierto.get()), leida->d_name, entradas);
        }
        if (errno != 0) lanzar(errno, nativa);
        ordenar(entradas);
        return entradas;
    }

    std::uint64_t espacioLibre(std::string_view ruta) override {
        std::string nativa = posix::resolverRuta(ruta);
        struct statvfs datos {};
        while (repetir([&] { return ::statvfs(nativa.c_str(), &datos); }) != 0) {
            const bool faltaAun = errno == ENOENT || errno == ENOTDIR;
            if (!faltaAun || nativa == "/" || nativa == ".") lanzar(errno, nativa);
            nativa = carpetaDe(nativa);
        }
        return std::uint64_t{datos.f_bavail} * datos.f_frsize;
    }

    void sincronizarDirectorio(std::string_view ruta) override {
        const std::string nativa = posix::resolverRuta(ruta);
        const Descriptor carpeta(
            repetir([&] { return ::open(nativa.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
        if (!carpeta.abierto()) lanzar(errno == ENOENT ? ENOTDIR : errno, nativa);
        // A system that cannot do this for folders says EINVAL and keeps them safe in its own way.
        if (repetir([&] { return ::fsync(carpeta.numero()); }) != 0 && errno != EINVAL) lanzar(errno, nativa);
    }

    std::string resolver(std::string_view ruta) override { return posix::resolverRuta(ruta); }

  private:
    // Nothing when the file that was opened has meanwhile lost its name.
    std::unique_ptr<ArchivoPosix> abrirUnaVez(std::string ruta, Apertura apertura, Comparticion comparticion,
                                              unsigned permisos) {
        const int modo = banderas(apertura, comparticion);
        const bool escribible = (modo & O_ACCMODE) == O_RDWR;
        const auto antes = posix::Momento::ahora();
        Descriptor descriptor = abrirPorNombre(ruta, modo, permisos);
        if (!descriptor.abierto()) {
            // A device without a driver behind it: no regular file either.
            if (errno == ENXIO) lanzar(EINVAL, ruta);
            lanzarDeRuta(errno, ruta);
        }
        auto archivo =
            std::make_unique<ArchivoPosix>(std::move(descriptor), std::move(ruta), comparticion,
                                           ArchivoPosix::Derechos{apertura != Apertura::lectura, escribible});
        const std::string& nombre = archivo->ruta();
        const bool tomada = archivo->tomarCentinela();
        struct stat datos {};
        if (::fstat(archivo->descriptor(), &datos) != 0) lanzar(errno, nombre);
        exigirRegular(datos, nombre);
        if (!tomada) lanzar(EAGAIN, nombre);
        archivo->tomarLongitud(posix::estadoDe(datos).longitud);
        if (comparticion == Comparticion::libre) return archivo;
        const auto volumen = volumenes_.de(archivo->descriptor(), datos.st_dev);
        archivo->tomarVolumen(volumen);
        // An overlay dates the names of what it has copied to its own layer, as it does for who may write.
        const bool quieto = volumen.fechaNombres && escribible &&
                            posix::quietoEntre(antes, posix::Momento::ahora(), datos.st_ctim);
        if (!quieto && !sigueConSuNombre(datos, nombre)) return nullptr;
        return archivo;
    }

    static void crearConPadres(const std::string& ruta, unsigned modo) {
        if (ruta.empty() || esDirectorio(ruta)) return;
        const std::string padre = carpetaDe(ruta);
        if (padre != ruta) crearConPadres(padre, modo);
        if (::mkdir(ruta.c_str(), static_cast<mode_t>(modo)) == 0) return;
        if (errno != EEXIST) lanzar(errno, ruta);
        // Another process was faster, which is as good; a file of that name is not.
        if (!esDirectorio(ruta)) lanzar(EISDIR, ruta);
    }

    static void anadirEntrada(int carpeta, const char* nombre, std::vector<EntradaDirectorio>& entradas) {
        const std::string_view texto = nombre;
        if (texto == "." || texto == "..") return;
        struct stat propio {};
        struct stat destino {};
        if (::fstatat(carpeta, nombre, &propio, AT_SYMLINK_NOFOLLOW) != 0) return;  // gone meanwhile
        const bool esEnlace = S_ISLNK(propio.st_mode);
        if (!esEnlace) {
            destino = propio;
        } else if (::fstatat(carpeta, nombre, &destino, 0) != 0) {
            return;
        }
        if (!S_ISREG(destino.st_mode) && !S_ISDIR(destino.st_mode)) return;
        const EstadoArchivo estado = posix::estadoDe(destino);
        entradas.push_back(
            {std::string(texto), estado.esDirectorio, esEnlace, estado.longitud, estado.modificado});
    }

    static void ordenar(std::vector<EntradaDirectorio>& entradas) {
        std::sort(entradas.begin(), entradas.end(),
                  [](const auto& a, const auto& b) { return menorPlegado(a.nombre, b.nombre); });
    }

    posix::Volumenes volumenes_;
};

}  // namespace

std::unique_ptr<SistemaArchivos> crearSistemaArchivos() {
    return std::make_unique<SistemaPosix>();
}

}  // namespace tarvoline::platform
