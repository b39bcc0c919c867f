// Several processes posting to one company, and processes that die while they post: what `qztabla` tells, and
// that its commands and the annulling of the entry bring the books back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <map>
#include <random>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/en_procesos.h"
#include "apoyo/variables_proceso.h"
#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

using testing::HasSubstr;
using testing::Not;
namespace tabla = data::tabla;

struct Muertes : testing::Test, MundoLibros {
    Muertes() {
        variables.poner("XDG_CONFIG_HOME", mundo.carpeta.ruta("config"));
        mundo.capa.reintentosEmpresa = {};
        enlace.Config("NivelesCosto", "24");
        enlace.AbrirEmpresa("Prueba");
        empresa = enlace.Empresa();
        fila(tabla::planc, {{1, "6230000000"}, {2, "Servicios"}, {3, "0"}, {6, "1"}});
        postear(enlace);  // what all have in common is there: parents, series, analytic accounts
    }

    // A purchase with its VAT, its due date, and its cost divided.
    static std::string postear(link::Enlace& con) {
        con.Fecha("15/05/2026");
        con.Número("");
        con.AñadirApunte("6230000000", "Compra", 1, 100);
        con.AñadirApunte("4720000021", "IVA soportado", 1, 21);
        con.AñadirApunte("4000000001", "Compra", 2, 121);
        con.AddVAT("4000000001", "4720000021", "F-1", "14/05/2026", "21.00", "S", 100, 121, 0, "Proveedor",
                   "", "", "", "", "", 0, "");
        con.AñadirCartera("15/06/26", "4000000001", "BANCO", "pagaré", 121);
        con.AñadirAnalitica("6230000000", "1001", "", 1, 60);
        con.AñadirAnalitica("6230000000", "1002", "", 1, 40);
        con.GrabarAsiento();
        return con.Número();
    }
    // A program of its own on the same company.
    void comoOtroPrograma(platform::SistemaArchivos& archivos,
                          const std::function<void(link::Enlace&)>& paso) {
        link::Contexto suyo(archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        suyo.alAvisar([](const std::string&) {});
        suyo.alMostrar([](const std::string&, const std::string&) {});
        link::Enlace con(suyo);
        con.AbrirEmpresa("Prueba");
        paso(con);
    }

    int correr(const std::string& argumentos) const {
        const int estado = std::system((std::string(TARVOLINE_BIN) + "/qztabla " + argumentos + " > '" +
                                        mundo.carpeta.ruta("salida.txt") + "' 2>&1")
                                           .c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    int verificar() const { return correr("verificar '" + empresa + "'"); }
    std::string salida() const { return mundo.carpeta.leer("salida.txt"); }
    // What the table of outcomes in docs/reliability.md says to do.
    void arreglar() {
        for (const auto& una : data::tablasDeEmpresa) {
            ASSERT_EQ(correr("reindexar '" + mundo.datos(core::Mayusculas(una.nombre) + "01.QZD'")), 0)
                << una.nombre << ": " << salida();
        }
        ASSERT_EQ(correr("recalcular --aplicar '" + empresa + "'"), 0) << salida();
        ASSERT_EQ(verificar(), 0) << salida();
    }
    // Every column of both charts and the head in cents, and how many rows each table of lines has.
    std::map<std::string, long long> libros() {
        std::map<std::string, long long> todo;
        const auto centimos = [](double importe) { return std::llround(importe * 100); };
        todo["CARGOSA"] = centimos(core::Val(enlace.Config("CARGOSA")));
        todo["ABONOSA"] = centimos(core::Val(enlace.Config("ABONOSA")));
        for (const int una : {tabla::extra, tabla::iva01, tabla::efect, tabla::anali})
            todo["tabla " + std::to_string(una)] = static_cast<long long>(vivas(una));
        tablas().AbrirTablasEmpresa();
        for (const int plan : {tabla::planc, tabla::costo}) {
            for (std::int32_t i = 1; i <= tablas().cuantosRegistros(plan); ++i) {
                if (tablas().LeerRegistro(plan, i) != data::EstadoRegistro::vivo) continue;
                const std::string cuenta = std::to_string(plan) + " " + tablas().texto(plan, 1);
                for (const int lado : {link::posicion::planc::debe, link::posicion::planc::haber})
                    for (int mes = 0; mes < 15; ++mes) {
                        const double saldo =
                            tablas().LeerCampoDoble(plan, i, tablas().gCampoDePosicion(plan, lado) + mes);
                        if (saldo != 0)
                            todo[cuenta + "/" + std::to_string(lado + 100 * mes)] = centimos(saldo);
                    }
            }
        }
        tablas().CerrarTodo();
        return todo;
    }
    // The entries with a line, by number.
    std::map<std::string, int> lineasPorAsiento() {
        std::map<std::string, int> cuantas;
        tablas().AbrirTablasEmpresa();
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(tabla::extra); ++i)
            if (tablas().LeerRegistro(tabla::extra, i) == data::EstadoRegistro::vivo)
                ++cuantas[tablas().texto(tabla::extra, link::posicion::extra::asiento)];
        tablas().CerrarTodo();
        return cuantas;
    }

    // Runs `paso` in a process of its own that dies before its `cual`-th write; false when it had fewer.
    bool morirEnEscritura(int cual, const std::function<void(link::Enlace&)>& paso) {
        const pid_t hijo = ::fork();
        if (hijo == 0) {
            ArchivosDefectuosos archivos(*mundo.archivos);
            int escrituras = -1;  // from the opening on
            archivos.alEmpezar([&](Operacion operacion, const std::string&) {
                if (operacion == Operacion::escribir && escrituras >= 0 && ++escrituras == cual)
                    ::kill(::getpid(), SIGKILL);
            });
            try {
                comoOtroPrograma(archivos, [&](link::Enlace& con) {
                    escrituras = 0;
                    paso(con);
                });
            } catch (const std::exception&) {
                ::_exit(2);
            }
            ::_exit(0);
        }
        int estado = 0;
        EXPECT_EQ(::waitpid(hijo, &estado, 0), hijo);
        EXPECT_TRUE(WIFSIGNALED(estado) || estado == 0) << "the posting failed by itself";
        return WIFSIGNALED(estado);
    }

    VariablesProceso variables;
    std::string empresa;
};

TEST_F(Muertes, VariosProcesosContabilizanYAnulan) {
    constexpr int procesos = 3;
    constexpr int veces = 12;
    const auto antes = libros();
    enProcesos(procesos, 1, [&](int proceso, int) {
        comoOtroPrograma(*mundo.archivos, [&](link::Enlace& con) {
            for (int i = 0; i < veces; ++i) {
                const std::string numero = postear(con);
                if ((i + proceso) % 3 == 0) con.AnularAsiento("15/05/2026", numero);
            }
        });
    });
    EXPECT_EQ(verificar(), 0) << salida();
    EXPECT_THAT(salida(), HasSubstr("\nasientos descuadrados: 0\n"));
    const auto asientos = lineasPorAsiento();
    EXPECT_EQ(asientos.size(), 1U + procesos * veces * 2 / 3) << "a number twice, or one lost";
    for (const auto& [numero, lineas] : asientos)
        EXPECT_EQ(lineas, 3) << numero;
    auto despues = libros();
    EXPECT_EQ(despues["CARGOSA"], antes.at("CARGOSA") * static_cast<long long>(asientos.size()));
    EXPECT_EQ(despues["tabla " + std::to_string(tabla::anali)], 2 * static_cast<long long>(asientos.size()));
}

// A posting writes some fifty times. In a run some of the moments are taken, others each time.
TEST_F(Muertes, EnCualquierEscrituraDeUnAsiento) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto sanos = libros();
    std::map<std::string, int> dichos;
    int muertes = 0;
    for (int cual = 1;; cual += 1 + static_cast<int>(azar() % 4)) {
        SCOPED_TRACE("write " + std::to_string(cual));
        const auto antes = lineasPorAsiento();
        if (!morirEnEscritura(cual, [](link::Enlace& con) { postear(con); })) {
            EXPECT_GT(muertes, 10);
            break;
        }
        ++muertes;
        const bool sana = verificar() == 0;
        const std::string dicho = salida();
        ++dichos[sana ? "sound" : "told"];
        if (!sana) arreglar();
        if (HasFatalFailure()) return;
        for (const auto& [numero, lineas] : lineasPorAsiento()) {
            if (antes.contains(numero)) continue;
            // Lines of one account each: all three or an entry that does not balance, which is said.
            if (lineas < 3 && sana) {
                EXPECT_THAT(dicho, HasSubstr("Asiento " + numero + " del 15/05/2026: no cuadra"));
            }
            enlace.AnularAsiento("15/05/2026", numero);
        }
        ASSERT_EQ(verificar(), 0) << salida();
        ASSERT_TRUE(libros() == sanos);
    }
    EXPECT_GT(dichos["told"], 3);
    EXPECT_EQ(avisos, "");
}

TEST_F(Muertes, EnCualquierEscrituraDeUnaAnulacion) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto sanos = libros();
    int muertes = 0;
    for (int cual = 1;; cual += 1 + static_cast<int>(azar() % 4)) {
        SCOPED_TRACE("write " + std::to_string(cual));
        const std::string numero = postear(enlace);
        const auto anular = [&](link::Enlace& con) { con.AnularAsiento("15/05/2026", numero); };
        const bool muerto = morirEnEscritura(cual, anular);
        if (muerto) {
            ++muertes;
            if (verificar() != 0) arreglar();
            if (HasFatalFailure()) return;
            anular(enlace);
        }
        ASSERT_EQ(verificar(), 0) << salida();
        ASSERT_TRUE(libros() == sanos);
        if (!muerto) break;
    }
    EXPECT_GT(muertes, 10);
}

