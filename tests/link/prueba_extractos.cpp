// Statements of accounts, and the searches whose lines come as those of a statement.
#include <gtest/gtest.h>

#include <random>

#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

using data::tabla::costo;
using data::tabla::extra;
using data::tabla::iva01;

struct Extractos : ::testing::Test, MundoLibros {
    // "day entry balance" of each line.
    std::string saldos() const {
        std::string texto;
        for (int i = 1; i <= enlace.ContadorExtracto(); ++i) {
            const auto una = enlace.Extracto(i);
            texto += una->Fecha.substr(0, 2) + " " + una->Asiento + " " + comoTexto(una->Saldo) + "; ";
        }
        return texto;
    }
    std::string descripciones() const {
        std::string texto;
        for (int i = 1; i <= enlace.ContadorExtracto(); ++i)
            texto += enlace.Extracto(i)->Descripción + ";";
        return texto;
    }
    void tresMeses() {
        cuenta("4300000001");
        cuenta("4300000002");
        linea({"C60315", "4300000001", "3", "marzo", "2", -30.1, "R3"});
        linea({"C60115", "4300000001", "1", "enero", "1", 100.2, "R1"});
        linea({"C60215", "4300000001", "2", "febrero", "1", 0.3, "R2"});
        linea({"C60215", "4300000002", "2", "ajena", "1", 7, "R2"});
        linea({"C60215", "5700000000", "2", "caja", "2", -7.3, "R2"});
    }
};

TEST_F(Extractos, SaldoDeUnaCuenta) {
    tresMeses();
    enlace.LeerExtracto("4300000001");
    EXPECT_EQ(saldos(), "15 1 100.2; 15 2 100.5; 15 3 70.4; ");
    const auto primera = enlace.Extracto(1), ultima = enlace.Extracto(3);
    EXPECT_EQ(primera->Cuenta + primera->Fecha + primera->Descripción + primera->Diario + primera->Canal +
                  primera->Referencia + primera->Moneda + primera->Usuario + primera->FechaGrabacion,
              "430000000115/01/26enero1000R109909/03/26");
    EXPECT_EQ(primera->REGISTRO, 2);
    EXPECT_EQ(primera->CambioMoneda, 1);
    EXPECT_EQ(primera->ValorEnMoneda, 100.2);
    EXPECT_EQ(primera->Debe, 100.2);
    EXPECT_EQ(primera->Haber, 0);
    EXPECT_EQ(ultima->TIPO, 2);
    EXPECT_EQ(ultima->Importe, -30.1);  // as it stands on disk
    EXPECT_EQ(ultima->Debe, 0);
    EXPECT_EQ(ultima->Haber, -30.1);
    EXPECT_TRUE(todoCerrado());
}

TEST_F(Extractos, LimitesYSaldoInicial) {
    tresMeses();
    const auto extracto = [&](const char* desde, const char* hasta) {
        enlace.LeerExtracto("4300000001", desde, hasta);
        return saldos();
    };
    EXPECT_EQ(extracto("15/02/26", ""), "15 2 100.5; 15 3 70.4; ");
    EXPECT_EQ(extracto("16/01/26", "15/02/26"), "15 2 100.5; ");
    EXPECT_EQ(extracto("", "14/03/26"), "15 1 100.2; 15 2 100.5; ");
    EXPECT_EQ(extracto("16/03/26", ""), "");
    EXPECT_THROW(enlace.LeerExtracto("4300000001", "01/01/25"), link::ErrorEnlace);
    EXPECT_THROW(enlace.LeerExtractoEx("4300000001", "", "31/02/26"), link::ErrorEnlace);
}

TEST_F(Extractos, Patrones) {
    tresMeses();
    enlace.LeerExtracto("43*");
    EXPECT_EQ(saldos(), "15 1 100.2; 15 2 100.5; 15 3 70.4; 15 2 7; ");  // each account from 0
    enlace.LeerExtracto("430000000?", "01/02/26", "28/02/26");
    EXPECT_EQ(saldos(), "15 2 100.5; 15 2 7; ");
    enlace.LeerExtracto("*");
    EXPECT_EQ(enlace.ContadorExtracto(), 5);
    for (const auto* nada : {"", "  ", "43", "43000000011"}) {
        enlace.LeerExtracto(nada);
        EXPECT_EQ(enlace.ContadorExtracto(), nada == std::string("43000000011") ? 3 : 0) << nada;
    }
}

TEST_F(Extractos, Analiticos) {
    fila(costo, {{1, "10"}, {2, "Obra"}, {3, "0"}});
    linea({"C60215", "6000000000", "2", "b", "1", 5}, "10");
    linea({"C60115", "6000000000", "1", "a", "2", -2}, "10");
    linea({"C60115", "6000000000", "1", "de otra", "1", 1}, "11");
    enlace.LeerExtracto("1*", "", "", 10);
    EXPECT_EQ(saldos(), "15 1 -2; 15 2 3; 15 1 1; ");
    EXPECT_EQ(enlace.Extracto(1)->Cuenta, "10");
    enlace.LeerExtracto("10", "", "", 10);
    EXPECT_EQ(enlace.ContadorExtracto(), 2);
    enlace.LeerExtracto("10");
    EXPECT_EQ(enlace.ContadorExtracto(), 0);
}

