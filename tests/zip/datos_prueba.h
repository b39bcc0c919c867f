// Content for archives: what compresses, what does not, and trees of both.
#pragma once

#include <map>
#include <random>
#include <string>

#include "platform/archivos.h"

namespace tarvoline::pruebas {

inline std::string ruido(std::mt19937& azar, std::size_t longitud) {
    std::string datos(longitud, '\0');
    for (char& byte : datos)
        byte = static_cast<char>(azar());
    return datos;
}

// Records of fixed length, as the tables have them.
inline std::string registros(std::mt19937& azar, std::size_t longitud) {
    std::string datos;
    while (datos.size() < longitud) {
        std::string registro =
            std::to_string(4300000 + azar() % 500) + "FRA. " + std::to_string(azar() % 9999);
        registro.resize(64, ' ');
        datos += registro;
    }
    datos.resize(longitud);
    return datos;
}

using Arbol = std::map<std::string, std::string>;  // path with "/", content

inline Arbol arbolAlAzar(std::mt19937& azar) {
    Arbol arbol{{"vacío.QZD", ""}, {"hondo/á/é/ñ.txt", "eñe"}};
    const auto cuantos = 3 + azar() % 20;
    for (unsigned i = 0; i < cuantos; ++i) {
        std::string nombre = azar() % 2 == 0 ? "" : "carpeta " + std::to_string(azar() % 4) + "/";
        nombre += "fichero" + std::to_string(i) + ".dat";
        const std::size_t longitud = azar() % (azar() % 5 == 0 ? 600'000 : 5'000);
        arbol[nombre] = azar() % 2 == 0 ? ruido(azar, longitud) : registros(azar, longitud);
    }
    return arbol;
}

}  // namespace tarvoline::pruebas
