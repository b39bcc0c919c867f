#include "data/totales.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/en_procesos.h"
#include "data/apoyo_tablas.h"
#include "data/fuente_definicion.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::CabeceraEmpresa;
using data::Tablas;
using data::Totales;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace tabla = data::tabla;

std::string fuenteCuentas() {
    std::string fuente =
        "titulo PLAN\ncampo 1 texto 10 CUENTA\ncampo 2 texto 40 TITULO\ncampo 3 texto 1 NIVEL\n"
        "campo 4 texto 20 NOTAS\ncampo 6 texto 1 ANALITICA\n";
    for (const int base : {12, 13}) {
        const std::string lado = base == 12 ? "DEBE " : "HABER ";
        fuente += "campo " + std::to_string(base) + " doble " + lado + "APERTURA\n";
        for (int mes = 1; mes <= 14; ++mes) {
            const int posicion = (base == 12 ? 40 : 60) + mes;
            fuente += "campo " + std::to_string(posicion) + " doble " + lado + std::to_string(mes) + "\n";
        }
    }
    return fuente + "campo 14 texto 18 NIF\nclave 1 1(1,10)\n";
}
constexpr const char* fuenteLineas =
    "titulo DIARIO\ncampo 1 fecha FECHA\ncampo 2 texto 10 CUENTA\ncampo 3 texto 6 ASIENTO\ncampo 5 texto 1 "
    "TIPO\n"
    "campo 6 doble IMPORTE\ncampo 8 texto 1 DIARIO\ncampo 18 texto 6 NUMERO ANALITICA\n"
    "campo 19 texto 10 CUENTA ANALITICA\nclave 1 1(1,6) 3(1,6)\nclave 2 2(1,10) 1(1,6)\nclave 3 18(1,6)\n";
constexpr const char* fuenteIva =
    "titulo IVA\ncampo 1 texto 10 CLIENTE\ncampo 2 texto 10 TITULO\ncampo 10 texto 1 SERIE\n"
    "campo 12 texto 10 NUMERO DE ORDEN\nclave 1 1(1,10)\nclave 2 2(1,10)\nclave 3 10(1,1) 12(1,10)\n";

// A company of the levels 1, 2, 3 and 7, with 43 and the sub-account 4300001 in its plan.
struct Contabilidad : MundoTablas {
    std::string empresa = crear("empresa", "/A=25/N=12300/X=0007");
    Tablas tablas{capa};
    Totales totales{capa, tablas};

