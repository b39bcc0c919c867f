// Whether a company is in use, asked against other processes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "workflows/mundo_flujos.h"
#include "workflows/restauracion.h"

namespace tarvoline::workflows {
namespace {

// A workstation: a process that holds one file open until it is let go.
class Puesto {
  public:
    Puesto(const std::string& ruta, platform::Comparticion comparticion) {
        int tubo[2];
        EXPECT_EQ(::pipe2(tubo, O_CLOEXEC), 0);
        hijo_ = ::fork();
        if (hijo_ == 0) {
            const auto archivos = platform::crearSistemaArchivos();
            const auto archivo = archivos->abrir(ruta, platform::Apertura::escritura, comparticion);
            [[maybe_unused]] const auto escrito = ::write(tubo[1], "x", 1);
            ::pause();
            ::_exit(0);
        }
        ::close(tubo[1]);
        char listo = 0;
        EXPECT_EQ(::read(tubo[0], &listo, 1), 1) << "the other process could not open " << ruta;
        ::close(tubo[0]);
    }
    ~Puesto() { cerrar(); }
    Puesto(const Puesto&) = delete;
    Puesto& operator=(const Puesto&) = delete;
    void cerrar() {
        if (hijo_ > 0) {
            ::kill(hijo_, SIGKILL);
            ::waitpid(hijo_, nullptr, 0);
            hijo_ = -1;
        }
    }
    bool vive() const { return ::waitpid(hijo_, nullptr, WNOHANG) == 0; }

  private:
    pid_t hijo_ = -1;
};

TEST(EmpresaLibre, NoLoEsMientrasOtroProcesoTieneAlgoSuyo) {
    pruebas::MundoFlujos mundo;
    auto& restauracion = mundo.flujos.restauracion();
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    mundo.crearEmpresa("Dos.QZT");
    EXPECT_TRUE(restauracion.EmpresaLibre(ruta));
    for (const char* nombre : {"Uno.QZT", "PLANC01.QZD", "EXTRA01.QZD"}) {
        Puesto otro(mundo.nucleo.datos(nombre), platform::Comparticion::compartida);
        EXPECT_FALSE(restauracion.EmpresaLibre(ruta)) << nombre;
        otro.cerrar();
        EXPECT_TRUE(restauracion.EmpresaLibre(ruta)) << nombre;
    }
    // What belongs to another company, or is no table, does not count.
    mundo.nucleo.carpeta().escribir("datos/PLANC01.TXT", "");
    const Puesto deOtra(mundo.nucleo.datos("PLANC02.QZD"), platform::Comparticion::compartida);
    const Puesto texto(mundo.nucleo.datos("PLANC01.TXT"), platform::Comparticion::compartida);
    EXPECT_TRUE(restauracion.EmpresaLibre(ruta));
    EXPECT_FALSE(restauracion.EmpresaLibre(""));
    EXPECT_FALSE(restauracion.EmpresaLibre(mundo.nucleo.datos("falta.QZT")));
}

TEST(EmpresaLibre, TerminarProcesoSoloAcabaConLosDeEseNombre) {
    pruebas::MundoFlujos mundo;
    const auto programa = mundo.nucleo.ruta("veldorixprueba");
    std::filesystem::copy_file("/bin/sleep", programa);
    const pid_t hijo = ::fork();
    if (hijo == 0) {
        ::execl(programa.c_str(), programa.c_str(), "60", nullptr);
        ::_exit(127);
    }
    // It bears its own name only once it has become the program.
    for (std::string nombre; nombre != programa;) {
        std::error_code sinError;
        nombre = std::filesystem::read_symlink("/proc/" + std::to_string(hijo) + "/exe", sinError).string();
    }
    Puesto ajeno(mundo.crearEmpresa("Uno.QZT"), platform::Comparticion::compartida);
    mundo.flujos.restauracion().TerminarProceso("DORIXPRUEBA");
    int estado = 0;
    ASSERT_EQ(::waitpid(hijo, &estado, 0), hijo);
    EXPECT_TRUE(WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL);
    EXPECT_TRUE(ajeno.vive());
    mundo.flujos.restauracion().TerminarProceso("");
    EXPECT_TRUE(ajeno.vive());
}

}  // namespace
}  // namespace tarvoline::workflows
