// The second-instance test, over two bytes of one lock file:
//
//   presence   every instance holds it shared while it lives
//   gate       held exclusively by the one process that is asking to be the only one
//
// The asker takes the gate, then tries to turn its own shared presence into an exclusive one, a single step
// of the system. Granted: nobody else is there, and it goes back to shared, again one step, so at no moment
// is it unmarked. Refused: it gives its presence up, since it is about to end. So of several processes that
// start and ask at once exactly one stays: whoever passes the gate last finds either one that stayed, or
// nobody.
#include <chrono>
#include <utility>

#include "platform/procesos.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

namespace {

constexpr Rango presencia{0, 1};
constexpr Rango puerta{1, 1};
// Both bytes are held exclusively for microseconds; a process stopped in just that moment is not waited for.
constexpr std::chrono::milliseconds esperaMaxima{5'000};

class MarcaEnArchivo final : public MarcaInstancia {
  public:
    explicit MarcaEnArchivo(std::unique_ptr<Archivo> archivo) : archivo_(std::move(archivo)) {}

    bool hayOtra() override {
        return !archivo_->podriaBloquear(presencia, TipoBloqueo::exclusivo) ||
               !archivo_->podriaBloquear(puerta, TipoBloqueo::exclusivo);
    }

    bool soyLaUnica() override {
        if (!archivo_->bloquear(puerta, TipoBloqueo::exclusivo, esperaMaxima)) return false;
        const bool unica = archivo_->bloquear(presencia, TipoBloqueo::exclusivo);
        if (unica) {
            archivo_->bloquear(presencia, TipoBloqueo::compartido);
        } else {
            archivo_->desbloquear(presencia);
        }
        archivo_->desbloquear(puerta);
        return unica;
    }

  private:
    std::unique_ptr<Archivo> archivo_;
};

}  // namespace

std::unique_ptr<MarcaInstancia> crearMarcaInstancia(SistemaArchivos& archivos, const std::string& ruta) {
    archivos.crearDirectorios(carpetaDe(ruta), 0700);
    auto archivo = archivos.abrir(ruta, Apertura::crear, Comparticion::libre, 0600);
    if (!archivo->bloquear(presencia, TipoBloqueo::compartido, esperaMaxima)) {
        throw ErrorArchivo(error_archivo::permisoDenegado, ruta, ruta + ": otro proceso lo tiene ocupado");
    }
    return std::make_unique<MarcaEnArchivo>(std::move(archivo));
}

}  // namespace tarvoline::platform
