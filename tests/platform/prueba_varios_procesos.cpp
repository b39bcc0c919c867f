// What several real processes do to each other through files.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <functional>
#include <memory>
#include <vector>

#include "platform/arbol_ajustes.h"
#include "platform/procesos.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

namespace {

// A process of its own; its end is waited for, and the code is what `paso` gave.
class Proceso {
  public:
    explicit Proceso(const std::function<int()>& paso) : pid_(::fork()) {
        if (pid_ == 0) ::_exit(correr(paso));
    }
    ~Proceso() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        fin();
    }
    Proceso(const Proceso&) = delete;
    Proceso& operator=(const Proceso&) = delete;

    int fin() {
        int estado = 0;
        while (::waitpid(pid_, &estado, 0) < 0 && errno == EINTR) {
        }
        pid_ = -1;
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : 1000 + WTERMSIG(estado);
    }

  private:
    static int correr(const std::function<int()>& paso) {
        try {
            return paso();
        } catch (const std::exception&) {
            return 99;
        }
    }
    pid_t pid_;
};

// One byte that a process waits for before it goes on.
class Sennal {
  public:
    Sennal() { EXPECT_EQ(::pipe(extremos_), 0); }
    ~Sennal() {
        ::close(extremos_[0]);
        ::close(extremos_[1]);
    }
    Sennal(const Sennal&) = delete;
    Sennal& operator=(const Sennal&) = delete;
    void dar() const { EXPECT_EQ(::write(extremos_[1], "x", 1), 1); }
    void esperar() const {
        char letra = 0;
        EXPECT_EQ(::read(extremos_[0], &letra, 1), 1);
    }

  private:
    int extremos_[2] = {-1, -1};
};

}  // namespace

TEST(VariosProcesos, LosBloqueosYLaExclusivaValenEntreEllos) {
    const CarpetaPrueba carpeta;
    const std::string ruta = carpeta.escribir("datos", "0123456789");
    const Sennal tomado;
    const Sennal soltar;
    Proceso otro([&] {
        const auto archivo =
            crearSistemaArchivos()->abrir(ruta, Apertura::escritura, Comparticion::compartida);
        if (!archivo->bloquear({2, 2}, TipoBloqueo::exclusivo)) return 1;
        tomado.dar();
        soltar.esperar();
        return 0;
    });
    tomado.esperar();
    const auto archivos = crearSistemaArchivos();
    auto propio = archivos->abrir(ruta, Apertura::escritura, Comparticion::compartida);
    std::array<std::byte, 3> trozo{};
    EXPECT_FALSE(propio->bloquear({3, 1}, TipoBloqueo::compartido));
    EXPECT_EQ(numeroDe([&] { propio->leer(0, trozo); }), error_archivo::permisoDenegado);
    EXPECT_EQ(numeroDe([&] { propio->leer(4, trozo); }), 0);
    propio.reset();
    const auto exclusiva = [&] { archivos->abrir(ruta, Apertura::lectura, Comparticion::exclusiva); };
    EXPECT_EQ(numeroDe(exclusiva), error_archivo::permisoDenegado);
    soltar.dar();
    EXPECT_EQ(otro.fin(), 0);
    EXPECT_EQ(numeroDe(exclusiva), 0);
}

TEST(VariosProcesos, ElBloqueoDeUnProcesoMuertoDesaparece) {
    const CarpetaPrueba carpeta;
    const std::string ruta = carpeta.escribir("datos", "x");
    const Sennal tomado;
    auto otro = std::make_unique<Proceso>([&] {
        const auto archivo = crearSistemaArchivos()->abrir(ruta, Apertura::escritura);
        archivo->bloquear(todoElArchivo, TipoBloqueo::exclusivo);
        tomado.dar();
        for (;;)
            ::pause();
        return 0;
    });
    tomado.esperar();
    const auto propio = crearSistemaArchivos()->abrir(ruta, Apertura::escritura);
    EXPECT_FALSE(propio->bloquear(todoElArchivo, TipoBloqueo::exclusivo));
    otro.reset();
    EXPECT_TRUE(propio->bloquear(todoElArchivo, TipoBloqueo::exclusivo, std::chrono::seconds(10)));
}

