// Bad days: full disk, failing device, unreadable and changing inputs, stop.
#include <gtest/gtest.h>

#include <atomic>

#include "apoyo/archivos_defectuosos.h"
#include "datos_prueba.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

using pruebas::Operacion;
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
    pruebas::ArchivosDefectuosos malos{archivos};
    std::string viejo;
};

// Each call on a temporary file and each rename fails once, until a run needs fewer.
TEST_F(Fallos, ElArchivoDeAntesQuedaIntactoFalleDondeFalleLaEscritura) {
    struct Caso {
        Operacion operacion;
        const char* mascara;
    };
    for (const auto& [operacion, mascara] : {Caso{Operacion::abrir, "*.tmp*"},
                                             {Operacion::escribir, "*.tmp*"},
                                             {Operacion::sincronizar, "*.tmp*"},
                                             {Operacion::renombrar, "*"}}) {
        for (const int numero : {error_archivo::discoLleno, error_archivo::dispositivo}) {
            SCOPED_TRACE(static_cast<int>(operacion));
            const int esperado = numero == error_archivo::discoLleno ? codigo::discoLleno : codigo::escritura;
            Zip zip = preparar(malos);
            int vez = 1;
            for (;; ++vez) {
                malos.fallar({.operacion = operacion, .vez = vez, .mascara = mascara, .numero = numero});
                const int resultado = zip.comprimir("base", todo);
                malos.sanar();
                if (resultado == codigo::bien) break;
                ASSERT_EQ(resultado, esperado) << vez;
                esperarIntacto();
            }
            EXPECT_GT(vez, 1) << "nothing failed";
            EXPECT_EQ(contenido("B"), "nuevo");
            archivos.sembrar("z/copia.zip", viejo);
        }
    }
}

// The disk has so many bytes left, and the write that does not fit puts a part of them down.
TEST_F(Fallos, ElDiscoSeLlenaEnCualquierByte) {
    Zip zip = preparar(malos);
    zip.hilos = 1;
    int llenos = 0;
    for (std::uint64_t libres = 0;; libres += 9'973, ++llenos) {
        malos.limitarDisco(libres);
        const int resultado = zip.comprimir("base", todo);
        if (resultado == codigo::bien) break;
        ASSERT_EQ(resultado, codigo::discoLleno) << libres;
        esperarIntacto();
    }
    EXPECT_GE(llenos, 5);
    EXPECT_EQ(contenido("B"), "nuevo");
}

TEST_F(Fallos, LoIlegibleConservaLaEntradaDeAntesYLosDemasEntran) {
    struct Caso {
        std::vector<std::string> malos;
        int lectura;  // the first that fails: of a large one, when pieces of it are finished already
        std::string b;
        std::size_t entradas;
    };
    for (const auto& caso :
         {Caso{{"B"}, 1, "viejo", 3}, {{"GRANDE"}, 8, "nuevo", 2}, {todo, 1, "viejo", 1}}) {
        archivos.sembrar("z/copia.zip", viejo);
        malos.sanar();
        std::vector<std::string> rutas;
        for (const auto& nombre : caso.malos) {
            rutas.push_back("base/" + nombre);
            malos.fallar(
                {.operacion = Operacion::leer, .vez = caso.lectura, .mascara = nombre, .siempre = true});
        }
        SCOPED_TRACE(rutas.front());
        Zip zip = preparar(malos);
        std::uint64_t hecho = 0;
        std::uint64_t total = 0;
        zip.progreso = [&](std::uint64_t ahora, std::uint64_t de) {
            hecho = ahora;
            total = de;
            return true;
        };
        EXPECT_EQ(zip.comprimir("base", todo), codigo::errorArchivo);
        EXPECT_EQ(hecho, total) << "what was given up counts as done";
        EXPECT_EQ(zip.ilegibles(), rutas);
        EXPECT_EQ(contenido("B"), caso.b);
        std::vector<EntradaListada> lista;
        EXPECT_EQ(zip.listar(lista), codigo::bien);
        EXPECT_EQ(lista.size(), caso.entradas);
        EXPECT_EQ(archivos.listar("z").size(), 1U);
    }
    esperarIntacto();  // nothing at all was readable
}

