// Pieces, files, folders and the room of an account, through the real door.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo/archivos_defectuosos.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using pruebas::ClientePrueba;
using pruebas::relleno;
using pruebas::ServicioEnMarcha;
namespace respuesta = server::respuesta;

constexpr int paso = ClientePrueba::paso;

TEST(ServicioArchivos, WhatGoesUpComesBackWhateverItsLength) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    // 262144 is no length that a backup manager can send in this way; the shorter ones go in the small form.
    for (const std::size_t longitud : std::initializer_list<std::size_t>{0, 1, 2, 262143, 262145, 262146,
                                                                         524288, 524289, 524290, 700000}) {
        const std::string contenido = relleno(longitud, static_cast<unsigned>(longitud));
        const std::string nombre = "f" + std::to_string(longitud);
        ASSERT_EQ(ana.subirEntero(nombre, contenido), "") << longitud;
        EXPECT_EQ(ana.con("FileSize", ana.lugar(nombre)), std::to_string(longitud));
        EXPECT_TRUE(ana.bajarEntero(nombre) == contenido) << longitud;
    }
}

TEST(ServicioArchivos, OnlyAShortFirstPieceLosesItsLastZeroByte) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    using namespace std::string_literals;
    EXPECT_EQ(ana.subir("corta", "abc\0\0"s, 1), "");
    EXPECT_EQ(ana.bajarEntero("corta"), "abc\0"s);
    EXPECT_EQ(ana.subir("sin cero", "abc", 1), "");
    EXPECT_EQ(ana.bajarEntero("sin cero"), "abc");
    std::string larga = relleno(paso);
    larga.back() = '\0';
    EXPECT_EQ(ana.subir("larga", larga + '\0', 1), "");
    EXPECT_TRUE(ana.bajarEntero("larga") == larga + '\0') << "a full first piece keeps its zeros";
    EXPECT_EQ(ana.subir("larga", "xyz\0"s, paso + 1), "");
    EXPECT_TRUE(ana.bajarEntero("larga") == larga + "xyz\0"s) << "so does a later one";
}

TEST(ServicioArchivos, PiecesMayComeAgainButNeverLeaveAHole) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const std::string contenido = relleno(2 * paso + 1000);
    const auto pieza = [&](int n) { return contenido.substr(static_cast<std::size_t>(n * paso), paso + 1); };

    EXPECT_EQ(ana.subir("a", pieza(1), paso + 1), respuesta::hueco) << "nothing stands before it";
    EXPECT_EQ(ana.con("FileSize", ana.lugar("a")), respuesta::noExiste);
    EXPECT_EQ(ana.subir("a", pieza(0), 1), "");
    EXPECT_EQ(ana.subir("a", pieza(2), 2 * paso + 1), respuesta::hueco);
    EXPECT_EQ(ana.subir("a", "z", paso + 3), respuesta::hueco) << "one byte behind the end";
    EXPECT_EQ(ana.con("FileSize", ana.lugar("a")), std::to_string(paso + 1));
    EXPECT_EQ(ana.subir("a", pieza(1), paso + 1), "");
    EXPECT_EQ(ana.subir("a", pieza(1), paso + 1), "") << "a piece whose answer was lost comes again";
    EXPECT_EQ(ana.subir("a", pieza(2), 2 * paso + 1), "");
    EXPECT_EQ(ana.subir("a", pieza(1), paso + 1), "") << "an earlier piece leaves what is behind it";
    EXPECT_TRUE(ana.bajarEntero("a") == contenido);
    EXPECT_EQ(ana.subir("a", pieza(0), 1), "");
    EXPECT_EQ(ana.con("FileSize", ana.lugar("a")), std::to_string(paso + 1)) << "position 1 starts anew";
}

TEST(ServicioArchivos, PositionsAndLengthsOutOfRangeAreRefused) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    ASSERT_EQ(ana.subirEntero("a", "0123456789"), "");
    for (const int posicion : {0, -1, -2147483647 - 1}) {
        EXPECT_EQ(ana.subir("a", "x", posicion), respuesta::posicionNoValida);
        ana.bajar("a", posicion, 1);
        EXPECT_EQ(ana.resultado, respuesta::posicionNoValida);
    }
    EXPECT_EQ(ana.subir("a", "", 1), respuesta::posicionNoValida);
    EXPECT_EQ(ana.subir("a", relleno(paso + 2), 1), respuesta::posicionNoValida);
    EXPECT_EQ(ana.subir("a", "xx", 2147483647), respuesta::posicionNoValida);
    for (const int cuantos : {-1, 2147483647, (1 << 20) + 1}) {
        ana.bajar("a", 1, cuantos);
        EXPECT_EQ(ana.resultado, respuesta::posicionNoValida) << cuantos;
    }
    EXPECT_EQ(ana.bajar("a", 8, 100), "789");
    EXPECT_EQ(ana.bajar("a", 11, 1), "");
    EXPECT_EQ(ana.bajar("a", 2147483647, 1), "");
    EXPECT_EQ(ana.bajar("a", 1, 0), "");
    EXPECT_EQ(ana.resultado, "");
}

