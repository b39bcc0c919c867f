// Posting: the rows of a line, the totals that it moves, currencies, portfolio and analytic lines, and what
// stands after a step that fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

namespace campo = link::posicion::extra;
namespace efect = link::posicion::efect;
namespace planc = link::posicion::planc;
namespace tabla = data::tabla;
using testing::ElementsAre;

struct Grabacion : testing::Test, MundoLibros {
    Grabacion() {
        cuenta("4300000001");
        fila(tabla::planc, {{1, "6230000000"}, {2, "Servicios"}, {3, "0"}, {6, "1"}});
        nuevo();
    }

    void nuevo() {
        enlace.Fecha("15/05/2026");
        enlace.Número("");
    }
    // The living rows of a table, each as its fields joined with "|".
    std::vector<std::string> filas(int cual, std::initializer_list<int> posiciones) {
        std::vector<std::string> todas;
        tablas().AbrirTablasEmpresa();
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(cual); ++i) {
            if (tablas().LeerRegistro(cual, i) != data::EstadoRegistro::vivo) continue;
            std::string una;
            for (const int posicion : posiciones)
                una += "|" + tablas().texto(cual, posicion);
            todas.push_back(una.substr(1));
        }
        tablas().CerrarTodo();
        return todas;
    }
    std::string ultimo(std::initializer_list<int> posiciones) {
        return filas(tabla::extra, posiciones).back();
    }
    // Every column of an account that is not 0: "debit or credit, period, amount".
    std::string columnas(int plan, const std::string& codigo) {
        std::string todas;
        tablas().AbrirTablasEmpresa();
        if (tablas().orden("S\\1\\" + std::to_string(plan) + "\\" + codigo +
                           std::string(10 - codigo.size(), ' ')) != 0) {
            todas = "no account";
        } else {
            const auto registro = tablas().gRegistro;
            for (const int lado : {planc::debe, planc::haber})
                for (int periodo = 0; periodo < 15; ++periodo) {
                    const double saldo = tablas().LeerCampoDoble(
                        plan, registro, tablas().gCampoDePosicion(plan, lado) + periodo);
                    if (saldo == 0) continue;
                    todas += (lado == planc::debe ? "D" : "H") + std::to_string(periodo) + " " +
                             comoTexto(saldo) + " ";
                }
        }
        tablas().CerrarTodo();
        return todas;
    }
    std::string empresa() { return enlace.Config("CARGOSA") + "/" + enlace.Config("ABONOSA"); }
};

// 3 and 4 turn the sign; a credit is negative; what is neither debit nor credit moves no total.
TEST_F(Grabacion, Signos) {
    const struct {
        int tipo;
        const char* guardado;  // type, amount, amount as given
        const char* saldo;
    } casos[] = {
        {1, "1|100|100", "D5 100 "}, {2, "2|-100|-100", "H5 -100 "}, {3, "1|-100|-100", "D5 -100 "},
        {4, "2|100|100", "H5 100 "}, {9, "9|100|100", ""},
    };
    for (const auto& caso : casos) {
        const std::string codigo = "430000001" + std::to_string(caso.tipo);
        cuenta(codigo);
        enlace.AñadirApunte(codigo, "", caso.tipo, 100);
        EXPECT_EQ(enlace.GrabarAsiento(), 0);
        EXPECT_EQ(ultimo({campo::tipo, campo::importe, campo::valorEnMoneda}), caso.guardado);
        EXPECT_EQ(columnas(tabla::planc, codigo), caso.saldo) << caso.tipo;
    }
    EXPECT_EQ(empresa(), "0/0") << "100 - 100, and the same in the credits";
}

TEST_F(Grabacion, DiariosYPeriodos) {
    const struct {
        const char *diario, *guardado, *saldo;
    } casos[] = {{"1", "1", "D5 7 "},  {"9", "9", "D5 7 "},  {"A", "A", "D0 7 "},
                 {"b", "B", "D13 7 "}, {"C", "C", "D14 7 "}, {"D", "1", "D5 7 "},
                 {"0", "1", "D5 7 "},  {"", "1", "D5 7 "},   {"AB", "1", "D5 7 "}};
    int cual = 20;
    for (const auto& caso : casos) {
        const std::string codigo = "43000000" + std::to_string(cual++);
        cuenta(codigo);
        enlace.AñadirApunte(codigo, "", 1, 7, caso.diario);
        enlace.GrabarAsiento();
        EXPECT_EQ(ultimo({campo::diario}), caso.guardado) << caso.diario;
        EXPECT_EQ(columnas(tabla::planc, codigo), caso.saldo) << caso.diario;
    }
    // 9 lines of 7: their parents and the company have them all, by period.
    for (const char* mayor : {"4", "43", "430", "4300"})
        EXPECT_EQ(columnas(tabla::planc, mayor), "D0 7 D5 42 D13 7 D14 7 ") << mayor;
    EXPECT_EQ(empresa(), "63/0");
}

