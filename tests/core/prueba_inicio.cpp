// The start: what each command line chooses, the order of its steps, and how each road ends.
#include "core/inicio.h"

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>

#include "apoyo/nucleo_prueba.h"
#include "core/despliegue.h"
#include "core/escritorio_desatendido.h"
#include "core/texto.h"

namespace tarvoline::pruebas {
namespace {

using core::salida::bien;
using core::salida::empresaFallida;
using core::salida::noArranca;
using core::salida::otraInstancia;

// Writes down each call from the start with what the state said at that moment.
class CaminosAnotados : public core::Caminos {
  public:
    explicit CaminosAnotados(core::Estado& estado) : estado_(estado) {}

    std::vector<std::string> llamadas;
    std::function<std::string()> alContinuar = [] { return ""; };
    std::function<bool()> alSubir = [] { return true; };
    std::function<void()> alCrear = [] {};
    std::function<void()> alMostrar = [] {};
    std::function<void()> alLimpiar = [] {};

    std::string ContinuarSubida() override {
        anotar(estado_.gDesatendido ? "continuar desatendido" : "continuar");
        return alContinuar();
    }
    bool SubirPendientesBatch(bool mostrar) override {
        anotar(std::string("pendientes") + (mostrar ? " mostrar" : "") +
               (estado_.gDesatendido ? " desatendido" : ""));
        return alSubir();
    }
    void CargarConfiguracionEmpresa(std::string_view ruta) override {
        anotar("configuracion(" + std::string(ruta) + ")" + (estado_.gInicio ? " inicio" : ""));
        estado_.gUsuario = "maria";
    }
    void PrepararGrid() override { anotar("grid"); }
    void QuitarAccesoInicio() override { anotar("quitar acceso"); }
    void CrearVentana() override {
        anotar(std::string("crear") + (estado_.gEnReposo ? " en reposo" : ""));
        alCrear();
    }
    void MostrarVentana() override {
        anotar(std::string("mostrar") + (estado_.gEnReposo ? " en reposo" : ""));
        alMostrar();
    }
    void Reiniciar(std::string_view ordenes) override { anotar("reiniciar " + std::string(ordenes)); }
    void LimpiarZipsTemporales() override {
        anotar("limpiar " + estado_.gProducto);
        alLimpiar();
    }

  private:
    void anotar(std::string que) { llamadas.push_back(std::move(que)); }

    core::Estado& estado_;
};

class MarcaFingida : public platform::MarcaInstancia {
  public:
    bool otra = false;
    bool hayOtra() override { return otra; }
    bool soyLaUnica() override { return !otra; }
};

class PruebaInicio : public testing::Test {
  protected:
    PruebaInicio() {
        std::string archivo = "@";
        for (int i = 1; i <= core::numeroTextoMayor; ++i) {
            archivo += "\r\n";
            archivo += i == core::textoFallo || i == core::textoFalloCopia ? "ERROR: " : "";
            archivo += "texto " + std::to_string(i);
        }
        nucleo.carpeta().escribir("programa/share/tarvoline/español.qzi", archivo);
        nucleo.estado = core::Estado();
    }

    int arrancar(std::string_view ordenes) { return arrancarCon(nucleo.entorno, ordenes); }
    int arrancarCon(core::Entorno& entorno, std::string_view ordenes) {
        core::Inicio inicio(entorno, caminos, marca, nucleo.ruta("estado/estado.json"));
        return inicio.Main(ordenes);
    }
    // The same core behind the unattended desktop.
    int arrancarSinPersona(std::string_view ordenes) {
        core::EscritorioDesatendido escritorio(nucleo.registro);
        core::Entorno entorno{nucleo.estado,   nucleo.vista,    escritorio,   nucleo.ajustes, nucleo.almacen,
                              nucleo.carpetas, nucleo.archivos, nucleo.reloj, nucleo.registro};
        return arrancarCon(entorno, ordenes);
    }
    void interrumpir(std::string_view producto) {
        nucleo.ajustes.GrabarRegistro("Active", "/t/EMPRESA.ZIP", "NETBACKUP", producto);
    }
    std::string activa(std::string_view producto) {
        return nucleo.ajustes.leer("Active", "NETBACKUP", "", producto);
    }
    bool hayEstado() { return nucleo.carpeta().hay("estado/estado.json"); }
    nlohmann::json estadoGrabado() {
        return nlohmann::json::parse(nucleo.carpeta().leer("estado/estado.json"));
    }

