// Random commands against the model: every status and record number, files of many shapes, two table numbers
// on one file, reopening now and then.
#pragma once

#include <cstdlib>
#include <iostream>

#include "apoyo/carpeta_prueba.h"
#include "motor/apoyo_motor.h"
#include "motor/archivos_en_red.h"

namespace tarvoline::pruebas {

struct Forma {
    const char* nombre;
    unsigned ancho;
    unsigned claves;
    unsigned letras;  // few: many equal texts
    unsigned ordenes;
    bool comoEnRed;
};

inline std::uint64_t semillaNueva() {
    const char* dada = std::getenv("TARVOLINE_SEMILLA");
    const std::uint64_t semilla = dada != nullptr ? std::strtoull(dada, nullptr, 10) : std::random_device()();
    std::cout << "seed " << semilla << std::endl;
    return semilla;
}

inline void trabajar(const Forma& forma, std::uint64_t semilla) {
    const unsigned ordenes = forma.ordenes;
    SCOPED_TRACE("seed " + std::to_string(semilla));
    const CarpetaPrueba carpeta;
    const std::unique_ptr<platform::SistemaArchivos> archivos =
        forma.comoEnRed ? std::make_unique<ArchivosEnRed>() : platform::crearSistemaArchivos();
    auto motor = std::make_unique<motor::MotorIndexados>(*archivos);
    const std::string abrirDos = "/O/" + carpeta.ruta("PLANC07.QZC") + "/ 2";
    const std::string abrirCinco = "/O/" + carpeta.ruta("planc07.qzc") + "/5";
    ASSERT_EQ(mandar(*motor, abrirDos).estado, 2);
    ASSERT_EQ(mandar(*motor, "/C/" + carpeta.ruta("PLANC07.QZC") + "/ " + std::to_string(forma.ancho) + "/ " +
                                 std::to_string(forma.claves) + "/A/ 2")
                  .estado,
              0);
    ASSERT_EQ(mandar(*motor, abrirCinco).estado, 0);
    ModeloTabla modelo(forma.ancho, forma.claves);
    Trabajo trabajo(semilla, modelo, {2, 5}, forma.letras);
    for (unsigned i = 0; i < ordenes; ++i) {
        // Grows for a while, then shrinks.
        const auto paso = trabajo.siguiente(i / (ordenes / 4 + 1) % 2 == 0 ? 8 : 2);
        ASSERT_EQ(mandar(*motor, paso.comando), paso.debido) << "command " << i << ": " << paso.comando;
        if (trabajo.azar()() % 500 != 0) continue;
        ASSERT_NO_FATAL_FAILURE(exigirIgual(*motor, 2, modelo));
        if (trabajo.azar()() % 2 == 0) {
            ASSERT_EQ(mandar(*motor, "K").estado, 0);
        } else {
            motor = std::make_unique<motor::MotorIndexados>(*archivos);
        }
        ASSERT_EQ(mandar(*motor, abrirDos).estado, 0);
        ASSERT_EQ(mandar(*motor, abrirCinco).estado, 0);
        trabajo.reabierta();
    }
    exigirIgual(*motor, 5, modelo);
}

class Diferencial : public testing::TestWithParam<Forma> {};

}  // namespace tarvoline::pruebas
