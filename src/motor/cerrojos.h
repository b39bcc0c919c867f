// The locks of key files, all of them: bytes far above the data, which nobody reads or writes.
//
//   sentinel   held shared by every open handle (share mode `acordada`), exclusively by who makes a file
//              anew or swaps it
//   turn       held shared by a reading command, exclusively by a writing one, for that one command
//   gate       passed on the way to the turn on network shares, where every reader takes the turn too:
//              while a writer waits behind the readers of the moment it keeps the gate, so no new one
//              overtakes it
//   inserting  of the data file, not the key file: held shared from before an insert until its record is
//              written, exclusively by who empties the key file; see CerrojoInsercion
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/archivos.h"

namespace tarvoline::motor {

inline constexpr std::uint64_t byteInsertando = platform::byteCentinela + 1;
inline constexpr std::uint64_t byteTurno = platform::byteCentinela + 2;
inline constexpr std::uint64_t bytePuerta = platform::byteCentinela + 3;

// The turn of one command. Waits as long as it takes: sections are short, and end with their process.
class Turno {
  public:
    // `archivo` is borrowed. `conPuerta`: on a network share. `mientras`, if any, runs once when somebody
    // else has the turn.
    Turno(platform::Archivo& archivo, platform::TipoBloqueo tipo, bool conPuerta,
          const std::function<void()>& mientras = {});
    ~Turno();
    Turno(const Turno&) = delete;
    Turno& operator=(const Turno&) = delete;

  private:
    platform::Archivo& archivo_;
};

// Held while a record is on its way: from before its number is drawn (I) until it stands in the data file.
// Who finds the data file empty sends M only while holding it exclusively, so that M cannot empty keys whose
// record is about to be written.
class CerrojoInsercion {
  public:
    // `datos` is the data file, borrowed. Tries for `espera`.
    CerrojoInsercion(platform::Archivo& datos, platform::TipoBloqueo tipo, std::chrono::milliseconds espera);
    ~CerrojoInsercion();
    CerrojoInsercion(const CerrojoInsercion&) = delete;
    CerrojoInsercion& operator=(const CerrojoInsercion&) = delete;
    bool tomado() const { return tomado_; }

  private:
    platform::Archivo& datos_;
    bool tomado_;
};

}  // namespace tarvoline::motor
