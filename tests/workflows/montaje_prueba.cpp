// The objects of a program, joined: who hears what from below, and starting the program again.
#include "workflows/montaje.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo/nucleo_prueba.h"
#include "data/capa_datos.h"

namespace tarvoline::workflows {
namespace {

TEST(Montaje, LaCapaDeDatosHablaAlRegistroYALaPersona) {
    pruebas::NucleoPrueba nucleo;  // its folders are those of the user
    Montaje montaje(nucleo.guion, nucleo.registro);
    const auto& datos = montaje.flujos().enlaces().datos();
    datos.avisar("pasado por alto");
    EXPECT_TRUE(nucleo.registro.dice("aviso pasado por alto"));
    datos.mostrar({"para leer", core::Icono::ninguno, "Veldorix"});
    EXPECT_EQ(nucleo.guion.ultimo().texto, "para leer");
    EXPECT_EQ(nucleo.guion.ultimo().titulo, "Veldorix");
}

TEST(Montaje, LoQueNoArrancaDeNuevoQuedaEnElRegistro) {
    pruebas::NucleoPrueba nucleo;
    Montaje montaje(nucleo.guion, nucleo.registro);
    CaminosFlujos caminos(montaje);
    nucleo.carpeta().escribir("instalado/tarvoline", "no program");
    montaje.entorno().ajustes.GrabarRegistro("Directory", nucleo.ruta("instalado"));
    caminos.Reiniciar("2");
    EXPECT_TRUE(nucleo.registro.dice(nucleo.ruta("instalado/tarvoline")));
}

}  // namespace
}  // namespace tarvoline::workflows