    Contabilidad() {
        capa.enVigor.gEmpresaActual = "07";
        capa.enVigor.gNiveles = {0, 1, 2, 3, 0, 0, 0, 0, 7};
        capa.enVigor.gNivelesAnalitica = {0, 2, 4, 0, 0, 0, 0, 0, 0};
        definir({"PLANC", "COSTO"}, fuenteCuentas());
        definir({"EXTRA", "ANALI"}, fuenteLineas);
        definir({"IVA01"}, fuenteIva);
        EXPECT_TRUE(abrirTodas(tablas));
        for (const char* codigo : {"43", "4300001"}) {
            tablas.blanquear(tabla::planc);
            tablas.ponerTexto(tabla::planc, 1, codigo);
            tablas.ponerTexto(tabla::planc, 2, "Clientes");
            tablas.ponerTexto(tabla::planc, 4, "notas propias");
            tablas.AnadirRegistro(tabla::planc);
        }
    }
    void definir(std::initializer_list<const char*> nombres, const std::string& fuente) {
        const auto definicion = data::leerFuenteDefinicion("prueba", fuente, {});
        for (const char* nombre : nombres)
            carpeta.escribir("programa/" + std::string(nombre) + ".QZA",
                             data::componerDefinicion(definicion));
    }
    bool abrirTodas(Tablas& estas) {
        bool todas = true;
        for (const auto& [numero, nombre] : {std::pair{tabla::planc, "PLANC"},
                                             {tabla::extra, "EXTRA"},
                                             {tabla::iva01, "IVA01"},
                                             {tabla::costo, "COSTO"},
                                             {tabla::anali, "ANALI"}})
            todas = abrir(estas, numero, nombre) && todas;
        return todas;
    }
    static void linea(Tablas& estas, int numero, std::string_view fecha, std::string_view cuenta,
                      std::string_view tipo, std::string_view diario = "1") {
        estas.blanquear(numero);
        estas.ponerTexto(numero, 1, fecha);
        estas.ponerTexto(numero, numero == tabla::extra ? 2 : 19, cuenta);
        estas.ponerTexto(numero, 5, tipo);
        estas.ponerTexto(numero, 8, diario);
    }
    void contabilizar(std::string_view fecha, std::string_view tipo, std::string_view diario, double importe,
                      int signo = 1, std::string_view cuenta = "4300001") {
        linea(tablas, tabla::extra, fecha, cuenta, tipo, diario);
        totales.gImporte = importe;
        totales.ActualizarTotalesCuenta(signo, empresa);
    }
    std::int32_t registroDe(const std::string& codigo, int plan = tabla::planc) {
        return tablas.orden("S\\1\\" + std::to_string(plan) + "\\" + codigo) == 0 ? tablas.gRegistro : 0;
    }
    double columna(const std::string& codigo, int base, int periodo, int plan = tabla::planc) {
        return tablas.LeerCampoDoble(plan, registroDe(codigo, plan),
                                     tablas.gCampoDePosicion(plan, base) + periodo);
    }
    // "code/base+period=sum" of all columns that are not 0.
    std::vector<std::string> saldos(int plan = tabla::planc) {
        std::vector<std::string> textos;
        for (const std::int32_t registro : recorrido(tablas, plan, 1)) {
            tablas.LeerRegistro(plan, registro);
            for (const int base : {12, 13}) {
                for (int periodo = 0; periodo < 15; ++periodo) {
                    const std::string suma =
                        tablas.gCampos(plan, tablas.gCampoDePosicion(plan, base) + periodo);
                    if (suma == "0") continue;
                    textos.push_back(tablas.texto(plan, 1) + "/" + std::to_string(base) + "+" +
                                     std::to_string(periodo) + "=" + suma);
                }
            }
        }
        return textos;
    }
    CabeceraEmpresa cabeza() {
        return CabeceraEmpresa::leer(*archivos->abrir(empresa, platform::Apertura::lectura));
    }
};

TEST(Totales, CreaLosMayoresQueFaltanYSumaEnTodos) {
    Contabilidad m;
    m.tablas.LeerRegistro(tabla::planc, 2);
    m.contabilizar("C50315", "1", "1", 100.5);
    EXPECT_THAT(m.saldos(),
                ElementsAre("4/12+3=100.5", "43/12+3=100.5", "430/12+3=100.5", "4300001/12+3=100.5"));
    EXPECT_THAT(m.totales.gRegistrosCuenta, ElementsAre(2, 3, 1, 4, 0, 0, 0, 0, 0));
    // What it made is a parent of its level, and blank of what the slot held; the slot holds it again.
    m.tablas.LeerRegistro(tabla::planc, 2);
    m.contabilizar("C50315", "1", "1", 1, 1, "4300001");
    EXPECT_EQ(m.tablas.texto(tabla::planc, 4), "notas propias");
    for (const auto& [codigo, nivel] : {std::pair{"4", "1"}, {"430", "3"}}) {
        m.tablas.LeerRegistro(tabla::planc, m.registroDe(codigo));
        EXPECT_EQ(m.tablas.texto(tabla::planc, 1), codigo);
        EXPECT_EQ(m.tablas.texto(tabla::planc, 2), "*** MAYOR SIN TÍTULO ***");
        EXPECT_EQ(m.tablas.texto(tabla::planc, 3), nivel);
        EXPECT_EQ(m.tablas.texto(tabla::planc, 6), "0");
        EXPECT_EQ(m.tablas.texto(tabla::planc, 4), "");
    }
    EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA), 101.5);
    EXPECT_EQ(m.cabeza().valor(data::cabecera::ABONOSA), 0);
    EXPECT_EQ(m.cabeza().texto(data::cabecera::MES), "03");
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
}