TEST(ServicioArchivos, NamesAreDataAndNeverPaths) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const std::vector<std::string> nombres = {"../../fuera",
                                              "/etc/tarvoline",
                                              "a/b",
                                              "a\\b",
                                              "..",
                                              ".",
                                              "C:\\x",
                                              "año & <niño> ñandú €.zip",
                                              "&#241;",
                                              "Ω漢字🙂",
                                              std::string(300, 'x'),
                                              "CON",
                                              "'; DROP TABLE archivos; --",
                                              "%s%n"};
    for (const std::string& nombre : nombres) {
        ASSERT_EQ(ana.subirEntero(nombre, "contenido de " + nombre), "") << nombre;
        EXPECT_EQ(ana.bajarEntero(nombre), "contenido de " + nombre);
    }
    std::vector<std::string> listados;
    for (std::istringstream lista(ana.listado()); !lista.eof();)
        std::getline(lista, listados.emplace_back(), '\t');
    EXPECT_THAT(listados, testing::UnorderedElementsAreArray(nombres));

    const std::filesystem::path raiz = servicio.carpeta.ruta("raiz/datos/U0000001");
    std::size_t enDisco = 0;
    for (const auto& entrada : std::filesystem::directory_iterator(raiz)) {
        EXPECT_EQ(entrada.path().filename().string().find_first_not_of("0123456789"), std::string::npos);
        ++enDisco;
    }
    EXPECT_EQ(enDisco, nombres.size());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(servicio.carpeta.ruta()), {}), 1);

    for (const std::string malo : {"", "   ", "con\ttabulador", "con\nlínea", "\x7F"}) {
        EXPECT_EQ(ana.subirEntero(malo, "x"), respuesta::nombreNoValido) << malo;
    }
    EXPECT_EQ(ana.subirEntero(std::string(513, 'x'), "x"), respuesta::nombreNoValido);
    EXPECT_EQ(ana.con("FileSize", ana.lugar("A/B")), respuesta::noExiste) << "names are compared exactly";
}

TEST(ServicioArchivos, FoldersAndKindsKeepFilesApartWithoutRegardToCase) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    EXPECT_EQ(ana.con("listadocarpetas"), "");
    EXPECT_EQ(ana.listado(), "");
    ana.subir("x", "1", 1, "DATOS", "PERSONAL");
    ana.subir("x", "22", 1, "Contabilidad Ñ", "PERSONAL");
    ana.subir("y", "333", 1, "Datos", "VELDORIX");
    ana.subir("z", "4444", 1, "contabilidad ñ", "personal");
    ana.subir("w", "5", 1, "", "PERSONAL");
    EXPECT_EQ(ana.con("listadocarpetas"), "Contabilidad Ñ\tDATOS");
    EXPECT_EQ(ana.listado("datos"), "w\tx");
    EXPECT_EQ(ana.listado("CONTABILIDAD Ñ", "Personal"), "x\tz");
    EXPECT_EQ(ana.listado("DATOS", "VELDORIX"), "y");
    EXPECT_EQ(ana.listado("DATOS", "MFISCAL"), "");
    EXPECT_EQ(ana.con("FileSize", ana.lugar("x", "contabilidad Ñ")), "2");
    EXPECT_EQ(ana.subir("x", "1", 1, "con\ttab"), respuesta::carpetaNoValida);
    EXPECT_EQ(ana.subir("x", "1", 1, "DATOS", ""), respuesta::tipoNoValido);
    ClientePrueba bea = servicio.cliente("BEA", "secreta2");
    EXPECT_EQ(bea.con("listadocarpetas"), "") << "another user sees none of it";
    // A list whose first name begins with "ERROR" would read as a failure.
    for (const std::string nombre : {"ERRORES SL", "ZETA"})
        ASSERT_EQ(bea.subir(nombre, "x", 1, nombre), "");
    EXPECT_EQ(bea.con("listadocarpetas"), "ZETA\tERRORES SL");
    ASSERT_EQ(bea.subir("ZETA", "x", 1, "ERRORES SL"), "");
    EXPECT_EQ(bea.listado("ERRORES SL"), "ZETA\tERRORES SL");
}

