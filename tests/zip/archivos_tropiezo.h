// A file system that stumbles: the wrapped one, with a hook before every change and every read, for use from
// several threads at once.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/archivos.h"

namespace tarvoline::pruebas {

enum class Suceso { abrir, leer, escribir, truncar, sincronizar, renombrar };

// `antes` is called from whichever thread does the work; what it throws is the failure.
class ArchivosTropiezo final : public platform::SistemaArchivos {
  public:
    using Gancho = std::function<void(Suceso, const std::string& ruta)>;
    ArchivosTropiezo(platform::SistemaArchivos& debajo, Gancho antes)
        : debajo_(debajo), antes_(std::move(antes)) {}

    std::unique_ptr<platform::Archivo> abrir(std::string_view ruta, platform::Apertura apertura,
                                             platform::Comparticion comparticion,
                                             unsigned permisos) override {
        antes_(Suceso::abrir, std::string(ruta));
        return std::make_unique<Abierto>(*this, std::string(ruta),
                                         debajo_.abrir(ruta, apertura, comparticion, permisos));
    }
    std::optional<platform::EstadoArchivo> estado(std::string_view ruta) override {
        return debajo_.estado(ruta);
    }
    void borrar(std::string_view ruta) override { debajo_.borrar(ruta); }
    void renombrar(std::string_view origen, std::string_view destino) override {
        antes_(Suceso::renombrar, std::string(origen));
        debajo_.renombrar(origen, destino);
    }
    void crearDirectorios(std::string_view ruta, unsigned modo) override {
        debajo_.crearDirectorios(ruta, modo);
    }
    void borrarDirectorio(std::string_view ruta) override { debajo_.borrarDirectorio(ruta); }
    std::vector<platform::EntradaDirectorio> listar(std::string_view directorio) override {
        return debajo_.listar(directorio);
    }
    std::uint64_t espacioLibre(std::string_view ruta) override { return debajo_.espacioLibre(ruta); }
    void sincronizarDirectorio(std::string_view ruta) override { debajo_.sincronizarDirectorio(ruta); }
    std::string resolver(std::string_view ruta) override { return debajo_.resolver(ruta); }

  private:
    class Abierto final : public platform::Archivo {
      public:
        Abierto(ArchivosTropiezo& dueno, std::string ruta, std::unique_ptr<platform::Archivo> debajo)
            : dueno_(dueno), ruta_(std::move(ruta)), debajo_(std::move(debajo)) {}
        std::size_t leer(std::uint64_t posicion, std::span<std::byte> destino) override {
            dueno_.antes_(Suceso::leer, ruta_);
            return debajo_->leer(posicion, destino);
        }
        void escribir(std::uint64_t posicion, std::span<const std::byte> origen) override {
            dueno_.antes_(Suceso::escribir, ruta_);
            debajo_->escribir(posicion, origen);
        }
        std::uint64_t longitud() override { return debajo_->longitud(); }
        platform::EstadoArchivo estado() override { return debajo_->estado(); }
        void truncar(std::uint64_t longitud) override {
            dueno_.antes_(Suceso::truncar, ruta_);
            debajo_->truncar(longitud);
        }
        void sincronizar() override {
            dueno_.antes_(Suceso::sincronizar, ruta_);
            debajo_->sincronizar();
        }
        bool bloquear(platform::Rango rango, platform::TipoBloqueo tipo,
                      std::chrono::milliseconds espera) override {
            return debajo_->bloquear(rango, tipo, espera);
        }
        void desbloquear(platform::Rango rango) override { debajo_->desbloquear(rango); }
        bool podriaBloquear(platform::Rango rango, platform::TipoBloqueo tipo) override {
            return debajo_->podriaBloquear(rango, tipo);
        }

      private:
        ArchivosTropiezo& dueno_;
        std::string ruta_;
        std::unique_ptr<platform::Archivo> debajo_;
    };

    platform::SistemaArchivos& debajo_;
    Gancho antes_;
};

}  // namespace tarvoline::pruebas
