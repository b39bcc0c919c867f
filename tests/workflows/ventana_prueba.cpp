// The main window's rules, without a widget: load, activation, gates and what follows a command.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/despliegue.h"
#include "workflows/formulario_configuracion.h"
#include "workflows/listados.h"
#include "workflows/mundo_servicio.h"
#include "workflows/panel.h"
#include "workflows/terminos.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::workflows {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Notes which window was asked for; the terms are answered with button `respuesta`.
class VentanasGuion : public Ventanas {
  public:
    void frmconfig(FormularioConfiguracion&) override { abiertas += "frmconfig "; }
    void Form1(Terminos& terminos) override {
        abiertas += "Form1 ";
        if (alMostrar) {
            alMostrar();
        }
        if (respuesta >= 0) {
            terminos.Command1_Click(respuesta);
        }
    }
    std::string abiertas;
    int respuesta = -1;
    std::function<void()> alMostrar;
};

class PruebaVentana : public ::testing::Test {
  protected:
    PruebaVentana() {
        mundo.nucleo.entrarComo("maria", "secreta", "CUENTA1");
        mundo.servicio.responder("CalcularEspacioTotal", "1048576");
        mundo.servicio.responder("CarpetasNserie", "0-maria-secreta-María");
        mundo.nucleo.estado.gTextos.poner(2235, "a,b,c");
    }
    std::string ajuste(std::string_view clave) { return mundo.nucleo.almacen.Leer(clave); }
    void pulsar(int numero) {
        mundo.guion().olvidar();
        ventana.ButtonClick(numero);
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    core::Vista& vista = mundo.vista();
    VentanasGuion ventanas;
    VentanaPrincipal ventana{mundo.flujos, ventanas};
};

TEST_F(PruebaVentana, LaCargaAntesDeMostrarSoloPoneLaVersion) {
    estado.gEnReposo = true;
    ventana.cargar();
    EXPECT_EQ(vista.rotulos.versionlb, "2.0.0");
    EXPECT_EQ(vista.rotulos.Label6, "");
    estado.gEnReposo = false;
    ventana.cargar();
    EXPECT_EQ(vista.titulo, "<1924>");
    EXPECT_THAT(vista.rotulos.Option1, ElementsAre("<1927>", "<1929>", "<2153>", "<1928>"));
}

TEST_F(PruebaVentana, LaEmpresaProtegidaPideSuClaveAlCargar) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    mundo.proteger(ruta, "abcd");
    mundo.nucleo.ajustes.GrabarRegistro("active", ruta);
    mundo.guion().teclear("abcd");
    EXPECT_NO_THROW(ventana.cargar());
    mundo.guion().cancelarPeticion();
    EXPECT_THROW(ventana.cargar(), core::FinDePrograma);
    EXPECT_TRUE(mundo.guion().cajas().empty());
    mundo.guion().teclear("otra");
    EXPECT_THROW(ventana.cargar(), core::FinDePrograma);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<928>");
}

TEST_F(PruebaVentana, LaPrimeraActivacionListaMideYTitula) {
    estado.gInicio = true;
    mundo.nucleo.ajustes.GrabarRegistro("OrdenGrid", "112", "Backup");
    ventana.activar();
    EXPECT_EQ(vista.titulo, "<2218>. <2219> maria <2220> ABCDEFGH");
    EXPECT_EQ(mundo.servicio.llamadas("ListadoArchivos").size(), 1U);
    EXPECT_EQ(estado.gOrdenGrid, 112) << "the direction of the last run";
    EXPECT_EQ(ajuste("OrdenGrid"), "");
    EXPECT_FALSE(estado.gInicio);
    EXPECT_TRUE(estado.gRefrescarEspacio) << "the next one keeps quiet";
    EXPECT_EQ(ventanas.abiertas, "");
    EXPECT_EQ(vista.rotulos.botonesToolbar2.size(), 18U);
    EXPECT_THAT(vista.rotulos.Ordenar, ElementsAre("<587>", "<17>", "<964>"));
    ventana.activar();
    EXPECT_EQ(mundo.servicio.llamadas("ListadoArchivos").size(), 1U) << "only the first one lists";
    EXPECT_FALSE(estado.gRefrescarEspacio);
}

TEST_F(PruebaVentana, SinUsuarioElTituloPideIdentificarse) {
    mundo.nucleo.entrarComo("", "");
    ventana.activar();
    EXPECT_EQ(vista.titulo, "<2218>. <2241>");
}

