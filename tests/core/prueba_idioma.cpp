// The language file as it is read, the check of the table, and the terms.
#include "core/idioma.h"

#include <gtest/gtest.h>

#include "apoyo/nucleo_prueba.h"
#include "core/despliegue.h"
#include "core/texto.h"

namespace tarvoline::pruebas {
namespace {

class PruebaIdioma : public testing::Test {
  protected:
    // A file in the program directory.
    std::string enPrograma(const std::string& nombre, const std::string& contenido) {
        return nucleo.carpeta().escribir("programa/share/tarvoline/" + nombre, contenido);
    }
    const core::Textos& cargar(std::string_view contenido) {
        core::CargarIdioma(nucleo.entorno, nucleo.carpeta().escribir("idioma.qzi", contenido));
        return nucleo.estado.gTextos;
    }
    std::string fallo(const std::string& nombre) {
        try {
            core::CargarIdioma(nucleo.entorno, nombre);
        } catch (const core::ErrorIdioma& error) {
            return error.what();
        }
        return "no error";
    }
    void ponerCorta(int ultimo) {
        nucleo.estado.gTextos = core::Textos();
        nucleo.estado.gTextos.poner(ultimo, "último");
    }

    NucleoPrueba nucleo;
};

TEST_F(PruebaIdioma, LosNumerosSonLasLineasTrasLaPrimeraArroba) {
    for (const std::string cabecera : {"", "cabecera", "dos\r\nlíneas\r\n", "\r\n\r\n\r\n", "\n@"}) {
        SCOPED_TRACE(cabecera);
        const bool arrobaDoble =
            cabecera.ends_with('@');  // the first one counts, the second is line 0's text
        const auto& textos =
            cargar(cabecera + (arrobaDoble ? "" : "@ de todo") + "\r\nuno\r\n\r\n tres @ \r\ncu\natro");
        EXPECT_EQ(textos.indiceMayor(), 4);
        EXPECT_EQ(textos(0), "Veldorix");
        EXPECT_EQ(textos(1), "uno");
        EXPECT_EQ(textos(2), "");
        EXPECT_EQ(textos(3), " tres @ ");
        EXPECT_EQ(textos(4), "cu\natro") << "only the pair ends a line";
    }
}

TEST_F(PruebaIdioma, ElUltimoFinDeLineaYLaPaginaDeCodigos) {
    EXPECT_EQ(cargar("@\r\nuno\r\n").indiceMayor(), 2);
    EXPECT_EQ(cargar("@").indiceMayor(), 0);
    EXPECT_EQ(cargar("@\r\nTama\xf1o \x80 \x93\xbf?\x94")(1), "Tamaño € “¿?”");
    EXPECT_THROW(nucleo.estado.gTextos(2), core::ErrorIndice);
    EXPECT_THROW(nucleo.estado.gTextos(-1), core::ErrorIndice);
}

TEST_F(PruebaIdioma, UnNombreSinSeparadorEstaEnElDirectorioDelPrograma) {
    enPrograma("propio.qzi", "@\r\ndel programa");
    core::CargarIdioma(nucleo.entorno, "propio.qzi");
    EXPECT_EQ(nucleo.estado.gTextos(1), "del programa");

    nucleo.ajustes.GrabarRegistro("Directory", nucleo.ruta("otro"));  // without its final separator
    nucleo.carpeta().escribir("otro/propio.qzi", "@\r\ndel ajuste");
    core::CargarIdioma(nucleo.entorno, "propio.qzi");
    EXPECT_EQ(nucleo.estado.gTextos(1), "del ajuste");

    auto conBarraInversa = nucleo.ruta("programa/share/tarvoline/propio.qzi");
    std::replace(conBarraInversa.begin(), conBarraInversa.end(), '/', '\\');
    core::CargarIdioma(nucleo.entorno, conBarraInversa);
    EXPECT_EQ(nucleo.estado.gTextos(1), "del programa");
}

TEST_F(PruebaIdioma, ElErrorDiceQueArchivoFalta) {
    EXPECT_NE(fallo("falta.qzi").find(nucleo.ruta("programa/share/tarvoline/falta.qzi")), std::string::npos);
    const auto sinArroba = nucleo.carpeta().escribir("sin.qzi", "texto\r\nsin marca");
    EXPECT_NE(fallo(sinArroba).find(sinArroba), std::string::npos);
    EXPECT_NE(fallo(nucleo.carpeta().escribir("vacio.qzi", "")).find("vacio.qzi"), std::string::npos);
    EXPECT_NE(fallo(nucleo.ruta("datos")).find("datos"), std::string::npos) << "a folder";
    EXPECT_EQ(nucleo.estado.gTextos(1), "<1>") << "the table stays as it was";
}

TEST_F(PruebaIdioma, UnaTablaCortaAvisaEnEspanolYSeAmplia) {
    ponerCorta(1800);  // just enough
    core::ComprobarIdioma(nucleo.entorno);
    EXPECT_TRUE(nucleo.guion.sucesos.empty());
    EXPECT_EQ(nucleo.estado.gTextos.indiceMayor(), 1800);
    ponerCorta(1799);
    core::ComprobarIdioma(nucleo.entorno);
    const auto caja = nucleo.guion.ultimo();
    EXPECT_EQ(caja.titulo, "Archivo de Idioma");
    EXPECT_EQ(caja.icono, core::Icono::informacion);
    EXPECT_EQ(caja.texto,
              "Fichero de Idioma incorrecto. Pongase en contacto con Asistencia Técnica de Veldorix en el " +
                  std::string(core::despliegue::telefonoSoporte) + " o envie un email a " +
                  std::string(core::despliegue::correoSoporte));
    EXPECT_EQ(nucleo.estado.gTextos.indiceMayor(), 2500);
    EXPECT_EQ(nucleo.estado.gTextos(1799), "último");
    EXPECT_EQ(nucleo.estado.gTextos(2259), "");
    core::ComprobarIdioma(nucleo.entorno);
    EXPECT_EQ(nucleo.guion.sucesos.size(), 1U) << "warned once";
}

TEST_F(PruebaIdioma, ConOtroIdiomaAvisaEnIngles) {
    nucleo.ajustes.GrabarRegistro("language", "english.qzi");
    ponerCorta(10);
    core::ComprobarIdioma(nucleo.entorno);
    const auto caja = nucleo.guion.ultimo();
    EXPECT_EQ(caja.titulo, "Language File");
    EXPECT_EQ(
        caja.texto,
        "Incorrect Language File. Please contact Veldorix's Technical Asistance on the following number " +
            std::string(core::despliegue::telefonoSoporte) + " or send an email to " +
            std::string(core::despliegue::correoSoporte));
}

TEST_F(PruebaIdioma, LosTextosDeFalloSeReconocenAunqueElArchivoEsteMal) {
    ponerCorta(1900);
    nucleo.estado.gTextos.poner(core::textoFallo, "Fallo: ");
    core::ComprobarIdioma(nucleo.entorno);
    EXPECT_EQ(nucleo.estado.gTextos(core::textoFallo), "ERROR: Fallo: ");
    EXPECT_EQ(nucleo.estado.gTextos(core::textoFalloCopia), "ERROR: ");
}

TEST_F(PruebaIdioma, ElNombreDelAjusteDecideElIdiomaDeLosTextosFijos) {
    for (const auto& [nombre, espanol] : {std::pair{"", true},
                                          {"español.qzi", true},
                                          {"MiESPAÑOL2.QZI", true},
                                          {"C:\\x\\Español.qzi", true},
                                          {"espanol.qzi", false},
                                          {"english.qzi", false},
                                          {"français.qzi", false}}) {
        nucleo.ajustes.GrabarRegistro("language", nombre);
        EXPECT_EQ(core::idiomaEspanol(nucleo.entorno), espanol) << nombre;
    }
}

TEST_F(PruebaIdioma, LosTerminosSiguenAlIdioma) {
    enPrograma("Terminos Y Condiciones.txt", "T\xe9rminos\r\n");
    enPrograma("Terms and Conditions.txt", "Terms\r\n");
    EXPECT_EQ(core::LeerTerminos(nucleo.entorno), "Términos\r\n");
    nucleo.ajustes.GrabarRegistro("language", "français.qzi");
    EXPECT_EQ(core::LeerTerminos(nucleo.entorno), "Terms\r\n");
    nucleo.ajustes.GrabarRegistro("Directory", nucleo.ruta("nada"));
    EXPECT_THROW(core::LeerTerminos(nucleo.entorno), core::ErrorIdioma);
}

}  // namespace
}  // namespace tarvoline::pruebas