TEST_F(Grabacion, TodosLosCamposDeUnApunte) {
    enlace.Canal("7");
    enlace.Usuario("21");
    enlace.AñadirApunte("4300000001", "Su compra", 1, 12.345, "2", 3, "N", "REF-1", "Una nota");
    enlace.AñadirApunte("4300000001", "Su pago", 2, 1, "2", 255, "012");
    EXPECT_TRUE(enlace.HayPendientes());
    enlace.GrabarAsiento();
    EXPECT_FALSE(enlace.HayPendientes());
    EXPECT_THAT(filas(tabla::extra, {campo::fecha, campo::cuenta, campo::asiento, campo::descripcion,
                                     campo::punteo, campo::canal, campo::usuario, campo::fechaGrabacion,
                                     campo::referencia, campo::notas, campo::titulo, campo::numeroAnalitica}),
                ElementsAre("C60515|4300000001|" + enlace.Número() +
                                "|Su compra|3|007|21|C60309|REF-1|Una nota|Cuenta 4300000001|",
                            "C60515|4300000001|" + enlace.Número() +
                                "|Su pago|255|012|21|C60309|||Cuenta "
                                "4300000001|"));
    EXPECT_EQ(filas(tabla::extra, {campo::importe, campo::valorEnMoneda}).front(), "12.35|12.345")
        << "rounded in the base currency, as given beside it";
    enlace.GrabarAsiento();
    EXPECT_EQ(vivas(tabla::extra), 2U) << "stored once";
}

TEST_F(Grabacion, CuentasQueNoEstan) {
    enlace.AñadirApunte("5550000009", "Sin cuenta", 1, 10);
    enlace.AñadirApunte("5550000009", "Otra vez", 2, 4);
    enlace.GrabarAsiento();
    EXPECT_EQ(ultimo({campo::titulo}), "Cuenta Sin Titulo");
    for (const char* codigo : {"5550000009", "5550", "555", "55", "5"})
        EXPECT_EQ(columnas(tabla::planc, codigo), "D5 10 H5 -4 ") << codigo;
}

// Base euro; the second currency of the table is the peseta, 166.386 of it to the euro, without decimals.
TEST_F(Grabacion, Monedas) {
    const auto apunte = [&](const char* moneda, double cambio) {
        enlace.Moneda(moneda);
        enlace.CambioMoneda(cambio);
        enlace.AñadirApunte("4300000001", "", 1, 100);
        enlace.GrabarAsiento();
        return ultimo({campo::moneda, campo::cambioMoneda, campo::importe, campo::valorSegundaMoneda,
                       campo::valorEnMoneda});
    };
    EXPECT_EQ(apunte("", 3), "0|1|100|16639|100") << "no currency: that of the books";
    EXPECT_EQ(apunte("USD", 0.92), "2|0.92|92|15308|100") << "a free row of the table";
    EXPECT_EQ(apunte("GBP", 1.15), "3|1.15|115|19134|100");
    EXPECT_EQ(apunte("USD", 0.5), "2|0.5|50|8319|100") << "the rate given counts";
    EXPECT_EQ(apunte("USD", 0), "2|0|100|16639|100") << "no rate: as given";
    EXPECT_EQ(apunte("PTS", 1 / 166.386), "1|" + comoTexto(1 / 166.386) + "|0.6|100|100");
    // The totals are of the amount as given.
    EXPECT_EQ(columnas(tabla::planc, "4300000001"), "D5 600 ");
}

TEST_F(Grabacion, Cartera) {
    enlace.AñadirCartera("15/06/2026", "4300000001", "BANCO", "pagaré", 121.5, "01/01/26", "X");
    enlace.AñadirCartera("16/06/26", "4399999999", "", "", -3);
    enlace.AñadirCartera("C60617", "4300000001", "", "", 0);
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
    const auto numero = enlace.Número();
    EXPECT_THAT(
        filas(tabla::efect, {efect::vencimiento, efect::cuenta, efect::titulo, efect::notas, efect::cartera,
                             efect::importe, efect::marca, efect::fecha, efect::asiento}),
        ElementsAre("C60615|4300000001|Cuenta 4300000001|pagaré|BANCO|121.5||C60515|" + numero,
                    "C60616|4399999999||||-3||C60515|" + numero,
                    "C60617|4300000001|Cuenta 4300000001|||0||C60515|" + numero));
    EXPECT_EQ(vivas(tabla::extra), 0U) << "portfolio lines alone make no journal line";
}

