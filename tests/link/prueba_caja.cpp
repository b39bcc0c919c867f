// VAT on a cash basis. Rates as shipped: 1 is 21 %, 2 is 10 %, 4 is 21 % with a surcharge of 5.2 %.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/en_procesos.h"
#include "apoyo_libros.h"
#include "link/reparto_caja.h"

namespace tarvoline::pruebas {
namespace {

namespace campo = link::posicion::iva;
namespace error = link::error_enlace;
using link::ImportesFila;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto cliente = "4300000001", banco = "5720000000", proveedor = "4000000001";

struct Caja : testing::Test, MundoLibros {
    Caja() { enlace.PutTotal("iva2", "4770000021,4720000021"); }

    struct Cuota {
        std::string tipo;
        double base;
    };
    void facturar(const std::string& numero, const std::vector<Cuota>& cuotas, const std::string& serie = "R",
                  const std::string& tercero = cliente, const std::string& fecha = "14/05/26") {
        enlace.Fecha("15/05/2026");
        enlace.Número("");
        for (const Cuota& cuota : cuotas) {
            link::IVAClass linea;
            linea.CuentaClienteProveedor = tercero;
            linea.CuentaIVA = "4770000021";
            linea.Factura = numero;
            linea.FechaFactura = fecha;
            linea.TipoIva = cuota.tipo;
            linea.SRTC = serie;
            linea.Base = cuota.base;
            linea.NumeroOrden = "0000000007";
            linea.CLAVEOPERACION = "5";
            linea.SII_FacturaExtendida = "Señal extendida";
            linea.SII_FacturaRectificativa_DUA = "DUA-1";
            enlace.AñadirIVA(linea);
        }
        enlace.GrabarAsiento();
    }
    static link::CobroFactura cobro(const std::string& numero, const std::string& importe) {
        link::CobroFactura uno;
        uno.ClienteProveedor = cliente;
        uno.Factura = numero;
        uno.Importe = importe;
        uno.CuentaContable = banco;
        uno.Fecha = "20/06/2026";
        uno.MedioCobro = "1";
        uno.DescripcionMedioCobro = "Transferencia";
        return uno;
    }
    // Rows with a date of collection: the fields, joined with "|".
    std::vector<std::string> cobros(std::initializer_list<int> posiciones) {
        std::vector<std::string> filas;
        tablas().AbrirTablasEmpresa();
        constexpr int libro = data::tabla::iva01;
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(libro); ++i) {
            if (tablas().LeerRegistro(libro, i) != data::EstadoRegistro::vivo) continue;
            if (tablas().texto(libro, campo::fechaCobro).empty()) continue;
            std::string una;
            for (const int posicion : posiciones)
                una += "|" + tablas().texto(libro, posicion);
            filas.push_back(una.substr(1));
        }
        tablas().CerrarTodo();
        return filas;
    }
    std::string asiento() {
        std::string lineas;
        enlace.LeerAsiento();
        for (int i = 1; i <= enlace.ContadorApuntes(); ++i) {
            const auto linea = enlace.Apunte(i);
            lineas += linea->Cuenta + (linea->TIPO == 1 ? " debe " : " haber ") + comoTexto(linea->Importe) +
                      " " + linea->Descripción + "\n";
        }
        return lineas;
    }
};

// 1000 at 21 % and 100 at 10 %: 1320 in all.
TEST_F(Caja, CadaCobroAñadeSusFilasYSuAsiento) {
    facturar("F-1", {{"1", 1000}, {"2", 100}});
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 1320);
    auto primero = cobro("F-1", "330,00");
    primero.CLAVEOPERACION = "8";
    enlace.CobroFacturaCriterioCaja(primero);
    EXPECT_EQ(enlace.Fecha(), "260620");
    const std::string numero = enlace.Número();
    EXPECT_EQ(asiento(), "4300000001 haber 330 Cobro Factura F-1\n5720000000 debe 330 Cobro Factura F-1\n");
    EXPECT_THAT(cobros({campo::srtc, campo::orden, campo::base, campo::importeCuota, campo::total,
                        campo::liquido, campo::asiento, campo::fecha, campo::claveOperacion}),
                ElementsAre("W|0000000001|250|52.5|302.5|302.5|" + numero + "|C60620|8",
                            "W|0000000002|25|2.5|27.5|27.5|" + numero + "|C60620|8"));
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1", "14/05/26"), 990);

