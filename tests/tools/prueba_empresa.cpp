// qztabla on a whole company: what postings leave is sound, damage is named, and recalcular mends it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <random>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/en_procesos.h"
#include "apoyo/mundo_datos.h"
#include "apoyo/variables_proceso.h"
#include "data/empresa_suelta.h"
#include "data/recalculo.h"
#include "data/seccion_textos.h"
#include "data/tablas.h"
#include "data/totales.h"

namespace tarvoline::pruebas {
namespace {

using data::Tablas;
using testing::HasSubstr;
namespace tabla = data::tabla;
namespace linea = data::posicion_linea;
namespace fs = std::filesystem;

constexpr std::uint64_t largoApunte = 465;

using Saldos = std::map<std::string, std::vector<std::string>>;

struct Empresa : testing::Test {
    MundoDatos mundo;
    VariablesProceso variables;
    std::string ruta;
    data::CapaDatos& capa = mundo.capa;

    void SetUp() override {
        variables.poner("XDG_CONFIG_HOME", mundo.carpeta.ruta("config"));
        mundo.ajustes.GrabarRegistro("Directory", TARVOLINE_PROGRAMA);
        mundo.ajustes.GrabarRegistro("CON_DIR", TARVOLINE_PROGRAMA);
        capa.reintentosEmpresa = {1000, std::chrono::milliseconds(10)};
        ruta = mundo.crear("Panadería Núñez", "/C/A=25/N=12340/X=0000");
        data::SeccionTextos(capa).PUT_TOTAL("NivelesCosto", "246", ruta);
        data::ponerEnVigor(capa, ruta);
        Tablas tablas(capa);
        ASSERT_TRUE(tablas.AbrirTablasEmpresa());
        for (const char* codigo : {"4300000001", "4300000002", "5700000000", "7000000000", "70"}) {
            tablas.blanquear(tabla::planc);
            tablas.ponerTexto(tabla::planc, data::posicion_cuenta::codigo, codigo);
            tablas.AnadirRegistro(tabla::planc);
        }
    }

