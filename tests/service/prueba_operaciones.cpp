// What goes over the wire for each operation: order of the calls, arguments by position, credentials.
#include "service/operaciones.h"

#include <gtest/gtest.h>

#include <set>

#include "apoyo/servicio_guion.h"

namespace tarvoline::service {
namespace {

using pruebas::ServicioGuion;

class Operaciones : public ::testing::Test {
  protected:
    // The arguments of the one call of `operacion`, as text; the credential as "*".
    std::string argumentos(const std::string& operacion) {
        std::string texto;
        const auto llamadas = servicio.llamadas(operacion);
        EXPECT_EQ(llamadas.size(), 1U) << operacion;
        for (const auto& valor : llamadas.at(0).argumentos) {
            texto += texto.empty() ? "" : "|";
            if (const auto* entero = std::get_if<std::int32_t>(&valor)) {
                texto += std::to_string(*entero);
            } else if (const auto* bytes = std::get_if<soap::Bytes>(&valor)) {
                texto += "[" + std::to_string(bytes->size()) + "]";
            } else {
                const auto& cadena = std::get<std::string>(valor);
                const auto clave = core::DecodificarClave(cadena);
                texto += clave && clave->ends_with("xyzsecreta") ? "*" : cadena;
            }
        }
        return texto;
    }

    ServicioGuion servicio;
    soap::Conexion conexion;
    ClienteServicio cliente{conexion, servicio.url()};
    Identidad quien{"maria", "secreta", "DATOS", "CUENTA1"};
};

TEST_F(Operaciones, ArgumentosPorPosicion) {
    soap::Bytes bytes(5);
    cliente.DatosUsuario(quien);
    EXPECT_EQ(argumentos("DatosUsuario"), "maria|*");
    cliente.ActualizaNserie("ABCDEFGH", "CUENTA1");
    EXPECT_EQ(argumentos("ActualizaNserie"), "ABCDEFGH|CUENTA1");
    cliente.ListadoArchivos(quien, "PERSONAL");
    EXPECT_EQ(argumentos("ListadoArchivos"), "maria|*|DATOS|PERSONAL");
    cliente.FileSize(quien, "VELDORIX", "Año & <más>.zip");
    EXPECT_EQ(argumentos("FileSize"), "maria|*|DATOS|VELDORIX|A&#241;o &#38; <m&#225;s>.zip");
    cliente.Backup(quien, "VELDORIX", "a.zip", bytes, 262145);
    EXPECT_EQ(argumentos("Backup"), "maria|*|CUENTA1|DATOS|VELDORIX|a.zip|[5]|262145");
    EXPECT_EQ(bytes.size(), 5U);
    cliente.Restore(quien, "VELDORIX", "a.zip", 7, 262144, bytes);
    EXPECT_EQ(argumentos("Restore"), "maria|*|DATOS|VELDORIX|a.zip|7|262144|[0]");
    cliente.EliminarArchivo(quien, "PERSONAL", "a.txt");
    EXPECT_EQ(argumentos("EliminarArchivo"), "maria|*|DATOS|PERSONAL|a.txt");
    cliente.CarpetasNserie("CUENTA1");
    EXPECT_EQ(argumentos("CarpetasNserie"), "CUENTA1");
    cliente.GrabarHistorico(quien, "maria ha subido <a> & b");
    EXPECT_EQ(argumentos("GrabarHistorico"), "maria|*|maria ha subido <a> & b");
    cliente.LeerHistorico(quien, "");
    EXPECT_EQ(argumentos("LeerHistorico"), "maria|*|");
    EXPECT_TRUE(cliente.ofreceCapacidad());
    cliente.CapacidadContratada(quien, "CUENTA1");
    EXPECT_EQ(argumentos("CapacidadContratada"), "maria|*|CUENTA1");
}

TEST_F(Operaciones, CadaLlamadaPideSuCredencialAntes) {
    cliente.CalcularEspacioTotal(quien);
    cliente.CalcularEspacioTotal(quien);
    cliente.listadocarpetas(quien);
    cliente.CarpetasNserie("CUENTA1");
    EXPECT_EQ(servicio.nombres(true),
              "DTS CalcularEspacioTotal DTS CalcularEspacioTotal DTS listadocarpetas CarpetasNserie");
    std::set<std::string> credenciales;
    for (const auto& llamada : servicio.llamadas()) {
        if (llamada.argumentos.size() > 1) {
            credenciales.insert(llamada.texto(1));
        }
    }
    EXPECT_EQ(credenciales.size(), 3U);
}

TEST_F(Operaciones, UnServicioQueFallaUnoAntiguoYNinguno) {
    servicio.fallar("DatosUsuario");
    EXPECT_THROW(cliente.DatosUsuario(quien), soap::ErrorServicio);
    EXPECT_EQ(cliente.detail(), "detalle de prueba");
    ServicioGuion antiguo(false);
    EXPECT_FALSE(ClienteServicio(conexion, antiguo.url()).ofreceCapacidad());
    const auto url = antiguo.url();
    antiguo.parar();
    soap::Conexion nueva;
    EXPECT_THROW(ClienteServicio(nueva, url), soap::ErrorServicio);
}

}  // namespace
}  // namespace tarvoline::service
