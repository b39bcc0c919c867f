#include "workflows/espacio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/despliegue.h"
#include "core/formato.h"
#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

constexpr const char* mega = "1048576";

class PruebaEspacio : public ::testing::Test {
  protected:
    explicit PruebaEspacio(bool conCapacidad = true) : mundo({}, conCapacidad) {
        mundo.servicio.responder("CarpetasNserie", "0-maria-secreta-María|0-luis-otra-Luis");
        mundo.servicio.responder("CalcularEspacioTotal", [](pruebas::ServicioGuion::Argumentos& a) {
            return std::get<std::string>(a[0]) == "luis" ? "3145728" : mega;
        });
    }
    static std::string cifra(double valor) { return core::formatoImporte(valor); }
    std::string archivo(std::size_t bytes) {
        return mundo.nucleo.carpeta().escribir("grande.zip", std::string(bytes, 'z'));
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    core::Vista& vista = mundo.vista();
    Espacio& espacio = mundo.flujos.espacio();
};

class PruebaEspacioSinCapacidad : public PruebaEspacio {
  protected:
    PruebaEspacioSinCapacidad() : PruebaEspacio(false) {}
};

TEST_F(PruebaEspacio, LaComprobacionEntera) {
    espacio.Controlar_capacidad();
    EXPECT_EQ(vista.LbCapacidad[0], "<2229> " + cifra(1) + " GB");
    EXPECT_EQ(vista.LbCapacidad[1], "<2251> " + cifra(4) + " MB") << "the account uses more than the user";
    EXPECT_EQ(estado.gCapacidad, 1024);
    EXPECT_EQ(estado.gEspacioUsado, 4);
    EXPECT_FALSE(estado.gCapacidadExcedida);
    EXPECT_FALSE(vista.capacidadRoja);
    EXPECT_EQ(mundo.servicio.nombres(),
              "DatosUsuario CapacidadContratada CalcularEspacioTotal DatosUsuario CarpetasNserie "
              "CalcularEspacioTotal CalcularEspacioTotal");
    EXPECT_TRUE(mundo.guion().sucesos.empty());
    EXPECT_FALSE(mundo.guion().punteroEspera);
}

TEST_F(PruebaEspacio, PorEncimaDeLoContratado) {
    mundo.servicio.responder("CapacidadContratada", "0.001");
    espacio.Controlar_capacidad();
    EXPECT_TRUE(estado.gCapacidadExcedida);
    EXPECT_TRUE(vista.capacidadRoja);
    const auto caja = mundo.guion().ultimo();
    EXPECT_EQ(caja.icono, core::Icono::parada);
    EXPECT_EQ(caja.texto, "<2249>\r\n" + cifra(4) + " MB / " + cifra(1.02) + " MB\r\n<2233> " +
                              std::string(core::despliegue::telefonoSoporte));
    mundo.guion().olvidar();
    espacio.Controlar_capacidad(true);
    estado.gBorrandoSeleccion = true;
    espacio.Controlar_capacidad(false);
    EXPECT_TRUE(mundo.guion().sucesos.empty()) << "silent, but over all the same";
    EXPECT_TRUE(estado.gCapacidadExcedida);
    mundo.servicio.responder("CapacidadContratada", "2");
    espacio.Controlar_capacidad();
    EXPECT_FALSE(vista.capacidadRoja);
}

TEST_F(PruebaEspacio, SinContratoSonCienMegas) {
    mundo.servicio.responder("CapacidadContratada", "0");
    espacio.Controlar_capacidad();
    EXPECT_EQ(estado.gCapacidad, 100);
    EXPECT_EQ(vista.LbCapacidad[0], "<2230> <2229> " + cifra(100) + " MB");
}

TEST_F(PruebaEspacioSinCapacidad, LaDiceElAjuste) {
    EXPECT_EQ(espacio.CapacidadContratada("CUENTA1"), 0);
    mundo.nucleo.ajustes.GrabarRegistro("Capacidad", "5", "NETBACKUP", "VELDORIX");
    EXPECT_EQ(espacio.CapacidadContratada("CUENTA1"), 5);
    EXPECT_EQ(mundo.servicio.nombres(), "") << "no call to a service that does not tell it";
}

TEST_F(PruebaEspacio, UnaRespuestaDeErrorTerminaCallada) {
    for (const char* respuesta : {"ERROR:sin clave", "0-x-ERROR:mal-y", "0-x-error:mal-y"}) {
        mundo.guion().olvidar();
        mundo.servicio.responder("DatosUsuario", respuesta);
        espacio.Controlar_capacidad();
        EXPECT_EQ(mundo.guion().sucesos.size(), respuesta[0] == 'E' ? 0U : 1U) << respuesta;
        EXPECT_EQ(vista.LbCapacidad[0], "") << "the label does not stay at measuring";
        EXPECT_FALSE(mundo.guion().punteroEspera);
    }
    EXPECT_EQ(mundo.guion().ultimo().titulo, "Tarvoline");
    mundo.servicio.cortar("DatosUsuario");
    EXPECT_THROW(espacio.Controlar_capacidad(), soap::ErrorServicio);
    EXPECT_FALSE(mundo.guion().punteroEspera);
}

TEST_F(PruebaEspacio, SinCodigoDeCuenta) {
    mundo.servicio.responder("DatosUsuario", "|");
    espacio.Controlar_capacidad();
    EXPECT_EQ(mundo.guion().ultimo().texto, "<2227>");
    EXPECT_EQ(estado.gEspacioCuenta, 0);
    EXPECT_EQ(estado.gEspacioUsado, 1);
    mundo.guion().olvidar();
    espacio.Controlar_capacidad(true);
    EXPECT_TRUE(mundo.guion().sucesos.empty());
}

TEST_F(PruebaEspacio, UnaUnidadImposibleVuelveALaPrimera) {
    estado.gUnidadTamano = 9;
    espacio.Controlar_capacidad();
    EXPECT_EQ(estado.gUnidadTamano, 2);
    EXPECT_EQ(mundo.nucleo.ajustes.leer("Visualiza datos en", "BACKUP"), "2");
    estado.gUnidadTamano = 1;
    espacio.Actualiza_Espacio_Ocupado();
    EXPECT_EQ(vista.LbCapacidad[1], "<2251> " + cifra(1024) + " KB");
}

TEST_F(PruebaEspacio, UnFalloDejaLasCifrasComoEstaban) {
    espacio.Controlar_capacidad();
    mundo.servicio.responder("CalcularEspacioTotal", "ERROR:no");
    EXPECT_EQ(espacio.EspacioOcupado(), "");
    EXPECT_EQ(estado.gEspacioUsado, 4);
    mundo.servicio.parar();
    EXPECT_EQ(espacio.EspacioOcupado(), "");
    EXPECT_EQ(estado.gEspacioUsado, 4);
    estado.gRefrescando = true;
    EXPECT_EQ(espacio.EspacioOcupado(), "");
}

TEST_F(PruebaEspacio, CadaUsuarioSeMideConSuClave) {
    espacio.DatosInformeEspacio();
    const auto llamadas = mundo.servicio.llamadas("CalcularEspacioTotal");
    ASSERT_EQ(llamadas.size(), 2U);
    EXPECT_EQ(llamadas[1].texto(0), "luis");
    EXPECT_THAT(core::DecodificarClave(llamadas[1].texto(1)).value_or(""), EndsWith("otra"));
}

TEST_F(PruebaEspacio, ElInforme) {
    espacio.Imgcapacidad_Click();
    const auto& listado = mundo.guion().listados.at(0);
    EXPECT_EQ(listado.titulo, "<2246>");
    EXPECT_EQ(listado.encabezado, "<2247>");
    EXPECT_EQ(listado.fecha, "31/05/2024");
    EXPECT_EQ(listado.columnas, "0,0,3");
    EXPECT_EQ(listado.texto, "maria\tMaría\t" + cifra(1) + "\r\nluis\tLuis\t" + cifra(3) + "\r\n");
    mundo.servicio.responder("CarpetasNserie", "ERROR:no");
    estado.gEspacioUsado = 7;
    espacio.Imgcapacidad_Click();
    EXPECT_EQ(mundo.guion().listados.at(1).texto, "maria\t\t" + cifra(7) + "\r\n");
}

TEST_F(PruebaEspacio, UnRechazoAlMedirNoEsUnaCuentaSinContrato) {
    const auto archivo = mundo.nucleo.carpeta().escribir("a.bin", std::string(1000, 'x'));
    mundo.servicio.responder("CapacidadContratada", "ERROR:ocupado");
    EXPECT_THROW(espacio.HayEspacio(archivo), soap::ErrorServicio);
    EXPECT_TRUE(mundo.guion().cajas().empty());

    // Logged in while the service was down: no code, but the capacity was measured later.
    estado.gCuenta.clear();
    estado.gCapacidad = 1024;
    estado.gEspacioUsado = 500;  // more than an account without contract may use
    EXPECT_TRUE(espacio.HayEspacio(archivo));
}

TEST_F(PruebaEspacio, SoloUnRestoNegativoRechaza) {
    mundo.servicio.responder("CapacidadContratada", "0.0029296875");  // 3 MB
    estado.gEspacioUsado = 1;
    EXPECT_TRUE(espacio.HayEspacio(archivo(2 * 1024 * 1024)));
    EXPECT_FALSE(espacio.HayEspacio(archivo(2 * 1024 * 1024 + 1)));
    EXPECT_EQ(mundo.guion().ultimo().texto, "MARIA: <2234>");
    EXPECT_EQ(mundo.guion().ultimo().titulo, "Tarvoline grande.zip");
    EXPECT_EQ(espacio.motivo(), "<2234>");
}

TEST_F(PruebaEspacio, OtroUsuarioSeMideAparte) {
    estado.gUsuario = "luis";
    estado.gPassword = "otra";
    estado.gEspacioUsado = 1e9;  // the session user's figure does not count
    EXPECT_TRUE(espacio.HayEspacio(archivo(100)));
    mundo.servicio.responder("CapacidadContratada", "0.00390625");  // 4 MB, all in use
    EXPECT_FALSE(espacio.HayEspacio(archivo(100)));
    mundo.guion().olvidar();
    mundo.servicio.responder("DatosUsuario", "ERROR:bloqueado");
    EXPECT_FALSE(espacio.HayEspacio(archivo(100)));
    EXPECT_EQ(mundo.guion().cajas().size(), 1U) << "one box is enough";
    EXPECT_EQ(espacio.motivo(), "ERROR:bloqueado");
}

TEST_F(PruebaEspacio, TrazasEnSuOrden) {
    estado.gModoComprobacion = true;
    espacio.Controlar_capacidad();
    std::string marcas;
    for (const auto& caja : mundo.guion().cajas()) {
        marcas += caja.texto.substr(std::string("Controlar_capacidad ").size()) + ";";
    }
    EXPECT_EQ(marcas, "01;02;03;Ret: 0-x-CUENTA1-Nombre;04;05;06;07;08;09;10;11;12;");
}

}  // namespace
}  // namespace tarvoline::workflows
