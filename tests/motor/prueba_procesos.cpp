// Several real processes on one file: at work side by side, and killed in mid-work.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "motor/diferencial.h"

namespace tarvoline::pruebas {
namespace {

using motor::MotorIndexados;

std::unique_ptr<platform::SistemaArchivos> sistema(bool comoEnRed) {
    if (comoEnRed) return std::make_unique<ArchivosEnRed>();
    return platform::crearSistemaArchivos();
}

// Runs `cuerpo` in a process of its own; its result is the exit code.
pid_t lanzar(const std::function<int()>& cuerpo) {
    const pid_t pid = fork();
    if (pid == 0) {
        int codigo = 99;
        try {
            codigo = cuerpo();
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
        }
        _exit(codigo);
    }
    return pid;
}

int esperar(pid_t pid) {
    int estado = 0;
    waitpid(pid, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

int ejecutar(MotorIndexados& motor, std::string comando, std::int32_t& registro) {
    std::int16_t estado = 0;
    motor.Ejecutar(comando, registro, estado);
    return estado;
}

// Inserts, finds, moves and deletes records of its own among those of the others; the exit code tells at
// which check it failed. Leaves every third record.
int trabajarEnCompania(const std::string& ruta, bool comoEnRed, char quien, int cuantos) {
    const auto archivos = sistema(comoEnRed);
    MotorIndexados motor(*archivos);
    std::int32_t registro = 0;
    if (ejecutar(motor, "/O/" + ruta + "/3", registro) != 0) return 1;
    std::int32_t ultimo = 0;
    for (int i = 0; i < cuantos; ++i) {
        const std::string propio = std::to_string(i * 7919 % 1000) + quien + std::to_string(i);
        if (ejecutar(motor, "I\\3\\" + propio + "\\igual", registro) != 0) return 2;
        if (registro <= ultimo) return 3;
        ultimo = registro;
        if (ejecutar(motor, "S\\1\\3\\" + propio, registro) != 0 || registro != ultimo) return 4;
        // Equal texts of all processes lie in the order of their records.
        const int vecina = ejecutar(motor, "A\\1\\999999\\3\\" + propio, registro);
        if (vecina != 0 && vecina != 9) return 5;
        const std::string cabeza = "R\\1\\" + std::to_string(ultimo) + "\\3\\";
        if (ejecutar(motor, cabeza + propio + "\\m" + propio, registro) != 0) return 6;
        if (ejecutar(motor, "S\\1\\3\\" + propio, registro) == 0) return 7;
        if (i % 3 == 0) continue;
        const std::string borrar = "D\\" + std::to_string(ultimo) + "\\Y\\3\\m" + propio + "\\igual";
        if (ejecutar(motor, borrar, registro) != 0) return 8;
    }
    return 0;
}

class Procesos : public testing::TestWithParam<bool> {};

TEST_P(Procesos, ladoALado) {
    const CarpetaPrueba carpeta;
    const std::string ruta = carpeta.ruta("EFECT07.QZC");
    const auto archivos = sistema(GetParam());
    MotorIndexados motor(*archivos);
    ASSERT_EQ(mandar(motor, "/C/" + ruta + "/ 20/ 2/A/ 3").estado, 0);
    constexpr int cuantos = 300;
    std::vector<pid_t> hijos;
    for (const char quien : {'a', 'b', 'c'}) {
        hijos.push_back(lanzar([&, quien] { return trabajarEnCompania(ruta, GetParam(), quien, cuantos); }));
    }
    for (const pid_t hijo : hijos)
        EXPECT_EQ(esperar(hijo), 0);
    std::set<std::uint32_t> registros;
    std::size_t entradas = 0;
    const auto revision = motor::revisar(motor.archivo(3), [&](unsigned clave, auto, std::uint32_t registro) {
        if (clave == 1) registros.insert(registro);
        ++entradas;
    });
    EXPECT_EQ(revision.fallo, "");
    EXPECT_EQ(registros.size(), 3U * cuantos / 3);
    EXPECT_EQ(entradas, 2 * registros.size());
    EXPECT_EQ(motor.ultimoRegistro(3), 3U * cuantos);
}

INSTANTIATE_TEST_SUITE_P(Disco, Procesos, testing::Bool(),
                         [](const auto& caso) { return caso.param ? "enRed" : "local"; });

// Tells through the pipe each command that was answered, until it is killed.
int tormenta(const std::string& ruta, std::uint64_t semilla, int tubo) {
    const auto archivos = platform::crearSistemaArchivos();
    MotorIndexados motor(*archivos);
    std::int32_t registro = 0;
    if (ejecutar(motor, "/O/" + ruta + "/2", registro) != 0) return 1;
    ModeloTabla modelo(24, 3);
    Trabajo trabajo(semilla, modelo, {2}, 5);
    for (;;) {
        ejecutar(motor, trabajo.siguiente(6).comando, registro);
        if (write(tubo, "!", 1) != 1) return 2;
    }
}

// After a kill at any moment every answered command stands, and the one under way is whole or nothing.
TEST(Procesos, matadosEnPlenoTrabajo) {
    const std::uint64_t semilla = semillaNueva();
    Azar azar(semilla);
    const auto archivos = platform::crearSistemaArchivos();
    for (int vez = 0; vez < 12; ++vez) {
        const CarpetaPrueba carpeta;
        const std::string ruta = carpeta.ruta("EXTRA07.QZC");
        MotorIndexados motor(*archivos);
        ASSERT_EQ(mandar(motor, "/C/" + ruta + "/ 24/ 3/A/ 2").estado, 0);
        int tubo[2];
        ASSERT_EQ(pipe(tubo), 0);
        const pid_t hijo =
            lanzar([&] { return tormenta(ruta, semilla + static_cast<unsigned>(vez), tubo[1]); });
        close(tubo[1]);
        // Some commands into the storm, wherever that is.
        const std::size_t hasta = 50 + azar() % 1500;
        std::size_t contestadas = 0;
        char buzon[256];
        while (contestadas < hasta) {
            const auto n = read(tubo[0], buzon, sizeof buzon);
            ASSERT_GT(n, 0);
            contestadas += static_cast<std::size_t>(n);
        }
        kill(hijo, SIGKILL);
        esperar(hijo);
        for (ssize_t n = 0; (n = read(tubo[0], buzon, sizeof buzon)) > 0;)
            contestadas += static_cast<std::size_t>(n);
        close(tubo[0]);

        ModeloTabla modelo(24, 3);
        Trabajo trabajo(semilla + static_cast<unsigned>(vez), modelo, {2}, 5);
        for (std::size_t i = 0; i < contestadas; ++i)
            trabajo.siguiente(6);
        const auto entradasDe = [](const ModeloTabla& m) {
            return std::make_pair(m.contador, m.clave(1).size());
        };
        mandar(motor, "K");
        ASSERT_EQ(mandar(motor, "/O/" + ruta + "/2").estado, 0);
        const auto& cabecera = motor.archivo(2).cabecera();
        // The command after the last answer may have been done, or answered without being told.
        for (int mas = 0; mas < 2; ++mas) {
            if (std::make_pair(cabecera.contador, cabecera.raices[0].entradas) == entradasDe(modelo)) break;
            trabajo.siguiente(6);
        }
        if (testing::Test::HasFailure()) return;
        // A replacement changes no count: then one of two states must be it.
        std::vector<ModeloTabla::Par> leidas;
        const auto revision =
            motor::revisar(motor.archivo(2), [&](unsigned clave, std::string_view texto, std::uint32_t r) {
                if (clave == 1) leidas.push_back({modelo.rellenar(std::string(texto)), r});
            });
        ASSERT_EQ(revision.fallo, "");
        const auto igual = [&] {
            return leidas == std::vector<ModeloTabla::Par>(modelo.clave(1).begin(), modelo.clave(1).end());
        };
        if (!igual()) trabajo.siguiente(6);
        EXPECT_TRUE(igual()) << "seed " << semilla << ", time " << vez;
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
