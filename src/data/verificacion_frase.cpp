// Disagreements in words.
#include "core/texto.h"
#include "data/verificacion.h"
#include "data/volcado.h"

namespace tarvoline::data {

namespace {

std::string entreComillas(const std::string& bytes) {
    std::string texto = "«";
    anadirEscapado(core::aUtf8(bytes), texto);
    return texto + "»";
}

std::string deLasClaves(const Discrepancia& una) {
    switch (una.que) {
        case Desacuerdo::clavesAusentes:
            return "Falta el archivo de claves.";
        case Desacuerdo::clavesAjenas:
            return "El archivo de claves tiene otro formato.";
        case Desacuerdo::clavesDeOtra:
            return "El archivo de claves es de otra definición: tiene " + una.texto + " y debería tener " +
                   una.esperado + ".";
        default:
            return una.texto.empty() ? "El archivo de claves está dañado o no se puede abrir."
                                     : "El archivo de claves está dañado (" + una.texto + ").";
    }
}

std::string sinRegistro(const Discrepancia& una) {
    const std::string que = una.estado == EstadoRegistro::anulado ? "está anulado" : "no está escrito";
    const std::string donde =
        una.clave == 0 ? "está en las claves" : "está en la clave " + std::to_string(una.clave);
    return que + ", pero " + donde + " con " + entreComillas(una.texto) + ".";
}

std::string deRegistro(const Discrepancia& una) {
    const std::string clave = std::to_string(una.clave);
    switch (una.que) {
        case Desacuerdo::registroCortado:
            return "está cortado: solo tiene " + una.texto + " bytes.";
        case Desacuerdo::entradaSinRegistro:
            return sinRegistro(una);
        case Desacuerdo::registroSinEntrada:
            return una.clave == 0 ? "no está en ninguna clave."
                                  : "falta en la clave " + clave + " (" + entreComillas(una.esperado) + ").";
        case Desacuerdo::otraClave:
            return "la clave " + clave + " lo tiene con " + entreComillas(una.texto) +
                   " y sus campos dicen " + entreComillas(una.esperado) + ".";
        default:
            return "la clave " + clave + " lo tiene además con " + entreComillas(una.texto) + ".";
    }
}

}  // namespace

std::string frase(const Discrepancia& una) {
    switch (una.que) {
        case Desacuerdo::clavesAusentes:
        case Desacuerdo::clavesAjenas:
        case Desacuerdo::clavesDannadas:
        case Desacuerdo::clavesDeOtra:
            return deLasClaves(una);
        case Desacuerdo::contadorBajo:
            return "El contador de registros está en " + std::to_string(una.registro) +
                   " y la tabla llega hasta el " + una.texto + ".";
        default:
            return "Registro " + std::to_string(una.registro) + ": " + deRegistro(una);
    }
}

}  // namespace tarvoline::data
