// Common files: where they are found, and the currency table and VAT rates in them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "apoyo/mundo_datos.h"
#include "apoyo/variables_proceso.h"
#include "data/bytes.h"
#include "data/datos_comunes.h"
#include "data/monedas.h"
#include "data/tablas.h"
#include "data/tipos_iva.h"
#include "data/utilidades.h"
#include "data/vista_nombrada.h"

namespace tarvoline::pruebas {
namespace {

using namespace data;
using testing::HasSubstr;

struct Comunes : testing::Test {
    Comunes() {
        variables.poner("XDG_DATA_HOME", m.carpeta.ruta("casa"));
        m.capa.alMostrar = [this](const core::Caja& caja) { cajas.push_back(caja); };
    }

    std::string usuario(std::string_view resto = {}) {
        return core::conSeparadorFinal(m.carpetas.CarpetaUsuario()) + std::string(resto);
    }
    void enviar(const std::string& nombre, std::string_view contenido) {
        m.carpeta.escribir("programa/" + nombre, contenido);
    }
    std::string contenido(const std::string& ruta) { return platform::leerTodo(*m.archivos, ruta); }
    std::string ajuste(std::string_view clave) { return m.ajustes.leer(clave); }
    // A currency file whose second currency has this rate.
    static std::string monedas(double cambio) {
        return componerMoneda({2, "EURO", "EUR", "", 0, 1, 2}) +
               componerMoneda({0, "PESETA", "PTS", "", 0, cambio, 0});
    }
    void empresaConMoneda(std::uint8_t base) {
        m.capa.enVigor.cabecera.poner(cabecera::ARCHIVOMONEDABASE, base);
        m.ajustes.GrabarRegistro("CON_DIR", m.carpeta.ruta("comunes"));
    }

