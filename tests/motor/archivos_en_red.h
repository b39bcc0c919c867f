// The real file system as a network share shows it: nobody may rely on seeing at once what others write, so
// every reader of a key file takes the turn.
#pragma once

#include "platform/archivos.h"

namespace tarvoline::pruebas {

class ArchivosEnRed final : public platform::SistemaArchivos {
  public:
    std::unique_ptr<platform::Archivo> abrir(std::string_view ruta, platform::Apertura apertura,
                                             platform::Comparticion comparticion,
                                             unsigned permisos) override {
        return std::make_unique<EnRed>(base_->abrir(ruta, apertura, comparticion, permisos));
    }
    std::optional<platform::EstadoArchivo> estado(std::string_view ruta) override {
        return base_->estado(ruta);
    }
    void borrar(std::string_view ruta) override { base_->borrar(ruta); }
    void renombrar(std::string_view de, std::string_view a) override { base_->renombrar(de, a); }
    void crearDirectorios(std::string_view ruta, unsigned modo) override {
        base_->crearDirectorios(ruta, modo);
    }
    void borrarDirectorio(std::string_view ruta) override { base_->borrarDirectorio(ruta); }
    std::vector<platform::EntradaDirectorio> listar(std::string_view ruta) override {
        return base_->listar(ruta);
    }
    std::uint64_t espacioLibre(std::string_view ruta) override { return base_->espacioLibre(ruta); }
    void sincronizarDirectorio(std::string_view ruta) override { base_->sincronizarDirectorio(ruta); }
    std::string resolver(std::string_view ruta) override { return base_->resolver(ruta); }

  private:
    class EnRed final : public platform::Archivo {
      public:
        explicit EnRed(std::unique_ptr<platform::Archivo> base) : base_(std::move(base)) {}
        std::size_t leer(std::uint64_t p, std::span<std::byte> d) override { return base_->leer(p, d); }
        void escribir(std::uint64_t p, std::span<const std::byte> o) override { base_->escribir(p, o); }
        std::uint64_t longitud() override { return base_->longitud(); }
        std::uint64_t longitudAlAbrir() override { return base_->longitudAlAbrir(); }
        platform::EstadoArchivo estado() override { return base_->estado(); }
        void truncar(std::uint64_t l) override { base_->truncar(l); }
        void sincronizar() override { base_->sincronizar(); }
        bool bloquear(platform::Rango r, platform::TipoBloqueo t, std::chrono::milliseconds e) override {
            return base_->bloquear(r, t, e);
        }
        void desbloquear(platform::Rango r) override { base_->desbloquear(r); }
        bool podriaBloquear(platform::Rango r, platform::TipoBloqueo t) override {
            return base_->podriaBloquear(r, t);
        }

      private:
        std::unique_ptr<platform::Archivo> base_;
    };
    std::unique_ptr<platform::SistemaArchivos> base_ = platform::crearSistemaArchivos();
};

}  // namespace tarvoline::pruebas
