#include "apoyo/archivos_defectuosos.h"

#include <algorithm>
#include <optional>

#include "platform/rutas.h"

namespace tarvoline::pruebas {

using namespace platform;

// An open file of the faulty system.
class ArchivosDefectuosos::Abierto final : public Archivo {
  public:
    Abierto(ArchivosDefectuosos& sistema, std::unique_ptr<Archivo> base, std::string ruta)
        : sistema_(sistema), base_(std::move(base)), ruta_(std::move(ruta)) {}

    std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) override {
        entrar(Operacion::leer);
        return base_->leer(posicion, destino);
    }

    void escribir(std::uint64_t posicion, std::span<const std::byte> origen) override {
        entrar(Operacion::escribir);
        auto& cortes = sistema_.cortes_;
        std::optional<Corte> corte;
        for (Corte& uno : cortes) {
            if (--uno.vez == 0) corte = uno;
        }
        std::erase_if(cortes, [](const Corte& uno) { return uno.vez == 0; });
        const std::size_t porCorte = corte ? std::min(corte->bytes, origen.size()) : origen.size();
        const std::size_t porDisco = cabe(posicion, porCorte);
        const bool lleno = porDisco < porCorte;
        poner(posicion, origen.first(porDisco));
        if (lleno) lanzar(error_archivo::discoLleno);
        if (corte) lanzar(corte->numero);
    }

    std::uint64_t longitud() override {
        exigirVivo();
        return base_->longitud();
    }

    std::uint64_t longitudAlAbrir() override { return base_->longitudAlAbrir(); }

    EstadoArchivo estado() override {
        exigirVivo();
        return base_->estado();
    }

    void truncar(std::uint64_t longitud) override {
        entrar(Operacion::truncar);
        const std::uint64_t antes = base_->longitud();
        base_->truncar(longitud);
        if (longitud < antes) sistema_.devolver(antes - longitud);
        sistema_.cambiado();
    }

    void sincronizar() override {
        entrar(Operacion::sincronizar);
        // The change at which the power goes never reaches the device.
        if (!sistema_.cortaAhora()) base_->sincronizar();
        sistema_.cambiado();
    }

    bool bloquear(Rango rango, TipoBloqueo tipo, std::chrono::milliseconds espera) override {
        entrar(Operacion::bloquear);
        return base_->bloquear(rango, tipo, espera);
    }

    void desbloquear(Rango rango) override {
        exigirVivo();
        base_->desbloquear(rango);
    }

    bool podriaBloquear(Rango rango, TipoBloqueo tipo) override {
        exigirVivo();
        return base_->podriaBloquear(rango, tipo);
    }

    bool esLocal() override { return base_->esLocal(); }

  private:
    void exigirVivo() const {
        if (sistema_.sinCorriente_) throw CorteDeCorriente();
    }

    void entrar(Operacion operacion) {
        exigirVivo();
        sistema_.entrar(operacion, ruta_);
    }

    [[noreturn]] void lanzar(int numero) const {
        throw ErrorArchivo(numero, ruta_, ruta_ + ": injected error " + std::to_string(numero));
    }

    // How many of the bytes the disk takes; their growth is taken off what is left.
    std::size_t cabe(std::uint64_t posicion, std::size_t bytes) {
        if (!sistema_.libres_) return bytes;
        std::uint64_t& libres = *sistema_.libres_;
        const std::uint64_t longitud = base_->longitud();
        const std::uint64_t fin = posicion + bytes;
        const std::uint64_t crece = fin > longitud ? fin - std::max(longitud, std::min(posicion, fin)) : 0;
        const std::uint64_t falta = crece > libres ? crece - libres : 0;
        libres -= crece - falta;
        return bytes - static_cast<std::size_t>(falta);
    }

    void poner(std::uint64_t posicion, std::span<const std::byte> bytes) {
        base_->escribir(posicion, bytes);
        sistema_.cambiado();
    }

    ArchivosDefectuosos& sistema_;
    std::unique_ptr<Archivo> base_;
    std::string ruta_;
};

void ArchivosDefectuosos::fallar(Fallo fallo) {
    fallos_.push_back(std::move(fallo));
}

void ArchivosDefectuosos::cortarEscritura(int vez, std::size_t bytes, int numero) {
    cortes_.push_back({vez, bytes, numero});
}

void ArchivosDefectuosos::sanar() {
    fallos_.clear();
    cortes_.clear();
    libres_.reset();
}

int ArchivosDefectuosos::cuenta(Operacion operacion) const {
    const auto sitio = cuentas_.find(operacion);
    return sitio == cuentas_.end() ? 0 : sitio->second;
}