    NucleoPrueba nucleo;
    CaminosAnotados caminos{nucleo.estado};
    MarcaFingida marca;
};

TEST_F(PruebaInicio, LaLineaDeOrdenesDecideProductoYCamino) {
    struct {
        std::string_view ordenes;
        std::string_view producto;
        bool interactivo;
    } const casos[] = {{"", "VELDORIX", true},      {"2", "VELDORIX", true},    {"22", "VXCRM", true},
                       {"Y", "VXCRM", false},       {"y", "VXCRM", false},      {"22 ", "VXCRM", false},
                       {" 22", "VXCRM", false},     {"2 2", "VXCRM", false},    {"22abc", "VXCRM", false},
                       {"22.0", "VXCRM", false},    {"2.2e1", "VXCRM", false},  {"22.5", "VELDORIX", false},
                       {"1", "VELDORIX", false},    {"2 ", "VELDORIX", false},  {" ", "VELDORIX", false},
                       {"YY", "VELDORIX", false},   {"222", "VELDORIX", false}, {"-22", "VELDORIX", false},
                       {"abc22", "VELDORIX", false}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(testing::Message() << '"' << caso.ordenes << '"');
        caminos.llamadas.clear();
        EXPECT_EQ(arrancar(caso.ordenes), bien);
        EXPECT_EQ(nucleo.estado.gProducto, caso.producto);
        ASSERT_FALSE(caminos.llamadas.empty());
        EXPECT_EQ(caminos.llamadas.back(), caso.interactivo ? "mostrar" : "pendientes desatendido");
        nucleo.estado.gDesatendido = false;
    }
}

TEST_F(PruebaInicio, PreparaElEstadoAntesDeTomarCamino) {
    nucleo.ajustes.GrabarRegistro("Visualiza datos en", "3", "BACKUP");
    nucleo.ajustes.GrabarRegistro("DATOS_DIR", "/datos/crm", "", "VXCRM");
    nucleo.ajustes.GrabarRegistro("IP", "10.0.0.9", "NETBACKUP", "VXCRM");
    nucleo.estado.gRefrescando = true;
    nucleo.estado.gModoGauge = 0;
    ASSERT_EQ(arrancar("Y"), bien);
    const auto& estado = nucleo.estado;
    EXPECT_EQ(estado.gDatosDir.substr(0, 10), "/datos/crm");
    EXPECT_EQ(estado.gDatosDir.size(), 11U) << "a final separator is added";
    EXPECT_EQ(estado.gUrlServicio, "http://10.0.0.9/qzback/service.asmx?wsdl");
    EXPECT_EQ(estado.gCarpeta, "DATOS");
    EXPECT_EQ(estado.gUnidadTamano, 3);
    EXPECT_EQ(estado.gModoGauge, 999);
    EXPECT_FALSE(estado.gRefrescando);
    EXPECT_TRUE(estado.gInicio);
    EXPECT_TRUE(estado.gEnReposo);
    EXPECT_EQ(estado.gTextos(0), "Veldorix");
    EXPECT_EQ(estado.gTextos(214), "texto 214");
    EXPECT_EQ(estado.gTextosHistorico[core::haBorradoArchivo], " ha borrado el archivo ");
    EXPECT_EQ(estado.gDirectorio, nucleo.carpetas.DirectorioPrograma());
    EXPECT_EQ(caminos.llamadas.front(), "limpiar VXCRM");
}

TEST_F(PruebaInicio, LaDireccionDelServicioSigueALosAjustes) {
    const auto publica =
        "https://" + std::string(core::despliegue::hostServicioPublico) + "/qzback/service.asmx?wsdl";
    struct {
        std::string_view ip, ipLocal;
        std::string url;
    } const casos[] = {{"", "", publica},
                       {"", "127.0.0.1:80", publica},
                       {"copias.oficina", "otro", "http://copias.oficina/qzback/service.asmx?wsdl"},
                       {"localhost", "127.0.0.1:8080", "http://127.0.0.1:8080/qzbackup/service.asmx?wsdl"},
                       {"LOCALHOST", "127.0.0.1:8080", "http://127.0.0.1:8080/qzbackup/service.asmx?wsdl"},
                       {"http-localhost-1", "h", "http://h/qzbackup/service.asmx?wsdl"}};
    for (const auto& caso : casos) {
        nucleo.ajustes.GrabarRegistro("IP", caso.ip, "NETBACKUP", "VELDORIX");
        nucleo.ajustes.GrabarRegistro("IP", "otro.producto", "NETBACKUP", "VXCRM");
        nucleo.ajustes.GrabarRegistro("IP", caso.ipLocal, "qzback");
        EXPECT_EQ(core::elegirUrlServicio(nucleo.entorno), caso.url) << caso.ip;
    }
}

TEST_F(PruebaInicio, ConOtraInstanciaNoSeBorraNadaEnLaCarpetaDeTransferencia) {
    marca.otra = true;
    EXPECT_EQ(arrancar("2"), bien);
    EXPECT_EQ(caminos.llamadas.front(), "crear en reposo");
}

TEST_F(PruebaInicio, UnFalloAlLimpiarNoImpideElArranque) {
    caminos.alLimpiar = [] { throw platform::ErrorArchivo(70, "/t/a.zip", "held by another process"); };
    EXPECT_EQ(arrancar("2"), bien);
    EXPECT_TRUE(nucleo.registro.dice("held by another process"));
}

TEST_F(PruebaInicio, ElCaminoDeLaVentanaVaPasoAPaso) {
    std::vector<core::Parte> cambios;
    nucleo.vista.alCambiar = [&](core::Parte parte) { cambios.push_back(parte); };
    EXPECT_EQ(arrancar("22"), bien);
    EXPECT_EQ(caminos.llamadas, (std::vector<std::string>{"limpiar VXCRM", "crear en reposo",
                                                          "configuracion() inicio", "grid", "mostrar"}));
    EXPECT_EQ(nucleo.vista.titulo, "Gestor de Copias. Usuario: maria");
    EXPECT_EQ(nucleo.vista.Option1, core::Opcion::vxcrm);
    EXPECT_EQ(cambios, (std::vector<core::Parte>{core::Parte::titulo, core::Parte::opcion}));
    EXPECT_FALSE(hayEstado()) << "only unattended runs report";

    EXPECT_EQ(arrancar("2"), bien);
    EXPECT_EQ(nucleo.vista.Option1, core::Opcion::veldorix);
}

TEST_F(PruebaInicio, UnaVentanaQueFallaAcabaSinMensaje) {
    caminos.alMostrar = [] { throw std::runtime_error("no display"); };
    EXPECT_EQ(arrancar("2"), noArranca);
    EXPECT_TRUE(nucleo.guion.sucesos.empty());
    EXPECT_TRUE(nucleo.registro.dice("no display"));
}

TEST_F(PruebaInicio, SinNadieQueConteste_LaVentanaNoArrancaYLaSubidaQueda) {
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona(""), noArranca);
    EXPECT_EQ(caminos.llamadas, std::vector<std::string>{"limpiar VELDORIX"});
    EXPECT_EQ(activa("VELDORIX"), "/t/EMPRESA.ZIP");
    EXPECT_TRUE(nucleo.registro.dice("error Tarvoline: there is no window"));
}

TEST_F(PruebaInicio, PreguntaPorLaSubidaInterrumpidaYContinua) {
    interrumpir("VELDORIX");
    caminos.alContinuar = [] { return "texto del servicio"; };
    nucleo.guion.contestarSi("texto 2257\ntexto 980");
    EXPECT_EQ(arrancar(""), bien);
    ASSERT_EQ(nucleo.guion.sucesos.size(), 2U);
    EXPECT_EQ(nucleo.guion.sucesos[0].icono, core::Icono::pregunta);
    EXPECT_FALSE(nucleo.guion.sucesos[0].siPorDefecto);
    EXPECT_EQ(nucleo.guion.sucesos[1].texto, "texto del servicio");
    EXPECT_EQ(nucleo.guion.sucesos[1].icono, core::Icono::ninguno);
    EXPECT_EQ(caminos.llamadas[1], "continuar");
    EXPECT_EQ(caminos.llamadas.back(), "mostrar");
}

TEST_F(PruebaInicio, ContestarNoOlvidaLaSubidaYAcaba) {
    interrumpir("VELDORIX");
    nucleo.guion.contestarNo();
    EXPECT_EQ(arrancar(""), bien);
    EXPECT_EQ(caminos.llamadas, (std::vector<std::string>{"limpiar VELDORIX", "quitar acceso"}));
    std::vector<std::string> borradas;
    for (const auto& ajuste : nucleo.memoria.listar()) {
        if (core::igualSinCaja(ajuste.donde.seccion, "NETBACKUP")) {
            EXPECT_EQ(ajuste.valor, " ") << ajuste.donde.clave;
            borradas.push_back(ajuste.donde.clave);
        }
    }
    EXPECT_EQ(borradas, (std::vector<std::string>{"Active", "Offset", "Carpeta", "User", "Password",
                                                  "CarpetaDestino", "Cuenta"}));

    caminos.llamadas.clear();
    EXPECT_EQ(arrancar(""), bien) << "the next start asks nothing";
    EXPECT_EQ(caminos.llamadas.back(), "mostrar");
}

TEST_F(PruebaInicio, UnaSubidaQueSeInterrumpeOtraVezReiniciaComoVentana) {
    interrumpir("VELDORIX");
    caminos.alContinuar = [this] {
        nucleo.estado.gInterrumpido = true;
        return "ERROR: línea cortada";
    };
    nucleo.guion.contestarSi();
    EXPECT_EQ(arrancar(""), bien);
    EXPECT_EQ(caminos.llamadas, (std::vector<std::string>{"limpiar VELDORIX", "continuar", "reiniciar 2"}));
    EXPECT_EQ(nucleo.guion.sucesos.size(), 1U) << "its text is not shown";
    EXPECT_EQ(activa("VELDORIX"), "/t/EMPRESA.ZIP");
}

TEST_F(PruebaInicio, ConOrdenDeVentanaNoPreguntaYDejaLaSubida) {
    interrumpir("VELDORIX");
    interrumpir("VXCRM");
    for (const auto* ordenes : {"2", "22"}) {
        EXPECT_EQ(arrancar(ordenes), bien);
        EXPECT_EQ(caminos.llamadas.back(), "mostrar");
    }
    EXPECT_TRUE(nucleo.guion.sucesos.empty());
    EXPECT_EQ(activa("VELDORIX"), "/t/EMPRESA.ZIP");
    EXPECT_EQ(activa("VXCRM"), "/t/EMPRESA.ZIP");
}

TEST_F(PruebaInicio, LaSubidaInterrumpidaDelCrmSeEncuentraSinOrdenes) {
    interrumpir("VXCRM");
    nucleo.ajustes.GrabarRegistro("IP", "servicio.crm", "NETBACKUP", "VXCRM");
    nucleo.guion.contestarSi();
    EXPECT_EQ(arrancar(""), bien);
    EXPECT_EQ(nucleo.estado.gProducto, "VXCRM");
    EXPECT_EQ(nucleo.estado.gUrlServicio, "http://servicio.crm/qzback/service.asmx?wsdl")
        << "it goes on where it began";
    nucleo.guion.comprobarAgotado();

    interrumpir("VELDORIX");  // its own comes first
    nucleo.guion.contestarNo();
    EXPECT_EQ(arrancar(""), bien);
    EXPECT_EQ(activa("VELDORIX"), "");
    EXPECT_EQ(activa("VXCRM"), "/t/EMPRESA.ZIP");
}

TEST_F(PruebaInicio, DesatendidoConOtraInstanciaAcabaEnSilencio) {
    marca.otra = true;
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona("1"), otraInstancia);
    EXPECT_TRUE(caminos.llamadas.empty());
    EXPECT_TRUE(nucleo.registro.lineas.empty());
    EXPECT_FALSE(hayEstado()) << "the running instance owns the status file";
}

