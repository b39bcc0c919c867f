// What the configuration window keeps of a company, and what it forgets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workflows/formulario_configuracion.h"
#include "workflows/mundo_flujos.h"
#include "workflows/terminos.h"

namespace tarvoline::workflows {
namespace {

using ::testing::ElementsAre;

class PruebaFormulario : public ::testing::Test {
  protected:
    PruebaFormulario() { mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", ruta); }

    std::string config(const std::string& nombre) {
        link::Enlace enlace(mundo.enlaces);
        enlace.AbrirEmpresa(ruta, "");
        auto valor = enlace.Config(nombre);
        enlace.CerrarEmpresa();
        return valor;
    }
    // Opens the form, lets `cambio` edit it, and leaves through button `aceptar` or the other.
    template <typename Cambio>
    void editar(const Cambio& cambio, bool aceptar = true) {
        FormularioConfiguracion formulario(mundo.flujos);
        formulario.DatosIniciales();
        cambio(formulario);
        formulario.Salir(aceptar);
    }
    static void activar(FormularioConfiguracion& formulario) {
        formulario.TarvolineActivar = true;
        formulario.modificar();
    }

    pruebas::MundoFlujos mundo;
    const std::string ruta = mundo.crearEmpresa("Uno.QZT");
};

TEST_F(PruebaFormulario, LoGuardadoVuelve) {
    editar([](auto& formulario) {
        EXPECT_EQ(formulario.lbemrpesa, "Uno.QZT");
        EXPECT_EQ(formulario.minutos.size(), 61U);
        EXPECT_EQ(formulario.TarvolineMinutos, 0);
        activar(formulario);
        formulario.TarvolineUser = "maría";
        formulario.TarvolinePassword = "s3creta";
        formulario.TarvolineCarpeta = "Ventas";
        formulario.TarvolineMinutos = 3;
        formulario.datosen = 3;
        formulario.List1 = {"/a", "/b", "/c"};
    });
    EXPECT_EQ(config("TVUSER") + "/" + config("TVPASSWORD") + "/" + config("TVCARPETA"),
              "maría/s3creta/Ventas");
    EXPECT_EQ(config("TVMINUTOS") + "/" + config("TarvolineMinutos"), "30/31");
    EXPECT_EQ(config("Borrador"), "1");
    EXPECT_EQ(mundo.nucleo.estado.gUnidadTamano, 3);
    EXPECT_TRUE(mundo.nucleo.estado.gRefrescarEspacio);

    editar([](auto& formulario) {
        EXPECT_TRUE(formulario.TarvolineActivar);
        EXPECT_EQ(formulario.TarvolineMinutos, 3);
        EXPECT_EQ(formulario.datosen, 3);
        EXPECT_THAT(formulario.List1, ElementsAre("/a", "/b", "/c"));
        EXPECT_FALSE(formulario.modificado());
        formulario.List1 = {"/a"};
        formulario.TarvolineMinutos = 0;
        formulario.modificar();
    });
    EXPECT_EQ(config("ADJUNTARCARPETAS1"), "");
    EXPECT_EQ(config("ADJUNTARCARPETAS2"), "/c") << "behind the end, never read";
    EXPECT_EQ(config("TarvolineMinutos"), "1") << "the first entry is no number";
}

TEST_F(PruebaFormulario, LoQueSePierdeYLoQueNoActiva) {
    const auto cambios = [](auto& formulario) { formulario.TarvolineUser = "otra"; };
    editar(cambios);  // nobody called it a change
    EXPECT_EQ(config("TVUSER"), "");
    editar(
        [&](auto& formulario) {
            cambios(formulario);
            activar(formulario);
            formulario.INCLUYEIMAGENES_Click(true);
        },
        false);
    EXPECT_EQ(config("TVUSER") + config("Borrador"), "");
    EXPECT_EQ(mundo.nucleo.almacen.Leer("IncluirImagenesTarvoline", "BACKUP"), "1") << "saved at the click";
    editar(activar);
    EXPECT_EQ(config("Borrador"), "0") << "the mark without a user";
}

TEST_F(PruebaFormulario, MinutosQueNoEstanYCarpetasDeLaLista) {
    {
        link::Enlace enlace(mundo.enlaces);
        enlace.AbrirEmpresa(ruta, "");
        enlace.Config("TVMINUTOS", "15");
        enlace.Config("ADJUNTARCARPETAS0", "/a");
        enlace.CerrarEmpresa();
    }
    constexpr int nueva = 0;
    constexpr int borrar = 78;
    editar([&](auto& formulario) {
        EXPECT_EQ(formulario.TarvolineMinutos, 0);
        mundo.nucleo.guion.cancelarCarpeta();
        formulario.Toolbar1_ButtonClick(nueva, -1);
        formulario.Toolbar1_ButtonClick(borrar, -1);
        EXPECT_FALSE(formulario.modificado()) << "nothing was chosen";
        mundo.nucleo.guion.contestarNo("<1365>\n/a\n<1366>");
        formulario.Toolbar1_ButtonClick(borrar, 0);
        EXPECT_THAT(formulario.List1, ElementsAre("/a"));
        EXPECT_TRUE(formulario.modificado()) << "whatever the answer";
        mundo.nucleo.guion.contestarSi();
        formulario.Toolbar1_ButtonClick(borrar, 0);
        EXPECT_TRUE(formulario.List1.empty());
    });
}

TEST_F(PruebaFormulario, SinEmpresaActivaNoSeAbre) {
    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", mundo.nucleo.datos("No está.QZT"));
    FormularioConfiguracion formulario(mundo.flujos);
    EXPECT_ANY_THROW(formulario.DatosIniciales());
}

TEST_F(PruebaFormulario, LosTerminosEnSuIdiomaYLaRespuesta) {
    Terminos terminos(mundo.flujos);
    EXPECT_ANY_THROW(terminos.leer());
    mundo.nucleo.carpeta().escribir("programa/share/tarvoline/Terminos Y Condiciones.txt", "Uno\r\ndos\r\n");
    mundo.nucleo.carpeta().escribir("programa/share/tarvoline/Terms and Conditions.txt", "One\r\n");
    EXPECT_EQ(terminos.leer(), "Uno\ndos\n");
    mundo.nucleo.ajustes.GrabarRegistro("language", "français.qzi");
    EXPECT_EQ(terminos.leer(), "One\n");
    EXPECT_FALSE(terminos.pendientes()) << "no answer counts as accepted";
    terminos.Command1_Click(1);
    EXPECT_TRUE(terminos.pendientes());
    terminos.Command1_Click(0);
    EXPECT_FALSE(terminos.pendientes());
}

}  // namespace
}  // namespace tarvoline::workflows
