// What only the real file system has: rights, links, pipes, errors of the system.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/posix/errores.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

class ArchivosPosix : public testing::Test {
  protected:
    CarpetaPrueba carpeta_;
    std::unique_ptr<SistemaArchivos> archivos_ = crearSistemaArchivos();
};

TEST_F(ArchivosPosix, LosErroresDelSistemaTienenSuNumero) {
    const std::pair<int, int> casos[] = {
        {ENOENT, 53}, {ENOTDIR, 76}, {EISDIR, 75}, {EACCES, 70}, {EPERM, 70},  {EROFS, 70},  {EEXIST, 58},
        {ENOSPC, 61}, {EDQUOT, 61},  {EFBIG, 61},  {EIO, 57},    {EAGAIN, 70}, {EMFILE, 67}, {ENOTEMPTY, 75}};
    for (const auto& [codigo, numero] : casos)
        EXPECT_EQ(posix::numeroDeErrno(codigo), numero) << codigo;
}

TEST_F(ArchivosPosix, LosPermisosValenDesdeElPrimerMomento) {
    struct stat datos {};
    archivos_->abrir(carpeta_.ruta("secreto"), Apertura::nuevo, Comparticion::libre, 0600);
    ASSERT_EQ(::stat(carpeta_.ruta("secreto").c_str(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777U, 0600U);
    archivos_->crearDirectorios(carpeta_.ruta("a/b"), 0700);
    ASSERT_EQ(::stat(carpeta_.ruta("a").c_str(), &datos), 0);
    EXPECT_EQ(datos.st_mode & 0777U, 0700U);
}

TEST_F(ArchivosPosix, UnaTuberiaNiDetieneNiSeAbre) {
    ASSERT_EQ(::mkfifo(carpeta_.ruta("tubo").c_str(), 0600), 0);
    EXPECT_EQ(numeroDe([&] { archivos_->abrir(carpeta_.ruta("tubo"), Apertura::lectura); }),
              error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { archivos_->abrir(carpeta_.ruta("tubo"), Apertura::crear); }),
              error_archivo::ruta);
    EXPECT_TRUE(archivos_->listar(carpeta_.ruta()).empty());
}

TEST_F(ArchivosPosix, LosEnlacesSeSiguenYSeSennalan) {
    carpeta_.escribir("destino/x", "hola");
    std::filesystem::create_symlink("destino", carpeta_.ruta("Enlace"));
    std::filesystem::create_symlink("ninguna", carpeta_.ruta("roto"));
    EXPECT_EQ(leerTodo(*archivos_, carpeta_.ruta("ENLACE/X")), "hola");
    const auto entradas = archivos_->listar(carpeta_.ruta());
    ASSERT_EQ(entradas.size(), 2U);
    EXPECT_FALSE(entradas[0].esEnlace);
    EXPECT_TRUE(entradas[1].esEnlace);
    EXPECT_TRUE(entradas[1].esDirectorio);
    EXPECT_FALSE(archivos_->estado(carpeta_.ruta("roto")));
}

TEST_F(ArchivosPosix, SinCajaGanaLaExactaYDespuesElOrden) {
    carpeta_.escribir("DATOS.qzd", "1");
    carpeta_.escribir("Datos.QZD", "2");
    carpeta_.escribir("datos.qzd", "3");
    EXPECT_EQ(leerTodo(*archivos_, carpeta_.ruta("datos.qzd")), "3");
    EXPECT_EQ(leerTodo(*archivos_, carpeta_.ruta("DATOS.QZD")), "1");
    archivos_->borrar(carpeta_.ruta("DATOS.qzd"));
    EXPECT_EQ(leerTodo(*archivos_, carpeta_.ruta("DATOS.QZD")), "2");
}

TEST_F(ArchivosPosix, UnArchivoDemasiadoGrandeEsDiscoLlenoYGuardaLoQueCupo) {
    const pid_t hijo = ::fork();
    if (hijo == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limite{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limite);
        const auto archivo = archivos_->abrir(carpeta_.ruta("x"), Apertura::nuevo);
        ::_exit(numeroDe([&] { archivo->escribir(0, comoBytes(std::string(1500, 'x'))); }));
    }
    int estado = 0;
    ASSERT_EQ(::waitpid(hijo, &estado, 0), hijo);
    EXPECT_EQ(WEXITSTATUS(estado), error_archivo::discoLleno);
    EXPECT_EQ(carpeta_.leer("x").size(), 1000U);
}

TEST_F(ArchivosPosix, LasAperturasNoPasanAOtroPrograma) {
    const auto archivo = archivos_->abrir(carpeta_.ruta("x"), Apertura::crear, Comparticion::exclusiva);
    const std::string orden = "ls -l /proc/self/fd > '" + carpeta_.ruta("abiertos") + "'";
    ASSERT_EQ(std::system(orden.c_str()), 0);
    EXPECT_EQ(carpeta_.leer("abiertos").find(carpeta_.ruta("x") + "\n"), std::string::npos);
}

}  // namespace tarvoline::pruebas
