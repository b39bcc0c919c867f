// An open file over a descriptor, with open-file-description locks.
#pragma once

#include <string>

#include "platform/archivos.h"
#include "platform/posix/descriptor.h"

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

    // Takes the sentinel byte as the share mode wants it; throws permisoDenegado when another handle bars it.
    void tomarCentinela();

    std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) override;
    void escribir(std::uint64_t posicion, std::span<const std::byte> origen) override;
    std::uint64_t longitud() override;
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
};

}  // namespace tarvoline::platform::posix
