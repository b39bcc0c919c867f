// The remote side of the link: who may come in, and the forms byte by byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo_remoto.h"
#include "link/remoto/formas.h"

namespace tarvoline::pruebas {
namespace {

namespace error = link::error_enlace;
using link::remoto::cambioDeCampo;
using link::remoto::elementoEntero;
using link::remoto::formaCampos;
using link::remoto::formaSimple;
using testing::ElementsAre;

TEST(FormasRemotas, ByteAByte) {
    EXPECT_EQ(formaSimple({"t1", "", ""}, "LEEREMPRESAS", "", ""),
              std::string(cabecera) + "<LEEREMPRESAS><ID>t1</ID></LEEREMPRESAS>");
    EXPECT_EQ(formaSimple({"t1", "CARP", "Peña & Cía"}, "GETTOTAL", "a<b", "NIVEL"),
              std::string(cabecera) +
                  "<GETTOTAL>a&#60;b<ID>t1</ID><CARPETA>CARP</CARPETA>\r\n"
                  "<EMPRESA>Pe&#241;a &#38; C&#237;a</EMPRESA>\r\n<VALOR>NIVEL</VALOR>\r\n</GETTOTAL>");
    EXPECT_EQ(
        formaCampos({"t1", "", "E"}, "LEERASIENTO", {"FECHA=15/03/26", "ASIENTO=", "", "POSICION=PROXIMO"}),
        std::string(cabecera) +
            "<LEERASIENTO>\r\n<ID>t1</ID>\r\n<EMPRESA>E</EMPRESA>\r\n<FECHA>15/03/26</FECHA>\r\n"
            "<ASIENTO></ASIENTO>\r\n<POSICION>PROXIMO</POSICION>\r\n</LEERASIENTO>");
    EXPECT_EQ(formaCampos({"t1", "C", ""}, "X", {}),
              std::string(cabecera) + "<X>\r\n<ID>t1</ID>\r\n<CARPETA>C</CARPETA>\r\n</X>");
}

// The separator is the colon when it stands before the first "=", and a value ends at the next one.
TEST(FormasRemotas, ElementosYSusSeparadores) {
    const struct {
        std::string elemento, campo;
    } casos[] = {
        {"CUENTA=430:1", "<CUENTA>430:1</CUENTA>"},
        {"FILTER:A=1", "<FILTER>A=1</FILTER>"},
        {"FILTER:A=1:B", "<FILTER>A=1</FILTER>"},
        {"CUENTA=430=1", "<CUENTA>430</CUENTA>"},
        {"SOLO", "<SOLO></SOLO>"},
        {"GUID:x", "<GUID>x</GUID>"},
        {elementoEntero("FILTER", "T LIKE a:b:c=1"), "<FILTER>T LIKE a&#58;b&#58;c=1</FILTER>"},
        {"V=<\"€\">", "<V>&#60;\"&#128;\"&#62;</V>"},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(formaCampos({"", "", ""}, "X", {caso.elemento}),
                  cabecera + ("<X>\r\n<ID></ID>\r\n" + caso.campo + "\r\n</X>"));
    }
}

TEST(FormasRemotas, CambiosDeCampos) {
    EXPECT_EQ(cambioDeCampo(13, "a=b=c"), "13=a-b-c\t");
    EXPECT_EQ(cambioDeCampo(13, 4, "x=y"), "13+4=x-y\t");
    EXPECT_EQ(cambioDeCampo(3, "dos\tlíneas\r\n"), "3=dos líneas  \t");
    EXPECT_EQ(cambioDeCampo(3, "-1") + cambioDeCampo(3, 4, "-1"), "");
    EXPECT_EQ(cambioDeCampo(3, ""), "3=\t");
}

TEST_F(Remoto, QuienEntra) {
    EXPECT_FALSE(enlace.ModoRemoto());
    esperarError([&] { enlace.LeerCarpetas(); }, error::soloEnRemoto,
                 "Esta opción solo está disponible con enlace a Veldorix Online");
    entrada = "error: no";
    esperarError([&] { entrar(); }, error::entradaRehusada, "error: no", "");
    entrada = "tok\tANA\t02\tU1\tAna\t2";
    esperarError([&] { entrar(); }, error::noDisponible,
                 "Solo administradores o usuarios limitados (tipo 01) pueden acceder al web service");
    entrada = "espere";  // neither in nor refused
    entrar();
    EXPECT_FALSE(enlace.ModoRemoto());

    entrada = "tok\tANA\t01\tU1";
    respuestas["LEEREMPRESAS"] = "Una\r\nDos, S.L.\n\n";
    entrar();
    EXPECT_TRUE(enlace.ModoRemoto());
    EXPECT_THAT(enlace.Empresas(), ElementsAre("Una", "Dos, S.L."));
    EXPECT_THAT(enlace.LeerCarpetas(), ElementsAre("U1"));
    esperarError([&] { enlace.Carpeta("U2"); }, error::soloAdministradores,
                 "Esta opción solo está disponible para administradores");
    entrada = "tok\tJEFA\t00\tU1\t\t";
    entrar();
    respuestas["LEERCARPETASVELDORIX2"] = "U1,U2";
    EXPECT_THAT(enlace.LeerCarpetas(), ElementsAre("U1", "U2"));
    respuestas["LEERCARPETASVELDORIX2"] = "";
    EXPECT_THAT(enlace.LeerCarpetas(), ElementsAre());
    enlace.Carpeta("U2");
    enlace.LoadEmpresas();
    EXPECT_EQ(ultima(), "<LEEREMPRESAS><ID>tok</ID><CARPETA>U2</CARPETA>\r\n</LEEREMPRESAS>");
    EXPECT_THROW(enlace.GrabarAsiento(), link::ErrorEnlace) << "no company";
}

TEST_F(Remoto, LaEmpresaYSuClave) {
    respuestas["EMPRESAEXISTS"] = "NO";
    entrar();
    esperarError([&] { enlace.AbrirEmpresa("Mía"); }, error::empresaNoExiste,
                 "Empresa Veldorix no existe: \nMía");
    respuestas["EMPRESAEXISTS"] = "ERROR: nada";
    esperarError([&] { enlace.AbrirEmpresa("Mía"); }, error::empresaNoExiste,
                 "Empresa Veldorix no existe: \nMía");
    respuestas["EMPRESAEXISTS"] = "SI";
    respuestas["VALOR>PASSWORD1"] = " sal ";
    esperarError([&] { enlace.AbrirEmpresa("Mía", "otra"); }, error::claveNoValida,
                 "Password Empresa Veldorix no válido: \nMía");
    respuestas["VALOR>A&#209;O"] = "26";
    respuestas["VALOR>APERTURA"] = "01";
    enlace.AbrirEmpresa("Mía", "sal");
    EXPECT_EQ(enlace.NumeroEmpresa() + enlace.año(3), "Mía26");
    EXPECT_THROW(enlace.Fecha("15/03/27"), link::ErrorEnlace);
    respuestas["CREAREMPRESA"] = "ERROR: existe";
    esperarError([&] { enlace.CrearEmpresa({.NombreEmpresa = "Nueva", .año = "2026"}); }, error::noDisponible,
                 "Esta opción no está disponible con enlace a Veldorix Online");
}

TEST_F(Remoto, ElDocumentoDeUnAsiento) {
    abrir();
    respuestas["GRABARASIENTO"] = "000012";
    enlace.Fecha("15/03/26");
    enlace.Número("");
    EXPECT_EQ(enlace.Número(), "(Auto)");
    enlace.Canal("7");
    enlace.AñadirApunte("5700000000", " Ñandú \"&\" <a>\tb ", 1, 121.5, "1", 0, "N", "R=1", "nota");
    link::IVAClass iva;
    iva.CuentaClienteProveedor = "4300000001";
    iva.CuentaIVA = "4770000021";
    iva.Factura = "F1";
    iva.FechaFactura = "14/03/26";
    iva.TipoIva = "1";
    iva.Base = 100;
    iva.TOTAL = 121;
    iva.NIF = "B1";
    enlace.AñadirIVA(iva);
    enlace.AñadirCartera("15/04/26", "4300000001", "BANCO", "n", 121);
    enlace.AñadirAnalitica("6290000000", "1001", "a", 1, 5);
    EXPECT_EQ(enlace.GrabarAsiento(), 12);
    EXPECT_EQ(
        ultima(),
        "<GRABARASIENTO>\r\n<ID>tok</ID>\r\n<EMPRESA>M&#237;a</EMPRESA>\r\n<ASIENTOS>\r\n"
        "<ASIENTO NUMERO='(Auto)' FECHA='15/03/2026'>\r\n"
        "<APUNTES>\r\n"
        " <APUNTE CUENTA=\"5700000000\" DESCRIPCION=\"&#209;and&#250; &#34;&#38;&#34; &#60;a&#62; b\" "
        "REFERENCIA=\"R=1\" CANAL=\"007\" IMPORTE=\"121.5\" TIPO=\"1\" NOTAS=\"nota\"  DIARIO=\"1\" />\r\n"
        "</APUNTES>\r\n"
        "<IVAS>\r\n"
        " <IVA CUENTA=\"4300000001\" FACTURA=\"F1\" FECHA_FRA=\"14/03/2026\" BASE=\"100\" TIPO=\"1\" "
        "CUOTA=\"21\" TOTAL=\"121\" ORDEN=\"\" TITULO=\"\" CTA_IVA=\"4770000021\" NIF=\"B1\" />\r\n"
        "</IVAS>\r\n"
        "<CARTERAS>\r\n"
        " <CARTERA CUENTA=\"4300000001\" CA=\"BANCO\" NOTAS=\"n\" FECHA_VTO=\"15/04/2026\" TOTAL=\"121\" "
        "TITULO=\"\" />\r\n"
        "</CARTERAS>\r\n"
        "<ANALITICA>\r\n"
        " <ANALI CUENTA=\"6290000000\" CODANALI=\"1001\" DESCRIPCION=\"a\" IMPORTE=\"5\" TITULO=\"\" />\r\n"
        "</ANALITICA>\r\n"
        "</ASIENTO>\r\n</ASIENTOS>\r\n</GRABARASIENTO>\r\n");
    EXPECT_EQ(enlace.Número(), "000012") << "the number that the service drew";
    EXPECT_EQ(enlace.ContadorApuntes() + enlace.ContadorIva(), 0);

    enlace.AñadirApunte("57", "x", 1, 1);
    respuestas["GRABARASIENTO"] = "Error: lleno";
    esperarError([&] { enlace.GrabarAsiento(); }, error::noDisponible, "Error: lleno");
    EXPECT_FALSE(enlace.HayPendientes()) << "in every case";
    auto veces = formas.size();
    enlace.GrabarAsiento();
    EXPECT_EQ(formas.size(), veces) << "nothing is pending";
    enlace.AñadirApunte("57", "x", 1, 1);
    enlace.CerrarEmpresa();
    abrir();
    veces = formas.size();
    EXPECT_TRUE(enlace.HayPendientes());
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
    EXPECT_EQ(formas.size(), veces) << "an entry without a line";
    EXPECT_FALSE(enlace.HayPendientes());
}

TEST_F(Remoto, LasFormasDeLasDemas) {
    abrir();
    respuestas["UPDATE"] = "4300000009";
    const std::string empresa = "<ID>tok</ID>\r\n<EMPRESA>M&#237;a</EMPRESA>\r\n";
    std::string cuenta = "4300*";
    struct Caso {
        std::function<void()> llamar;
        std::string forma;
    };
    const std::string filtroEfect =
        "<FILTER>CARTERA/BANCO=B AND FECHA VENCIMIENTO =&#62; 01/01/26 AND FECHA VENCIMIENTO =&#60; 31/01/26 "
        "AND CUENTA=43 AND ASIENTO CONTABLE=000001</FILTER>\r\n";
    const Caso casos[] = {
        {[&] { enlace.LeerAsiento("15/03/26", "000002"); },
         "<LEERASIENTO>\r\n" + empresa +
             "<FECHA>15/03/26</FECHA>\r\n<ASIENTO>000002</ASIENTO>\r\n</LEERASIENTO>"},
        {[&] { enlace.LeerUltimoAsiento(); },
         "<LEERASIENTO>\r\n" + empresa +
             "<FECHA></FECHA>\r\n<ASIENTO></ASIENTO>\r\n<POSICION>ULTIMO</POSICION>\r\n</LEERASIENTO>"},
        {[&] { enlace.LeerAnteriorAsiento(); }, "<LEERASIENTO>\r\n" + empresa +
                                                    "<FECHA>15/03/26</FECHA>\r\n<ASIENTO>000002</ASIENTO>\r\n"
                                                    "<POSICION>ANTERIOR</POSICION>\r\n</LEERASIENTO>"},
        {[&] { enlace.AnularAsiento("16/03/2026", "000003"); },
         "<ANULARASIENTO>\r\n" + empresa +
             "<FECHA>16/03/26</FECHA>\r\n<ASIENTO>000003</ASIENTO>\r\n</ANULARASIENTO>"},
        {[&] { enlace.AnularApuntePorReferencia("R:1=2"); },
         "<ANULARASIENTO>\r\n" + empresa +
             "<REFERENCIA>REFERENCIA=R&#58;1=2</REFERENCIA>\r\n</ANULARASIENTO>"},
        {[&] { enlace.AnularCuenta("43"); },
         "<BORRARCUENTA>\r\n" + empresa + "<CUENTA>43</CUENTA>\r\n</BORRARCUENTA>"},
        {[&] { enlace.BuscarImporte(-12.5); },
         "<BUSCAR>\r\n" + empresa +
             "<FILTER>ABS(IMPORTE)= -12.5</FILTER>\r\n<ARCHIVO>EXTRA</ARCHIVO>\r\n</BUSCAR>"},
        {[&] { enlace.LeerPlanEx(8, "1", "", "", "2"); },
         "<BUSCAR>\r\n" + empresa +
             "<FILTER>CUENTA&#62;=1 AND CUENTA&#60;=2</FILTER>\r\n<ARCHIVO>Costo</ARCHIVO>\r\n</BUSCAR>"},
        {[&] { enlace.LeerDatos("", "ana"); },
         "<BUSCAR>\r\n" + empresa +
             "<FILTER>NOMBRE LIKE *ana*</FILTER>\r\n<ARCHIVO>DATOS</ARCHIVO>\r\n</BUSCAR>"},
        {[&] { enlace.LeerDatos("4300000001"); },
         "<BUSCAR>\r\n" + empresa +
             "<FILTER>CUENTA = 4300000001</FILTER>\r\n<ARCHIVO>DATOS</ARCHIVO>\r\n</BUSCAR>"},
        {[&] { enlace.CrearCuenta(cuenta, "T=1: x", "-1", true, "-1"); },
         "<UPDATE>\r\n" + empresa +
             "<CAMPOS>1=4300*\t2=T-1&#58; x\t6=1\t</CAMPOS>\r\n<ARCHIVO>PLANC</ARCHIVO>\r\n</UPDATE>"},
        {[&] { enlace.CrearDatos({.Cuenta = "43", .NIF = "B", .Riesgo = "5"}); },
         "<UPDATE>\r\n" + empresa +
             "<CAMPOS>1=43\t3=B\t12=5\t</CAMPOS>\r\n<ARCHIVO>DATOS</ARCHIVO>\r\n</UPDATE>"},
        {[&] { enlace.ModificarPresupuesto("62", 3, -1); },
         "<UPDATE>\r\n" + empresa +
             "<CAMPOS>1=62\t14=-1\t</CAMPOS>\r\n<ARCHIVO>PRESU</ARCHIVO>\r\n</UPDATE>"},
        {[&] { enlace.MarcarCartera("M", "B", "01/01/26", "31/01/26", "43", "000001"); },
         "<FILTERUPDATE>\r\n" + empresa + filtroEfect +
             "<CAMPOS>7=M\t</CAMPOS>\r\n<ARCHIVO>EFECT</ARCHIVO>\r\n</FILTERUPDATE>"},
        {[&] { enlace.AnularCartera("B", "01/01/26", "31/01/26", "43", "000001"); },
         "<FILTERBORRAR>\r\n" + empresa + filtroEfect + "<ARCHIVO>EFECT</ARCHIVO>\r\n</FILTERBORRAR>"},
        {[&] { enlace.GUID("000001", "g"); },
         "<SETGUID>\r\n" + empresa + "<ASIENTO>000001</ASIENTO>\r\n<VALOR>g</VALOR>\r\n</SETGUID>"},
        {[&] { enlace.LeerAsientosGuid("g"); },
         "<GETASIENTOS>\r\n" + empresa + "<GUID>g</GUID>\r\n</GETASIENTOS>"},
        {[&] { enlace.Config("NIVEL", "a=b"); },
         "<PUTTOTAL><ID>tok</ID><EMPRESA>M&#237;a</EMPRESA>\r\n<VALOR>NIVEL=a=b</VALOR>\r\n</PUTTOTAL>"},
    };
    for (const Caso& caso : casos) {
        caso.llamar();
        EXPECT_EQ(ultima(), caso.forma);
        EXPECT_EQ(enlace.Número(), "000002") << "no entry, no move";
    }
    EXPECT_EQ(cuenta, "4300000009") << "the account that the service numbered";
}

}  // namespace
}  // namespace tarvoline::pruebas
