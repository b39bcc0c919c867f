// The program: the unattended run, and the window where one is built.
#include <csignal>
#include <iostream>
#include <string>

#include "core/escritorio_desatendido.h"
#include "core/estado_ejecucion.h"
#include "core/registro_spdlog.h"
#include "platform/senales.h"
#include "ventana.h"
#include "workflows/montaje.h"

namespace {

using namespace tarvoline;

// The arguments, taken whole: a small protocol between this program and whatever starts it.
std::string lineaDeOrdenes(int argc, char** argv) {
    std::string ordenes;
    for (int i = 1; i < argc; ++i) {
        ordenes += (i > 1 ? " " : "") + std::string(argv[i]);
    }
    return ordenes;
}

int ejecutar(const std::string& ordenes) {
    const platform::SenalesFin senales;
    const auto archivos = platform::crearSistemaArchivos();
    const auto carpeta = core::carpetaRegistro();
    const auto registro = core::crearRegistro(*archivos, carpeta);
    core::EscritorioDesatendido escritorio(*registro, [&] {
        const int senal = senales.recibida();
        return senal == 0 ? 0 : core::salida::senal + senal;
    });
    workflows::Montaje montaje(escritorio, *registro);
    workflows::CaminosFlujos caminos(montaje);
    core::Inicio inicio(montaje.entorno(), caminos, montaje.instancia(),
                        carpeta + "/" + core::nombreEstadoEjecucion);
    return inicio.Main(ordenes);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const auto ordenes = lineaDeOrdenes(argc, argv);
        if (core::esCaminoInteractivo(ordenes)) {
            if (const auto codigo = ejecutarConVentana(argc, argv, ordenes)) {
                return *codigo;
            }
        }
        return ejecutar(ordenes);
    } catch (const std::exception& error) {
        std::cerr << "tarvoline: " << error.what() << '\n';
        return core::salida::noArranca;
    }
}
