// The raw scan of a data file. Positions in the file and in a block count from 1 here, as the arithmetic of a
// hit does.
#include <algorithm>
#include <array>

#include "data/buscar_bytes.h"
#include "data/tablas.h"
#include "data/tablas_insistir.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr std::uint64_t bytesBloque = 65535;

// What is looked for in a block. `segundo`, when there is one, is always searched as it is written.
class Objetivo {
  public:
    Objetivo(std::string_view texto, bool ignorarMayusculas, bool dosTextos)
        : primero_(dosTextos ? texto.substr(0, texto.size() / 2) : texto),
          segundo_(texto.substr(texto.size() - texto.size() / 2)),
          dosTextos_(dosTextos),
          ignorarMayusculas_(ignorarMayusculas) {
        if (!ignorarMayusculas) return;
        primero_ = MayusculasAnsi(primero_);
        std::string todos(mayusculas_.size(), '\0');
        for (std::size_t i = 0; i < todos.size(); ++i)
            todos[i] = static_cast<char>(i);
        std::ranges::copy(MayusculasAnsi(todos), mayusculas_.begin());
    }

    std::size_t longitud() const { return primero_.size(); }

    void ponerBloque(std::string_view bloque) {
        bloque_ = bloque;
        if (!ignorarMayusculas_) return;
        plegado_.resize(bloque.size());
        std::ranges::transform(bloque, plegado_.begin(),
                               [&](char c) { return mayusculas_[static_cast<unsigned char>(c)]; });
    }

    // The first hit at or behind `cursor`, both from 1; 0 when there is none.
    std::size_t buscar(std::size_t cursor) const {
        const std::string_view propio = ignorarMayusculas_ ? std::string_view(plegado_) : bloque_;
        std::size_t lugar = buscarBytes(propio, primero_, cursor - 1);
        // npos is the greatest of all, and one more gives 0.
        if (dosTextos_) lugar = std::min(lugar, buscarBytes(bloque_, segundo_, cursor - 1));
        return lugar + 1;
    }

  private:
    std::string primero_;
    std::string segundo_;
    bool dosTextos_;
    bool ignorarMayusculas_;
    std::string_view bloque_;
    std::string plegado_;
    std::array<char, 256> mayusculas_{};
};

// The record that a hit counts as, or 0 when it does not lie wholly in the field. `posicion`: of the block in
// the file; `hallazgo`: of the hit in the block.
std::int64_t registroDe(std::uint64_t posicion, std::size_t hallazgo, std::int64_t longitudRegistro,
                        const CampoTabla& campo, std::size_t longitudTexto) {
    const auto suma = static_cast<std::int64_t>(posicion + hallazgo);
    const std::int64_t registro = suma / longitudRegistro + 1;
    const std::int64_t enRegistro = suma - (registro - 1) * longitudRegistro - 1;
    const std::int64_t desde = campo.desplazamiento + 1;
    const std::int64_t hasta = desde + campo.bytes;
    const bool dentro = enRegistro >= desde && enRegistro + static_cast<std::int64_t>(longitudTexto) <= hasta;
    return dentro ? registro : 0;
}

}  // namespace

std::int32_t Tablas::BuscarEnTabla(Busqueda& busqueda, int tabla, int campo, std::string_view texto,
                                   bool ignorarMayusculas, bool dosTextos) {
    if (!capa_.enVigor.abierta()) return 0;
    Ranura& ranura = abiertaOError(tabla);
    const CampoTabla& elCampo = campoDe(tabla, campo);
    const auto longitud = static_cast<std::uint64_t>(ranura.definicion->gLongitudRegistro);
    if (busqueda.continuar == 0) busqueda.posicion = 1;
    busqueda.continuar = 1;
    Objetivo objetivo(texto, ignorarMayusculas, dosTextos);
    const std::uint64_t bytes = std::max<std::uint64_t>(1, bytesBloque / longitud) * longitud;
    for (;; busqueda.posicion += bytes) {
        busqueda.bloque.resize(bytes);
        std::size_t leidos = 0;
        insistir(*ranura.archivo, {busqueda.posicion - 1, bytes}, platform::TipoBloqueo::compartido, [&] {
            leidos = ranura.archivo->leer(busqueda.posicion - 1,
                                          std::as_writable_bytes(std::span(busqueda.bloque)));
        });
        objetivo.ponerBloque(std::string_view(busqueda.bloque).substr(0, leidos - leidos % longitud));
        std::size_t cursor = 1;
        while (const std::size_t hallazgo = objetivo.buscar(cursor)) {
            const std::int64_t registro =
                registroDe(busqueda.posicion, hallazgo, ranura.definicion->gLongitudRegistro, elCampo,
                           objetivo.longitud());
            if (registro > 0) {
                busqueda.posicion = static_cast<std::uint64_t>(registro) * longitud + 1;
                return static_cast<std::int32_t>(registro);
            }
            cursor = hallazgo + 1;
        }
        if (leidos < bytes) break;
    }
    busqueda.continuar = 0;
    busqueda.posicion = 1;
    return 0;
}

}  // namespace tarvoline::data