    enlace.CobroFacturaCriterioCaja(cobro("F-1", "990"));
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 0);
    const auto filas =
        cobros({campo::orden, campo::base, campo::importeCuota, campo::claveOperacion, campo::fechaFactura,
                campo::fechaCobro, campo::medioCobro, campo::descripcionMedioCobro, campo::facturaExtendida,
                campo::facturaRectificativa, campo::cuota, campo::tipo});
    ASSERT_EQ(filas.size(), 4U);
    EXPECT_EQ(filas[2], "0000000003|750|157.5|5|C60514|C60620|1|Transferencia|Señal extendida|DUA-1|21|01");
    EXPECT_EQ(filas[3], "0000000004|75|7.5|5|C60514|C60620|1|Transferencia|Señal extendida|DUA-1|10|02");
}

TEST_F(Caja, UnPagoInvierteElAsientoYLaSerie) {
    const struct {
        const char *factura, *cobro;
    } series[] = {{"S", "V"}, {"R", "W"}, {"T", "X"}, {"C", "Y"},
                  {"F", "W"}, {"G", "V"}, {"K", "Y"}, {"L", "X"}};
    std::vector<std::string> esperadas;
    for (const auto& serie : series) {
        facturar(std::string("P-") + serie.factura, {{"1", 100}}, serie.factura, proveedor);
        auto pago = cobro(std::string("P-") + serie.factura, "121");
        pago.ClienteProveedor = proveedor;
        pago.DescripcionAsiento = "A cuenta";
        enlace.PagoFacturaCriterioCaja(pago);
        esperadas.push_back(serie.cobro);
    }
    EXPECT_EQ(asiento(), "4000000001 debe 121 A cuenta\n5720000000 haber 121 A cuenta\n");
    EXPECT_EQ(cobros({campo::srtc}), esperadas);
}

TEST_F(Caja, LoQueNoPuedeSerNoEscribeNada) {
    facturar("F-1", {{"1", 100}});
    const std::string antes = enlace.Número();
    struct Caso {
        std::function<void(link::CobroFactura&)> cambio;
        std::uint32_t numero;
        std::string cobro, pago;
    };
    using link::CobroFactura;
    const Caso casos[] = {
        {[](CobroFactura& c) { c.ClienteProveedor = "  "; }, error::sinTercero,
         "No existe el cliente/proveedor.", "No existe el proveedor."},
        {[](CobroFactura& c) { c.Factura = " "; }, error::facturaNoExiste,
         "No existe la factura   para el cliente 4300000001",
         "No existe la factura   para el proveedor 4300000001"},
        {[](CobroFactura& c) { c.Importe = ""; }, error::importeCero, "No se puede efectuar un cobro a 0",
         "No se puede efectuar un pago a 0"},
        {[](CobroFactura& c) { c.Importe = "0.004"; }, error::importeCero,
         "No se puede efectuar un cobro a 0", "No se puede efectuar un pago a 0"},
        {[](CobroFactura& c) { c.Importe = "1,234.56"; }, error::importeCero,
         "No se puede efectuar un cobro a 0", "No se puede efectuar un pago a 0"},
        {[](CobroFactura& c) { c.Importe = "0,00"; }, error::importeCero, "No se puede efectuar un cobro a 0",
         "No se puede efectuar un pago a 0"},
        {[](CobroFactura& c) { c.CuentaContable = " "; }, error::sinCuentaContable,
         "La cuenta contable de cobro no puede estar vacia",
         "La cuenta contable de pago no puede estar vacia"},
        {[](CobroFactura& c) { c.CLAVEOPERACION = "9"; }, error::claveOperacionIncorrecta,
         "Clave operacion incorrecta", "Clave operacion incorrecta"},
        {[](CobroFactura& c) { c.MedioCobro = "3"; }, error::medioCobroIncorrecto,
         "Medio de cobro incorrecto", "Medio de cobro incorrecto"},
        {[](CobroFactura& c) { c.ArchivoImagen = "f.jpg"; }, error::soloPdf,
         "Solo se puede importar archivos PDF", "Solo se puede importar archivos PDF"},
        {[](CobroFactura& c) { c.Factura = "F-2"; }, error::facturaNoExiste,
         "No existe la factura F-2 para el cliente/proveedor 4300000001",
         "No existe la factura F-2 para el cliente/proveedor 4300000001"},
        {[](CobroFactura& c) { c.FechaFactura = "13/05/26"; }, error::facturaNoExiste,
         "No existe la factura F-1 para el cliente/proveedor 4300000001",
         "No existe la factura F-1 para el cliente/proveedor 4300000001"},
        {[](CobroFactura& c) { c.Importe = "121.01"; }, error::superaFactura,
         "El Importe del cobro es superior al importe de la factura",
         "El Importe del cobro es superior al importe de la factura"},
    };
    for (const Caso& caso : casos) {
        auto uno = cobro("F-1", "121");
        caso.cambio(uno);
        esperarError([&] { enlace.CobroFacturaCriterioCaja(uno); }, caso.numero, caso.cobro);
        esperarError([&] { enlace.PagoFacturaCriterioCaja(uno); }, caso.numero, caso.pago);
    }
    for (const char* fecha : {"", "20/06/2025", "31/02/2026"}) {
        auto uno = cobro("F-1", "121");
        uno.Fecha = fecha;
        EXPECT_THROW(enlace.CobroFacturaCriterioCaja(uno), link::ErrorEnlace) << fecha;
    }
    enlace.PutTotal("iva2", "");
    esperarError([&] { enlace.CobroFacturaCriterioCaja(cobro("F-1", "121")); }, error::sinCuentasIva,
                 "Error en la personalización de IVA/IGIC. Confirme las cuentas asociadas.");
    EXPECT_THAT(cobros({campo::srtc}), IsEmpty());
    EXPECT_EQ(enlace.Número(), antes) << "no number was drawn";
    esperarError([&] { enlace.TotalPendiente(cliente, "F-9"); }, error::facturaNoExiste,
                 "No existe la factura F-9 para el cliente/proveedor 4300000001");
}

