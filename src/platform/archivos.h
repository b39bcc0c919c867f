// The file layer: every open, existence test, mask and lock of the program goes through these two classes.
//
// Paths are UTF-8 text. Both "\" and "/" separate, one at the end is harmless, and on systems whose names
// distinguish case an existing name is found whatever its case (the exact spelling wins, then the first match
// in name order). Positions are 64-bit and count from 0. The real implementation is crearSistemaArchivos();
// tests put a failing or forgetful one in its place.
//
// Objects may be used from several threads, one open file from one thread at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::platform {

// Numbers of ErrorArchivo. Upper layers show or retry by them.
namespace error_archivo {
inline constexpr int noExiste = 53;     // its folder is there, the name is not
inline constexpr int dispositivo = 57;  // the device failed while reading or writing
inline constexpr int yaExiste = 58;
inline constexpr int discoLleno = 61;  // also a quota, or a size that the system does not take
inline constexpr int finArchivo = 62;
inline constexpr int demasiadosArchivos = 67;
inline constexpr int permisoDenegado = 70;  // no right, or held by another handle
inline constexpr int ruta = 75;             // path and file do not fit (a folder where a file is wanted, ...)
inline constexpr int rutaNoExiste = 76;     // the folder is missing
}  // namespace error_archivo

class ErrorArchivo : public std::runtime_error {
  public:
    ErrorArchivo(int numero, std::string ruta, const std::string& descripcion)
        : std::runtime_error(descripcion), numero_(numero), ruta_(std::move(ruta)) {}
    int numero() const { return numero_; }
    const std::string& ruta() const { return ruta_; }

  private:
    int numero_;
    std::string ruta_;
};

enum class Apertura {
    lectura,    // existing file, read only
    escritura,  // existing file, read and write
    crear,      // read and write; created when missing
    vaciar,     // read and write; created when missing, cut to length 0 when not
    nuevo,      // read and write; fails with yaExiste when there is one
};

// How an open shares the file with other handles, in this process and in others.
enum class Comparticion {
    libre,       // takes no lock at all: archives, logs, settings; only asked-for locks (bloquear) count
    compartida,  // data and company files: holds the sentinel byte shared, and each read and write first
                 // tests that no other handle holds a conflicting lock on its range (permisoDenegado when one
                 // does)
    acordada,    // holds the sentinel byte shared, as `compartida` does, but tests nothing: files whose users
                 // agree by locks of their own, such as key files
    exclusiva,   // holds the sentinel byte exclusively: refused at once while another handle holds it. Wants
                 // the right to write, even with Apertura::lectura
};
// While a handle holds the sentinel byte, its file is the one that bears the name: an open that meets a file
// just replaced by another tries again.

enum class TipoBloqueo { compartido, exclusivo };

struct Rango {
    std::uint64_t desde = 0;
    std::uint64_t longitud = 0;
};

// The sentinel byte of the share modes, and the range that "the whole file" means: from 0 to just below it.
inline constexpr std::uint64_t byteCentinela = std::uint64_t{1} << 62;
inline constexpr Rango todoElArchivo{0, byteCentinela};

struct EstadoArchivo {
    bool esDirectorio = false;
    std::uint64_t longitud = 0;
    std::int64_t modificado = 0;  // nanoseconds since 1970-01-01 UTC
    std::uint64_t dispositivo = 0;
    std::uint64_t identidad = 0;  // with `dispositivo`, the same for the same file only
    bool operator==(const EstadoArchivo&) const = default;
};

// An open file. Locks belong to the handle, never to the process, and end with it. All members throw
// ErrorArchivo.
class Archivo {
  public:
    virtual ~Archivo() = default;
    Archivo() = default;
    Archivo(const Archivo&) = delete;
    Archivo& operator=(const Archivo&) = delete;

