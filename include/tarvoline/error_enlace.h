// What the link raises: a number, a source and a Spanish text for the user.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "tarvoline/exportar.h"

namespace tarvoline::link {

inline constexpr std::uint32_t baseObjeto = 0x80040000U;

// Numbers of ErrorEnlace as callers see them.
namespace error_enlace {
inline constexpr std::uint32_t empresaNoExiste = baseObjeto + 50001;
inline constexpr std::uint32_t numeroNoValido = baseObjeto + 50002;
inline constexpr std::uint32_t fechaNoValida = baseObjeto + 50003;
inline constexpr std::uint32_t claveNoValida = baseObjeto + 50004;  // 0x8004C354
inline constexpr std::uint32_t empresaNoAbierta = baseObjeto + 50006;
inline constexpr std::uint32_t errorEnIva = baseObjeto + 50007;      // the entry has been stored
inline constexpr std::uint32_t analiticaSinApunte = 50008;           // the entry has been stored
inline constexpr std::uint32_t errorIndexados = baseObjeto + 50010;  // or what the service answered
inline constexpr std::uint32_t tipoIvaNoExiste = 50011;              // the entry has been stored
inline constexpr std::uint32_t sinNumeroLibre = 50011;               // source "QZOLE"
inline constexpr std::uint32_t sinDirectorio = 50012;                // source "QZOLE"
inline constexpr std::uint32_t noDisponible = baseObjeto + 50013;    // or what the service answered
inline constexpr std::uint32_t soloEnRemoto = baseObjeto + 50015;
inline constexpr std::uint32_t soloAdministradores = baseObjeto + 50016;
inline constexpr std::uint32_t sinTercero = 50020;  // the cash-basis members: no customer or supplier
inline constexpr std::uint32_t facturaNoExiste = 50021;
inline constexpr std::uint32_t importeCero = 50022;
inline constexpr std::uint32_t sinCuentaContable = 50023;
inline constexpr std::uint32_t claveOperacionIncorrecta = 50024;
inline constexpr std::uint32_t medioCobroIncorrecto = 50025;
inline constexpr std::uint32_t sinDescripcionMedio = 50026;
inline constexpr std::uint32_t superaFactura = 50026;
inline constexpr std::uint32_t superaRestante = 50027;
inline constexpr std::uint32_t sinCuentasIva = 50027;
inline constexpr std::uint32_t sinGuid = 50200;                        // no source
inline constexpr std::uint32_t registroRehusado = baseObjeto + 60000;  // the registers, Util_...
inline constexpr std::uint32_t noInstalado = 50056;                    // no source
inline constexpr std::uint32_t entradaRehusada = 50900;                // no source
inline constexpr std::uint32_t soloPdf = 55000;                        // the entry has been stored
inline constexpr std::uint32_t versionPosterior = 59999;               // no source
}  // namespace error_enlace

class TARVOLINE_PUBLICO ErrorEnlace : public std::runtime_error {
  public:
    static constexpr const char* fuenteOrdinaria = "Veldorix OLE Server";

    ErrorEnlace(std::uint32_t numero, const std::string& descripcion, std::string fuente = fuenteOrdinaria)
        : std::runtime_error(descripcion), numero_(numero), fuente_(std::move(fuente)) {}
    std::uint32_t numero() const { return numero_; }
    const std::string& fuente() const { return fuente_; }  // "" for the numbers that have none
    std::string descripcion() const { return what(); }

  private:
    std::uint32_t numero_;
    std::string fuente_;
};

}  // namespace tarvoline::link
