// The remote side of the link: the forms byte by byte, and what it makes of answers, good and bad ones, from
// a service that plays a script.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/servidor_guion.h"
#include "apoyo/variables_proceso.h"
#include "apoyo_enlace.h"
#include "link/remoto/formas.h"
#include "soap/servidor.h"

namespace tarvoline::pruebas {
namespace {

namespace error = link::error_enlace;
using link::remoto::cambioDeCampo;
using link::remoto::elementoEntero;
using link::remoto::formaCampos;
using link::remoto::formaSimple;
using testing::ElementsAre;

constexpr const char* cabecera = "<?xml version=\"1.0\" standalone=\"yes\" ?>\r\n";

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

// A service that answers what the test says, and keeps what it was asked.
struct Remoto : testing::Test, MundoEnlace {
    Remoto() {
        variables.poner("no_proxy", "127.0.0.1");
        enlace.CerrarEmpresa();
    }
    static soap::Contrato contrato() {
        return {"S",
                "urn:prueba",
                {{"ID", {{"u"}, {"c"}}}, {"VXWebService", {{"x"}, {"s", soap::TipoValor::texto, true}}}}};
    }
    Actuacion actuar(const PeticionGuion& peticion) {
        if (peticion.metodo == "GET") {
            return Actuacion::http(200, "text/xml",
                                   soap::EscribirWsdl(contrato(), servidor.url("/vxenlace.asmx")));
        }
        const soap::Contrato suyo = contrato();
        const soap::PeticionSoap llamada = soap::LeerPeticion(suyo, peticion.cuerpo);
        const auto& texto = std::get<std::string>(llamada.argumentos[0]);
        if (llamada.operacion->nombre == "ID") return dar(suyo, llamada, entrada);
        formas.push_back(texto.substr(std::string(cabecera).size()));
        if (cortado) return Actuacion::cortar();
        for (const auto& [parte, respuesta] : respuestas) {
            if (texto.find("<" + parte) != std::string::npos) return dar(suyo, llamada, respuesta);
        }
        return dar(suyo, llamada, "");
    }
    static Actuacion dar(const soap::Contrato& contrato, const soap::PeticionSoap& llamada,
                         const std::string& texto) {
        return Actuacion::http(200, "text/xml", soap::EscribirRespuesta(contrato, llamada, texto));
    }
    void entrar() { enlace.Login("ANA", "clave", servidor.url("")); }
    // In, with a company of 2026.
    void abrir() {
        respuestas["EMPRESAEXISTS"] = "SI";
        respuestas["GETTOTAL"] = "26";
        entrar();
        respuestas.erase("GETTOTAL");
        respuestas["VALOR>AÑO"] = "26";
        respuestas["VALOR>A&#209;O"] = "26";
        respuestas["VALOR>APERTURA"] = "01";
        enlace.AbrirEmpresa("Mía");
        formas.clear();
    }
    const std::string& ultima() const { return formas.back(); }

