// What all sessions of one process share: the record layer with the company in force, the settings, folders
// and files that it works with, and the currency.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tarvoline/exportar.h"

namespace tarvoline {
namespace platform {
class SistemaArchivos;
class Reloj;
}  // namespace platform
namespace core {
class Ajustes;
class Carpetas;
}  // namespace core
namespace data {
struct CapaDatos;
}  // namespace data
}  // namespace tarvoline

namespace tarvoline::link {

// One thread. It must outlive the Enlace objects made on it.
class TARVOLINE_PUBLICO Contexto {
  public:
    // Works with the settings, folders and files of this user, as the programs do.
    Contexto();
    // Works with those of the caller, which are borrowed and must outlive this object.
    Contexto(platform::SistemaArchivos& archivos, core::Ajustes& ajustes, core::Carpetas& carpetas,
             platform::Reloj& reloj);
    ~Contexto();
    Contexto(const Contexto&) = delete;
    Contexto& operator=(const Contexto&) = delete;

    // Takes the boxes that the record layer shows, title ("" as a rule) and text. Without it they go to
    // standard error.
    void alMostrar(std::function<void(const std::string& titulo, const std::string& texto)> mostrar);
    // Takes what was passed over without an error. Without it, too, it goes to standard error.
    void alAvisar(std::function<void(const std::string& texto)> avisar);

    // For the program itself.
    struct Interior;
    Interior& interior() { return *interior_; }
    data::CapaDatos& datos();

  private:
    std::unique_ptr<Interior> interior_;
};

}  // namespace tarvoline::link
