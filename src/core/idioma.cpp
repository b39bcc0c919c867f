#include "core/idioma.h"

#include "core/despliegue.h"
#include "core/entorno.h"
#include "core/texto.h"

namespace tarvoline::core {

namespace {

constexpr std::string_view idiomaPorDefecto = "español.qzi";

std::string leerODecir(Entorno& entorno, const std::string& ruta, std::string_view enEspanol,
                       std::string_view enIngles) {
    try {
        return LeerArchivoEntero(entorno, ruta);
    } catch (const platform::ErrorArchivo& error) {
        const auto comienzo = idiomaEspanol(entorno) ? enEspanol : enIngles;
        throw ErrorIdioma(std::string(comienzo) + ": " + error.what());
    }
}

// Callers tell a failure from a success by this beginning: without it a copy that failed would count as made.
void asegurarCabezasDeFallo(Textos& textos) {
    for (const int numero : {textoFalloCopia, textoFallo}) {
        if (!esError(textos(numero))) {
            textos.poner(numero, "ERROR: " + textos(numero));
        }
    }
}

Caja cajaIdiomaIncorrecto(bool enEspanol) {
    Caja caja;
    caja.icono = Icono::informacion;
    if (enEspanol) {
        caja.titulo = "Archivo de Idioma";
        caja.texto =
            "Fichero de Idioma incorrecto. Pongase en contacto con Asistencia Técnica de Veldorix en el ";
        caja.texto.append(despliegue::telefonoSoporte).append(" o envie un email a ");
    } else {
        caja.titulo = "Language File";
        caja.texto =
            "Incorrect Language File. Please contact Veldorix's Technical Asistance on the following number ";
        caja.texto.append(despliegue::telefonoSoporte).append(" or send an email to ");
    }
    caja.texto.append(despliegue::correoSoporte);
    return caja;
}

}  // namespace

const std::string& Textos::operator()(int numero) const {
    if (numero < 0 || numero > indiceMayor()) {
        throw ErrorIndice("text " + std::to_string(numero) +
                          " lies outside the language table, which ends at " + std::to_string(indiceMayor()));
    }
    return textos_[static_cast<std::size_t>(numero)];
}

void Textos::poner(int numero, std::string texto) {
    ampliar(numero);
    textos_.at(static_cast<std::size_t>(numero)) = std::move(texto);
}

void Textos::ampliar(int indiceMayor) {
    const auto tamano = static_cast<std::size_t>(indiceMayor < 0 ? 0 : indiceMayor + 1);
    if (tamano > textos_.size()) {
        textos_.resize(tamano);
    }
}

std::string nombreIdioma(Entorno& entorno) {
    return entorno.almacen.Leer("language", "", idiomaPorDefecto, "");
}

void CargarIdioma(Entorno& entorno, std::string_view nombre) {
    std::string ruta(nombre);
    if (!contieneSeparador(ruta)) {
        ruta = entorno.carpetas.DirectorioPrograma() + ruta;
    }
    const auto contenido =
        leerODecir(entorno, ruta, "No se puede leer el archivo de idioma", "Cannot read the language file");
    const auto arroba = contenido.find('@');
    if (arroba == std::string::npos) {
        throw ErrorIdioma(std::string(idiomaEspanol(entorno)
                                          ? "No es un archivo de idioma, le falta la \"@\": \""
                                          : "Not a language file, it has no \"@\": \"") +
                          ruta + "\"");
    }
    auto textos = Partir(std::string_view(contenido).substr(arroba), "\r\n");
    for (auto& texto : textos) {
        texto = aUtf8(texto);
    }
    entorno.estado.gTextos.asignar(std::move(textos));
    entorno.estado.gTextos.poner(0, "Veldorix");
}

void ComprobarIdioma(Entorno& entorno) {
    auto& textos = entorno.estado.gTextos;
    if (textos.indiceMayor() < textosMinimos) {
        entorno.escritorio.Mensaje(cajaIdiomaIncorrecto(idiomaEspanol(entorno)));
        textos.ampliar(textosAmpliados);
    }
    asegurarCabezasDeFallo(textos);
}

bool idiomaEspanol(Entorno& entorno) {
    return Mayusculas(nombreIdioma(entorno)).find("ESPAÑOL") != std::string::npos;
}

std::string LeerTerminos(Entorno& entorno) {
    const auto ruta = entorno.carpetas.DirectorioPrograma() +
                      (idiomaEspanol(entorno) ? "Terminos Y Condiciones.txt" : "Terms and Conditions.txt");
    return aUtf8(leerODecir(entorno, ruta, "No se puede leer el archivo", "Cannot read the file"));
}

std::string LeerArchivoEntero(Entorno& entorno, std::string_view ruta) {
    return platform::leerTodo(entorno.archivos, ruta);
}

}  // namespace tarvoline::core
