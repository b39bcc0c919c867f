// Lines of VAT: the amounts by hand, numbers of order, and what else a row holds. Rates as shipped: 1 is 21
// %, 2 is 10 %, 4 is 21 % with a surcharge of 5.2 %, 5 is 10 % with 1.4 %, 9 is 9.5 %.
#include <gtest/gtest.h>

#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

namespace campo = link::posicion::iva;
using data::tabla::datos;
using data::tabla::iva01;

struct Iva : testing::Test, MundoLibros {
    Iva() { nuevo(); }

    void nuevo() {
        enlace.Fecha("15/05/2026");
        enlace.Número("");
    }
    static link::IVAClass linea(const std::string& tipo, double base, double total) {
        link::IVAClass una;
        una.CuentaClienteProveedor = "4300000001";
        una.CuentaIVA = "4770000021";
        una.Factura = "F-1";
        una.FechaFactura = "14/05/26";
        una.TipoIva = tipo;
        una.SRTC = "R";
        una.Base = base;
        una.TOTAL = total;
        return una;
    }
    // Stores what is pending; the number of the error that is told, or 0.
    std::uint32_t grabar() {
        try {
            enlace.GrabarAsiento();
            return 0;
        } catch (const link::ErrorEnlace& error) {
            return error.numero();
        }
    }
    std::uint32_t grabar(const link::IVAClass& una) {
        enlace.AñadirIVA(una);
        return grabar();
    }
    // Fields of a row, joined with "|"; 0 is the last row, -1 the one before.
    std::string fila(int desde, std::initializer_list<int> posiciones) {
        tablas().AbrirTablasEmpresa();
        tablas().LeerRegistro(iva01, static_cast<std::int32_t>(tablas().cuantosRegistros(iva01)) + desde);
        std::string todos;
        for (const int posicion : posiciones)
            todos += "|" + tablas().texto(iva01, posicion);
        tablas().CerrarTodo();
        return todos.substr(1);
    }
    std::string ultima(std::initializer_list<int> posiciones) { return fila(0, posiciones); }
};

