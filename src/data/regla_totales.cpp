#include "data/regla_totales.h"

#include <algorithm>

#include "core/texto.h"

namespace tarvoline::data {

namespace {

constexpr int regularizacion = 13, cierre = 14;
constexpr int meses = 12;
constexpr std::size_t lugarMes = 2, cifrasMes = 2;

int periodoDe(std::string_view diario, std::string_view fecha) {
    if (diario == "A") return 0;
    if (diario == "B") return regularizacion;
    if (diario == "C") return cierre;
    const int mes = fecha.size() > lugarMes ? core::ValEntero(fecha.substr(lugarMes, cifrasMes)) : 0;
    return mes >= 1 && mes <= meses ? mes : 0;
}

}  // namespace

std::optional<ColumnaPeriodo> columnaDeLinea(std::string_view tipo, std::string_view diario,
                                             std::string_view fecha) {
    if (tipo != "1" && tipo != "2") return std::nullopt;
    return ColumnaPeriodo{tipo == "2", periodoDe(diario, fecha)};
}

std::vector<Mayor> mayoresDe(std::string_view cuenta, const std::array<int, 9>& niveles) {
    std::vector<Mayor> mayores;
    for (std::size_t nivel = 1; nivel < niveles.size(); ++nivel) {
        const auto longitud = static_cast<std::size_t>(std::max(0, niveles[nivel]));
        if (longitud == 0 || longitud >= cuenta.size()) continue;
        // A code is stored without the blanks at its end, also when it was cut at one.
        const auto cortado = cuenta.substr(0, longitud);
        const auto codigo = cortado.substr(0, cortado.find_last_not_of(' ') + 1);
        const bool repetido =
            std::ranges::any_of(mayores, [&](const Mayor& otro) { return otro.codigo == codigo; });
        if (!codigo.empty() && !repetido) mayores.push_back({nivel, std::string(codigo)});
    }
    return mayores;
}

}  // namespace tarvoline::data
