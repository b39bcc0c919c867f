// What a tool works on companies with by the link: settings of its own, so that those of the user stay as
// they are, in a folder that goes when it has done.
#pragma once

#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "core/ajustes.h"
#include "core/carpetas.h"
#include "platform/arbol_ajustes.h"
#include "platform/archivos.h"
#include "platform/carpetas_sistema.h"
#include "platform/reloj.h"
#include "tarvoline/contexto.h"

namespace tarvoline::tools {

class TallerEnlace {
  public:
    explicit TallerEnlace(const std::string& carpetaDatos) {
        ajustes_.GrabarRegistro("DATOS_DIR", carpetaDatos);
        // Currencies and rates are those that ship.
        for (const char* clave : {"CON_DIR", "IVA_DIR"})
            ajustes_.GrabarRegistro(clave, carpetas_.DirectorioPrograma());
    }
    ~TallerEnlace() {
        std::error_code seIgnora;  // what stays is a small folder of the temporary ones
        std::filesystem::remove_all(propia_, seIgnora);
    }
    TallerEnlace(const TallerEnlace&) = delete;
    TallerEnlace& operator=(const TallerEnlace&) = delete;

    // Where the persons go that companies share. A company that is opened later would note the folder down.
    void ponerGlobales(const std::string& carpeta) { ajustes_.GrabarRegistro("GLOBAL_DIR", carpeta); }
    platform::SistemaArchivos& archivos() { return *archivos_; }
    link::Contexto& contexto() { return contexto_; }

  private:
    std::string crearPropia() {
        std::string carpeta =
            platform::carpetaTemporal() + "/tarvoline-" + std::to_string(std::random_device()());
        constexpr unsigned soloSuya = 0700;
        archivos_->crearDirectorios(carpeta, soloSuya);
        return carpeta;
    }

    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    std::unique_ptr<platform::Reloj> reloj_ = platform::crearReloj();
    std::string propia_ = crearPropia();
    std::unique_ptr<platform::ArbolAjustes> arbol_ =
        platform::crearArbolAjustes(*archivos_, propia_ + "/ajustes.ini");
    core::Ajustes ajustes_{*arbol_};
    core::Carpetas carpetas_{*archivos_, ajustes_, propia_};
    link::Contexto contexto_{*archivos_, ajustes_, carpetas_, *reloj_};
};

}  // namespace tarvoline::tools