TEST_F(Iva, Importes) {
    constexpr std::uint32_t malo = 0x8004C357U;
    const struct {
        const char* tipo;
        double base, total;
        const char* espera;  // rate, base, quota, surcharge, total
        std::uint32_t error = 0;
    } casos[] = {
        {"1", 100, 0, "01|100|21|0|121"},
        {"01", 100, 121, "01|100|21|0|121"},
        {"21.00", 100, 0, "01|100|21|0|121"},
        // The total given holds; up to two cents nothing is said.
        {"21.00", 100, 121.02, "01|100|21.02|0|121.02"},
        {"21.00", 100, 120.98, "01|100|20.98|0|120.98"},
        {"21.00", 100, 121.03, "01|100|21.03|0|121.03", malo},
        {"21.00", 100, 120.97, "01|100|20.97|0|120.97", malo},
        {"1", 1000000, 1210000.02, "01|1000000|210000.02|0|1210000.02"},
        {"1", 1000000, 1210000.03, "01|1000000|210000.03|0|1210000.03", malo},
        // Surcharges, and a percentage that counts both.
        {"4", 100, 0, "04|100|21|5.2|126.2"},
        {"26.2", 200, 0, "04|200|42|10.4|252.4"},
        {"11.4", 50, 0, "05|50|5|0.7|55.7"},
        {"4", 100, 126.22, "04|100|21.02|5.2|126.22"},
        {"9.5", 33.33, 0, "09|33.33|3.17|0|36.5"},
        // From the total: 100/1.21 = 82.6446, 21 % of 82.64 = 17.3544, and a cent is left for the quota.
        {"1", 0, 121, "01|100|21|0|121"},
        {"1", 0, 100, "01|82.64|17.36|0|100"},
        // 100/1.262 = 79.2393; 16.6404 and 4.12048.
        {"4", 0, 100, "04|79.24|16.64|4.12|100"},
        {"2", 0, 0.01, "02|0.01|0|0|0.01"},
        // Half a cent goes away from zero, on either side.
        {"2", 10.55, 0, "02|10.55|1.06|0|11.61"},
        {"2", -10.55, 0, "02|-10.55|-1.06|0|-11.61"},
        {"1", -100, -121.03, "01|-100|-21.03|0|-121.03", malo},
        // No rate: by number, and by a percentage that none has.
        {"0", 100, 0, "00|100|0|0|100"},
        {"00", 100, 100.03, "00|100|0.03|0|100.03", malo},
        {"33.00", 100, 0, "00|100|0|0|100"},
        {"", 100, 0, "00|100|0|0|100"},
        {"1", 0, 0, "01|0|0|0|0"},
        // Beyond the file: what it gives, which is nothing.
        {"A1", 100, 0, "A1|100|0|0|100"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(std::string(caso.tipo) + " " + comoTexto(caso.base) + " " + comoTexto(caso.total));
        EXPECT_EQ(grabar(linea(caso.tipo, caso.base, caso.total)), caso.error);
        EXPECT_EQ(
            ultima({campo::tipo, campo::base, campo::importeCuota, campo::importeRecargo, campo::total}),
            caso.espera);
    }
}

TEST_F(Iva, UnTipoQueNoExisteGuardaElAnterior) {
    enlace.AñadirIVA(linea("2", 100, 0));
    enlace.AñadirIVA(linea("-1", 50, 0));
    esperarError([&] { enlace.GrabarAsiento(); }, 50011,
                 "Se ha pasado al servidor OLE un tipo de Iva que no existe: -1");
    EXPECT_EQ(ultima({campo::base, campo::importeCuota, campo::cuota, campo::total}), "50|5|10|55");
}

TEST_F(Iva, Prorrata) {
    auto una = linea("1", 33.33, 0);  // 6.9993, rounded to 7
    una.Prorata = 33;
    EXPECT_EQ(grabar(una), 0U);
    EXPECT_EQ(ultima({campo::prorrata, campo::importeCuota, campo::cuotaProrrata}), "33|7|4.69");
    EXPECT_EQ(grabar(linea("1", 33.33, 0)), 0U);
    EXPECT_EQ(ultima({campo::prorrata, campo::importeCuota, campo::cuotaProrrata}), "|7|0");
}

TEST_F(Iva, Retenciones) {
    const struct {
        double base, total, tanto;
        const char* regimen;
        double liquido;
        const char* espera;  // net, withheld
    } casos[] = {
        {100, 0, 15, "", 0, "106|15"},          // of the base
        {100, 0, 15, "02", 0, "102.85|18.15"},  // of the total
        {100, 0, 15, "  ", 0, "106|15"},
        {0, 121, 15, "", 0, "106|15"},      // of the base that the total gives
        {100, 0, 15, "", 100, "100|21"},    // as given
        {100, 0, 15, "", 0.001, "106|15"},  // less than a cent is none
        {100, 0, 0, "", 50, "121|0"},
    };
    for (const auto& caso : casos) {
        auto una = linea("1", caso.base, caso.total);
        una.PorcRetencion = caso.tanto;
        una.RegimenEspecial = caso.regimen;
        una.Liquido = caso.liquido;
        EXPECT_EQ(grabar(una), 0U);
        EXPECT_EQ(ultima({campo::liquido, campo::retencion}), caso.espera)
            << caso.base << " " << caso.tanto << caso.regimen;
    }
    // Within one entry the amount withheld stays for the line behind.
    auto con = linea("1", 100, 0);
    con.PorcRetencion = 15;
    enlace.AñadirIVA(con);
    EXPECT_EQ(grabar(linea("1", 10, 0)), 0U);
    EXPECT_EQ(ultima({campo::liquido, campo::retencion}), "12.1|15");
}

TEST_F(Iva, NumerosDeOrden) {
    const auto anadir = [&](const char* factura, const char* serie, const char* orden = "") {
        auto una = linea("1", 1, 0);
        una.Factura = factura;
        una.SRTC = serie;
        una.NumeroOrden = orden;
        enlace.AñadirIVA(una);
    };
    const auto ordenes = [&](int cuantas) {
        EXPECT_EQ(grabar(), 0U);
        std::string todas;
        for (int i = 1 - cuantas; i <= 0; ++i)
            todas += fila(i, {campo::orden}) + " ";
        return todas;
    };
    anadir("A", "R");
    anadir("A", "R");  // the same invoice
    anadir("B", "R");
    anadir("B", "S");  // a series of its own
    anadir("A", "R");
    EXPECT_EQ(ordenes(5), "0000000001 0000000001 0000000002 0000000001 0000000003 ");
    anadir("A", "R");  // of another entry
    anadir("C", "R", "0000000900");
    anadir("D", "R");
    EXPECT_EQ(ordenes(3), "0000000004 0000000900 0000000901 ");
    anadir("", "");
    EXPECT_EQ(ordenes(1), " ") << "no invoice of no series has no number";
}

TEST_F(Iva, DeQuienEs) {
    MundoLibros::fila(datos, {{1, "4300000001"}, {2, "Cliente, S. A."}, {3, "A12345678"}});
    cuenta("4300000002");
    const auto quien = [&](const char* cuenta, const char* titulo, const char* nif) {
        auto una = linea("1", 1, 0);
        una.CuentaClienteProveedor = cuenta;
        una.titulo = titulo;
        una.NIF = nif;
        EXPECT_EQ(grabar(una), 0U);
        return ultima({campo::cuenta, campo::titulo, campo::nif});
    };
    EXPECT_EQ(quien("4300000001", "", ""), "4300000001|Cliente, S. A.|A12345678");
    EXPECT_EQ(quien("4300000001", "Otro", ""), "4300000001|Otro|A12345678");
    EXPECT_EQ(quien("4300000001", "", "B1"), "4300000001|Cliente, S. A.|B1");
    EXPECT_EQ(quien("4300000002", "", ""), "4300000002|Cuenta 4300000002|");
    EXPECT_EQ(quien("4300000003", "", ""), "4300000003||");
    EXPECT_EQ(quien("4300000003", "Él", "X"), "4300000003|Él|X");
}

TEST_F(Iva, LoDemasDeUnaFila) {
    auto una = linea("5", 50, 0);
    una.Referencia = "REF";
    una.SerieFacturas = "SER";
    una.CLAVEOPERACION = "01";
    una.SII_Codigo = " 07 ";
    una.SII_DescripcionDocumento = " Un texto que sigue ";
    una.SII_Id = " 12 ";
    una.SII_FacturaRectificativa_DUA = "DUA-1";
    una.SII_PeriodoPresentacion = "-1";
    EXPECT_EQ(grabar(una), 0U);
    EXPECT_EQ(ultima({campo::factura, campo::asiento, campo::cuentaIva, campo::srtc, campo::fechaFactura,
                      campo::cuota, campo::recargo, campo::fecha, campo::referencia, campo::serieFacturas,
                      campo::claveOperacion, campo::fechaCobro, campo::medioCobro}),
              "F-1|" + enlace.Número() + "|4770000021|R|C60514|10|1.4|C60515|REF|SER|01||");
    EXPECT_EQ(ultima({campo::siiCodigo, campo::siiDescripcion, campo::siiId, campo::facturaExtendida,
                      campo::facturaRectificativa, campo::periodo}),
              "07|Un texto que sigue|12|F-1|DUA-1|05");
    const std::pair<const char*, const char*> periodos[] = {
        {"0", ""}, {"0000", ""}, {" 03 ", "03"}, {"4T", "4T"}};
    for (const auto& [dado, guardado] : periodos) {
        auto otra = linea("1", 1, 0);
        otra.SII_PeriodoPresentacion = dado;
        otra.SII_FacturaExtendida = "Factura de sesenta";
        EXPECT_EQ(grabar(otra), 0U);
        EXPECT_EQ(ultima({campo::periodo, campo::facturaExtendida, campo::siiDescripcion}),
                  std::string(guardado) + "|Factura de sesenta|");
    }
}

// A company may keep rates of its own.
TEST_F(Iva, TiposDeLaEmpresa) {
    auto propios = platform::leerTodo(*mundo.archivos, programa() + "IVA03.QZF");
    const float mitad = 50;
    std::memcpy(propios.data() + 25, &mitad, sizeof mitad);  // the tax of rate 1
    mundo.escribir("IVA0301.QZF", propios);
    enlace.Config("IvaporEmpresa", "1");
    EXPECT_EQ(grabar(linea("1", 100, 0)), 0U);
    EXPECT_EQ(ultima({campo::total}), "150");
    enlace.Config("IvaporEmpresa", "0");
    EXPECT_EQ(grabar(linea("1", 100, 0)), 0U);
    EXPECT_EQ(ultima({campo::total}), "121");
}

}  // namespace
}  // namespace tarvoline::pruebas