// Two lines of one account: the first is filled, then the second.
TEST_F(Grabacion, Analiticas) {
    enlace.Config("NivelesCosto", "24");
    enlace.AbrirEmpresa("Prueba");
    nuevo();
    enlace.AñadirApunte("6230000000", "Primera", 1, 10);
    enlace.AñadirApunte("6230000000", "Segunda", 2, 6);
    for (const double importe : {4.0, 6.0, 6.0})
        enlace.AñadirAnalitica("6230000000", "1001", importe == 4 ? "Su texto" : " ", 1, importe);
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
    EXPECT_THAT(filas(tabla::extra, {campo::numeroAnalitica, campo::importe}),
                ElementsAre("000001|10", "000002|-6"));
    EXPECT_THAT(filas(tabla::anali, {campo::numeroAnalitica, campo::cuenta, campo::cuentaAnalitica,
                                     campo::descripcion, campo::tipo, campo::importe, campo::asiento}),
                ElementsAre("000001|6230000000|1001|Su texto|1|4|" + enlace.Número(),
                            "000001|6230000000|1001|Primera|1|6|" + enlace.Número(),
                            "000002|6230000000|1001|Segunda|2|-6|" + enlace.Número()));
    EXPECT_EQ(columnas(tabla::costo, "1001"), "D5 10 H5 -6 ");
    EXPECT_EQ(columnas(tabla::costo, "10"), "D5 10 H5 -6 ");

    // No room is left in any line, or no line of that account.
    enlace.AñadirApunte("4300000001", "Sin analítica", 1, 5);
    enlace.AñadirAnalitica("4300000001", "1001", "", 1, 5);
    esperarError(
        [&] { enlace.GrabarAsiento(); }, 50008,
        "Hay datos para grabar analítica en la cuenta: 4300000001 pero no hay un apunte contable con esa "
        "cuenta, o no es una cuenta de analitica",
        "Veldorix OLE Server");
    EXPECT_EQ(ultimo({campo::descripcion, campo::numeroAnalitica}), "Sin analítica|");
    EXPECT_EQ(vivas(tabla::anali), 3U);
    // They alone begin no entry.
    enlace.AñadirAnalitica("6230000000", "1001", "", 1, 5);
    EXPECT_FALSE(enlace.HayPendientes());
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
}

// All is stored, the last problem is told.
TEST_F(Grabacion, ErroresAplazados) {
    const auto texto = mundo.carpeta.escribir("nota.txt", "no soy un PDF");
    const auto apunte = [&](const std::string& imagen) {
        enlace.AñadirApunte("4300000001", "Con imagen", 1, 1, "1", 0, "N", "", "", imagen);
    };
    const auto iva = [&](double total) {
        enlace.AddVAT("4300000001", "4770000021", "F", "14/05/26", "1", "R", 100, total, 0, "", "", "", "",
                      "", "", 0, "");
    };
    apunte(texto);
    esperarError([&] { enlace.GrabarAsiento(); }, 55000, "Solo se puede importar archivos PDF");
    apunte(texto);
    iva(200);
    esperarError(
        [&] { enlace.GrabarAsiento(); }, 0x8004C357,
        "\nSe produjo un error en el cálculo del IVA/IGICSe ha grabado el apunte, pero debe comprobar el "
        "Tipo, la Base y el Total");
    EXPECT_FALSE(enlace.HayPendientes());
    iva(121);
    enlace.AñadirAnalitica("9", "1", "", 1, 5);
    EXPECT_THROW(enlace.GrabarAsiento(), link::ErrorEnlace);
    EXPECT_EQ(vivas(tabla::extra), 2U);
    EXPECT_EQ(vivas(tabla::iva01), 2U);
    EXPECT_EQ(empresa(), "2/0");
    apunte(mundo.carpeta.ruta("no está.pdf"));
    EXPECT_EQ(enlace.GrabarAsiento(), 0) << "a PDF that is not there is passed over";
}

// What was stored stays; the lines of the step that failed and of those behind it are not stored.
TEST_F(Grabacion, UnPasoQueFalla) {
    enlace.Config("IvaporEmpresa", "1");
    std::filesystem::create_directory(mundo.datos("IVA0301.QZF"));  // no table of rates
    enlace.AñadirApunte("6230000000", "Entra", 1, 10);
    enlace.AddVAT("4300000001", "4770000021", "F", "14/05/26", "1", "R", 100, 0, 0, "", "", "", "", "", "", 0,
                  "");
    enlace.AñadirCartera("15/06/2026", "4300000001", "BANCO", "", 10);
    enlace.AñadirAnalitica("6230000000", "10", "", 1, 10);
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
    EXPECT_THAT(avisos, testing::HasSubstr("IVA0301.QZF"));
    EXPECT_FALSE(enlace.HayPendientes());
    EXPECT_TRUE(todoCerrado());
    EXPECT_EQ(vivas(tabla::extra), 1U);
    EXPECT_EQ(vivas(tabla::iva01) + vivas(tabla::efect) + vivas(tabla::anali), 0U);
    EXPECT_EQ(columnas(tabla::planc, "6230000000"), "D5 10 ");
}

TEST_F(Grabacion, SinEmpresaOSinNada) {
    EXPECT_EQ(enlace.GrabarAsiento(), 0);
    EXPECT_EQ(vivas(tabla::extra), 0U);
    enlace.CerrarEmpresa();
    esperarError([&] { enlace.GrabarAsiento(); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
}

}  // namespace
}  // namespace tarvoline::pruebas
