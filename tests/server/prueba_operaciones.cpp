// What the operations answer, and the two that carry no credential.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/historial.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using namespace std::chrono_literals;
using pruebas::ClientePrueba;
using pruebas::ServicioEnMarcha;
namespace respuesta = server::respuesta;

TEST(Operaciones, DescribeAUserAndTellTheCapacityOfHisOwnAccountOnly) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    ClientePrueba dora = servicio.cliente("DORA", "secreta4");
    EXPECT_EQ(ana.con("DatosUsuario"), "1-ANA-AC01-Ana López");
    EXPECT_EQ(dora.con("DatosUsuario"), "4-DORA--");
    EXPECT_EQ(ana.con("Carpetaraizusuario"), "D:\\VX\\U0000001\\");
    for (const auto& [cuenta, gb] :
         std::map<std::string, std::string>{{"AC01", "1"}, {"ac01", "1"}, {"AC02", "0"}, {"", "0"}}) {
        EXPECT_EQ(ana.con("CapacidadContratada", {{"codigoCuenta", cuenta}}), gb) << cuenta;
    }
    EXPECT_EQ(dora.con("CapacidadContratada", {{"codigoCuenta", ""}}), "0");
}

TEST(Operaciones, HandOutAnAccountsUsersOnlyWhereOneProvedHimself) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const auto pedir = [&](const std::string& cuenta) {
        return ana.llamar("CarpetasNserie", {{"codigoCuenta", cuenta}});
    };
    EXPECT_EQ(pedir("AC01"), respuesta::sinPermiso);
    servicio.cliente("BEA", "falsa").con("DatosUsuario");
    EXPECT_EQ(pedir("AC01"), respuesta::sinPermiso) << "a failed attempt proves nothing";
    servicio.cliente("CARLA", "secreta3").con("DatosUsuario");
    EXPECT_EQ(pedir("AC01"), respuesta::sinPermiso) << "nor does somebody of another account";
    EXPECT_EQ(pedir("AC02"), "3-CARLA-secreta3-");
    servicio.cliente("BEA", "secreta2").con("DatosUsuario");
    EXPECT_EQ(pedir("ac01"), "1-ANA-secreta1-Ana López|2-BEA-secreta2-Bea");
    servicio.cliente("DORA", "secreta4").con("DatosUsuario");
    for (const std::string nada : {"", "NOHAY"})
        EXPECT_EQ(pedir(nada), respuesta::sinPermiso) << nada;
    servicio.reloj.avanzar(10min - 1s);
    EXPECT_NE(pedir("AC01"), respuesta::sinPermiso);
    servicio.reloj.avanzar(1s);
    EXPECT_EQ(pedir("AC01"), respuesta::sinPermiso);
}

TEST(Operaciones, PutAUserOnlyWhereHeGainsNothing) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const auto asignar = [&](const std::string& carpeta, const std::string& cuenta) {
        return ana.llamar("ActualizaNserie", {{"carpetaRaiz", carpeta}, {"codigoCuenta", cuenta}});
    };
    EXPECT_EQ(asignar("U0000004", "AC01"), respuesta::sinPermiso);
    servicio.cliente("DORA", "secreta4").con("DatosUsuario");
    EXPECT_EQ(asignar("U0000004", "AC01"), respuesta::cuentaNoAsignable) << "nobody of the account is here";
    EXPECT_EQ(asignar("U0000004", "NUEVA"), respuesta::cuentaNoAsignable) << "accounts are made by --alta";
    EXPECT_EQ(asignar("U0000001", "AC02"), respuesta::sinPermiso);
    ana.con("DatosUsuario");
    EXPECT_EQ(asignar("U0000001", "ac01"), "") << "where he is already";
    EXPECT_EQ(asignar("U0000001", "AC02"), respuesta::cuentaNoAsignable) << "he has an account";
    EXPECT_EQ(asignar("U0000001", ""), respuesta::cuentaNoAsignable);
    EXPECT_EQ(asignar("u0000004", "ac01"), "");
    EXPECT_EQ(servicio.cliente("DORA", "secreta4").con("DatosUsuario"), "4-DORA-AC01-");
    EXPECT_EQ(asignar("U0000009", "AC01"), respuesta::sinPermiso);
}

TEST(Operaciones, KeepAHistoryByUserNewestFirst) {
    ServicioEnMarcha servicio;
    ClientePrueba ana = servicio.cliente();
    const auto grabar = [&](const std::string& texto) {
        return ana.con("GrabarHistorico", {{"texto", texto}});
    };
    EXPECT_EQ(ana.con("LeerHistorico", {{"filtro", ""}}), "");
    EXPECT_EQ(grabar("ANA ha subido la empresa Año & más"), "");
    ana.subir("x", "1", 1, "Gestión");
    EXPECT_EQ(grabar("a|b@/c@@//d\te@"), "");
    EXPECT_EQ(ana.con("LeerHistorico", {{"filtro", ""}}),
              "2@/09/03/2026 08:07:06@/abcd e@@/Gestión|"
              "1@/09/03/2026 08:07:06@/ANA ha subido la empresa Año & más@/DATOS");
    EXPECT_EQ(ana.con("LeerHistorico", {{"filtro", "abc"}}), "2@/09/03/2026 08:07:06@/abcd e@@/Gestión");
    EXPECT_EQ(grabar(std::string(2000, 'z')), "");
    EXPECT_THAT(ana.con("LeerHistorico", {{"filtro", "zzz"}}),
                testing::EndsWith("@/" + std::string(500, 'z') + "@/Gestión"));
    EXPECT_EQ(servicio.cliente("BEA", "secreta2").con("LeerHistorico", {{"filtro", ""}}), "");
}

TEST(Operaciones, DropTheOldestLinesOfALongHistory) {
    pruebas::CarpetaPrueba carpeta;
    server::BaseDatos base(carpeta.ruta("h.sqlite"));
    pruebas::RelojFijo reloj;
    server::Historial historial(base, reloj);
    base.enTransaccion([&] {
        for (std::int64_t i = 0; i < server::Historial::maximoPorUsuario; ++i) {
            base.ejecutar("INSERT INTO historial (usuario, fecha, texto, carpeta) VALUES (1, '', ?, '')",
                          std::to_string(i));
        }
    });
    historial.grabar(2, "de otro", "");
    historial.grabar(1, "la nueva", "");
    const std::string todo = historial.leer(1, "");
    EXPECT_EQ(std::ranges::count(todo, '|'), server::Historial::maximoPorUsuario - 1);
    EXPECT_THAT(todo, testing::HasSubstr("@/la nueva@/"));
    EXPECT_THAT(todo, testing::EndsWith("@/1@/")) << "only the oldest is gone";
    EXPECT_THAT(historial.leer(2, ""), testing::HasSubstr("de otro"));

    base.ejecutar("UPDATE historial SET texto = ? WHERE usuario = 1 AND texto <> 'la nueva'",
                  std::string(server::Historial::maximoTexto, '"'));
    const std::string largas = historial.leer(1, "");
    EXPECT_LT(largas.size(), server::Historial::maximoRespuesta) << "no more than a client can read";
    EXPECT_THAT(largas.substr(0, 100), testing::HasSubstr("@/la nueva@/"));
}

}  // namespace
}  // namespace tarvoline