TEST_F(Caja, HastaElUltimoCentimo) {
    facturar("F-1", {{"1", 100}});
    enlace.CobroFacturaCriterioCaja(cobro("F-1", "100"));
    esperarError([&] { enlace.CobroFacturaCriterioCaja(cobro("F-1", "21.01")); }, error::superaRestante,
                 "El Importe del cobro es superior al importe restante de la factura");
    enlace.CobroFacturaCriterioCaja(cobro("F-1", "21.00"));
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 0);
}

// A withholding leaves nets with more digits than money has; the last payment leaves nothing pending.
TEST_F(Caja, ConRetencion) {
    enlace.Fecha("15/05/2026");
    enlace.Número("");
    for (int i = 0; i < 5; ++i) {
        enlace.AddVAT(cliente, "4770000021", "F-1", "14/05/26", "1", "R", 10.03, 0, 0, "", "", "", "", "", "",
                      15, "");
    }
    enlace.GrabarAsiento();
    for (const char* importe : {"7.77", " 3 "}) {
        auto uno = cobro("F-1", importe);
        uno.ClienteProveedor = " 4300000001 ";
        enlace.CobroFacturaCriterioCaja(uno);
    }
    enlace.CobroFacturaCriterioCaja(cobro("F-1", comoTexto(enlace.TotalPendiente(" 4300000001", "F-1"))));
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 0);
    EXPECT_EQ(asiento().substr(0, 10), cliente);
}

// Without its entry no tax falls due.
TEST_F(Caja, SinAsientoNoHayFilas) {
    facturar("F-1", {{"1", 100}});
    for (const char* archivo : {"EXTRA*.QZD", "EXTRA*.QZC", "PLANC*.QZD"}) {
        ArchivosDefectuosos archivos(*mundo.archivos);
        link::Contexto suyo(archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        suyo.alMostrar([](const std::string&, const std::string&) {});
        suyo.alAvisar([](const std::string&) {});
        link::Enlace con(suyo);
        con.AbrirEmpresa("Prueba");
        archivos.fallar({.operacion = Operacion::escribir, .mascara = archivo, .siempre = true});
        EXPECT_THROW(con.CobroFacturaCriterioCaja(cobro("F-1", "10")), std::exception) << archivo;
    }
    EXPECT_THAT(cobros({campo::srtc}), IsEmpty());
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 121);
}

