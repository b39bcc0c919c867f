#include "workflows/empaquetado.h"

#include <gtest/gtest.h>

#include "core/carpetas.h"
#include "workflows/mundo_flujos.h"
#include "workflows/temporales.h"

namespace tarvoline::workflows {
namespace {

class PruebaEmpaquetado : public ::testing::Test {
  protected:
    std::string empaquetar(const std::string& ruta, bool conImagenes = true, const std::string& nombre = {}) {
        return mundo.flujos.empaquetado().ZipEmpresa(ruta, nucleo.carpetas.carpetaTransferencia(),
                                                     conImagenes, true, 9, nombre);
    }
    pruebas::MundoFlujos mundo;
    pruebas::NucleoPrueba& nucleo = mundo.nucleo;
};

TEST_F(PruebaEmpaquetado, LlevaEmpresaTablasImagenesYAdjuntas) {
    const auto ruta = mundo.crearEmpresa("Panadería Núñez.QZT");
    mundo.crearEmpresa("Otra.QZT");                        // number 02: none of its tables may go along
    nucleo.carpeta().escribir("datos/Emp2001.QZT", "03");  // another company, whatever its name says
    nucleo.carpeta().escribir("datos/Panadería Núñez/2023/factura.pdf", "imagen 1");
    nucleo.carpeta().escribir("datos/Panadería Núñez/ñ.jpg", "imagen 2");
    nucleo.carpeta().escribir("ajenas/Año 2023/carta.txt", "adjunta");
    nucleo.estado.gAdjuntarCarpetas = {"", "", nucleo.ruta("ajenas/Año 2023"), "sin separador",
                                       nucleo.ruta("no/existe")};

    const auto archivo = empaquetar(ruta);
    EXPECT_EQ(core::SoloNombre(archivo), "PANADERÍA NÚÑEZ 2024-05-31  18 30.ZIP");
    const auto archivos = mundo.desempaquetado(archivo);
    EXPECT_EQ(archivos.at("Panadería Núñez.QZT"), nucleo.carpeta().leer("datos/Panadería Núñez.QZT"));
    EXPECT_EQ(archivos.at("PLANC01.QZD"), nucleo.carpeta().leer("datos/PLANC01.QZD"));
    EXPECT_EQ(archivos.at("Panadería Núñez/2023/factura.pdf"), "imagen 1");
    EXPECT_EQ(archivos.at("Panadería Núñez/ñ.jpg"), "imagen 2");
    EXPECT_EQ(archivos.at("Año 2023/carta.txt"), "adjunta");
    EXPECT_EQ(archivos.size(), 1U + 9U + 3U);

    EXPECT_EQ(mundo.archivosDe("temporal").size(), 1U) << "only the archive may stay behind";
    EXPECT_TRUE(nucleo.guion.cajas().empty());
}

TEST_F(PruebaEmpaquetado, UnNombreRepetidoTomaElMinutoSiguiente) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    nucleo.reloj.poner({2024, 12, 31, 23, 59, 59});
    EXPECT_EQ(core::SoloNombre(empaquetar(ruta, false)), "UNO 2024-12-31  23 59.ZIP");
    EXPECT_EQ(core::SoloNombre(empaquetar(ruta, false)), "UNO 2025-01-01  00 00.ZIP");
}

TEST_F(PruebaEmpaquetado, UnaTablaBloqueadaSeDiceYElRestoSeEmpaqueta) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    const auto tabla = nucleo.archivos.abrir(nucleo.datos("EXTRA01.QZD"), platform::Apertura::escritura,
                                             platform::Comparticion::compartida);
    ASSERT_TRUE(tabla->bloquear({10, 1}, platform::TipoBloqueo::exclusivo));
    const auto problema = empaquetar(ruta, false);
    EXPECT_EQ(problema.substr(0, 5), "ERROR") << problema;
    EXPECT_NE(problema.find("EXTRA01.QZD\r\n"), std::string::npos) << problema;
    ASSERT_EQ(nucleo.guion.cajas().size(), 1U);
    EXPECT_EQ(nucleo.guion.cajas()[0].icono, core::Icono::informacion);
    EXPECT_NE(nucleo.guion.cajas()[0].texto.find(nucleo.datos("EXTRA01.QZD")), std::string::npos);
}