TEST_F(PruebaVentana, UnServicioQueNoRespondeNoDejaLaActivacionAMedias) {
    estado.gInicio = true;
    mundo.servicio.cortar("DTS");
    ventana.activar();
    EXPECT_FALSE(estado.gInicio);
    EXPECT_TRUE(vista.habilitada);
    EXPECT_FALSE(mundo.guion().cajas().empty());
}

TEST_F(PruebaVentana, LosTerminosSinAceptarCierranTodoMenosSuBoton) {
    mundo.nucleo.ajustes.GrabarRegistro("terminos y condiciones", "1");
    estado.gInicio = true;
    ventana.activar();
    EXPECT_EQ(ventanas.abiertas, "Form1 ") << "at the first activation by itself";
    EXPECT_FALSE(vista.habilitada);

    pulsar(boton::cambiarUsuario);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<2240>");
    EXPECT_TRUE(estado.gDetener);

    ventanas.respuesta = 0;
    ventana.ButtonClick(boton::terminos);
    EXPECT_EQ(ajuste("Terminos y condiciones"), "0");
    EXPECT_TRUE(vista.habilitada);
    EXPECT_EQ(estado.gTerminosPendientes, 0);
    EXPECT_FALSE(estado.gDetener) << "the refusal before stops nothing now";
}

TEST_F(PruebaVentana, PuertasDeLaSesionYDeLaCapacidad) {
    struct Caso {
        int numero;
        bool sinSesion;     // answers before a login
        bool sinCapacidad;  // answers over capacity
    };
    const Caso casos[] = {{boton::nuevoUsuario, true, true},    {boton::online, true, true},
                          {boton::configuracion, false, true},  {boton::subirEmpresa, false, false},
                          {boton::subirPersonal, false, false}, {boton::subirPendientes, false, false},
                          {boton::restaurar, false, true},      {boton::descargar, false, true},
                          {boton::manual, false, true}};
    const auto refusada = std::string("<2249> <2233> ") + std::string(core::despliegue::telefonoSoporte);
    // What a command that passes asks first is answered with no.
    const auto preparar = [&](int numero) {
        if (numero == boton::restaurar) mundo.guion().contestarNo("<1112>");
        if (numero == boton::subirEmpresa || numero == boton::subirPersonal) mundo.guion().cancelarArchivo();
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.numero);
        estado.gSesionValida = false;
        estado.gCapacidadExcedida = false;
        if (caso.sinSesion) preparar(caso.numero);
        pulsar(caso.numero);
        EXPECT_EQ(mundo.guion().mostro("<2241>"), !caso.sinSesion);
        EXPECT_EQ(estado.gDetener, !caso.sinSesion);
        estado.gSesionValida = true;
        estado.gCapacidadExcedida = true;
        if (caso.sinCapacidad) preparar(caso.numero);
        pulsar(caso.numero);
        EXPECT_EQ(mundo.guion().mostro(refusada), !caso.sinCapacidad);
        estado.gCapacidadExcedida = false;
        preparar(caso.numero);
        pulsar(caso.numero);
        EXPECT_FALSE(mundo.guion().mostro(refusada) || mundo.guion().mostro("<2241>"));
    }
    mundo.guion().abiertos.clear();
    estado.gSesionValida = false;
    pulsar(boton::online);
    EXPECT_THAT(mundo.guion().abiertos, ElementsAre(core::despliegue::sitioFabricante));
    mundo.guion().cancelarDatos();
    pulsar(boton::cambiarUsuario);
    EXPECT_EQ(mundo.guion().dialogos.size(), 1U);
    estado.gSesionValida = true;
    estado.gCapacidadExcedida = true;
    mundo.guion().contestarNo("<1112>\n<243>\n\n<616>: ");
    pulsar(boton::restaurar);
    EXPECT_FALSE(mundo.guion().ultimo().siPorDefecto);
}

TEST_F(PruebaVentana, MientrasTrabajaSoloPasaParar) {
    vista.ocupada = true;
    ventana.ButtonClick(boton::online);
    ventana.Picture2_Click(Imagen::cambiarUsuario);
    ventana.Label6_Click();
    EXPECT_TRUE(mundo.guion().abiertos.empty() && mundo.guion().sucesos.empty());
    EXPECT_EQ(ventanas.abiertas, "");
    EXPECT_FALSE(estado.gDetener);
    ventana.ButtonClick(boton::detener);
    EXPECT_TRUE(estado.gDetener);
}

