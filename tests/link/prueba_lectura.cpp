// Entries read back into the pending collections, and the walks from one to the next.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

using data::tabla::anali;
using data::tabla::efect;
using data::tabla::extra;
using data::tabla::iva01;

struct LecturaAsientos : ::testing::Test, MundoLibros {
    std::string aqui() const { return enlace.Fecha() + "/" + enlace.Número(); }
    std::int32_t pendientes() const {
        return enlace.ContadorApuntes() + enlace.ContadorIva() + enlace.ContadorCartera() +
               enlace.ContadorAnalitica();
    }
};

TEST_F(LecturaAsientos, LosImportesSeLeenComoSeDarian) {
    linea({"C60131", "5700000000", "000001", "Cobro", "1", 121.25, "F-1"});
    linea({"C60131", "7000000000", "000001", "Venta ñ €", "2", -100});
    linea({"C60131", "7000000000", "000001", "Abono", "2", 21.25});  // what type 4 leaves
    linea({"C60131", "7000000000", "000001", "Otra clase", "7", -3});
    linea({"C60131", "7000000000", "000002", "Otro asiento", "2", -1});
    linea({"C60201", "7000000000", "000001", "Otro día", "2", -1});
    fila(extra, {{1, "C60131"},
                 {2, "7000000001"},
                 {3, "000001"},
                 {4, "En dólares"},
                 {5, "2"},
                 {6, "-92"},
                 {7, "200"},
                 {8, "B"},
                 {12, "0.92"},
                 {13, "-100"},
                 {14, "007"},
                 {16, "nota larga"}});
    for (const auto* fecha : {"31/01/26", "260131", "31/01/2026"}) {
        enlace.LeerAsiento(fecha, "000001");
        ASSERT_EQ(enlace.ContadorApuntes(), 5) << fecha;
    }
    EXPECT_TRUE(enlace.HayPendientes());
    EXPECT_EQ(aqui(), "260131/000001");
    constexpr std::array<double, 5> importes{121.25, 100, -21.25, -3, 100};
    constexpr std::array tipos{1, 2, 2, 7, 2};
    for (std::size_t i = 0; i < importes.size(); ++i) {
        const auto apunte = enlace.Apunte(static_cast<std::int32_t>(i + 1));
        EXPECT_EQ(apunte->Importe, importes[i]);
        EXPECT_EQ(apunte->TIPO, tipos[i]);
    }
    EXPECT_EQ(enlace.Apunte(1)->Referencia, "F-1");
    EXPECT_EQ(enlace.Apunte(2)->Descripción, "Venta ñ €");
    const auto ultimo = enlace.Apunte(5);
    EXPECT_EQ(ultimo->Cuenta + ultimo->Diario + ultimo->Canal + ultimo->NOTAS, "7000000001B007nota larga");
    EXPECT_EQ(ultimo->Punteo, 200);
    EXPECT_TRUE(todoCerrado());
    EXPECT_EQ(avisos, "un apunte de Libro Diario no es debe ni haber: 7\n");
}

TEST_F(LecturaAsientos, LibroDeFacturas) {
    const CamposFila comunes{{1, "4000000001"}, {2, "Proveedor"},      {3, "B1"},         {5, "F/77"},
                             {7, "21"},         {8, "000001"},         {9, "4720000021"}, {10, "S"},
                             {11, "991231"},    {12, "0000000003"},    {16, "50"},        {21, "C60131"},
                             {22, "R"},         {24, "SER"},           {25, "01"},        {26, "C60201"},
                             {27, "1"},         {28, "Transferencia"}, {33, "F1"},        {34, "Descripción"},
                             {35, "id"},        {36, "F/77 larga"},    {37, "DUA"},       {38, "01"}};
    // Base, total, pro rata quota, withheld, scheme, net; and the percentage that they come to.
    struct Caso {
        const char* base;
        const char* total;
        const char* retencion;
        const char* regimen;
        const char* liquido;
        double porcentaje;
    };
    const std::vector<Caso> casos{{"200", "242", "30", "", "212", 15},
                                  {"200", "242", "4.6", "02", "237.4", 1.9},
                                  {"200", "242", "30", "", "242", 0},  // of the line before it
                                  {"0", "242", "30", "", "212", 0},
                                  {"200", "242", "0", "", "242", 0}};
    for (const Caso& caso : casos) {
        CamposFila campos = comunes;
        campos.insert(campos.end(), {{6, caso.base},
                                     {15, caso.total},
                                     {23, "21"},
                                     {29, caso.retencion},
                                     {30, caso.regimen},
                                     {31, caso.liquido}});
        fila(iva01, campos);
    }
    enlace.LeerAsiento("31/01/26", "000001");
    ASSERT_EQ(enlace.ContadorIva(), 5);
    for (std::size_t i = 0; i < casos.size(); ++i)
        EXPECT_EQ(enlace.iva(static_cast<std::int32_t>(i + 1))->PorcRetencion, casos[i].porcentaje) << i;
    const auto iva = enlace.iva(2);
    EXPECT_EQ(iva->CuentaClienteProveedor + iva->titulo + iva->NIF + iva->Factura,
              "4000000001ProveedorB1F/77");
    EXPECT_EQ(iva->TipoIva + iva->CuentaIVA + iva->SRTC + iva->NumeroOrden, "214720000021S0000000003");
    EXPECT_EQ(iva->FechaFactura + iva->FechaCobro + iva->MedioCobro + iva->DescripcionMedioCobro,
              "31/12/9901/02/261Transferencia");
    EXPECT_EQ(iva->Base + iva->TOTAL + iva->CuotaProrrata + iva->Liquido + iva->Prorata,
              200 + 242 + 21 + 237.4 + 50);
    EXPECT_EQ(iva->Referencia + iva->SerieFacturas + iva->CLAVEOPERACION + iva->RegimenEspecial, "RSER0102");
    EXPECT_EQ(iva->SII_Codigo + iva->SII_DescripcionDocumento + iva->SII_Id + iva->SII_FacturaExtendida +
                  iva->SII_FacturaRectificativa_DUA + iva->SII_PeriodoPresentacion,
              "F1DescripciónidF/77 largaDUA01");
}