TEST(Totales, ElPeriodoYElLado) {
    struct Caso {
        const char *fecha, *tipo, *diario;
        int base, periodo;
    };
    for (const auto& [fecha, tipo, diario, base, periodo] :
         {Caso{"C50315", "1", "A", 12, 0}, Caso{"C50315", "2", "B", 13, 13}, Caso{"C50315", "1", "C", 12, 14},
          Caso{"C51231", "2", "9", 13, 12}, Caso{"990101", "1", "", 12, 1},
          Caso{"C51331", "1", "1", 12, 0}}) {
        SCOPED_TRACE(std::string(fecha) + tipo + diario);
        Contabilidad m;
        m.contabilizar(fecha, tipo, diario, -7.25);
        EXPECT_EQ(m.columna("4300001", base, periodo), -7.25);
        EXPECT_EQ(m.columna("430", base, periodo), -7.25);
        EXPECT_EQ(m.saldos().size(), 4U);
        const bool debe = base == 12;
        EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA), debe ? -7.25 : 0);
        EXPECT_EQ(m.cabeza().valor(data::cabecera::ABONOSA), debe ? 0 : -7.25);
        m.contabilizar(fecha, tipo, diario, -7.25, -1);
        EXPECT_THAT(m.saldos(), IsEmpty());
        EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA), 0);
        EXPECT_EQ(m.cabeza().valor(data::cabecera::ABONOSA), 0);
    }
}

TEST(Totales, NiDebeNiHaberNoCambiaNada) {
    Contabilidad m;
    m.capa.enVigor.gArchivoEmpresa = m.empresa;
    const auto antes = std::pair(m.leer("PLANC07.QZD"), m.carpeta.leer("datos/empresa.QZT"));
    for (const char* tipo : {"3", "", "0"})
        m.contabilizar("C50315", tipo, "1", 5);
    EXPECT_EQ(std::pair(m.leer("PLANC07.QZD"), m.carpeta.leer("datos/empresa.QZT")), antes);
    EXPECT_THAT(m.avisos, HasSubstr("no es debe ni haber"));
}

TEST(Totales, CuentaQueNoHayYNivelesIguales) {
    Contabilidad m;
    m.contabilizar("C50315", "1", "1", 5, 1, "5700000");
    EXPECT_THAT(m.saldos(), IsEmpty());
    EXPECT_EQ(m.tablas.cuantosRegistros(tabla::planc), 2);
    EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA), 5);
    // Two levels of the same length mean one parent.
    m.capa.enVigor.gNiveles = {0, 2, 2, 0, 0, 0, 0, 0, 0};
    m.contabilizar("C50315", "1", "1", 5);
    EXPECT_THAT(m.saldos(), ElementsAre("43/12+3=5", "4300001/12+3=5"));
}

TEST(Totales, LosDeLaAnalitica) {
    Contabilidad m;
    const std::string antes = m.carpeta.leer("datos/empresa.QZT");
    Contabilidad::linea(m.tablas, tabla::anali, "C51315", "010203", "2");
    m.totales.ActualizarTotalesAnalitica(1, -12.5);
    EXPECT_THAT(m.saldos(tabla::costo), ElementsAre("01/13+0=-12.5", "0102/13+0=-12.5", "010203/13+0=-12.5"));
    m.tablas.LeerRegistro(tabla::costo, m.registroDe("010203", tabla::costo));
    EXPECT_EQ(m.tablas.texto(tabla::costo, 2), "Mayor sin título");
    EXPECT_EQ(m.tablas.texto(tabla::costo, 3), "0");
    m.tablas.LeerRegistro(tabla::costo, m.registroDe("0102", tabla::costo));
    EXPECT_EQ(m.tablas.texto(tabla::costo, 2), "*** MAYOR SIN TÍTULO ***");
    EXPECT_EQ(m.tablas.texto(tabla::costo, 3), "2");
    m.totales.ActualizarTotalesAnalitica(-1, -12.5);
    EXPECT_THAT(m.saldos(tabla::costo), IsEmpty());
    EXPECT_EQ(m.tablas.cuantosRegistros(tabla::costo), 3);
    EXPECT_EQ(m.carpeta.leer("datos/empresa.QZT"), antes);
}

