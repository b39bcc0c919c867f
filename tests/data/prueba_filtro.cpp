#include "data/filtro.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "data/apoyo_tablas.h"
#include "data/seleccion.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::Condicion;
using data::Filtro;
using data::interpretarFiltro;
using data::Operador;
using data::Tablas;
using testing::ElementsAre;

constexpr int tabla = data::tabla::extra;

TEST(Filtro, Gramatica) {
    EXPECT_THAT(interpretarFiltro("FECHA = 31/12/25 And  ASIENTO=000012"),
                ElementsAre(Condicion{"FECHA", Operador::igual, "31/12/25"},
                            Condicion{"ASIENTO", Operador::igual, "000012"}));
    EXPECT_THAT(
        interpretarFiltro("a => 1 and b =< 2 and c >= 3 and d<=4 and e>5 and f <6"),
        ElementsAre(Condicion{"a", Operador::mayorIgual, "1"}, Condicion{"b", Operador::menorIgual, "2"},
                    Condicion{"c", Operador::mayorIgual, "3"}, Condicion{"d", Operador::menorIgual, "4"},
                    Condicion{"e", Operador::mayor, "5"}, Condicion{"f", Operador::menor, "6"}));
    // The first operator ends the column, and a value holds whatever it likes but " AND ".
    EXPECT_THAT(interpretarFiltro("FRA. RECTIFICATIVA/DUA like *LIKE = <x>* AND S/R/T/C=ANDRES, \"ANDY\""),
                ElementsAre(Condicion{"FRA. RECTIFICATIVA/DUA", Operador::como, "*LIKE = <x>*"},
                            Condicion{"S/R/T/C", Operador::igual, "ANDRES, \"ANDY\""}));
    EXPECT_THAT(
        interpretarFiltro("UNLIKELY LIKE* AND TITULO= AND NIVEL = 0"),
        ElementsAre(Condicion{"UNLIKELY", Operador::como, "*"}, Condicion{"TITULO", Operador::igual, ""},
                    Condicion{"NIVEL", Operador::igual, "0"}));
    EXPECT_THAT(interpretarFiltro("   "), ElementsAre());
    for (const char* malo : {"CUENTA", "CUENTA = 1 AND ", "CUENTA LIKELY 1", "CUENTA <> 1", " AND A=1"}) {
        EXPECT_THROW(interpretarFiltro(malo), data::ErrorFiltro) << malo;
    }
}

TEST(Filtro, Comodines) {
    const auto coincide = [](std::string_view texto, std::string_view patron) {
        return data::coincideComodines(core::aAnsi(texto).bytes(), core::aAnsi(patron).bytes());
    };
    EXPECT_TRUE(coincide("AÑO NUEVO", "año*"));
    EXPECT_TRUE(coincide("Muñoz", "MU?OZ"));
    EXPECT_TRUE(coincide("abcabcabd", "*abd"));
    EXPECT_TRUE(coincide("", "**"));
    EXPECT_TRUE(coincide("4300012", "43*1?"));
    EXPECT_FALSE(coincide("4300012", "43"));
    EXPECT_FALSE(coincide("abc", "abc?"));
    EXPECT_FALSE(coincide("", "?"));
    EXPECT_FALSE(coincide("abcabc", "*abd*"));
}

struct Diario : MundoTablas {
    Tablas tablas{capa};
    Diario() { EXPECT_TRUE(abrir(tablas, tabla, "EXTRA")); }

    void anadir(std::string_view fecha, std::string_view cuenta, std::string_view asiento,
                std::string_view descripcion, std::string_view importe = "0") {
        ponerLinea(tablas, tabla, fecha, cuenta, asiento, core::aAnsi(descripcion).bytes(), importe);
        tablas.ponerCampo(tabla, linea::numero, importe);
        tablas.ponerCampo(tabla, linea::cambio, importe);
        tablas.AnadirRegistro(tabla);
    }
    Filtro filtro(std::string_view texto) {
        return {capa, tablas.definicion(tabla), interpretarFiltro(texto)};
    }
    std::vector<std::int32_t> filas(std::string_view texto) {
        return data::seleccionar(tablas, tabla, filtro(texto), data::OrdenFilas::natural);
    }
};

TEST(Filtro, ComparaSegunLaColumna) {
    Diario m;
    m.anadir("991231", "4300001", "000001", "Señor Muñoz", "0.1");
    m.anadir("C50115", "4300002", "000002", "", "-12.5");
    m.anadir("C51231", "43", "000003", "Venta: 9 a 10 = -1", "100");
    m.anadir("      ", "570", "000004", "VENTA", "9");
    const std::vector<std::pair<const char*, std::vector<std::int32_t>>> casos = {
        {"", {1, 2, 3, 4}},
        // Dates in every form, in the order of time across the century; none is before all.
        {"FECHA = 15/01/25", {2}},
        {"fecha=15/01/2025", {2}},
        {"FECHA = 250115", {2}},
        {"FECHA = C50115", {2}},
        {"FECHA => 31/12/99", {1, 2, 3}},
        {"FECHA > 31/12/1999 AND FECHA < 31/12/25", {2}},
        {"FECHA = ", {4}},
        {"FECHA =   /  /  ", {4}},
        {"FECHA LIKE C5*", {2, 3}},
        {"FECHA <= 31/12/2199", {1, 2, 3, 4}},
        {"FECHA >= 01/01/2100", {}},
        // Texts exactly, or by order.
        {"CUENTA = 43", {3}},
        {"CUENTA >= 4300002", {2, 4}},
        {"CUENTA < 4300002", {1, 3}},
        {"DESCRIPCION = venta", {}},
        {"DESCRIPCION LIKE venta*", {3, 4}},
        {"DESCRIPCION LIKE *MUÑOZ", {1}},
        {"DESCRIPCION = Señor Muñoz", {1}},
        {"DESCRIPCION = ", {2}},
        {"DESCRIPCION = Venta: 9 a 10 = -1", {3}},
        // Numbers as numbers, in the precision of their field.
        {"IMPORTE = 0.10", {1}},
        {"CAMBIO = 0.1", {1}},
        {"CAMBIO > 0.1", {3, 4}},
        {"NUMERO > 9", {3}},
        {"IMPORTE < 9 AND IMPORTE >= -12.5", {1, 2}},
        {"IMPORTE LIKE *.?", {1, 2}},
    };
    for (const auto& [texto, esperadas] : casos)
        EXPECT_EQ(m.filas(texto), esperadas) << texto;
    EXPECT_THROW(m.filas("CUENTAS = 43"), data::ErrorFiltro);
    // A value from elsewhere may hold the words of the grammar.
    m.anadir("C51231", "43", "000005", "A AND B = C");
    const Filtro dado(m.capa, m.tablas.definicion(tabla), {{"DESCRIPCION", Operador::igual, "A AND B = C"}});
    EXPECT_THAT(data::seleccionar(m.tablas, tabla, dado, data::OrdenFilas::natural), ElementsAre(5));
}

