#include "data/opciones_empresa.h"

#include <limits>
#include <string>

#include "core/texto.h"

namespace tarvoline::data {

namespace {

// Plans by the number that a caller chooses.
int planElegido(const std::string& valor) {
    const auto numero = core::ValEntero(valor);
    const bool esCero = core::Recortar(valor).starts_with('0');
    if (esCero || numero == 1) return 0;
    return numero >= 4 && numero <= 6 ? 2 : 1;
}

void ponerMoneda(CabeceraEmpresa& cabecera, const std::string& valor) {
    const auto numero = core::ValEntero(valor);
    if (numero >= 0 && numero <= std::numeric_limits<std::uint8_t>::max()) {
        cabecera.poner(cabecera::ARCHIVOMONEDABASE, static_cast<std::uint8_t>(numero));
    }
}

void aplicar(CabeceraEmpresa& cabecera, char letra, const std::string& valor) {
    switch (letra) {
        case 'A':
            return cabecera.poner(cabecera::AÑO, valor);
        case 'N':
            return cabecera.poner(cabecera::NIVEL, valor);
        case 'X':
            return cabecera.poner(cabecera::AUX, valor);
        case 'M':
            return ponerMoneda(cabecera, valor);
        case 'P':
            return cabecera.poner(cabecera::APERTURA, valor);
        case 'I':
            return cabecera.poner(cabecera::IVAIGIC, valor);
        default:
            return;
    }
}

}  // namespace

std::optional<int> aplicarOpciones(CabeceraEmpresa& cabecera, std::string_view opciones) {
    std::optional<int> plan;
    for (const auto& opcion : core::Partir(opciones, "/")) {
        if (opcion.empty()) continue;
        const char letra = core::Mayusculas(opcion.substr(0, 1))[0];
        const auto valor = core::Mid(opcion, 3);
        if (letra == 'Z') {
            plan = planElegido(valor);
            cabecera.poner({cabecera::LINEAS.posicion, 1}, std::to_string(*plan));
        } else if (!valor.empty()) {
            aplicar(cabecera, letra, valor);
        }
    }
    return plan;
}

}  // namespace tarvoline::data