TEST(Totales, ContadorDeLaAnalitica) {
    Contabilidad m;
    EXPECT_EQ(m.totales.SiguienteContadorAnalitica(m.empresa), "000001");
    EXPECT_EQ(m.totales.SiguienteContadorAnalitica(m.empresa), "000002");
    EXPECT_EQ(m.cabeza().texto(data::cabecera::CONTADORANALITICA), "000002");
    // The next one is in use: one behind the last of them, and it is kept.
    for (const char* numero : {"000003", "000041"}) {
        m.tablas.blanquear(tabla::anali);
        m.tablas.ponerTexto(tabla::anali, 18, numero);
        m.tablas.AnadirRegistro(tabla::anali);
    }
    m.tablas.ponerTexto(tabla::anali, 18, "yo");
    EXPECT_EQ(m.totales.SiguienteContadorAnalitica(m.empresa), "000042");
    EXPECT_EQ(m.totales.SiguienteContadorAnalitica(m.empresa), "000043");
    EXPECT_EQ(m.tablas.texto(tabla::anali, 18), "yo");
    auto cabeza = m.cabeza();
    cabeza.poner(data::cabecera::CONTADORANALITICA, "999999");
    cabeza.grabar(*m.archivos->abrir(m.empresa, platform::Apertura::escritura));
    EXPECT_THROW(m.totales.SiguienteContadorAnalitica(m.empresa), std::overflow_error);
    EXPECT_EQ(m.cabeza().texto(data::cabecera::CONTADORANALITICA), "999999");
}

TEST(Totales, OrdenDeIva) {
    Contabilidad m;
    EXPECT_EQ(m.totales.SiguienteOrdenIva("S"), "0000000001");
    const auto factura = [&](const char* serie, const char* orden) {
        m.tablas.blanquear(tabla::iva01);
        m.tablas.ponerTexto(tabla::iva01, 10, serie);
        m.tablas.ponerTexto(tabla::iva01, 12, orden);
        m.tablas.AnadirRegistro(tabla::iva01);
    };
    factura("R", "0000000007");
    factura("R", "0000000012");
    factura("T", "3000000000");
    m.tablas.ponerTexto(tabla::iva01, 1, "mi factura");
    for (const auto& [serie, orden] : {std::pair{"A", "0000000001"},
                                       {"R", "0000000013"},
                                       {"S", "0000000001"},
                                       {"T", "3000000001"},
                                       {"U", "0000000001"}})
        EXPECT_EQ(m.totales.SiguienteOrdenIva(serie), orden) << serie;
    EXPECT_EQ(m.tablas.texto(tabla::iva01, 1), "mi factura");
    EXPECT_EQ(m.tablas.texto(tabla::iva01, 12), "3000000000");
    // An order whose record never came counts for nothing.
    m.tablas.orden("I\\4\\x\\y\\R0000000099");
    EXPECT_EQ(m.totales.SiguienteOrdenIva("R"), "0000000013");
    // Nor does one whose record was removed while its keys stayed.
    m.tablas.blanquear(tabla::iva01);
    m.tablas.ponerTexto(tabla::iva01, 1, "ANULADO");
    m.tablas.EscribirRegistro(tabla::iva01, 2);
    EXPECT_EQ(m.totales.SiguienteOrdenIva("R"), "0000000008");
}

