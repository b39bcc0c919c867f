#include "workflows/espacio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/despliegue.h"
#include "core/formato.h"
#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

using ::testing::EndsWith;

class PruebaEspacio : public ::testing::Test {
  protected:
    PruebaEspacio() {
        mundo.servicio.responder("CarpetasNserie", "0-maria-secreta-María|0-luis-otra-Luis");
        mundo.servicio.responder("CalcularEspacioTotal", [](pruebas::ServicioGuion::Argumentos& a) {
            return std::get<std::string>(a[0]) == "luis" ? "3145728" : "1048576";
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

TEST_F(PruebaEspacio, LaComprobacionEntera) {
    estado.gUnidadTamano = 9;  // no unit: MB from now on
    espacio.Controlar_capacidad();
    EXPECT_EQ(vista.LbCapacidad[0], "<2229> " + cifra(1) + " GB");
    EXPECT_EQ(vista.LbCapacidad[1], "<2251> " + cifra(4) + " MB") << "the account uses more than the user";
    EXPECT_EQ(estado.gCapacidad, 1024);
    EXPECT_EQ(estado.gEspacioUsado, 4);
    EXPECT_FALSE(estado.gCapacidadExcedida || vista.capacidadRoja || mundo.guion().punteroEspera);
    EXPECT_EQ(mundo.nucleo.ajustes.leer("Visualiza datos en", "BACKUP"), "2");
    EXPECT_EQ(mundo.servicio.nombres(),
              "DatosUsuario CapacidadContratada CalcularEspacioTotal DatosUsuario CarpetasNserie "
              "CalcularEspacioTotal CalcularEspacioTotal");
    EXPECT_EQ(mundo.servicio.llamadas("CalcularEspacioTotal").at(2).texto(0), "luis");
    EXPECT_THAT(
        core::DecodificarClave(mundo.servicio.llamadas("CalcularEspacioTotal")[2].texto(1)).value_or(""),
        EndsWith("otra"))
        << "each user under his own password";
    EXPECT_TRUE(mundo.guion().sucesos.empty());

    // A failure leaves the figures as they were.
    mundo.servicio.responder("CalcularEspacioTotal", "ERROR:no");
    EXPECT_EQ(espacio.EspacioOcupado(), "");
    mundo.servicio.parar();
    EXPECT_EQ(espacio.EspacioOcupado(), "");
    EXPECT_EQ(estado.gEspacioUsado, 4);
}

TEST_F(PruebaEspacio, PorEncimaDeLoContratado) {
    mundo.servicio.responder("CapacidadContratada", "0.001");
    espacio.Controlar_capacidad();
    EXPECT_TRUE(estado.gCapacidadExcedida && vista.capacidadRoja);
    EXPECT_EQ(mundo.guion().ultimo().icono, core::Icono::parada);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<2249>\r\n" + cifra(4) + " MB / " + cifra(1.02) +
                                                " MB\r\n<2233> " +
                                                std::string(core::despliegue::telefonoSoporte));
    mundo.guion().olvidar();
    espacio.Controlar_capacidad(true);
    estado.gBorrandoSeleccion = true;
    espacio.Controlar_capacidad(false);
    EXPECT_TRUE(mundo.guion().sucesos.empty()) << "silent, but over all the same";
    EXPECT_TRUE(estado.gCapacidadExcedida);
    mundo.servicio.responder("CapacidadContratada", "0");
    espacio.Controlar_capacidad();
    EXPECT_FALSE(vista.capacidadRoja);
    EXPECT_EQ(estado.gCapacidad, 100) << "no contract";
    EXPECT_EQ(vista.LbCapacidad[0], "<2230> <2229> " + cifra(100) + " MB");
}

TEST(EspacioSinOperacion, LaCapacidadLaDiceElAjuste) {
    pruebas::MundoServicio mundo({}, false);
    mundo.nucleo.ajustes.GrabarRegistro("Capacidad", "5", "NETBACKUP", "VELDORIX");
    EXPECT_EQ(mundo.flujos.espacio().CapacidadContratada("CUENTA1"), 5);
    EXPECT_EQ(mundo.servicio.nombres(), "") << "no call to a service that does not tell it";
}

TEST_F(PruebaEspacio, UnaRespuestaDeErrorTerminaLaComprobacion) {
    struct Caso {
        const char* respuesta;
        std::size_t cajas;
    };
    for (const auto& [respuesta, cajas] :
         {Caso{"ERROR:sin clave", 0}, {"0-x-ERROR:mal-y", 1}, {"0-x-error:mal-y", 1}}) {
        mundo.guion().olvidar();
        mundo.servicio.responder("DatosUsuario", respuesta);
        espacio.Controlar_capacidad();
        EXPECT_EQ(mundo.guion().sucesos.size(), cajas) << respuesta;
        EXPECT_EQ(vista.LbCapacidad[0], "") << "the label does not stay at measuring";
    }
    mundo.servicio.responder("DatosUsuario", "|");  // no account code
    espacio.Controlar_capacidad();
    EXPECT_EQ(mundo.guion().ultimo().texto, "<2227>");
    EXPECT_EQ(estado.gEspacioUsado, 1);
    mundo.guion().olvidar();
    espacio.Controlar_capacidad(true);
    EXPECT_TRUE(mundo.guion().sucesos.empty());
    mundo.servicio.cortar("DatosUsuario");
    EXPECT_THROW(espacio.Controlar_capacidad(), soap::ErrorServicio);
    EXPECT_FALSE(mundo.guion().punteroEspera);
}

TEST_F(PruebaEspacio, ElInforme) {
    espacio.Imgcapacidad_Click();
    const auto& listado = mundo.guion().listados.at(0);
    EXPECT_EQ(listado.titulo + listado.encabezado, "<2246><2247>");
    EXPECT_EQ(listado.fecha, "31/05/2024");
    EXPECT_EQ(listado.columnas, "0,0,3");
    EXPECT_EQ(listado.texto, "maria\tMaría\t" + cifra(1) + "\r\nluis\tLuis\t" + cifra(3) + "\r\n");
    // The user alone, counted by the service; what was measured last when it does not say.
    estado.gEspacioUsado = 7;
    mundo.servicio.responder("CarpetasNserie", "ERROR:no");
    espacio.Imgcapacidad_Click();
    EXPECT_EQ(mundo.guion().listados.at(1).texto, "maria\t\t" + cifra(1) + "\r\n");
    mundo.servicio.responder("CalcularEspacioTotal", "ERROR:no");
    espacio.Imgcapacidad_Click();
    EXPECT_EQ(mundo.guion().listados.at(2).texto, "maria\t\t" + cifra(7) + "\r\n");
}

TEST_F(PruebaEspacio, SoloUnRestoNegativoRechaza) {
    mundo.servicio.responder("CapacidadContratada", "0.0029296875");  // 3 MB
    estado.gEspacioUsado = 1;
    EXPECT_TRUE(espacio.HayEspacio(archivo(2 * 1024 * 1024)));
    EXPECT_FALSE(espacio.HayEspacio(archivo(2 * 1024 * 1024 + 1)));
    EXPECT_EQ(mundo.guion().ultimo().texto, "MARIA: <2234>");
    EXPECT_EQ(mundo.guion().ultimo().titulo, "Tarvoline grande.zip");
    EXPECT_EQ(espacio.motivo(), "<2234>");

    // A refusal to tell is no account without contract.
    mundo.guion().olvidar();
    mundo.servicio.responder("CapacidadContratada", "ERROR:ocupado");
    EXPECT_THROW(espacio.HayEspacio(archivo(1)), soap::ErrorServicio);
    EXPECT_TRUE(mundo.guion().cajas().empty());
    // Logged in while the service was down: no code, but the capacity was measured later.
    estado.gCuenta.clear();
    estado.gCapacidad = 1024;
    estado.gEspacioUsado = 500;  // more than an account without contract may use
    EXPECT_TRUE(espacio.HayEspacio(archivo(1)));
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

}  // namespace
}  // namespace tarvoline::workflows
