// Annulling: what goes, what stays, and the totals behind it.
#include <gtest/gtest.h>

#include <random>

#include "apoyo/en_procesos.h"
#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

using data::tabla::anali;
using data::tabla::costo;
using data::tabla::datos;
using data::tabla::efect;
using data::tabla::extra;
using data::tabla::iva01;
using data::tabla::planc;

struct Anulacion : ::testing::Test, MundoLibros {
    Anulacion() {
        for (const auto* una : {"4300000001", "4770000021"})
            cuenta(una);
        // The parents that postings make, and the month in the head.
        const auto linea1 = linea({"C60131", "4300000001", "9", "", "1", 1, "", "000009"});
        const auto linea2 = linea({"C60131", "4770000021", "9", "", "1", 1});
        linea({"C60131", "6000000000", "9", "", "1", 1, "", "000009"}, "10");
        enlace.AnularApuntePorRegistro(linea1, true);
        enlace.AnularApuntePorRegistro(linea2);
        antes = balances();
    }
    // A sale with its invoice, portfolio and analytic lines. Amounts that sums give back to the last bit.
    void venta(const std::string& numero, const std::string& referencia, double base) {
        linea({"C60131", "4300000001", numero, "Venta", "1", base * 1.25, referencia});
        linea({"C60131", "7000000000", numero, "Venta", "2", -base, referencia, "00000" + numero});
        linea({"C60131", "4770000021", numero, "Cuota", "2", -base / 4, referencia});
        linea({"C60131", "7000000000", numero, "Obra", "2", -base / 2, referencia, "00000" + numero}, "10");
        linea({"C60131", "7000000000", numero, "Obra", "2", -base / 2, referencia, "00000" + numero}, "10");
        fila(iva01, {{8, numero}, {21, "C60131"}, {17, comoTexto(base / 4)}, {22, referencia}});
        fila(efect, {{8, "C60131"}, {9, numero}, {2, "4300000001"}});
    }
    // The accounts of both charts and the head of the company, byte by byte.
    std::string balances() {
        return mundo.leer("PLANC" + enlace.NumeroEmpresa() + ".QZD") +
               mundo.leer("COSTO" + enlace.NumeroEmpresa() + ".QZD") + mundo.carpeta.leer("datos/Prueba.QZT");
    }
    // Rows left in EXTRA, IVA01, EFECT and Anali.
    std::vector<std::size_t> quedan() { return {vivas(extra), vivas(iva01), vivas(efect), vivas(anali)}; }
    using Filas = std::vector<std::size_t>;

    std::string antes;
};

TEST_F(Anulacion, UnAsientoEntero) {
    venta("1", "F1", 100);
    const std::string conUno = balances();
    venta("2", "F1", 40);
    fila(efect, {{8, "C60131"}, {9, "3"}});  // portfolio alone
    EXPECT_EQ(quedan(), (Filas{6, 2, 3, 4}));
    EXPECT_NE(balances(), conUno);
    EXPECT_EQ(enlace.AnularAsiento("31/01/26", "2"), 0);
    EXPECT_EQ(quedan(), (Filas{3, 1, 2, 2}));
    EXPECT_EQ(balances(), conUno);
    for (const auto* nada : {"2", "", "11"})
        EXPECT_EQ(enlace.AnularAsiento("31/01/26", nada), 0);
    EXPECT_EQ(enlace.AnularAsiento("30/01/26", "1"), 0);
    EXPECT_EQ(quedan(), (Filas{3, 1, 2, 2}));
    EXPECT_EQ(enlace.AnularAsiento("260131", "3"), 0);
    EXPECT_EQ(enlace.AnularAsiento("31/01/2026", "1"), 0);
    EXPECT_EQ(quedan(), (Filas{0, 0, 0, 0}));
    EXPECT_EQ(balances(), antes);
    EXPECT_THROW(enlace.AnularAsiento("31/01/25", "1"), link::ErrorEnlace);
    EXPECT_TRUE(todoCerrado());
    EXPECT_EQ(avisos, "");
}

