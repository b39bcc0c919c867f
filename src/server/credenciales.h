// The one-time credentials: what DTS hands out, and whether what comes back was made from it.
//
// A credential is the scrambled text of (what DTS gave) & (the user's password). Each text of DTS is good for
// one attempt, right or wrong, and for 15 minutes. They live in memory only: after a restart of the service a
// client's next call simply takes a new one. Thread-safe; memory is bounded whatever is asked.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/reloj.h"

namespace tarvoline::server {

class Credenciales {
  public:
    static constexpr std::chrono::minutes vida{15};
    static constexpr std::size_t longitudTexto = 16;
    // Of one address, so that nobody can push out what others were given; the oldest go first.
    static constexpr std::size_t maximoPorDireccion = 1024;
    static constexpr std::size_t maximoDirecciones = 4096;

    explicit Credenciales(const platform::Reloj& reloj) : reloj_(reloj) {}

    // A fresh text of 16 letters and digits for a client at `direccion`.
    std::string DTS(const std::string& direccion);
    // Whether `credencial` was made from a text that was handed out, is unused and alive, and from `clave`.
    // Uses that text up in any case.
    bool comprobar(std::string_view credencial, std::string_view clave);

  private:
    using Instante = std::chrono::system_clock::time_point;
    struct Entregado {
        Instante caduca;
        std::string direccion;
    };
    void recortar(const std::string& direccion);
    bool gastar(const std::string& texto);

    const platform::Reloj& reloj_;
    std::mutex cerrojo_;
    std::unordered_map<std::string, Entregado> vivos_;
    std::unordered_map<std::string, std::deque<std::string>> porDireccion_;  // in order of age, used ones too
};

// Who proved himself from which address in the last ten minutes. Two operations carry no credential and are
// answered only on that ground. Thread-safe, bounded.
class Identificados {
  public:
    static constexpr std::chrono::minutes vida{10};
    static constexpr std::size_t maximo = 16384;

    explicit Identificados(const platform::Reloj& reloj) : reloj_(reloj) {}

    void anotar(const std::string& direccion, std::int64_t usuario);
    bool reciente(const std::string& direccion, std::int64_t usuario);

  private:
    using Instante = std::chrono::system_clock::time_point;
    const platform::Reloj& reloj_;
    std::mutex cerrojo_;
    std::unordered_map<std::string, Instante> vistos_;  // "address user"
};

// Counts wrong credentials by address, so that passwords cannot be tried at full speed. Thread-safe, bounded.
class FrenoFallos {
  public:
    static constexpr std::chrono::minutes vida{10};
    static constexpr int gratis = 5;
    static constexpr std::size_t maximo = 4096;

    explicit FrenoFallos(const platform::Reloj& reloj) : reloj_(reloj) {}

    // How long to wait before this failure is answered: nothing at first, then longer and longer, up to 2 s.
    std::chrono::milliseconds fallo(const std::string& direccion);

  private:
    using Instante = std::chrono::system_clock::time_point;
    struct Cuenta {
        int fallos = 0;
        Instante ultimo;
    };
    const platform::Reloj& reloj_;
    std::mutex cerrojo_;
    std::unordered_map<std::string, Cuenta> cuentas_;
};

}  // namespace tarvoline::server
