// A definition file from a stranger: it is refused, or gives fields and keys that a table can work with, and
// is then written and read to the same.
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "data/definicion_tabla.h"

namespace {

using namespace tarvoline::data;

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

void comprobar(const DefinicionTabla& definicion) {
    exigir(definicion.gNumeroCampos >= 1 && definicion.gNumeroCampos <= maxCamposTabla);
    exigir(definicion.gLongitudRegistro >= 1);
    int desplazamiento = 0;
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        exigir(definicion.campo(i).desplazamiento == desplazamiento);
        exigir(definicion.campo(i).bytes >= 0);
        desplazamiento += definicion.campo(i).bytes;
    }
    exigir(desplazamiento == definicion.gLongitudRegistro);
    exigir(definicion.numeroClaves >= 0 && definicion.numeroClaves <= maxClaves);
    for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
        for (const auto& segmento : definicion.claves.at(static_cast<std::size_t>(clave))) {
            exigir(segmento.campo >= 1 && segmento.campo <= definicion.gNumeroCampos);
            exigir(segmento.inicio >= 1 && segmento.longitud >= 1);
        }
    }
    for (const auto campo : definicion.gCampoDePosicion) {
        exigir(campo >= 0 && campo <= definicion.gNumeroCampos);
    }
}

// Numbers that two characters of the composed form cannot hold come from bytes above "~" alone.
bool seCompone(const DefinicionTabla& definicion) {
    constexpr int mayor = 789;
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        const auto& campo = definicion.campo(i);
        if (campo.ancho > mayor || campo.tipo > mayor || campo.posicion > mayor) return false;
    }
    for (const auto& segmentos : definicion.claves) {
        for (const auto& segmento : segmentos) {
            if (segmento.inicio > mayor || segmento.longitud > mayor) return false;
        }
    }
    return true;
}

std::optional<DefinicionTabla> interpretada(std::string_view bytes) {
    try {
        return interpretarDefinicion(bytes);
    } catch (const ErrorDefinicion&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    const auto definicion = interpretada({reinterpret_cast<const char*>(datos), longitud});
    if (!definicion) return 0;
    comprobar(*definicion);
    if (!seCompone(*definicion)) return 0;
    const auto otra = interpretarDefinicion(componerDefinicion(*definicion));
    comprobar(otra);
    exigir(otra.gLongitudRegistro == definicion->gLongitudRegistro);
    exigir(otra.gCampoDePosicion == definicion->gCampoDePosicion);
    exigir(otra.claves == definicion->claves && otra.numeroClaves == definicion->numeroClaves);
    return 0;
}
