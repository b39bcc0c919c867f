// The portfolio by conditions, against a plain filter.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "apoyo/en_procesos.h"
#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

struct Linea {
    std::string vencimiento;  // "dd/mm/yy"
    std::string cuenta, cartera, asiento;
    double importe = 0;
};

// Years, months and days in order.
std::string ordenado(const std::string& fecha) {
    return fecha.substr(6) + fecha.substr(3, 2) + fecha.substr(0, 2);
}

bool cumple(const Linea& linea, const link::FiltroCartera& filtro) {
    const auto esta = [](const std::string& pedido, const std::string& suyo) {
        return pedido.empty() || pedido == suyo;
    };
    const std::string dia = ordenado(linea.vencimiento);
    return esta(filtro.cartera, linea.cartera) && esta(filtro.Cuenta, linea.cuenta) &&
           esta(filtro.Asiento, linea.asiento) &&
           (filtro.DesdeFechaVencimiento.empty() || ordenado(filtro.DesdeFechaVencimiento) <= dia) &&
           (filtro.HastaFechaVencimiento.empty() || dia <= ordenado(filtro.HastaFechaVencimiento));
}

struct PruebaCartera : testing::Test, MundoLibros {
    PruebaCartera() {
        std::mt19937 azar(semilla);
        const auto una = [&](auto... textos) {
            const std::vector<std::string> todos{textos...};
            return todos[azar() % todos.size()];
        };
        for (int i = 0; i < 60; ++i) {
            Linea linea{una("31/12/26", "01/01/27", "15/06/26", "29/02/28"),
                        una("4300000001", "4300000002", "4000000001"),
                        una("BANCO", "CAJA", "ñandú"),
                        {},
                        i * 1.5};
            enlace.Fecha("15/05/2026");
            enlace.Número("");
            linea.asiento = enlace.Número();
            enlace.AñadirCartera(linea.vencimiento, linea.cuenta, linea.cartera, "Nota " + linea.cuenta,
                                 linea.importe);
            enlace.GrabarAsiento();
            lineas.push_back(linea);
        }
    }
    std::vector<Linea> leer(const link::FiltroCartera& filtro) {
        std::vector<Linea> leidas;
        for (const auto& una :
             enlace.LeerCartera(filtro.cartera, filtro.DesdeFechaVencimiento, filtro.HastaFechaVencimiento,
                                filtro.Cuenta, filtro.Asiento)) {
            EXPECT_EQ(una->NOTAS, "Nota " + una->Cuenta);
            EXPECT_EQ(una->Fecha, "15/05/26");
            leidas.push_back({una->FechaVencimiento, una->Cuenta, una->cartera, una->Asiento, una->Importe});
        }
        return leidas;
    }
    static std::string textos(const std::vector<Linea>& lineas) {
        std::string todo;
        for (const Linea& una : lineas)
            todo += una.vencimiento + una.cuenta + una.cartera + una.asiento + comoTexto(una.importe) + "\n";
        return todo;
    }
    std::string esperadas(const link::FiltroCartera& filtro) const {
        std::vector<Linea> suyas;
        std::ranges::copy_if(lineas, std::back_inserter(suyas),
                             [&](const Linea& linea) { return cumple(linea, filtro); });
        return textos(suyas);
    }

    const unsigned semilla = std::random_device{}();
    std::vector<Linea> lineas;
};

TEST_F(PruebaCartera, LeidaMarcadaYAnulada) {
    SCOPED_TRACE("seed " + std::to_string(semilla));
    const link::FiltroCartera filtros[] = {
        {},
        {.cartera = "ñandú"},
        {.DesdeFechaVencimiento = "01/01/27"},
        {.HastaFechaVencimiento = "31/12/26"},
        {.DesdeFechaVencimiento = "31/12/26", .HastaFechaVencimiento = "01/01/27", .Cuenta = "4300000002"},
        {.Asiento = lineas[7].asiento},
        {.cartera = "CAJA", .Cuenta = "4000000001"},
        {.cartera = "NINGUNA"},
    };
    for (const auto& filtro : filtros)
        EXPECT_EQ(textos(leer(filtro)), esperadas(filtro));

    enlace.MarcarCartera("OK", "BANCO", "", "", "", "");
    for (const auto& una : enlace.LeerCartera())
        EXPECT_EQ(una->Marca, una->cartera == "BANCO" ? "OK" : "");

    EXPECT_EQ(textos(leer({.DesdeFechaVencimiento = "2027-01-01"})),
              esperadas({.DesdeFechaVencimiento = "01/01/27"}));
    for (const char* fecha : {"basura", "//", "31/02/27"})
        EXPECT_THROW(enlace.AnularCartera("", "", fecha, "", ""), link::ErrorEnlace) << fecha;
    EXPECT_EQ(textos(leer({})), esperadas({})) << "a limit that is no date removes nothing";

    enlace.AnularCartera("CAJA", "", "31/12/26", "", "");
    const link::FiltroCartera anuladas{.cartera = "CAJA", .HastaFechaVencimiento = "31/12/26"};
    std::erase_if(lineas, [&](const Linea& linea) { return cumple(linea, anuladas); });
    EXPECT_EQ(textos(leer({})), esperadas({}));
    EXPECT_EQ(enlace.ContadorCartera(), 0) << "the pending lines are another collection";
    enlace.AnularCartera("", "", "", "", "");
    EXPECT_TRUE(enlace.LeerCartera().empty());
}

// Two programs that annul the same lines meet rows that the other one has just removed.
TEST_F(PruebaCartera, VariosAnulanLasMismas) {
    enProcesos(3, 1, [&](int, int) {
        link::Contexto suyo(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        suyo.alMostrar([](const std::string&, const std::string& texto) { throw std::runtime_error(texto); });
        link::Enlace con(suyo);
        con.AbrirEmpresa("Prueba");
        con.MarcarCartera("X", "", "", "", "", "");
        con.AnularCartera("", "", "", "", "");
    });
    EXPECT_TRUE(enlace.LeerCartera().empty());
}

}  // namespace
}  // namespace tarvoline::pruebas
