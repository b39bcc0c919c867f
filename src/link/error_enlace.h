// What the link raises: a number, a source and a Spanish text for the user.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tarvoline::link {

inline constexpr std::uint32_t baseObjeto = 0x80040000U;

// Numbers of ErrorEnlace as callers see them.
namespace error_enlace {
inline constexpr std::uint32_t empresaNoExiste = baseObjeto + 50001;
inline constexpr std::uint32_t numeroNoValido = baseObjeto + 50002;
inline constexpr std::uint32_t fechaNoValida = baseObjeto + 50003;
inline constexpr std::uint32_t claveNoValida = baseObjeto + 50004;  // 0x8004C354
inline constexpr std::uint32_t empresaNoAbierta = baseObjeto + 50006;
inline constexpr std::uint32_t sinNumeroLibre = 50011;    // from the data layer, source "QZOLE"
inline constexpr std::uint32_t sinDirectorio = 50012;     // the same
inline constexpr std::uint32_t noInstalado = 50056;       // no source
inline constexpr std::uint32_t versionPosterior = 59999;  // no source
}  // namespace error_enlace

class ErrorEnlace : public std::runtime_error {
  public:
    ErrorEnlace(std::uint32_t numero, const std::string& descripcion,
                std::string fuente = "Veldorix OLE Server")
        : std::runtime_error(descripcion), numero_(numero), fuente_(std::move(fuente)) {}
    std::uint32_t numero() const { return numero_; }
    const std::string& fuente() const { return fuente_; }
    std::string descripcion() const { return what(); }

  private:
    std::uint32_t numero_;
    std::string fuente_;
};

}  // namespace tarvoline::link
