// Entries at random: posted, read back, annulled and posted again as read.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include "apoyo_libros.h"
#include "data/utilidades.h"

namespace tarvoline::pruebas {
namespace {

using data::tabla::anali;
using data::tabla::costo;
using data::tabla::efect;
using data::tabla::extra;
using data::tabla::iva01;
using data::tabla::planc;

struct IdaYVuelta : ::testing::Test, MundoLibros {
    IdaYVuelta() {
        for (const auto* una : {"4300000001", "4770000021"})
            cuenta(una);
        fila(planc, {{1, "6230000000"}, {2, "Servicios"}, {3, "0"}, {6, "1"}});
        enlace.Canal("7");
    }

    std::uint32_t hasta(std::uint32_t cuantos) { return static_cast<std::uint32_t>(azar() % cuantos); }
    double importe() { return hasta(200'000) / 100.0 - 500; }

    void apunte() {
        constexpr std::array cuentas{"4300000001", "5700000000", "7000000000", "4770000021"};
        constexpr std::array diarios{"1", "9", "A", "b", "C", "z"};
        constexpr std::array referencias{"", "F/1", "Ñ \\ 2"};
        enlace.AñadirApunte(cuentas[hasta(4)], "Apunte número " + std::to_string(hasta(99)),
                            1 + static_cast<int>(hasta(4)), importe(), diarios[hasta(6)],
                            static_cast<int>(hasta(256)), hasta(2) == 0 ? "N" : "012", referencias[hasta(3)],
                            hasta(4) == 0 ? "nota €" : "");
    }
    void analiticos() {
        const double todo = 10 + hasta(1000) / 100.0;
        const int tipo = 1 + static_cast<int>(hasta(2));
        enlace.AñadirApunte("6230000000", "Repartido", tipo, todo);
        enlace.AñadirAnalitica("6230000000", "10", "", tipo, 4.25);
        enlace.AñadirAnalitica("6230000000", "11", "El resto", tipo, std::round(todo * 100 - 425) / 100);
    }
    void iva() {
        link::IVAClass linea;
        linea.CuentaClienteProveedor = "4300000001";
        linea.CuentaIVA = "4770000021";
        linea.Factura = "F/" + std::to_string(hasta(1000));
        linea.FechaFactura = "30/01/26";
        linea.TipoIva = hasta(2) == 0 ? "1" : "00";
        linea.SRTC = "R";
        const bool deBase = hasta(2) == 0;
        (deBase ? linea.Base : linea.TOTAL) = hasta(100'000) / 100.0 + 1;
        linea.Prorata = static_cast<std::uint8_t>(hasta(2) * 40);
        linea.RegimenEspecial = hasta(2) == 0 ? "" : "02";
        // A percentage of no base withholds nothing, which cannot be read back as one.
        if (deBase || !linea.RegimenEspecial.empty()) linea.PorcRetencion = hasta(3) * 7.5;
        linea.SII_PeriodoPresentacion = hasta(2) == 0 ? "-1" : "0";
        linea.SII_DescripcionDocumento = hasta(2) == 0 ? "" : "Descripción larga";
        linea.Referencia = "R";
        enlace.AñadirIVA(linea);
    }
    void asiento(int numero) {
        enlace.Fecha("31/" + std::string(hasta(2) == 0 ? "01" : "03") + "/26");
        enlace.Número(core::conCeros(numero, 6));
        for (std::uint32_t i = 1 + hasta(4); i > 0; --i)
            apunte();
        if (hasta(2) == 0) analiticos();
        for (std::uint32_t i = hasta(3); i > 0; --i)
            iva();
        if (hasta(3) == 0) enlace.AñadirCartera("15/06/26", "4300000001", "BANCO", "pagaré", importe());
        enlace.GrabarAsiento();
    }

    // All rows of an entry's tables, sorted, but for the analytic numbers that link them; amounts without the
    // noise of their last digits.
    std::vector<std::string> filas() {
        std::vector<std::string> todas;
        tablas().AbrirTablasEmpresa();
        for (const int tabla : {extra, iva01, efect, anali}) {
            for (std::int32_t i = 1; i <= tablas().cuantosRegistros(tabla); ++i) {
                if (tablas().LeerRegistro(tabla, i) != data::EstadoRegistro::vivo) continue;
                const auto& campos = tablas().ranura(tabla).gCampos;
                std::string fila = std::to_string(tabla);
                for (std::size_t campo = 1; campo < campos.size(); ++campo) {
                    const bool enlaza = (tabla == extra || tabla == anali) &&
                                        static_cast<int>(campo) == tablas().gCampoDePosicion(tabla, 18);
                    const bool numero =
                        tablas().definicion(tabla).campos[campo].forma == data::FormaCampo::doble;
                    if (enlaza) continue;
                    fila += "|" + (numero ? comoTexto(data::Redondear(core::Val(campos[campo]), 6))
                                          : campos[campo]);
                }
                todas.push_back(fila);
            }
        }
        tablas().CerrarTodo();
        std::ranges::sort(todas);
        return todas;
    }
    // The largest balance of any account, parents among them, and of the company.
    double mayorSaldo() {
        double mayor = std::max(std::fabs(core::Val(enlace.Config("CARGOSA"))),
                                std::fabs(core::Val(enlace.Config("ABONOSA"))));
        tablas().AbrirTablasEmpresa();
        for (const int tabla : {planc, costo}) {
            const std::array columnas{tablas().gCampoDePosicion(tabla, link::posicion::planc::debe),
                                      tablas().gCampoDePosicion(tabla, link::posicion::planc::haber)};
            for (std::int32_t i = 1; i <= tablas().cuantosRegistros(tabla); ++i) {
                for (int periodo = 0; periodo < 15; ++periodo) {
                    for (const int columna : columnas)
                        mayor =
                            std::max(mayor, std::fabs(tablas().LeerCampoDoble(tabla, i, columna + periodo)));
                }
            }
        }
        tablas().CerrarTodo();
        return mayor;
    }

    std::mt19937 azar{std::random_device{}()};
};

TEST_F(IdaYVuelta, LeerAnularYVolverAGrabar) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    azar.seed(semilla);
    constexpr int cuantos = 25;
    for (int i = 1; i <= cuantos; ++i) {
        // Some in another currency, whose amounts are given back as they were given.
        enlace.Moneda(i % 5 == 0 ? "USD" : "");
        enlace.CambioMoneda(0.92);
        asiento(i);
    }
    const auto grabadas = filas();
    ASSERT_GT(grabadas.size(), static_cast<std::size_t>(cuantos));
    EXPECT_GT(mayorSaldo(), 1);
    enlace.LeerPrimerAsiento();
    for (int i = 0; i < cuantos; ++i) {
        ASSERT_TRUE(enlace.HayPendientes());
        const std::string fecha = enlace.Fecha(), numero = enlace.Número();
        enlace.Moneda(core::ValEntero(numero) % 5 == 0 ? "USD" : "");
        enlace.CambioMoneda(0.92);
        enlace.AnularAsiento(fecha, numero);
        enlace.GrabarAsiento();
        enlace.LeerProximoAsiento();
    }
    const auto vueltas = filas();
    std::vector<std::string> distintas;
    std::ranges::set_symmetric_difference(grabadas, vueltas, std::back_inserter(distintas));
    EXPECT_EQ(distintas, std::vector<std::string>{});
    // As they came, in any order: nothing is left of them, nor of what they moved.
    std::vector<link::FechaAsto> asientos;
    for (enlace.LeerUltimoAsiento(); enlace.HayPendientes(); enlace.LeerAnteriorAsiento())
        asientos.push_back({enlace.Fecha(), enlace.Número()});
    ASSERT_EQ(asientos.size(), static_cast<std::size_t>(cuantos));
    std::ranges::shuffle(asientos, azar);
    for (const auto& uno : asientos)
        enlace.AnularAsiento(uno.Fecha, uno.Asiento);
    EXPECT_TRUE(filas().empty());
    EXPECT_LT(mayorSaldo(), 0.001);
    EXPECT_EQ(avisos, "");
}

}  // namespace
}  // namespace tarvoline::pruebas
