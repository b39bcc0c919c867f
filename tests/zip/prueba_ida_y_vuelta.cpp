// What goes into an archive comes out of it: through this reader and through others.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>

#include "apoyo/archivos_memoria.h"
#include "apoyo/carpeta_prueba.h"
#include "datos_prueba.h"
#include "zip/deflactor.h"
#include "zip/zip.h"

#include <zlib.h>

namespace tarvoline::zip {
namespace {

using pruebas::Arbol;

std::vector<std::string> raices(const Arbol& arbol) {
    std::set<std::string> nombres;
    for (const auto& [ruta, contenido] : arbol)
        nombres.insert(ruta.substr(0, ruta.find('/')));
    return {nombres.begin(), nombres.end()};
}

std::set<std::string> nombres(Zip& zip) {
    std::vector<EntradaListada> lista;
    EXPECT_EQ(zip.listar(lista), codigo::bien);
    std::set<std::string> todos;
    for (const auto& entrada : lista)
        todos.insert(entrada.nombre);
    return todos;
}

struct Variante {
    int nivel;
    std::uint64_t presupuesto;
    unsigned hilos;
};

TEST(IdaYVuelta, UnArbolAlAzarVuelveIgual) {
    const unsigned semilla = std::random_device{}();
    std::cout << "seed " << semilla << '\n';
    std::mt19937 azar(semilla);
    for (int ronda = 0; ronda < 16; ++ronda) {
        constexpr Variante variantes[] = {
            {9, std::uint64_t{256} << 20, 0}, {9, 65536, 3}, {1, 65536, 1}, {0, 65536, 2}};
        const Variante& variante = variantes[ronda % 4];
        SCOPED_TRACE(variante.nivel);
        const Arbol arbol = pruebas::arbolAlAzar(azar);
        pruebas::ArchivosMemoria archivos;
        std::uint64_t total = 0;
        for (const auto& [ruta, contenido] : arbol) {
            archivos.sembrar("base/" + ruta, contenido);
            total += contenido.size();
        }
        archivos.sembrarDirectorio("base/hondo/nada");

        Zip zip(archivos);
        zip.destino = "copia.zip";
        zip.recursivo = true;
        zip.nivel = variante.nivel;
        zip.presupuesto = variante.presupuesto;
        zip.hilos = variante.hilos;
        std::uint64_t visto = 0;
        zip.progreso = [&](std::uint64_t hecho, std::uint64_t de) {
            EXPECT_GE(hecho, visto);
            EXPECT_EQ(de, total);
            visto = hecho;
            return true;
        };
        ASSERT_EQ(zip.comprimir("base", raices(arbol)), codigo::bien);
        EXPECT_EQ(visto, total);
        zip.progreso = nullptr;
        EXPECT_TRUE(nombres(zip).contains("hondo/nada/"));
        ASSERT_EQ(zip.descomprimir("fuera"), codigo::bien);
        for (const auto& [ruta, contenido] : arbol) {
            ASSERT_EQ(platform::leerTodo(archivos, "fuera/" + ruta), contenido) << ruta;
        }
        EXPECT_TRUE(archivos.estado("fuera/hondo/nada")->esDirectorio);
    }
}

// The seam between pieces has one form for each number of bits that the last byte leaves over.
TEST(Deflactor, LasPiezasUnidasSonUnSoloFlujo) {
    const unsigned semilla = std::random_device{}();
    std::cout << "seed " << semilla << '\n';
    std::mt19937 azar(semilla);
    Deflactor deflactor(9);
    for (int ronda = 0; ronda < 60; ++ronda) {
        std::string todo;
        std::string flujo;
        for (int pieza = 0; pieza < 6; ++pieza) {
            const std::size_t longitud = 1 + azar() % 3000;
            std::string datos =
                azar() % 2 == 0 ? pruebas::ruido(azar, longitud) : pruebas::registros(azar, longitud);
            const std::string antes = datos;
            const auto bytes = deflactor.comprimir(std::as_writable_bytes(std::span(datos)), pieza == 5);
            ASSERT_EQ(datos, antes);
            flujo.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
            todo += datos;
        }
        std::string vuelta(todo.size() + 1, '\0');
        z_stream estado{};
        ASSERT_EQ(inflateInit2(&estado, -MAX_WBITS), Z_OK);
        estado.next_in = reinterpret_cast<Bytef*>(flujo.data());
        estado.avail_in = static_cast<uInt>(flujo.size());
        estado.next_out = reinterpret_cast<Bytef*>(vuelta.data());
        estado.avail_out = static_cast<uInt>(vuelta.size());
        EXPECT_EQ(inflate(&estado, Z_FINISH), Z_STREAM_END);
        EXPECT_EQ(estado.avail_in, 0U);
        vuelta.resize(estado.total_out);
        inflateEnd(&estado);
        ASSERT_EQ(vuelta, todo);
    }
}

TEST(Comprimir, OtrosProgramasLoLeen) {
    const pruebas::CarpetaPrueba carpeta;
    std::mt19937 azar(7);
    for (const auto& [ruta, contenido] : pruebas::arbolAlAzar(azar))
        carpeta.escribir("base/" + ruta, contenido);
    std::filesystem::create_directories(carpeta.ruta("base/vacía"));
    const auto archivos = platform::crearSistemaArchivos();
    Zip zip(*archivos);
    zip.destino = carpeta.ruta("copia.zip");
    zip.recursivo = true;
    zip.presupuesto = 65536;
    ASSERT_EQ(zip.comprimir(carpeta.ruta(), {"base"}), codigo::bien);

    EXPECT_EQ(std::system(("unzip -tq '" + zip.destino + "'").c_str()), 0);
    const std::string guion =
        "import zipfile, os\nz = zipfile.ZipFile('copia.zip')\n"
        "assert z.testzip() is None\nfor i in z.infolist():\n"
        "  assert os.path.exists(i.filename), i.filename\n"
        "  assert i.is_dir() or z.read(i) == open(i.filename, 'rb').read(), i.filename\n"
        "  assert i.date_time[0] >= 2024, i.date_time\n"
        "  assert i.external_attr >> 16 in (0o100644, 0o40755), i.external_attr";
    EXPECT_EQ(std::system(("cd '" + carpeta.ruta() + "' && python3 -c \"" + guion + "\"").c_str()), 0);
}

class Pasadas : public testing::Test {
  protected:
    Pasadas() : zip(archivos) {
        zip.destino = "copia.zip";
        archivos.sembrar("base/A", "uno");
        archivos.sembrar("base/B", "dos");
    }
    pruebas::ArchivosMemoria archivos;
    Zip zip;
};

TEST_F(Pasadas, SumanAlArchivoYSustituyenLoDelMismoNombre) {
    ASSERT_EQ(zip.comprimir("base", {"A", "B"}), codigo::bien);
    archivos.sembrar("viva/B", "nuevo");
    archivos.sembrar("viva/C/foto.jpg", "imagen");
    zip.recursivo = true;
    ASSERT_EQ(zip.comprimir("viva", {"B", "C", "no está"}), codigo::bien);
    EXPECT_EQ(nombres(zip), (std::set<std::string>{"A", "B", "C/foto.jpg"}));
    ASSERT_EQ(zip.descomprimir("fuera"), codigo::bien);
    EXPECT_EQ(platform::leerTodo(archivos, "fuera/A"), "uno");
    EXPECT_EQ(platform::leerTodo(archivos, "fuera/B"), "nuevo");
}

TEST_F(Pasadas, MascarasAbsolutosYElPropioArchivo) {
    archivos.sembrar("base/carpeta/x", "x");
    EXPECT_EQ(zip.comprimir("base", {"no", "?????99.*"}), codigo::nadaQueHacer);
    EXPECT_EQ(zip.comprimir("base", {"carpeta"}), codigo::nadaQueHacer) << "folders need `recursivo`";
    EXPECT_FALSE(archivos.estado("copia.zip"));
    archivos.sembrar("base/PLANC07.QZD", "t");
    archivos.sembrar("base/PLANC08.QZD", "t");
    ASSERT_EQ(zip.comprimir("base", {"?????07.*"}), codigo::bien);
    EXPECT_EQ(nombres(zip), std::set<std::string>{"PLANC07.QZD"});

    zip.destino = "/base/dentro.zip";
    zip.recursivo = true;
    ASSERT_EQ(zip.comprimir("/", {"/base/A"}), codigo::bien);
    ASSERT_EQ(zip.comprimir("/", {"base"}), codigo::bien);
    EXPECT_EQ(nombres(zip), (std::set<std::string>{"base/A", "base/B", "base/carpeta/x", "base/PLANC07.QZD",
                                                   "base/PLANC08.QZD"}));
}

TEST_F(Pasadas, LoQueNoEncogeVaTalCual) {
    std::mt19937 azar(3);
    archivos.sembrar("base/ruido", pruebas::ruido(azar, 200'000));
    zip.presupuesto = 65536;  // several pieces, all incompressible
    ASSERT_EQ(zip.comprimir("base", {"ruido", "A"}), codigo::bien);
    std::vector<EntradaListada> lista;
    ASSERT_EQ(zip.listar(lista), codigo::bien);
    for (const auto& entrada : lista)
        EXPECT_EQ(entrada.comprimida, entrada.longitud) << entrada.nombre;
}

}  // namespace
}  // namespace tarvoline::zip