    // Arguments as a shell reads them.
    int correr(const std::string& argumentos) const {
        const auto orden = std::string(TARVOLINE_BIN) + "/qztabla " + argumentos + " > '" +
                           mundo.carpeta.ruta("salida.txt") + "' 2> '" + mundo.carpeta.ruta("errores.txt") +
                           "'";
        const int estado = std::system(orden.c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    int verificar() const { return correr("verificar '" + ruta + "'"); }
    int recalcular(const std::string& mas = {}) const { return correr("recalcular '" + ruta + "' " + mas); }
    std::string salida() const { return mundo.carpeta.leer("salida.txt"); }
    std::string errores() const { return mundo.carpeta.leer("errores.txt"); }

    // One line of the journal and an analytic one, posted as the link does.
    static void contabilizar(data::CapaDatos& con, Tablas& tablas, std::mt19937& azar) {
        const auto uno = [&](std::initializer_list<const char*> de) {
            return std::string(de.begin()[azar() % de.size()]);
        };
        data::Totales totales(con, tablas);
        const auto poner = [&](int cual, const char* importe) {
            const std::string mes = core::conCeros(static_cast<int>(azar() % 13) + 1, 2);
            tablas.blanquear(cual);
            tablas.ponerTexto(cual, linea::fecha, "C5" + mes + "15");
            tablas.ponerTexto(cual, linea::tipo, uno({"1", "2", "1", "2", "1", "2", "9"}));
            tablas.ponerTexto(cual, linea::diario, uno({"1", "1", "2", "A", "B", "C", ""}));
            // The other one of the two amounts is never that which counts.
            tablas.ponerTexto(cual, linea::importe, "1000000");
            tablas.ponerTexto(cual, linea::importeBase, "2000000");
            tablas.ponerTexto(cual, cual == tabla::extra ? linea::importe : linea::importeBase, importe);
        };
        const auto importe =
            std::to_string(static_cast<int>(azar() % 2000) - 1000) + "." + std::to_string(azar() % 10);
        poner(tabla::extra, importe.c_str());
        tablas.ponerTexto(
            tabla::extra, linea::cuenta,
            uno({"4300000001", "4300000002", "5700000000", "7000000000", "70", "6290000000", ""}));
        tablas.AnadirRegistro(tabla::extra);
        totales.gImporte = core::Val(importe);
        totales.ActualizarTotalesCuenta(1, con.enVigor.gArchivoEmpresa);
        poner(tabla::anali, "12.34");
        tablas.ponerTexto(tabla::anali, linea::cuentaAnalitica, uno({"010203", "0102", "02030405", "03"}));
        tablas.ponerTexto(tabla::anali, linea::numeroAnalitica, totales.SiguienteContadorAnalitica());
        tablas.AnadirRegistro(tabla::anali);
        totales.ActualizarTotalesAnalitica(1, 12.34);
    }
    static void anular(data::CapaDatos& con, Tablas& tablas, std::int32_t registro) {
        if (tablas.LeerRegistro(tabla::extra, registro) != data::EstadoRegistro::vivo) return;
        data::Totales totales(con, tablas);
        totales.gImporte = core::Val(tablas.texto(tabla::extra, linea::importe));
        totales.ActualizarTotalesCuenta(-1, con.enVigor.gArchivoEmpresa);
        tablas.BorrarRegistro(tabla::extra, registro);
    }
    void contabilizarMucho(unsigned semilla, int veces) {
        capa.alAvisar = [](std::string_view) {};  // lines that are neither debit nor credit
        std::mt19937 azar(semilla);
        Tablas tablas(capa);
        ASSERT_TRUE(tablas.AbrirTablasEmpresa());
        for (int i = 1; i <= veces; ++i) {
            contabilizar(capa, tablas, azar);
            if (azar() % 5 == 0)
                anular(capa, tablas, static_cast<std::int32_t>(azar() % static_cast<unsigned>(i)) + 1);
        }
    }
    // All columns of both charts and the totals of the head, in cents, by account.
    Saldos saldos() {
        Saldos todos;
        Tablas tablas(capa);
        EXPECT_TRUE(tablas.AbrirTablasEmpresa());
        const auto centimos = [](double importe) { return std::to_string(std::llround(importe * 100)); };
        for (const int cual : {tabla::planc, tabla::costo}) {
            for (std::int32_t registro = 1; registro <= tablas.cuantosRegistros(cual); ++registro) {
                if (tablas.LeerRegistro(cual, registro) != data::EstadoRegistro::vivo) continue;
                auto& suyos = todos[std::to_string(cual) + " " + tablas.texto(cual, 1)];
                for (const int base : {data::posicion_cuenta::debe, data::posicion_cuenta::haber})
                    for (int periodo = 0; periodo < data::periodosCuenta; ++periodo)
                        suyos.push_back(centimos(tablas.LeerCampoDoble(
                            cual, registro, tablas.gCampoDePosicion(cual, base) + periodo)));
            }
        }
        const auto cabeza =
            data::CabeceraEmpresa::leer(*mundo.archivos->abrir(ruta, platform::Apertura::lectura));
        todos["empresa"] = {centimos(cabeza.valor(data::cabecera::CARGOSA)),
                            centimos(cabeza.valor(data::cabecera::ABONOSA)),
                            cabeza.texto(data::cabecera::CONTADORANALITICA)};
        return todos;
    }
    // Columns, a missing parent and analytic account, the head. Returns nothing that could be guessed.
    void dannar() {
        Tablas tablas(capa);
        ASSERT_TRUE(tablas.AbrirTablasEmpresa());
        const auto registroDe = [&](int cual, const std::string& codigo) {
            EXPECT_EQ(tablas.orden("S\\1\\" + std::to_string(cual) + "\\" + codigo), 0) << codigo;
            return tablas.gRegistro;
        };
        const auto sumar = [&](int cual, const std::string& codigo, int base, int periodo, double importe) {
            const auto registro = registroDe(cual, codigo);
            const int campo = tablas.gCampoDePosicion(cual, base) + periodo;
            tablas.escribirCampoDoble(cual, registro, campo,
                                      tablas.LeerCampoDoble(cual, registro, campo) + importe);
        };
        sumar(tabla::planc, "4300000001", data::posicion_cuenta::debe, 3, 0.01);
        sumar(tabla::planc, "430", data::posicion_cuenta::haber, 14, -1000);
        sumar(tabla::costo, "0102", data::posicion_cuenta::debe, 0, std::numeric_limits<double>::quiet_NaN());
        tablas.BorrarRegistro(tabla::planc, registroDe(tabla::planc, "43"));
        tablas.BorrarRegistro(tabla::costo, registroDe(tabla::costo, "010203"));
        const auto archivo = mundo.archivos->abrir(ruta, platform::Apertura::escritura);
        auto cabeza = data::CabeceraEmpresa::leer(*archivo);
        cabeza.poner(data::cabecera::CARGOSA, cabeza.valor(data::cabecera::CARGOSA) - 0.1);
        cabeza.poner(data::cabecera::ABONOSA, 0.0);
        cabeza.poner(data::cabecera::CONTADORANALITICA, "000003");
        cabeza.grabar(*archivo);
    }
    std::map<std::string, std::string> archivos() const {
        std::map<std::string, std::string> todos;
        for (const auto& uno : fs::directory_iterator(mundo.datos()))
            todos[uno.path().filename().string()] = platform::leerTodo(*mundo.archivos, uno.path().string());
        return todos;
    }
};

TEST_F(Empresa, LoDannadoSeNombraYSeRehace) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    contabilizarMucho(semilla, 300);
    ASSERT_EQ(verificar(), 0) << salida();
    EXPECT_EQ(errores(), "");
    for (const auto& una : data::tablasDeEmpresa)
        EXPECT_THAT(salida(), HasSubstr("/" + core::Mayusculas(una.nombre) + "01.QZD\nregistros vivos: "));
    EXPECT_THAT(salida(), HasSubstr("cuentas con apuntes fuera del plan: 1\n"));
    EXPECT_THAT(salida(), HasSubstr("\ndiscrepancias en la empresa: 0\n"));
    const auto buenos = saldos();
    dannar();
    const auto dannados = archivos();

    EXPECT_EQ(verificar(), 1);
    for (const char* frase :
         {"Empresa, CARGOSA: tiene ", "Empresa, ABONOSA: tiene 0 y",
          "Empresa, CONTADORANALITICA: tiene 3 y hay apuntes hasta el 300.",
          "PLANC registro 1, cuenta 4300000001, DEBE MARZO: tiene ", "cuenta 430, HABER CIERRE: tiene ",
          "cuenta 0102, DEBE APERTURA: tiene (no es un número) y", "PLANC: falta la cuenta 43,",
          "COSTO: falta la cuenta 010203,"})
        EXPECT_THAT(salida(), HasSubstr(frase));
    EXPECT_THAT(salida(), HasSubstr("discrepancias en la empresa: 8\n"));
    EXPECT_EQ(recalcular(), 1);
    EXPECT_THAT(salida(), HasSubstr("PLANC\t1\t4300000001\tDEBE MARZO\t"));
    EXPECT_THAT(salida(), HasSubstr("Costo\t0\t010203\t(falta la cuenta)"));
    EXPECT_THAT(salida(), HasSubstr("empresa\t0\t\tCONTADORANALITICA\t3\t300\n"));
    EXPECT_EQ(archivos(), dannados) << "without --aplicar nothing is written";

    EXPECT_EQ(recalcular("--aplicar"), 0) << errores();
    EXPECT_THAT(salida(), HasSubstr("cambios: 8\n"));
    EXPECT_EQ(saldos(), buenos);
    EXPECT_EQ(verificar(), 0) << salida();
    EXPECT_EQ(recalcular(), 0);
    EXPECT_THAT(errores(), HasSubstr("cuentas con apuntes fuera del plan, que no se suman: 1\n"));
    EXPECT_EQ(salida(), "cambios: 0\n");
}

// Nobody may post between the sum and the writing.
TEST_F(Empresa, ConLaEmpresaAbiertaNoSeRecalcula) {
    contabilizarMucho(1, 60);
    dannar();
    const auto dannados = archivos();
    Tablas otro(capa);
    ASSERT_TRUE(otro.AbrirTablasEmpresa());
    EXPECT_EQ(recalcular("--aplicar"), 4);
    EXPECT_EQ(archivos(), dannados);
    EXPECT_EQ(recalcular(), 1) << "to show needs nobody's leave";
    otro.CerrarTodo();
    EXPECT_EQ(recalcular("--aplicar"), 0);
}

TEST_F(Empresa, VariosProcesosContabilizanYNadaSePierde) {
    enProcesos(2, 1, [&](int proceso, int) {
        Tablas tablas(capa);
        if (!tablas.AbrirTablasEmpresa()) throw std::runtime_error("not open");
        std::mt19937 azar(static_cast<unsigned>(proceso) + 1);
        capa.alAvisar = [](std::string_view) {};
        for (int i = 0; i < 150; ++i)
            contabilizar(capa, tablas, azar);
    });
    EXPECT_EQ(verificar(), 0) << salida() << errores();
    EXPECT_THAT(salida(), HasSubstr("registros vivos: 300\n"));
}

// A program at work is no disagreement; one that is killed at it leaves what the two commands mend.
TEST_F(Empresa, MatadoEnPlenoTrabajo) {
    for (int vez = 0; vez < 5; ++vez) {
        SCOPED_TRACE("time " + std::to_string(vez));
        const auto longitud = [&] { return mundo.archivos->estado(mundo.datos("EXTRA01.QZD"))->longitud; };
        const auto antes = longitud();
        const pid_t hijo = ::fork();
        ASSERT_GE(hijo, 0);
        if (hijo == 0) {
            try {
                for (unsigned i = 0;; ++i)
                    contabilizarMucho(i * 10 + static_cast<unsigned>(vez), 100);
            } catch (const std::exception&) {
                ::_exit(1);
            }
        }
        int estado = 0;
        while (longitud() < antes + 40 * largoApunte && ::waitpid(hijo, &estado, WNOHANG) == 0)
            ::usleep(1000);
        const int enMarcha = vez == 0 ? verificar() : 0;
        const std::string dicho = vez == 0 ? salida() : "";
        ::kill(hijo, SIGKILL);
        ASSERT_EQ(::waitpid(hijo, &estado, 0), hijo);
        ASSERT_TRUE(WIFSIGNALED(estado)) << "it ended by itself";
        EXPECT_EQ(enMarcha, 0) << dicho;
        for (const char* una : {"PLANC", "EXTRA", "COSTO", "ANALI"})
            ASSERT_EQ(correr("reindexar '" + mundo.datos(una) + "01.QZD'"), 0) << errores();
        ASSERT_EQ(recalcular("--aplicar"), 0) << errores();
        ASSERT_EQ(verificar(), 0) << salida();
    }
}

// Cut short at any write, another run finishes.
TEST_F(Empresa, CortadoEnCualquierEscrituraSeTermina) {
    contabilizarMucho(7, 120);
    const auto buenos = saldos();
    dannar();
    const auto dannados = archivos();
    bool cortado = true;
    int k = 0;
    for (; cortado && k < 500; ++k) {
        SCOPED_TRACE("write " + std::to_string(k));
        for (const auto& [nombre, bytes] : dannados)
            mundo.escribir(nombre, bytes);
        ArchivosDefectuosos defectuosos(*mundo.archivos);
        int escrituras = 0;
        defectuosos.alEmpezar([&](Operacion operacion, const std::string&) {
            if (operacion == Operacion::escribir && escrituras++ >= k) throw CorteDeCorriente();
        });
        data::CapaDatos suya{defectuosos, mundo.ajustes, mundo.carpetas, mundo.reloj};
        suya.alAvisar = [](std::string_view) {};
        suya.reintentosTablas = {1, std::chrono::milliseconds(1)};
        data::ponerEnVigor(suya, ruta);
        try {
            cortado = data::recalcular(suya, {}).fin != data::Recalculo::Fin::hecho;
        } catch (const CorteDeCorriente&) {
        }
        // A parent may have its keys and not its record: the keys come first.
        for (const char* plan : {"PLANC01", "COSTO01"})
            ASSERT_EQ(correr("reindexar '" + mundo.datos(plan) + ".QZD'"), 0) << errores();
        ASSERT_EQ(recalcular("--aplicar"), 0) << errores();
        ASSERT_EQ(saldos(), buenos);
    }
    EXPECT_GT(k, 10);
    EXPECT_FALSE(cortado);
}

TEST_F(Empresa, LoQueNoSePuedeRehacer) {
    contabilizarMucho(3, 40);
    dannar();
    fs::rename(mundo.datos("PLANC01.QZC"), mundo.datos("otra"));
    auto dannados = archivos();
    EXPECT_EQ(recalcular("--aplicar"), 1);
    EXPECT_THAT(errores(), HasSubstr("PLANC01.QZD: las claves no concuerdan"));
    EXPECT_EQ(archivos(), dannados);
    fs::rename(mundo.datos("otra"), mundo.datos("PLANC01.QZC"));
    {
        Tablas tablas(capa);
        ASSERT_TRUE(tablas.AbrirTablasEmpresa());
        std::int32_t viva = 1;
        while (tablas.LeerRegistro(tabla::extra, viva) != data::EstadoRegistro::vivo ||
               tablas.texto(tabla::extra, linea::tipo) == "9")
            ++viva;
        tablas.escribirCampoDoble(tabla::extra, viva, tablas.gCampoDePosicion(tabla::extra, linea::importe),
                                  std::numeric_limits<double>::infinity());
    }
    dannados = archivos();
    EXPECT_EQ(recalcular("--aplicar"), 1);
    EXPECT_THAT(salida(), HasSubstr("(importe del apunte)\t(no es un número)"));
    EXPECT_EQ(archivos(), dannados);
    EXPECT_EQ(verificar(), 1);
    EXPECT_THAT(salida(), HasSubstr("el importe del apunte no es un número."));

    fs::remove(mundo.datos("DATOS01.QZD"));
    EXPECT_EQ(verificar(), 3);
    EXPECT_THAT(errores(), HasSubstr("DATOS01.QZD"));
    EXPECT_THAT(salida(), HasSubstr("== totales\nEmpresa, CARGOSA")) << "the rest is checked all the same";
    mundo.escribir("corta.QZT", "01");
    for (const char* cual : {"corta.QZT", "falta.QZT"}) {
        EXPECT_EQ(correr("verificar '" + mundo.datos(cual) + "'"), 3) << cual;
        EXPECT_EQ(correr("recalcular '" + mundo.datos(cual) + "'"), 3) << cual;
    }
    EXPECT_EQ(correr("recalcular"), 2);
    EXPECT_EQ(correr("recalcular --help"), 0);
    EXPECT_THAT(salida(), HasSubstr("--aplicar"));
}

}  // namespace
}  // namespace tarvoline::pruebas
