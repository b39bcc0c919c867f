// New companies: numbers, names, options, plans, version, and several programs at once.
#include <gtest/gtest.h>

#include <set>

#include "apoyo/en_procesos.h"
#include "apoyo/mundo_datos.h"
#include "data/actualizacion.h"
#include "data/crear_empresa.h"
#include "data/error_datos.h"
#include "data/opciones_empresa.h"

namespace {

using namespace tarvoline;
using data::CrearEmpresaArchivos;

class Creacion : public ::testing::Test {
  protected:
    std::set<std::string> nombres() const {
        std::set<std::string> todos;
        for (const auto& entrada : mundo.archivos->listar(mundo.datos())) {
            todos.insert(entrada.nombre);
        }
        return todos;
    }
    data::CabeceraEmpresa cabecera(const std::string& ruta) const {
        return data::CabeceraEmpresa::leer(*mundo.archivos->abrir(ruta, platform::Apertura::lectura));
    }
    pruebas::MundoDatos mundo;
};

TEST_F(Creacion, HaceLaEmpresaYSusNueveTablas) {
    mundo.ajustes.GrabarRegistro("Version", "4.5");
    EXPECT_EQ(CrearEmpresaArchivos(mundo.capa, "Núñez"), mundo.datos("Núñez.QZT"));
    EXPECT_EQ(nombres(), (std::set<std::string>{"Núñez.QZT", "PLANC01.QZD", "EXTRA01.QZD", "DATOS01.QZD",
                                                "IVA0101.QZD", "EFECT01.QZD", "PRESU01.QZD", "COSTO01.QZD",
                                                "PLANA01.QZD", "ANALI01.QZD"}));
    EXPECT_EQ(mundo.leer("Núñez.QZT").size(), data::CabeceraEmpresa::longitud);
    EXPECT_EQ(mundo.leer("EXTRA01.QZD"), "");
    const auto cabeza = cabecera(mundo.datos("Núñez.QZT"));
    EXPECT_EQ(cabeza.texto(data::cabecera::COMUN), "01");
    EXPECT_EQ(cabeza.texto(data::cabecera::AÑO), "26");
    EXPECT_EQ(cabeza.valor(data::cabecera::VERSION), 4.5F);
    EXPECT_EQ(cabeza.texto(data::cabecera::LINEAS), "");
}

TEST_F(Creacion, NumerosYNombres) {
    CrearEmpresaArchivos(mundo.capa, mundo.datos("a.qzt"));
    EXPECT_EQ(CrearEmpresaArchivos(mundo.capa, "a"), mundo.datos("a~1.QZt"));
    EXPECT_EQ(CrearEmpresaArchivos(mundo.capa, "A.QZT"), mundo.datos("A~2.QZt"));
    EXPECT_EQ(data::NumeroEmpresa(*mundo.archivos, "a", mundo.datos()), "01");
    EXPECT_EQ(data::NumeroEmpresa(*mundo.archivos, mundo.datos("a~1.QZT")), "02");
    EXPECT_EQ(data::NumeroEmpresaLibre(mundo.capa), "04");
    mundo.escribir("cero.QZT", "");
    EXPECT_EQ(data::NumeroEmpresa(*mundo.archivos, "cero", mundo.datos()), "");
    EXPECT_THROW(data::NumeroEmpresa(*mundo.archivos, "nada", mundo.datos()), platform::ErrorArchivo);
    EXPECT_EQ(data::NumeroEmpresaLibre(mundo.capa, mundo.datos(), "04"), "05");
    // The number is free once its tables are gone, though the company file stays.
    for (const auto tabla : data::tablasEmpresa) {
        mundo.archivos->borrar(mundo.datos(std::string(tabla) + "01.QZD"));
    }
    EXPECT_EQ(data::NumeroLibre(*mundo.archivos, mundo.datos()), "01");
    mundo.escribir("otros01.xyz", "");
    EXPECT_EQ(data::NumeroLibre(*mundo.archivos, mundo.datos()), "04");
    mundo.escribir("cuatr04", "");  // no extension, no table
    mundo.escribir("talle04.Qzt", "");
    EXPECT_EQ(data::NumeroLibre(*mundo.archivos, mundo.datos()), "04");
    EXPECT_EQ(data::NombreLibre(*mundo.archivos, mundo.datos(), "a.QZT"), "a~3.QZT");
    EXPECT_EQ(data::NombreLibre(*mundo.archivos, mundo.datos(), "b.QZT"), "b.QZT");
}

TEST_F(Creacion, SinSitio) {
    for (int n = 1; n <= 99; ++n) {
        mundo.escribir("tabla" + core::conCeros(n, 2) + ".QZD", "");
    }
    EXPECT_EQ(data::NumeroLibre(*mundo.archivos, mundo.datos()), "");
    try {
        CrearEmpresaArchivos(mundo.capa, "una");
        FAIL();
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.numero(), 50011U);
        EXPECT_EQ(error.fuente(), "QZOLE");
        EXPECT_EQ(std::string(error.what()),
                  "No hay espacio en el directorio " + mundo.datos() + "  para crear otra empresa");
    }
    EXPECT_FALSE(mundo.carpeta.hay("datos/una.QZT"));
    mundo.ajustes.GrabarRegistro("DATOS_DIR", "");
    try {
        CrearEmpresaArchivos(mundo.capa, "una");
        FAIL();
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.numero(), 50012U);
        EXPECT_EQ(std::string(error.what()), "RUTA= ");
    }
    EXPECT_THROW(CrearEmpresaArchivos(mundo.capa, "  "), platform::ErrorArchivo);
}