TEST_F(LecturaAsientos, CarteraYAnalitica) {
    fila(efect, {{1, "C60430"},
                 {2, "4300000001"},
                 {4, "pagaré"},
                 {5, "BANCO"},
                 {6, "50.5"},
                 {7, "M"},
                 {8, "C60131"},
                 {9, "000001"}});
    fila(efect, {{1, "C60430"}, {2, "4300000001"}, {8, "C60131"}, {9, "000002"}});
    fila(anali, {{1, "C60131"},
                 {2, "6000000000"},
                 {3, "000001"},
                 {4, "Obra"},
                 {5, "2"},
                 {6, "-12.5"},
                 {12, "1"},
                 {18, "000009"},
                 {19, "1"}});
    enlace.LeerAsiento("31/01/26", "000001");
    ASSERT_EQ(enlace.ContadorCartera(), 1);
    ASSERT_EQ(enlace.ContadorAnalitica(), 1);
    const auto efecto = enlace.cartera(1);
    EXPECT_EQ(efecto->FechaVencimiento + efecto->Cuenta + efecto->cartera + efecto->NOTAS + efecto->Marca,
              "30/04/264300000001BANCOpagaréM");
    EXPECT_EQ(efecto->Fecha + efecto->Asiento, "31/01/26000001");
    EXPECT_EQ(efecto->Importe, 50.5);
    const auto parte = enlace.Analitica(1);
    EXPECT_EQ(parte->CuentaContable + parte->CuentaAnalitica + parte->Descripción, "60000000001Obra");
    EXPECT_EQ(parte->Importe, 12.5);
}

TEST_F(LecturaAsientos, LoQueNoHayNoEsError) {
    linea({"C60131", "5700000000", "000001", "Uno", "1", 1});
    linea({"C60131", "5700000000", "000002", "Dos", "1", 1});
    linea({"C60228", "5700000000", "000002", "Otro mes", "1", 1});
    enlace.LeerAsiento("31/12/99", "000001");  // a year that the company does not keep
    EXPECT_EQ(pendientes(), 0);
    EXPECT_FALSE(enlace.HayPendientes());
    for (const char* ninguna : {"31/12/1899", "31/13/2026", "1/02/2026", "  /  /  "}) {
        enlace.LeerAsiento(ninguna, "000002");
        EXPECT_EQ(pendientes(), 0) << ninguna << ": not the entries of that number of any day";
    }
    enlace.LeerAsiento("31/12/99", "1");
    EXPECT_EQ(pendientes(), 0);
    // A part that was never given restricts nothing.
    link::Enlace otro(contexto);
    otro.LeerAsiento();  // nothing asked for, nothing open: nothing happens
    EXPECT_THROW(otro.LeerAsiento("31/01/26"), link::ErrorEnlace);
    EXPECT_THROW(otro.LeerProximoAsiento(), link::ErrorEnlace);
    otro.AbrirEmpresa("Prueba");
    otro.LeerAsiento();
    EXPECT_EQ(otro.ContadorApuntes(), 2);
    link::Enlace tercero(contexto);
    tercero.AbrirEmpresa("Prueba");
    tercero.LeerAsiento("", "000002");
    EXPECT_EQ(tercero.ContadorApuntes(), 2);
}

// A line without date and number is an entry of its own to the walks.
TEST_F(LecturaAsientos, UnaLineaSinFechaNiNumero) {
    linea({"", "5700000000", "", "Suelta", "1", 1});
    linea({"C60131", "5700000000", "000001", "Uno", "1", 1});
    enlace.LeerPrimerAsiento();
    ASSERT_EQ(enlace.ContadorApuntes(), 1);
    EXPECT_EQ(enlace.Apunte(1)->Descripción, "Suelta");
    enlace.LeerProximoAsiento();
    ASSERT_EQ(enlace.ContadorApuntes(), 1);
    EXPECT_EQ(enlace.Apunte(1)->Descripción, "Uno");
}