// The keys of the chart cannot be written while an account is made for a line that waits to be stored: they
// are made anew, and the line is whole.
TEST_F(Muertes, UnaLineaEsperaASuCuenta) {
    ArchivosDefectuosos archivos(*mundo.archivos);
    link::Contexto suyo(archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
    suyo.alMostrar([](const std::string&, const std::string&) {});
    suyo.alAvisar([](const std::string&) {});
    link::Enlace con(suyo);
    con.AbrirEmpresa("Prueba");
    con.Fecha("15/05/2026");
    con.Número("000500");
    con.AñadirApunte("4300099999", "Nueva", 1, 100);
    con.AñadirApunte("7000000000", "Venta", 2, 100);
    archivos.fallar({.operacion = Operacion::escribir,
                     .mascara = "PLANC*.QZC",
                     .numero = platform::error_archivo::discoLleno});
    con.GrabarAsiento();
    enlace.LeerAsiento("15/05/2026", "000500");
    ASSERT_EQ(enlace.ContadorApuntes(), 2);
    EXPECT_EQ(enlace.Apunte(1)->Cuenta + enlace.Apunte(1)->Descripción, "4300099999Nueva");
    EXPECT_EQ(enlace.Apunte(1)->Importe, 100);
}

}  // namespace
}  // namespace tarvoline::pruebas
