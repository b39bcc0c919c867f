// The start with a person: what each command line chooses, and the order of its steps.
#include "core/despliegue.h"
#include "core/texto.h"
#include "escena_inicio.h"

namespace tarvoline::pruebas {
namespace {

using core::salida::bien;
using core::salida::noArranca;

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
    EXPECT_EQ(estado.gTextos(214), "texto 214");
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

    marca.otra = true;  // another instance may be using the transfer folder
    caminos.llamadas.clear();
    caminos.alMostrar = [] { throw std::runtime_error("no display"); };
    EXPECT_EQ(arrancar("2"), noArranca);
    EXPECT_EQ(caminos.llamadas.front(), "crear en reposo");
    EXPECT_TRUE(nucleo.guion.sucesos.empty());
    EXPECT_TRUE(nucleo.registro.dice("no display"));
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

}  // namespace
}  // namespace tarvoline::pruebas