// The copy made under the lock is what goes up when the live table cannot be read a moment later.
TEST_F(PruebaEmpaquetado, UnaTablaQueSeBloqueaDespuesConservaSuCopia) {
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    mundo.flujos.empaquetado().hilos = 1;  // a turn after each file, before the next is read
    std::unique_ptr<platform::Archivo> tabla;
    nucleo.guion.enCadaTurno([&] {
        const auto hay =
            platform::listarMascara(nucleo.archivos, nucleo.carpetas.carpetaTransferencia(), "*.ZIP");
        if (!tabla && !hay.empty()) {
            tabla = nucleo.archivos.abrir(nucleo.datos("PLANC01.QZD"), platform::Apertura::escritura,
                                          platform::Comparticion::compartida);
            EXPECT_TRUE(tabla->bloquear(platform::todoElArchivo, platform::TipoBloqueo::exclusivo));
        }
    });
    const auto problema = empaquetar(ruta, true);
    ASSERT_NE(tabla, nullptr);
    // The lock may come when the second reading is already behind the table.
    EXPECT_TRUE(problema.starts_with(" no se han podido copiar algunas imagenes") ||
                problema.ends_with(".ZIP"))
        << problema;
    tabla.reset();
    const auto archivos =
        mundo.desempaquetado(nucleo.carpetas.carpetaTransferencia() + "/UNO 2024-05-31  18 30.ZIP");
    EXPECT_EQ(archivos.at("PLANC01.QZD"), nucleo.carpeta().leer("datos/PLANC01.QZD"));
}

TEST_F(PruebaEmpaquetado, VXCRMLlevaSuXmlYLasTablasDeSuNumero) {
    nucleo.estado.gProducto = "VXCRM";
    nucleo.carpeta().escribir("datos/TOTAL07.XML", "<r/>");
    nucleo.carpeta().escribir("datos/CLIEN07.DAT", "clientes");
    nucleo.carpeta().escribir("datos/CLIEN08.DAT", "de otra");
    const auto archivo = empaquetar(nucleo.datos("total07.xml"), false, "07- Obras: A/B");
    EXPECT_EQ(core::SoloNombre(archivo), "07- OBRAS_ A_B");
    const auto archivos = mundo.desempaquetado(archivo);
    ASSERT_EQ(archivos.size(), 2U);
    EXPECT_EQ(archivos.at("CLIEN07.DAT"), "clientes");
}

TEST_F(PruebaEmpaquetado, LoQueNoSeEmpaquetaNoDejaArchivo) {
    EXPECT_NE(empaquetar(nucleo.datos("falta.QZT")).find("ERROR<179>"), std::string::npos);
    const auto ruta = mundo.crearEmpresa("Uno.QZT");
    nucleo.guion.enCadaTurno([&] { nucleo.estado.gDetener = true; });
    EXPECT_NE(empaquetar(ruta, false).find("(190)"), std::string::npos);
    EXPECT_TRUE(mundo.archivosDe("temporal").empty());
}

TEST_F(PruebaEmpaquetado, CopiasDeProcesosMuertosSeBorranLasVivasNo) {
    const auto raiz = nucleo.carpetas.CarpetaTemporal();
    nucleo.archivos.crearDirectorios(raiz + "/Copia-1-1");
    platform::escribirAtomico(nucleo.archivos, raiz + "/Copia-1-1/PLANC01.QZD", "vieja");
    platform::escribirAtomico(nucleo.archivos, raiz + "/Copia-1-1/en-uso", "");
    nucleo.archivos.crearDirectorios(raiz + "/Copia-2-1");
    const auto viva = nucleo.archivos.abrir(raiz + "/Copia-2-1/en-uso", platform::Apertura::crear,
                                            platform::Comparticion::exclusiva);
    const auto transferencia = nucleo.carpetas.carpetaTransferencia() + "/";
    for (const char* nombre : {"VIEJO.ZIP", "ACTIVO.ZIP", "ABIERTO.ZIP", "nota.txt"}) {
        platform::escribirAtomico(nucleo.archivos, transferencia + nombre, "x");
    }
    nucleo.ajustes.GrabarRegistro("Active", transferencia + "activo.zip", "NETBACKUP", "VXCRM");
    const auto abierto = nucleo.archivos.abrir(transferencia + "ABIERTO.ZIP", platform::Apertura::lectura,
                                               platform::Comparticion::compartida);

    mundo.flujos.temporales().LimpiarZipsTemporales(true);
    EXPECT_TRUE(platform::existe(nucleo.archivos, transferencia + "VIEJO.ZIP")) << "another instance runs";
    mundo.flujos.temporales().LimpiarZipsTemporales(false);
    EXPECT_FALSE(platform::existe(nucleo.archivos, raiz + "/Copia-1-1"));
    EXPECT_TRUE(platform::existe(nucleo.archivos, raiz + "/Copia-2-1/en-uso"));
    EXPECT_EQ(platform::listarMascara(nucleo.archivos, transferencia, "*.*"),
              (std::vector<std::string>{"ABIERTO.ZIP", "ACTIVO.ZIP", "nota.txt"}));
    mundo.flujos.temporales().VaciarTemporal();
    EXPECT_EQ(platform::listarMascara(nucleo.archivos, transferencia, "*.*"),
              (std::vector<std::string>{"ABIERTO.ZIP", "ACTIVO.ZIP"}));
}

}  // namespace
}  // namespace tarvoline::workflows
