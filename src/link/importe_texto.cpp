#include "link/importe_texto.h"

#include <algorithm>
#include <string>

#include "core/texto.h"

namespace tarvoline::link {

double importeDeTexto(std::string_view texto) {
    std::string limpio = core::Recortar(texto);
    if (limpio.find(',') == std::string::npos) return core::Val(limpio);
    std::erase(limpio, '.');
    std::ranges::replace(limpio, ',', '.');
    return core::Val(limpio);
}

}  // namespace tarvoline::link
