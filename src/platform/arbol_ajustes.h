// The settings tree: text values by product, section and key, kept per user, with a read-only one of the
// machine.
//
// All three names compare without regard to case. The store knows no defaults and gives blanks no meaning;
// that is the business of core/ajustes.h.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::platform {

struct ClaveAjuste {
    std::string producto;
    std::string seccion;
    std::string clave;
    bool operator==(const ClaveAjuste&) const = default;  // as spelled; the store compares folded names
};

struct Ajuste {
    ClaveAjuste donde;
    std::string valor;
};

// The store exists but cannot be read or written.
class ErrorAjustes : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class ArbolAjustes {
  public:
    virtual ~ArbolAjustes() = default;
    ArbolAjustes() = default;
    ArbolAjustes(const ArbolAjustes&) = delete;
    ArbolAjustes& operator=(const ArbolAjustes&) = delete;

    // The value as it stands now, another process's latest write included; nothing when the key is missing.
    virtual std::optional<std::string> leer(const ClaveAjuste& donde) = 0;
    // Whole or not at all, and safe against another process that writes at the same time.
    virtual void grabar(const ClaveAjuste& donde, std::string_view valor) = 0;
    // For a value that changes many times a second and of which an older one does no harm, such as the
    // position of a transfer: as grabar, but not forced to the device. Letters and digits only.
    virtual void grabarLigero(const ClaveAjuste& donde, std::string_view valor) { grabar(donde, valor); }
    virtual void borrar(const ClaveAjuste& donde) = 0;
    // All values, in the order of the store.
    virtual std::vector<Ajuste> listar() = 0;
    // Lines that could not be understood (kept as they are), for the log; emptied by the call until the file
    // has changed.
    virtual std::vector<std::string> lineasOmitidas() { return {}; }
};

// A per-user file `ruta` (mode 0600, folder 0700), created at the first write; platform/ajustes_texto.h tells
// its form. An unreadable file makes every member throw ErrorAjustes and is never overwritten. Writers wait
// for each other through `ruta`.bloqueo, up to ten seconds. May be used from several threads.
std::unique_ptr<ArbolAjustes> crearArbolAjustes(SistemaArchivos& archivos, std::string ruta);
// The machine-wide store: the same form, read only; grabar and borrar throw ErrorAjustes.
std::unique_ptr<ArbolAjustes> crearArbolMaquina(SistemaArchivos& archivos, std::string ruta);

}  // namespace tarvoline::platform
