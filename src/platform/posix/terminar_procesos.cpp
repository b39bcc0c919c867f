// Ending processes by name.
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

#include "platform/caja.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/errores.h"
#include "platform/procesos.h"
#include "platform/rutas.h"

// Not every C library says in this header that its functions are C's.
extern "C" {
#include <sys/pidfd.h>
}

namespace tarvoline::platform {

namespace {

namespace fs = std::filesystem;
using posix::Descriptor;
using posix::repetir;

constexpr std::chrono::milliseconds esperaMaxima{2'000};

bool terminado(const Descriptor& proceso, std::chrono::milliseconds espera) {
    pollfd sondeo{proceso.numero(), POLLIN, 0};
    return repetir([&] { return ::poll(&sondeo, 1, static_cast<int>(espera.count())); }) > 0;
}

std::optional<pid_t> comoNumero(const std::string& nombre) {
    pid_t numero = 0;
    const auto [fin, error] = std::from_chars(nombre.data(), nombre.data() + nombre.size(), numero);
    if (error != std::errc() || fin != nombre.data() + nombre.size()) return std::nullopt;
    return numero;
}

bool encaja(std::string_view nombre, std::string_view buscado) {
    constexpr std::string_view extension = ".exe";
    const std::string plegado = plegarCaja(nombre);
    if (plegado.find(buscado) != std::string::npos) return true;
    return buscado.ends_with(extension) && plegado == buscado.substr(0, buscado.size() - extension.size());
}

// The name that the process bears (cut to 15 bytes by the system) and that of its program's file.
bool tieneNombre(const fs::path& proceso, std::string_view buscado) {
    std::ifstream archivo(proceso / "comm");
    std::string corto;
    std::getline(archivo, corto);
    std::error_code sinEnlace;
    const std::string programa = fs::read_symlink(proceso / "exe", sinEnlace).string();
    return (!corto.empty() && encaja(corto, buscado)) ||
           (!programa.empty() && encaja(nombreDe(programa), buscado));
}

bool esDelUsuario(const fs::path& proceso) {
    struct stat datos {};
    return ::stat(proceso.c_str(), &datos) == 0 && datos.st_uid == ::getuid();
}

std::string buscadoDe(std::string_view texto) {
    const std::size_t desde = texto.find_first_not_of(" \t");
    if (desde == std::string_view::npos) return {};
    return plegarCaja(texto.substr(desde, texto.find_last_not_of(" \t") - desde + 1));
}

// The handle is taken before the name is read: were the number given to another process meanwhile, the signal
// would meet the one that was looked at, or nobody.
Descriptor terminarSiEncaja(const fs::path& carpeta, pid_t numero, std::string_view buscado) {
    Descriptor proceso(::pidfd_open(numero, 0));
    if (!proceso.abierto() || terminado(proceso, std::chrono::milliseconds::zero())) return Descriptor();
    if (!esDelUsuario(carpeta) || !tieneNombre(carpeta, buscado)) return Descriptor();
    if (::pidfd_send_signal(proceso.numero(), SIGKILL, nullptr, 0) != 0) return Descriptor();
    return proceso;
}

}  // namespace

int terminarProcesos(std::string_view texto) {
    const std::string buscado = buscadoDe(texto);
    if (buscado.empty()) return 0;
    std::vector<Descriptor> muertos;
    std::error_code sinLista;
    for (fs::directory_iterator entrada("/proc", sinLista), fin; entrada != fin;
         entrada.increment(sinLista)) {
        if (sinLista) break;
        const auto numero = comoNumero(entrada->path().filename().string());
        if (!numero || *numero == ::getpid()) continue;
        Descriptor muerto = terminarSiEncaja(entrada->path(), *numero, buscado);
        if (muerto.abierto()) muertos.push_back(std::move(muerto));
    }
    using std::chrono::steady_clock;
    const auto limite = steady_clock::now() + esperaMaxima;
    for (const Descriptor& muerto : muertos) {
        const auto resto =
            std::chrono::duration_cast<std::chrono::milliseconds>(limite - steady_clock::now());
        terminado(muerto, std::max(resto, std::chrono::milliseconds::zero()));
    }
    return static_cast<int>(muertos.size());
}

}  // namespace tarvoline::platform
