#include <gtest/gtest.h>

#include "apoyo/variables_proceso.h"
#include "platform/acceso_inicio.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

TEST(AccesoInicio, EscribeQuitaYReemplazaLaEntrada) {
    const CarpetaPrueba carpeta;
    VariablesProceso entorno;
    entorno.poner("XDG_CONFIG_HOME", carpeta.ruta("cfg"));
    const auto archivos = crearSistemaArchivos();
    quitarAccesoInicio(*archivos, "Tarvoline");
    EXPECT_FALSE(existeAccesoInicio(*archivos, "Tarvoline"));
    crearAccesoInicio(*archivos, {"Tarvoline", "/viejo", "", ""});
    crearAccesoInicio(*archivos, {"Tarvoline", "/opt/a b/$x\"100%\\`p", "/opt/a b", "/opt/icono.svg"});
    EXPECT_TRUE(existeAccesoInicio(*archivos, "tarvoline"));
    EXPECT_EQ(carpeta.leer("cfg/autostart/Tarvoline.desktop"),
              "[Desktop Entry]\nType=Application\nVersion=1.0\nName=Tarvoline\n"
              "Exec=\"/opt/a b/\\\\$x\\\\\"100%%\\\\\\\\\\\\`p\"\n"
              "Path=/opt/a b\nIcon=/opt/icono.svg\nTerminal=false\n");
    EXPECT_EQ(numeroDe([&] { crearAccesoInicio(*archivos, {"../x", "/a", "", ""}); }), error_archivo::ruta);
    quitarAccesoInicio(*archivos, "Tarvoline");
    EXPECT_TRUE(archivos->listar(carpeta.ruta("cfg/autostart")).empty());
}

}  // namespace tarvoline::pruebas
