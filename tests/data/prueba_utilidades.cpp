// Rounding, names, masked passwords, XML and tables.
#include <gtest/gtest.h>

#include "apoyo/ajustes_memoria.h"
#include "apoyo/mundo_datos.h"
#include "data/utilidades.h"
#include "data/vista_nombrada.h"

namespace {

using namespace tarvoline;
using namespace std::string_literals;
using Filas = data::Tabla;

TEST(Utilidades, RedondearAlejaLasMitadesDelCero) {
    EXPECT_EQ(data::Redondear(-2.5, 0), -3);
    EXPECT_EQ(data::Redondear(-0.125, 2), -0.13);
    EXPECT_EQ(data::Redondear(2.4999, 0), 2);
}

TEST(Utilidades, NombrePropio) {
    EXPECT_EQ(data::NombrePropio("LIBRO MAYOR"), "Libro Mayor");
    EXPECT_EQ(data::NombrePropio("ÁNGEL NÚÑEZ  íñigo"), "Ángel Núñez  Íñigo");
    EXPECT_EQ(data::NombrePropio(""), "");
}

TEST(Utilidades, ClaveEnmascarada) {
    EXPECT_EQ(data::EnmascararClave("A1").bytes(), "\xC0\xB0\0\0"s);
    for (const auto* clave : {"", "a", "ñÑ", "1234", "€uro"}) {
        EXPECT_EQ(data::DesenmascararClave(data::EnmascararClave(clave)), clave);
        EXPECT_EQ(data::EnmascararClave(clave).longitud(), 4U);
    }
    EXPECT_EQ(data::DesenmascararClave(core::TextoAnsi("\0\xC0\xC0\xC0"s)), "");
    EXPECT_EQ(data::DesenmascararClave(core::TextoAnsi("\xC0\0\xC1\0"s)), "AB");
    EXPECT_THROW(data::EnmascararClave("12345"), std::invalid_argument);
    EXPECT_THROW(data::EnmascararClave("ÿ"), std::invalid_argument);
    // Every code but the one without partner comes back.
    for (int codigo = 1; codigo < 255; ++codigo) {
        const auto clave = core::aUtf8("x"s + static_cast<char>(codigo));
        EXPECT_EQ(data::DesenmascararClave(data::EnmascararClave(clave)), clave) << codigo;
    }
}

TEST(Utilidades, EscaparXml) {
    EXPECT_EQ(data::EscaparXml("a&b"), "a&#38;b");
    EXPECT_EQ(data::EscaparXml(data::EscaparXml("&")), "&#38;#38;");
    EXPECT_EQ(data::EscaparXml("<ñ €>\"~"), "&#60;&#241; &#128;&#62;\"~");
    EXPECT_EQ(data::EscaparXml("\x7F"), "&#127;");
    EXPECT_EQ(data::EscaparXml("日"), "&#26085;");
}

TEST(Utilidades, PartirLinea) {
    using Campos = std::vector<std::string>;
    EXPECT_EQ(data::PartirLinea("a, b ,\"c, d\",e"), (Campos{"a", "b", "c, d", "e"}));
    EXPECT_EQ(data::PartirLinea(""), (Campos{""}));
    EXPECT_EQ(data::PartirLinea("a,"), (Campos{"a", ""}));
    EXPECT_EQ(data::PartirLinea("\na;\"b;c", ';'), (Campos{"a", "b;c"}));
}

TEST(Utilidades, TextoATabla) {
    EXPECT_EQ(data::TextoATabla("", "\t"), (Filas{{""}}));
    EXPECT_EQ(data::TextoATabla("a\tb\r\nc\rd\te\tf", "\t"),
              (Filas{{"a", "b", ""}, {"c", "", ""}, {"d", "e", "f"}}));
    EXPECT_EQ(data::TextoATabla("a,\"b,c\"\r\n", ","), (Filas{{"a", "b,c"}, {"", ""}}));
}

TEST(Utilidades, TextoDeNumero) {
    struct Caso {
        double valor;
        std::string texto;
    };
    for (const auto& caso : std::initializer_list<Caso>{{0, "0"},
                                                        {-0.0, "0"},
                                                        {0.5, "0.5"},
                                                        {-12.34, "-12.34"},
                                                        {100, "100"},
                                                        {0.1 + 0.2, "0.3"},
                                                        {0.00001, "0.00001"},
                                                        {123456789012345, "123456789012345"},
                                                        {999999999999999.9, "1E+15"},
                                                        {1.5e20, "1.5E+20"}}) {
        EXPECT_EQ(data::textoDeNumero(caso.valor), caso.texto);
    }
    EXPECT_EQ(data::textoDeNumero(static_cast<double>(1.1F), 7), "1.1");
}

TEST(Utilidades, MayusculasYNombreCorto) {
    EXPECT_EQ(core::aUtf8(data::MayusculasAnsi(core::aAnsi("año, ÿ œ ÷ ß"))), "AÑO, Ÿ Œ ÷ ß");
    EXPECT_EQ(data::NombreCorto("C:\\datos\\PLANC07.QZD\0\0"s), "C:\\datos\\PLANC07.QZD");
}

TEST(Utilidades, LoQueSaleMalSeDiceEnUnaCajaYSeSigue) {
    pruebas::AjustesMemoria memoria;
    core::Ajustes ajustes(memoria);
    pruebas::MundoDatos mundo;
    data::CapaDatos capa{*mundo.archivos, ajustes, mundo.carpetas, mundo.reloj};
    std::vector<core::Caja> cajas;
    capa.alMostrar = [&](const core::Caja& caja) { cajas.push_back(caja); };

    memoria.fallarAlGrabar = true;
    data::GrabarAjuste(capa, "Global_Dir", "/comunes");
    memoria.fallarAlGrabar = false;
    data::GrabarAjuste(capa, "IVA_DIR", "/iva");
    EXPECT_EQ(data::LeerAjuste(ajustes, "Global_Dir", {}, "nada").texto(), "nada");
    EXPECT_EQ(data::LeerAjuste(ajustes, "IVA_DIR").texto(), "/iva");
    EXPECT_EQ(data::ListaDeXml(capa, "<Empresas><E>a</E></Empresas>"), std::vector<std::string>{"a"});
    EXPECT_TRUE(data::ListaDeXml(capa, "<Empresas>").empty());
    ASSERT_EQ(cajas.size(), 2U);
    EXPECT_EQ(cajas[0].texto, "Unable to Create/Open SubKey.\rVeldorix will now abort.");
    EXPECT_EQ(cajas[1].titulo, "Veldorix");
    EXPECT_NE(cajas[1].texto, "");
}

}  // namespace