// Nothing is posted without its lock: neither a column nor the head.
TEST(Totales, SinBloqueoNoSeSuma) {
    Contabilidad m;
    m.contabilizar("C50315", "1", "1", 1);
    const auto numeroDe = [&] {
        try {
            m.contabilizar("C50315", "1", "1", 1);
            return 0;
        } catch (const platform::ErrorArchivo& error) {
            return error.numero();
        }
    };
    Tablas otra(m.capa);
    ASSERT_TRUE(m.abrirTodas(otra));
    const int marzo = otra.gCampoDePosicion(tabla::planc, 12) + 3;
    otra.BloquearRegistro(tabla::planc, 2, marzo);
    EXPECT_EQ(numeroDe(), platform::error_archivo::permisoDenegado);
    EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA), 1);
    m.contabilizar("C50415", "1", "1", 10);  // the column beside is free
    otra.DesbloquearRegistro(tabla::planc, 2, marzo);
    EXPECT_EQ(m.columna("4300001", 12, 3), 1);
    EXPECT_EQ(m.columna("4300001", 12, 4), 10);
    const auto archivo =
        m.archivos->abrir(m.empresa, platform::Apertura::escritura, platform::Comparticion::compartida);
    ASSERT_TRUE(archivo->bloquear({0, 1}, platform::TipoBloqueo::exclusivo));
    EXPECT_EQ(numeroDe(), platform::error_archivo::permisoDenegado);
    EXPECT_THROW(m.totales.SiguienteContadorAnalitica(m.empresa), platform::ErrorArchivo);
}

// Processes that post to the same and to different columns, with the parents still to be made, and take
// numbers at the same time.
TEST(Totales, VariosProcesosSumanExacto) {
    Contabilidad m;
    m.tablas.CerrarTodo();
    m.capa.reintentosTablas = {500, std::chrono::milliseconds(10)};
    m.capa.reintentosEmpresa = {1000, std::chrono::milliseconds(10)};
    constexpr int procesos = 3, veces = 60;
    enProcesos(procesos, veces, [&](int proceso, int vez) {
        Tablas tablas(m.capa);
        Totales totales(m.capa, tablas);
        if (!m.abrirTodas(tablas)) throw std::runtime_error("not open");
        const std::string fecha = vez % 2 == 0 ? "C50115" : "C5020" + std::to_string(1 + proceso);
        Contabilidad::linea(tablas, tabla::extra, fecha, "4300001", vez % 3 == 0 ? "2" : "1");
        totales.gImporte = 1;
        totales.ActualizarTotalesCuenta(1, m.empresa);
        Contabilidad::linea(tablas, tabla::anali, fecha, "0102" + std::to_string(vez), "1");
        tablas.ponerTexto(tabla::anali, 18, totales.SiguienteContadorAnalitica(m.empresa));
        tablas.AnadirRegistro(tabla::anali);
        if (tablas.gEstado != 0) throw std::runtime_error("not stored");
        totales.ActualizarTotalesAnalitica(1, 0.5);
    });
    ASSERT_TRUE(m.abrirTodas(m.tablas));
    constexpr double todas = procesos * veces;
    // Codes came into being once each: 4, 43, 430, 4300001; 01, 0102 and the accounts.
    EXPECT_EQ(recorrido(m.tablas, tabla::planc, 1).size(), 4U);
    EXPECT_EQ(recorrido(m.tablas, tabla::costo, 1).size(), 2U + veces);
    EXPECT_EQ(recorrido(m.tablas, tabla::anali, 3).size(), procesos * veces);
    EXPECT_EQ(m.cabeza().valor(data::cabecera::CARGOSA) + m.cabeza().valor(data::cabecera::ABONOSA), todas);
    EXPECT_EQ(m.cabeza().valor(data::cabecera::ABONOSA), todas / 3);
    EXPECT_EQ(m.cabeza().texto(data::cabecera::CONTADORANALITICA), core::conCeros(procesos * veces, 6));
    for (const char* codigo : {"4", "43", "430", "4300001"}) {
        EXPECT_EQ(m.columna(codigo, 12, 1) + m.columna(codigo, 13, 1), todas / 2) << codigo;
        EXPECT_EQ(m.columna(codigo, 12, 2) + m.columna(codigo, 13, 2), todas / 2) << codigo;
    }
    for (const char* codigo : {"01", "0102"})
        EXPECT_EQ(m.columna(codigo, 12, 1, tabla::costo) + m.columna(codigo, 12, 2, tabla::costo), todas / 2);
}

}  // namespace
