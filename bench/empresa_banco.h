// A company in a folder of its own, opened through the link, for the benchmarks of the link.
#pragma once

#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "core/carpetas.h"
#include "link/contexto_interior.h"
#include "platform/arbol_ajustes.h"
#include "platform/reloj.h"
#include "tarvoline/enlace.h"

namespace tarvoline::bench {

inline std::string cifras(std::int64_t valor, std::size_t ancho) {
    const std::string texto = std::to_string(valor);
    return std::string(ancho - std::min(ancho, texto.size()), '0') + texto;
}

class CarpetaBanco {
  public:
    CarpetaBanco() {
        std::string patron = (std::filesystem::temp_directory_path() / "tarvoline-bench-XXXXXX").string();
        if (::mkdtemp(patron.data()) == nullptr) std::exit(EXIT_FAILURE);
        ruta_ = patron + "/";
    }
    ~CarpetaBanco() { std::filesystem::remove_all(ruta_); }
    CarpetaBanco(const CarpetaBanco&) = delete;
    CarpetaBanco& operator=(const CarpetaBanco&) = delete;

    const std::string& ruta() const { return ruta_; }

  private:
    std::string ruta_;
};

class EmpresaBanco {
  public:
    // `plan` is the number of a shipped chart of accounts; empty = none.
    explicit EmpresaBanco(const std::string& plan = "") {
        for (const auto& entrada : std::filesystem::directory_iterator(programa_)) {
            if (entrada.path().extension() == ".QZF") {
                std::filesystem::copy(entrada.path(), carpeta_.ruta() + entrada.path().filename().string());
            }
        }
        enlace.CrearEmpresa({.NombreEmpresa = "Banco", .año = "2026", .PlanContablePorDefecto = plan});
        enlace.AbrirEmpresa("Banco");
    }

    data::Tablas& tablas() { return contexto_.interior().tablas(); }
    const std::string& carpeta() const { return carpeta_.ruta(); }

  private:
    const std::string programa_ = std::string(TARVOLINE_PROGRAMA) + "/";
    const CarpetaBanco carpeta_;
    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    std::unique_ptr<platform::ArbolAjustes> arbol_ =
        platform::crearArbolAjustes(*archivos_, carpeta_.ruta() + "ajustes.ini");
    core::Ajustes ajustes_{*arbol_};
    // The settings name the folders before anybody asks for them.
    const bool preparado_ = (ajustes_.GrabarRegistro("DATOS_DIR", carpeta_.ruta()),
                             ajustes_.GrabarRegistro("Directory", programa_),
                             ajustes_.GrabarRegistro("CON_DIR", carpeta_.ruta()), true);
    core::Carpetas carpetas_{*archivos_, ajustes_, carpeta_.ruta()};
    std::unique_ptr<platform::Reloj> reloj_ = platform::crearReloj();
    link::Contexto contexto_{*archivos_, ajustes_, carpetas_, *reloj_};

  public:
    link::Enlace enlace{contexto_};
};

}  // namespace tarvoline::bench