TEST_F(Extractos, ElTextoExacto) {
    tresMeses();
    fila(extra, {{1, "C60401"},
                 {2, "4300000001"},
                 {3, "4"},
                 {4, "año\ta\r\nb €"},
                 {5, "1"},
                 {6, "0.125"},
                 {7, "7"},
                 {8, "B"},
                 {14, "001"},
                 {22, "R 4"}});
    EXPECT_EQ(enlace.LeerExtractoEx("4300000001"),
              "4300000001\t15/01/26\t1\tenero\t100.2\t0\t100.2\t\t1\t000\tR1\r\n"
              "4300000001\t15/02/26\t2\tfebrero\t0.3\t0\t100.5\t\t1\t000\tR2\r\n"
              "4300000001\t15/03/26\t3\tmarzo\t0\t-30.1\t70.4\t\t1\t000\tR3\r\n"
              "4300000001\t01/04/26\t4\taño a  b €\t0.125\t0\t70.53\t7\tB\t001\tR 4\r\n");
    // From the limit on, the balance begins with 0.
    EXPECT_EQ(enlace.LeerExtractoEx("4300000001 ", "16/01/26", "01/03/26"),
              "4300000001\t15/02/26\t2\tfebrero\t0.3\t0\t0.3\t\t1\t000\tR2\r\n");
    EXPECT_EQ(enlace.LeerExtractoEx("") + enlace.LeerExtractoEx("43*") + enlace.LeerExtractoEx("9"), "");
    EXPECT_EQ(enlace.LeerExtractoEx("4300000001", "01/05/26"), "");
    EXPECT_TRUE(todoCerrado());
}

// Lines of many accounts in between, removed ones and ones to come: what is read ahead must not show.
TEST_F(Extractos, EntreMuchasLineas) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    std::multimap<std::string, std::string> esperadas;  // by date, in the order of entry
    tablas().AbrirTablasEmpresa();
    for (int i = 0; i < 1500; ++i) {
        const bool propia = azar() % (i < 700 ? 2 : 40) == 0;
        const std::string fecha = "C60" + std::to_string(1 + azar() % 9) + "01";
        tablas().blanquear(extra);
        for (const auto& [posicion, texto] :
             CamposFila{{1, fecha}, {2, propia ? "57" : "58"}, {4, std::to_string(i)}, {5, "1"}, {6, "1"}})
            tablas().ponerTexto(extra, posicion, texto);
        tablas().AnadirRegistro(extra);
        const std::int32_t registro = tablas().gRegistro;
        if (azar() % 5 == 0) {
            tablas().BorrarRegistro(extra, registro);
        } else if (propia) {
            esperadas.emplace(fecha, std::to_string(i));
        }
    }
    tablas().CerrarTodo();
    enlace.LeerExtracto("57");
    std::string todas;
    for (const auto& [fecha, descripcion] : esperadas)
        todas += descripcion + ";";
    EXPECT_EQ(descripciones(), todas);
    const std::string texto = enlace.LeerExtractoEx("57");
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(texto, '\n')), esperadas.size());
}

TEST_F(Extractos, BuscarReferencia) {
    tresMeses();
    EXPECT_TRUE(enlace.BuscarReferencia("R2"));
    EXPECT_EQ(descripciones(), "febrero;ajena;caja;");
    EXPECT_TRUE(enlace.BuscarReferencia("R2   ", true));
    EXPECT_EQ(enlace.ContadorExtracto(), 3);
    for (const auto* nada : {"R", "r2", " R2", "R22"}) {
        EXPECT_FALSE(enlace.BuscarReferencia(nada)) << nada;
        EXPECT_EQ(enlace.ContadorExtracto(), 0);
        EXPECT_EQ(enlace.ExisteReferencia(nada), 0);
    }
    EXPECT_EQ(enlace.ExisteReferencia("R2 "), 3);
    fila(iva01, {{5, "A\\1 AND B"}});
    fila(iva01, {{5, "A\\1 AND B"}});
    fila(iva01, {{5, "A\\1"}});
    EXPECT_EQ(enlace.ExisteIva("A\\1 AND B"), 2);
    EXPECT_EQ(enlace.ExisteIva("A"), 0);
    EXPECT_THROW(enlace.LeerReferencia("R2"), link::ErrorEnlace);
    EXPECT_TRUE(todoCerrado());
}

TEST_F(Extractos, BuscarDescripcionEImporte) {
    tresMeses();
    const auto borrada = linea({"C60101", "5700000000", "9", "Enero bis", "1", 30.1});
    const auto buscar = [&](const char* texto, bool ignorar) {
        EXPECT_FALSE(enlace.BuscarDescripcion(texto, ignorar));  // tells nothing locally
        return descripciones();
    };
    EXPECT_EQ(buscar("nero", false), "enero;Enero bis;");
    EXPECT_EQ(buscar("ENERO", false), "");
    EXPECT_EQ(buscar("ENERO", true), "enero;Enero bis;");
    EXPECT_EQ(buscar("R2", true), "");  // another column
    EXPECT_FALSE(enlace.BuscarImporte(30.1));
    EXPECT_EQ(descripciones(), "marzo;Enero bis;");
    EXPECT_EQ(enlace.Extracto(1)->Saldo, 0);
    enlace.BuscarImporte(-100.2);
    EXPECT_EQ(descripciones(), "enero;");
    // Another program marks what it removes and leaves the rest of the record.
    tablas().AbrirTablasEmpresa();
    tablas().GrabarCampo(extra, borrada, tablas().gCampoDePosicion(extra, 1), "ANULAD");
    tablas().GrabarCampo(extra, borrada, tablas().gCampoDePosicion(extra, 2), "O");
    tablas().BorrarRegistro(extra, 1);
    tablas().CerrarTodo();
    EXPECT_EQ(buscar("nero", false), "enero;");
    enlace.BuscarImporte(30.1);
    EXPECT_EQ(enlace.ContadorExtracto(), 0);
    enlace.BuscarImporte(0);  // what a removed record holds
    EXPECT_EQ(enlace.ContadorExtracto(), 0);
    EXPECT_TRUE(todoCerrado());
}

}  // namespace
}  // namespace tarvoline::pruebas
