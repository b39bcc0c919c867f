// Archives that lie, climb or are damaged, written here byte by byte.
#include <gtest/gtest.h>
#include <zlib.h>

#include <span>

#include "apoyo/archivos_memoria.h"
#include "zip/deflactor.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

struct EntradaCruda {
    std::string nombre;
    std::string datos;  // as they lie in the archive
    unsigned banderas = 0;
    unsigned metodo = 0;
    std::uint32_t longitud = 0xFFFFFFFF;  // as declared; otherwise that of the data
    std::uint32_t atributos = 0;
    bool crcMalo = false;
};

void numero(std::string& bytes, std::uint64_t valor, int ancho) {
    for (int i = 0; i < ancho; ++i)
        bytes += static_cast<char>(valor >> (8 * i));
}

void comunes(std::string& bytes, const EntradaCruda& entrada) {
    const auto* datos = reinterpret_cast<const Bytef*>(entrada.datos.data());
    const auto crc = crc32(0, datos, static_cast<uInt>(entrada.datos.size()));
    numero(bytes, entrada.banderas, 2);
    numero(bytes, entrada.metodo, 2);
    numero(bytes, 0x58210000, 4);
    numero(bytes, crc ^ (entrada.crcMalo ? 1U : 0U), 4);
    numero(bytes, entrada.datos.size(), 4);
    numero(bytes, entrada.longitud == 0xFFFFFFFF ? entrada.datos.size() : entrada.longitud, 4);
    numero(bytes, entrada.nombre.size(), 2);
    numero(bytes, 0, 2);
}

std::string armar(const std::vector<EntradaCruda>& entradas) {
    std::string bytes;
    std::string directorio;
    for (const auto& entrada : entradas) {
        const auto posicion = bytes.size();
        bytes += std::string("PK\x03\x04\x14\0", 6);
        comunes(bytes, entrada);
        bytes += entrada.nombre + entrada.datos;
        directorio += std::string("PK\x01\x02\x14\x03\x14\0", 8);
        comunes(directorio, entrada);
        numero(directorio, 0, 6);
        numero(directorio, entrada.atributos, 4);
        numero(directorio, posicion, 4);
        directorio += entrada.nombre;
    }
    const auto inicio = bytes.size();
    bytes += directorio + std::string("PK\x05\x06\0\0\0\0", 8);
    numero(bytes, entradas.size(), 2);
    numero(bytes, entradas.size(), 2);
    numero(bytes, directorio.size(), 4);
    numero(bytes, inicio, 4);
    numero(bytes, 0, 2);
    return bytes;
}

