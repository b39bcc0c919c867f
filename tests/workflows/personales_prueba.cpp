// Personal files up, stored files down.
#include "workflows/personales.h"

#include <gtest/gtest.h>

#include "workflows/descargas.h"
#include "workflows/mundo_servicio.h"
#include "workflows/temporales.h"

namespace tarvoline::workflows {
namespace {

class PruebaPersonales : public ::testing::Test {
  protected:
    PruebaPersonales() { mundo.vista().Option1 = core::Opcion::personal; }
    void subir(std::size_t longitud) {
        mundo.guion().elegirArchivo(
            mundo.nucleo.carpeta().escribir("mío/carta.txt", pruebas::contenidoDePrueba(longitud)));
        mundo.flujos.personales().Subir_Click();
    }
    // The grid shows one file, chosen.
    void mostrar(const std::string& nombre) {
        auto& rejilla = mundo.vista().fx1;
        rejilla.ponerFilas(2);
        rejilla.ponerCelda(1, 2, nombre);
        rejilla.ponerCelda(1, 3, nombre);
        rejilla.ponerCelda(1, 5, "3.00 KB");
        rejilla.Row = rejilla.RowSel = 1;
        mundo.vista().List1 = {nombre};
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    pruebas::ArchivosServicio archivos{mundo.servicio};
};

TEST_F(PruebaPersonales, SubeListaYDejaSuLinea) {
    subir(1000);
    EXPECT_TRUE(archivos.archivos.contains("carta.txt"));
    EXPECT_TRUE(mundo.guion().mostro("<2248>"));
    EXPECT_EQ(mundo.historia(), std::vector<std::string>{"maria ha subido el archivo carta.txt"});
    EXPECT_EQ(mundo.servicio.llamadas("ListadoArchivos").size(), 1U);
    EXPECT_EQ(mundo.nucleo.ajustes.leer("UltimarutaArchivo", "BACKUP"), mundo.nucleo.ruta("mío") + "/");
    EXPECT_TRUE(mundo.nucleo.carpeta().hay("mío/carta.txt"));
}

TEST_F(PruebaPersonales, UnaListaQueNoLlegaNoCallaLaSubida) {
    mundo.servicio.cortar("ListadoArchivos");
    subir(1000);
    EXPECT_TRUE(archivos.archivos.contains("carta.txt"));
    EXPECT_EQ(mundo.guion().ultimo().texto, "<2248>");
    EXPECT_EQ(mundo.historia(), std::vector<std::string>{"maria ha subido el archivo carta.txt"});
}

TEST_F(PruebaPersonales, PararQuitaLoLlegadoSiLlegoAlgo) {
    const auto parar = [&](pruebas::ServicioGuion::Argumentos&) {
        estado.gDetener = true;
        return std::string("1");
    };
    mundo.servicio.responder("CapacidadContratada", parar);
    subir(800000);
    EXPECT_TRUE(mundo.servicio.llamadas("Backup").empty());
    EXPECT_TRUE(mundo.servicio.llamadas("EliminarArchivo").empty()) << "the one of before stays";

    mundo.servicio.responder("CapacidadContratada", "1");
    mundo.servicio.responder("Backup", parar);
    mundo.vista().Option1 = core::Opcion::veldorix;  // whatever is on show, the file is a personal one
    subir(800000);
    const auto borrados = mundo.servicio.llamadas("EliminarArchivo");
    ASSERT_EQ(borrados.size(), 1U);
    EXPECT_EQ(borrados[0].texto(3) + "/" + borrados[0].texto(4), "PERSONAL/carta.txt");
    EXPECT_FALSE(mundo.guion().mostro("<2248>"));
    EXPECT_TRUE(mundo.historia().empty());
}

TEST_F(PruebaPersonales, SinSitioCallaYUnFalloSeDice) {
    estado.gEspacioUsado = 5000;
    subir(1000);
    EXPECT_EQ(mundo.guion().cajas().size(), 1U) << "the gate's own box";
    estado.gEspacioUsado = 0;
    mundo.servicio.responder("Backup", "ERROR:nombre prohibido");
    subir(1000);
    EXPECT_EQ(mundo.guion().ultimo().texto, "ERROR:nombre prohibido");
    EXPECT_EQ(mundo.guion().ultimo().icono, core::Icono::exclamacion);
}

TEST_F(PruebaPersonales, DescargarDejaSuLineaSoloSiLlegoEntero) {
    archivos.archivos["carta.txt"] = pruebas::contenidoDePrueba(300000);
    mostrar("carta.txt");
    mundo.guion().guardarComo(mundo.nucleo.ruta("vuelta.txt"));
    mundo.flujos.descargas().Descargar_Click();
    EXPECT_EQ(mundo.nucleo.carpeta().leer("vuelta.txt"), archivos.archivos["carta.txt"]);
    EXPECT_EQ(mundo.historia(), std::vector<std::string>{"maria ha bajado el archivo carta.txt"});

    mundo.servicio.olvidar();
    mundo.guion().cancelarGuardar();
    mundo.flujos.descargas().Descargar_Click();
    mundo.guion().guardarComo(mundo.nucleo.ruta("otra.txt"));
    mundo.servicio.cortar("Restore");
    mundo.flujos.descargas().Descargar_Click();
    EXPECT_TRUE(mundo.historia().empty());

    mundo.vista().Option1 = core::Opcion::historico;
    mundo.servicio.olvidar();
    mundo.flujos.descargas().Descargar_Click();
    EXPECT_EQ(mundo.servicio.nombres(), "");
}

TEST_F(PruebaPersonales, DobleClicPreguntaBajaYAbre) {
    archivos.archivos["carta.txt"] = "hola";
    mostrar("carta.txt");
    const auto local = mundo.flujos.temporales().rutaDescarga("carta.txt");
    mundo.guion().contestarNo("<2244> carta.txt = 3.00 KB?");
    mundo.flujos.descargas().fx1_DblClick();
    EXPECT_TRUE(mundo.guion().abiertos.empty());
    mundo.guion().contestarSi();
    mundo.flujos.descargas().fx1_DblClick();
    EXPECT_EQ(mundo.guion().abiertos, std::vector<std::string>{local});
    mundo.flujos.descargas().List1_Click(0);
    EXPECT_EQ(mundo.guion().abiertos.size(), 2U);
    mundo.flujos.descargas().List1_Click(7);
    EXPECT_EQ(mundo.guion().abiertos.size(), 2U);
}

// The service may name a file as it likes: nothing is written outside the folder of downloads.
TEST_F(PruebaPersonales, NombresHostilesNoSalenDeLaCarpeta) {
    for (const std::string nombre : {"../fuera.txt", "..", "/etc/x", "a\\b.txt"}) {
        archivos.archivos[nombre] = "x";
        mostrar(nombre);
        mundo.servicio.olvidar();
        mundo.flujos.descargas().List1_Click(0);
        EXPECT_EQ(mundo.servicio.nombres(), "") << nombre;
    }
    // Nor over the archive that an interrupted upload still needs.
    const auto activo = mundo.flujos.temporales().rutaDescarga("UNO.ZIP");
    mundo.nucleo.ajustes.GrabarRegistro("Active", activo, "NETBACKUP", "VELDORIX");
    mostrar("uno.zip");
    mundo.flujos.descargas().List1_Click(0);
    EXPECT_EQ(mundo.guion().ultimo().texto.substr(0, 6), "<2257>");
    EXPECT_TRUE(mundo.guion().abiertos.empty());
}

}  // namespace
}  // namespace tarvoline::workflows
