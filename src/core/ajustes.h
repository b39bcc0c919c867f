// Settings of the user's tree, with the rules that all callers share: a stored single blank means "no value",
// the words "Verdadero" and "Falso" are Booleans, no product means "Veldorix", no section means "Settings".
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/arbol_ajustes.h"

namespace tarvoline::core {

// What the person is told when a setting cannot be written. The text promises an end that does not come: the
// work in hand is worth more than the setting.
inline constexpr std::string_view avisoSinGrabar = "Unable to Create/Open SubKey.\rVeldorix will now abort.";

// A value as read: text or Boolean, convertible to both text and number.
class ValorAjuste {
  public:
    ValorAjuste(std::string texto) : valor_(std::move(texto)) {}
    explicit ValorAjuste(bool logico) : valor_(logico) {}
    bool esLogico() const { return std::holds_alternative<bool>(valor_); }
    std::string texto() const;  // a Boolean gives "Verdadero" or "Falso"
    double numero() const;      // a Boolean gives -1 or 0; text as Val reads it

  private:
    std::variant<std::string, bool> valor_;
};

class Ajustes {
  public:
    // `maquina` may be null: then there is no machine-wide section. Both are borrowed and must outlive this
    // object.
    explicit Ajustes(platform::ArbolAjustes& usuario, platform::ArbolAjustes* maquina = nullptr)
        : usuario_(usuario), maquina_(maquina) {}

    // Missing, empty or a single blank: `defecto`, as it stands. Throws platform::ErrorAjustes when the store
    // cannot be read.
    ValorAjuste LeerRegistro(std::string_view clave, std::string_view seccion = {},
                             std::string_view defecto = {}, std::string_view producto = {}) const;
    // An empty value is stored as one blank. Throws platform::ErrorAjustes when the store cannot be written.
    void GrabarRegistro(std::string_view clave, std::string_view valor, std::string_view seccion = {},
                        std::string_view producto = {});

    // GrabarRegistro for a value that changes many times a second (platform::ArbolAjustes::grabarLigero).
    void grabarLigero(std::string_view clave, std::string_view valor, std::string_view seccion,
                      std::string_view producto) {
        usuario_.grabarLigero(donde(clave, seccion, producto), valor);
    }

    // LeerRegistro as text.
    std::string leer(std::string_view clave, std::string_view seccion = {}, std::string_view defecto = {},
                     std::string_view producto = {}) const {
        return LeerRegistro(clave, seccion, defecto, producto).texto();
    }
    // A setting that holds a folder: a missing final separator is added, an empty one stays empty.
    std::string leerCarpeta(std::string_view clave, std::string_view producto = {}) const;

    // The flag that falls back to the machine-wide section when the user's key is missing.
    void usarMaquina(bool usar) { usarMaquina_ = usar; }
    platform::ArbolAjustes& arbol() { return usuario_; }

    static platform::ClaveAjuste donde(std::string_view clave, std::string_view seccion,
                                       std::string_view producto);

  private:
    platform::ArbolAjustes& usuario_;
    platform::ArbolAjustes* maquina_;
    bool usarMaquina_ = false;
};

}  // namespace tarvoline::core
