// An open file of the file system in memory.
#include <algorithm>

#include "apoyo/nodo_memoria.h"

namespace tarvoline::pruebas::memoria {

namespace {

using namespace platform;

class ArchivoMemoria final : public Archivo {
  public:
    ArchivoMemoria(std::shared_ptr<Interior> interior, std::shared_ptr<Nodo> nodo, std::string ruta,
                   bool escribible, Comparticion comparticion)
        : interior_(std::move(interior)),
          nodo_(std::move(nodo)),
          ruta_(std::move(ruta)),
          escribible_(escribible),
          comparticion_(comparticion),
          arranque_(interior_->arranque) {}

    ~ArchivoMemoria() override {
        const std::lock_guard turno(interior_->mutex);
        std::erase_if(nodo_->cerrojos, [&](const Cerrojo& uno) { return uno.duenno == this; });
        interior_->liberado.notify_all();
    }

    // The system's mutex is held.
    void tomarCentinela() {
        longitudAlAbrir_ = nodo_->datos.size();
        if (comparticion_ == Comparticion::libre) return;
        const auto tipo =
            comparticion_ == Comparticion::exclusiva ? TipoBloqueo::exclusivo : TipoBloqueo::compartido;
        if (!intentar({byteCentinela, 1}, tipo)) fallar(error_archivo::permisoDenegado, ruta_);
    }

    std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) override {
        const auto turno = entrar();
        exigirLibre({posicion, destino.size()}, TipoBloqueo::compartido);
        if (posicion >= nodo_->datos.size()) return 0;
        const std::size_t n = std::min<std::size_t>(destino.size(), nodo_->datos.size() - posicion);
        std::copy_n(nodo_->datos.begin() + static_cast<std::ptrdiff_t>(posicion), n, destino.begin());
        return n;
    }

    void escribir(std::uint64_t posicion, std::span<const std::byte> origen) override {
        const auto turno = entrar();
        exigirEscritura();
        if (origen.empty()) return;
        exigirLibre({posicion, origen.size()}, TipoBloqueo::exclusivo);
        nodo_->cambiar({posicion, Bytes(origen.begin(), origen.end())});
        nodo_->modificado = interior_->tic();
    }

    std::uint64_t longitud() override {
        const auto turno = entrar();
        return nodo_->datos.size();
    }

    std::uint64_t longitudAlAbrir() override { return longitudAlAbrir_; }

    EstadoArchivo estado() override {
        const auto turno = entrar();
        return {false, nodo_->datos.size(), nodo_->modificado, 1, nodo_->identidad};
    }

    void truncar(std::uint64_t longitud) override {
        const auto turno = entrar();
        exigirEscritura();
        const std::uint64_t actual = nodo_->datos.size();
        const auto [desde, hasta] = std::minmax(actual, longitud);
        exigirLibre({desde, hasta - desde}, TipoBloqueo::exclusivo);
        nodo_->cambiar({longitud, std::nullopt});
        nodo_->modificado = interior_->tic();
    }

    void sincronizar() override {
        const auto turno = entrar();
        nodo_->asegurarContenido();
    }

    bool bloquear(Rango rango, TipoBloqueo tipo, std::chrono::milliseconds espera) override {
        auto turno = entrar();
        if (rango.longitud == 0) return true;
        if (tipo == TipoBloqueo::exclusivo) exigirEscritura();
        exigirRango(rango);
        const auto limite = std::chrono::steady_clock::now() + espera;
        return interior_->liberado.wait_until(turno, limite, [&] { return intentar(rango, tipo); });
    }

    void desbloquear(Rango rango) override {
        const auto turno = entrar();
        if (rango.longitud == 0) return;
        exigirRango(rango);
        nodo_->soltar(this, rango);
        interior_->liberado.notify_all();
    }

    bool podriaBloquear(Rango rango, TipoBloqueo tipo) override {
        const auto turno = entrar();
        if (rango.longitud == 0) return true;
        exigirRango(rango);
        return !nodo_->hayConflicto(this, rango, tipo);
    }

    bool esLocal() override { return true; }

  private:
    std::unique_lock<std::recursive_mutex> entrar() {
        std::unique_lock turno(interior_->mutex);
        if (arranque_ != interior_->arranque) fallar(error_archivo::dispositivo, ruta_);
        return turno;
    }

    bool intentar(Rango rango, TipoBloqueo tipo) {
        if (nodo_->hayConflicto(this, rango, tipo)) return false;
        nodo_->soltar(this, rango);
        nodo_->cerrojos.push_back({this, rango.desde, rango.desde + rango.longitud, tipo});
        return true;
    }

    void exigirEscritura() const {
        if (!escribible_) fallar(error_archivo::permisoDenegado, ruta_);
    }

    void exigirRango(Rango rango) const {
        constexpr std::uint64_t ultima = (std::uint64_t{1} << 63) - 1;
        const bool cabe = rango.desde <= ultima && rango.longitud <= ultima - rango.desde;
        if (!cabe) fallar(error_archivo::ruta, ruta_);
    }

    void exigirLibre(Rango rango, TipoBloqueo tipo) const {
        const bool probar = comparticion_ == Comparticion::compartida && rango.longitud != 0;
        if (probar && nodo_->hayConflicto(this, rango, tipo)) fallar(error_archivo::permisoDenegado, ruta_);
    }

    std::shared_ptr<Interior> interior_;
    std::shared_ptr<Nodo> nodo_;
    std::string ruta_;
    bool escribible_;
    Comparticion comparticion_;
    std::uint64_t longitudAlAbrir_ = 0;
    int arranque_;
};

}  // namespace

std::unique_ptr<Archivo> abrirNodo(std::shared_ptr<Interior> interior, std::shared_ptr<Nodo> nodo,
                                   std::string ruta, bool escribible, Comparticion comparticion) {
    auto archivo = std::make_unique<ArchivoMemoria>(std::move(interior), std::move(nodo), std::move(ruta),
                                                    escribible, comparticion);
    archivo->tomarCentinela();
    return archivo;
}

}  // namespace tarvoline::pruebas::memoria
