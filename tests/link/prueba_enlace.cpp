// The session: finding, opening, closing and creating companies, their named values, every error of it.
#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo_enlace.h"
#include "data/utilidades.h"
#include "tarvoline/enlace.h"

namespace {

using namespace tarvoline;
using link::Enlace;
using link::ErrorEnlace;
using pruebas::esperarError;

class PruebaEnlace : public ::testing::Test {
  protected:
    PruebaEnlace() {
        auto& capa = contexto.datos();
        capa.reintentosEmpresa = mundo.capa.reintentosEmpresa;
        capa.alAvisar = mundo.capa.alAvisar;
    }
    // A company file on disk, with a password when one is given.
    std::string empresa(const std::string& nombre, const std::string& clave = {},
                        const std::string& numero = "07") {
        auto cabecera = data::CabeceraEmpresa::nueva("13", 0);
        cabecera.poner(data::cabecera::COMUN, numero);
        cabecera.poner(data::cabecera::PASSWORD1, data::EnmascararClave(clave));
        cabecera.poner(data::cabecera::APERTURA, "04");
        cabecera.grabar(*mundo.archivos->abrir(mundo.datos(nombre), platform::Apertura::vaciar));
        return mundo.datos(nombre);
    }

    pruebas::MundoDatos mundo;
    link::Contexto contexto{*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj};
};

TEST_F(PruebaEnlace, EmpresasPorNombre) {
    for (const auto* nombre : {"b.QZT", "A.qzt", "Ñu.QZT", "c.txt"}) {
        mundo.escribir(nombre, "07");
    }
    const Enlace enlace(contexto);
    const auto& empresas = enlace.Empresas();
    ASSERT_EQ(empresas.size(), 3U);
    EXPECT_EQ(empresas[0], mundo.datos("A.qzt"));
    EXPECT_EQ(empresas[1], mundo.datos("b.QZT"));
    EXPECT_EQ(enlace.Usuario(), "99");
    EXPECT_FALSE(enlace.ModoRemoto());
    EXPECT_EQ(Enlace::Version(), "2.0.0");
}

TEST_F(PruebaEnlace, ElDirectorioDeDatosPuedeSerDeLaMaquina) {
    const auto maquina = platform::crearArbolAjustes(*mundo.archivos, mundo.carpeta.ruta("maquina.ini"));
    maquina->grabar(core::Ajustes::donde("DATOS_DIR", {}, {}), mundo.datos());
    mundo.arbol->borrar(core::Ajustes::donde("DATOS_DIR", {}, {}));
    esperarError([&] { Enlace enlace(contexto); }, 50056, "Veldorix no está instalado", "");
    core::Ajustes ajustes(*mundo.arbol, maquina.get());
    link::Contexto otro(*mundo.archivos, ajustes, mundo.carpetas, mundo.reloj);
    mundo.escribir("a.QZT", "07");
    EXPECT_EQ(Enlace(otro).Empresas().size(), 1U);
}

TEST_F(PruebaEnlace, AbrirPorNombreYPorRuta) {
    const auto ruta = empresa("Emp 01.QZT");
    mundo.ajustes.GrabarRegistro("Active", "emp 01");
    Enlace enlace(contexto);
    for (const auto& nombre : {std::string("Emp 01"), std::string(" Emp 01.qzt "), ruta, std::string()}) {
        enlace.AbrirEmpresa(nombre, "");
        EXPECT_TRUE(core::igualSinCaja(enlace.Empresa(), ruta)) << enlace.Empresa();
        EXPECT_EQ(enlace.NumeroEmpresa(), "07");
        enlace.CerrarEmpresa();
        EXPECT_EQ(enlace.NumeroEmpresa(), "");
    }
}

// Opening moves the process to the program directory: the path must not move with it.
TEST_F(PruebaEnlace, UnaRutaRelativaSigueSiendoLaMisma) {
    const auto ruta = empresa("a.QZT");
    std::filesystem::current_path(mundo.carpeta.ruta(""));
    Enlace enlace(contexto);
    enlace.AbrirEmpresa("datos/a", "");
    enlace.Config("TVUSER", "ana");
    std::filesystem::current_path("/");
    EXPECT_EQ(enlace.Config("TVUSER"), "ana");
    EXPECT_EQ(enlace.Empresa(), ruta);
}

TEST_F(PruebaEnlace, LoQueNoSeAbre) {
    Enlace enlace(contexto);
    const auto nada = mundo.datos("nada.QZT");
    esperarError([&] { enlace.AbrirEmpresa("nada", ""); }, 0x8004C351,
                 "Empresa Veldorix no existe: \n" + nada);
    esperarError([&] { enlace.Config("TVUSER"); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
    const auto vacia = mundo.escribir("vacia.QZT", "");
    esperarError([&] { enlace.AbrirEmpresa("vacia", ""); }, 0x8004C351,
                 "Empresa Veldorix no existe: \n" + vacia);
    for (const auto* numero : {"00", "AB", "7", "  "}) {
        const auto mala = mundo.escribir("mala.QZT", numero);
        esperarError([&] { enlace.AbrirEmpresa("mala", ""); }, 0x8004C352,
                     "Número Empresa Veldorix no válido: \n" + mala);
    }
    auto cabecera = data::CabeceraEmpresa::nueva("13", 9);
    cabecera.poner(data::cabecera::COMUN, "07");
    cabecera.grabar(*mundo.archivos->abrir(mundo.datos("v.QZT"), platform::Apertura::vaciar));
    esperarError(
        [&] { enlace.AbrirEmpresa("v", ""); }, 59999,
        "Los datos de la empresa son de la versión 9 y este programa trabaja con la 5 - Debe actualizar "
        "Veldorix en todos los equipos que accedan a estos datos.",
        "");
    mundo.archivos->crearDirectorios(mundo.datos("carpeta.QZT"));
    EXPECT_THROW(enlace.AbrirEmpresa("carpeta", ""), ErrorEnlace);
}

TEST_F(PruebaEnlace, ArchivosCortosSeAbrenConLoQueTienen) {
    Enlace enlace(contexto);
    for (const std::size_t longitud : {2U, 263U, 264U, 1025U}) {
        const std::string bytes = "07" + std::string(longitud - 2, '\0');
        mundo.escribir("corta.QZT", bytes);
        enlace.AbrirEmpresa("corta", "");
        EXPECT_EQ(enlace.Config("TVUSER") + enlace.Config("CARGOSA"), "0") << longitud;
        EXPECT_EQ(mundo.leer("corta.QZT"), bytes) << "opening writes nothing";
    }
}

TEST_F(PruebaEnlace, Claves) {
    const auto ruta = empresa("a.QZT", "ñu1");
    const auto mensaje = "Password Empresa Veldorix no válido: \n" + ruta;
    Enlace sinPregunta(contexto);
    esperarError([&] { sinPregunta.AbrirEmpresa("a", ""); }, 0x8004C354, mensaje);
    esperarError([&] { sinPregunta.AbrirEmpresa("a", "otra"); }, 0x8004C354, mensaje);
    // The company is open for a caller that passes over the error.
    EXPECT_EQ(sinPregunta.NumeroEmpresa(), "07");
    EXPECT_EQ(sinPregunta.Config("AÑO"), "13");
    sinPregunta.AbrirEmpresa("a", "ñu1");

    std::vector<link::PreguntaClave> pedidas;
    std::optional<std::string> respuesta;
    Enlace conPregunta(contexto, {.pedirClave = [&](const link::PreguntaClave& peticion) {
                           pedidas.push_back(peticion);
                           return respuesta;
                       }});
    for (const auto& mala :
         {std::optional<std::string>(), std::optional<std::string>(" "), std::optional<std::string>("no")}) {
        respuesta = mala;
        esperarError([&] { conPregunta.AbrirEmpresa("a", ""); }, 0x8004C354, mensaje);
    }
    respuesta = "ñu1";
    conPregunta.AbrirEmpresa("a", "mal");
    ASSERT_EQ(pedidas.size(), 4U);
    EXPECT_EQ(pedidas[0].titulo, "Clave");
    EXPECT_EQ(pedidas[0].empresa, "a.QZT");
    EXPECT_EQ(pedidas[0].longitud, 4);
    conPregunta.AbrirEmpresa("a", "ñu1");  // the right one asks for nothing
    EXPECT_EQ(pedidas.size(), 4U);
}

TEST_F(PruebaEnlace, ValoresDeLaEmpresa) {
    empresa("a.QZT");
    Enlace enlace(contexto);
    enlace.AbrirEmpresa("a", "");
    enlace.Config("tvCarpeta", "  Panadería  ");
    enlace.Config("Borrador", "1");
    enlace.Config("POBLACION", "Logroño");
    EXPECT_EQ(enlace.Config("TVCARPETA"), "Panadería");
    EXPECT_EQ(enlace.Config("BORRADOR"), "1");
    EXPECT_EQ(mundo.leer("a.QZT")[81], '1');
    EXPECT_EQ(enlace.Config("Poblacion"), "Logroño");
    EXPECT_EQ(enlace.GetTotal("Poblacion").size(), std::string("Logroño").size() + 23);  // as it stands
    EXPECT_EQ(enlace.Config("DIRECCION"), "");
    enlace.Config("TVCARPETA", "");
    EXPECT_EQ(enlace.Config("TVCARPETA"), "");
    enlace.CerrarEmpresa();
    esperarError([&] { enlace.Config("TVCARPETA", "x"); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
    EXPECT_EQ(enlace.GetTotal("COMUN"), "No hay una empresa abierta");
}

TEST_F(PruebaEnlace, DosSesionesCadaUnaEnLaSuya) {
    empresa("a.QZT", {}, "07");
    empresa("b.QZT", {}, "08");
    Enlace una(contexto);
    Enlace otra(contexto);
    una.AbrirEmpresa("a", "");
    otra.AbrirEmpresa("b", "");
    una.Config("TVUSER", "ana");
    otra.Config("TVUSER", "berta");
    otra.CerrarEmpresa();
    EXPECT_EQ(una.Config("TVUSER"), "ana");
    EXPECT_EQ(una.Config("COMUN"), "07");
}

TEST_F(PruebaEnlace, ElAnioDelEjercicio) {
    empresa("a.QZT");
    Enlace enlace(contexto);
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(enlace.MesInicioEjercicio(), "04");
    for (const auto& [mes, anio] :
         {std::pair{0, "13"}, {3, "14"}, {4, "13"}, {12, "13"}, {13, "14"}, {14, "14"}}) {
        EXPECT_EQ(enlace.año(mes), anio) << mes;
    }
    enlace.Config("AÑO", "99");
    enlace.Config("APERTURA", "01");
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(enlace.year(13), "99");
    enlace.Config("APERTURA", "02");
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(enlace.year(1), "100");
}

TEST_F(PruebaEnlace, LaEmpresaDelAnioAnterior) {
    empresa("a.QZT");
    Enlace enlace(contexto);
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(enlace.EmpresaAñoAnterior(), "");
    enlace.Config("Empresa Anterior", "vieja.QZT");
    EXPECT_EQ(enlace.EmpresaAñoAnterior(), mundo.datos("vieja.QZT"));
    enlace.Config("Empresa Anterior", "/otra/vieja.QZT");
    EXPECT_EQ(enlace.PreviousYearCompany(), "/otra/vieja.QZT");
    enlace.CerrarEmpresa();
    EXPECT_THROW(enlace.EmpresaAñoAnterior(), ErrorEnlace);
}

TEST_F(PruebaEnlace, ElDirectorioGlobalSeConcilia) {
    empresa("a.QZT");
    empresa("b.QZT");
    mundo.ajustes.GrabarRegistro("GLOBAL_DIR", "/comunes/");
    Enlace enlace(contexto);
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(enlace.Config("Global_Dir"), "/comunes/");
    mundo.ajustes.GrabarRegistro("GLOBAL_DIR", "");
    enlace.AbrirEmpresa("a", "");
    EXPECT_EQ(mundo.ajustes.leer("GLOBAL_DIR"), "/comunes/");
    // A company that nobody may write now opens all the same, with a word in the log.
    const auto otro = mundo.archivos->abrir(mundo.datos("b.QZT"), platform::Apertura::lectura,
                                            platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear(platform::todoElArchivo, platform::TipoBloqueo::compartido));
    enlace.AbrirEmpresa("b", "");
    EXPECT_NE(mundo.avisos, "");
    EXPECT_EQ(enlace.NumeroEmpresa(), "07");
}

TEST_F(PruebaEnlace, NivelesDeLasCuentas) {
    empresa("a.QZT");
    Enlace enlace(contexto);
    const auto& enVigor = contexto.datos().enVigor;
    const std::pair<const char*, std::array<int, 9>> casos[] = {
        {"", {}}, {"12310", {10, 1, 2, 3}}, {"1234508", {8, 1, 2, 3, 4, 5}}};
    for (const auto& [costo, niveles] : casos) {
        enlace.AbrirEmpresa("a", "");
        enlace.Config("NivelesCosto", costo);
        enlace.AbrirEmpresa("a", "");
        EXPECT_EQ(enVigor.gNiveles, (std::array{0, 1, 2, 3, 4, 0, 0, 0, 10}));
        EXPECT_EQ(enVigor.gNivelesAnalitica, niveles) << costo;
    }
}

TEST_F(PruebaEnlace, CrearEmpresa) {
    Enlace enlace(contexto);
    enlace.CrearEmpresa({.NombreEmpresa = "Nueva",
                         .año = "2024",
                         .Niveles = "13450",
                         .Auxiliares = {},
                         .MonedaBase = {},
                         .MesApertura = "4",
                         .PlanContablePorDefecto = {},
                         .IvaIgic = "1"});
    EXPECT_EQ(enlace.Empresa(), mundo.datos("Nueva.QZT"));
    EXPECT_EQ(enlace.NumeroEmpresa(), "");  // made, not open
    EXPECT_EQ(enlace.Empresas(), std::vector{mundo.datos("Nueva.QZT")});
    enlace.AbrirEmpresa(enlace.Empresa(), "");
    EXPECT_EQ(
        enlace.Config("AÑO") + enlace.Config("NIVEL") + enlace.Config("AUX") + enlace.Config("APERTURA"),
        "2413450001004");
    // The company that was open is not any more: its number and the new file do not belong together.
    enlace.AbrirEmpresa(enlace.Empresa(), "/C");
    EXPECT_EQ(enlace.Empresa(), mundo.datos("Nueva~1.QZt"));
    EXPECT_EQ(enlace.NumeroEmpresa(), "");
    EXPECT_THROW(enlace.Config("TVUSER", "x"), ErrorEnlace);
    esperarError(
        [&] {
            mundo.ajustes.GrabarRegistro("DATOS_DIR", "");
            enlace.AbrirEmpresa("x", "/c");
        },
        50012, "RUTA= ", "QZOLE");
}

TEST_F(PruebaEnlace, OtroProgramaCierraElPaso) {
    empresa("a.QZT");
    Enlace enlace(contexto);
    const auto exclusivo = mundo.archivos->abrir(mundo.datos("a.QZT"), platform::Apertura::lectura,
                                                 platform::Comparticion::exclusiva);
    try {
        enlace.AbrirEmpresa("a", "");
        FAIL();
    } catch (const platform::ErrorArchivo& error) {
        EXPECT_EQ(error.numero(), platform::error_archivo::permisoDenegado);
    }
    EXPECT_EQ(enlace.NumeroEmpresa(), "");
}

}  // namespace