    MundoDatos m;
    VariablesProceso variables;
    std::vector<core::Caja> cajas;
};

TEST_F(Comunes, ElPrimerUsoEstrenaLaCarpetaDelUsuario) {
    enviar("Moneda1.QZF", "shipped");
    enviar("IVA03.QZF", "rates");
    const auto ruta = RutaDatoComun(m.capa, "Con_Dir", "Moneda1.QZF");
    EXPECT_EQ(ruta, usuario("Conceptos/Moneda1.QZF"));
    EXPECT_EQ(contenido(ruta), "shipped");
    EXPECT_EQ(ajuste("CON_DIR"), usuario("Conceptos/"));
    EXPECT_EQ(RutaDatoComun(m.capa, "IVA_DIR", "IVA03.QZF"), usuario("IVA03.QZF"));
    EXPECT_EQ(contenido(usuario("IVA03.QZF")), "rates");
    EXPECT_THAT(cajas, testing::IsEmpty());
}

// What a person has changed in it stays, and so does a file that came with an older program.
TEST_F(Comunes, LoQueHayNoSeCopiaEncima) {
    enviar("Moneda1.QZF", "shipped");
    const auto ruta = RutaDatoComun(m.capa, "CON_DIR", "Moneda1.QZF");
    platform::escribirAtomico(*m.archivos, ruta, "changed");
    EXPECT_EQ(RutaDatoComun(m.capa, "CON_DIR", "Moneda1.QZF"), ruta);
    EXPECT_EQ(contenido(ruta), "changed");
    m.ajustes.GrabarRegistro("CON_DIR", "");
    EXPECT_EQ(RutaDatoComun(m.capa, "CON_DIR", "Moneda1.QZF"), ruta);
    EXPECT_EQ(contenido(ruta), "changed");
}

// Two files share one setting: the second one is new in a folder that is not.
TEST_F(Comunes, OtroArchivoDeLaMismaCarpeta) {
    enviar("Moneda1.QZF", "one");
    enviar("Moneda.QZF", "other");
    RutaDatoComun(m.capa, "CON_DIR", "Moneda1.QZF");
    const auto ruta = RutaDatoComun(m.capa, "CON_DIR", "Moneda.QZF");
    EXPECT_EQ(ruta, usuario("Conceptos/Moneda.QZF"));
    EXPECT_EQ(contenido(ruta), "other");
    EXPECT_THAT(cajas, testing::IsEmpty());
}

TEST_F(Comunes, LaCarpetaDelAjuste) {
    m.carpeta.escribir("red/IVA03.QZF", "theirs");
    m.ajustes.GrabarRegistro("IVA_DIR", m.carpeta.ruta("red"));  // without a separator at its end
    EXPECT_EQ(RutaDatoComun(m.capa, "IVA_DIR", "IVA03.QZF"), m.carpeta.ruta("red/IVA03.QZF"));
    EXPECT_THAT(cajas, testing::IsEmpty());
    EXPECT_FALSE(m.carpeta.hay("casa"));
}

TEST_F(Comunes, LoQueNoSeAbreSeDiceYSeSustituye) {
    enviar("IVA03.QZF", "rates");
    m.ajustes.GrabarRegistro("IVA_DIR", m.carpeta.ruta("sin red/"));
    EXPECT_EQ(RutaDatoComun(m.capa, "IVA_DIR", "IVA03.QZF"), usuario("IVA03.QZF"));
    EXPECT_EQ(contenido(usuario("IVA03.QZF")), "rates");
    EXPECT_EQ(ajuste("IVA_DIR"), usuario());
    ASSERT_EQ(cajas.size(), 1U);
    EXPECT_EQ(cajas[0].texto, "Archivo " + m.carpeta.ruta("sin red/IVA03.QZF") +
                                  " no está disponible ... se utilizará " + usuario("IVA03.QZF"));
    EXPECT_EQ(cajas[0].titulo, "Veldorix");
    EXPECT_EQ(cajas[0].icono, core::Icono::exclamacion);
}

TEST_F(Comunes, LoQueNadieTieneSeDice) {
    EXPECT_EQ(RutaDatoComun(m.capa, "IVA_DIR", "IVA03.QZF"), usuario("IVA03.QZF"));
    EXPECT_EQ(cajas.size(), 1U);
    EXPECT_FALSE(platform::existe(*m.archivos, usuario("IVA03.QZF")));
}

TEST_F(Comunes, LosDeLaEmpresaVanConElla) {
    m.ponerEnVigor(m.datos("Uno.QZT"), "07");
    m.ajustes.GrabarRegistro("IVA_DIR", m.carpeta.ruta("red"));
    EXPECT_EQ(RutaDatoComun(m.capa, "IVA_DIR", "IVA0307.QZF"), m.datos("IVA0307.QZF"));
    EXPECT_NE(RutaDatoComun(m.capa, "IVA_DIR", "IVA0308.QZF"), m.datos("IVA0308.QZF"));
    m.capa.enVigor.gEmpresaActual = "";
    EXPECT_NE(RutaDatoComun(m.capa, "IVA_DIR", "IVA0307.QZF"), m.datos("IVA0307.QZF"));
}

TEST_F(Comunes, SoloLaCarpeta) {
    EXPECT_EQ(RutaDatoComun(m.capa, "GLOBAL_DIR", ""), usuario());
    EXPECT_EQ(RutaDatoComun(m.capa, "CON_DIR", ""), usuario("Conceptos/"));
    EXPECT_EQ(ajuste("GLOBAL_DIR"), "");
    m.ajustes.GrabarRegistro("GLOBAL_DIR", "/srv/global");
    EXPECT_EQ(RutaDatoComun(m.capa, "GLOBAL_DIR", ""), "/srv/global/");
    EXPECT_THAT(cajas, testing::IsEmpty());
}

TEST(Monedas, CadaByteEnSuSitio) {
    const FilaMoneda libra{2, "LIBRA ESTERLINA £", "GBP", "Reino Unido", -3, 1.25, 4};
    const auto bytes = componerMoneda(libra);
    ASSERT_EQ(bytes.size(), bytesMoneda);
    EXPECT_EQ(bytes.substr(0, 51), "2LIBRA ESTERLINA \xa3     GBPReino Unido              ");
    EXPECT_EQ(bytes.substr(51, 4), "\xfd\xff\xff\xff");
    EXPECT_EQ(bytes.substr(55), std::string("\0\0\0\0\0\0\xf4\x3f", 8) + "4");
    EXPECT_EQ(interpretarMoneda(bytes), libra);
    EXPECT_EQ(interpretarMoneda(""), FilaMoneda{});
    EXPECT_TRUE(interpretarMoneda(std::string(64, ' ')).libre());
    EXPECT_FALSE(interpretarMoneda(bytes.substr(0, 10)).libre());
    EXPECT_EQ(componerMoneda({12, std::string(40, 'N'), "ABCD", "", 0, 0, {}}).substr(0, 27),
              "2" + std::string(22, 'N') + "ABC ");
}

TEST_F(Comunes, LasMonedasEnVigor) {
    m.carpeta.escribir("comunes/Moneda1.QZF",
                       monedas(0.0061) + componerMoneda({2, "DOLAR", "USD", "", 0, 0.9, 3}));
    m.carpeta.escribir("comunes/Moneda.QZF", componerMoneda({0, "PESETA", "PTS", "", 0, 1, 0}) +
                                                 componerMoneda({2, "EURO", "EUR", "", 0, 166.386, 2}));
    EXPECT_EQ(Redondear(m.capa, 1.005 + 1e-9), 1.01);
    empresaConMoneda(1);
    cargarMonedas(m.capa);
    EXPECT_TRUE(m.capa.monedas.cargadas);
    EXPECT_EQ(m.capa.monedas.CambioMonedaBase, 1 / 166.386);  // 0.0061 has too few decimals
    EXPECT_EQ(m.capa.monedas.DecimalesMonedas[0], 2);
    EXPECT_EQ(m.capa.monedas.DecimalesMonedas[2], 3);
    EXPECT_EQ(m.capa.monedas.AbreviaturasMonedas[1], "PTS");
    EXPECT_EQ(m.capa.monedas.AbreviaturasMonedas[9], "");
    EXPECT_EQ(Redondear(m.capa, 2.345), 2.35);

    empresaConMoneda(0);
    cargarMonedas(m.capa);
    EXPECT_EQ(m.capa.monedas.CambioMonedaBase, 166.386);
    EXPECT_EQ(m.capa.monedas.AbreviaturasMonedas[2], "");
    EXPECT_EQ(Redondear(m.capa, 2.345), 2);
}

TEST_F(Comunes, ElCambioDeLaPeseta) {
    const std::pair<double, double> cambios[] = {{0.006, 1 / 166.386},
                                                 {0.00601012, 1 / 166.386},
                                                 {0.0055, 1 / 166.386},
                                                 {0.0054, 0.0054},
                                                 {0.0065, 0.0065},
                                                 {-0.006, -0.006},
                                                 {0, 0},
                                                 {std::numeric_limits<double>::infinity(), 0},
                                                 {std::nan(""), 0}};
    empresaConMoneda(1);
    for (const auto& [escrito, leido] : cambios) {
        m.carpeta.escribir("comunes/Moneda1.QZF", monedas(escrito));
        cargarMonedas(m.capa);
        EXPECT_EQ(m.capa.monedas.CambioMonedaBase, leido) << escrito;
    }
}

// Money keeps its cents when the file is missing or holds no digit.
TEST_F(Comunes, SinTablaDeMonedas) {
    empresaConMoneda(1);
    m.carpeta.escribir("comunes/Moneda1.QZF", monedas(0.5));
    cargarMonedas(m.capa);
    m.archivos->borrar(m.carpeta.ruta("comunes/Moneda1.QZF"));
    cargarMonedas(m.capa);
    EXPECT_FALSE(m.capa.monedas.cargadas);
    EXPECT_EQ(m.capa.monedas.CambioMonedaBase, 0);
    EXPECT_EQ(Redondear(m.capa, 2.345), 2.35);
    EXPECT_THAT(m.avisos, HasSubstr("Moneda1.QZF"));

    empresaConMoneda(1);
    m.carpeta.escribir("comunes/Moneda1.QZF", "");
    cargarMonedas(m.capa);
    EXPECT_EQ(Redondear(m.capa, 2.345), 2.35);
}

// What lies still is not read again; any sign of a change, or another company's file, is.
TEST_F(Comunes, LaTablaQueNoCambiaNoSeLeeDeNuevo) {
    const auto escribir = [&](const std::string& nombre, double cambio, int horas) {
        const auto ruta = m.carpeta.escribir("comunes/" + nombre, monedas(cambio));
        namespace fs = std::filesystem;
        fs::last_write_time(ruta, fs::file_time_type::clock::now() - std::chrono::hours(horas));
        return ruta;
    };
    const auto cambio = [&] {
        cargarMonedas(m.capa);
        return m.capa.monedas.CambioMonedaBase;
    };
    const auto ruta = escribir("Moneda1.QZF", 0.5, 5);
    escribir("Moneda.QZF", 8, 5);
    empresaConMoneda(1);
    EXPECT_EQ(cambio(), 0.5);
    m.capa.monedas.CambioMonedaBase = 99;  // would be lost by reading
    EXPECT_EQ(cambio(), 99);
    escribir("Moneda1.QZF", 0.7, 3);
    EXPECT_EQ(cambio(), 0.7);
    empresaConMoneda(0);
    EXPECT_EQ(cambio(), 8);
    empresaConMoneda(1);
    EXPECT_EQ(cambio(), 0.7);
    // Another folder's file counts at once.
    m.carpeta.escribir("otros/Moneda1.QZF", monedas(3));
    m.ajustes.GrabarRegistro("CON_DIR", m.carpeta.ruta("otros"));
    EXPECT_EQ(cambio(), 3);
    m.ajustes.GrabarRegistro("CON_DIR", m.carpeta.ruta("comunes"));
    EXPECT_EQ(cambio(), 0.7);
    m.archivos->borrar(ruta);
    EXPECT_EQ(cambio(), 0);
}

TEST(TiposIva, CadaByteEnSuSitio) {
    const TipoIva general{"GENERAL+Régimen común", "CA", "1 ", 21, 5.2F};
    const auto bytes = componerTipoIva(general);
    EXPECT_EQ(bytes, std::string("GENERAL+R\xe9gimen com\xfan"
                                 "CA"
                                 "1 "
                                 "\0\0\xa8\x41\x66\x66\xa6\x40",
                                 33));
    const auto leido = interpretarTipoIva(bytes);
    EXPECT_EQ(leido.Descripción, general.Descripción);
    EXPECT_EQ(leido.ClaveOp, "1");
    EXPECT_EQ(leido.Cuota, 21.0F);
    EXPECT_EQ(leido.Recargo, 5.2F);
}

TEST(TiposIva, FilasDel1Al300) {
    std::string bytes;
    for (int i = 1; i <= 301; ++i) {
        bytes += componerTipoIva({"Tipo " + std::to_string(i), "", "", static_cast<float>(i), 0});
    }
    const TiposIva tipos(bytes);
    EXPECT_EQ(tipos.cuantos(), 300);
    EXPECT_EQ(tipos(300).Descripción, "Tipo 300");
    for (const int fuera : {-1, 0, 301}) {
        EXPECT_EQ(tipos(fuera), TipoIva{}) << fuera;
    }
    EXPECT_EQ(TiposIva(bytes.substr(0, 40)).cuantos(), 2);  // what is missing of the second counts as zero
    EXPECT_EQ(TiposIva(bytes.substr(0, 40))(2).Descripción, "Tipo 2");
}

TEST_F(Comunes, LosTiposDeLaEmpresaOLosDeTodas) {
    m.crear("Uno.QZT");
    m.carpeta.escribir("comunes/IVA03.QZF", componerTipoIva({"Común", "", "", 21, 0}));
    m.ajustes.GrabarRegistro("IVA_DIR", m.carpeta.ruta("comunes"));
    EXPECT_EQ(TiposIva::leer(m.capa, rutaTiposIva(m.capa))(1).Descripción, "Común");
    VistaNombrada(m.capa).PutTotal("IvaporEmpresa", "1");
    EXPECT_EQ(rutaTiposIva(m.capa), m.datos("IVA0301.QZF"));
    EXPECT_THROW(TiposIva::leer(m.capa, rutaTiposIva(m.capa)), platform::ErrorArchivo);
}

}  // namespace
}  // namespace tarvoline::pruebas