TEST(Filtro, LaClaveQueCubre) {
    Diario m;
    const auto clave = [&](std::string_view texto) {
        const Filtro filtro = m.filtro(texto);
        return filtro.llave() ? std::to_string(filtro.llave()->clave) + filtro.llave()->texto : "";
    };
    EXPECT_EQ(clave("ASIENTO = 000012 AND FECHA = 31/12/25"), "1C51231000012");
    EXPECT_EQ(clave("CUENTA = 43 AND FECHA = 31/12/25 AND IMPORTE > 0"), "243        C51231");
    EXPECT_EQ(clave("DESCRIPCION = ab\\cdefghijklm"),
              "3\x1F"
              "cdefghi");
    for (const char* sin : {"FECHA = 31/12/25", "ASIENTO = 000012 AND FECHA >= 31/12/25", "IMPORTE = 3",
                            "ASIENTO = 000012 AND FECHA =", "ASIENTO = 0000123 AND FECHA = 31/12/25"}) {
        EXPECT_EQ(clave(sin), "") << sin;
    }
}

// Random tables with removed records and few different texts, so that keys repeat; random filters.
TEST(Filtro, PorClaveLoMismoQuePorRecorrido) {
    const auto semilla = std::random_device{}();
    RecordProperty("seed", std::to_string(semilla));
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto uno = [&](const std::vector<const char*>& de) { return de[azar() % de.size()]; };
    const std::vector<const char*> fechas{"991231", "C50115", "C51231", "A00101"};
    const std::vector<const char*> cuentas{"43", "4300001", "4300001999", " 43", "43\\1", "Ñ", "43\x1F"};
    const std::vector<const char*> asientos{"000001", "000002", "1", "999999"};
    const std::vector<const char*> textos{"", "venta", "ventas", "ventas de hoy", "ventas de hoy y ayer"};
    int porClave = 0, conFilas = 0;
    for (int vuelta = 0; vuelta < 6; ++vuelta) {
        Diario m;
        for (std::uint64_t i = 0, cuantos = azar() % 300; i < cuantos; ++i) {
            m.anadir(uno(fechas), uno(cuentas), uno(asientos), uno(textos), std::to_string(azar() % 4));
            if (azar() % 5 == 0)
                m.tablas.BorrarRegistro(tabla, static_cast<std::int32_t>(1 + azar() % (i + 1)));
        }
        for (int i = 0; i < 60; ++i) {
            std::vector<Condicion> condiciones;
            const auto quiza = [&](const char* columna, const char* valor, unsigned de) {
                if (azar() % de != 0) condiciones.push_back({columna, Operador::igual, valor});
            };
            quiza("FECHA", uno(fechas), 4);
            quiza("CUENTA", uno(cuentas), 3);
            quiza("ASIENTO", uno(asientos), 3);
            quiza("DESCRIPCION", uno(textos), 2);
            if (azar() % 3 == 0) condiciones.push_back({"IMPORTE", Operador::mayor, "1"});
            const Filtro filtro(m.capa, m.tablas.definicion(tabla), condiciones);
            if (!filtro.llave()) continue;
            ++porClave;
            auto filas = data::filasPorClave(m.tablas, tabla, filtro);
            std::ranges::sort(filas);
            const auto todas = data::filasPorRecorrido(m.tablas, tabla, filtro);
            ASSERT_EQ(filas, todas) << filtro.llave()->clave << filtro.llave()->texto;
            if (!todas.empty()) ++conFilas;
        }
    }
    EXPECT_GT(porClave, 50);
    EXPECT_GT(conFilas, 0);
}

// The cut between two blocks of a scan loses and doubles nothing.
TEST(Filtro, RecorridoDeVariosBloques) {
    Diario m;
    constexpr int registros = 3000;
    for (int i = 1; i <= registros; ++i)
        m.anadir("C50115", "43", "000001", i % 1000 == 0 ? "mil" : "otro");
    EXPECT_THAT(m.filas("DESCRIPCION LIKE mil"), ElementsAre(1000, 2000, 3000));
    EXPECT_EQ(m.filas("").size(), registros);
    EXPECT_EQ(m.filas("FECHA = 15/01/25 AND ASIENTO = 000001").size(), registros);
}

}  // namespace
