// One company, chosen by the person.
#include "workflows/subida_empresa.h"

#include <gtest/gtest.h>

#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

class PruebaSubidaEmpresa : public ::testing::Test {
  protected:
    PruebaSubidaEmpresa() {
        ruta = mundo.crearEmpresa("Panadería.QZT", "ana", "clave1");
        mundo.vista().carpetas = {"DATOS", "VENTAS"};
        mundo.vista().carpetaElegida = 1;
        estado.gCarpeta = "VENTAS";
    }
    void subir() { mundo.flujos.subidaEmpresa().SubirEmpresa_Click(); }
    void esperarSesion() {
        EXPECT_EQ(estado.gUsuario + "/" + estado.gPassword + "/" + estado.gCuenta, "maria/secreta/CUENTA1");
        EXPECT_EQ(estado.gCarpeta, "VENTAS");
        EXPECT_FALSE(mundo.vista().ocupada || mundo.vista().bloqueada || mundo.guion().punteroEspera);
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    pruebas::ArchivosServicio archivos{mundo.servicio};
    std::string ruta;
};

TEST_F(PruebaSubidaEmpresa, ConOtroUsuarioPreguntaYLoDiceAlFinal) {
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarSi("<2258> ana\r\n<2259> maria\r\n\r\n<980>");
    mundo.nucleo.carpeta().escribir("temporal/Veldorix/Tarvoline/resto.tmp", "x");
    subir();
    EXPECT_TRUE(archivos.archivos.contains("PANADERÍA 2024-05-31  18 30.ZIP"));
    EXPECT_TRUE(mundo.guion().mostro("<214>"));
    EXPECT_TRUE(mundo.guion().mostro("<1923> ana"));
    EXPECT_EQ(mundo.historia(), std::vector<std::string>{"ana ha subido la empresa Panadería.QZT"});
    EXPECT_EQ(mundo.servicio.llamadas("GrabarHistorico")[0].texto(0), "ana");
    EXPECT_FALSE(mundo.nucleo.carpeta().hay("temporal/Veldorix/Tarvoline/resto.tmp"));
    EXPECT_EQ(mundo.nucleo.ajustes.leer("Ultimaruta", "BACKUP"), mundo.nucleo.datos());
    EXPECT_EQ(mundo.guion().elecciones[0].filtro.mascara, "*.qzt");
    esperarSesion();
}

TEST_F(PruebaSubidaEmpresa, LoQueNoLlegaASubirCalla) {
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarNo("<980>");
    subir();
    EXPECT_TRUE(estado.gInterrumpido);
    esperarSesion();
    mundo.guion().cancelarArchivo();
    subir();
    EXPECT_TRUE(estado.gInterrumpido);

    mundo.nucleo.carpeta().escribir("datos/GRAND01.QZD", pruebas::contenidoDePrueba(600000));
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarSi();
    mundo.servicio.responder("Backup", [&](pruebas::ServicioGuion::Argumentos&) {
        estado.gDetener = true;
        return std::string();
    });
    subir();
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_TRUE(mundo.guion().cajas().empty());
    EXPECT_TRUE(mundo.historia().empty());
    EXPECT_TRUE(mundo.servicio.llamadas("EliminarArchivo").empty()) << "an archive stays as far as it came";
    esperarSesion();
}

TEST_F(PruebaSubidaEmpresa, ConElMismoUsuarioNoPreguntaYSinNingunoNoSube) {
    mundo.guion().elegirArchivo(mundo.crearEmpresa("Propia.QZT", "maria", "secreta"));
    subir();
    ASSERT_EQ(mundo.guion().cajas().size(), 1U);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<214>");
    esperarSesion();

    estado.gUsuario.clear();
    estado.gUsuarioSesion.clear();
    mundo.guion().elegirArchivo(mundo.crearEmpresa("Sola.QZT"));
    subir();
    EXPECT_TRUE(mundo.guion().mostro("<2215>"));
    EXPECT_EQ(archivos.archivos.size(), 1U);
    EXPECT_TRUE(estado.gInterrumpido);
}

TEST_F(PruebaSubidaEmpresa, UnFalloSeDiceYElUsuarioVuelve) {
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarSi();
    mundo.servicio.responder("Backup", "ERROR:sin permiso");
    subir();
    EXPECT_TRUE(mundo.guion().mostro("ERROR:sin permiso"));
    EXPECT_FALSE(mundo.guion().mostro("<1923>"));
    EXPECT_TRUE(mundo.historia().empty());
    esperarSesion();
    // The history cannot be written: what is raised must not leave the window with the company's user.
    mundo.servicio.responder("Backup", "");
    mundo.servicio.cortar("GrabarHistorico");
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarSi();
    subir();
    EXPECT_TRUE(mundo.guion().mostro("<214>")) << "the company is up all the same";
    esperarSesion();
}

TEST_F(PruebaSubidaEmpresa, LosArchivosPersonalesVanDetras) {
    estado.gArchivosPersonales = {"", mundo.nucleo.carpeta().escribir("uno.txt", "uno"), " ",
                                  mundo.nucleo.carpeta().escribir("dos.txt", "dos")};
    mundo.guion().elegirArchivo(ruta);
    mundo.guion().contestarSi();
    subir();
    EXPECT_EQ(archivos.archivos.size(), 3U);
    EXPECT_TRUE(archivos.archivos.contains("dos.txt"));
    EXPECT_TRUE(mundo.nucleo.carpeta().hay("uno.txt")) << "a personal file stays";
}

TEST_F(PruebaSubidaEmpresa, VXCRMEligeDeUnaLista) {
    estado.gProducto = "VXCRM";
    mundo.vista().Option1 = core::Opcion::vxcrm;
    subir();
    EXPECT_TRUE(mundo.guion().mostro("<1933>"));

    const auto xml = [](const char* nombre, const char* usuario) {
        return std::string(
                   "<?xml version=\"1.0\" encoding=\"utf-8\"?><r><a Key=\"DESCRIPCIÓNEMPRESA\" v=\"") +
               nombre + "\"/><a Key=\"TARVOLINEACTIVADO\" v=\"1\"/><a Key=\"TVUSER\" v=\"" + usuario +
               "\"/></r>";
    };
    mundo.nucleo.carpeta().escribir("datos/total03.xml", xml("Obras", "tres"));
    mundo.nucleo.carpeta().escribir("datos/TOTAL12.XML", xml("Ventas", "doce"));
    mundo.nucleo.carpeta().escribir("datos/TOTAL13.XML", "");  // empty: no company
    mundo.nucleo.carpeta().escribir("datos/CLIEN12.DAT", "clientes");
    mundo.guion().contestarDatos([](core::EntradaDatos& datos) {
        EXPECT_EQ(datos.titulo, "<1932>");
        EXPECT_EQ(datos.campos.at(0).elecciones, (std::vector<std::string>{"03- Obras", "12- Ventas"}));
        datos.campos[0].valor = "12- Ventas";
        return true;
    });
    subir();
    EXPECT_TRUE(archivos.archivos.contains("12- VENTAS"));
    EXPECT_EQ(mundo.servicio.llamadas("Backup")[0].texto(0), "doce");
    EXPECT_EQ(estado.gEmpresaCRM, "12");
    EXPECT_TRUE(mundo.historia().empty());
    EXPECT_TRUE(mundo.guion().mostro("<1923> doce"));
    EXPECT_EQ(estado.gUsuario, "maria");
    EXPECT_EQ(estado.gCarpeta, mundo.vista().textoCarpetas) << "the list shows what is in force";

    mundo.guion().cancelarDatos();
    subir();
    EXPECT_TRUE(estado.gInterrumpido);
}

}  // namespace
}  // namespace tarvoline::workflows
