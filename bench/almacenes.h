// The engines of bench_motor behind one face: a table of four keys, one atomic command at a time.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvoline::bench {

using Textos = std::array<std::string, 4>;
inline constexpr std::array<unsigned, 4> anchos{12, 16, 30, 12};

class Almacen {
  public:
    virtual ~Almacen() = default;
    // Draws the next record number and makes an entry in each key.
    virtual void insertar(const Textos& textos) = 0;
    virtual void borrar(std::uint32_t registro, const Textos& textos) = 0;
    // True for an exact hit; otherwise the neighbour has been read.
    virtual bool buscar(unsigned clave, const std::string& texto) = 0;
    // From the first entry to the last, one command each; tells how many.
    virtual std::size_t recorrer(unsigned clave) = 0;
    virtual double megas() = 0;
};

// Nine small files of the same kind.
class Nueve {
  public:
    virtual ~Nueve() = default;
    virtual void crear() = 0;
    virtual void abrirYCerrar() = 0;
};

using Fabrica = std::unique_ptr<Almacen> (*)(const std::string& carpeta, bool nuevo);
using FabricaNueve = std::unique_ptr<Nueve> (*)(const std::string& carpeta);

struct Rival {
    const char* nombre;
    Fabrica fabrica;
    FabricaNueve fabricaNueve;
};

Rival rivalMotor();
Rival rivalSqliteDiario();
Rival rivalSqliteWal();
Rival rivalLmdb();
Rival rivalBerkeley();

// This project's own first.
inline std::vector<Rival> todosLosRivales() {
    return {rivalMotor(), rivalSqliteDiario(), rivalSqliteWal(), rivalLmdb(), rivalBerkeley()};
}

}  // namespace tarvoline::bench
