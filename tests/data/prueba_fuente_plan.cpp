// Sources of charts: what they give, and that a mistake is refused with its place.
#include <gtest/gtest.h>

#include "data/fuente_plan.h"

namespace tarvoline::pruebas {
namespace {

using namespace data;

std::vector<CuentaPlan> leida(const std::string& fuente,
                              const std::string& otra = "5 Financieras\n57\tTesorería\n") {
    return leerFuentePlan("f.plan", fuente, [&](std::string_view archivo) -> std::string {
        if (archivo != "otra.plan") throw std::runtime_error("no such file");
        return otra;
    });
}

TEST(FuentePlan, DaLasCuentasPorSuCodigo) {
    EXPECT_EQ(
        leida("# comment\r\n5700000001  Caja  2, 5 %\n570 Caja\r\n\ncuentas de otra.plan\n5700 Caja, euros"),
        (std::vector<CuentaPlan>{{"5", "Financieras", 1},
                                 {"57", "Tesorería", 2},
                                 {"570", "Caja", 3},
                                 {"5700", "Caja, euros", 4},
                                 {"5700000001", "Caja  2, 5 %", 0}}));
}

TEST(FuentePlan, RechazaDiciendoDonde) {
    const std::string codigoMalo = " no es una cuenta de una a cuatro cifras, ni de diez";
    const struct {
        std::string fuente, error;
    } casos[] = {
        {"# nothing", "f.plan: no hay ninguna cuenta"},
        {"1 A\n\n1a B", "f.plan:3: \"1a\"" + codigoMalo},
        {"1 A\n12345 B", "f.plan:2: \"12345\"" + codigoMalo},
        {"12345678901 B", "f.plan:1: \"12345678901\"" + codigoMalo},
        {"1", "f.plan:1: falta el título"},
        {"1 " + std::string(41, 'x'), "f.plan:1: el título tiene más de 40 caracteres"},
        {"1 Ω", "f.plan:1: el título tiene un carácter sin sitio en Windows-1252"},
        {"1 A\n1 B", "f.plan:2: la cuenta 1 está dos veces"},
        {"cuentas de otra.plan\n57 B", "f.plan:2: la cuenta 57 está dos veces"},
        {"57 B\ncuentas de otra.plan", "otra.plan:2: la cuenta 57 está dos veces"},
        {"2 A\n12 B", "f.plan:2: 12: falta su mayor 1"},
        {"1 A\n12 B\n123 C\n1234567890 D", "f.plan:4: 1234567890: falta su mayor 1234"},
        {"cuentas otra.plan", "f.plan:1: no es de la forma cuentas de ARCHIVO"},
        {"cuentas de", "f.plan:1: falta el archivo"},
    };
    for (const auto& caso : casos) {
        try {
            leida(caso.fuente);
            ADD_FAILURE() << "accepted: " << caso.fuente;
        } catch (const ErrorFuente& error) {
            EXPECT_EQ(error.what(), caso.error);
        }
    }
    EXPECT_THROW(leida("cuentas de falta.plan"), std::runtime_error);
}

TEST(FuentePlan, UnaFuenteTomadaNoTomaDeOtra) {
    try {
        leida("cuentas de otra.plan", "cuentas de otra.plan");
        ADD_FAILURE() << "accepted";
    } catch (const ErrorFuente& error) {
        EXPECT_STREQ(error.what(), "f.plan:1: otra.plan toma sus cuentas de otra fuente");
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