TEST_F(Creacion, Opciones) {
    const auto cabeza = cabecera(mundo.crear("a", "/C/a=19/N=23450/x=1234/M=0/P=04/I=2/Q=99/K/A"));
    EXPECT_EQ(cabeza.texto(data::cabecera::AÑO), "19");
    EXPECT_EQ(cabeza.texto(data::cabecera::NIVEL), "23450");
    EXPECT_EQ(cabeza.texto(data::cabecera::AUX), "1234");
    EXPECT_EQ(cabeza.valor(data::cabecera::ARCHIVOMONEDABASE), 0);
    EXPECT_EQ(cabeza.texto(data::cabecera::APERTURA), "04");
    EXPECT_EQ(cabeza.texto(data::cabecera::IVAIGIC), "2");
    for (const auto& [pedido, plan] :
         {std::pair{"0", 0}, {"1", 0}, {" 00", 0}, {"5", 2}, {"7", 1}, {"", 1}, {"abc", 1}}) {
        data::CabeceraEmpresa otra;
        EXPECT_EQ(data::aplicarOpciones(otra, "/Z=" + std::string(pedido)), plan) << pedido;
    }
}

TEST_F(Creacion, Planes) {
    for (const auto* plan : {"00", "01", "02"}) {
        mundo.carpeta.escribir("programa/PLANC" + std::string(plan) + ".QZD", "plan " + std::string(plan));
    }
    mundo.carpeta.escribir("programa/PLANC01.QZC", "claves");
    const std::vector<std::pair<std::string, std::string>> casos = {{"0", "00"}, {"1", "00"}, {"3", "01"},
                                                                    {"4", "02"}, {"5", "02"}, {"6", "02"},
                                                                    {"9", "01"}, {"", "01"}};
    int numero = 0;
    for (const auto& [elegido, plan] : casos) {
        const auto ruta = mundo.crear("e" + elegido, "/Z=" + elegido);
        const auto nn = core::conCeros(++numero, 2);
        EXPECT_EQ(mundo.leer("PLANC" + nn + ".QZD"), "plan " + plan) << elegido;
        EXPECT_EQ(mundo.carpeta.hay("datos/PLANC" + nn + ".QZC"), plan == "01") << elegido;
        EXPECT_EQ(cabecera(ruta).texto(data::cabecera::LINEAS), plan.substr(1));
    }
}

TEST_F(Creacion, SinPlanOSinCarpetaNoQuedaNada) {
    try {
        CrearEmpresaArchivos(mundo.capa, "a", "/Z=0");
        FAIL();
    } catch (const platform::ErrorArchivo& error) {
        EXPECT_EQ(error.numero(), platform::error_archivo::noExiste);
        EXPECT_NE(error.ruta().find("PLANC00.QZD"), std::string::npos);
    }
    EXPECT_TRUE(nombres().empty());
    EXPECT_THROW(CrearEmpresaArchivos(mundo.capa, mundo.datos("nada/a.QZT")), platform::ErrorArchivo);
    EXPECT_FALSE(mundo.carpeta.hay("datos/nada"));
}

TEST_F(Creacion, LaVersionDecideSiSeAbre) {
    const data::GuardaVersionDatos guarda(mundo.capa);
    data::CabeceraEmpresa cabeza;
    const auto respuesta = [&](float version) {
        cabeza.poner(data::cabecera::VERSION, version);
        cabeza.grabar(*mundo.archivos->abrir(mundo.datos("v.QZT"), platform::Apertura::vaciar));
        return guarda.Comprobar(mundo.datos("v.QZT"));
    };
    EXPECT_EQ(respuesta(data::VersionDatos), "OK");
    EXPECT_NE(respuesta(data::VersionDatos + 1).find("versión 6"), std::string::npos);
    mundo.ajustes.GrabarRegistro("Version", "6");  // a newer program of the family is installed
    EXPECT_EQ(respuesta(data::VersionDatos + 1), "OK");
    for (const std::size_t longitud : {0U, 1U, 176U, 263U}) {
        mundo.escribir("v.QZT",
                       std::string(longitud, '\x7F').substr(0, std::min<std::size_t>(longitud, 170)));
        EXPECT_EQ(guarda.Comprobar(mundo.datos("v.QZT")), "OK") << longitud;
    }
}

TEST_F(Creacion, ActualizarHaceSoloLoQueFalta) {
    const auto ruta = CrearEmpresaArchivos(mundo.capa, "a");
    mundo.escribir("EXTRA01.QZD", "registros");
    mundo.archivos->borrar(mundo.datos("ANALI01.QZD"));
    data::GuardaVersionDatos(mundo.capa).Actualizar(ruta);
    EXPECT_EQ(mundo.leer("EXTRA01.QZD"), "registros");
    EXPECT_TRUE(mundo.carpeta.hay("datos/ANALI01.QZD"));
}

// Processes that create companies of one name at the same time share neither a number nor a file.
TEST_F(Creacion, VariosProgramasALaVez) {
    constexpr int procesos = 4, cadaUno = 6;
    pruebas::enProcesos(procesos, cadaUno, [&](int, int) { CrearEmpresaArchivos(mundo.capa, "igual"); });
    std::set<std::string> numeros;
    int empresas = 0;
    for (const auto& nombre : platform::listarMascara(*mundo.archivos, mundo.datos(), "*.qzt")) {
        ++empresas;
        numeros.insert(data::NumeroEmpresa(*mundo.archivos, mundo.datos(nombre)));
    }
    EXPECT_EQ(empresas, procesos * cadaUno);
    EXPECT_EQ(numeros.size(), static_cast<std::size_t>(procesos * cadaUno));
    EXPECT_EQ(nombres().size(), static_cast<std::size_t>(procesos * cadaUno * 10));
}

}  // namespace