    // Reads up to destino.size() bytes from `posicion`; fewer only at the end of the file.
    virtual std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) = 0;
    // Writes all of `origen` at `posicion`; a gap behind the end reads as zero bytes.
    virtual void escribir(std::uint64_t posicion, std::span<const std::byte> origen) = 0;
    virtual std::uint64_t longitud() = 0;
    // The length that the opening met, once it held its share (before Apertura::vaciar cut it): what anybody
    // has done since does not show.
    virtual std::uint64_t longitudAlAbrir() = 0;
    // Of the open file, whatever its name has become since.
    virtual EstadoArchivo estado() = 0;
    virtual void truncar(std::uint64_t longitud) = 0;
    // Returns when what was written has reached the device.
    virtual void sincronizar() = 0;

    // Takes a lock on `rango` (in addition to, or in place of, this handle's own; changing the type of an own
    // lock is one step, and a refusal leaves it as it was). False when another handle holds a conflicting one
    // until `espera` is over; zero asks once. Handles of one process are strangers to each other, too. An
    // empty range conflicts with nothing. An exclusive lock wants a handle that may write (else
    // permisoDenegado).
    virtual bool bloquear(Rango rango, TipoBloqueo tipo,
                          std::chrono::milliseconds espera = std::chrono::milliseconds::zero()) = 0;
    virtual void desbloquear(Rango rango) = 0;
    // True when a lock of `tipo` could be had now: no other handle holds a conflicting one.
    virtual bool podriaBloquear(Rango rango, TipoBloqueo tipo) = 0;

    // True when the file is known to lie on a disk of this machine: what any process has written, every other
    // sees at once. False on network shares, and where the system cannot tell.
    virtual bool esLocal() { return false; }
};

struct EntradaDirectorio {
    std::string nombre;  // as on disk, without folder
    bool esDirectorio = false;
    bool esEnlace = false;  // a symbolic link; the other members speak of its target
    std::uint64_t longitud = 0;
    std::int64_t modificado = 0;
};

// What the program asks of a file system. All members throw ErrorArchivo unless they say otherwise.
class SistemaArchivos {
  public:
    virtual ~SistemaArchivos() = default;
    SistemaArchivos() = default;
    SistemaArchivos(const SistemaArchivos&) = delete;
    SistemaArchivos& operator=(const SistemaArchivos&) = delete;

    // `permisos` (owner, group, others) are those of a file that this call makes. Only regular files open; a
    // refused open leaves the content as it was.
    virtual std::unique_ptr<Archivo> abrir(std::string_view ruta, Apertura apertura,
                                           Comparticion comparticion = Comparticion::libre,
                                           unsigned permisos = 0666) = 0;
    // Nothing when there is no such name; never throws for that.
    virtual std::optional<EstadoArchivo> estado(std::string_view ruta) = 0;
    virtual void borrar(std::string_view ruta) = 0;
    // Atomic; replaces a file at `destino`. Files and folders; may change the case of a name only.
    virtual void renombrar(std::string_view origen, std::string_view destino) = 0;
    // Makes the folder and its parents; those that exist are no error. New ones get `modo` (owner, group,
    // others).
    virtual void crearDirectorios(std::string_view ruta, unsigned modo = 0755) = 0;
    virtual void borrarDirectorio(std::string_view ruta) = 0;  // must be empty
    // The folder's files and folders without "." and "..", sorted by name, case ignored; devices, sockets and
    // links to nothing are left out. Empty when there is no such folder.
    virtual std::vector<EntradaDirectorio> listar(std::string_view directorio) = 0;
    // Bytes that this user may still write where `ruta` lies, or will lie once its folders are made.
    virtual std::uint64_t espacioLibre(std::string_view ruta) = 0;
    // Returns when names made, changed or removed in the folder have reached the device.
    virtual void sincronizarDirectorio(std::string_view ruta) = 0;
    // The path in the system's own spelling: its separator, and the case of the names that exist.
    virtual std::string resolver(std::string_view ruta) = 0;
};

std::unique_ptr<SistemaArchivos> crearSistemaArchivos();

// Helpers over any SistemaArchivos.
bool existe(SistemaArchivos& archivos, std::string_view ruta);
// Regular files of `directorio` that match `mascara` ("?" one character, "*" any run, case ignored), sorted
// by name.
std::vector<std::string> listarMascara(SistemaArchivos& archivos, std::string_view directorio,
                                       std::string_view mascara);
// `*.*` matches every name; elsewhere ".*" wants a point. "?" is exactly one character, not one byte. Names
// compare without regard to case (plegarCaja).
bool coincideMascara(std::string_view nombre, std::string_view mascara);
std::string leerTodo(SistemaArchivos& archivos, std::string_view ruta);
// Writes beside, synchronises and renames over: a reader sees the old content or the new, never a part. The
// file beside bears `permisos` from its first moment and is gone after a failure.
void escribirAtomico(SistemaArchivos& archivos, std::string_view ruta, std::string_view contenido,
                     unsigned permisos = 0644);

inline std::span<const std::byte> comoBytes(std::string_view texto) {
    return std::as_bytes(std::span(texto.data(), texto.size()));
}

}  // namespace tarvoline::platform
