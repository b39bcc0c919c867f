// Accounts made by name or by pattern, and what making one that is there changes. Levels of the company:
// accounts of ten digits, parents of one to four.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "apoyo/en_procesos.h"
#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

namespace planc = link::posicion::planc;
namespace tabla = data::tabla;
using testing::ElementsAre;

struct Cuentas : testing::Test, MundoLibros {
    // Rows of that code: title, level, analytic mark, NIF.
    std::vector<std::string> filas(int plan, const std::string& codigo) {
        std::vector<std::string> todas;
        tablas().AbrirTablasEmpresa();
        for (std::int32_t i = 1; i <= tablas().cuantosRegistros(plan); ++i) {
            if (tablas().LeerRegistro(plan, i) != data::EstadoRegistro::vivo) continue;
            if (tablas().texto(plan, planc::cuenta) != codigo) continue;
            std::string una;
            for (const int posicion : {planc::titulo, planc::nivel, planc::analitica, planc::nif})
                una += "|" + tablas().texto(plan, posicion);
            todas.push_back(una.substr(1));
        }
        tablas().CerrarTodo();
        return todas;
    }
    std::string crear(std::string codigo) {
        EXPECT_TRUE(enlace.CrearCuenta(codigo, "Nueva"));
        return codigo;
    }
};

TEST_F(Cuentas, NuevasYCambiadas) {
    const struct {
        const char *titulo, *nivel;
        bool analitica;
        const char *nif, *espera;
    } pasos[] = {
        {"Primera", "0", false, "A1", "Primera|0|0|A1"},
        {"Otra", "0", true, "B2", "Primera|0|0|A1"},  // it is there: nothing changes
        {"Otra", "3", false, "-1", "Primera|0|0|A1"},
        {"Otra", "-1", true, "B2", "Otra|0|0|A1"},      // the title alone
        {"Tercera", "-6", false, "B2", "Otra|0|1|A1"},  // the mark alone
    };
    for (const auto& paso : pasos) {
        std::string codigo = "4300000005";
        EXPECT_TRUE(enlace.CrearCuenta(codigo, paso.titulo, paso.nivel, paso.analitica, paso.nif));
        EXPECT_THAT(filas(tabla::planc, "4300000005"), ElementsAre(paso.espera)) << paso.titulo << paso.nivel;
    }
    const struct {
        const char *codigo, *nivel;
        bool analitica;
        const char* espera;
    } nuevas[] = {
        {"6290000001", "-1", false, "Nueva|0|0|"},
        {"6290000002", "-6", false, "Nueva|0|1|"},
        {"6290000003", "0", true, "Nueva|0|1|"},
        {"999", "3", false, "Nueva|3|0|"},
    };
    for (const auto& una : nuevas) {
        std::string codigo = una.codigo;
        EXPECT_TRUE(enlace.CrearCuenta(codigo, "Nueva", una.nivel, una.analitica));
        EXPECT_THAT(filas(tabla::planc, una.codigo), ElementsAre(una.espera)) << una.codigo;
    }
}

TEST_F(Cuentas, LaSiguienteDeUnPatron) {
    // A parent alone is lengthened with zeros; then each is one behind the highest.
    EXPECT_EQ(crear("4300*"), "4300000001");
    EXPECT_EQ(crear("4300*"), "4300000002");
    EXPECT_EQ(crear("4300000999"), "4300000999");
    EXPECT_EQ(crear("4300*"), "4300001000");
    EXPECT_EQ(crear("43009*"), "4300900001") << "where there is none its beginning counts";
    EXPECT_EQ(crear("4300*"), "4300900002");
    EXPECT_THAT(filas(tabla::planc, "4300001000"), ElementsAre("Nueva|0|0|"));
    // A pattern that is full has no next number that is free.
    EXPECT_EQ(crear("4309999999"), "4309999999");
    EXPECT_EQ(crear("4309*"), "4310000000");
    std::string llena = "4309*";
    EXPECT_FALSE(enlace.CrearCuenta(llena, "Otra"));
    EXPECT_EQ(llena, "4309*");
    EXPECT_THAT(filas(tabla::planc, "4310000000"), ElementsAre("Nueva|0|0|"));
}

TEST_F(Cuentas, DosProgramasNuncaTomanElMismoNumero) {
    constexpr int procesos = 3, cuantas = 30;
    enProcesos(procesos, 1, [&](int proceso, int) {
        link::Contexto suyo(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        link::Enlace con(suyo);
        con.AbrirEmpresa("Prueba");
        std::string tomadas;
        for (int i = 0; i < cuantas; ++i) {
            std::string codigo = "4300*";
            if (!con.CrearCuenta(codigo, "De " + std::to_string(proceso))) throw std::runtime_error(codigo);
            tomadas += codigo + "\n";
        }
        mundo.carpeta.escribir("cuentas" + std::to_string(proceso), tomadas);
    });
    std::set<std::string> todas;
    for (int proceso = 0; proceso < procesos; ++proceso) {
        std::istringstream suyas(mundo.carpeta.leer("cuentas" + std::to_string(proceso)));
        for (std::string una; std::getline(suyas, una);)
            todas.insert(una);
    }
    EXPECT_EQ(todas.size(), std::size_t{procesos} * cuantas);
    EXPECT_EQ(enlace.LeerPlanEx(1, "4300??????"), procesos * cuantas);
}

TEST_F(Cuentas, CadaPlanLasSuyas) {
    std::string codigo = "1001";
    EXPECT_TRUE(enlace.CrearAnalitica(codigo, "De coste"));
    EXPECT_TRUE(enlace.CrearAlterna(codigo, "Del otro plan", "4"));
    EXPECT_THAT(filas(tabla::costo, "1001"), ElementsAre("De coste|0|0|"));
    EXPECT_THAT(filas(tabla::planA, "1001"), ElementsAre("Del otro plan|4|0|"));
    EXPECT_EQ(filas(tabla::planc, "1001").size(), 0U);
}

TEST_F(Cuentas, LoQueNoHayAqui) {
    esperarError([&] { enlace.LeerReferencia("R"); }, 0x8004C35D, "Esta opción no está activada");
    enlace.CerrarEmpresa();
    std::string codigo = "4300000001";
    esperarError([&] { enlace.CrearCuenta(codigo, ""); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
}

}  // namespace
}  // namespace tarvoline::pruebas