TEST_F(Anulacion, PorReferencia) {
    venta("1", "F1", 100);
    const std::string conUno = balances();
    venta("2", "F2", 40);
    linea({"C60131", "4300000001", "2", "Sin ella", "1", 3, "F22"});
    const auto suelta = vivas(extra);
    enlace.AnularApuntePorReferencia("F2");
    // The portfolio of the entry goes in any case.
    EXPECT_EQ(quedan(), (Filas{suelta - 3, 2, 1, 4}));
    enlace.AnularApuntePorReferencia("F22", false, true);
    EXPECT_EQ(quedan(), (Filas{3, 2, 1, 4}));
    EXPECT_NE(balances(), conUno);  // the analytic ones of F2 have stayed
    enlace.AnularApuntePorReferencia("nada", true, true);
    EXPECT_EQ(quedan(), (Filas{3, 2, 1, 4}));
    enlace.AnularApuntePorReferencia("F2", true);  // no line has it any more, but an invoice
    EXPECT_EQ(quedan(), (Filas{3, 1, 1, 4}));
    enlace.AnularApuntePorReferencia("F1 ", true, true);
    EXPECT_EQ(quedan(), (Filas{0, 0, 0, 2}));
    EXPECT_TRUE(todoCerrado());
}

// An invoice without the reference goes with its entry when its quota is the sum of the quota lines.
TEST_F(Anulacion, PorReferenciaYCuota) {
    linea({"C60131", "4770000021", "1", "", "2", -21.1, "R"});
    linea({"C60131", "4720000021", "1", "", "2", -0.2, "R"});
    linea({"C60131", "7000000000", "1", "", "2", -5, "R"});
    linea({"C60131", "4770000021", "1", "", "2", -5, "otra"});
    for (const auto* cuota : {"21.3", "-21.3", "21.1", "26.3", "0"})
        fila(iva01, {{8, "1"}, {21, "C60131"}, {17, cuota}});
    fila(iva01, {{8, "1"}, {21, "C60130"}, {17, "21.3"}});
    fila(iva01, {{8, "7"}, {21, "C60130"}, {22, "R"}});
    enlace.AnularApuntePorReferencia("R", true);
    EXPECT_EQ(quedan(), (Filas{1, 4, 0, 0}));
    EXPECT_EQ(enlace.ExisteReferencia("otra"), 1);
    tablas().AbrirTablasEmpresa();
    for (const std::int32_t quitada : {1, 2, 7})
        EXPECT_EQ(tablas().LeerRegistro(iva01, quitada), data::EstadoRegistro::anulado) << quitada;
    tablas().CerrarTodo();
}

TEST_F(Anulacion, PorRegistro) {
    venta("1", "F1", 100);
    enlace.BuscarReferencia("F1");
    const auto primera = enlace.Extracto(1)->REGISTRO;
    for (const std::int32_t registro : {0, -1, primera + 99}) {
        enlace.AnularApuntePorRegistro(registro, true);
        EXPECT_EQ(quedan(), (Filas{3, 1, 1, 2}));
    }
    enlace.AnularApuntePorRegistro(primera + 1);
    EXPECT_EQ(quedan(), (Filas{2, 1, 1, 2}));
    const std::string despues = balances();
    enlace.AnularApuntePorRegistro(primera + 1, true);  // gone already
    EXPECT_EQ(balances(), despues);
    enlace.AnularApuntePorRegistro(primera, true);
    enlace.AnularApuntePorRegistro(primera + 2, true);
    EXPECT_EQ(quedan(), (Filas{0, 1, 1, 2}));
    tablas().AbrirTablasEmpresa();
    const int base = tablas().gCampoDePosicion(costo, link::posicion::planc::haber);
    EXPECT_EQ(tablas().LeerCampoDoble(costo, 1, base + 1), -100);  // nobody took the analytic ones back
    tablas().CerrarTodo();
    EXPECT_EQ(mundo.leer("PLANC" + enlace.NumeroEmpresa() + ".QZD"),
              antes.substr(0, mundo.leer("PLANC" + enlace.NumeroEmpresa() + ".QZD").size()));
    EXPECT_TRUE(todoCerrado());
}