TEST_F(PruebaVentana, TrasUnaOrdenSeMideOSeDiceQueNoAcabo) {
    vista.rotulos.botonesToolbar2.clear();
    pulsar(boton::manual);
    EXPECT_FALSE(mundo.servicio.llamadas("CalcularEspacioTotal").empty());
    EXPECT_EQ(vista.rotulos.botonesToolbar2.size(), 18U);

    const auto medidas = mundo.servicio.llamadas("CalcularEspacioTotal").size();
    mundo.guion().contestarDatos([&](core::EntradaDatos&) {
        ventana.ButtonClick(boton::detener);  // pressed while the command is at work
        return false;
    });
    pulsar(boton::cambiarUsuario);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<1227>");
    EXPECT_FALSE(estado.gDetener || estado.gInterrumpido);
    EXPECT_EQ(mundo.servicio.llamadas("CalcularEspacioTotal").size(), medidas) << "the figures stay";
    EXPECT_EQ(estado.gTextosHistorico[9], "<1227>");
}

TEST_F(PruebaVentana, EliminarNoValeEnElHistorico) {
    vista.Option1 = core::Opcion::historico;
    pulsar(boton::eliminar);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<269>");
    EXPECT_EQ(mundo.servicio.nombres(), "");
    vista.Option1 = core::Opcion::veldorix;
    mundo.guion().contestarNo("<2239>");
    pulsar(boton::eliminar);
    EXPECT_TRUE(mundo.servicio.llamadas("EliminarArchivo").empty());
    EXPECT_FALSE(estado.gBorrandoSeleccion);
}

TEST_F(PruebaVentana, LaConfiguracionSeAbreConSuClave) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "maria", "secreta");
    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", ruta);
    pulsar(boton::configuracion);
    EXPECT_EQ(ventanas.abiertas, "frmconfig ");
    EXPECT_EQ(vista.titulo, "<2218>. <2219> maria <2220> ABCDEFGH") << "activation follows";

    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", mundo.nucleo.datos("No está.QZT"));
    pulsar(boton::configuracion);
    EXPECT_EQ(ventanas.abiertas, "frmconfig ") << "a company that cannot be opened is told";
    EXPECT_FALSE(mundo.guion().cajas().empty());
}

TEST_F(PruebaVentana, LaConfiguracionProtegidaQuiereSuClave) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT", "maria", "secreta");
    mundo.proteger(ruta, "abcd", data::cabecera::PASSWORD2);
    mundo.nucleo.ajustes.GrabarRegistro("ACTIVE", ruta);
    mundo.guion().teclear("abce");
    ventana.ButtonClick(boton::configuracion);
    EXPECT_THAT(mundo.guion().ultimo().texto, HasSubstr(" incorrecta"));
    mundo.guion().cancelarPeticion();
    ventana.ButtonClick(boton::configuracion);
    EXPECT_EQ(ventanas.abiertas, "");
    mundo.guion().teclear("abcd");
    ventana.ButtonClick(boton::configuracion);
    EXPECT_EQ(ventanas.abiertas, "frmconfig ");

    // While another program holds the company nobody can tell whether it is protected.
    mundo.flujos.enlaces().datos().reintentosEmpresa = {3, std::chrono::milliseconds(1)};
    auto otro =
        mundo.nucleo.archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear(platform::todoElArchivo, platform::TipoBloqueo::exclusivo));
    pulsar(boton::configuracion);
    EXPECT_EQ(ventanas.abiertas, "frmconfig ");
    EXPECT_FALSE(mundo.guion().cajas().empty());
}

TEST_F(PruebaVentana, SinElArchivoDeLosTerminosAcabaElPrograma) {
    ventanas.alMostrar = [] { throw core::ErrorIdioma("terminos.txt"); };
    mundo.nucleo.ajustes.GrabarRegistro("terminos y condiciones", "1");
    estado.gInicio = true;
    try {
        ventana.activar();
        FAIL() << "nobody can accept what cannot be read";
    } catch (const core::FinDePrograma& fin) {
        EXPECT_EQ(fin.codigo, 1);
        EXPECT_EQ(mundo.guion().ultimo().texto, "terminos.txt");
    }
}

TEST_F(PruebaVentana, SoporteMuestraLoQueManda) {
    mundo.guion().cancelar("QzTarvoline 2.0.0");
    vista.rotulos.versionlb = "2.0.0";
    pulsar(boton::soporte);
    EXPECT_TRUE(mundo.guion().abiertos.empty());
    mundo.guion().aceptar("99 Tarvoline");
    pulsar(boton::calidad);
    ASSERT_EQ(mundo.guion().abiertos.size(), 1U);
    EXPECT_THAT(mundo.guion().abiertos[0], HasSubstr("?subject=99%20Tarvoline&body=CUENTA1%0D%0A"));
}

}  // namespace
}  // namespace tarvoline::workflows
