// Definition files: numbers of two characters, fields, keys, files that are damaged, and the cache.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "apoyo/mundo_datos.h"
#include "data/definicion_tabla.h"

namespace tarvoline::pruebas {
namespace {

using namespace data;
using namespace std::string_literals;

std::string entrada(std::string texto, std::string_view cola = "  ") {
    texto.resize(31, ' ');
    return texto + std::string(cola);
}

std::string cabecera(std::string_view cuenta) {
    return entrada(std::string(cuenta) + "      LIBRO DE PRUEBA");
}

std::string campo(std::string_view ancho, std::string_view tipo, std::string_view nombre,
                  std::string_view posicion) {
    return entrada("0000" + std::string(ancho) + std::string(tipo) + std::string(nombre), posicion);
}

// Three fields: a text of 10 at position 5, a number at 12, a date at 1.
const std::string tresCampos =
    campo("10", "00", "CUENTA", "05") + campo("12", "03", "IMPORTE", "12") + campo("06", "05", "FECHA", "01");

std::string motivo(std::string_view bytes) {
    try {
        interpretarDefinicion(bytes);
    } catch (const ErrorDefinicion& error) {
        return error.what();
    }
    return "accepted";
}

TEST(DosCaracteres, SeLeen) {
    const std::pair<std::string, int> casos[] = {
        {"07", 7},  {" 7", 7},      {"7 ", 7},    {"  ", 0},   {"", 0},     {"7", 7},           {"00", 0},
        {"99", 99}, {":0", 100},    {"<0", 120},  {"I0", 250}, {"I1", 251}, {"I:", 260},        {"b0", 500},
        {"1:", 20}, {"\0\x33"s, 3}, {"5\x1f", 5}, {"-5", 5},   {"~9", 789}, {"\xff\xff", 2277}, {"123", 12}};
    for (const auto& [texto, numero] : casos) {
        EXPECT_EQ(NumeroDeDosCaracteres(texto), numero) << testing::PrintToString(texto);
    }
}

TEST(DosCaracteres, SeEscribenComoSeLeen) {
    for (int numero = 0; numero <= 789; ++numero) {
        const auto texto = DosCaracteres(numero);
        EXPECT_EQ(texto.size(), 2U);
        EXPECT_EQ(NumeroDeDosCaracteres(texto), numero) << texto;
    }
    EXPECT_EQ(DosCaracteres(7), "07");
    EXPECT_EQ(DosCaracteres(120), "<0");
}

TEST(Definicion, LeeCampos) {
    const auto definicion = interpretarDefinicion(cabecera("3 ") + tresCampos);
    EXPECT_EQ(definicion.titulo, "LIBRO DE PRUEBA");
    EXPECT_EQ(definicion.gNumeroCampos, 3);
    EXPECT_EQ(definicion.gLongitudRegistro, 24);
    EXPECT_EQ(definicion.numeroClaves, 0);
    EXPECT_EQ(definicion.longitudMayor(), 0);
    const auto& importe = definicion.campo(2);
    EXPECT_EQ(importe.nombre, "IMPORTE");
    EXPECT_EQ(importe.ancho, 12);
    EXPECT_EQ(importe.bytes, 8);  // of its type, not the declared width
    EXPECT_EQ(importe.desplazamiento, 10);
    EXPECT_EQ(definicion.campo(3).desplazamiento, 18);
    EXPECT_EQ(definicion.campoDePosicion(12), 2);
    EXPECT_EQ(definicion.gCampoDePosicion[1], 3);
    EXPECT_EQ(definicion.campoDePosicion(2), 0);
    EXPECT_EQ(definicion.campoDePosicion(0), 0);
    EXPECT_EQ(definicion.campoDePosicion(-1), 0);
    EXPECT_EQ(definicion.campoDePosicion(5000), 0);
    EXPECT_EQ(definicion.campoDeNombre("importe"), 2);
    EXPECT_EQ(definicion.campoDeNombre("IMPORT"), 0);
}

TEST(Definicion, LosTiposDanLosBytes) {
    const std::pair<int, int> bytesPorTipo[] = {{0, 17}, {1, 2},  {2, 4},   {3, 8},  {4, 4},
                                                {5, 6},  {6, 4},  {7, 8},   {8, 17}, {79, 17},
                                                {80, 8}, {85, 8}, {86, 17}, {99, 17}};
    for (const auto& [tipo, bytes] : bytesPorTipo) {
        const auto definicion =
            interpretarDefinicion(cabecera("01") + campo("17", DosCaracteres(tipo), "X", "01"));
        EXPECT_EQ(definicion.gLongitudRegistro, bytes) << tipo;
    }
}

TEST(Definicion, LaCuentaConBlancos) {
    for (const auto* cuenta : {"1 ", " 1", "01"}) {
        EXPECT_EQ(interpretarDefinicion(cabecera(cuenta) + campo("10", "00", "A", "01")).gNumeroCampos, 1)
            << cuenta;
    }
}

TEST(Definicion, LeeClaves) {
    // Segments of several keys mixed, one named by position, an entry that is none, key 10.
    const auto definicion = interpretarDefinicion(
        cabecera("03") + tresCampos + entrada("I1030106") + entrada("I2010310") + entrada("X1010101") +
        entrada("I1000105", "05") + entrada("I:  1 2 ", "01") + std::string(33, '\0') + entrada("I3010101"));
    using Segmentos = std::vector<SegmentoClave>;
    EXPECT_EQ(definicion.claves[1], (Segmentos{{3, 1, 6}, {1, 1, 5}}));
    EXPECT_EQ(definicion.claves[2], (Segmentos{{1, 3, 10}}));
    EXPECT_TRUE(definicion.claves[3].empty());  // behind the end of the list
    EXPECT_EQ(definicion.claves[10], (Segmentos{{3, 1, 2}}));
    EXPECT_EQ(definicion.numeroClaves, 10);
    EXPECT_EQ(definicion.longitudClave(1), 11);
    EXPECT_EQ(definicion.longitudMayor(), 11);
}

TEST(Definicion, ElUltimoCampoPuedeSerTambienClave) {
    auto bytes = cabecera("01") + entrada("I1010800TITULO", "07");  // width 8, type 0; key 1, field 1
    EXPECT_EQ(motivo(bytes), "un segmento vacío en la clave 1 de la definición");
    bytes.replace(33 + 6, 2, "09");
    const auto definicion = interpretarDefinicion(bytes);
    EXPECT_EQ(definicion.campo(1).bytes, 8);
    EXPECT_EQ(definicion.claves[1], (std::vector<SegmentoClave>{{1, 8, 9}}));
}

TEST(Definicion, ClavesMasAllaDe4000Bytes) {
    auto bytes = cabecera("03") + tresCampos;
    while (bytes.size() <= 8000) {
        bytes += entrada("-");
    }
    bytes += entrada("I4010105");
    bytes += "I5010";  // no whole entry
    const auto definicion = interpretarDefinicion(bytes);
    EXPECT_EQ(definicion.numeroClaves, 4);
    EXPECT_EQ(definicion.longitudClave(4), 5);
}

TEST(Definicion, NoventaYOchoCampos) {
    std::string campos;
    for (int i = 1; i <= 99; ++i) {
        campos += campo("b0", "00", "CAMPO " + std::to_string(i), DosCaracteres(i));
    }
    const auto definicion = interpretarDefinicion(cabecera("98") + campos);
    EXPECT_EQ(definicion.gLongitudRegistro, 98 * 500);
    EXPECT_EQ(definicion.campoDePosicion(98), 98);
    EXPECT_EQ(motivo(cabecera("99") + campos), "la definición tiene 99 campos; caben 98");
}

TEST(Definicion, RechazaLoDanado) {
    const auto conClave = [](std::string_view clave) {
        return cabecera("03") + tresCampos + entrada(std::string(clave));
    };
    const std::pair<std::string, const char*> casos[] = {
        {"", "ningún campo"},
        {"0", "ningún campo"},
        {cabecera("  ") + tresCampos, "ningún campo"},
        {cabecera("\xff\xff") + tresCampos, "2277 campos"},
        {cabecera("04") + tresCampos, "antes de su último campo"},
        {(cabecera("03") + tresCampos).substr(0, 131), "antes de su último campo"},
        {"03", "antes de su último campo"},
        {cabecera("01") + campo("00", "00", "NADA", "01"), "registro de la definición está vacío"},
        {conClave("I0010105"), "nombra la clave 0"},
        {conClave("I;010105"), "nombra la clave 11"},
        {conClave("I 010105"), "nombra la clave -225"},
        {conClave("I1040105"), "sin campo"},
        {conClave("I1\xff\xff"
                  "0105"),
         "sin campo"},
        {conClave("I1000105"), "sin campo"},
        {conClave("I1010005"), "segmento vacío"},
        {conClave("I1010100"), "segmento vacío"},
        {conClave("I10101J0"), "una clave de 260 caracteres"},
    };
    for (const auto& [bytes, dicho] : casos) {
        EXPECT_NE(motivo(bytes).find(dicho), std::string::npos) << dicho << " / " << motivo(bytes);
    }
    std::string seis = cabecera("03") + tresCampos;
    for (int i = 0; i < maxSegmentos; ++i) {
        seis += entrada("I2010101");
    }
    EXPECT_EQ(motivo(seis), "accepted");
    EXPECT_NE(motivo(seis + entrada("I2010101")).find("más de 5 segmentos en la clave 2"), std::string::npos);
}

// Whatever the bytes: refused, or of a shape that the tables can work with.
TEST(Definicion, BytesHostiles) {
    const auto semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const std::string buena = cabecera("03") + tresCampos + entrada("I1030106") + entrada("I2000104", "05");
    int leidas = 0;
    for (int vuelta = 0; vuelta < 3000; ++vuelta) {
        auto bytes = buena;
        for (auto cambios = 1 + azar() % 4; cambios > 0; --cambios) {
            bytes[azar() % bytes.size()] = static_cast<char>(azar());
        }
        if (azar() % 4 == 0) bytes.resize(azar() % bytes.size());
        try {
            const auto definicion = interpretarDefinicion(bytes);
            ++leidas;
            ASSERT_EQ(definicion.campos.size(), static_cast<std::size_t>(definicion.gNumeroCampos) + 1);
            ASSERT_LE(definicion.numeroClaves, maxClaves);
            for (const auto& segmentos : definicion.claves) {
                for (const auto& segmento : segmentos) {
                    ASSERT_NO_THROW(static_cast<void>(definicion.campo(segmento.campo)));
                    ASSERT_GT(segmento.campo, 0);
                }
            }
        } catch (const ErrorDefinicion&) {
            continue;
        }
    }
    EXPECT_GT(leidas, 100);
    EXPECT_LT(leidas, 3000);
}

TEST(Definicion, SeComponeComoSeLee) {
    const auto bytes = cabecera("03") + tresCampos + entrada("I1030106") + entrada("I:010310");
    EXPECT_EQ(componerDefinicion(interpretarDefinicion(bytes)), bytes);
}

TEST(Definicion, TituloYNombresDelArchivo) {
    CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    auto bytes = entrada("03      A\xd1O FISCAL") + tresCampos;
    const auto ruta = carpeta.escribir("EXTRA.QZA", bytes);
    EXPECT_EQ(TituloArchivo(*archivos, ruta), "Año Fiscal");
    std::vector<std::string> nombres{"what", "was", "there", "before", "and", "more"};
    LeerNombresCampos(*archivos, ruta, nombres);
    const auto a23 = [](std::string nombre) {
        nombre.resize(23, ' ');
        return nombre;
    };
    EXPECT_EQ(nombres, (std::vector<std::string>{"", a23("CUENTA"), a23("IMPORTE"), a23("FECHA")}));
    // A file that ends early gives what it has.
    const auto corto = carpeta.escribir("CORTO.QZA", bytes.substr(0, 80));
    EXPECT_EQ(TituloArchivo(*archivos, corto), "Año Fiscal");
    LeerNombresCampos(*archivos, corto, nombres);
    EXPECT_EQ(nombres, (std::vector<std::string>{"", a23("CUENTA")}));
    EXPECT_EQ(TituloArchivo(*archivos, carpeta.escribir("NADA.QZA", "03")), "");
    EXPECT_THROW(TituloArchivo(*archivos, carpeta.ruta("FALTA.QZA")), platform::ErrorArchivo);
}

TEST(CacheDefiniciones, LeeDeNuevoLoQueCambia) {
    CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    CacheDefiniciones cache(*archivos);
    const auto ruta = carpeta.escribir("EXTRA.QZA", cabecera("03") + tresCampos);
    std::filesystem::last_write_time(ruta,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    const auto primera = cache.leer(ruta);
    EXPECT_EQ(cache.leer(ruta), primera);  // the same object: not parsed again
    carpeta.escribir("EXTRA.QZA", cabecera("03") + tresCampos + entrada("I1030106"));
    const auto segunda = cache.leer(ruta);
    EXPECT_EQ(segunda->numeroClaves, 1);
    EXPECT_EQ(primera->numeroClaves, 0);  // who holds the old one keeps it
    // Written twice within the grain of its date.
    carpeta.escribir("EXTRA.QZA", cabecera("03") + tresCampos + entrada("I1030105"));
    EXPECT_EQ(cache.leer(ruta)->longitudClave(1), segunda->longitudClave(1) - 1);
    carpeta.escribir("EXTRA.QZA", cabecera("  "));
    EXPECT_THROW(cache.leer(ruta), ErrorDefinicion);
    EXPECT_THROW(cache.leer(ruta), ErrorDefinicion);  // a failure is not kept as an answer
    archivos->borrar(ruta);
    EXPECT_THROW(cache.leer(ruta), platform::ErrorArchivo);
    carpeta.escribir("EXTRA.QZA", cabecera("01") + tresCampos);
    EXPECT_EQ(cache.leer(ruta)->gNumeroCampos, 1);
}

}  // namespace
}  // namespace tarvoline::pruebas
