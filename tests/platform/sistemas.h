// The file systems that keep one contract, each in a fresh folder: the real one, the one in memory, and the
// faulty one (in good health).
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/archivos_memoria.h"
#include "apoyo/carpeta_prueba.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {

class ConSistema : public testing::TestWithParam<std::string> {
  protected:
    ConSistema() {
        const bool real = GetParam().find("real") != std::string::npos;
        if (real) {
            base_ = platform::crearSistemaArchivos();
            raiz_ = carpeta_.ruta("r");
        } else {
            base_ = std::make_unique<ArchivosMemoria>();
            raiz_ = "/r";
        }
        base_->crearDirectorios(raiz_);
        if (GetParam().find("defectuoso") != std::string::npos) {
            archivos_ = std::make_unique<ArchivosDefectuosos>(*base_);
        }
    }

    platform::SistemaArchivos& fs() { return archivos_ ? *archivos_ : *base_; }
    std::string ruta(std::string_view resto) const { return raiz_ + "/" + std::string(resto); }
    void escribir(std::string_view resto, std::string_view contenido) {
        const auto archivo = fs().abrir(ruta(resto), platform::Apertura::vaciar);
        archivo->escribir(0, platform::comoBytes(contenido));
    }
    std::string leer(std::string_view resto) { return platform::leerTodo(fs(), ruta(resto)); }

  private:
    CarpetaPrueba carpeta_;
    std::unique_ptr<platform::SistemaArchivos> base_;
    std::unique_ptr<platform::SistemaArchivos> archivos_;
    std::string raiz_;
};

inline auto todosLosSistemas() {
    return testing::Values("real", "memoria", "defectuoso_memoria");
}

// The number of the ErrorArchivo that `paso` throws; 0 when it throws none.
template <typename Paso>
int numeroDe(Paso&& paso) {
    try {
        paso();
        return 0;
    } catch (const platform::ErrorArchivo& error) {
        return error.numero();
    }
}

}  // namespace tarvoline::pruebas
