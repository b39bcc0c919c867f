#include "motor/carga.h"

#include <algorithm>

#include "motor/edicion_arbol.h"

namespace tarvoline::motor {

namespace {

void meter(Escritura& escritura, unsigned numeroClave, std::vector<EntradaNueva>& entradas) {
    // Neighbours one after the other: their pages are at hand.
    std::ranges::sort(entradas, [](const EntradaNueva& una, const EntradaNueva& otra) {
        return una.texto < otra.texto || (una.texto == otra.texto && una.registro < otra.registro);
    });
    EdicionArbol edicion(escritura, numeroClave);
    Clave clave;
    for (const EntradaNueva& una : entradas) {
        if (una.texto.size() > escritura.ancho()) throw ErrorMotor("un texto de clave es demasiado largo");
        clave.poner(una.texto, escritura.ancho(), una.registro);
        if (!edicion.insertar(clave)) {
            throw ErrorMotor("la clave " + std::to_string(numeroClave) + " ya tiene el registro " +
                             std::to_string(una.registro));
        }
    }
}

}  // namespace

void cargarLote(ArchivoClaves& archivo, LoteEntradas& lote, std::uint32_t contador) {
    if (lote.size() != archivo.cabecera().claves)
        throw ErrorMotor("no son tantas claves como tiene el archivo");
    try {
        escribir(archivo, [&](Escritura& escritura) {
            for (unsigned i = 0; i < lote.size(); ++i)
                meter(escritura, i + 1, lote[i]);
            Cabecera& cabecera = escritura.cabecera();
            cabecera.contador = std::max(cabecera.contador, contador);
            escritura.confirmar();
        });
    } catch (const platform::ErrorArchivo& error) {
        throw ErrorMotor(error.what());
    }
    for (auto& entradas : lote)
        entradas.clear();
}

}  // namespace tarvoline::motor
