// A fresh folder for one test, gone with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace tarvoline::pruebas {

class CarpetaPrueba {
  public:
    CarpetaPrueba() {
        std::random_device azar;
        const auto raiz = std::filesystem::temp_directory_path();
        do {
            ruta_ = raiz / ("tarvoline-" + std::to_string(azar()) + std::to_string(azar()));
        } while (!std::filesystem::create_directory(ruta_));
    }
    ~CarpetaPrueba() {
        std::error_code sinError;
        std::filesystem::permissions(ruta_, std::filesystem::perms::owner_all, sinError);
        std::filesystem::remove_all(ruta_, sinError);
    }
    CarpetaPrueba(const CarpetaPrueba&) = delete;
    CarpetaPrueba& operator=(const CarpetaPrueba&) = delete;

    std::string ruta(std::string_view nombre = {}) const { return (ruta_ / nombre).string(); }

    std::string escribir(std::string_view nombre, std::string_view contenido) const {
        const auto destino = ruta_ / nombre;
        std::filesystem::create_directories(destino.parent_path());
        std::ofstream(destino, std::ios::binary) << contenido;
        return destino.string();
    }

    std::string leer(std::string_view nombre) const {
        std::ifstream entrada(ruta_ / nombre, std::ios::binary);
        return {std::istreambuf_iterator<char>(entrada), std::istreambuf_iterator<char>()};
    }

    bool hay(std::string_view nombre) const { return std::filesystem::exists(ruta_ / nombre); }

  private:
    std::filesystem::path ruta_;
};

}  // namespace tarvoline::pruebas
