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
    // Pages that the file has had and lost, most of them where the map of free pages does not reach.
    unsigned perdidas = 0;
};

inline void dejarLibres(platform::SistemaArchivos& archivos, const std::string& ruta, unsigned paginas) {
    const auto abierto = motor::ArchivoClaves::abrir(archivos, ruta);
    motor::escribir(*abierto.archivo, [&](motor::Escritura& escritura) {
        escritura.cabecera().marca = motor::primeraPagina + motor::paginasDelMapa + paginas;
        escritura.liberarTodo();
        escritura.confirmar();
    });
}

inline std::uint64_t semillaNueva() {
    const char* dada = std::getenv("TARVOLINE_SEMILLA");
    const std::uint64_t semilla = dada != nullptr ? std::strtoull(dada, nullptr, 10) : std::random_device()();
    std::cout << "seed " << semilla << std::endl;
    return semilla;
}

// More single pages are free than a head has room for.
inline bool tieneLista(platform::SistemaArchivos& archivos, const std::string& ruta) {
    return motor::ArchivoClaves::abrir(archivos, ruta).archivo->cabecera().lista.pagina != 0;
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
    if (forma.perdidas > 0) dejarLibres(*archivos, carpeta.ruta("PLANC07.QZC"), forma.perdidas);
    ModeloTabla modelo(forma.ancho, forma.claves);
    Trabajo trabajo(semilla, modelo, {2, 5}, forma.letras);
    bool conLista = forma.perdidas == 0;
    for (unsigned i = 0; i < ordenes; ++i) {
        // Grows for a while, then shrinks.
        const auto paso = trabajo.siguiente(i / (ordenes / 4 + 1) % 2 == 0 ? 8 : 2);
        ASSERT_EQ(mandar(*motor, paso.comando), paso.debido) << "command " << i << ": " << paso.comando;
        conLista = conLista || (i % 100 == 0 && tieneLista(*archivos, carpeta.ruta("PLANC07.QZC")));
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
    const auto alFinal = motor::ArchivoClaves::abrir(*archivos, carpeta.ruta("PLANC07.QZC"));
    EXPECT_EQ(motor::revisar(*alFinal.archivo).fallo, "");
    EXPECT_TRUE(conLista) << "no list of free pages was ever needed";
}

class Diferencial : public testing::TestWithParam<Forma> {};

}  // namespace tarvoline::pruebas
