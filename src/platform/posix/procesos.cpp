// Starting programs and documents.
#include "platform/procesos.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/posix/descriptor.h"
#include "platform/posix/entorno_proceso.h"
#include "platform/posix/errores.h"

namespace tarvoline::platform {

namespace {

using posix::Descriptor;
using posix::repetir;

constexpr char fallo = 'x';

// From here to the program only calls that are safe between fork and exec: another thread may have held any
// lock of the library when the process was copied.
[[noreturn]] void serPrograma(const char* ruta, char* const* argumentos, int aviso) {
    ::setsid();
    const pid_t nieto = ::fork();
    if (nieto > 0) ::_exit(0);
    if (nieto == 0) {
        sigset_t ninguna;
        ::sigemptyset(&ninguna);
        ::sigprocmask(SIG_SETMASK, &ninguna, nullptr);
        ::signal(SIGPIPE, SIG_DFL);
        ::signal(SIGCHLD, SIG_DFL);
        // Who captures this program's output must not wait for that one's end.
        const int nada = ::open("/dev/null", O_RDWR);
        for (int flujo = 0; nada >= 0 && flujo <= 2; ++flujo)
            ::dup2(nada, flujo);
        ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
        ::execv(ruta, argumentos);
    }
    [[maybe_unused]] const auto avisado = ::write(aviso, &fallo, 1);
    ::_exit(127);
}

}  // namespace

bool hayPantalla() {
    return posix::variable("DISPLAY") || posix::variable("WAYLAND_DISPLAY") ||
           posix::variable("QT_QPA_PLATFORM");
}

bool abrirDocumento(std::string_view rutaOUrl) {
    const bool hayEscritorio = posix::variable("DISPLAY") || posix::variable("WAYLAND_DISPLAY");
    const auto abridor = posix::buscarEjecutable("xdg-open");
    if (!hayEscritorio || !abridor || rutaOUrl.empty()) return false;
    // The opener would take a name that starts with "-" for an option.
    std::string documento(rutaOUrl);
    if (documento.front() == '-') documento.insert(0, "./");
    return arrancarPrograma(*abridor, {documento});
}

bool arrancarPrograma(std::string_view programa, const std::vector<std::string>& argumentos) {
    const auto ruta = posix::buscarEjecutable(std::string(programa));
    std::array<int, 2> extremos = {-1, -1};
    if (!ruta || ::pipe2(extremos.data(), O_CLOEXEC) != 0) return false;
    const Descriptor lectura(extremos[0]);
    Descriptor escritura(extremos[1]);

    std::vector<std::string> textos{*ruta};
    textos.insert(textos.end(), argumentos.begin(), argumentos.end());
    std::vector<char*> punteros;
    punteros.reserve(textos.size() + 1);
    for (std::string& texto : textos)
        punteros.push_back(texto.data());
    punteros.push_back(nullptr);

    const pid_t hijo = ::fork();
    if (hijo < 0) return false;
    if (hijo == 0) serPrograma(ruta->c_str(), punteros.data(), escritura.numero());
    escritura.cerrar();
    // The child ends at once and is fetched here; the program itself is nobody's child but the system's.
    repetir([&] { return ::waitpid(hijo, nullptr, 0); });
    // The pipe closes without a word when the program has started.
    char letra = 0;
    return repetir([&] { return ::read(lectura.numero(), &letra, 1); }) == 0;
}

int procesoPropio() {
    return static_cast<int>(::getpid());
}

}  // namespace tarvoline::platform
