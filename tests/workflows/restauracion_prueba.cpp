#include "workflows/restauracion.h"

#include <gtest/gtest.h>

#include <map>

#include "core/carpetas.h"
#include "workflows/colocacion.h"
#include "workflows/empaquetado.h"
#include "workflows/mundo_flujos.h"
#include "zip/zip.h"

namespace tarvoline::workflows {
namespace {

class PruebaRestauracion : public ::testing::Test {
  protected:
    // A company with images and an attached folder, packed.
    std::string empaquetar(const std::string& nombre = "Panadería Núñez.QZT") {
        ruta = mundo.crearEmpresa(nombre);
        const auto base = core::SepararRuta(nombre).nombre;
        nucleo.carpeta().escribir("datos/" + base + "/2023/factura.pdf", "de 2023");
        nucleo.carpeta().escribir("datos/" + base + "/2024/factura.pdf", "de 2024");
        nucleo.carpeta().escribir("ajenas/Cartas/carta.txt", "adjunta");
        nucleo.estado.gAdjuntarCarpetas = {"", nucleo.ruta("ajenas/Cartas")};
        return mundo.flujos.empaquetado().ZipEmpresa(ruta, nucleo.ruta("salida"), true);
    }
    std::map<std::string, std::string> datos() { return mundo.archivosDe("datos"); }
    // An archive of the given entries.
    std::string archivoCon(const std::map<std::string, std::string>& entradas) {
        std::vector<std::string> lista;
        std::filesystem::remove_all(nucleo.ruta("montaje"));
        for (const auto& [nombre, texto] : entradas) {
            nucleo.carpeta().escribir("montaje/" + nombre, texto);
            lista.push_back(nombre.substr(0, nombre.find('/')));
        }
        zip::Zip zip(nucleo.archivos);
        zip.destino = nucleo.ruta("hecho.zip");
        zip.recursivo = true;
        std::filesystem::remove(zip.destino);
        EXPECT_EQ(zip.comprimir(nucleo.ruta("montaje"), lista), zip::codigo::bien);
        return zip.destino;
    }
    bool restaurar(const std::string& archivo) {
        return mundo.flujos.restauracion().RestaurarEmpresa(archivo);
    }

