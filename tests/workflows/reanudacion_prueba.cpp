// Uploads and downloads with the real service, with processes that die on either side.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>
#include <random>

#include "apoyo/servicio_guion.h"
#include "apoyo/servicio_proceso.h"
#include "platform/acceso_inicio.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/proceso_subidor.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {
namespace {

using service::longitudPieza;
using ::testing::StartsWith;

constexpr std::size_t c = longitudPieza;

pruebas::OpcionesNucleo conAjustesEnArchivo() {
    pruebas::OpcionesNucleo opciones;
    opciones.ajustesEnArchivo = true;
    return opciones;
}

class PruebaReanudacion : public ::testing::Test {
  protected:
    PruebaReanudacion() {
        servicio.alta("maria", "secreta", "CUENTA1", 1);
        mundo.nucleo.estado.gUrlServicio = servicio.url();
        mundo.nucleo.entrarComo("maria", "secreta", "CUENTA1");
    }
    std::string escribir(const std::string& nombre, const std::string& contenido) {
        return mundo.nucleo.carpeta().escribir("temporal/Veldorix/Tarvoline/" + nombre, contenido);
    }
    // What the service gives back; nothing when it has no such file.
    std::string bajar(const std::string& tipo, const std::string& nombre) {
        auto& rejilla = mundo.nucleo.vista.fx1;
        rejilla.ponerFilas(2);
        rejilla.ponerCelda(1, columna_rejilla::nombre, nombre);
        rejilla.Row = rejilla.RowSel = 1;
        EXPECT_TRUE(mundo.flujos.transferencia().DescargarArchivo(tipo, mundo.nucleo.ruta("vuelta.bin")));
        return mundo.nucleo.carpeta().leer("vuelta.bin");
    }
    std::string clave(const std::string& nombre) {
        return mundo.nucleo.ajustes.leer(nombre, "NETBACKUP", "", "VELDORIX");
    }

    pruebas::ServicioProceso servicio;
    pruebas::MundoFlujos mundo{conAjustesEnArchivo()};
    Transferencia& transferencia = mundo.flujos.transferencia();
};

TEST_F(PruebaReanudacion, LoQueSubeVuelveIgual) {
    for (const std::size_t longitud :
         {std::size_t{0}, std::size_t{1}, c - 1, c + 1, 2 * c, 2 * c + 1, std::size_t{1024 * 1024 + 7}}) {
        const auto contenido = pruebas::contenidoDePrueba(longitud);
        const auto nombre = "Año & " + std::to_string(longitud) + ".bin";
        ASSERT_EQ(transferencia.SubirArchivo(escribir(nombre, contenido), "PERSONAL", true, 1), "");
        EXPECT_TRUE(bajar("PERSONAL", nombre) == contenido) << longitud;
        EXPECT_EQ(mundo.flujos.listados().TamanoArchivo("PERSONAL", nombre), static_cast<double>(longitud));
    }
    EXPECT_TRUE(mundo.nucleo.guion.sucesos.empty());
}

TEST_F(PruebaReanudacion, VeinteMuertesYUnaCopiaExacta) {
    const auto semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const std::string nombre = "ALFA 2024-05-31  18 30.ZIP";
    const auto contenido = pruebas::contenidoDePrueba(80 * c + 12345);
    const auto ruta = escribir(nombre, contenido);
    // A piece has six moments: two turns, and beginning and end of its two calls. From seven on each run gets
    // at least one piece through.
    std::uniform_int_distribution<int> momento(7, 18);
    for (int muerte = 1; muerte <= 20; ++muerte) {
        auto orden = muerte == 1 ? std::vector<std::string>{"nuevo", ruta, "VELDORIX"}
                                 : std::vector<std::string>{"seguir"};
        orden.push_back(std::to_string(momento(azar)));
        const auto fin = pruebas::subidor(mundo, servicio.url(), orden);
        ASSERT_EQ(fin.codigo, 128 + SIGKILL) << "death " << muerte << ": " << fin.salida;
        ASSERT_EQ(clave("Active"), ruta);
        ASSERT_TRUE(platform::existeAccesoInicio(mundo.nucleo.archivos, "Tarvoline"));
        ASSERT_LT(std::stoul(clave("Offset")), contenido.size() - c) << "died in the last piece";
    }
    const auto fin = pruebas::subidor(mundo, servicio.url(), {"seguir"});
    EXPECT_EQ(fin.codigo, 0) << fin.salida;
    EXPECT_EQ(clave("Active") + clave("Offset") + clave("Password"), "");
    EXPECT_FALSE(std::filesystem::exists(ruta));
    EXPECT_FALSE(platform::existeAccesoInicio(mundo.nucleo.archivos, "Tarvoline"));
    EXPECT_TRUE(bajar("VELDORIX", nombre) == contenido);
}

// An upload cut in its last piece cannot go on (its next piece would be longer than what is left), and a file
// of just one piece cannot be sent: the record stays, whatever is tried.
TEST_F(PruebaReanudacion, MuertoEnLaUltimaPieza) {
    const auto esperarRegistro = [&](const std::string& ruta, std::size_t posicion) {
        EXPECT_EQ(clave("Active"), ruta);
        EXPECT_EQ(clave("Offset"), std::to_string(posicion));
        EXPECT_TRUE(std::filesystem::exists(ruta));
    };
    const auto justo = escribir("JUSTO.ZIP", pruebas::contenidoDePrueba(c));
    EXPECT_THAT(transferencia.SubirArchivo(justo, "VELDORIX", true, 1), StartsWith("ERROR"));
    esperarRegistro(justo, 1);

    const auto ruta = escribir("BETA.ZIP", pruebas::contenidoDePrueba(c + 100));
    // Turn, turn, DTS and Backup of piece one, then turn and turn of the second and last.
    const auto fin = pruebas::subidor(mundo, servicio.url(), {"nuevo", ruta, "VELDORIX", "8"});
    ASSERT_EQ(fin.codigo, 128 + SIGKILL) << fin.salida;
    for (int intento = 0; intento < 2; ++intento) {
        const auto despues = pruebas::subidor(mundo, servicio.url(), {"seguir"});
        EXPECT_EQ(despues.codigo, 1);
        EXPECT_THAT(despues.salida, StartsWith("ERROR"));
        esperarRegistro(ruta, c + 1);
    }
}

}  // namespace
}  // namespace tarvoline::workflows
