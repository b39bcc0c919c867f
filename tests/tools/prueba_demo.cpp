// The demo company: the same for the same seed, its books sound and balanced, its configuration readable by
// the session; and the comparison of two companies.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <map>

#include "apoyo/mundo_datos.h"
#include "apoyo/variables_proceso.h"
#include "tarvoline/enlace.h"

namespace {

using namespace tarvoline;

constexpr const char* poco = " --operaciones 40 --terceros 8 --kb-imagenes 200 --kb-adjuntos 20";

struct Demo : testing::Test {
    Demo() { variables.poner("XDG_CONFIG_HOME", mundo.carpeta.ruta("config")); }

    int correr(const std::string& programa, const std::string& argumentos) const {
        const auto orden = std::string(TARVOLINE_BIN) + "/" + programa + " " + argumentos + " > '" +
                           mundo.carpeta.ruta("salida.txt") + "' 2>&1";
        const int estado = std::system(orden.c_str());
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    int crear(const std::string& carpeta, const std::string& mas = {}) const {
        return correr("tarvoline-demo", "--anio 2026 --carpeta '" + carpeta + "' --adjuntos '" +
                                            mundo.carpeta.ruta("Documentación") + "' " + mas);
    }
    std::string salida() const { return mundo.carpeta.leer("salida.txt"); }
    std::string empresa(const std::string& carpeta) const {
        return "'" + mundo.carpeta.ruta(carpeta) + "/Panadería Núñez.QZT' ";
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
    ASSERT_EQ(crear(mundo.carpeta.ruta("a"), poco), 0) << salida();
    ASSERT_EQ(crear(mundo.carpeta.ruta("b"), poco), 0);
    ASSERT_EQ(crear(mundo.carpeta.ruta("c"), poco + std::string(" --semilla 2")), 0);
    // Key files bear a mark of their own.
    const auto sinClaves = [](std::map<std::string, std::string> archivos) {
        std::erase_if(archivos, [](const auto& uno) { return uno.first.ends_with(".QZC"); });
        return archivos;
    };
    EXPECT_TRUE(sinClaves(arbol(mundo.carpeta.ruta("a"))) == sinClaves(arbol(mundo.carpeta.ruta("b"))));
    EXPECT_EQ(correr("tarvoline-demo", "comparar " + empresa("a") + empresa("b")), 0) << salida();
    EXPECT_NE(salida().find(" asientos, "), std::string::npos);
    EXPECT_EQ(correr("tarvoline-demo", "comparar " + empresa("a") + empresa("c")), 1) << salida();
    // One entry more, and one cent less, are a difference.
    mundo.ajustes.GrabarRegistro("Directory", std::string(TARVOLINE_PROGRAMA) + "/");
    for (const char* clave : {"CON_DIR", "IVA_DIR"})
        mundo.ajustes.GrabarRegistro(clave, std::string(TARVOLINE_PROGRAMA) + "/");
    link::Contexto contexto(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
    link::Enlace enlace(contexto);
    enlace.AbrirEmpresa(mundo.carpeta.ruta("b/Panadería Núñez.QZT"));
    enlace.LeerUltimoAsiento();
    enlace.AnularAsiento(enlace.Fecha(), enlace.Número());
    EXPECT_EQ(correr("tarvoline-demo", "comparar " + empresa("a") + empresa("b")), 1) << salida();
    enlace.Apunte(1)->Importe -= 0.01;
    enlace.GrabarAsiento();
    EXPECT_EQ(correr("tarvoline-demo", "comparar " + empresa("a") + empresa("b")), 1) << salida();
    EXPECT_NE(salida().find("distinto: "), std::string::npos);
}

TEST_F(Demo, UnaEmpresaEntera) {
    ASSERT_EQ(crear(mundo.datos(), "--nombre 'Panadería Núñez' --usuario ana --clave Ana2024"), 0)
        << salida();
    std::size_t imagenes = 0;
    for (const auto& [nombre, contenido] : arbol(mundo.datos()))
        imagenes += nombre.starts_with("Panadería Núñez/") ? contenido.size() : 0;
    EXPECT_NEAR(static_cast<double>(imagenes), 6e6, 0.3e6);
    EXPECT_EQ(correr("qztabla", "verificar '" + mundo.datos("Panadería Núñez.QZT") + "'"), 0) << salida();
    // Nothing was written to the user's own settings.
    EXPECT_FALSE(mundo.carpeta.hay("config/QZ/ajustes.ini"));

    mundo.ajustes.GrabarRegistro("Directory", std::string(TARVOLINE_PROGRAMA) + "/");
    for (const char* clave : {"CON_DIR", "IVA_DIR"})
        mundo.ajustes.GrabarRegistro(clave, std::string(TARVOLINE_PROGRAMA) + "/");
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
    // Each entry adds up to nothing, and the year has a bit of everything.
    int asientos = 0, ivas = 0, carteras = 0, analiticas = 0;
    for (enlace.LeerPrimerAsiento(); enlace.ContadorApuntes() > 0; enlace.LeerProximoAsiento(), ++asientos) {
        double saldo = 0;
        for (int i = 1; i <= enlace.ContadorApuntes(); ++i)
            saldo += enlace.Apunte(i)->TIPO == 1 ? enlace.Apunte(i)->Importe : -enlace.Apunte(i)->Importe;
        EXPECT_LT(std::fabs(saldo), 0.001) << enlace.Número();
        ivas += enlace.ContadorIva();
        carteras += enlace.ContadorCartera();
        analiticas += enlace.ContadorAnalitica();
    }
    EXPECT_GT(asientos, 450);
    EXPECT_EQ(ivas, 420) << "412 invoices, 8 collections and payments on a cash basis";
    EXPECT_EQ(carteras, 400);
    EXPECT_EQ(analiticas, 36);
    EXPECT_EQ(enlace.LeerDatos(), 60);
    EXPECT_EQ(enlace.EsCriterioCaja("4300000001") + enlace.EsCriterioCaja("4300000002"), "1");
    EXPECT_EQ(enlace.LeerInmovilizado(), 3);
    EXPECT_NE(enlace.Util_LeerDatos("PRESU", "CUENTA", "7000000000"), "");
    mundo.ajustes.GrabarRegistro("GLOBAL_DIR", mundo.datos());
    EXPECT_EQ(enlace.LeerDatosGlobales(), 60);
}

}  // namespace
