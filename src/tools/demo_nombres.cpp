#include "tools/demo_nombres.h"

#include <array>

#include "core/texto.h"

namespace tarvoline::tools {

namespace {

using namespace std::string_view_literals;

constexpr std::array nombres = {"María"sv,  "José"sv,    "Begoña"sv,   "Íñigo"sv,  "Andrés"sv, "Lucía"sv,
                                "Núria"sv,  "Ramón"sv,   "Asunción"sv, "Álvaro"sv, "Inés"sv,   "Tomás"sv,
                                "Mónica"sv, "Joaquín"sv, "Carmen"sv,   "Hugo"sv,   "Paula"sv,  "Óscar"sv};
constexpr std::array apellidos = {
    "Núñez"sv, "García"sv, "Muñoz"sv, "Peña"sv,      "Sánchez"sv, "Ibáñez"sv,    "Martínez"sv, "Gómez"sv,
    "Yáñez"sv, "Ferrer"sv, "Ruiz"sv,  "Domínguez"sv, "Castaño"sv, "Rodríguez"sv, "Alarcón"sv,  "Pascual"sv};
constexpr std::array oficios = {"Harinas"sv,   "Transportes"sv, "Lácteos"sv,  "Suministros"sv, "Cafés"sv,
                                "Papelería"sv, "Hostelería"sv,  "Talleres"sv, "Limpiezas"sv,   "Embalajes"sv};
constexpr std::array articulos = {"pan de molde"sv, "bollería"sv,      "harina de trigo"sv,
                                  "levadura"sv,     "azúcar moreno"sv, "café en grano"sv,
                                  "servilletas"sv,  "leche entera"sv};

}  // namespace

std::string persona(Azar& azar) {
    std::string nombre(azar.uno(nombres));
    nombre.append(" ").append(azar.uno(apellidos)).append(" ").append(azar.uno(apellidos));
    return nombre;
}

std::string sociedad(Azar& azar) {
    std::string nombre(azar.uno(oficios));
    nombre.append(" ").append(azar.uno(apellidos)).append(azar.unaDeCada(2) ? ", S.L." : " e Hijos, S.A.");
    return nombre;
}

std::string articulo(Azar& azar) {
    return std::string(azar.uno(articulos));
}

std::string nif(Azar& azar) {
    constexpr std::string_view letras = "TRWAGMYFPDXBNJZSQVHLCKE";
    const auto cifras = azar.cifras(8);
    return cifras + letras[static_cast<std::size_t>(core::ValEntero(cifras)) % letras.size()];
}

}  // namespace tarvoline::tools