TEST_F(Caja, SoloLasFilas) {
    facturar("F-1", {{"1", 100}});
    const auto anadir = [&](const char* importe, bool comprobar, const char* descripcion = "Caja") {
        enlace.AñadirIvaCriterioCaja(cliente, "F-1", importe, "2", descripcion, comprobar, "", "20/01/27");
    };
    esperarError([&] { anadir("121", true, " "); }, error::sinDescripcionMedio,
                 "Descripcion del Medio de cobro incorrecta");
    EXPECT_THROW(anadir("500", true), link::ErrorEnlace);
    enlace.Fecha("01/07/26");
    enlace.Número("000321");
    anadir("60.5", true);
    enlace.AddVATCashBased(cliente, "F-1", "500", "2", "Caja", false, "", "20/01/27");
    EXPECT_THAT(cobros({campo::base, campo::asiento, campo::fecha, campo::fechaCobro, campo::claveOperacion}),
                ElementsAre("50|000321|C60701|C70120|5", "413.22|000321|C60701|C70120|5"));
    enlace.LeerAsiento("01/07/26", "000321");
    EXPECT_EQ(enlace.ContadorApuntes(), 0) << "there is no entry";
}

TEST_F(Caja, ElAsientoQueSeEstabaHaciendoSigueAhi) {
    facturar("F-1", {{"1", 100}});
    enlace.Fecha("02/02/26");
    enlace.Número("000777");
    enlace.AñadirApunte("6290000000", "A medias", 1, 5);
    enlace.CobroFacturaCriterioCaja(cobro("F-1", "121"));
    EXPECT_TRUE(enlace.HayPendientes());
    ASSERT_EQ(enlace.ContadorApuntes(), 1);
    EXPECT_EQ(enlace.Apunte(1)->Descripción, "A medias");
    EXPECT_EQ(enlace.Fecha() + enlace.Número(), "260202000777");
}

TEST_F(Caja, UnaFacturaDelAñoAnterior) {
    facturar("F-1", {{"1", 100}}, "R", cliente, "14/05/26");
    const std::string anterior = enlace.Empresa();
    enlace.CrearEmpresa(
        {.NombreEmpresa = carpeta("nueva") + "Siguiente", .año = "2027", .PlanContablePorDefecto = "1"});
    enlace.AbrirEmpresa(carpeta("nueva") + "Siguiente");
    enlace.PutTotal("iva2", "4770000021");
    const auto cobrar = [&](const char* importe) {
        auto uno = cobro("F-1", importe);
        uno.Fecha = "20/01/2027";
        enlace.CobroFacturaCriterioCaja(uno);
    };
    EXPECT_THROW(cobrar("50"), link::ErrorEnlace);
    for (const auto& ruta : {anterior, anterior.substr(0, anterior.size() - 4)}) {
        enlace.Config("Empresa Anterior", ruta);
        cobrar("50");
    }
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 21);
    EXPECT_THROW(cobrar("21.01"), link::ErrorEnlace) << "what both years have collected counts";
    EXPECT_THAT(cobros({campo::orden, campo::liquido, campo::fecha}),
                ElementsAre("0000000001|50|C70120", "0000000002|50|C70120"));
    enlace.Config("Empresa Anterior", carpeta("nueva") + "No está.QZT");
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), -100) << "only what is at hand";
    enlace.AbrirEmpresa(anterior);
    EXPECT_THAT(cobros({campo::liquido}), IsEmpty()) << "the year before is only read";
}

TEST_F(Caja, QuienEstaEnElRegimen) {
    std::string cuenta = "4300000001", otra = "4000000001";
    enlace.CrearCuenta(cuenta, "Uno");
    enlace.CrearCuenta(otra, "Dos");
    EXPECT_EQ(enlace.EsCriterioCaja(cuenta), "");
    const auto padres = [&](const char* marca) {  // of the accounts of 4300
        tablas().AbrirTablasEmpresa();
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(data::tabla::planc); ++i) {
            tablas().LeerRegistro(data::tabla::planc, i);
            if (tablas().texto(data::tabla::planc, 1) != "4300") continue;
            const int numero = tablas().gCampoDePosicion(data::tabla::planc, 10);
            tablas().GrabarCampo(data::tabla::planc, i, numero, marca);
        }
        tablas().CerrarTodo();
    };
    padres("1");
    EXPECT_EQ(enlace.EsCriterioCaja(cuenta), "1") << "the parent decides";
    EXPECT_EQ(enlace.EsCriterioCaja(otra), "");
    EXPECT_EQ(enlace.EsCriterioCaja("4300000099"), "") << "there is no such account";
    enlace.CrearDatos({.Cuenta = cuenta, .CriterioCaja = "0"});
    EXPECT_EQ(enlace.EsCriterioCaja(cuenta), "") << "the master data come first";
    padres(" ");
    enlace.CrearDatos({.Cuenta = cuenta, .CriterioCaja = "1"});
    EXPECT_EQ(enlace.EsCriterioCaja(cuenta), "1");
}

