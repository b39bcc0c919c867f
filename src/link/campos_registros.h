// Where the fields of the two registers lie in their rows.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "data/tabla_cursor.h"
#include "link/sesion.h"

namespace tarvoline::link {

template <typename Registro>
struct CampoRegistro {
    enum class Forma { texto, cifras, numero, fecha };

    Forma forma;
    int posicion;
    std::string Registro::*texto = nullptr;  // null of a number
    double Registro::*numero = nullptr;
    int cifras = 0;  // width of a text of digits, which is filled with zeros at its head
};

// All stored fields, in the order of their numbers.
template <typename Registro>
std::span<const CampoRegistro<Registro>> camposDe();
template <>
std::span<const CampoRegistro<InmoClass>> camposDe<InmoClass>();
template <>
std::span<const CampoRegistro<DatosGlobalClass>> camposDe<DatosGlobalClass>();

// "dd/mm/yy" of a stored date; and the way back, where a text without a digit but 0 is no date. The second
// one throws ErrorEnlace fechaNoValida.
std::string fechaLeida(const Sesion& sesion, std::string_view guardada);
std::string fechaGuardada(const Sesion& sesion, std::string_view texto);
// Digits filled up with zeros; an empty text, or one that has other characters, as it is.
std::string conCifras(const std::string& texto, int cifras);

// The current row.
template <typename Registro>
Registro leerRegistro(const Sesion& sesion, data::TablaCursor& cursor) {
    using Forma = typename CampoRegistro<Registro>::Forma;
    Registro leido;
    for (const auto& campo : camposDe<Registro>()) {
        if (campo.forma == Forma::numero) {
            leido.*campo.numero = cursor.LeerNumero(campo.posicion);
        } else if (campo.forma == Forma::fecha) {
            leido.*campo.texto = fechaLeida(sesion, cursor.LeerCampo(campo.posicion));
        } else {
            leido.*campo.texto = cursor.LeerCampo(campo.posicion);
        }
    }
    return leido;
}

// Fills the row that is being changed. Throws ErrorEnlace fechaNoValida before it has changed anything.
template <typename Registro>
void escribirRegistro(const Sesion& sesion, data::TablaCursor& cursor, const Registro& registro) {
    using Forma = typename CampoRegistro<Registro>::Forma;
    for (const auto& campo : camposDe<Registro>()) {
        if (campo.forma == Forma::numero) {
            cursor.EscribirCampo(campo.posicion, 0, registro.*campo.numero);
        } else if (campo.forma == Forma::fecha) {
            cursor.EscribirCampo(campo.posicion, 0, fechaGuardada(sesion, registro.*campo.texto));
        } else if (campo.forma == Forma::cifras) {
            cursor.EscribirCampo(campo.posicion, 0, conCifras(registro.*campo.texto, campo.cifras));
        } else {
            cursor.EscribirCampo(campo.posicion, 0, registro.*campo.texto);
        }
    }
}

}  // namespace tarvoline::link