std::string deflactar(std::string datos) {
    Deflactor deflactor(9);
    const auto bytes = deflactor.comprimir(std::as_writable_bytes(std::span(datos)), true);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class Hostiles : public testing::Test {
  protected:
    Hostiles() : zip(archivos) { zip.destino = "malo.zip"; }
    int sacar(const std::string& bytes) {
        archivos.sembrar("malo.zip", bytes);
        return zip.descomprimir("fuera/dentro");
    }
    int listar(const std::string& bytes) {
        archivos.sembrar("malo.zip", bytes);
        return zip.listar(lista);
    }
    pruebas::ArchivosMemoria archivos;
    Zip zip;
    std::vector<EntradaListada> lista;
};

TEST_F(Hostiles, LoQueMienteSeRechazaSinEscribirNada) {
    std::vector<std::vector<EntradaCruda>> casos{
        {{.nombre = "a", .datos = "1"}, {.nombre = "a/b", .datos = "2"}},
        {{.nombre = "a\\b", .datos = "1"}, {.nombre = "a/b", .datos = "2"}},
        {{.nombre = "suma", .datos = "datos", .crcMalo = true}},
        {{.nombre = "roto", .datos = "\x07\xFF", .metodo = 8, .longitud = 9}}};
    for (const char* malo :
         {"../x", "a/../../x", "a\\..\\..\\x", "/x", "\\x", "C:\\x", "C:x", "..", "bueno", "./bueno"}) {
        casos.push_back({{.nombre = "bueno", .datos = "1"}, {.nombre = malo, .datos = "2"}});
    }
    casos.push_back({{.nombre = std::string("a\0b", 3), .datos = "2"}});
    const std::string bomba = deflactar(std::string(5'000'000, '\0'));
    for (const std::uint32_t declarada : {0U, 100U, 4'999'999U, 5'000'001U}) {
        casos.push_back({{.nombre = "bomba", .datos = bomba, .metodo = 8, .longitud = declarada}});
    }
    for (const auto& caso : casos) {
        EXPECT_EQ(sacar(armar(caso)), codigo::estructura) << caso.back().nombre << caso.back().longitud;
        for (const auto& ruta : archivos.todas()) {
            EXPECT_TRUE(ruta.ends_with('/') || ruta.ends_with("malo.zip")) << ruta;
        }
    }
}

TEST_F(Hostiles, LoCifradoOAjenoSeSaltaYElRestoSale) {
    EXPECT_EQ(sacar(armar({{.nombre = "cifrado", .datos = std::string(20, 'c'), .banderas = 1},
                           {.nombre = "ajeno", .datos = "x", .metodo = 77},
                           {.nombre = "enlace", .datos = "/etc", .atributos = 0xA1FFU << 16}})),
              codigo::entradasOmitidas);
    EXPECT_EQ(archivos.listar("fuera/dentro").size(), 1U);
    EXPECT_EQ(platform::leerTodo(archivos, "fuera/dentro/enlace"), "/etc") << "a link is a plain file";
    ASSERT_EQ(zip.listar(lista), codigo::bien);
    EXPECT_TRUE(lista[0].cifrada);
    EXPECT_FALSE(lista[2].cifrada);
}

TEST_F(Hostiles, NombresYOrdenDelListado) {
    EXPECT_EQ(listar(armar({})), codigo::bien);
    EXPECT_TRUE(lista.empty());
    EXPECT_EQ(zip.descomprimir("fuera"), codigo::bien);
    ASSERT_EQ(listar(armar({{.nombre = "z\\A\xA4o.txt", .datos = "1"},
                            {.nombre = "a/Año.txt", .datos = "22", .banderas = 0x800},
                            {.nombre = "c/", .datos = ""}})),
              codigo::bien);
    ASSERT_EQ(lista.size(), 3U);
    EXPECT_EQ(lista[0].nombre, "z/Año.txt");
    EXPECT_EQ(lista[1].nombre, "a/Año.txt");
    EXPECT_EQ(lista[1].longitud, 2U);
    EXPECT_TRUE(lista[2].esDirectorio);
}

TEST_F(Hostiles, LoQueNoEsUnZip) {
    EXPECT_EQ(zip.listar(lista), codigo::noEsZip) << "missing";
    EXPECT_EQ(listar(std::string(70'000, '\xA5')), codigo::noEsZip);
    const std::string bueno = armar({{.nombre = "a", .datos = "1"}});
    for (std::size_t corte = 0; corte < bueno.size(); ++corte) {
        EXPECT_EQ(listar(bueno.substr(0, corte)), codigo::noEsZip) << corte;
        EXPECT_EQ(zip.descomprimir("fuera"), codigo::noEsZip);
    }
}

TEST_F(Hostiles, DirectorioCentralDanado) {
    const std::string bueno = armar({{.nombre = "a", .datos = "1"}, {.nombre = "b", .datos = "2"}});
    const auto directorio = bueno.find("PK\x01\x02");
    const auto fin = bueno.find("PK\x05\x06");
    const auto conByte = [&](std::size_t donde, char valor) {
        std::string malo = bueno;
        malo[donde] = valor;
        return malo;
    };
    EXPECT_EQ(listar(conByte(directorio, 'X')), codigo::estructura);
    EXPECT_EQ(listar(conByte(directorio + 28, '\x7F')), codigo::estructura) << "name length";
    EXPECT_EQ(listar(conByte(fin + 10, '\x30')), codigo::estructura) << "entry count";
    EXPECT_EQ(listar(conByte(fin + 17, '\x7F')), codigo::estructura) << "offset";
    EXPECT_EQ(listar(bueno.substr(3)), codigo::estructura) << "front cut off";
}

TEST_F(Hostiles, BytesDetrasDelFinal) {
    for (const std::string& cola : {std::string(1, '\0'), std::string(3000, 'x')}) {
        ASSERT_EQ(listar(armar({{.nombre = "a", .datos = "1"}}) + cola), codigo::bien);
        EXPECT_EQ(lista.size(), 1U);
        EXPECT_EQ(zip.descomprimir("fuera"), codigo::bien);
        archivos.sembrar("base/b", "2");
        EXPECT_EQ(zip.comprimir("base", {"b"}), codigo::bien);
        EXPECT_EQ(zip.listar(lista), codigo::bien);
        EXPECT_EQ(lista.size(), 2U);
    }
}

}  // namespace
}  // namespace tarvoline::zip
