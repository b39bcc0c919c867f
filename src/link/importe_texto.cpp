#include "link/importe_texto.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/texto.h"

namespace tarvoline::link {

double importeDeTexto(std::string_view texto) {
    std::string limpio = core::Recortar(texto);
    const auto coma = limpio.find(',');
    const bool deMiles = std::ranges::count(limpio, '.') > 1;
    if (coma != std::string::npos) {
        if (limpio.find_first_of(".,", coma + 1) != std::string::npos) return 0;
        std::erase(limpio, '.');
        std::ranges::replace(limpio, ',', '.');
    } else if (deMiles) {
        std::erase(limpio, '.');
    }
    if (limpio.starts_with('+')) limpio.erase(0, 1);
    double numero = 0;
    const char* const fin = limpio.data() + limpio.size();
    const auto leido = std::from_chars(limpio.data(), fin, numero);
    return leido.ec == std::errc() && leido.ptr == fin && std::isfinite(numero) ? numero : 0;
}

}  // namespace tarvoline::link
