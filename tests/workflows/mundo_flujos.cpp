// Helper of the tests: companies on disk.
#include "workflows/mundo_flujos.h"

#include <gtest/gtest.h>

#include "data/utilidades.h"
#include "zip/zip.h"

namespace tarvoline::pruebas {

std::map<std::string, std::string> MundoFlujos::archivosDe(const std::string& raiz) const {
    std::map<std::string, std::string> archivos;
    for (const auto& entrada : std::filesystem::recursive_directory_iterator(nucleo.ruta(raiz))) {
        if (entrada.is_regular_file()) {
            const auto nombre = std::filesystem::relative(entrada.path(), nucleo.ruta(raiz)).string();
            archivos[nombre] = nucleo.carpeta().leer(raiz + "/" + nombre);
        }
    }
    return archivos;
}

std::map<std::string, std::string> MundoFlujos::desempaquetado(const std::string& archivo) const {
    zip::Zip zip(nucleo.archivos);
    zip.destino = archivo;
    std::filesystem::remove_all(nucleo.ruta("fuera"));
    EXPECT_EQ(zip.descomprimir(nucleo.ruta("fuera")), zip::codigo::bien) << archivo;
    return archivosDe("fuera");
}

void MundoFlujos::proteger(const std::string& ruta, std::string_view clave, const data::CampoTexto& campo) {
    auto archivo =
        nucleo.archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::compartida);
    auto cabecera = data::CabeceraEmpresa::leer(*archivo);
    cabecera.poner(campo, data::EnmascararClave(clave));
    cabecera.grabar(*archivo);
}

}  // namespace tarvoline::pruebas
