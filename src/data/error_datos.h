// What the data layer raises on its own account. Failures of the file system pass through as
// platform::ErrorArchivo.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tarvoline::data {

namespace error_datos {
inline constexpr std::uint32_t sinNumeroLibre = 50011;  // 99 companies in one directory
inline constexpr std::uint32_t sinDirectorio = 50012;   // nowhere to put a company
}  // namespace error_datos

// Number, source and a text for the user; callers of the link get all three unchanged.
class ErrorDatos : public std::runtime_error {
  public:
    ErrorDatos(std::uint32_t numero, const std::string& descripcion, std::string fuente = "QZOLE")
        : std::runtime_error(descripcion), numero_(numero), fuente_(std::move(fuente)) {}
    std::uint32_t numero() const { return numero_; }
    const std::string& fuente() const { return fuente_; }

  private:
    std::uint32_t numero_;
    std::string fuente_;
};

}  // namespace tarvoline::data