// The error of the keys stops it: what went before stays gone, totals and all.
TEST_F(Anulacion, ClavesQueFallan) {
    const auto primera = linea({"C60131", "4300000001", "1", "", "1", 4, "A", "000001"});
    linea({"C60131", "4300000001", "1", "", "1", 8, "B"});
    linea({"C60131", "4300000001", "1", "", "1", 4, "A", "000001"}, "10");
    fila(iva01, {{8, "1"}, {21, "C60131"}});
    const auto estropear = [&](int tabla, std::int32_t registro, int posicion) {
        tablas().AbrirTablasEmpresa();
        tablas().GrabarCampo(tabla, registro, tablas().gCampoDePosicion(tabla, posicion), "Z");
        tablas().CerrarTodo();
    };
    const auto fallar = [&](const std::function<void()>& paso) {
        try {
            paso();
            ADD_FAILURE() << "no error";
        } catch (const link::ErrorEnlace& error) {
            EXPECT_EQ(error.numero(), 0x8004C35AU);
            EXPECT_EQ(error.descripcion(),
                      "Se ha producido un error de indexados No. 9 Se debe reindexar los datos de Veldorix");
        }
        EXPECT_TRUE(todoCerrado());
    };
    estropear(extra, primera, link::posicion::extra::referencia);
    fallar([&] { enlace.AnularAsiento("31/01/26", "1"); });
    EXPECT_EQ(quedan(), (Filas{1, 1, 0, 0}))
        << "the analytic line goes first: its number stands in the line alone";
    EXPECT_EQ(avisos, "Error indexados... Reindexar Archivo Libro Diario\n");
    estropear(iva01, 1, link::posicion::iva::factura);
    fallar([&] { enlace.AnularAsiento("31/01/26", "1"); });
    EXPECT_EQ(quedan(), (Filas{0, 0, 0, 0}));
    EXPECT_EQ(mundo.leer("PLANC" + enlace.NumeroEmpresa() + ".QZD"),
              antes.substr(0, mundo.leer("PLANC" + enlace.NumeroEmpresa() + ".QZD").size()));
}

// Broken keys of a line do not keep what it leads to, and a blank reference takes no invoice by it.
TEST_F(Anulacion, PorReferenciaConClavesQueFallan) {
    const auto primera = linea({"C60131", "4300000001", "1", "", "1", 4, "A"});
    linea({"C60131", "4300000001", "1", "", "2", -4, "A"});
    fila(data::tabla::efect, {{8, "C60131"}, {9, "1"}});
    fila(iva01, {{8, "2"}, {21, "C60131"}});
    tablas().AbrirTablasEmpresa();
    tablas().GrabarCampo(extra, primera, tablas().gCampoDePosicion(extra, link::posicion::extra::cuenta),
                         "Z");
    tablas().CerrarTodo();
    EXPECT_THROW(enlace.AnularApuntePorReferencia("A", true), link::ErrorEnlace);
    EXPECT_EQ(quedan(), (Filas{0, 1, 0, 0}));
    enlace.AnularApuntePorReferencia("  ", true);
    EXPECT_EQ(quedan(), (Filas{0, 1, 0, 0}));
}

TEST_F(Anulacion, Cuentas) {
    cuenta("4300000007");
    for (const auto* una : {"4300000007", "4300000008", "4300000009"})
        fila(datos, {{1, una}, {2, "Nombre"}});
    const auto plan = vivas(planc);
    linea({"C60131", "4300000007", "1", "", "1", 1});
    enlace.AnularCuenta("4300000007");  // whatever has moved on it
    EXPECT_EQ(vivas(planc), plan - 1);
    EXPECT_EQ(vivas(datos), 2U);
    enlace.AnularCuenta("4300000008 ");  // master data alone
    EXPECT_EQ(vivas(planc), plan - 1);
    EXPECT_EQ(vivas(datos), 1U);
    for (const auto* nada : {"", "43000000", "4300000008"})
        enlace.AnularCuenta(nada);
    EXPECT_EQ(vivas(planc), plan - 1);
    EXPECT_EQ(vivas(datos), 1U);
    EXPECT_TRUE(todoCerrado());
}

TEST_F(Anulacion, SinEmpresaAbierta) {
    link::Enlace cerrada(contexto);
    EXPECT_THROW(cerrada.AnularAsiento("31/01/26", "1"), link::ErrorEnlace);
    EXPECT_THROW(cerrada.AnularApuntePorReferencia("R"), link::ErrorEnlace);
    EXPECT_THROW(cerrada.AnularApuntePorRegistro(1), link::ErrorEnlace);
    EXPECT_THROW(cerrada.AnularCuenta("57"), link::ErrorEnlace);
}

// Several programs that annul the same lines at the same time take them back once.
TEST_F(Anulacion, DosProgramasLaMismaLinea) {
    constexpr int lineas = 12;
    std::vector<std::int32_t> registros(lineas);
    for (std::int32_t& registro : registros)
        registro = linea({"C60131", "4300000001", "1", "", "1", 4});
    constexpr int procesos = 3;
    enProcesos(procesos, 1, [&](int, int) {
        link::Contexto otro(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        link::Enlace suyo(otro);
        suyo.AbrirEmpresa("Prueba");
        for (const std::int32_t registro : registros)
            suyo.AnularApuntePorRegistro(registro);
    });
    EXPECT_EQ(quedan(), (Filas{0, 0, 0, 0}));
    EXPECT_EQ(balances(), antes);
}

}  // namespace
}  // namespace tarvoline::pruebas
