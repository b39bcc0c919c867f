// The compiler of the language files, and the files that ship.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "apoyo/carpeta_prueba.h"
#include "compilador.h"
#include "core/texto.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {
namespace {

using idioma::Tabla;

std::string motivo(const std::function<void()>& paso) {
    try {
        paso();
    } catch (const idioma::ErrorFuente& error) {
        return error.what();
    }
    return "accepted";
}

// A table that passes all checks.
Tabla tablaBuena() {
    return {{179, "ERROR: copia"}, {586, "Usuario de Veldorix"}, {1250, "ERROR: "},
            {2102, "a"},           {2235, std::string(17, ',')}, {2238, "b"},
            {2247, "a,b,c"}};
}

TEST(CompiladorIdioma, LeeLaFuente) {
    const auto tabla =
        idioma::leerFuente("f", "# comment\n\n1\t&Aceptar\r\n2259\t\" con blancos \"\n30\ta\"b\n");
    EXPECT_EQ(tabla, (Tabla{{1, "&Aceptar"}, {30, "a\"b"}, {2259, " con blancos "}}));
}

TEST(CompiladorIdioma, RechazaLineasMalasDiciendoCual) {
    struct {
        const char* linea;
        const char* motivo;
    } const casos[] = {
        {"1 uno", "number, tab, text"},  {"x\tuno", "number, tab, text"},  {"1x\tuno", "number, tab, text"},
        {"-\tuno", "number, tab, text"}, {"0\tcero", "outside 1..2259"},   {"2260\talto", "outside 1..2259"},
        {"5\totra vez", "given twice"},  {"6\t", "double quotes"},         {"6\t uno", "double quotes"},
        {"6\tuno ", "double quotes"},    {"6\tΩ", "Windows-1252"},         {"6\tn\xcc\x83", "Windows-1252"},
        {"6\tuno\tdos", "Windows-1252"}, {"6\tbyte \xf1", "Windows-1252"}, {"6\t\xc2\x81", "Windows-1252"}};
    for (const auto& caso : casos) {
        const auto fuente = std::string("5\tcinco\n") + caso.linea + "\n7\tsiete\n";
        const auto dicho = motivo([&] { idioma::leerFuente("f.textos", fuente); });
        EXPECT_EQ(dicho.substr(0, 11), "f.textos:2:") << dicho;
        EXPECT_NE(dicho.find(caso.motivo), std::string::npos) << caso.linea << ": " << dicho;
    }
}

TEST(CompiladorIdioma, ExigeLoQueElCodigoNecesita) {
    EXPECT_EQ(motivo([] { idioma::comprobarTextos("f", tablaBuena()); }), "accepted");
    const std::pair<int, std::string> malos[] = {{179, "Error: copia"},
                                                 {1250, " ERROR: "},
                                                 {586, "Usuario"},
                                                 {2235, std::string(16, ',')},
                                                 {2235, std::string(18, ',')},
                                                 {2247, "a,b"},
                                                 {2102, "borrar, carpeta"},
                                                 {2238, "a,b"}};
    for (const auto& [numero, texto] : malos) {
        auto tabla = tablaBuena();
        tabla[numero] = texto;
        const auto dicho = motivo([&tabla = tabla] { idioma::comprobarTextos("f", tabla); });
        EXPECT_NE(dicho.find("number " + std::to_string(numero)), std::string::npos) << dicho;
        tabla.erase(numero);
        EXPECT_NE(motivo([&tabla = tabla] { idioma::comprobarTextos("f", tabla); }), "accepted") << numero;
    }
}

TEST(CompiladorIdioma, LosDosIdiomasTienenLosMismosNumeros) {
    const Tabla uno{{1, "a"}, {2, "b"}};
    const Tabla otro{{1, "c"}};
    EXPECT_EQ(motivo([&] { idioma::comprobarPareja("u", uno, "o", uno); }), "accepted");
    EXPECT_EQ(motivo([&] { idioma::comprobarPareja("u", uno, "o", otro); }), "o: number 2 is missing");
    EXPECT_EQ(motivo([&] { idioma::comprobarPareja("o", otro, "u", uno); }), "o: number 2 is missing");
}

TEST(CompiladorIdioma, LosDocumentosLlevanFinDeLineaDeDosBytes) {
    EXPECT_EQ(idioma::componerDocumento("d", "año\n\ndos\r\nfin"), "a\xf1o\r\n\r\ndos\r\nfin\r\n");
    EXPECT_EQ(motivo([] { idioma::componerDocumento("d", "uno\nΩ\n"); }).substr(0, 4), "d:2:");
}

// The shipped files, read byte for byte as their format says.
std::vector<std::string> lineasEnviadas(const std::string& nombre) {
    const auto archivos = platform::crearSistemaArchivos();
    const auto contenido = platform::leerTodo(*archivos, std::string(TARVOLINE_PROGRAMA) + "/" + nombre);
    EXPECT_EQ(std::count(contenido.begin(), contenido.end(), '\n'),
              std::count(contenido.begin(), contenido.end(), '\r'));
    auto lineas = core::Partir(contenido.substr(contenido.find('@')), "\r\n");
    for (const auto& linea : lineas) {
        EXPECT_EQ(linea.find_first_of("\r\n"), std::string::npos) << "a line end that is not the pair";
    }
    return lineas;
}

// Every number that the program shows.
const std::set<int> numerosUsados = {
    1,    3,    15,   17,   29,   165,  179,  213,  214,  243,  269,  310,  371,  515,  586,  587,  588,
    616,  617,  827,  830,  928,  950,  964,  971,  977,  978,  979,  980,  981,  982,  1032, 1064, 1083,
    1112, 1227, 1243, 1250, 1347, 1353, 1354, 1356, 1357, 1365, 1366, 1367, 1569, 1570, 1671, 1742, 1743,
    1923, 1924, 1925, 1927, 1928, 1929, 1931, 1932, 1933, 1934, 1935, 2080, 2102, 2129, 2146, 2151, 2153,
    2215, 2218, 2219, 2220, 2221, 2224, 2225, 2226, 2227, 2229, 2230, 2233, 2234, 2235, 2237, 2238, 2239,
    2240, 2241, 2244, 2246, 2247, 2248, 2249, 2250, 2251, 2253, 2254, 2255, 2256, 2257, 2258, 2259};

TEST(ArchivosDeIdioma, CadaNumeroUsadoTieneTextoEnLosDosIdiomas) {
    for (const auto* nombre : {"español.qzi", "english.qzi"}) {
        const auto lineas = lineasEnviadas(nombre);
        ASSERT_EQ(lineas.size(), 2260U) << nombre;
        EXPECT_EQ(lineas[0].front(), '@');
        for (int numero = 1; numero <= 2259; ++numero) {
            EXPECT_EQ(lineas[static_cast<std::size_t>(numero)].empty(), !numerosUsados.contains(numero))
                << nombre << ", number " << numero;
        }
    }
}

TEST(ArchivosDeIdioma, LosTextosEstanEnSuLineaYEnWindows1252) {
    const auto espanol = lineasEnviadas("español.qzi");
    EXPECT_EQ(espanol[1250], "ERROR: ");
    EXPECT_EQ(espanol[964], "Tama\xf1o");
    EXPECT_EQ(espanol[980],
              "\xbf"
              "Desea continuar?");
    EXPECT_EQ(std::count(espanol[2235].begin(), espanol[2235].end(), ','), 17);
    const auto english = lineasEnviadas("english.qzi");
    EXPECT_EQ(english[1250], "ERROR: ");
    EXPECT_EQ(english[964], "Size");
    EXPECT_EQ(english[2259], "Session user:");
}

TEST(ArchivosDeIdioma, LosTerminosEstanEnSuIdioma) {
    const auto archivos = platform::crearSistemaArchivos();
    const std::string programa = TARVOLINE_PROGRAMA;
    const auto espanol = platform::leerTodo(*archivos, programa + "/Terminos Y Condiciones.txt");
    const auto english = platform::leerTodo(*archivos, programa + "/Terms and Conditions.txt");
    EXPECT_EQ(core::aUtf8(espanol).substr(0, 13), "TÉRMINOS Y C");
    EXPECT_EQ(english.substr(0, 20), "TERMS AND CONDITIONS");
    EXPECT_TRUE(espanol.ends_with("\r\n") && english.ends_with("\r\n"));
}

}  // namespace
}  // namespace tarvoline::pruebas