TEST_F(LecturaAsientos, SinCompannaNoSePierdeLoPendiente) {
    enlace.AñadirApunte("5700000000", "x", 1, 1);
    auto& empresa = contexto.datos().enVigor;
    link::Enlace cerrada(contexto);
    cerrada.AñadirApunte("5700000000", "x", 1, 1);
    for (const auto paso : {&link::Enlace::LeerProximoAsiento, &link::Enlace::LeerAnteriorAsiento,
                            &link::Enlace::LeerPrimerAsiento, &link::Enlace::LeerUltimoAsiento})
        EXPECT_THROW((cerrada.*paso)(), link::ErrorEnlace);
    EXPECT_EQ(cerrada.ContadorApuntes(), 1);
    EXPECT_FALSE(empresa.gEmpresaActual.empty());
}

TEST_F(LecturaAsientos, LibroVacio) {
    for (const auto paso : {&link::Enlace::LeerPrimerAsiento, &link::Enlace::LeerUltimoAsiento,
                            &link::Enlace::LeerProximoAsiento, &link::Enlace::LeerAnteriorAsiento}) {
        enlace.AñadirApunte("5700000000", "x", 1, 1);
        (enlace.*paso)();
        EXPECT_EQ(pendientes(), 0);
        EXPECT_FALSE(enlace.HayPendientes());
        EXPECT_EQ(aqui(), "/");
        EXPECT_TRUE(todoCerrado());
    }
}

// Both ways round visit every entry once, and the ends leave date and number alone.
TEST_F(LecturaAsientos, RecorridosAlAzar) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto asientos = asientosAlAzar(azar, 80);
    std::int32_t lineas = 0;
    enlace.LeerPrimerAsiento();
    for (const std::string& asiento : asientos) {
        ASSERT_EQ("C" + aqui().substr(1, 5) + enlace.Número(), asiento);
        lineas += enlace.ContadorApuntes();
        enlace.LeerProximoAsiento();
    }
    EXPECT_EQ(lineas, 80);
    EXPECT_EQ(pendientes(), 0);
    EXPECT_EQ("C" + aqui().substr(1, 5) + enlace.Número(), *asientos.rbegin());
    enlace.LeerUltimoAsiento();
    for (auto asiento = asientos.rbegin(); asiento != asientos.rend(); ++asiento) {
        ASSERT_EQ("C" + aqui().substr(1, 5) + enlace.Número(), *asiento);
        enlace.LeerAnteriorAsiento();
    }
    EXPECT_EQ(pendientes(), 0);
    EXPECT_EQ("C" + aqui().substr(1, 5) + enlace.Número(), *asientos.begin());
}

// The entry of the session need not exist: its neighbours are those of the place where it would stand.
TEST_F(LecturaAsientos, VecinosDeUnoQueNoEsta) {
    for (const auto* dia : {"10", "20"}) {
        linea({std::string("C601") + dia, "5700000000", "000005", "x", "1", 1});
        linea({std::string("C601") + dia, "5700000000", "000005", "y", "1", 1});
    }
    struct Caso {
        const char* fecha;
        const char* numero;
        const char* proximo;
        const char* anterior;
    };
    for (const Caso& caso : {Caso{"10/01/26", "000005", "20", ""}, Caso{"10/01/26", "000006", "20", "10"},
                             Caso{"10/01/26", "000004", "10", ""}, Caso{"15/01/26", "000001", "20", "10"},
                             Caso{"20/01/26", "000005", "", "10"}, Caso{"31/01/26", "000001", "", "20"},
                             Caso{"01/01/26", "a\\b", "10", ""}}) {
        const auto dia = [&](void (link::Enlace::*paso)()) {
            enlace.Fecha(caso.fecha);
            enlace.Número(caso.numero);
            (enlace.*paso)();
            return enlace.ContadorApuntes() == 2 ? enlace.Fecha().substr(4) : std::string();
        };
        EXPECT_EQ(dia(&link::Enlace::LeerProximoAsiento), caso.proximo) << caso.fecha << caso.numero;
        EXPECT_EQ(dia(&link::Enlace::LeerAnteriorAsiento), caso.anterior) << caso.fecha << caso.numero;
    }
}

// An entry of the keys whose record nobody has written yet is no line.
TEST_F(LecturaAsientos, LoQueAunNoEstaEscrito) {
    linea({"C60110", "5700000000", "000001", "x", "1", 1});
    linea({"C60130", "5700000000", "000003", "x", "1", 1});
    tablas().AbrirTablasEmpresa();
    tablas().ponerTexto(extra, 1, "C60120");
    tablas().ponerTexto(extra, 3, "000002");
    ASSERT_EQ(tablas().orden("I\\2" + tablas().textosClave(extra)), 0);
    tablas().CerrarTodo();
    enlace.LeerPrimerAsiento();
    enlace.LeerProximoAsiento();
    EXPECT_EQ(aqui(), "260130/000003");
    enlace.LeerAnteriorAsiento();
    EXPECT_EQ(aqui(), "260110/000001");
}

}  // namespace
}  // namespace tarvoline::pruebas