void ArchivosDefectuosos::entrar(Operacion operacion, std::string_view ruta) {
    if (sinCorriente_) throw CorteDeCorriente();
    if (antes_) antes_(operacion, std::string(ruta));
    const std::lock_guard turno(mutex_);
    ++cuentas_[operacion];
    std::optional<int> numero;
    for (Fallo& fallo : fallos_) {
        if (fallo.operacion != operacion || !coincideMascara(nombreDe(ruta), fallo.mascara)) continue;
        if (fallo.vez > 0) --fallo.vez;
        if (fallo.vez == 0 && !numero) numero = fallo.numero;
    }
    std::erase_if(fallos_, [](const Fallo& fallo) { return fallo.vez == 0 && !fallo.siempre; });
    if (numero) {
        const std::string texto(ruta);
        throw ErrorArchivo(*numero, texto, texto + ": injected error " + std::to_string(*numero));
    }
}

void ArchivosDefectuosos::cambiado() {
    if (cortaAhora()) {
        sinCorriente_ = true;
        throw CorteDeCorriente();
    }
    if (cortarEn_ > 0) --cortarEn_;
}

void ArchivosDefectuosos::devolver(std::uint64_t bytes) {
    if (libres_) *libres_ += bytes;
}

std::uint64_t ArchivosDefectuosos::longitudDe(std::string_view ruta) {
    const auto estado = base_.estado(ruta);
    return estado && !estado->esDirectorio ? estado->longitud : 0;
}

std::unique_ptr<Archivo> ArchivosDefectuosos::abrir(std::string_view ruta, Apertura apertura,
                                                    Comparticion comparticion, unsigned permisos) {
    entrar(Operacion::abrir, ruta);
    const std::string propia = base_.resolver(ruta);
    const bool escribe = apertura != Apertura::lectura;
    const auto antes = base_.estado(propia);
    auto base = base_.abrir(propia, apertura, comparticion, permisos);
    if (apertura == Apertura::vaciar && antes) devolver(antes->longitud);
    const bool creado = escribe && !antes;
    const bool vaciado = apertura == Apertura::vaciar && antes && antes->longitud != 0;
    auto abierto = std::make_unique<Abierto>(*this, std::move(base), propia);
    if (creado || vaciado) cambiado();
    return abierto;
}

std::optional<EstadoArchivo> ArchivosDefectuosos::estado(std::string_view ruta) {
    entrar(Operacion::estado, ruta);
    return base_.estado(ruta);
}

void ArchivosDefectuosos::borrar(std::string_view ruta) {
    entrar(Operacion::borrar, ruta);
    const std::string propia = base_.resolver(ruta);
    const std::uint64_t bytes = longitudDe(propia);
    base_.borrar(propia);
    devolver(bytes);
    cambiado();
}

void ArchivosDefectuosos::renombrar(std::string_view origen, std::string_view destino) {
    entrar(Operacion::renombrar, destino);
    const std::string desde = base_.resolver(origen);
    const std::string hasta = base_.resolver(destino);
    const std::uint64_t reemplazado = desde == hasta ? 0 : longitudDe(hasta);
    base_.renombrar(desde, destino);
    devolver(reemplazado);
    cambiado();
}

void ArchivosDefectuosos::crearDirectorios(std::string_view ruta, unsigned modo) {
    entrar(Operacion::crearDirectorios, ruta);
    const std::string propia = base_.resolver(ruta);
    const bool estaba = base_.estado(propia).has_value();
    base_.crearDirectorios(propia, modo);
    if (!estaba) cambiado();
}

void ArchivosDefectuosos::borrarDirectorio(std::string_view ruta) {
    entrar(Operacion::borrarDirectorio, ruta);
    const std::string propia = base_.resolver(ruta);
    base_.borrarDirectorio(propia);
    cambiado();
}

std::vector<EntradaDirectorio> ArchivosDefectuosos::listar(std::string_view directorio) {
    entrar(Operacion::listar, directorio);
    return base_.listar(directorio);
}

std::uint64_t ArchivosDefectuosos::espacioLibre(std::string_view ruta) {
    entrar(Operacion::espacioLibre, ruta);
    return libres_ ? *libres_ : base_.espacioLibre(ruta);
}

void ArchivosDefectuosos::sincronizarDirectorio(std::string_view ruta) {
    entrar(Operacion::sincronizarDirectorio, ruta);
    const std::string propia = base_.resolver(ruta);
    if (!cortaAhora()) base_.sincronizarDirectorio(propia);
    cambiado();
}

std::string ArchivosDefectuosos::resolver(std::string_view ruta) {
    if (sinCorriente_) throw CorteDeCorriente();
    return base_.resolver(ruta);
}

}  // namespace tarvoline::pruebas
