// What every file system must do: names, contents, folders, error numbers.
#include <gmock/gmock.h>

#include <array>

#include "platform/rutas.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;
using testing::ElementsAre;

class ConformidadArchivos : public ConSistema {};
INSTANTIATE_TEST_SUITE_P(Sistemas, ConformidadArchivos, todosLosSistemas(),
                         [](const auto& caso) { return caso.param; });

TEST_P(ConformidadArchivos, LosModosDeAperturaCreanVacianOFallan) {
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("a"), Apertura::lectura); }), error_archivo::noExiste);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("a"), Apertura::escritura); }), error_archivo::noExiste);
    EXPECT_FALSE(existe(fs(), ruta("a")));
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("a"), Apertura::nuevo); }), 0);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("A"), Apertura::nuevo); }), error_archivo::yaExiste);
    fs().abrir(ruta("a"), Apertura::crear)->escribir(0, comoBytes("hola"));
    EXPECT_EQ(leer("a"), "hola");
    EXPECT_EQ(fs().abrir(ruta("a"), Apertura::crear)->longitud(), 4U);
    EXPECT_EQ(fs().abrir(ruta("a"), Apertura::vaciar)->longitud(), 0U);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("no/a"), Apertura::crear); }), error_archivo::rutaNoExiste);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("no/a"), Apertura::lectura); }), error_archivo::rutaNoExiste);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta("a/b"), Apertura::crear); }), error_archivo::rutaNoExiste);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta(""), Apertura::lectura); }), error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { fs().abrir(ruta(""), Apertura::crear); }), error_archivo::ruta);
    EXPECT_NE(numeroDe([&] { fs().abrir("", Apertura::lectura); }), 0);
}

TEST_P(ConformidadArchivos, LeeYEscribeEnCualquierPosicion) {
    const auto archivo = fs().abrir(ruta("a"), Apertura::nuevo);
    archivo->escribir(5, comoBytes("fin"));
    EXPECT_EQ(leer("a"), std::string("\0\0\0\0\0fin", 8));
    archivo->escribir(0, comoBytes("inicio"));
    EXPECT_EQ(leer("a"), "inicioin");
    std::array<std::byte, 4> trozo{};
    EXPECT_EQ(archivo->leer(6, trozo), 2U);
    EXPECT_EQ(archivo->leer(8, trozo), 0U);
    EXPECT_EQ(archivo->leer(std::uint64_t{1} << 40, trozo), 0U);
    archivo->truncar(2);
    EXPECT_EQ(leer("a"), "in");
    archivo->truncar(3);
    EXPECT_EQ(leer("a"), std::string("in\0", 3));
    archivo->escribir(1, {});
    EXPECT_EQ(archivo->longitud(), 3U);
    archivo->sincronizar();
    for (const auto comparticion : {Comparticion::libre, Comparticion::compartida}) {
        const auto otro = fs().abrir(ruta("a"), Apertura::escritura, comparticion);
        const std::uint64_t antes = archivo->longitud();
        otro->escribir(antes, comoBytes("mas"));
        EXPECT_EQ(otro->longitud(), antes + 3);
        EXPECT_EQ(otro->longitudAlAbrir(), antes);
    }
    EXPECT_EQ(fs().abrir(ruta("a"), Apertura::vaciar)->longitudAlAbrir(), 9U);
    std::string grande(300'001, '\0');
    for (std::size_t i = 0; i < grande.size(); ++i)
        grande[i] = static_cast<char>(i * 7 % 251);
    escribir("grande", grande);
    EXPECT_EQ(leer("grande"), grande);
}

TEST_P(ConformidadArchivos, UnaAperturaDeLecturaNoEscribe) {
    escribir("a", "texto");
    const auto archivo = fs().abrir(ruta("a"), Apertura::lectura);
    EXPECT_EQ(numeroDe([&] { archivo->escribir(0, comoBytes("x")); }), error_archivo::permisoDenegado);
    EXPECT_EQ(numeroDe([&] { archivo->truncar(0); }), error_archivo::permisoDenegado);
    EXPECT_EQ(leer("a"), "texto");
}

TEST_P(ConformidadArchivos, LosNombresNoDistinguenCajaYLaExactaGana) {
    fs().crearDirectorios(ruta("Contabilidad/Año"));
    escribir("Contabilidad/Año/PLANA07.QZD", "tabla");
    EXPECT_EQ(leer("CONTABILIDAD\\aÑO\\plana07.qzd"), "tabla");
    EXPECT_EQ(fs().resolver(ruta("contabilidad/AÑO/plana07.QZd")), ruta("Contabilidad/Año/PLANA07.QZD"));
    EXPECT_EQ(fs().resolver(ruta("contabilidad//año\\\\nuevo.txt")), ruta("Contabilidad/Año/nuevo.txt"));
    EXPECT_EQ(fs().resolver(ruta("contabilidad/otro/nuevo.txt")), ruta("Contabilidad/otro/nuevo.txt"));
    EXPECT_EQ(fs().resolver(ruta("contabilidad\\")), ruta("Contabilidad"));
    // Written under another case it is still the one file.
    escribir("contabilidad/año/PlanA07.Qzd", "nueva");
    EXPECT_EQ(fs().listar(ruta("contabilidad/año")).size(), 1U);
    EXPECT_EQ(leer("Contabilidad/Año/PLANA07.QZD"), "nueva");
}

TEST_P(ConformidadArchivos, EstadoDiceQuienEs) {
    escribir("a", "12345");
    const auto uno = fs().estado(ruta("A"));
    ASSERT_TRUE(uno);
    EXPECT_EQ(uno->longitud, 5U);
    EXPECT_FALSE(uno->esDirectorio);
    EXPECT_GT(uno->modificado, 0);
    EXPECT_TRUE(fs().estado(ruta(""))->esDirectorio);
    EXPECT_FALSE(fs().estado(ruta("b")));
    EXPECT_FALSE(fs().estado(ruta("a/b")));
    EXPECT_FALSE(fs().estado(""));
    EXPECT_FALSE(fs().estado(ruta(std::string_view("a\0b", 3))));

    // An open file keeps its identity when its name is given to another.
    const auto abierto = fs().abrir(ruta("a"), Apertura::lectura);
    EXPECT_EQ(abierto->estado().identidad, uno->identidad);
    escribir("nuevo", "otro");
    fs().renombrar(ruta("nuevo"), ruta("a"));
    EXPECT_NE(fs().estado(ruta("a"))->identidad, uno->identidad);
    EXPECT_EQ(abierto->estado().identidad, uno->identidad);
    EXPECT_EQ(abierto->longitud(), 5U);
}

TEST_P(ConformidadArchivos, RenombraYBorra) {
    escribir("a", "uno");
    escribir("b", "dos");
    fs().renombrar(ruta("A"), ruta("B"));
    EXPECT_EQ(leer("b"), "uno");
    EXPECT_FALSE(existe(fs(), ruta("a")));
    fs().renombrar(ruta("b"), ruta("B"));
    EXPECT_EQ(fs().listar(ruta("")).front().nombre, "B");
    EXPECT_EQ(numeroDe([&] { fs().renombrar(ruta("no"), ruta("x")); }), error_archivo::noExiste);
    EXPECT_EQ(numeroDe([&] { fs().renombrar(ruta("b"), ruta("no/x")); }), error_archivo::rutaNoExiste);
    fs().crearDirectorios(ruta("d/e"));
    EXPECT_EQ(numeroDe([&] { fs().renombrar(ruta("b"), ruta("d")); }), error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { fs().renombrar(ruta("d"), ruta("d/e/f")); }), error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { fs().borrar(ruta("d")); }), error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { fs().borrarDirectorio(ruta("d")); }), error_archivo::ruta);
    fs().renombrar(ruta("d"), ruta("f"));
    EXPECT_TRUE(existe(fs(), ruta("F/E")));
    fs().borrarDirectorio(ruta("f/e"));
    fs().borrarDirectorio(ruta("f"));
    fs().borrar(ruta("b"));
    EXPECT_TRUE(fs().listar(ruta("")).empty());
    EXPECT_EQ(numeroDe([&] { fs().borrar(ruta("b")); }), error_archivo::noExiste);
    EXPECT_EQ(numeroDe([&] { fs().borrarDirectorio(ruta("f")); }), error_archivo::rutaNoExiste);
}

