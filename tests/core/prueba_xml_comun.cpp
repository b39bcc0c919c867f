#include <gtest/gtest.h>

#include "apoyo/nucleo_prueba.h"
#include "core/xml_comun.h"

namespace tarvoline::core {
namespace {

using pruebas::NucleoPrueba;

struct PruebaXml : testing::Test {
    NucleoPrueba nucleo;

    // The value of `clave` when company 07's file holds `contenido`.
    std::string leer(std::string_view contenido, std::string_view clave = "TVUSER") {
        nucleo.carpeta().escribir("datos/Total07.xml", contenido);
        return LeerClaveXML(nucleo.entorno, clave, "defecto", "07");
    }
};

TEST_F(PruebaXml, ElSegundoAtributoDelPrimerHijoConLaClave) {
    EXPECT_EQ(leer("<r><e Key='OTRA' V='1'/><e Key='TVUSER' V='maria' W='x'/><e Key='TVUSER' V='2'/></r>"),
              "maria");
    EXPECT_EQ(leer("<r><e V='maria' Key='TVUSER'/></r>"), "TVUSER") << "by place, whatever its name";
    EXPECT_EQ(leer("<r><a><e Key='TVUSER' V='dentro'/></a></r>"), "defecto") << "children of the root alone";
    EXPECT_EQ(leer("<r><!-- Key --><e Key='TVUSER' V='a&amp;b &lt;c&gt; &#241;'/></r>"), "a&b <c> ñ");
}

TEST_F(PruebaXml, LaClaveSePideEnMayusculas) {
    EXPECT_EQ(leer("<r><e Key='DESCRIPCI\xD3NEMPRESA' V='Alg\xFAn \x80'/></r>", "DescripciónEmpresa"),
              "Algún €");
    EXPECT_EQ(leer("<r><e Key='TvUser' V='maria'/></r>", "TvUser"), "defecto")
        << "stored keys are upper case";
}

TEST_F(PruebaXml, LaCodificacionQueDeclara) {
    EXPECT_EQ(leer("<?xml version=\"1.0\" encoding=\"UTF-8\"?><r><e Key='TVUSER' V='año €'/></r>"), "año €");
    EXPECT_EQ(leer("\xEF\xBB\xBF<r><e Key='TVUSER' V='año'/></r>"), "año");
    EXPECT_EQ(leer("<?xml version='1.0'?><r><e Key='TVUSER' V='a\xF1o'/></r>"), "año");
    EXPECT_EQ(leer("<?xml version='1.0' encoding='windows-1252'?><r><e Key='TVUSER' V='\x80'/></r>"), "€");
    EXPECT_EQ(leer("<?xml version='1.0' encoding='ISO-8859-1'?><r><e Key='TVUSER' V='a\xF1o'/></r>"), "año");
    std::string ancho = "\xFF\xFE";
    for (const char letra : std::string("<r><e Key='TVUSER' V='ab'/></r>")) {
        ancho += {letra, '\0'};
    }
    EXPECT_EQ(leer(ancho), "ab");
}

TEST_F(PruebaXml, LoRotoDaElDefecto) {
    for (const char* contenido : {"", "nada", "<r>", "<r><e Key='TVUSER' V='x'/>",
                                  "<r><e Key='TVUSER' V='x'></r>", "<r/>", "<r><e Key='TVUSER'/></r>",
                                  "<r><e Key='TVUSER' V=''/></r>", "<?xml encoding=", "<?xml encoding='"}) {
        EXPECT_EQ(leer(contenido), "defecto") << contenido;
    }
    EXPECT_EQ(leer("<r><e Key='A' V='x'/></r>", "A\"] | //*[\""), "defecto");
}

TEST_F(PruebaXml, UnDoctypeNoTraeNada) {
    const std::string secreto = nucleo.carpeta().escribir("secreto", "sesamo");
    EXPECT_EQ(leer("<!DOCTYPE r [<!ENTITY a 'sesamo'><!ENTITY b SYSTEM 'file://" + secreto +
                   "'>]><r><e Key='TVUSER' V='&a;&b;'/></r>"),
              "&a;&b;");
}

TEST_F(PruebaXml, EmpresaYArchivo) {
    leer("<r><e Key='TVUSER' V='maria'/></r>");
    EXPECT_EQ(LeerClaveXML(nucleo.entorno, "TVUSER", "defecto"), "defecto") << "no company in force";
    nucleo.estado.gEmpresaCRM = "07";
    EXPECT_EQ(LeerClaveXML(nucleo.entorno, "TVUSER", "defecto"), "maria");
    EXPECT_EQ(LeerClaveXML(nucleo.entorno, "TVUSER", "defecto", "08"), "defecto");
    EXPECT_TRUE(nucleo.registro.lineas.empty()) << "a company that was never set up is no news";
    EXPECT_EQ(LeerClaveXML(nucleo.entorno, "TVUSER", "", "08", nucleo.datos("TOTAL07.XML")), "maria");
    EXPECT_EQ(LeerClaveXML(nucleo.entorno, "TVUSER", "defecto", "08", nucleo.datos()), "defecto");
    EXPECT_TRUE(nucleo.registro.dice("LeerClaveXML")) << "a folder cannot be read";
}

TEST(ListaXml, LosTextosDeLosHijosDeLaRaiz) {
    using Textos = std::vector<std::string>;
    EXPECT_EQ(LeerListaXML("<?xml version='1.0' encoding='utf-16'?>\n<Empresas>\n <E>Año &amp; co</E><E/>"
                           "<F> dos </F><!-- no --><E><G/></E></Empresas>"),
              (Textos{"Año & co", " dos "}));
    EXPECT_EQ(LeerListaXML("<Empresas/>"), Textos());
    for (const char* mala : {"", "ERROR: sin permiso", "<a><b>", "<a></b>"}) {
        EXPECT_THROW(LeerListaXML(mala), ErrorXml) << mala;
    }
}

}  // namespace
}  // namespace tarvoline::core