// Whoever comes first collects; together they do not collect more than the invoice.
TEST_F(Caja, VariosCobranLaMismaFactura) {
    facturar("F-1", {{"1", 70}, {"4", 30}});  // 84.70 + 37.86
    constexpr int procesos = 3;
    enProcesos(procesos, 1, [&](int, int) {
        link::Contexto suyo(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        link::Enlace con(suyo);
        con.AbrirEmpresa("Prueba");
        for (int i = 0; i < 12; ++i) {
            try {
                con.CobroFacturaCriterioCaja(cobro("F-1", "7.66"));
            } catch (const link::ErrorEnlace& fallo) {
                if (fallo.numero() != error::superaRestante) throw;
            }
        }
    });
    EXPECT_EQ(enlace.TotalPendiente(cliente, "F-1"), 0);
    EXPECT_EQ(cobros({campo::orden}).size(), 2U * 16U);
}

double centimos(double valor) {
    return std::round(valor * 100) / 100;
}

// Random invoices of one to five rates, collected in random parts: each part's nets add up to it, and all
// parts together are the invoice.
TEST(RepartoCaja, LasPartesSumanLaFactura) {
    const auto semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto entre = [&](int desde, int hasta) {
        return std::uniform_int_distribution(desde, hasta)(azar);
    };
    for (int vez = 0; vez < 3000; ++vez) {
        std::vector<ImportesFila> factura;
        const int signo = vez % 10 == 0 ? -1 : 1;
        for (int i = entre(1, 5); i > 0; --i) {
            ImportesFila fila;
            fila.base = centimos(signo * entre(1, vez % 2 == 0 ? 50 : 1'000'000) / 100.0);
            fila.cuota = centimos(fila.base * 0.21);
            fila.recargo = entre(0, 1) == 0 ? 0 : centimos(fila.base * 0.052);
            fila.cuotaProrrata = centimos(fila.cuota * 0.37);
            fila.total = centimos(fila.base + fila.cuota + fila.recargo);
            fila.retencion = entre(0, 1) == 0 ? 0 : centimos(fila.base * 0.15);
            fila.liquido = centimos(fila.total - fila.retencion);
            factura.push_back(fila);
        }
        const double total = centimos(link::sumar(factura).liquido);
        std::vector<ImportesFila> cobrado(factura.size());
        for (double queda = total; queda != 0;) {
            const double parte = entre(0, 3) == 0 ? queda : centimos(queda * entre(1, 100) / 100.0);
            if (parte == 0) continue;
            const auto partes = link::repartir(factura, cobrado, parte, centimos);
            ASSERT_EQ(centimos(link::sumar(partes).liquido), parte);
            for (std::size_t i = 0; i < partes.size(); ++i) {
                cobrado[i] = link::sumar({cobrado[i], partes[i]});
                ASSERT_NEAR(partes[i].base, factura[i].base * parte / total, 0.06 * 20);
            }
            queda = centimos(queda - parte);
        }
        for (std::size_t i = 0; i < factura.size(); ++i) {
            ASSERT_EQ(centimos(cobrado[i].base), factura[i].base);
            ASSERT_EQ(centimos(cobrado[i].cuota), factura[i].cuota);
            ASSERT_EQ(centimos(cobrado[i].recargo), factura[i].recargo);
            ASSERT_EQ(centimos(cobrado[i].cuotaProrrata), factura[i].cuotaProrrata);
            ASSERT_EQ(centimos(cobrado[i].total), factura[i].total);
            ASSERT_EQ(centimos(cobrado[i].retencion), factura[i].retencion);
            ASSERT_EQ(centimos(cobrado[i].liquido), factura[i].liquido);
        }
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
