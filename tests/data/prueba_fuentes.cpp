// Readable sources: what they give, and that a mistake is refused with its place.
#include <gtest/gtest.h>

#include "data/fuente_comunes.h"
#include "data/fuente_definicion.h"
#include "data/monedas.h"
#include "data/tipos_iva.h"

namespace tarvoline::pruebas {
namespace {

using namespace data;

const std::string otraFuente = "titulo OTRA\ncampo 4 texto 8 CODIGO\ncampo 2 doble VALOR\nclave 1 4(1,8)\n";

DefinicionTabla leida(const std::string& fuente) {
    return leerFuenteDefinicion("f.tabla", fuente, [](std::string_view archivo) -> std::string {
        if (archivo != "otra.tabla") throw std::runtime_error("no such file");
        return otraFuente;
    });
}

TEST(FuenteDefinicion, DaLaDefinicion) {
    const auto definicion = leida(
        "# comment\r\n\n titulo  AÑO FISCAL \r\ncampo 1 fecha DÍA\ncampo 12\ttexto 500  LARGO Y ANCHO\n"
        "campo 100 simple S\ncampo 7 entero16 A\ncampo 8 entero32 B\ncampo 9 doble C\n"
        "clave 1 12(499,2) 1(1,6)\nclave 2 1(3,4)");
    EXPECT_EQ(definicion.titulo, "AÑO FISCAL");
    EXPECT_EQ(definicion.gNumeroCampos, 6);
    EXPECT_EQ(definicion.gLongitudRegistro, 6 + 500 + 4 + 2 + 4 + 8);
    EXPECT_EQ(definicion.campo(1).nombre, "DÍA");
    EXPECT_EQ(definicion.campo(2).nombre, "LARGO Y ANCHO");
    EXPECT_EQ(definicion.campoDePosicion(100), 3);
    EXPECT_EQ(definicion.claves[1], (std::vector<SegmentoClave>{{2, 499, 2}, {1, 1, 6}}));
    EXPECT_EQ(definicion.claves[2], (std::vector<SegmentoClave>{{1, 3, 4}}));
    EXPECT_EQ(componerDefinicion(definicion).substr(0, 33), "06      A\xd1O FISCAL               ");
}

TEST(FuenteDefinicion, TomaCamposDeOtra) {
    const auto definicion =
        leida("titulo ESTA\ncampos de otra.tabla\ncampo 3 fecha DIA\nclave 1 3(1,6) 4(1,2)\n");
    EXPECT_EQ(definicion.titulo, "ESTA");
    EXPECT_EQ(definicion.gNumeroCampos, 3);
    EXPECT_EQ(definicion.campo(1).nombre, "CODIGO");
    EXPECT_EQ(definicion.numeroClaves, 1);  // its own keys
    EXPECT_EQ(definicion.claves[1], (std::vector<SegmentoClave>{{3, 1, 6}, {1, 1, 2}}));
}

TEST(FuenteDefinicion, RechazaDiciendoDonde) {
    std::string noventaYOcho;
    for (int i = 10; i < 108; ++i) {
        noventaYOcho += "campo " + std::to_string(i) + " fecha F" + std::to_string(i) + "\n";
    }
    const struct {
        std::string fuente;
        const char* error;
    } casos[] = {
        {"", "f.tabla: falta el titulo"},
        {"titulo X", "f.tabla: no hay ningún campo"},
        {"campo 1 fecha A", "f.tabla: falta el titulo"},
        {"\ntitulo", "f.tabla:2: falta el titulo"},
        {"titulo A\ntitulo B", "f.tabla:2: otro titulo"},
        {"titulo 123456789012345678901234", "f.tabla:1: el titulo tiene más de 23 caracteres"},
        {"titulo Ω", "f.tabla:1: el titulo tiene un carácter sin sitio en Windows-1252"},
        {"nombre X", "f.tabla:1: \"nombre\" no es titulo, campo, campos ni clave"},
        {"campo 0 fecha A", "f.tabla:1: la posición ha de ser un número de 1 a 789, no \"0\""},
        {"campo 1x fecha A", "f.tabla:1: la posición ha de ser un número de 1 a 789, no \"1x\""},
        {"campo 790 fecha A", "f.tabla:1: la posición ha de ser un número de 1 a 789, no \"790\""},
        {"campo 1 entero A", "f.tabla:1: \"entero\" no es una clase de campo"},
        {"campo 1 texto A", "f.tabla:1: el ancho ha de ser un número de 1 a 789, no \"A\""},
        {"campo 1 fecha", "f.tabla:1: falta el título"},
        {"campo 1 fecha A\ncampo 2 fecha a", "f.tabla:2: el título a está dos veces"},
        {"campo 1 fecha A\ncampo 1 fecha B", "f.tabla:2: la posición 1 está dos veces"},
        {noventaYOcho + "campo 1 fecha A", "f.tabla:99: más de 98 campos"},
        {"campo 1 fecha A\ncampos de otra.tabla", "f.tabla:2: campos de va antes de cualquier otro campo"},
        {"campos otra.tabla", "f.tabla:1: no es de la forma campos de ARCHIVO"},
        {"campo 1 fecha A\nclave 2 1(1,6)", "f.tabla:2: aquí va la clave 1"},
        {"campo 1 fecha A\nclave 1", "f.tabla:2: una clave sin segmentos"},
        {"campo 1 fecha A\nclave 1 1(1,1) 1(1,1) 1(1,1) 1(1,1) 1(1,1) 1(1,1)",
         "f.tabla:2: más de 5 segmentos"},
        {"campo 1 fecha A\nclave 1 2(1,6)", "f.tabla:2: no hay ningún campo en la posición 2"},
        {"campo 1 fecha A\nclave 1 1(1,7)",
         "f.tabla:2: el número de caracteres ha de ser un número de 1 a 6, no \"7\""},
        {"campo 1 fecha A\nclave 1 1(7,1)",
         "f.tabla:2: el primer carácter ha de ser un número de 1 a 6, no \"7\""},
        {"campo 1 fecha A\nclave 1 1(2,6)",
         "f.tabla:2: el número de caracteres ha de ser un número de 1 a 5, no \"6\""},
        {"campo 1 fecha A\nclave 1 1", "f.tabla:2: \"1\" no es de la forma posición(primero,caracteres)"},
        {"campo 1 fecha A\nclave 1 1,2(",
         "f.tabla:2: \"1,2(\" no es de la forma posición(primero,caracteres)"},
        {"campo 1 fecha A\nclave 1 1(1,6",
         "f.tabla:2: \"1(1,6\" no es de la forma posición(primero,caracteres)"},
        {"campo 1 doble A\nclave 1 1(1,6)", "f.tabla:2: A es un número: su texto no tiene un largo fijo"},
        {"campo 1 texto 256 A\nclave 1 1(1,256)", "f.tabla:2: una clave de más de 255 caracteres"},
    };
    for (const auto& caso : casos) {
        try {
            leida(caso.fuente);
            ADD_FAILURE() << "accepted: " << caso.fuente;
        } catch (const ErrorFuente& error) {
            EXPECT_STREQ(error.what(), caso.error);
        }
    }
}

TEST(FuenteDefinicion, UnaFuenteTomadaNoTomaDeOtra) {
    try {
        leerFuenteDefinicion("f.tabla", "titulo F\ncampos de f.tabla\n",
                             [](std::string_view) { return std::string("titulo G\ncampos de f.tabla\n"); });
        ADD_FAILURE() << "accepted";
    } catch (const ErrorFuente& error) {
        EXPECT_STREQ(error.what(), "f.tabla:2: f.tabla toma sus campos de otra fuente");
    }
}

std::string motivoDe(std::string (*compilar)(std::string_view, std::string_view), std::string_view fuente) {
    try {
        compilar("f", fuente);
    } catch (const ErrorFuente& error) {
        return error.what();
    }
    return "accepted";
}

TEST(FuenteMonedas, DaLaTabla) {
    const auto bytes =
        compilarMonedas("f", "# comment\nmoneda 9 USD 2 0.9 DÓLAR\nmoneda 0  EUR  2  1  EURO\n");
    ASSERT_EQ(bytes.size(), 640U);
    const auto tabla = interpretarMonedas(bytes);
    EXPECT_EQ(tabla[0], (FilaMoneda{2, "EURO", "EUR", "", 0, 1, 2}));
    EXPECT_EQ(tabla[9], (FilaMoneda{2, "DÓLAR", "USD", "", 0, 0.9, 2}));
    for (std::size_t i = 1; i < 9; ++i) {
        EXPECT_TRUE(tabla[i].libre()) << i;
    }
}

TEST(FuenteMonedas, RechazaDiciendoDonde) {
    const std::pair<const char*, const char*> casos[] = {
        {"# nothing", "f: no hay ningún dato moneda"},
        {"divisa 0 EUR 2 1 EURO", "f:1: \"divisa\" no es moneda"},
        {"moneda 10 EUR 2 1 EURO", "f:1: el número ha de ser un número de 0 a 9, no \"10\""},
        {"moneda 0 EU 2 1 EURO", "f:1: una abreviatura son tres letras mayúsculas, no \"EU\""},
        {"moneda 0 eur 2 1 EURO", "f:1: una abreviatura son tres letras mayúsculas, no \"eur\""},
        {"moneda 0 EUR 10 1 EURO", "f:1: el número de decimales ha de ser un número de 0 a 9, no \"10\""},
        {"moneda 0 EUR 2 1,5 EURO", "f:1: el cambio ha de ser un número, no \"1,5\""},
        {"moneda 0 EUR 2 inf EURO", "f:1: el cambio ha de ser un número, no \"inf\""},
        {"moneda 0 EUR 2 0 EURO", "f:1: el cambio ha de ser mayor que 0"},
        {"moneda 0 EUR 2 1", "f:1: falta el nombre"},
        {"moneda 0 EUR 2 1 EURO\nmoneda 0 PTS 0 1 X", "f:2: el número 0 está dos veces"}};
    for (const auto& [fuente, error] : casos) {
        EXPECT_EQ(motivoDe(compilarMonedas, fuente), error);
    }
}

TEST(FuenteTiposIva, DaLosTipos) {
    const auto bytes = compilarTiposIva("f", "tipo 3 4 0.5 IVA superreducido\ntipo 1 21 0 IVA\n");
    EXPECT_EQ(bytes.size(), 99U);
    const TiposIva tipos(bytes);
    EXPECT_EQ(tipos(1), (TipoIva{"IVA", "", "", 21, 0}));
    EXPECT_EQ(tipos(2), TipoIva{});
    EXPECT_EQ(tipos(3), (TipoIva{"IVA superreducido", "", "", 4, 0.5F}));
}

TEST(FuenteTiposIva, RechazaDiciendoDonde) {
    const std::pair<const char*, const char*> casos[] = {
        {"", "f: no hay ningún dato tipo"},
        {"tipo 0 21 0 IVA", "f:1: el número ha de ser un número de 1 a 300, no \"0\""},
        {"tipo 1 -1 0 IVA", "f:1: la cuota ha de estar entre 0 y 100"},
        {"tipo 1 21 101 IVA", "f:1: el recargo ha de estar entre 0 y 100"},
        {"tipo 1 21 IVA", "f:1: el recargo ha de ser un número, no \"IVA\""},
        {"tipo 1 21 0 1234567890123456789012", "f:1: el nombre tiene más de 21 caracteres"}};
    for (const auto& [fuente, error] : casos) {
        EXPECT_EQ(motivoDe(compilarTiposIva, fuente), error);
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