TEST(VariosProcesos, DosQueGrabanAjustesALaVezNoPierdenNinguno) {
    constexpr int procesos = 3;
    constexpr int claves = 60;
    const CarpetaPrueba carpeta;
    const std::string ruta = carpeta.ruta("QZ/ajustes.ini");
    std::vector<std::unique_ptr<Proceso>> otros;
    for (int p = 0; p < procesos; ++p) {
        otros.push_back(std::make_unique<Proceso>([&, p] {
            const auto archivos = crearSistemaArchivos();
            const auto arbol = crearArbolAjustes(*archivos, ruta);
            for (int i = 0; i < claves; ++i) {
                const std::string clave = "k" + std::to_string(p) + "_" + std::to_string(i);
                arbol->grabar({"Veldorix", i % 2 == 0 ? "A" : "B", clave}, std::to_string(i));
            }
            return 0;
        }));
    }
    // A reader sees a whole file at any moment.
    const auto archivos = crearSistemaArchivos();
    const auto arbol = crearArbolAjustes(*archivos, ruta);
    std::size_t antes = 0;
    while (antes < 50) {
        const std::size_t ahora = arbol->listar().size();
        ASSERT_GE(ahora, antes);
        ASSERT_TRUE(arbol->lineasOmitidas().empty());
        antes = ahora;
    }
    for (const auto& otro : otros)
        EXPECT_EQ(otro->fin(), 0);
    EXPECT_EQ(arbol->listar().size(), static_cast<std::size_t>(procesos * claves));
    EXPECT_EQ(archivos->listar(carpeta.ruta("QZ")).size(), 2U);
}

TEST(VariosProcesos, LaMarcaVeALasOtrasInstancias) {
    const CarpetaPrueba carpeta;
    const std::string ruta = carpeta.ruta("estado/instancia");
    const auto archivos = crearSistemaArchivos();
    const Sennal marcado;
    const Sennal acabar;
    Proceso otro([&] {
        const auto sistema = crearSistemaArchivos();
        const auto marca = crearMarcaInstancia(*sistema, ruta);
        marcado.dar();
        acabar.esperar();
        return 0;
    });
    marcado.esperar();
    {
        const auto marca = crearMarcaInstancia(*archivos, ruta);
        EXPECT_TRUE(marca->hayOtra());
        EXPECT_FALSE(marca->soyLaUnica());
    }
    acabar.dar();
    EXPECT_EQ(otro.fin(), 0);
    const auto marca = crearMarcaInstancia(*archivos, ruta);
    EXPECT_FALSE(marca->hayOtra());
    EXPECT_TRUE(marca->soyLaUnica());
    // Others may come now, and see this one.
    const auto segunda = crearMarcaInstancia(*archivos, ruta);
    EXPECT_TRUE(segunda->hayOtra());
    EXPECT_FALSE(segunda->soyLaUnica());
}

TEST(VariosProcesos, DeVariasQuePreguntanALaVezQuedaUna) {
    for (int vuelta = 0; vuelta < 20; ++vuelta) {
        const CarpetaPrueba carpeta;
        const Sennal listas;
        const Sennal ya;
        const Sennal acabar;
        const auto instancia = [&] {
            const auto archivos = crearSistemaArchivos();
            const auto marca = crearMarcaInstancia(*archivos, carpeta.ruta("instancia"));
            listas.dar();
            ya.esperar();
            const bool unica = marca->soyLaUnica();
            listas.dar();
            acabar.esperar();
            return unica ? 1 : 0;
        };
        std::vector<std::unique_ptr<Proceso>> todas;
        for (int i = 0; i < 3; ++i)
            todas.push_back(std::make_unique<Proceso>(instancia));
        for (const auto* que : {&ya, &acabar}) {
            for (int i = 0; i < 3; ++i)
                listas.esperar();
            for (int i = 0; i < 3; ++i)
                que->dar();
        }
        int unicas = 0;
        for (const auto& una : todas)
            unicas += una->fin();
        EXPECT_EQ(unicas, 1);
    }
}

}  // namespace tarvoline::pruebas
