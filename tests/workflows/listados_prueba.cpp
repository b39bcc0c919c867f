#include "workflows/lista.h"
#include "workflows/listados.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/formato.h"
#include "workflows/mundo_servicio.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {
namespace {

using core::Opcion;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PruebaListados : public ::testing::Test {
  protected:
    // The view of personal files, of these names.
    void listar(const std::string& nombres) {
        vista.Option1 = Opcion::personal;
        mundo.servicio.responder("ListadoArchivos", nombres);
        listados.RefrescarVista();
    }

    pruebas::MundoServicio mundo;
    core::Vista& vista = mundo.vista();
    core::Estado& estado = mundo.estado();
    Listados& listados = mundo.flujos.listados();
};

TEST_F(PruebaListados, OrdenDeLasLlamadasDeUnListado) {
    mundo.servicio.responder("FileSize", "10");
    listar("uno\tdos");
    EXPECT_EQ(mundo.servicio.nombres(true),
              "DTS listadocarpetas DTS ListadoArchivos DTS FileSize DTS FileSize");
    EXPECT_THAT(vista.List1, ElementsAre("uno", "dos"));
    EXPECT_THAT(vista.carpetas, ElementsAre("DATOS", "VENTAS"));
    EXPECT_EQ(mundo.servicio.llamadas("ListadoArchivos").at(0).texto(3), "PERSONAL");
}

TEST_F(PruebaListados, ElegirUnaVista) {
    vista.textoCarpetas = "VENTAS";
    listados.elegirVista(Opcion::personal);
    EXPECT_EQ(mundo.clave("Programa"), "1");
    EXPECT_EQ(estado.gCarpeta, "VENTAS");
    listados.elegirVista(Opcion::historico);
    EXPECT_EQ(mundo.clave("Programa"), "2");
    EXPECT_EQ(estado.gProducto, "VELDORIX") << "the history leaves the product alone";
    listados.elegirVista(Opcion::vxcrm);
    EXPECT_EQ(estado.gProducto, "VXCRM");
    EXPECT_EQ(mundo.servicio.llamadas("LeerHistorico").size(), 1U);
}

TEST_F(PruebaListados, MientrasAlgoCorreNadaCambiaYAlEmpezarSoloSeAnota) {
    vista.carpetas = {"DATOS", "VENTAS"};
    vista.ocupada = true;
    listados.Option1_Click(3);
    listados.carpetas_Click(1);
    EXPECT_EQ(vista.Option1, Opcion::veldorix);
    EXPECT_EQ(estado.gCarpeta, "DATOS");
    vista.ocupada = false;
    estado.gInicio = true;
    listados.carpetas_Click(1);
    listados.Option1_Click(3);
    EXPECT_EQ(vista.Option1, Opcion::vxcrm);
    EXPECT_EQ(estado.gCarpeta, "VENTAS");
    EXPECT_EQ(mundo.servicio.nombres() + mundo.clave("Programa"), "");
}

TEST_F(PruebaListados, UnListadoFallidoVaciaLaListaYSeDiceUnaVez) {
    const auto fallar = [&](const char* esperado) {
        vista.List1 = {"viejo"};
        vista.fx1.ponerFilas(2);
        vista.fx1.ponerCelda(1, 2, "viejo");
        mundo.guion().olvidar();
        listar("ERROR:carpeta no válida");
        EXPECT_THAT(vista.List1, IsEmpty());
        EXPECT_EQ(vista.fx1.celda(1, 2), "") << "rows of another folder could be deleted in this one";
        ASSERT_EQ(mundo.guion().cajas().size(), 1U);
        EXPECT_EQ(mundo.guion().ultimo().texto, esperado);
    };
    fallar("ERROR<1250><2224>");
    mundo.servicio.parar();
    fallar("ERROR<1250> <1934>");
}

TEST_F(PruebaListados, SinClaveDeAccesoSePideUnUsuario) {
    mundo.servicio.responder("ListadoArchivos", std::string(errorSinClave));
    mundo.nucleo.entrarComo("", "");
    estado.gProducto = "VELDORIX";
    mundo.guion().cancelarDatos();
    listados.RefrescarVista();
    EXPECT_FALSE(estado.gSesionValida);
    EXPECT_FALSE(mundo.guion().mostro("ERROR"));
}

TEST_F(PruebaListados, LaCarpetaQueQuedaEnVigor) {
    struct Caso {
        const char* lista;
        int recordada;
        const char* enVigor;
        const char* esperada;
        int elegida;
    };
    for (const auto& caso :
         {Caso{"UNO\tDOS", 1, "OTRA", "DOS", 1}, Caso{"UNO\tDOS", 2, "dos", "dos", 1},
          Caso{"UNO\tDOS", -1, "TRES", "Datos", -1}, Caso{"UNO\tDATOS", -1, "TRES", "Datos", 1},
          Caso{"", -1, "TRES", "Datos", 0}, Caso{"\t\tUNO\t", 0, "", "UNO", 0}}) {
        SCOPED_TRACE(std::string(caso.lista) + " / " + caso.enVigor);
        mundo.servicio.responder("listadocarpetas", caso.lista);
        vista.carpetaElegida = caso.recordada;
        estado.gCarpeta = caso.enVigor;
        listados.LlenarCarpetas();
        EXPECT_EQ(estado.gCarpeta, caso.esperada);
        EXPECT_EQ(vista.textoCarpetas, caso.esperada);
        EXPECT_EQ(vista.carpetaElegida, caso.elegida);
    }
}

TEST_F(PruebaListados, CarpetasRechazadas) {
    mundo.servicio.responder("listadocarpetas", "ERROR:sin permiso");
    vista.carpetas = {"A"};
    listados.LlenarCarpetas();
    EXPECT_FALSE(estado.gRefrescando) << "lowered when the routine ends";
    EXPECT_EQ(mundo.guion().ultimo().texto, "sin permiso");
    EXPECT_THAT(vista.carpetas, ElementsAre("A"));
    listados.AnadirCarpetasNuevas();
    EXPECT_EQ(mundo.guion().cajas().size(), 1U);

    mundo.servicio.responder("listadocarpetas", "DATOS\tVENTAS");
    vista.carpetas = {"VENTAS", "datos"};
    vista.carpetaElegida = 0;
    listados.AnadirCarpetasNuevas();
    EXPECT_THAT(vista.carpetas, ElementsAre("VENTAS", "datos", "DATOS"));
    EXPECT_EQ(vista.carpetaElegida, 0);
}

TEST_F(PruebaListados, UsuarioNuevoVuelveALeerLaVista) {
    estado.gUsuarioNuevo = true;
    vista.Option1 = Opcion::personal;
    int recargas = 0;
    mundo.servicio.responder("ListadoArchivos", [&](pruebas::ServicioGuion::Argumentos&) {
        ++recargas;
        EXPECT_TRUE(estado.gUsuarioNuevo) << "new until his view has been read";
        return std::string();
    });
    listados.LlenarCarpetas();
    listados.LlenarCarpetas();
    EXPECT_EQ(recargas, 1);
    EXPECT_FALSE(estado.gUsuarioNuevo);
}

TEST_F(PruebaListados, CuentaYCarpetaRaiz) {
    mundo.servicio.responder("DatosUsuario", "0-x--|0-x- cuenta2 -");
    EXPECT_EQ(listados.CodigoCuentaDeUsuario(), "CUENTA2");
    mundo.servicio.responder("DatosUsuario", "ERROR:bloqueado");
    EXPECT_EQ(listados.CodigoCuentaDeUsuario(), "");
    EXPECT_EQ(mundo.guion().ultimo().texto, "ERROR:bloqueado");
    mundo.servicio.responder("Carpetaraizusuario", "d:\\vx\\abcdefgh\\");
    EXPECT_EQ(listados.CarpetaRaizUsuario(), "ABCDEFGH");
    listados.ActualizarCodigoCuenta("CUENTA2");
    EXPECT_EQ(mundo.servicio.llamadas("ActualizaNserie").at(0).texto(0), "abcdefgh");
    mundo.servicio.cortar("Carpetaraizusuario");
    EXPECT_EQ(listados.CarpetaRaizUsuario(), "");
}

TEST_F(PruebaListados, TamanosDeLasFilas) {
    mundo.servicio.responder("FileSize", [](pruebas::ServicioGuion::Argumentos& a) {
        const auto& nombre = std::get<std::string>(a[4]);
        return nombre == "roto" ? "ERROR:roto" : nombre == "uno" ? "1048576" : "2097152";
    });
    listar("uno\troto\tdos");
    EXPECT_EQ(vista.fx1.celda(1, 5), core::formatoImporte(1) + " MB");
    EXPECT_EQ(vista.fx1.celda(2, 7), "");
    EXPECT_EQ(vista.fx1.celda(3, 7), "2097152");
    EXPECT_EQ(vista.lbtotalocupado, core::formatoImporte(3) + " MB");
    EXPECT_TRUE(mundo.guion().mostro("ERROR:roto"));
    EXPECT_FALSE(vista.medidor.visible);

    // A line that is down is told once.
    mundo.guion().olvidar();
    mundo.servicio.olvidar();
    mundo.servicio.responder("FileSize", "7");
    mundo.servicio.cortar("FileSize", 2);
    listar("uno\tdos\ttres");
    EXPECT_EQ(mundo.guion().cajas().size(), 1U);
    EXPECT_EQ(mundo.servicio.llamadas("FileSize").size(), 2U);
    EXPECT_EQ(vista.fx1.celda(1, 7), "7");
}

TEST_F(PruebaListados, MedirNoImpideOrdenarNiHacerOtraCosa) {
    mundo.servicio.responder("FileSize", [](pruebas::ServicioGuion::Argumentos& a) {
        return std::to_string(std::get<std::string>(a[4])[0]);
    });
    std::vector<int> filas;
    vista.alCambiar = [&](core::Parte parte) {
        if (parte == core::Parte::fila) filas.push_back(vista.filaCambiada);
    };
    // Each file keeps its own size when the rows change places in mid-way.
    estado.SentidoOrden = 1;
    mundo.guion().enTurno(1, [&] { mundo.flujos.lista().Ordenar_Click(0); });
    listar("a\tb\tc\td");
    EXPECT_THAT(filas, ElementsAre(1, 3, 2, 1));
    for (int fila = 1; fila <= 4; ++fila) {
        EXPECT_EQ(vista.fx1.celda(fila, 7), std::to_string(vista.fx1.celda(fila, 2)[0])) << fila;
    }
    // And it ends after the row it is at when it is asked to, with no sum that is none.
    mundo.guion().enTurno(mundo.guion().turnos + 2, [&] {
        EXPECT_TRUE(listados.midiendoTamanos());
        listados.dejarDeMedir();
    });
    listados.RefrescarVista();
    EXPECT_FALSE(listados.midiendoTamanos());
    EXPECT_EQ(vista.fx1.celda(2, 7), std::to_string('b'));
    EXPECT_EQ(vista.fx1.celda(3, 7), "");
    EXPECT_EQ(vista.lbtotalocupado, "");
    // Taken up again it asks for those alone that it lacks, and sums all.
    mundo.servicio.olvidar();
    EXPECT_TRUE(listados.quedanTamanos());
    listados.retomarTamanos();
    EXPECT_EQ(mundo.servicio.llamadas("FileSize").size(), 2U);
    EXPECT_EQ(vista.fx1.celda(3, 7), std::to_string('c'));
    EXPECT_EQ(vista.lbtotalocupado, mundo.flujos.panel().enUnidad('a' + 'b' + 'c' + 'd'));
    EXPECT_FALSE(listados.quedanTamanos());
    // The Stop ends it for good, and nothing but it.
    mundo.guion().enTurno(mundo.guion().turnos + 1, [&] { estado.gDetener = true; });
    listados.RefrescarVista();
    EXPECT_EQ(vista.fx1.celda(1, 7), std::to_string('a'));
    EXPECT_EQ(vista.fx1.celda(2, 7), "");
    EXPECT_FALSE(listados.quedanTamanos() || estado.gDetener);
}

TEST_F(PruebaListados, UnTamanoNegadoNoSePideDosVeces) {
    mundo.servicio.responder("FileSize", [](pruebas::ServicioGuion::Argumentos& a) {
        const auto& nombre = std::get<std::string>(a[4]);
        return nombre == "a" ? std::string("ERROR:no") : std::string("7");
    });
    mundo.guion().enTurno(mundo.guion().turnos + 2, [&] { listados.dejarDeMedir(); });
    listar("a\tb\tc");
    mundo.servicio.olvidar();
    listados.retomarTamanos();
    EXPECT_EQ(mundo.servicio.llamadas("FileSize").size(), 1U);
    EXPECT_EQ(vista.fx1.celda(3, 7), "7");
}

TEST_F(PruebaListados, TamanoDeLaSeleccion) {
    mundo.servicio.responder("FileSize", "1048576");
    listar("uno\tdos\ttres");
    vista.fx1.Row = 3;
    vista.fx1.RowSel = 2;
    listados.Command1_Click();
    EXPECT_EQ(vista.Tamaño, core::formatoImporte(2) + " MB");
    vista.fx1.Row = vista.fx1.RowSel = 0;
    listados.Command1_Click();
    EXPECT_EQ(mundo.guion().ultimo().texto, "<1935>");
    mundo.servicio.responder("FileSize", "2147483648");
    EXPECT_EQ(listados.TamanoArchivo("PERSONAL", "uno"), -1);
    EXPECT_TRUE(mundo.guion().mostro("2147483648"));
}

}  // namespace
}  // namespace tarvoline::workflows
