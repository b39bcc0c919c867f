#include "core/escritorio_desatendido.h"

namespace tarvoline::core {

namespace {

std::string enLinea(std::string_view titulo, std::string_view texto) {
    std::string linea(titulo);
    if (!titulo.empty() && !texto.empty()) {
        linea += ": ";
    }
    return linea.append(texto);
}

}  // namespace

void EscritorioDesatendido::Mensaje(const Caja& caja) {
    const auto linea = enLinea(caja.titulo, caja.texto);
    switch (caja.icono) {
        case Icono::parada:
            registro_.error(linea);
            break;
        case Icono::exclamacion:
            registro_.aviso(linea);
            break;
        case Icono::ninguno:
        case Icono::informacion:
        case Icono::pregunta:
            registro_.info(linea);
            break;
    }
}

bool EscritorioDesatendido::Preguntar(const Caja& caja, bool) {
    registro_.aviso(enLinea(caja.titulo, caja.texto) + " [No]");
    return false;
}

bool EscritorioDesatendido::Confirmar(const Caja& caja) {
    sinRespuesta("question", caja.titulo, caja.texto);
    return false;
}

std::optional<std::string> EscritorioDesatendido::Pedir(const Peticion& peticion) {
    sinRespuesta("prompt", peticion.titulo, peticion.texto);
    return std::nullopt;
}

bool EscritorioDesatendido::PedirDatos(EntradaDatos& datos) {
    sinRespuesta("prompt", datos.titulo, "");
    return false;
}

std::optional<std::string> EscritorioDesatendido::ElegirArchivo(const EleccionArchivo& eleccion) {
    sinRespuesta("choice of a file", eleccion.titulo, eleccion.nombre);
    return std::nullopt;
}

std::optional<std::string> EscritorioDesatendido::GuardarComo(const EleccionArchivo& eleccion) {
    sinRespuesta("choice of a file", eleccion.titulo, eleccion.nombre);
    return std::nullopt;
}

std::optional<std::string> EscritorioDesatendido::ElegirCarpeta(std::string_view titulo) {
    sinRespuesta("choice of a folder", titulo, "");
    return std::nullopt;
}

void EscritorioDesatendido::MostrarListado(const Listado& listado) {
    registro_.info(enLinea(listado.titulo, listado.texto));
}

void EscritorioDesatendido::Abrir(std::string_view documento) {
    registro_.info(enLinea("not opened, nobody is there", documento));
}

void EscritorioDesatendido::Turno() {
    if (const int codigo = parada_ ? parada_() : 0; codigo != 0) {
        registro_.aviso("asked to end: the run stops here, an upload under way goes on at the next start");
        throw FinDePrograma{codigo};
    }
}

void EscritorioDesatendido::sinRespuesta(std::string_view que, std::string_view titulo,
                                         std::string_view texto) {
    registro_.aviso(std::string(que) + " cancelled, nobody is there: " + enLinea(titulo, texto));
}

}  // namespace tarvoline::core
