// What the remote side of the link makes of answers, good and bad ones, and of a service that goes away.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "apoyo_remoto.h"

namespace tarvoline::pruebas {
namespace {

namespace error = link::error_enlace;

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
    std::string muchas = "CUENTA\n";
    constexpr int cuantas = 2'000'000;
    for (int i = 0; i < cuantas; ++i)
        muchas += "4300000001\n";
    respuestas["BUSCAR"] = muchas;
    EXPECT_EQ(enlace.ExisteReferencia("x"), cuantas) << "more than other answers may hold";
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

// The invoice stands in the year before, a collection of it in this one.
TEST_F(Remoto, UnaFacturaEnDosAños) {
    abrir();
    const std::string titulos = "CLIENTE/PROVEEDOR\tFECHA COBRO/PAGO\tLIQUIDO\n";
    const std::string deEste = "EMPRESA>M&#237;a</EMPRESA>\r\n<FILTER",
                      delOtro = "EMPRESA>Antes</EMPRESA>\r\n<FILTER";
    respuestas[deEste] = titulos + "43\t20/01/26\t21\n";
    respuestas[delOtro] = titulos + "43\t\t121\n";
    respuestas["VALOR>Empresa Anterior"] = " C:\\Datos\\Antes.QZT ";
    EXPECT_EQ(enlace.TotalPendiente("43", "F 1", "14/12/2025"), 100);
    EXPECT_EQ(ultima(),
              "<BUSCAR>\r\n<ID>tok</ID>\r\n<EMPRESA>Antes</EMPRESA>\r\n"
              "<FILTER>CLIENTE/PROVEEDOR = 43 and factura No. = F 1 and FECHA FACTURA  =14/12/25</FILTER>\r\n"
              "<ARCHIVO>IVA01</ARCHIVO>\r\n</BUSCAR>");
    respuestas["EMPRESAEXISTS"] = "NO";
    EXPECT_EQ(enlace.TotalPendiente("43", "F 1"), -21);
    respuestas[deEste].clear();
    esperarError([&] { enlace.TotalPendiente("43", "F 1"); }, error::facturaNoExiste,
                 "No existe la factura F 1 para el cliente/proveedor 43");
}

TEST_F(Remoto, PreguntasQueSobran) {
    abrir();
    respuestas["BUSCAR"] = "CUENTA\n43\n";
    EXPECT_EQ(enlace.LeerExtractoEx("43*"), "") << "a text is of one account";
    EXPECT_EQ(enlace.LeerPlanEx(1, "", "", "", "", 2), 0) << "nothing lies before nothing";
    enlace.LeerExtracto("");
    EXPECT_THROW(enlace.AnularCartera("", "ayer", "", "", ""), link::ErrorEnlace);
    EXPECT_TRUE(formas.empty());
    EXPECT_EQ(enlace.LeerPlanEx(1, "", "", "", "", 1), 1);
    enlace.AnularCartera("", "1/2/2026", "31/12/2026", "", "");
    EXPECT_THAT(ultima(), testing::HasSubstr(
                              "FECHA VENCIMIENTO =&#62; 01/02/26 AND FECHA VENCIMIENTO =&#60; 31/12/26<"));
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
