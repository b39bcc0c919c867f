// What a session shows after a call, field by field, and where two sessions differ.
#pragma once

#include <string>
#include <vector>

#include "tarvoline/enlace.h"

namespace tarvoline::tools {

// A field of an item: "apunte 2", "NOTAS", its text. Numbers have
// the fifteen digits that forms carry.
struct Dato {
    std::string coleccion;  // "apunte", "iva", "cartera", "analítica", "extracto", "plan", "datos",
                            // "efecto" of the portfolio, "tipo" of VAT, "llamada"
    int lugar = 0;          // of the item, from 1; 0: there is but one
    std::string campo;
    std::string valor;
};
using Vista = std::vector<Dato>;

// The collections of a session that a call fills.
enum class Muestra { nada, asiento, extracto, plan, datos };

// Appends what the session has of it.
void anadirMuestra(Vista& vista, const link::Enlace& enlace, Muestra muestra);
void anadirCartera(Vista& vista, const link::CarteraLeida& lineas);
void anadirTipo(Vista& vista, const link::TipoIvaClass& tipo);
std::string comoTexto(double numero);

struct Diferencia {
    Dato una;            // its value is what the first session has
    std::string otra;    // the value in the second one
    bool sobra = false;  // only one of both has the item
};
// Fields that differ, in the order of the first view; an item that only one has is one difference.
std::vector<Diferencia> comparar(const Vista& una, const Vista& otra);

}  // namespace tarvoline::tools
