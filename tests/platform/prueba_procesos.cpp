// Starting and ending real programs.
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <random>
#include <thread>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/variables_proceso.h"
#include "platform/procesos.h"

namespace tarvoline::pruebas {

using namespace platform;

namespace {

// A program of a name that nothing else on the machine bears.
std::string dormilon(const CarpetaPrueba& carpeta, const std::string& nombre) {
    std::filesystem::copy_file("/bin/sleep", carpeta.ruta(nombre));
    return carpeta.ruta(nombre);
}

pid_t arrancar(const std::string& programa) {
    pid_t pid = -1;
    std::string nombre = programa;
    std::string tiempo = "300";
    char* argumentos[] = {nombre.data(), tiempo.data(), nullptr};
    EXPECT_EQ(::posix_spawn(&pid, programa.c_str(), nullptr, nullptr, argumentos, environ), 0);
    return pid;
}

bool esperarA(const std::function<bool()>& condicion) {
    const auto limite = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condicion()) {
        if (std::chrono::steady_clock::now() > limite) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

std::string nombreUnico() {
    std::random_device azar;
    return "tvp" + std::to_string(azar());
}

void escribirGuion(const CarpetaPrueba& carpeta, std::string_view nombre, const std::string& texto) {
    carpeta.escribir(nombre, "#!/bin/sh\n" + texto);
    ::chmod(carpeta.ruta(nombre).c_str(), 0755);
}

}  // namespace

TEST(Procesos, TerminaLosDeEseNombreYNingunOtro) {
    const CarpetaPrueba carpeta;
    const std::string unico = nombreUnico();
    const pid_t contiene = arrancar(dormilon(carpeta, "Un-largo-" + unico + "-Programa"));
    const pid_t otro = arrancar(dormilon(carpeta, "zz" + unico.substr(0, 5)));
    EXPECT_EQ(terminarProcesos(""), 0);
    EXPECT_EQ(terminarProcesos("prueba_platform-no-hay"), 0) << "never the own process";
    EXPECT_EQ(terminarProcesos(unico + "-PROGRAMAS"), 0);
    EXPECT_EQ(terminarProcesos(" " + unico + "-PROGRAMA "), 1);
    int estado = 0;
    // The call has waited for the end, so nothing is left to wait for here.
    EXPECT_EQ(::waitpid(contiene, &estado, WNOHANG), contiene);
    EXPECT_EQ(WTERMSIG(estado), SIGKILL);
    EXPECT_EQ(::waitpid(otro, &estado, WNOHANG), 0);
    ::kill(otro, SIGKILL);
    ::waitpid(otro, &estado, 0);
}

TEST(Procesos, SinExeElNombreHaDeSerIgual) {
    const CarpetaPrueba carpeta;
    const std::string unico = nombreUnico();
    const pid_t igual = arrancar(dormilon(carpeta, unico));
    const pid_t mas = arrancar(dormilon(carpeta, unico + "x"));
    EXPECT_EQ(terminarProcesos(unico + ".EXE"), 1);
    EXPECT_EQ(::waitpid(igual, nullptr, WNOHANG), igual);
    EXPECT_EQ(terminarProcesos(unico), 1);
    EXPECT_EQ(::waitpid(mas, nullptr, WNOHANG), mas);
}

TEST(Procesos, UnProgramaArrancadoNoDejaZombisYRecibeSusArgumentos) {
    const CarpetaPrueba carpeta;
    escribirGuion(carpeta, "guion con blanco",
                  "printf '%s|' \"$@\" > \"$0.tmp\"; mv \"$0.tmp\" \"$0.hecho\"\n");
    EXPECT_TRUE(arrancarPrograma(carpeta.ruta("guion con blanco"), {"uno dos", "", "$x'\""}));
    EXPECT_TRUE(esperarA([&] { return carpeta.hay("guion con blanco.hecho"); }));
    EXPECT_EQ(carpeta.leer("guion con blanco.hecho"), "uno dos||$x'\"|");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    EXPECT_FALSE(arrancarPrograma(carpeta.ruta("no hay"), {}));
    EXPECT_FALSE(arrancarPrograma("", {}));
    // Executable by its mode, but no program.
    carpeta.escribir("falso",
                     "\x7F"
                     "ELF nada");
    ::chmod(carpeta.ruta("falso").c_str(), 0755);
    EXPECT_FALSE(arrancarPrograma(carpeta.ruta("falso"), {}));
}

TEST(Procesos, UnDocumentoSeAbreSoloConEscritorio) {
    const CarpetaPrueba carpeta;
    VariablesProceso entorno;
    escribirGuion(carpeta, "xdg-open",
                  "echo \"$1\" > '" + carpeta.ruta("tmp") + "'; mv '" + carpeta.ruta("tmp") + "' '" +
                      carpeta.ruta("abierto") + "'\n");
    entorno.poner("PATH", carpeta.ruta() + ":/usr/bin:/bin");
    entorno.quitar("DISPLAY");
    entorno.quitar("WAYLAND_DISPLAY");
    EXPECT_FALSE(abrirDocumento("https://www.tarvoline.example"));
    entorno.poner("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(abrirDocumento("https://www.tarvoline.example/?a=b&c"));
    EXPECT_TRUE(esperarA([&] { return carpeta.hay("abierto"); }));
    EXPECT_EQ(carpeta.leer("abierto"), "https://www.tarvoline.example/?a=b&c\n");
    EXPECT_FALSE(abrirDocumento(""));
    const CarpetaPrueba vacia;
    entorno.poner("PATH", vacia.ruta());
    EXPECT_FALSE(abrirDocumento("/x"));
}

}  // namespace tarvoline::pruebas
