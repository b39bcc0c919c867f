#include "link/tipos_iva_enlace.h"

#include <array>
#include <charconv>

#include "core/texto.h"
#include "data/tipos_iva.h"

namespace tarvoline::link {

int ValTIVA(std::string_view des) {
    constexpr int primeraLetra = 100, porLetra = 10;
    if (des.size() != 1 && des.size() != 2) return 0;
    if (des.size() == 2 && des.front() >= 'A') {
        return primeraLetra + (static_cast<unsigned char>(des.front()) - 'A') * porLetra +
               core::ValEntero(des.substr(1));
    }
    return core::ValEntero(des);
}

double comoDoble(float porcentaje) {
    std::array<char, 32> texto{};
    const auto fin = std::to_chars(texto.data(), texto.data() + texto.size(), porcentaje).ptr;
    double numero = 0;
    std::from_chars(texto.data(), fin, numero);
    return numero;
}

TipoIvaClass leerTipoIva(Sesion& sesion, int numero) {
    data::CapaDatos& capa = sesion.contexto.datos;
    const data::TipoIva tipo = data::TiposIva::leer(capa, data::rutaTiposIva(capa))(numero);
    TipoIvaClass leido;
    leido.TIPO = numero;
    // A description of two parts, "part + part", is told by the first one that is not empty.
    const auto mas = tipo.Descripción.find('+');
    const std::string delante = core::Recortar(tipo.Descripción.substr(0, mas));
    const bool soloDetras = delante.empty() && mas != std::string::npos;
    leido.Descripción = soloDetras ? core::Recortar(tipo.Descripción.substr(mas + 1)) : delante;
    leido.ClaveOp2 = tipo.ClaveOp2;
    leido.ClaveOp = tipo.ClaveOp;
    leido.Cuota = comoDoble(tipo.Cuota);
    leido.Recargo = comoDoble(tipo.Recargo);
    return leido;
}

}  // namespace tarvoline::link
