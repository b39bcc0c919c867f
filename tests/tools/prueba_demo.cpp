// The demo company: the same for the same seed, of the size that was asked for, its books balanced, and its
// configuration readable by the session.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <map>

#include "apoyo/mundo_datos.h"
#include "apoyo/variables_proceso.h"
#include "data/bytes.h"
#include "tarvoline/enlace.h"

namespace {

using namespace tarvoline;

constexpr std::size_t largoApunte = 465;

struct Demo : testing::Test {
    Demo() { variables.poner("XDG_CONFIG_HOME", mundo.carpeta.ruta("config")); }

    int correr(const std::string& carpeta, const std::string& mas = {}) const {
        const auto orden = std::string(TARVOLINE_BIN) + "/tarvoline-demo --anio 2026 --carpeta '" + carpeta +
                           "' " + mas + " > '" + mundo.carpeta.ruta("salida.txt") + "' 2>&1";
        const int estado = std::system(orden.c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    // Relative path and contents of every file below a folder.
    std::map<std::string, std::string> arbol(const std::string& carpeta) const {
        std::map<std::string, std::string> archivos;
        for (const auto& una : std::filesystem::recursive_directory_iterator(carpeta)) {
            if (una.is_regular_file()) {
                archivos[std::filesystem::relative(una.path(), carpeta).string()] =
                    platform::leerTodo(*mundo.archivos, una.path().string());
            }
        }
        return archivos;
    }
    pruebas::MundoDatos mundo;
    pruebas::VariablesProceso variables;
};

TEST_F(Demo, LaMismaSemillaDaLaMismaEmpresa) {
    const std::string poco = " --apuntes 30 --terceros 10 --facturas 10 --kb-imagenes 200 --kb-adjuntos 20";
    const auto adjuntos = " --adjuntos '" + mundo.carpeta.ruta("Documentación") + "'";
    ASSERT_EQ(correr(mundo.carpeta.ruta("a"), poco + adjuntos), 0) << mundo.carpeta.leer("salida.txt");
    ASSERT_EQ(correr(mundo.carpeta.ruta("b"), poco + adjuntos), 0);
    ASSERT_EQ(correr(mundo.carpeta.ruta("c"), poco + adjuntos + " --semilla 2"), 0);
    const auto a = arbol(mundo.carpeta.ruta("a"));
    EXPECT_EQ(a, arbol(mundo.carpeta.ruta("b")));
    EXPECT_NE(a.at("EXTRA01.QZD"), arbol(mundo.carpeta.ruta("c")).at("EXTRA01.QZD"));
}

TEST_F(Demo, UnaEmpresaEntera) {
    ASSERT_EQ(correr(mundo.datos(), "--nombre 'Panadería Núñez' --usuario ana --clave Ana2024"), 0)
        << mundo.carpeta.leer("salida.txt");
    std::size_t total = 0, imagenes = 0;
    for (const auto& [nombre, contenido] : arbol(mundo.datos())) {
        total += contenido.size();
        imagenes += nombre.starts_with("Panadería Núñez/") ? contenido.size() : 0;
    }
    EXPECT_NEAR(static_cast<double>(total), 11.3e6, 0.5e6);
    EXPECT_NEAR(static_cast<double>(imagenes), 3e6, 0.2e6);
    EXPECT_EQ(mundo.leer("DATOS01.QZD").size() % 801, 0U);
    EXPECT_EQ(mundo.leer("IVA0101.QZD").size() % 953, 0U);

    link::Contexto contexto(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
    link::Enlace enlace(contexto);
    enlace.AbrirEmpresa("Panadería Núñez", "");
    EXPECT_EQ(enlace.Config("TVUSER"), "ana");
    EXPECT_EQ(enlace.Config("TVPASSWORD"), "Ana2024");
    EXPECT_EQ(enlace.Config("TVCARPETA"), "DATOS");
    EXPECT_EQ(enlace.Config("Borrador"), "1");
    EXPECT_EQ(enlace.Config("AÑO"), "26");
    const auto adjunta = enlace.Config("ADJUNTARCARPETAS0");
    EXPECT_FALSE(arbol(adjunta).empty()) << adjunta;
    EXPECT_EQ(enlace.Config("ADJUNTARCARPETAS1"), "");
}

// Each entry of the journal adds up to nothing, and the entries stand in the order of their dates.
TEST_F(Demo, ElDiarioCuadra) {
    ASSERT_EQ(correr(mundo.datos(), "--apuntes 999 --kb-imagenes 0"), 0);
    const auto tabla = mundo.leer("EXTRA01.QZD");
    ASSERT_EQ(tabla.size(), 999 * largoApunte);
    std::map<std::string, double> saldos;
    std::string anterior;
    for (std::size_t i = 0; i < tabla.size(); i += largoApunte) {
        const auto fecha = tabla.substr(i, 6);
        EXPECT_LE(anterior, fecha);
        EXPECT_EQ(fecha.substr(0, 2), "C6");
        anterior = fecha;
        const auto importe =
            data::leerNumero<double>(platform::comoBytes(std::string_view(tabla).substr(i + 83, 8)));
        EXPECT_EQ(tabla[i + 82], importe < 0 ? '2' : '1');
        saldos[tabla.substr(i + 16, 6)] += importe;
    }
    EXPECT_EQ(saldos.size(), 333U);
    for (const auto& [asiento, saldo] : saldos) {
        EXPECT_LT(std::fabs(saldo), 0.001) << asiento;
    }
}

}  // namespace
