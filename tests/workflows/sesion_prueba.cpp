#include "workflows/sesion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

using ::testing::ElementsAre;

class PruebaSesion : public ::testing::Test {
  protected:
    PruebaSesion() { mundo.nucleo.entrarComo("", ""); }
    std::string enVigor() const { return estado.gUsuario + "/" + estado.gPassword + "/" + estado.gCuenta; }
    std::string guardado(const std::string& ruta) {
        link::Enlace enlace(mundo.enlaces);
        enlace.AbrirEmpresa(ruta, "");
        auto usuario =
            enlace.Config("TVUSER") + "/" + enlace.Config("TVPASSWORD") + "/" + enlace.Config("Borrador");
        enlace.CerrarEmpresa();
        return usuario;
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    Sesion& sesion = mundo.flujos.sesion();
};

TEST_F(PruebaSesion, ElDialogoYLoQueLoDejaSinEfecto) {
    mundo.guion().cancelarDatos();
    sesion.CambiarUsuario();
    EXPECT_FALSE(estado.gSesionValida) << "cancelled, and nobody is logged in";
    EXPECT_EQ(mundo.servicio.nombres(), "");
    EXPECT_EQ(sesion.titulo(), "<2218>. <2241>");

    mundo.nucleo.entrarComo("maria", "secreta", "VIEJA");
    estado.gSesionValida = true;
    estado.gTextos.poner(586, "Usuario de Veldorix");
    estado.gTextos.poner(2080, "Tarvoline");
    mundo.guion().cancelarDatos();
    sesion.CambiarUsuario();
    const auto& dialogo = mundo.guion().dialogos.at(1);
    EXPECT_EQ(dialogo.titulo, "Usuario de Tarvoline");
    ASSERT_EQ(dialogo.campos.size(), 4U);
    EXPECT_EQ(dialogo.campos[0].valor, "maria");
    EXPECT_EQ(dialogo.campos[1].tipo, core::TipoCampo::oculto);
    EXPECT_EQ(dialogo.campos[2].valor, "CUENTA1") << "asked of the service afresh";
    EXPECT_EQ(dialogo.campos[3].valor, "0");
    EXPECT_TRUE(estado.gSesionValida);

    mundo.servicio.responder("DatosUsuario", "ERROR:La clave no es correcta");
    mundo.guion().rellenar({"luis", "mala", ""});
    sesion.CambiarUsuario();
    EXPECT_EQ(mundo.guion().ultimo().texto, "La clave no es correcta");
    EXPECT_EQ(estado.gUsuarioSesion + "/" + estado.gUsuario, "maria/maria");
}

TEST_F(PruebaSesion, EntrarConCodigoDeCuenta) {
    estado.gSesionValida = false;
    mundo.guion().rellenar({"maria", "secreta", "cuenta1"});
    sesion.CambiarUsuario();
    EXPECT_EQ(enVigor(), "maria/secreta/CUENTA1");
    EXPECT_EQ(estado.gUsuarioSesion, "maria");
    EXPECT_EQ(mundo.servicio.llamadas("ActualizaNserie").at(0).texto(1), "CUENTA1");
    EXPECT_TRUE(estado.gSesionValida);
    EXPECT_FALSE(estado.gInicio || estado.gUsuarioNuevo);
    EXPECT_EQ(mundo.vista().titulo, "<2218>. <2219> maria <2220> ABCDEFGH");
    EXPECT_THAT(mundo.vista().carpetas, ElementsAre("DATOS", "VENTAS"));
    EXPECT_EQ(mundo.servicio.llamadas("ListadoArchivos").size(), 1U) << "the view of the new user";
}

TEST_F(PruebaSesion, EntrarSinCodigoDeCuenta) {
    mundo.guion().rellenar({"maria", "secreta", ""});
    sesion.CambiarUsuario();
    EXPECT_EQ(estado.gCuentaSesion + enVigor(), "maria/secreta/CUENTA1");
    EXPECT_TRUE(mundo.servicio.llamadas("ActualizaNserie").empty());
    // A company under another user has been up: its account must not stay with the session's user.
    estado.gUsuario = "empresa";
    estado.gCuenta = "AJENA";
    sesion.reponerUsuario();
    EXPECT_EQ(enVigor(), "maria/secreta/CUENTA1");
    // A login that breaks off does not leave the views standing still.
    mundo.servicio.cortar("listadocarpetas");
    mundo.guion().rellenar({"maria", "secreta", ""});
    EXPECT_THROW(sesion.CambiarUsuario(), soap::ErrorServicio);
    EXPECT_FALSE(estado.gInicio || estado.gUsuarioNuevo);
}

TEST_F(PruebaSesion, GuardarElUsuarioEnUnaEmpresa) {
    const auto alfa = mundo.crearEmpresa("ALFA.QZT");
    const auto beta = mundo.crearEmpresa("BETA.QZT");
    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", beta);
    mundo.guion().rellenar({"maria", "secreta", "", "1"});
    mundo.guion().contestarDatos([](core::EntradaDatos& datos) {
        EXPECT_THAT(datos.campos.at(0).elecciones, ElementsAre("ALFA.QZT", "BETA.QZT"));
        EXPECT_EQ(datos.campos.at(0).valor, "BETA.QZT");
        datos.campos.at(0).valor = "ALFA.QZT";
        return true;
    });
    sesion.CambiarUsuario();
    EXPECT_EQ(guardado(alfa), "maria/secreta/1");
    EXPECT_EQ(guardado(beta).substr(0, 2), "//");
}

TEST_F(PruebaSesion, EmpresaProtegida) {
    mundo.proteger(mundo.crearEmpresa("ALFA.QZT"), "abcd");
    const auto elegirAlfa = [&] { mundo.guion().rellenar({"ALFA.QZT"}); };
    mundo.guion().rellenar({"maria", "secreta", "", "1"});
    elegirAlfa();
    mundo.guion().cancelarDatos();
    EXPECT_THROW(sesion.CambiarUsuario(), core::FinDePrograma);
    EXPECT_EQ(mundo.guion().dialogos.at(2).titulo, "Tarvoline (<2218> Veldorix)");
    EXPECT_EQ(mundo.guion().dialogos.at(2).campos.at(0).etiqueta, "ALFA.QZT <310>");

    link::Enlace enlace(mundo.enlaces);
    elegirAlfa();
    mundo.guion().rellenar({"mala"});
    mundo.guion().rellenar({"abcd"});
    EXPECT_TRUE(sesion.EmpresaParaUsuario(enlace));
    enlace.CerrarEmpresa();
    elegirAlfa();  // both answers are remembered: no question now
    EXPECT_TRUE(sesion.EmpresaParaUsuario(enlace));
    enlace.CerrarEmpresa();
    mundo.guion().cancelarDatos();
    EXPECT_FALSE(sesion.EmpresaParaUsuario(enlace));
}

}  // namespace
}  // namespace tarvoline::workflows
