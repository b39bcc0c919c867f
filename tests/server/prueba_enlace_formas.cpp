// Every form of the accounting link once round, at the real service: what it does to the books, and what is
// left of them when it is killed or its disk fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/servicio_proceso.h"
#include "cliente_enlace.h"
#include "core/texto.h"
#include "servicio_prueba.h"

namespace tarvoline::pruebas {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string apunte(const std::string& cuenta, const std::string& importe, const std::string& tipo,
                   const std::string& descripcion = "Venta") {
    return "<APUNTE CUENTA='" + cuenta + "' DESCRIPCION='" + descripcion + "' REFERENCIA='R1' IMPORTE='" +
           importe + "' TIPO='" + tipo + "' DIARIO='1' CANAL='000'/>";
}

// A cell of a search's answer, by the name of its column; the row counts from 1.
std::string celda(const std::string& respuesta, std::size_t fila, const std::string& columna) {
    const auto lineas = core::Partir(respuesta, "\n");
    const auto nombres = core::Partir(lineas.at(0), "\t");
    const auto lugar = std::ranges::find(nombres, columna);
    if (lugar == nombres.end() || fila >= lineas.size()) return "no hay " + columna;
    return core::Partir(lineas[fila], "\t").at(static_cast<std::size_t>(lugar - nombres.begin()));
}

struct EnlaceProceso : testing::Test {
    EnlaceProceso() {
        servicio.alta("ANA", "secreta1", "AC01");
        ana.entrar("ANA", "secreta1");
        EXPECT_EQ(ana.en("Libros", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    }
    std::string hacer(const std::string& operacion, const std::string& elementos = {}) {
        return ana.en("Libros", operacion, elementos);
    }
    std::string buscar(const std::string& archivo, const std::string& filtro = {}) {
        return hacer("BUSCAR", "<FILTER>" + filtro + "</FILTER><ARCHIVO>" + archivo + "</ARCHIVO>");
    }
    std::string cambiar(const std::string& archivo, const std::string& campos) {
        return hacer("UPDATE", "<CAMPOS>" + campos + "</CAMPOS><ARCHIVO>" + archivo + "</ARCHIVO>");
    }

    ServicioProceso servicio;
    ClienteEnlace ana{servicio.puerto()};
};

TEST_F(EnlaceProceso, ValoresYTipos) {
    EXPECT_EQ(hacer("GETTOTAL", "<VALOR>AÑO</VALOR>"), "26");
    EXPECT_EQ(hacer("PUTTOTAL", "<VALOR>Mío=a=b &amp; ñ</VALOR>"), "OK");
    EXPECT_EQ(hacer("GETTOTAL", "<VALOR>MÍO</VALOR>"), "a=b & ñ");
    EXPECT_EQ(hacer("PUTTOTAL", "<VALOR>Mío=uno&#10;AÑO=11</VALOR>"), "OK");
    EXPECT_EQ(hacer("GETTOTAL", "<VALOR>AÑO</VALOR>"), "26") << "a value is one line";
    EXPECT_THAT(hacer("LEERTIPOSIVA"), testing::AllOf(StartsWith("<TIPOSIVA><TIPOIVA>TIPO=1\nDESCRIPCION="),
                                                      HasSubstr("\nCUOTA=21")));
}

TEST_F(EnlaceProceso, UnAsientoVaVuelveYSeAnula) {
    EXPECT_EQ(cambiar("PLANC", "1=4300000001\t2=Peña &amp; Cía\t3=0\t"), "4300000001");
    const std::string numero =
        hacer("GRABARASIENTO",
              formaAsiento(
                  apunte("4300000001", "121", "1") + apunte("5700000000", "121", "2", "Cobro"), "15/03/2026",
                  "<IVAS><IVA CUENTA='4300000001' FACTURA='F-1' FECHA_FRA='15/03/26' BASE='100' TIPO='1' "
                  "TOTAL='121' TITULO='Peña' CTA_IVA='4770000021' NIF='A1'/></IVAS>"
                  "<CARTERAS><CARTERA CUENTA='4300000001' CA='BANCO' NOTAS='n' FECHA_VTO='15/04/26' "
                  "TOTAL='121'/></CARTERAS>"));
    EXPECT_EQ(numero, "000002");
    const std::string leido =
        hacer("LEERASIENTO", "<FECHA>15/03/26</FECHA><ASIENTO>" + numero + "</ASIENTO>");
    pugi::xml_document documento;
    ASSERT_TRUE(documento.load_string(leido.c_str())) << leido;
    const auto asiento = documento.document_element().child("ASIENTOS").child("ASIENTO");
    EXPECT_STREQ(asiento.attribute("NUMERO").value(), numero.c_str());
    const auto cobro = asiento.child("APUNTES").last_child();
    EXPECT_STREQ(cobro.attribute("IMPORTE").value(), "121");
    EXPECT_STREQ(cobro.attribute("TIPO").value(), "2");
    EXPECT_STREQ(asiento.child("APUNTESIVA").first_child().attribute("SRTC").value(), "R");
    EXPECT_STREQ(asiento.child("APUNTESIVA").first_child().attribute("FACTURA").value(), "F-1");
    EXPECT_STREQ(asiento.child("APUNTESCARTERA").first_child().attribute("TOTAL").value(), "121");
    for (const char* donde : {"PROXIMO", "ANTERIOR"}) {
        EXPECT_EQ(hacer("LEERASIENTO", "<FECHA>15/03/26</FECHA><ASIENTO>" + numero + "</ASIENTO><POSICION>" +
                                           donde + "</POSICION>"),
                  "<LEERASIENTO><ASIENTOS/></LEERASIENTO>")
            << donde;
    }
    EXPECT_EQ(celda(buscar("EXTRA", "ABS(IMPORTE)= 121 AND REFERENCIA=R1"), 2, "IMPORTE"), "-121");
    EXPECT_EQ(celda(buscar("IVA01", "FACTURA No.=F-1"), 1, "NIF"), "A1");
    EXPECT_EQ(celda(buscar("PLANC", "CUENTA=4300000001"), 1, "TITULO"), "Peña & Cía");

    EXPECT_EQ(hacer("FILTERUPDATE",
                    "<FILTER>CUENTA=4300000001</FILTER><CAMPOS>7=X\t</CAMPOS><ARCHIVO>EFECT</ARCHIVO>"),
              "1");
    EXPECT_EQ(celda(buscar("EFECT"), 1, "MARCA"), "X");
    EXPECT_EQ(hacer("FILTERBORRAR", "<FILTER>CUENTA=nadie</FILTER><ARCHIVO>EFECT</ARCHIVO>"), "0");
    EXPECT_EQ(hacer("FILTERBORRAR", "<FILTER>CARTERA/BANCO=BANCO</FILTER><ARCHIVO>EFECT</ARCHIVO>"), "1");
    EXPECT_EQ(buscar("EFECT"), "");

    EXPECT_EQ(hacer("ANULARASIENTO", "<FECHA>15/03/26</FECHA><ASIENTO>" + numero + "</ASIENTO>"), "0");
    EXPECT_EQ(buscar("EXTRA"), "");
    EXPECT_EQ(buscar("IVA01"), "");
    hacer("GRABARASIENTO", formaAsiento(apunte("5700000000", "5", "1")));
    EXPECT_EQ(hacer("ANULARASIENTO", "<REFERENCIA>REFERENCIA=R1</REFERENCIA>"), "OK");
    EXPECT_EQ(buscar("EXTRA"), "");
}

TEST_F(EnlaceProceso, CuentasDatosPresupuestosEIdentificadores) {
    EXPECT_EQ(cambiar("PLANC", "1=4300*\t2=Uno\t3=0\t"), "4300000001");
    EXPECT_EQ(cambiar("PLANC", "1=4300*\t2=Dos\t3=0\t"), "4300000002");
    EXPECT_EQ(cambiar("Costo", "1=10\t2=Centro\t3=0\t"), "10");
    EXPECT_EQ(celda(buscar("Costo", "CUENTA=10"), 1, "TITULO"), "Centro");
    EXPECT_EQ(cambiar("PLANA", "1=9\t2=Alterna\t3=0\t"), "9");
    EXPECT_EQ(celda(buscar("PLANA", "CUENTA=9"), 1, "TITULO"), "Alterna");
    EXPECT_EQ(cambiar("DATOS", "1=4300000001\t2=Peña\t"), "4300000001");
    EXPECT_THAT(buscar("DATOS", "NOMBRE LIKE *peñ*"), HasSubstr("4300000001\tPeña\t"));
    EXPECT_EQ(cambiar("PRESU", "1=6290000000\t2=Otros\t3=0\t"), "6290000000");
    EXPECT_THAT(buscar("PRESU", "CUENTA=6290000000"), HasSubstr("\tOtros\t"));
    EXPECT_EQ(hacer("BORRARCUENTA", "<CUENTA>4300000001</CUENTA>"), "OK");
    EXPECT_EQ(buscar("PLANC", "CUENTA=4300000001"), "");
    EXPECT_EQ(buscar("DATOS", "CUENTA=4300000001"), "");

    EXPECT_EQ(hacer("GETGUID", "<ASIENTO>000009</ASIENTO>"), "");
    EXPECT_EQ(hacer("SETGUID", "<ASIENTO>000009</ASIENTO><VALOR>abc</VALOR>"), "OK");
    EXPECT_EQ(hacer("GETGUID", "<ASIENTO>000009</ASIENTO>"), "abc");
    EXPECT_EQ(hacer("SETGUID", "<ASIENTO>000010</ASIENTO><VALOR>abc</VALOR>"), "OK");
    EXPECT_EQ(hacer("GETASIENTOS", "<GUID>abc</GUID>"), "000009\t000010");
    EXPECT_THAT(hacer("GETFECHAS", "<ASIENTO>000009</ASIENTO>"), Not(StartsWith("ERROR")));
    EXPECT_EQ(hacer("SETGUID", "<ASIENTO>000011</ASIENTO>"), "OK");
    EXPECT_EQ(hacer("GETGUID", "<ASIENTO>000011</ASIENTO>").size(), 36U);
}

// What is wrong anywhere in a form leaves the books as they were.
TEST_F(EnlaceProceso, LoQueNoEsUnAsientoNoSeGraba) {
    const std::string bueno = apunte("5700000000", "5", "1");
    const std::string dos = "<ASIENTOS><ASIENTO NUMERO='(Auto)' FECHA='15/03/2026'><APUNTES>" + bueno +
                            "</APUNTES></ASIENTO><ASIENTO NUMERO='(Auto)' FECHA='15/03/2031'><APUNTES>" +
                            bueno + "</APUNTES></ASIENTO></ASIENTOS>";
    std::vector<std::string> malas = {
        formaAsiento(bueno, ""),
        formaAsiento(bueno, "hoy"),
        formaAsiento(bueno, "15/13/2026"),
        formaAsiento(bueno + apunte("5700000000", "cinco", "1")),
        formaAsiento(bueno, "15/03/2026", "<IVAS><IVA CUENTA='4300000001' BASE='1,5x'/></IVAS>"),
        dos};
    for (const char* importe : {"", "1-2", "1.2.3", "--5", "E", ".", "1e999", "1E300", "nan", "1E", "5 5"})
        malas.push_back(formaAsiento(bueno + apunte("5700000000", importe, "1")));
    for (const char* tipo : {"", "0", "5", "x", "-2", "99999"})
        malas.push_back(formaAsiento(bueno + apunte("5700000000", "5", tipo)));
    malas.push_back(formaAsiento(bueno + apunte(" ", "5", "1")));
    malas.push_back(formaAsiento(bueno + "<APUNTE/>"));
    malas.push_back(formaAsiento(""));
    malas.push_back(
        formaAsiento("", "15/03/2026", "<ANALITICA><ANALI CUENTA='57' IMPORTE='5'/></ANALITICA>"));
    malas.push_back(formaAsiento(
        bueno, "15/03/2026", "<CARTERAS><CARTERA CUENTA='57' TOTAL='5' FECHA_VTO='99/99/99'/></CARTERAS>"));
    for (const char* numero : {"1234567", "a/b", " 5"}) {
        std::string forma = formaAsiento(bueno);
        forma.replace(forma.find("(Auto)"), 6, numero);
        malas.push_back(forma);
    }
    for (const std::string& mala : malas) {
        EXPECT_THAT(hacer("GRABARASIENTO", mala), StartsWith("ERROR")) << mala;
    }
    EXPECT_EQ(buscar("EXTRA"), "");
    EXPECT_EQ(hacer("GRABARASIENTO", formaAsiento(bueno)), "000002") << "no number was spent";
    const std::string larga = hacer("LEERASIENTO", "<POSICION>" + std::string(5000, 'x') + "\n</POSICION>");
    EXPECT_THAT(larga, StartsWith("ERROR"));
    EXPECT_LE(larga.size(), 300U) << "what is not understood is not sent back whole";
    servicio.terminar();
    EXPECT_THAT(servicio.carpeta().leer("raiz/registro/servicio.log"), Not(HasSubstr(std::string(300, 'X'))));
}

// Two sessions, each on a company of its own, at the same time: neither sees the other's.
TEST_F(EnlaceProceso, DosSesionesEnDosEmpresas) {
    EXPECT_EQ(ana.en("Otros", "CREAREMPRESA", "<VALOR>/C/A=25/Z=1</VALOR>"), "OK");
    constexpr int veces = 25;
    const auto llenar = [&](const std::string& empresa, const std::string& fecha) {
        ClienteEnlace una(servicio.puerto());
        una.entrar("ANA", "secreta1");
        for (int i = 0; i < veces; ++i) {
            una.en(empresa, "GRABARASIENTO", formaAsiento(apunte("5700000000", "3", "1", empresa), fecha));
            EXPECT_THAT(una.en(empresa, "LEERASIENTO", "<POSICION>ULTIMO</POSICION>"),
                        HasSubstr("DESCRIPCION=\"" + empresa + "\""));
        }
    };
    std::thread otra([&] { llenar("Otros", "15/03/2025"); });
    llenar("Libros", "15/03/2026");
    otra.join();
    for (const char* empresa : {"Libros", "Otros"}) {
        // One session may also go from one to the other.
        const std::string filas =
            ana.en(empresa, "BUSCAR", "<FILTER>CUENTA=5700000000</FILTER><ARCHIVO>EXTRA</ARCHIVO>");
        EXPECT_EQ(std::ranges::count(filas, '\n'), veces + 1) << empresa;
        EXPECT_EQ(celda(filas, veces, "DESCRIPCION"), empresa);
        EXPECT_EQ(ana.en(empresa, "GETTOTAL", "<VALOR>CARGOSA</VALOR>"), std::to_string(3 * veces));
    }
}

TEST_F(EnlaceProceso, TrasUnaMuerteSeVuelveAEntrar) {
    ASSERT_EQ(hacer("GRABARASIENTO", formaAsiento(apunte("5700000000", "5", "1"))), "000002");
    servicio.matar();
    EXPECT_EQ(hacer("LEEREMPRESAS"), "sin respuesta");
    servicio.arrancar();
    EXPECT_THAT(hacer("LEEREMPRESAS"), StartsWith("ERROR: no hay ninguna sesión"));
    ana.entrar("ANA", "secreta1");
    EXPECT_EQ(celda(buscar("EXTRA"), 1, "IMPORTE"), "5");
    EXPECT_EQ(hacer("GRABARASIENTO", formaAsiento(apunte("5700000000", "6", "1"))), "000003");
}

// A disk that fails under the books is told; nothing is called stored that is not.
TEST(EnlaceDisco, UnDiscoQueFallaSeDice) {
    const auto propio = platform::crearSistemaArchivos();
    ArchivosDefectuosos archivos(*propio);
    const ServicioEnMarcha marcha(archivos);
    ClienteEnlace ana(marcha.servicio->puerto());
    ana.entrar("ANA", "secreta1");
    const std::string asiento = formaAsiento(apunte("5700000000", "5", "1"));
    ASSERT_EQ(ana.en("Libros", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    ASSERT_EQ(ana.en("Libros", "GRABARASIENTO", asiento), "000002");
    archivos.fallar({.operacion = Operacion::escribir, .mascara = "EXTRA*", .siempre = true});
    EXPECT_THAT(ana.en("Libros", "GRABARASIENTO", asiento), StartsWith("ERROR"));
    archivos.sanar();
    EXPECT_THAT(ana.en("Libros", "GRABARASIENTO", asiento), Not(StartsWith("ERROR")));
    const std::string filas = ana.en("Libros", "BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO>");
    EXPECT_EQ(std::ranges::count(filas, '\n'), 3) << filas;
}

}  // namespace
}  // namespace tarvoline::pruebas
