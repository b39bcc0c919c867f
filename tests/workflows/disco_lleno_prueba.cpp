// Packing and restoring on a file system that fails at every call in turn: whatever fails, the data directory
// is as it was before, and nothing passes for done that is not.
#include <gtest/gtest.h>

#include <map>

#include "apoyo/archivos_defectuosos.h"
#include "core/carpetas.h"
#include "workflows/empaquetado.h"
#include "workflows/mundo_flujos.h"
#include "workflows/restauracion.h"

namespace tarvoline::workflows {
namespace {

using pruebas::Fallo;
using pruebas::Operacion;

class PruebaDisco : public ::testing::Test {
  protected:
    PruebaDisco() {
        mundo.flujos.empaquetado().hilos = 1;
        ruta = mundo.crearEmpresa("Uno.QZT");
        nucleo.carpeta().escribir("datos/Uno/factura.pdf", "imagen");
    }
    // The data directory without the work folder.
    std::map<std::string, std::string> datos() {
        auto archivos = mundo.archivosDe("datos");
        std::erase_if(archivos, [](const auto& archivo) { return archivo.first.starts_with("ZIP/"); });
        return archivos;
    }
    std::string empaquetar() {
        return mundo.flujos.empaquetado().ZipEmpresa(ruta, nucleo.carpetas.carpetaTransferencia(), true);
    }
    bool restaurarEncima(const std::string& archivo) {
        nucleo.guion.rellenar({}, 0);
        return mundo.flujos.restauracion().RestaurarEmpresa(archivo);
    }
    void estropear() {
        nucleo.carpeta().escribir("datos/PLANC01.QZD", "estropeada");
        nucleo.carpeta().escribir("datos/Uno/factura.pdf", "estropeada");
    }

    std::unique_ptr<platform::SistemaArchivos> real = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos disco{*real};
    pruebas::MundoFlujos mundo{pruebas::OpcionesNucleo{.archivos = &disco}};
    pruebas::NucleoPrueba& nucleo = mundo.nucleo;
    std::string ruta;
};

TEST_F(PruebaDisco, EmpaquetarConCadaEscrituraFallida) {
    const auto antes = datos();
    int fallidas = 0;
    for (const bool siempre : {false, true}) {
        for (int k = 1;; ++k) {
            nucleo.guion.olvidar();
            disco.olvidarCuentas();
            disco.fallar({.operacion = Operacion::escribir,
                          .vez = k,
                          .numero = platform::error_archivo::discoLleno,
                          .siempre = siempre});
            const auto resultado = empaquetar();
            const bool sinFallo = disco.cuenta(Operacion::escribir) < k;
            disco.sanar();
            ASSERT_EQ(datos(), antes) << k;
            if (platform::existe(nucleo.archivos, resultado)) {
                // A failure that passed by itself was tried again: the archive must be whole.
                const auto dentro = mundo.desempaquetado(resultado);
                ASSERT_EQ(dentro.at("PLANC01.QZD"), antes.at("PLANC01.QZD")) << k;
                ASSERT_EQ(dentro.at("Uno/factura.pdf"), "imagen") << k;
                ASSERT_TRUE(sinFallo || !siempre) << k;
            } else {
                ++fallidas;
                ASSERT_FALSE(resultado.empty()) << k;
            }
            if (sinFallo) {
                break;
            }
        }
    }
    EXPECT_GT(fallidas, 10);
}

TEST_F(PruebaDisco, RestaurarConCadaLlamadaFallida) {
    const auto archivo = empaquetar();
    const auto buena = datos();
    estropear();
    const auto antes = datos();
    for (const auto operacion :
         {Operacion::escribir, Operacion::renombrar, Operacion::sincronizar, Operacion::abrir,
          Operacion::crearDirectorios, Operacion::sincronizarDirectorio}) {
        int k = 1;
        for (bool hubo = true; hubo; ++k) {
            nucleo.guion.olvidar();
            disco.olvidarCuentas();
            disco.fallar({.operacion = operacion, .vez = k, .numero = platform::error_archivo::discoLleno});
            // A company that cannot be opened counts as in use: the person gives up.
            nucleo.guion.rellenar({}, 0);
            if (operacion == Operacion::abrir) {
                nucleo.guion.cancelar();
            }
            const bool hecha = mundo.flujos.restauracion().RestaurarEmpresa(archivo);
            hubo = disco.cuenta(operacion) >= k;
            disco.sanar();
            nucleo.guion.olvidarRespuestas();
            ASSERT_EQ(datos(), hecha ? buena : antes) << static_cast<int>(operacion) << ", call " << k;
            ASSERT_FALSE(!hecha && nucleo.guion.cajas().empty()) << "a failure without a word, call " << k;
            if (hecha) {
                estropear();
            }
        }
        EXPECT_GT(k, 2) << static_cast<int>(operacion);
    }
}

// Every rename fails from the k-th on, those that would take the others back included: the replaced files are
// named in the box and kept through the next restore.
TEST_F(PruebaDisco, LoQueNoPuedeVolverSeGuarda) {
    const auto archivo = empaquetar();
    const auto buena = datos();
    estropear();
    disco.fallar({.operacion = Operacion::renombrar, .vez = 8, .siempre = true});
    EXPECT_FALSE(restaurarEncima(archivo));
    disco.sanar();
    EXPECT_TRUE(nucleo.guion.mostro(nucleo.datos("ZIP/") + "anterior"));
    EXPECT_TRUE(nucleo.guion.mostro("<982>"));
    const auto guardadas = nucleo.archivos.listar(nucleo.datos("ZIP/anterior"));
    ASSERT_FALSE(guardadas.empty());

    nucleo.archivos.renombrar(nucleo.datos("ZIP/anterior/" + guardadas[0].nombre), nucleo.datos("Uno.QZT"));
    EXPECT_TRUE(platform::existe(nucleo.archivos, ruta));
    nucleo.carpeta().escribir("datos/ZIP/anterior/1-PLANC01.QZD", "la última copia");
    EXPECT_TRUE(restaurarEncima(archivo));
    EXPECT_EQ(datos().at("PLANC01.QZD"), buena.at("PLANC01.QZD"));
    EXPECT_EQ(nucleo.carpeta().leer("datos/ZIP/interrumpida-1/1-PLANC01.QZD"), "la última copia");
}

}  // namespace
}  // namespace tarvoline::workflows