// The hook changes the input between listing and reading, or between two pieces.
TEST_F(Fallos, UnaEntradaQueCambiaDeLongitudODesapareceNoEntra) {
    for (const int caso : {0, 1, 2}) {
        archivos.sembrar("z/copia.zip", viejo);
        archivos.sembrar("base/INQUIETO", std::string(100'000, 'x'));
        std::atomic<int> lecturas = 0;
        malos.alEmpezar([&](Operacion operacion, const std::string& ruta) {
            if (ruta.find("INQUIETO") == std::string::npos) return;
            if (caso == 0 && operacion == Operacion::abrir) archivos.borrar(ruta);
            if (caso > 0 && operacion == Operacion::leer && lecturas++ == 2) {
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
    const auto otro =
        archivos.abrir("base/B", platform::Apertura::escritura, platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear({0, 2}, platform::TipoBloqueo::exclusivo, {}));
    Zip zip = preparar(archivos);
    EXPECT_EQ(zip.comprimir("base", todo), codigo::errorArchivo);
    EXPECT_EQ(contenido("B"), "viejo");
    otro->desbloquear({0, 2});
    EXPECT_EQ(zip.comprimir("base", todo), codigo::bien);
}

struct FinDePrograma {};

// The stop, or what the progress throws, comes at each call in turn, the writing of the archive included.
TEST_F(Fallos, PararEnCualquierMomentoNoDejaNada) {
    archivos.sembrar("base/OTRO", std::string(3'000'000, '\0'));
    for (int k = 0;; ++k) {
        Zip zip = preparar(archivos);
        int llamadas = 0;
        zip.progreso = [&](std::uint64_t, std::uint64_t) {
            if (llamadas++ == k && k % 2 == 1) throw FinDePrograma{};
            return llamadas != k + 1;
        };
        int resultado = codigo::abortado;
        bool fin = false;
        try {
            resultado = zip.comprimir("base", {"GRANDE", "OTRO"});
        } catch (const FinDePrograma&) {
            fin = true;
        }
        if (llamadas <= k) {
            EXPECT_EQ(resultado, codigo::bien);
            EXPECT_GT(k, 1);
            break;
        }
        ASSERT_EQ(resultado, codigo::abortado) << k;
        ASSERT_EQ(fin, k % 2 == 1) << "it goes out as it was thrown";
        esperarIntacto();
        if (k > 2000) FAIL() << "never ends";
    }
}

TEST_F(Fallos, UnDestinoQueNoEsZipSeDeja) {
    viejo = "hoja de cálculo";
    archivos.sembrar("z/copia.zip", viejo);
    Zip zip = preparar(archivos);
    EXPECT_EQ(zip.comprimir("base", todo), codigo::noEsZip);
    esperarIntacto();
}

TEST_F(Fallos, DesempaquetarConElDiscoLlenoOUnaParadaQuitaElTrozo) {
    Zip zip = preparar(malos);
    ASSERT_EQ(zip.comprimir("base", todo), codigo::bien);
    malos.fallar({.operacion = Operacion::escribir, .mascara = "RUIDO", .numero = error_archivo::discoLleno});
    EXPECT_EQ(zip.descomprimir("fuera"), codigo::discoLleno);
    EXPECT_FALSE(archivos.estado("fuera/RUIDO"));
    zip.progreso = [](std::uint64_t, std::uint64_t) { return false; };
    EXPECT_EQ(zip.descomprimir("aparte"), codigo::abortado);
    EXPECT_TRUE(archivos.listar("aparte").empty());
}

}  // namespace
}  // namespace tarvoline::zip