TEST_P(ConformidadArchivos, CreaCarpetasConSusPadres) {
    fs().crearDirectorios(ruta("uno\\dos/tres/"));
    EXPECT_TRUE(fs().estado(ruta("uno/dos/tres"))->esDirectorio);
    fs().crearDirectorios(ruta("UNO/dos/cuatro"));
    EXPECT_EQ(fs().listar(ruta("uno/dos")).size(), 2U);
    escribir("archivo", "");
    EXPECT_EQ(numeroDe([&] { fs().crearDirectorios(ruta("archivo")); }), error_archivo::ruta);
    EXPECT_EQ(numeroDe([&] { fs().crearDirectorios(ruta("archivo/x")); }), error_archivo::ruta);
    EXPECT_GT(fs().espacioLibre(ruta("uno/falta/aún")), 0U);
    fs().sincronizarDirectorio(ruta("uno"));
    EXPECT_EQ(numeroDe([&] { fs().sincronizarDirectorio(ruta("no")); }), error_archivo::rutaNoExiste);
}

TEST_P(ConformidadArchivos, ListaPorNombreSinCajaYSoloArchivosEnLasMascaras) {
    for (const char* nombre : {"b.TXT", "C.txt", "a.txt", "Ñ.txt", "d.dat"})
        escribir(nombre, "x");
    fs().crearDirectorios(ruta("carpeta.txt"));
    std::vector<std::string> nombres;
    for (const auto& entrada : fs().listar(ruta("")))
        nombres.push_back(entrada.nombre);
    EXPECT_THAT(nombres, ElementsAre("a.txt", "b.TXT", "C.txt", "carpeta.txt", "d.dat", "Ñ.txt"));
    EXPECT_THAT(listarMascara(fs(), ruta(""), "?.TXT"), ElementsAre("a.txt", "b.TXT", "C.txt", "Ñ.txt"));
    EXPECT_TRUE(fs().listar(ruta("no")).empty());
    EXPECT_TRUE(listarMascara(fs(), ruta("no"), "*").empty());
}

TEST_P(ConformidadArchivos, EscribirAtomicoReemplazaYNoDejaRastro) {
    escribirAtomico(fs(), ruta("Config.ini"), "uno");
    escribirAtomico(fs(), ruta("config.INI"), "dos");
    EXPECT_EQ(leer("config.ini"), "dos");
    EXPECT_EQ(fs().listar(ruta("")).size(), 1U);
    EXPECT_EQ(numeroDe([&] { escribirAtomico(fs(), ruta("no/x"), "z"); }), error_archivo::rutaNoExiste);
    fs().crearDirectorios(ruta("d"));
    EXPECT_EQ(numeroDe([&] { escribirAtomico(fs(), ruta("d"), "z"); }), error_archivo::ruta);
    EXPECT_EQ(fs().listar(ruta("")).size(), 2U);
}

}  // namespace tarvoline::pruebas
