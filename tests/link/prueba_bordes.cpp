// Postings at the edge of what callers give and disks hold.
#include <gtest/gtest.h>

#include <chrono>

#include "data/empresa_suelta.h"
#include "data/monedas.h"
#include "data/tablas.h"
#include "data/utilidades.h"
#include "link/apoyo_enlace.h"

namespace tarvoline::pruebas {
namespace {

using link::ErrorEnlace;
namespace tabla = data::tabla;

class Bordes : public testing::Test {
  protected:
    void asiento(std::string_view numero = "") {
        enlace.Fecha("15/02/26");
        enlace.Número(numero);
    }
    // A field of the last record of a table, by position.
    std::string ultimo(int numero, const char* nombre, int posicion) {
        data::Tablas tablas(mundo.contexto.datos());
        EXPECT_TRUE(tablas.AbrirTabla(numero, nombre, 0, mundo.mundo.datos(), "01"));
        tablas.LeerRegistro(numero, static_cast<std::int32_t>(tablas.cuantosRegistros(numero)));
        return tablas.texto(numero, posicion);
    }
    double cargos() { return std::stod(enlace.Config("CARGOSA")); }
    MundoEnlace mundo;
    link::Enlace& enlace = mundo.enlace;
};

// What comes beside a line does not keep it from the totals.
TEST_F(Bordes, ElPdfQueNoCabeNoDejaTotalesAMedias) {
    const auto pdf = mundo.mundo.carpeta.escribir("Factura.PDF", "%PDF-1.4");
    mundo.mundo.escribir("Prueba", "in the way of the folder");
    asiento();
    enlace.AñadirApunte("5700000000", "Caja", 1, 100, "1", 0, "N", "", "", pdf);
    enlace.AñadirApunte("7000000000", "Never stored", 2, 100);
    enlace.GrabarAsiento();
    EXPECT_EQ(cargos(), 100);
    EXPECT_EQ(ultimo(tabla::extra, "EXTRA", 4), "Caja");
    EXPECT_NE(mundo.avisos.find("PDF"), std::string::npos);
    EXPECT_FALSE(enlace.HayPendientes());
}

// The name of a PDF is that of the row, whatever the caller gave.
TEST_F(Bordes, ElPdfSeLlamaComoLaFila) {
    const auto pdf = mundo.mundo.carpeta.escribir("Factura.pdf", "%PDF-1.4");
    for (int i = 0; i < 2; ++i) {
        asiento("26/0017");
        enlace.AñadirApunte("57000000001", "Caja", 1, 100, "1", 0, "N", "", "", pdf);
        enlace.GrabarAsiento();
    }
    EXPECT_TRUE(mundo.mundo.carpeta.hay("datos/Prueba/C6021526-0015700000000.pdf"));
    EXPECT_TRUE(mundo.mundo.carpeta.hay("datos/Prueba/C6021526-0015700000000~2.pdf"));
    EXPECT_EQ(mundo.avisos, "");
}

// An account that cannot be made because its table is held costs the tries of the table, not those times the
// tries of the company file.
TEST_F(Bordes, LosReintentosNoSeMultiplican) {
    data::CapaDatos& datos = mundo.contexto.datos();
    datos.reintentosTablas = {4, std::chrono::milliseconds(10)};
    datos.reintentosEmpresa = {1000, std::chrono::milliseconds(10)};
    data::Tablas ajenas(datos);
    ASSERT_TRUE(ajenas.AbrirTabla(tabla::planc, "PLANC", 1, mundo.mundo.datos(), "01"));
    ajenas.orden("S\\1\\1\\5700000000");
    ASSERT_EQ(ajenas.gEstado, 0);
    ajenas.BloquearRegistro(tabla::planc, ajenas.gRegistro);
    std::string cuenta = "5700000000";
    const auto antes = std::chrono::steady_clock::now();
    EXPECT_THROW(enlace.CrearCuenta(cuenta, "Caja", "-1"), platform::ErrorArchivo);
    EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::seconds(5));
}

TEST_F(Bordes, Cuentas) {
    std::string ultima = "9999999999";
    for (const char* nivel : {"0", "0", "3"})
        EXPECT_TRUE(enlace.CrearCuenta(ultima, "La última", nivel)) << nivel;
    std::string detras = "99999*";
    EXPECT_FALSE(enlace.CrearCuenta(detras, "Ninguna"));
    EXPECT_EQ(detras, "99999*");
    // The account of a line may be a pattern.
    asiento();
    enlace.AñadirApunte("4300*", "Cliente nuevo", 1, 12);
    enlace.GrabarAsiento();
    EXPECT_EQ(ultimo(tabla::extra, "EXTRA", 2), "4300000001");
    EXPECT_EQ(ultimo(tabla::extra, "EXTRA", 17), "Cuenta Sin Titulo");
}

// A key that a kill has left without its row does not hide the account behind it.
TEST_F(Bordes, UnaClaveSinFilaNoTapaLaCuenta) {
    {
        data::Tablas tablas(mundo.contexto.datos());
        ASSERT_TRUE(tablas.AbrirTabla(tabla::datos, "DATOS", 1, mundo.mundo.datos(), "01"));
        tablas.blanquear(tabla::datos);
        tablas.ponerTexto(tabla::datos, 1, "4300000001");
        tablas.orden("I\\3" + tablas.textosClave(tabla::datos));  // and no record
        tablas.ponerTexto(tabla::datos, 2, "Ana");
        tablas.ponerTexto(tabla::datos, 3, "B1");
        tablas.AnadirRegistro(tabla::datos);
    }
    asiento();
    enlace.AddVAT("4300000001", "4770000021", "F1", "15/02/26", "21.00", "R", 100, 0, 0, "", "", "", "", "",
                  "", 0, "");
    enlace.GrabarAsiento();
    EXPECT_EQ(ultimo(tabla::iva01, "IVA01", 2), "Ana");
    EXPECT_EQ(ultimo(tabla::iva01, "IVA01", 3), "B1");
}

TEST_F(Bordes, FechasComoLasEscribeLaGente) {
    for (const char* fecha :
         {"15/02/26", "15/2/26", "15-02-2026", " 15/02/2026 ", "2026-02-15", "260215", "C60215"}) {
        asiento();
        enlace.AddVAT("4300000001", "4770000021", "F1", fecha, "1", "R", 100, 0, 0, "x", "x", "", "", "", "",
                      0, "");
        enlace.AñadirCartera(fecha, "4300000001", "1", "", 5);
        EXPECT_EQ(enlace.iva(1)->FechaFactura, "15/02/26") << fecha;
        enlace.GrabarAsiento();
        EXPECT_EQ(ultimo(tabla::iva01, "IVA01", 11), "C60215") << fecha;
        EXPECT_EQ(ultimo(tabla::efect, "EFECT", 1), "C60215") << fecha;
    }
    link::IVAClass linea;
    for (const char* mala : {"31/02/x6", "30/02/26", "15/02/1826", "15 de febrero", "15/02"}) {
        linea.FechaFactura = mala;
        EXPECT_THROW(enlace.AñadirIVA(linea), ErrorEnlace) << mala;
    }
    for (const char* mala : {"31/12/1826", "31/12/0026"})
        EXPECT_THROW(enlace.Fecha(mala), ErrorEnlace) << mala;
    linea.FechaFactura.clear();
    EXPECT_EQ(enlace.AñadirIVA(linea)->FechaFactura, "");
    EXPECT_THROW(enlace.AñadirApunte("57", "", 1, 1, "1", 300), std::overflow_error);
}

TEST_F(Bordes, Porcentajes) {
    EXPECT_EQ(enlace.tiposiva(4)->Recargo, 5.2);
    asiento();
    enlace.AddVAT("4300000001", "4770000021", "F1", "15/02/26", "4", "R", 100, 0, 0, "x", "x", "", "", "", "",
                  0, "");
    enlace.GrabarAsiento();
    EXPECT_EQ(ultimo(tabla::iva01, "IVA01", 14), "5.2");
    // What is withheld goes by the base, also by one that was worked out.
    asiento();
    enlace.AddVAT("4300000001", "4770000021", "F1", "15/02/26", "21.00", "R", 0, 121, 0, "x", "x", "", "", "",
                  "", 15, "");
    enlace.GrabarAsiento();
    EXPECT_EQ(ultimo(tabla::iva01, "IVA01", 29) + " " + ultimo(tabla::iva01, "IVA01", 31), "15 106");
}

TEST_F(Bordes, UnaMonedaUnaFila) {
    EXPECT_EQ(enlace.CalcularMoneda(100).ValorEnPesetas, 100);  // straight after the opening
    EXPECT_EQ(mundo.avisos, "");
    for (const char* codigo : {"US ", "US", "US Dollar"}) {
        enlace.Moneda(codigo);
        enlace.CambioMoneda(0.9);
        asiento();
        enlace.AñadirApunte("5700000000", "Caja", 1, 100);
        enlace.GrabarAsiento();
        EXPECT_EQ(ultimo(tabla::extra, "EXTRA", 11), "2") << codigo;
        EXPECT_EQ(ultimo(tabla::extra, "EXTRA", 6), "90") << codigo;
    }
    enlace.CerrarEmpresa();
    EXPECT_THROW(enlace.CalcularMoneda(1), ErrorEnlace);
}

// Nothing is posted to a mixture of two companies; behind a wrong password the levels are those of the
// company.
TEST_F(Bordes, EmpresasQueNoSeAbren) {
    EXPECT_THROW(enlace.AbrirEmpresa("Ninguna"), ErrorEnlace);
    EXPECT_EQ(enlace.NumeroEmpresa(), "");
    EXPECT_THROW(enlace.Número(""), ErrorEnlace);
    data::CabeceraEmpresa cabecera;
    const std::string ruta = mundo.mundo.datos("Prueba.QZT");
    {
        const auto archivo = mundo.mundo.archivos->abrir(ruta, platform::Apertura::escritura);
        cabecera = data::CabeceraEmpresa::leer(*archivo);
        cabecera.poner(data::cabecera::PASSWORD1, data::EnmascararClave("abcd"));
        cabecera.grabar(*archivo);
    }
    EXPECT_THROW(enlace.AbrirEmpresa("Prueba", "mala"), ErrorEnlace);
    asiento();
    enlace.AñadirApunte("5700000000", "Caja", 1, 100);
    enlace.GrabarAsiento();
    data::Tablas tablas(mundo.contexto.datos());
    ASSERT_TRUE(tablas.AbrirTabla(tabla::planc, "PLANC", 1, mundo.mundo.datos(), "01"));
    tablas.orden("S\\1\\1\\5");
    ASSERT_EQ(tablas.gEstado, 0);
    EXPECT_EQ(tablas.LeerCampo(tabla::planc, tablas.gRegistro, tablas.gCampoDePosicion(tabla::planc, 12) + 2),
              "100");
}

}  // namespace
}  // namespace tarvoline::pruebas