TEST_F(PruebaInicio, DesatendidoContinuaPrimeroYSigueConLosPendientes) {
    interrumpir("VELDORIX");
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_EQ(caminos.llamadas, (std::vector<std::string>{"limpiar VELDORIX", "continuar desatendido",
                                                          "pendientes desatendido"}));
    EXPECT_EQ(estadoGrabado()["reanudacion"]["resultado"], "enviada");
    EXPECT_EQ(estadoGrabado()["reanudacion"]["ruta"], "/t/EMPRESA.ZIP");
}

TEST_F(PruebaInicio, UnaReanudacionFallidaSeCuentaYNoParaLosPendientes) {
    interrumpir("VELDORIX");
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

TEST_F(PruebaInicio, LoQueNoSeEntiendeDeLosAjustesQuedaEnElRegistro) {
    nucleo.memoria.omitidas = {"line 3: EMP1 sin igual"};
    EXPECT_EQ(arrancar("1"), bien);
    EXPECT_TRUE(nucleo.registro.dice("line 3: EMP1 sin igual"));
}

TEST_F(PruebaInicio, ConUnIdiomaCortoElDesatendidoAvisaYReconoceLosFallos) {
    nucleo.carpeta().escribir("programa/share/tarvoline/español.qzi", "@\r\nuno");
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_TRUE(nucleo.registro.dice("Archivo de Idioma"));
    EXPECT_TRUE(core::esError(nucleo.estado.gTextos(core::textoFallo)));
}

TEST_F(PruebaInicio, UnEstadoQueNoSePuedeGrabarNoCambiaElResultado) {
    nucleo.carpeta().escribir("estado", "a file where the folder should be");
    EXPECT_EQ(arrancarSinPersona("1"), bien);
    EXPECT_TRUE(nucleo.registro.dice("status file"));
}

}  // namespace
}  // namespace tarvoline::pruebas
