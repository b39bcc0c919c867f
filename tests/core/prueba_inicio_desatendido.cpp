// The start that nobody watches: its exit codes and what its status file says.
#include "core/texto.h"
#include "escena_inicio.h"

namespace tarvoline::pruebas {
namespace {

using core::salida::bien;
using core::salida::empresaFallida;
using core::salida::noArranca;
using core::salida::otraInstancia;

TEST_F(PruebaInicio, DesatendidoConOtraInstanciaAcabaEnSilencio) {
    marca.otra = true;
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona("1"), otraInstancia);
    EXPECT_TRUE(caminos.llamadas.empty());
    EXPECT_TRUE(nucleo.registro.lineas.empty());
    EXPECT_FALSE(hayEstado()) << "the running instance owns the status file";
}

TEST_F(PruebaInicio, LaReanudacionVaPrimeroYSuFalloNoParaLosPendientes) {
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_EQ(caminos.llamadas, (std::vector<std::string>{"limpiar VELDORIX", "continuar desatendido",
                                                          "pendientes desatendido"}));
    EXPECT_EQ(estadoGrabado()["reanudacion"]["resultado"], "enviada");
    EXPECT_EQ(estadoGrabado()["reanudacion"]["ruta"], "/t/EMPRESA.ZIP");
    const std::function<std::string()> fallos[] = {
        [] { return "ERROR: clave"; }, [] { return "NO"; },
        [this] {
            nucleo.estado.gInterrumpido = true;
            return "";
        },
        []() -> std::string { throw std::runtime_error("service unreachable"); }};
    for (const auto& fallo : fallos) {
        nucleo.estado.gInterrumpido = false;
        caminos.llamadas.clear();
        caminos.alContinuar = fallo;
        EXPECT_EQ(arrancarSinPersona("1"), empresaFallida);
        EXPECT_EQ(caminos.llamadas.back(), "pendientes desatendido");
        EXPECT_EQ(estadoGrabado()["reanudacion"]["resultado"], "fallida");
    }
}

TEST_F(PruebaInicio, ElResultadoDeLosPendientesDaElCodigoYElEstado) {
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_EQ(estadoGrabado()["resultado"], "bien");

    caminos.alSubir = [this] {
        nucleo.estado.resumen.anotar({3, "/d/UNO.QZT", false, "ERROR: sin línea"});
        return false;
    };
    EXPECT_EQ(arrancarSinPersona("1"), empresaFallida);
    EXPECT_EQ(estadoGrabado()["codigo"], 3);
    EXPECT_EQ(estadoGrabado()["empresas"][0]["texto"], "ERROR: sin línea");

    caminos.alSubir = []() -> bool { throw platform::ErrorAjustes("settings not writable"); };
    EXPECT_EQ(arrancarSinPersona("1"), empresaFallida);
    EXPECT_EQ(estadoGrabado()["motivo"], "settings not writable");

    caminos.alSubir = []() -> bool { throw core::FinDePrograma{core::salida::senal + 15}; };
    EXPECT_EQ(arrancarSinPersona("1"), 143);
    EXPECT_EQ(estadoGrabado()["resultado"], "interrumpida");
}

TEST_F(PruebaInicio, ElFinDelProgramaPasaPorTodoYDaSuCodigo) {
    interrumpir("VELDORIX");
    caminos.alContinuar = []() -> std::string { throw core::FinDePrograma{7}; };
    EXPECT_EQ(arrancarSinPersona("1"), 7);
    EXPECT_NE(caminos.llamadas.back(), "pendientes desatendido");
    EXPECT_EQ(activa("VELDORIX"), "/t/EMPRESA.ZIP");

    caminos.alMostrar = [] { throw core::FinDePrograma{0}; };
    EXPECT_EQ(arrancar("2"), bien);
}

TEST_F(PruebaInicio, SinArchivoDeIdiomaNoArrancaYDiceLaRuta) {
    nucleo.ajustes.GrabarRegistro("language", "frances.qzi");
    EXPECT_EQ(arrancarSinPersona("1"), noArranca);
    EXPECT_TRUE(caminos.llamadas.empty());
    EXPECT_TRUE(nucleo.registro.dice("frances.qzi"));
    EXPECT_EQ(estadoGrabado()["resultado"], "no arranca");
    EXPECT_NE(estadoGrabado()["motivo"].get<std::string>().find("frances.qzi"), std::string::npos);

    EXPECT_EQ(arrancar("2"), noArranca);
    EXPECT_TRUE(nucleo.guion.mostro("share/tarvoline/frances.qzi"));
    EXPECT_EQ(nucleo.guion.ultimo().icono, core::Icono::parada);
}

TEST_F(PruebaInicio, ConAjustesIlegiblesNoArrancaNiEscribe) {
    nucleo.memoria.fallarAlLeer = true;
    EXPECT_EQ(arrancarSinPersona("1"), noArranca);
    EXPECT_TRUE(nucleo.registro.dice("error Tarvoline: "));
    EXPECT_EQ(nucleo.memoria.grabaciones, 0);
    EXPECT_TRUE(caminos.llamadas.empty());
}

TEST_F(PruebaInicio, LoQueSoloEstorbaQuedaEnElRegistro) {
    nucleo.memoria.omitidas = {"line 3: EMP1 sin igual"};
    nucleo.carpeta().escribir("estado", "a file where the folder should be");
    caminos.alLimpiar = [] { throw platform::ErrorArchivo(70, "/t/a.zip", "held by another process"); };
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    for (const char* dicho : {"line 3: EMP1 sin igual", "held by another process", "status file"}) {
        EXPECT_TRUE(nucleo.registro.dice(dicho)) << dicho;
    }
}

TEST_F(PruebaInicio, ConUnIdiomaCortoElDesatendidoAvisaYReconoceLosFallos) {
    nucleo.carpeta().escribir("programa/share/tarvoline/español.qzi", "@\r\nuno");
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_TRUE(nucleo.registro.dice("Archivo de Idioma"));
    EXPECT_TRUE(core::esError(nucleo.estado.gTextos(core::textoFallo)));
}

TEST_F(PruebaInicio, SinNadieQueConteste_LaVentanaNoArrancaYLaSubidaQueda) {
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona(""), noArranca);
    EXPECT_EQ(caminos.llamadas, std::vector<std::string>{"limpiar VELDORIX"});
    EXPECT_EQ(activa("VELDORIX"), "/t/EMPRESA.ZIP");
    EXPECT_TRUE(nucleo.registro.dice("error Tarvoline: there is no window"));
}

}  // namespace
}  // namespace tarvoline::pruebas
