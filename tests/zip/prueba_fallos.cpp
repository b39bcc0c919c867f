// Bad days: full disk, failing device, unreadable and changing inputs, stop.
#include <gtest/gtest.h>

#include <atomic>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/archivos_memoria.h"
#include "apoyo/carpeta_prueba.h"
#include "archivos_tropiezo.h"
#include "datos_prueba.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

using platform::ErrorArchivo;
using pruebas::ArchivosTropiezo;
using pruebas::Suceso;
namespace error_archivo = platform::error_archivo;

class Fallos : public testing::Test {
  protected:
    Fallos() {
        std::mt19937 azar(11);
        archivos.sembrar("base/GRANDE", pruebas::registros(azar, 300'000));
        archivos.sembrar("base/RUIDO", pruebas::ruido(azar, 50'000));
        archivos.sembrar("base/B", "nuevo");
        archivos.sembrar("antes/B", "viejo");
        archivos.sembrarDirectorio("z");
        Zip zip = preparar(archivos);
        EXPECT_EQ(zip.comprimir("antes", {"B"}), codigo::bien);
        viejo = platform::leerTodo(archivos, "z/copia.zip");
    }
    static Zip preparar(platform::SistemaArchivos& sistema) {
        Zip zip(sistema);
        zip.destino = "z/copia.zip";
        zip.presupuesto = 65536;
        zip.hilos = 2;
        return zip;
    }
    void esperarIntacto() {
        EXPECT_EQ(platform::leerTodo(archivos, "z/copia.zip"), viejo);
        EXPECT_EQ(archivos.listar("z").size(), 1U) << "a temporary file was left";
    }
    std::string contenido(const std::string& nombre) {
        Zip zip = preparar(archivos);
        EXPECT_EQ(zip.descomprimir("fuera"), codigo::bien);
        return archivos.estado("fuera/" + nombre) ? platform::leerTodo(archivos, "fuera/" + nombre) : "";
    }

    const std::vector<std::string> todo{"GRANDE", "RUIDO", "B"};
    pruebas::ArchivosMemoria archivos;
    std::string viejo;
};

// Every write, sync, open of a new file and rename fails once, until a run needs fewer.
TEST_F(Fallos, ElArchivoDeAntesQuedaIntactoFalleDondeFalleLaEscritura) {
    archivos.sembrarDirectorio("z");
    for (const int numero : {error_archivo::discoLleno, error_archivo::dispositivo}) {
        int k = 0;
        int resultado = -1;
        while (resultado != codigo::bien) {
            std::atomic<int> cuenta = 0;
            ArchivosTropiezo malos(archivos, [&](Suceso suceso, const std::string& ruta) {
                if (suceso == Suceso::leer || ruta.find(".tmp") == std::string::npos) return;
                if (cuenta++ == k) throw ErrorArchivo(numero, ruta, "provoked");
            });
            Zip zip = preparar(malos);
            resultado = zip.comprimir("base", todo);
            if (resultado == codigo::bien) break;
            ASSERT_EQ(resultado, numero == error_archivo::discoLleno ? codigo::discoLleno : codigo::escritura)
                << k;
            esperarIntacto();
            ++k;
        }
        EXPECT_GE(k, 5);
        EXPECT_EQ(contenido("B"), "nuevo");
        archivos.sembrar("z/copia.zip", viejo);
    }
}

// The disk has so many bytes left, and the write that does not fit puts a part of them down.
TEST_F(Fallos, ElDiscoSeLlenaEnCualquierByte) {
    int llenos = 0;
    for (std::uint64_t libres = 0;; libres += 9'973) {
        pruebas::ArchivosDefectuosos malos(archivos);
        malos.limitarDisco(libres);
        Zip zip = preparar(malos);
        zip.hilos = 1;
        const int resultado = zip.comprimir("base", todo);
        if (resultado == codigo::bien) break;
        ASSERT_EQ(resultado, codigo::discoLleno) << libres;
        esperarIntacto();
        ++llenos;
    }
    EXPECT_GE(llenos, 5);
    EXPECT_EQ(contenido("B"), "nuevo");
}

TEST_F(Fallos, UnArchivoNuevoQueFallaNoAparece) {
    archivos.borrar("z/copia.zip");
    ArchivosTropiezo malos(archivos, [](Suceso suceso, const std::string& ruta) {
        if (suceso == Suceso::renombrar) throw ErrorArchivo(error_archivo::dispositivo, ruta, "provoked");
    });
    Zip zip = preparar(malos);
    EXPECT_EQ(zip.comprimir("base", todo), codigo::escritura);
    EXPECT_TRUE(archivos.listar("z").empty());
}

TEST_F(Fallos, LoIlegibleConservaLaEntradaDeAntesYLosDemasEntran) {
    for (const auto& malo : {"base/B", "base/GRANDE"}) {
        archivos.sembrar("z/copia.zip", viejo);
        std::atomic<int> lecturas = 0;
        ArchivosTropiezo malos(archivos, [&](Suceso suceso, const std::string& ruta) {
            // The large one fails half way, when pieces of it are finished already.
            const int desde = ruta == "base/GRANDE" ? 7 : 0;
            if (suceso == Suceso::leer && ruta == malo && lecturas++ >= desde) {
                throw ErrorArchivo(error_archivo::dispositivo, ruta, "provoked");
            }
        });
        Zip zip = preparar(malos);
        std::uint64_t hecho = 0;
        std::uint64_t total = 1;
        zip.progreso = [&](std::uint64_t ahora, std::uint64_t de) {
            hecho = ahora;
            total = de;
            return true;
        };
        EXPECT_EQ(zip.comprimir("base", todo), codigo::errorArchivo);
        EXPECT_EQ(hecho, total) << "what was given up counts as done";
        EXPECT_EQ(zip.ilegibles(), std::vector<std::string>{malo});
        EXPECT_EQ(contenido("B"), std::string(malo) == "base/B" ? "viejo" : "nuevo");
        EXPECT_EQ(contenido("RUIDO"), platform::leerTodo(archivos, "base/RUIDO"));
        EXPECT_EQ(archivos.listar("z").size(), 1U);
    }
}

TEST_F(Fallos, SiNadaSePuedeLeerElArchivoNoCambia) {
    ArchivosTropiezo malos(archivos, [](Suceso suceso, const std::string& ruta) {
        if (suceso == Suceso::abrir && ruta.starts_with("base/")) {
            throw ErrorArchivo(error_archivo::permisoDenegado, ruta, "provoked");
        }
    });
    Zip zip = preparar(malos);
    EXPECT_EQ(zip.comprimir("base", todo), codigo::errorArchivo);
    EXPECT_EQ(zip.ilegibles().size(), todo.size());
    esperarIntacto();
}

// The hook changes the input between listing and reading, or between two pieces.
TEST_F(Fallos, UnaEntradaQueCambiaDeLongitudODesapareceNoEntra) {
    for (const int caso : {0, 1, 2}) {
        archivos.sembrar("z/copia.zip", viejo);
        archivos.sembrar("base/INQUIETO", std::string(100'000, 'x'));
        std::atomic<int> lecturas = 0;
        ArchivosTropiezo malos(archivos, [&](Suceso suceso, const std::string& ruta) {
            if (ruta != "base/INQUIETO") return;
            if (caso == 0 && suceso == Suceso::abrir) archivos.borrar(ruta);
            if (caso > 0 && suceso == Suceso::leer && lecturas++ == 2) {
                archivos.abrir(ruta, platform::Apertura::escritura)->truncar(caso == 1 ? 100'001 : 10);
            }
        });
        Zip zip = preparar(malos);
        EXPECT_EQ(zip.comprimir("base", {"INQUIETO", "B"}), codigo::errorArchivo) << caso;
        std::vector<EntradaListada> lista;
        EXPECT_EQ(zip.listar(lista), codigo::bien);
        ASSERT_EQ(lista.size(), 1U) << caso;
        EXPECT_EQ(contenido("B"), "nuevo");
    }
}

TEST_F(Fallos, LoQueOtroTieneBloqueadoNoSeLee) {
    const pruebas::CarpetaPrueba carpeta;
    carpeta.escribir("T07.QZD", "tabla");
    carpeta.escribir("U07.QZD", "otra");
    const auto reales = platform::crearSistemaArchivos();
    const auto otro = reales->abrir(carpeta.ruta("T07.QZD"), platform::Apertura::escritura,
                                    platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear({0, 2}, platform::TipoBloqueo::exclusivo));
    Zip zip(*reales);
    zip.destino = carpeta.ruta("copia.zip");
    EXPECT_EQ(zip.comprimir(carpeta.ruta(), {"T07.QZD", "U07.QZD"}), codigo::errorArchivo);
    otro->desbloquear({0, 2});
    EXPECT_EQ(zip.comprimir(carpeta.ruta(), {"T07.QZD", "U07.QZD"}), codigo::bien);
}

// The stop is answered at each call in turn, the writing of the archive included.
TEST_F(Fallos, PararEnCualquierMomentoNoDejaNada) {
    archivos.sembrar("base/OTRO", std::string(3'000'000, '\0'));
    archivos.sembrar("antes/B", "viejo");
    for (int k = 0;; ++k) {
        Zip zip = preparar(archivos);
        int llamadas = 0;
        zip.progreso = [&](std::uint64_t, std::uint64_t) { return llamadas++ != k; };
        const int resultado = zip.comprimir("base", {"GRANDE", "OTRO"});
        if (llamadas <= k) {
            EXPECT_EQ(resultado, codigo::bien);
            EXPECT_GT(k, 0);
            break;
        }
        ASSERT_EQ(resultado, codigo::abortado) << k;
        esperarIntacto();
        if (k > 2000) FAIL() << "never ends";
    }
}

struct FinDePrograma {};

TEST_F(Fallos, LoQueElProgresoLanzaSaleTalCual) {
    for (const int k : {0, 1}) {
        Zip zip = preparar(archivos);
        zip.progreso = [&](std::uint64_t hecho, std::uint64_t total) -> bool {
            if (k == 0 || hecho == total) throw FinDePrograma{};
            return true;
        };
        EXPECT_THROW(zip.comprimir("base", todo), FinDePrograma);
        esperarIntacto();
    }
}

TEST_F(Fallos, UnDestinoQueNoEsZipSeDeja) {
    archivos.sembrar("z/copia.zip", "hoja de cálculo");
    Zip zip = preparar(archivos);
    EXPECT_EQ(zip.comprimir("base", todo), codigo::noEsZip);
    EXPECT_EQ(platform::leerTodo(archivos, "z/copia.zip"), "hoja de cálculo");
}

TEST_F(Fallos, DesempaquetarConElDiscoLlenoOUnaParadaQuitaElTrozo) {
    Zip completo = preparar(archivos);
    ASSERT_EQ(completo.comprimir("base", todo), codigo::bien);
    ArchivosTropiezo malos(archivos, [](Suceso suceso, const std::string& ruta) {
        if (suceso == Suceso::escribir && ruta == "fuera/RUIDO") {
            throw ErrorArchivo(error_archivo::discoLleno, ruta, "provoked");
        }
    });
    Zip zip = preparar(malos);
    EXPECT_EQ(zip.descomprimir("fuera"), codigo::discoLleno);
    EXPECT_FALSE(archivos.estado("fuera/RUIDO"));
    completo.progreso = [](std::uint64_t, std::uint64_t) { return false; };
    EXPECT_EQ(completo.descomprimir("aparte"), codigo::abortado);
    EXPECT_TRUE(archivos.listar("aparte").empty());
}

}  // namespace
}  // namespace tarvoline::zip
