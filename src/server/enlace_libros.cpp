// What the forms of the accounting link do to the books.
#include <pugixml.hpp>
#include <sstream>

#include "core/texto.h"
#include "data/codec.h"
#include "link/mostrador.h"
#include "server/enlace_asiento.h"
#include "server/enlace_peticion.h"
#include "server/enlace_tablas.h"
#include "server/textos.h"

namespace tarvoline::server {

namespace {

constexpr std::string_view opcionesCreacion = "/C";

// A name of a file, and nothing else.
bool esNombre(std::string_view nombre) {
    constexpr std::size_t maximo = 64;
    const std::string limpio = core::Recortar(nombre);
    return limpio == nombre && textoLimpio(nombre, maximo) && !nombre.starts_with('.') &&
           nombre.find_first_of("/\\:*?\"<>|") == std::string_view::npos;
}

bool pideCrear(std::string_view clave) {
    return core::Mayusculas(clave).starts_with(opcionesCreacion);
}

// Values that say which tables are the company's, or whether anybody can open it, are not for the road: a
// wrong one could not be taken back by it, and a company's number opens another company's tables.
void comprobarValor(const std::string& nombre, const std::string& valor) {
    constexpr std::size_t maximo = 4096;
    const std::string suyo = core::Mayusculas(core::Recortar(nombre));
    for (const char* reservado : {"COMUN", "VERSION", "GLOBAL_DIR"}) {
        if (suyo == reservado) throw ErrorForma("ERROR: no se cambia aquí: " + suyo);
    }
    if (nombre.size() + valor.size() > maximo) throw ErrorForma("ERROR: el valor es demasiado largo");
    const bool cifras = valor.find_first_not_of("0123456789") == std::string::npos;
    const auto exigir = [&](const char* cual, std::size_t cuantas, int menor, int mayor) {
        if (suyo != cual) return;
        const int dado = core::ValEntero(valor);
        if (!cifras || valor.size() != cuantas || dado < menor || dado > mayor)
            throw ErrorForma("ERROR: valor no válido: " + suyo);
    };
    exigir("AÑO", 2, 0, 99);
    exigir("APERTURA", 2, 1, 12);
    exigir("NIVEL", 5, 1, 99999);
}

// What is no failure must not begin like one; callers pass over what stands before it.
std::string comoDato(const std::string& texto, const char* delante) {
    constexpr std::string_view fallo = "ERROR";
    return core::igualSinCaja(texto.substr(0, fallo.size()), fallo) ? delante + texto : texto;
}

std::string numero(double valor) {
    std::string texto;
    data::ponerTextoDeNumero(valor, texto);
    return texto;
}

std::string unidos(const std::vector<std::string>& textos) {
    std::string todos;
    for (const auto& uno : textos)
        todos += (todos.empty() ? "" : "\t") + uno;
    return todos;
}

}  // namespace

const std::map<std::string_view, OperacionesEnlace::Metodo>& OperacionesEnlace::tabla() {
    static const std::map<std::string_view, Metodo> todas{
        {"LEEREMPRESAS", &OperacionesEnlace::LEEREMPRESAS},
        {"EMPRESAEXISTS", &OperacionesEnlace::EMPRESAEXISTS},
        {"CREAREMPRESA", &OperacionesEnlace::CREAREMPRESA},
        {"GETTOTAL", &OperacionesEnlace::GETTOTAL},
        {"PUTTOTAL", &OperacionesEnlace::PUTTOTAL},
        {"LEERTIPOSIVA", &OperacionesEnlace::LEERTIPOSIVA},
        {"LEERASIENTO", &OperacionesEnlace::LEERASIENTO},
        {"GRABARASIENTO", &OperacionesEnlace::GRABARASIENTO},
        {"ANULARASIENTO", &OperacionesEnlace::ANULARASIENTO},
        {"BORRARCUENTA", &OperacionesEnlace::BORRARCUENTA},
        {"BUSCAR", &OperacionesEnlace::BUSCAR},
        {"UPDATE", &OperacionesEnlace::UPDATE},
        {"FILTERUPDATE", &OperacionesEnlace::FILTERUPDATE},
        {"FILTERBORRAR", &OperacionesEnlace::FILTERBORRAR},
        {"GETFECHAS", &OperacionesEnlace::GETFECHAS},
        {"GETASIENTOS", &OperacionesEnlace::GETASIENTOS},
        {"GETGUID", &OperacionesEnlace::GETGUID},
        {"SETGUID", &OperacionesEnlace::SETGUID},
        {"LEERCARPETASVELDORIX2", &OperacionesEnlace::LEERCARPETASVELDORIX2}};
    return todas;
}

std::string OperacionesEnlace::LEEREMPRESAS(Peticion& peticion) {
    link::Enlace& enlace = peticion.sesion.mundo(peticion.carpeta).enlace();
    enlace.LoadEmpresas();
    std::string nombres;
    for (const auto& ruta : enlace.Empresas())
        nombres += core::SepararRuta(ruta).nombre + "\n";
    return comoDato(nombres, "\n");
}

// VALOR is the password. A protected company is there for everybody; what is in it, for who knows that.
std::string OperacionesEnlace::EMPRESAEXISTS(Peticion& peticion) {
    const FormaEnlace& forma = peticion.forma;
    const std::string& clave = forma.campo("VALOR");
    if (pideCrear(clave)) throw ErrorForma("ERROR: no es una clave");
    using Puerta = SesionEnlace::Puerta;
    const Puerta puerta = peticion.sesion.desbloquear(peticion.carpeta, forma.empresa, clave);
    if (puerta == Puerta::noEsta) return "NO";
    if (puerta == Puerta::cerrada && !clave.empty())
        frenar(peticion.direccion, "clave de empresa rechazada, empresa \"" + forma.empresa + "\"");
    return "SI";
}

std::string OperacionesEnlace::CREAREMPRESA(Peticion& peticion) {
    const FormaEnlace& forma = peticion.forma;
    const std::string& opciones = forma.campo("VALOR");
    MundoEnlace& mundo = peticion.sesion.mundo(peticion.carpeta);
    if (!pideCrear(opciones)) throw ErrorForma("ERROR: faltan las opciones de la empresa nueva");
    if (!esNombre(forma.empresa)) throw ErrorForma("ERROR: no es un nombre de empresa: " + forma.empresa);
    if (!mundo.ruta(forma.empresa).empty()) throw ErrorForma("ERROR: ya existe la empresa " + forma.empresa);
    // What was open is not any more, whatever comes of it.
    peticion.sesion.soltar();
    mundo.enlace().AbrirEmpresa(mundo.carpeta() + forma.empresa, opciones);
    return "OK";
}

// The password is known to who has given it; to others it is one that nobody types.
std::string OperacionesEnlace::GETTOTAL(Peticion& peticion) {
    const FormaEnlace& forma = peticion.forma;
    const std::string& nombre = forma.campo("VALOR");
    if (core::igualSinCaja(nombre, "PASSWORD1"))
        return peticion.sesion.claveConocida(peticion.carpeta, forma.empresa).value_or("*****");
    return comoDato(peticion.libros().Config(nombre), " ");
}

std::string OperacionesEnlace::PUTTOTAL(Peticion& peticion) {
    const std::string& valor = peticion.forma.campo("VALOR");
    const auto igual = valor.find('=');
    if (igual == std::string::npos) throw ErrorForma("ERROR: falta el valor");
    comprobarValor(valor.substr(0, igual), valor.substr(igual + 1));
    peticion.libros().Config(valor.substr(0, igual), valor.substr(igual + 1));
    return "OK";
}

std::string OperacionesEnlace::LEERTIPOSIVA(Peticion& peticion) {
    constexpr int maximo = 300;
    link::Enlace& enlace = peticion.libros();
    pugi::xml_document documento;
    pugi::xml_node raiz = documento.append_child("TIPOSIVA");
    for (int i = 1; i <= maximo; ++i) {
        const auto tipo = enlace.tiposiva(i);
        if (tipo->Descripción.empty() && tipo->Cuota == 0) continue;
        const std::string lineas = "TIPO=" + std::to_string(i) + "\nDESCRIPCION=" + tipo->Descripción +
                                   "\nCLAVEOP2=" + tipo->ClaveOp2 + "\nCLAVEOP=" + tipo->ClaveOp +
                                   "\nCUOTA=" + numero(tipo->Cuota) + "\nRECARGO=" + numero(tipo->Recargo);
        raiz.append_child("TIPOIVA").text() = lineas.c_str();
    }
    std::ostringstream texto;
    documento.save(texto, "", pugi::format_raw | pugi::format_no_declaration);
    return texto.str();
}

std::string OperacionesEnlace::LEERASIENTO(Peticion& peticion) {
    link::Enlace& enlace = peticion.libros();
    const FormaEnlace& forma = peticion.forma;
    link::Mostrador mostrador(enlace);
    mostrador.situar(forma.campo("FECHA"), forma.campo("ASIENTO"));
    const std::string posicion = core::Mayusculas(forma.campo("POSICION"));
    enlace.LimpiarPendientes();
    if (posicion.empty()) {
        enlace.LeerAsiento();
    } else if (posicion == "PROXIMO") {
        enlace.LeerProximoAsiento();
    } else if (posicion == "ANTERIOR") {
        enlace.LeerAnteriorAsiento();
    } else if (posicion == "PRIMERO") {
        enlace.LeerPrimerAsiento();
    } else if (posicion == "ULTIMO") {
        enlace.LeerUltimoAsiento();
    } else {
        throw ErrorForma("ERROR: no hay ninguna posición " + posicion);
    }
    return xmlDeAsiento(enlace, mostrador);
}

std::string OperacionesEnlace::GRABARASIENTO(Peticion& peticion) {
    return grabarAsiento(peticion.forma, peticion.libros());
}

// By date and number, or REFERENCIA = "REFERENCIA=" and the reference.
std::string OperacionesEnlace::ANULARASIENTO(Peticion& peticion) {
    constexpr std::string_view condicion = "REFERENCIA=";
    const FormaEnlace& forma = peticion.forma;
    const std::string& referencia = forma.campo("REFERENCIA");
    if (core::Recortar(referencia) == condicion) throw ErrorForma("ERROR: falta la referencia");
    if (core::empiezaPor(referencia, condicion)) {
        peticion.libros().AnularApuntePorReferencia(referencia.substr(condicion.size()));
        return "OK";
    }
    if (!referencia.empty()) throw ErrorForma("ERROR: no se entiende " + referencia);
    return std::to_string(peticion.libros().AnularAsiento(forma.campo("FECHA"), forma.campo("ASIENTO")));
}

std::string OperacionesEnlace::BORRARCUENTA(Peticion& peticion) {
    const std::string& cuenta = peticion.forma.campo("CUENTA");
    if (core::Recortar(cuenta).empty()) throw ErrorForma("ERROR: falta la cuenta");
    peticion.libros().AnularCuenta(cuenta);
    return "OK";
}

std::string OperacionesEnlace::BUSCAR(Peticion& peticion) {
    return buscarFilas(peticion.forma, peticion.libros());
}

std::string OperacionesEnlace::UPDATE(Peticion& peticion) {
    return cambiarFila(peticion.forma, peticion.libros());
}

std::string OperacionesEnlace::FILTERUPDATE(Peticion& peticion) {
    return cambiarFilas(peticion.forma, peticion.libros());
}

std::string OperacionesEnlace::FILTERBORRAR(Peticion& peticion) {
    return borrarFilas(peticion.forma, peticion.libros());
}

std::string OperacionesEnlace::GETFECHAS(Peticion& peticion) {
    return unidos(peticion.libros().LeerFechasAsiento(peticion.forma.campo("ASIENTO")));
}

std::string OperacionesEnlace::GETASIENTOS(Peticion& peticion) {
    return unidos(peticion.libros().LeerAsientosGuid(peticion.forma.campo("GUID")));
}

std::string OperacionesEnlace::GETGUID(Peticion& peticion) {
    return comoDato(peticion.libros().GUID(peticion.forma.campo("ASIENTO")), " ");
}

std::string OperacionesEnlace::SETGUID(Peticion& peticion) {
    link::Enlace& enlace = peticion.libros();
    enlace.GUID(peticion.forma.campo("ASIENTO"), peticion.forma.campo("VALOR"));
    return "OK";
}

}  // namespace tarvoline::server