TEST(ServicioArchivos, ContractedRoomIsEnforcedAndComesBackWithWhatIsDeleted) {
    ServicioEnMarcha servicio;
    // One gigabyte is contracted; nearly all of it is taken behind the service's back, in a sparse file.
    ASSERT_EQ(servicio.cliente().subirEntero("grande", "x"), "");
    servicio.servicio.reset();
    std::filesystem::resize_file(servicio.carpeta.ruta("raiz/datos/U0000001/1"), (1U << 30U) - 10);
    servicio.arrancar();
    ClientePrueba ana = servicio.cliente();
    ClientePrueba bea = servicio.cliente("BEA", "secreta2");
    EXPECT_EQ(bea.subir("a", "12345678901", 1), respuesta::sinEspacio);
    EXPECT_EQ(bea.con("CalcularEspacioTotal"), "0");
    EXPECT_EQ(bea.subir("a", "1234567890", 1), "");
    EXPECT_EQ(bea.subir("a", "1", 11), respuesta::sinEspacio);
    EXPECT_EQ(bea.bajarEntero("a"), "1234567890");
    EXPECT_EQ(bea.subir("a", "123456789", 1), "") << "a file started anew gives back what it had";
    EXPECT_EQ(bea.subir("b", "1", 1), "");
    EXPECT_EQ(servicio.cliente("CARLA", "secreta3").subir("a", "123", 1), "")
        << "nothing is known of AC02's room";

    EXPECT_EQ(bea.con("EliminarArchivo", bea.lugar("grande")), respuesta::noExiste) << "it is Ana's";
    EXPECT_EQ(ana.con("EliminarArchivo", ana.lugar("grande")), "");
    EXPECT_EQ(ana.con("EliminarArchivo", ana.lugar("grande")), respuesta::noExiste);
    EXPECT_EQ(ana.con("CalcularEspacioTotal"), "0");
    EXPECT_EQ(ana.con("listadocarpetas"), "");
    EXPECT_TRUE(std::filesystem::is_empty(servicio.carpeta.ruta("raiz/datos/U0000001")));
    EXPECT_EQ(bea.subir("b", "12", 1), "");
}

TEST(ServicioArchivos, AFullDiskRefusesThePieceAndKeepsWhatStood) {
    const auto real = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos archivos(*real);
    ServicioEnMarcha servicio(archivos);
    ClientePrueba ana = servicio.cliente();
    const std::string contenido = relleno(2 * paso);
    ASSERT_EQ(ana.subir("a", contenido.substr(0, paso + 1), 1), "");

    archivos.cortarEscritura(1, 1000, platform::error_archivo::discoLleno);
    EXPECT_EQ(ana.subir("a", contenido.substr(paso), paso + 1), respuesta::falloAlGuardar);
    EXPECT_EQ(ana.con("FileSize", ana.lugar("a")), std::to_string(paso + 1))
        << "what was half-written is cut off";
    EXPECT_EQ(ana.con("CalcularEspacioTotal"), std::to_string(paso + 1));
    EXPECT_EQ(ana.subir("a", contenido.substr(paso), paso + 1), "");
    EXPECT_TRUE(ana.bajarEntero("a") == contenido);

    archivos.fallar({.operacion = pruebas::Operacion::abrir, .vez = 1, .mascara = "1"});
    EXPECT_EQ(ana.subir("a", "nuevo", 1), respuesta::falloAlGuardar);
    EXPECT_TRUE(ana.bajarEntero("a") == contenido) << "what could not be opened was not started anew";
    archivos.fallar({.operacion = pruebas::Operacion::leer, .vez = 1, .mascara = "1"});
    EXPECT_EQ(ana.bajar("a", 1, 10), "");
    EXPECT_EQ(ana.resultado, respuesta::falloAlLeer);
    archivos.fallar({.operacion = pruebas::Operacion::borrar, .vez = 1, .mascara = "1"});
    EXPECT_EQ(ana.con("EliminarArchivo", ana.lugar("a")), respuesta::falloAlGuardar);
    EXPECT_TRUE(ana.bajarEntero("a") == contenido);
}

}  // namespace
}  // namespace tarvoline
