// An open file over a descriptor, with open-file-description locks.
#pragma once

#include <optional>
#include <string>

#include "platform/archivos.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/volumenes.h"

struct stat;

namespace tarvoline::platform::posix {

EstadoArchivo estadoDe(const struct ::stat& datos);

class ArchivoPosix final : public Archivo {
  public:
    // `escribible`: the caller of the open may write. `puedeExcluir`: the descriptor can, which is what the
    // system wants for an exclusive lock.
    struct Derechos {
        bool escribible = false;
        bool puedeExcluir = false;
    };
    ArchivoPosix(Descriptor descriptor, std::string ruta, Comparticion comparticion, Derechos derechos);

    // Takes the sentinel byte as the share mode wants it; false when another handle bars it.
    bool tomarCentinela();
    // What the opener has found out already.
    void tomarLongitud(std::uint64_t longitud) { longitudAlAbrir_ = longitud; }
    void tomarVolumen(const Volumen& volumen) { volumen_ = volumen; }
    const std::string& ruta() const { return ruta_; }
    int descriptor() const { return descriptor_.numero(); }

    std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) override;
    void escribir(std::uint64_t posicion, std::span<const std::byte> origen) override;
    std::uint64_t longitud() override;
    std::uint64_t longitudAlAbrir() override { return longitudAlAbrir_; }
    EstadoArchivo estado() override;
    void truncar(std::uint64_t longitud) override;
    void sincronizar() override;
    bool bloquear(Rango rango, TipoBloqueo tipo, std::chrono::milliseconds espera) override;
    void desbloquear(Rango rango) override;
    bool podriaBloquear(Rango rango, TipoBloqueo tipo) override;
    bool esLocal() override;

  private:
    void exigirEscritura() const;
    void exigirLibre(Rango rango, TipoBloqueo tipo);
    bool intentarBloqueo(Rango rango, short tipo);

    Descriptor descriptor_;
    std::string ruta_;
    Comparticion comparticion_;
    Derechos derechos_;
    std::uint64_t longitudAlAbrir_ = 0;
    std::optional<Volumen> volumen_;  // asked for when it is first needed
};

}  // namespace tarvoline::platform::posix