    VariablesProceso variables;
    std::string entrada = "tok\tANA\t01\tU1\tAna\t2";
    std::map<std::string, std::string> respuestas;  // by what the form has in it
    std::vector<std::string> formas;                // without their head
    bool cortado = false;
    ServidorGuion servidor{[this](const PeticionGuion& peticion) { return actuar(peticion); }};
};

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
    const auto veces = formas.size();
    enlace.GrabarAsiento();
    EXPECT_EQ(formas.size(), veces) << "nothing is pending";
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

TEST_F(Remoto, LosErroresDeCadaUna) {
    abrir();
    respuestas.clear();
    for (const char* operacion :
         {"UPDATE", "BORRARCUENTA", "ANULARASIENTO", "BUSCAR", "LEERASIENTO", "SETGUID"})
        respuestas[operacion] = "eRRor: no";
    std::string cuenta = "1";
    const struct {
        std::function<void()> llamar;
        std::uint32_t numero;
    } casos[] = {{[&] { enlace.CrearCuenta(cuenta, ""); }, error::errorIndexados},
                 {[&] { enlace.CrearAnalitica(cuenta, ""); }, error::errorIndexados},
                 {[&] { enlace.CrearDatos({.Cuenta = "1"}); }, error::errorIndexados},
                 {[&] { enlace.CrearPresupuesto("1", ""); }, error::errorIndexados},
                 {[&] { enlace.AnularCuenta("1"); }, error::errorIndexados},
                 {[&] { enlace.AnularApuntePorReferencia("1"); }, error::errorIndexados},
                 {[&] { enlace.AnularAsiento("15/03/26", "1"); }, error::noDisponible},
                 {[&] { enlace.LeerPrimerAsiento(); }, error::noDisponible},
                 {[&] { enlace.LeerCartera(); }, error::noDisponible}};
    for (const auto& caso : casos)
        esperarError(caso.llamar, caso.numero, "eRRor: no");
    esperarError([&] { enlace.GUID("1", ""); }, error::sinGuid, "Error al crear un GUID", "");
    const std::string noEsta = "Esta opción no está disponible con enlace a Veldorix Online";
    for (const std::function<void()>& llamar : std::initializer_list<std::function<void()>>{
             [&] { enlace.AnularApuntePorRegistro(1); }, [&] { enlace.LeerReferencia("1"); },
             [&] { enlace.LeerInmovilizado(); }, [&] { enlace.CrearInmovilizado({}); },
             [&] { enlace.LeerDatosGlobales(); }, [&] { enlace.CrearDatosGloblales({}); },
             [&] { enlace.ExisteNifDatosGlobales(""); }, [&] { enlace.Util_LeerDatos("DATOS"); },
             [&] { enlace.LeerExtracto("1", "", "", 10); }}) {
        esperarError(llamar, error::noDisponible, noEsta);
    }
}

// An answer is read as far as it is one; nothing of a bad one stays.
TEST_F(Remoto, RespuestasDeTodaClase) {
    abrir();
    const auto leer = [&](const std::string& respuesta) {
        respuestas["LEERASIENTO"] = respuesta;
        enlace.LeerPrimerAsiento();
    };
    leer(
        "<R><ASIENTOS><ASIENTO NUMERO='000004' FECHA='31/12/2026'><APUNTES><A CUENTA='&#241;\"&amp;' "
        "TIPO='2' "
        "IMPORTE='1.234,5'/><!-- nada --><A/></APUNTES><OTRA><A CUENTA='x'/></OTRA><x:APUNTESIVA><I BASE='2' "
        "FECHA_FRA='C60315'/></x:APUNTESIVA><APUNTESCARTERA><C "
        "IMPORTE='7'/></APUNTESCARTERA></ASIENTO></ASIENTOS></R>");
    EXPECT_EQ(enlace.Fecha() + enlace.Número(), "261231000004");
    ASSERT_EQ(enlace.ContadorApuntes(), 2);
    EXPECT_EQ(enlace.Apunte(1)->Cuenta, "ñ\"&");
    EXPECT_EQ(enlace.Apunte(1)->Importe, 1234.5);
    EXPECT_EQ(enlace.Apunte(2)->Cuenta + enlace.Apunte(2)->Canal, "");
    EXPECT_EQ(enlace.iva(1)->FechaFactura, "15/03/26");
    EXPECT_EQ(enlace.cartera(1)->Importe, 7);
    EXPECT_TRUE(enlace.HayPendientes()) << "as on files: who stores has it twice";
    leer("<R><ASIENTOS/></R>");
    EXPECT_EQ(enlace.ContadorApuntes(), 0);
    EXPECT_EQ(enlace.Número(), "000004") << "nobody there, no move";
    for (const char* mala : {"esto no es XML", "<R><ASIENTOS><ASIENTO", "<R><A><B NUMERO='1'/></A></R>",
                             "<R><A><ASIENTO NUMERO='1' FECHA='ayer'/></A></R>",
                             "<!DOCTYPE r [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><R>&x;</R><R/>"}) {
        try {
            leer(mala);
        } catch (const link::ErrorEnlace& fallo) {
            EXPECT_NE(fallo.numero(), 0U);
        }
        EXPECT_EQ(enlace.ContadorApuntes(), 0) << mala;
        EXPECT_EQ(enlace.Número(), "000004") << mala;
    }
    leer(std::string(8, '\n') + "<R>" + std::string(2'000'000, ' ') + "</R>");
    EXPECT_EQ(enlace.ContadorApuntes(), 0);

    respuestas["BUSCAR"] = "CUENTA\tTITULO\tDEBE ENERO\tSOBRA\r\n\n4300\tUno\t12,5\n4301\n";
    EXPECT_EQ(enlace.LeerPlanEx(1, "*"), 2);
    EXPECT_EQ(enlace.PlanDebe(1, 1), 12.5);
    EXPECT_EQ(enlace.Plan(2)->Cuenta + enlace.Plan(2)->titulo, "4301");
    respuestas["BUSCAR"] = "";
    EXPECT_EQ(enlace.ExisteReferencia("x"), 0);
    EXPECT_EQ(enlace.LeerDatos(), 0);
    for (const char* mala : {"no es", "<TIPOSIVA", "<T><TIPOIVA>TIPO</TIPOIVA></T>"}) {
        respuestas["LEERTIPOSIVA"] = mala;
        try {
            EXPECT_EQ(enlace.tiposiva(1)->Cuota, 0) << mala;
        } catch (const link::ErrorEnlace& fallo) {
            EXPECT_EQ(fallo.numero(), error::noDisponible) << mala;
        }
    }
}

TEST_F(Remoto, ElServicioSeVaYVuelve) {
    abrir();
    enlace.Fecha("15/03/26");
    enlace.Número("");
    enlace.AñadirApunte("57", "x", 1, 1);
    cortado = true;
    EXPECT_THROW(enlace.GrabarAsiento(), soap::ErrorServicio);
    EXPECT_FALSE(enlace.HayPendientes());
    EXPECT_THROW(enlace.LeerUltimoAsiento(), soap::ErrorServicio);
    cortado = false;
    respuestas["LEERASIENTO"] = "<R><A><ASIENTO NUMERO='000009' FECHA='01/02/2026'/></A></R>";
    enlace.LeerUltimoAsiento();
    EXPECT_EQ(enlace.Número(), "000009");
}

}  // namespace
}  // namespace tarvoline::pruebas