    pruebas::MundoFlujos mundo;
    pruebas::NucleoPrueba& nucleo = mundo.nucleo;
    std::string ruta;
};

TEST_F(PruebaRestauracion, JuntoALaOriginalTomaNombreYNumeroLibres) {
    const auto archivo = empaquetar();
    const auto antes = datos();
    nucleo.guion.contestarDatos([](core::EntradaDatos& preguntado) {
        EXPECT_EQ(preguntado.titulo, "<1243>");
        EXPECT_EQ(preguntado.campos.at(0).etiqueta, "<588> <617> 'Panadería Núñez.QZT'");
        EXPECT_EQ(preguntado.campos.at(1).etiqueta, "<165> Panadería Núñez~1.QZT");
        EXPECT_EQ(preguntado.opcion, 1);
        return true;
    });
    ASSERT_TRUE(restaurar(archivo));
    auto despues = datos();
    for (const auto& [nombre, texto] : antes) {
        EXPECT_EQ(despues.at(nombre), texto) << nombre;
    }
    EXPECT_EQ(despues.at("Panadería Núñez~1.QZT"), "02" + antes.at("Panadería Núñez.QZT").substr(2));
    EXPECT_EQ(despues.at("PLANC02.QZD"), antes.at("PLANC01.QZD"));
    // Images lose their subfolders; of two of one name both come back.
    EXPECT_EQ(despues.at("Panadería Núñez~1/factura.pdf"), "de 2023");
    EXPECT_EQ(despues.at("Panadería Núñez~1/factura~1.pdf"), "de 2024");
    EXPECT_EQ(despues.size(), antes.size() + 1 + 9 + 2) << "attached folders do not come back";
    EXPECT_TRUE(nucleo.guion.mostro("<981>"));
    EXPECT_TRUE(nucleo.guion.mostro("<1569> Panadería Núñez.QZT\r\n<1570> Panadería Núñez~1.QZT"));
    EXPECT_EQ(mundo.flujos.restauracion().rutaRestaurada(), nucleo.datos("Panadería Núñez~1.QZT"));
    EXPECT_FALSE(nucleo.carpeta().hay("datos/ZIP"));
}

TEST_F(PruebaRestauracion, EncimaDeLaExistenteCuandoNadieLaUsa) {
    const auto archivo = empaquetar("Uno.QZT");
    const auto buena = datos();
    nucleo.carpeta().escribir("datos/PLANC01.QZD", "estropeada");
    nucleo.carpeta().escribir("datos/Uno.QZT", "01 estropeada");
    const auto estropeada = datos();
    auto otro = nucleo.archivos.abrir(nucleo.datos("EXTRA01.QZD"), platform::Apertura::lectura,
                                      platform::Comparticion::compartida);
    nucleo.guion.rellenar({}, 0);
    nucleo.guion.aceptar("Uno.QZT\r\n<29>\r\n<1742>\r\n<1743>");
    nucleo.guion.cancelar();
    EXPECT_FALSE(restaurar(archivo));
    EXPECT_TRUE(nucleo.guion.mostro("<1227>"));
    EXPECT_TRUE(datos() == estropeada);

    otro.reset();
    nucleo.guion.rellenar({}, 0);
    EXPECT_TRUE(restaurar(archivo));
    EXPECT_EQ(datos().at("PLANC01.QZD"), buena.at("PLANC01.QZD"));
    EXPECT_EQ(datos().at("Uno.QZT"), buena.at("Uno.QZT")) << "with its number";
    EXPECT_FALSE(nucleo.guion.mostro("<1569>"));
}

TEST_F(PruebaRestauracion, LoQueNoEsUnaEmpresaEnteraSeRechazaYNoTocaNada) {
    const auto entero = nucleo.carpeta().leer("salida/" + core::SoloNombre(empaquetar("Uno.QZT")));
    const auto antes = datos();
    const auto rechazar = [&](const std::string& archivo) {
        nucleo.guion.olvidar();
        EXPECT_FALSE(restaurar(archivo));
        EXPECT_TRUE(nucleo.guion.mostro("<971>"));
        EXPECT_TRUE(datos() == antes) << archivo;
    };
    rechazar(archivoCon({{"PLANC03.QZD", "x"}}));
    EXPECT_TRUE(nucleo.guion.mostro("<371> " + nucleo.ruta("hecho.zip") + "\r\n<971>"));
    rechazar(archivoCon({{"A.QZT", "01"}, {"B.qzt", "02"}}));
    rechazar(archivoCon({{"dentro/A.QZT", "01"}}));
    rechazar(nucleo.carpeta().escribir("falso.zip", "no soy un zip"));
    for (const std::size_t milesimas : {0U, 300U, 900U, 999U}) {
        SCOPED_TRACE(milesimas);
        rechazar(nucleo.carpeta().escribir("corto.zip", entero.substr(0, entero.size() * milesimas / 1000)));
    }
    EXPECT_FALSE(restaurar(nucleo.ruta("no existe.zip")));
    EXPECT_FALSE(restaurar(""));
}

TEST_F(PruebaRestauracion, NombresSinSitioParaElNumeroNoPisanNada) {
    nucleo.carpeta().escribir("datos/notas", "mías");
    ASSERT_TRUE(restaurar(archivoCon({{"A.QZT", "09resto"}, {"PLANC09.QZD", "plan"}, {"notas", "ajenas"}})));
    EXPECT_EQ(datos(), (std::map<std::string, std::string>{
                           {"A.QZT", "01resto"}, {"PLANC01.QZD", "plan"}, {"notas", "mías"}}));
}

TEST_F(PruebaRestauracion, ConNoventaYNueveNumerosNoQuedaSitio) {
    const auto archivo = archivoCon({{"A.QZT", "01"}, {"PLANC01.QZD", "x"}});
    for (int i = 1; i <= 99; ++i) {
        nucleo.carpeta().escribir("datos/PLANC" + core::conCeros(i, 2) + ".QZD", "");
    }
    EXPECT_FALSE(restaurar(archivo));
    EXPECT_TRUE(nucleo.guion.mostro("<830>"));
    EXPECT_FALSE(nucleo.guion.punteroEspera);
}

TEST(Colocacion, NombresRepetidosSinCaja) {
    std::set<std::string> usados;
    EXPECT_EQ(nombreSinRepetir(usados, "Foto.jpg"), "Foto.jpg");
    EXPECT_EQ(nombreSinRepetir(usados, "FOTO.JPG"), "FOTO~1.JPG");
    EXPECT_EQ(nombreSinRepetir(usados, "foto~1.jpg"), "foto~1~1.jpg");
    EXPECT_EQ(nombreSinRepetir(usados, "sin"), "sin");
    EXPECT_EQ(nombreSinRepetir(usados, "Sin"), "Sin~1");
}

}  // namespace
}  // namespace tarvoline::workflows
