// The list of pending companies against a scripted service.
#include "workflows/pendientes.h"

#include <gtest/gtest.h>

#include "workflows/configuracion_empresa.h"
#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

class PruebaPendientes : public ::testing::Test {
  protected:
    PruebaPendientes() {
        mundo.nucleo.guion.persona = false;
        estado.gDesatendido = true;
    }
    void marcar(int ranura, const std::string& ruta) {
        mundo.nucleo.ajustes.GrabarRegistro("EMP" + std::to_string(ranura), "\"" + ruta + "\"", "NETBACKUP",
                                            "VELDORIX");
    }
    std::string emp(int ranura) { return mundo.clave("EMP" + std::to_string(ranura)); }
    std::string error(int ranura) { return mundo.clave("ERROR" + std::to_string(ranura)); }
    bool enviar(bool mostrar = false) { return mundo.flujos.pendientes().SubirPendientesBatch(mostrar); }
    // User and folder of each first piece that the service was given.
    std::vector<std::string> remitentes() {
        std::vector<std::string> quienes;
        for (const auto& llamada : mundo.servicio.llamadas("Backup")) {
            if (llamada.entero(7) == 1) {
                quienes.push_back(llamada.texto(0) + "/" + core::DecodificarNombre(llamada.texto(3)));
            }
        }
        return quienes;
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    pruebas::ArchivosServicio archivos{mundo.servicio};
};

TEST(QuitarComillas, QuitaElPrimeroYElUltimo) {
    EXPECT_EQ(QuitarComillas(""), "");
    EXPECT_EQ(QuitarComillas("x"), "");
    EXPECT_EQ(QuitarComillas("ab"), "");
    EXPECT_EQ(QuitarComillas("\"/a/Núñez.QZT\""), "/a/Núñez.QZT");
    EXPECT_EQ(QuitarComillas("ñañé"), "añ");
}

TEST_F(PruebaPendientes, CadaUnaVaConSuUsuarioYLaSesionVuelve) {
    const auto una = mundo.crearEmpresa("Una.QZT", "ana", "clave1");
    const auto otra = mundo.crearEmpresa("Otra.QZT", "luis", "clave2");
    const auto sola = mundo.crearEmpresa("Sola.QZT");  // no user of its own: whose would it be?
    marcar(1, una);
    marcar(2, sola);
    marcar(100, otra);
    mundo.nucleo.ajustes.GrabarRegistro("ERROR1", "de ayer", "NETBACKUP", "VELDORIX");
    // The unattended run has no session.
    mundo.nucleo.entrarComo("", "");

    EXPECT_FALSE(enviar());
    EXPECT_EQ(emp(1) + error(1) + emp(100) + error(100), "");
    EXPECT_EQ(emp(2), "\"" + sola + "\"");
    EXPECT_EQ(error(2), "<2215>");
    EXPECT_EQ(archivos.archivos.size(), 2U);
    EXPECT_TRUE(archivos.archivos.contains("UNA 2024-05-31  18 30.ZIP"));
    ASSERT_EQ(remitentes().size(), 2U);
    EXPECT_EQ(remitentes()[0].substr(0, 4), "ana/") << "the user of the slot before must not leak";
    EXPECT_EQ(remitentes()[1].substr(0, 5), "luis/");
    EXPECT_EQ(estado.gUsuario, "");
    EXPECT_EQ(estado.gCarpeta, "DATOS");
    EXPECT_FALSE(estado.gInterrumpido);
    ASSERT_EQ(estado.resumen.empresas.size(), 3U);
    EXPECT_TRUE(estado.resumen.empresas[0].enviada);
    EXPECT_EQ(estado.resumen.empresas[1].texto, "<2215>");
    EXPECT_TRUE(mundo.historia().empty()) << "the pending run leaves no history line";
}

TEST_F(PruebaPendientes, LasQueNoPuedenIrQuedanConSuMotivoYLasOtrasSiguen) {
    const auto protegida = mundo.crearEmpresa("Protegida.QZT", "ana", "c");
    mundo.proteger(protegida, "abcd");
    mundo.guion().cancelarPeticion();
    mundo.guion().cancelarPeticion();  // what failed is tried once more after a success
    marcar(1, protegida);
    marcar(2, mundo.crearEmpresa("Rechazada.QZT", "malo", "c"));
    marcar(3, mundo.crearEmpresa("Averiada.QZT", "ana", "c"));
    marcar(4, mundo.crearEmpresa("Grande.QZT", "lleno", "c"));
    marcar(5, mundo.nucleo.datos("Desaparecida.QZT"));
    marcar(6, mundo.crearEmpresa("Buena.QZT", "ana", "c"));
    mundo.servicio.responder("DatosUsuario", [](pruebas::ServicioGuion::Argumentos& argumentos) {
        const auto& usuario = std::get<std::string>(argumentos[0]);
        return usuario == "malo" ? "ERROR:usuario de baja" : "0-x-" + usuario + "-Nombre";
    });
    mundo.servicio.responder("CarpetasNserie", [](pruebas::ServicioGuion::Argumentos& argumentos) {
        return std::get<std::string>(argumentos[0]) == "lleno" ? "0-lleno-c-x" : "";
    });
    mundo.servicio.responder("CalcularEspacioTotal", "99999999999");
    mundo.servicio.responder("Backup", [](pruebas::ServicioGuion::Argumentos& argumentos) {
        const auto nombre = core::DecodificarNombre(std::get<std::string>(argumentos[5]));
        return nombre.starts_with("AVERIADA") ? "ERROR:disco averiado" : "";
    });
    EXPECT_FALSE(enviar());
    EXPECT_EQ(error(1), "<310> incorrecta");
    EXPECT_NE(error(2).find("usuario de baja"), std::string::npos) << error(2);
    EXPECT_EQ(error(3), "ERROR:disco averiado");
    EXPECT_EQ(error(4), "<2234>");
    for (int ranura = 1; ranura <= 4; ++ranura) {
        EXPECT_NE(emp(ranura), "") << ranura;
    }
    EXPECT_EQ(emp(5) + error(5), "") << "a path that is gone is forgotten";
    EXPECT_EQ(emp(6) + error(6), "");
    EXPECT_FALSE(estado.gInterrumpido);
}

TEST_F(PruebaPendientes, LoQueSeMarcaMientrasTantoSeSubeEnLaMismaPasada) {
    marcar(50, mundo.crearEmpresa("Una.QZT", "ana", "c"));
    const auto nueva = mundo.crearEmpresa("Nueva.QZT", "ana", "c");
    bool marcada = false;
    mundo.guion().enCadaTurno([&] {
        if (!std::exchange(marcada, true)) {
            marcar(3, nueva);  // a slot that this scan has passed
        }
    });
    EXPECT_TRUE(enviar());
    EXPECT_EQ(emp(3) + emp(50), "");
    EXPECT_EQ(archivos.archivos.size(), 2U);
}

TEST_F(PruebaPendientes, AjustesQueNoSePuedenGrabarTerminanLaPasada) {
    marcar(1, mundo.crearEmpresa("Una.QZT", "ana", "c"));
    marcar(2, mundo.crearEmpresa("Otra.QZT", "ana", "c"));
    mundo.nucleo.memoria.fallarAlGrabar = true;
    EXPECT_FALSE(enviar());
    EXPECT_EQ(archivos.archivos.size(), 1U) << "the same company must not go up for ever";
    EXPECT_NE(emp(1), "");
    EXPECT_TRUE(mundo.guion().mostro("Unable to Create/Open SubKey."));
}

TEST_F(PruebaPendientes, PararDejaLaRanuraYTerminaLaPasada) {
    estado.gDesatendido = false;
    marcar(1, mundo.crearEmpresa("Una.QZT", "ana", "c"));
    marcar(2, mundo.crearEmpresa("Otra.QZT", "ana", "c"));
    mundo.nucleo.carpeta().escribir("datos/GRAND01.QZD", pruebas::contenidoDePrueba(600000));
    mundo.servicio.responder("Backup", [&](pruebas::ServicioGuion::Argumentos&) {
        estado.gDetener = true;
        return std::string();
    });
    EXPECT_FALSE(enviar(true));
    EXPECT_NE(emp(1), "");
    EXPECT_EQ(error(1), "");
    EXPECT_NE(emp(2), "");
    EXPECT_EQ(estado.resumen.empresas.size(), 0U);
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_EQ(estado.gUsuario, "maria");
    EXPECT_EQ(remitentes().size(), 1U);
}

TEST_F(PruebaPendientes, ElBotonDiceQueHaTerminadoPaseLoQuePase) {
    estado.gDesatendido = false;
    mundo.nucleo.guion.persona = true;
    mundo.servicio.fallar("LeerHistorico");
    mundo.vista().Option1 = core::Opcion::historico;
    mundo.flujos.pendientes().SubirPendientes_Click();
    EXPECT_EQ(mundo.guion().ultimo().texto, "<214>");
    EXPECT_FALSE(mundo.vista().ocupada || mundo.vista().bloqueada || mundo.guion().punteroEspera);
}

}  // namespace
}  // namespace tarvoline::workflows
