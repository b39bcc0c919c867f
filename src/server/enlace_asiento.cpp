#include "server/enlace_asiento.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>

#include "core/texto.h"
#include "data/codec.h"

namespace tarvoline::server {

namespace {

using link::Enlace;

constexpr std::string_view sinNumero = "(Auto)";

// What a sum of a company can be: beyond this its cents are lost, and those of every total with it.
constexpr double importeMayor = 1e15;

bool esImporte(std::string_view texto) {
    const auto cifras = [&texto] {
        const std::size_t cuantas = std::min(texto.find_first_not_of("0123456789"), texto.size());
        texto.remove_prefix(cuantas);
        return cuantas;
    };
    const auto signo = [&texto](std::string_view cuales) {
        const bool hay = !texto.empty() && cuales.find(texto.front()) != std::string_view::npos;
        if (hay) texto.remove_prefix(1);
        return hay;
    };
    signo("+-");
    std::size_t todas = cifras();
    if (signo(".")) todas += cifras();
    if (todas == 0) return false;
    if (signo("eE")) {
        signo("+-");
        const std::size_t exponente = cifras();
        if (exponente == 0 || exponente > 2) return false;
    }
    return texto.empty();
}

std::string atributo(pugi::xml_node fila, const char* nombre) {
    return textoDeForma(fila.attribute(nombre).value());
}

double importe(pugi::xml_node fila, const char* nombre) {
    return core::Val(atributo(fila, nombre));
}

std::string numero(double valor) {
    std::string texto;
    data::ponerTextoDeNumero(valor, texto);
    return texto;
}

// The document does not say which register an invoice stands in: its tax account tells.
std::string serieDe(pugi::xml_node fila) {
    std::string dada = atributo(fila, "SRTC");
    if (!dada.empty()) return dada;
    constexpr std::string_view soportado = "472";
    return core::empiezaPor(atributo(fila, "CTA_IVA"), soportado) ? "S" : "R";
}

void anadirApunte(Enlace& enlace, pugi::xml_node fila) {
    enlace.AñadirApunte(atributo(fila, "CUENTA"), atributo(fila, "DESCRIPCION"),
                        core::ValEntero(atributo(fila, "TIPO")), importe(fila, "IMPORTE"),
                        atributo(fila, "DIARIO"), 0, atributo(fila, "CANAL"), atributo(fila, "REFERENCIA"),
                        atributo(fila, "NOTAS"));
}

void anadirIva(Enlace& enlace, pugi::xml_node fila) {
    enlace.AddVAT(atributo(fila, "CUENTA"), atributo(fila, "CTA_IVA"), atributo(fila, "FACTURA"),
                  atributo(fila, "FECHA_FRA"), atributo(fila, "TIPO"), serieDe(fila), importe(fila, "BASE"),
                  importe(fila, "TOTAL"), 0, atributo(fila, "TITULO"), atributo(fila, "NIF"),
                  atributo(fila, "ORDEN"), "", "", "", 0, "");
}

void anadirCartera(Enlace& enlace, pugi::xml_node fila) {
    enlace.AñadirCartera(atributo(fila, "FECHA_VTO"), atributo(fila, "CUENTA"), atributo(fila, "CA"),
                         atributo(fila, "NOTAS"), importe(fila, "TOTAL"));
}

void anadirAnalitica(Enlace& enlace, pugi::xml_node fila) {
    enlace.AñadirAnalitica(atributo(fila, "CUENTA"), atributo(fila, "CODANALI"),
                           atributo(fila, "DESCRIPCION"), 1, importe(fila, "IMPORTE"));
}

void comprobarFila(pugi::xml_node fila, std::initializer_list<const char*> importes) {
    if (core::Recortar(atributo(fila, "CUENTA")).empty())
        throw ErrorForma(std::string("ERROR: falta la cuenta: ") + fila.name());
    for (const char* nombre : importes)
        exigirImporte(atributo(fila, nombre));
}

void comprobarApunte(pugi::xml_node fila) {
    comprobarFila(fila, {"IMPORTE"});
    const std::string tipo = core::Recortar(atributo(fila, "TIPO"));
    // Debit and credit, and both with the sign turned.
    constexpr std::array<std::string_view, 4> tipos{"1", "2", "3", "4"};
    if (std::ranges::find(tipos, tipo) == tipos.end())
        throw ErrorForma("ERROR: no es debe ni haber: " + tipo);
}

void comprobarNumero(const std::string& numero) {
    constexpr std::size_t maximo = 6;
    const bool bueno = numero == sinNumero ||
                       (numero.size() <= maximo && std::ranges::all_of(numero, [](char c) {
                            return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
                        }));
    if (!bueno) throw ErrorForma("ERROR: no es un número de asiento: " + numero);
}

// All entries of a form are looked at before the first is stored.
void comprobar(Enlace& enlace, pugi::xml_node asiento) {
    const link::Mostrador mostrador(enlace);
    const std::string fecha = atributo(asiento, "FECHA");
    enlace.Fecha(fecha);
    if (enlace.Fecha().empty()) throw ErrorForma("ERROR: no es una fecha de asiento: " + fecha);
    comprobarNumero(atributo(asiento, "NUMERO"));
    int filas = 0;
    bool conApuntes = false;
    for (const pugi::xml_node fila : asiento.child("APUNTES").children("APUNTE")) {
        comprobarApunte(fila);
        conApuntes = true;
        ++filas;
    }
    for (const pugi::xml_node fila : asiento.child("IVAS").children("IVA")) {
        comprobarFila(fila, {"BASE", "TOTAL"});
        mostrador.comprobarFecha(atributo(fila, "FECHA_FRA"));
        ++filas;
    }
    for (const pugi::xml_node fila : asiento.child("CARTERAS").children("CARTERA")) {
        comprobarFila(fila, {"TOTAL"});
        mostrador.comprobarFecha(atributo(fila, "FECHA_VTO"));
        ++filas;
    }
    for (const pugi::xml_node fila : asiento.child("ANALITICA").children("ANALI")) {
        comprobarFila(fila, {"IMPORTE"});
        if (!conApuntes) throw ErrorForma("ERROR: analítica sin apunte");
        ++filas;
    }
    if (filas == 0) throw ErrorForma("ERROR: un asiento sin líneas");
}

using Anadir = void (*)(Enlace&, pugi::xml_node);

void anadirSeccion(Enlace& enlace, pugi::xml_node asiento, const char* seccion, const char* elemento,
                   Anadir anadir) {
    for (const pugi::xml_node fila : asiento.child(seccion).children(elemento))
        anadir(enlace, fila);
}

void grabarUno(Enlace& enlace, pugi::xml_node asiento) {
    const std::string suNumero = atributo(asiento, "NUMERO");
    enlace.LimpiarPendientes();
    enlace.Fecha(atributo(asiento, "FECHA"));
    enlace.Número(suNumero == sinNumero ? std::string() : suNumero);
    anadirSeccion(enlace, asiento, "APUNTES", "APUNTE", anadirApunte);
    anadirSeccion(enlace, asiento, "IVAS", "IVA", anadirIva);
    anadirSeccion(enlace, asiento, "CARTERAS", "CARTERA", anadirCartera);
    anadirSeccion(enlace, asiento, "ANALITICA", "ANALI", anadirAnalitica);
    enlace.GrabarAsiento();
}

void escribir(pugi::xml_node fila, const char* nombre, const std::string& valor) {
    fila.append_attribute(nombre) = valor.c_str();
}

void escribirApuntes(pugi::xml_node asiento, const Enlace& enlace) {
    pugi::xml_node seccion = asiento.append_child("APUNTES");
    for (std::int32_t i = 1; i <= enlace.ContadorApuntes(); ++i) {
        const auto linea = enlace.Apunte(i);
        pugi::xml_node fila = seccion.append_child("APUNTE");
        escribir(fila, "CUENTA", linea->Cuenta);
        escribir(fila, "DESCRIPCION", linea->Descripción);
        escribir(fila, "TIPO", std::to_string(linea->TIPO));
        escribir(fila, "IMPORTE", numero(linea->Importe));
        escribir(fila, "DIARIO", linea->Diario);
        escribir(fila, "CANAL", linea->Canal);
        escribir(fila, "REFERENCIA", linea->Referencia);
        escribir(fila, "NOTAS", linea->NOTAS);
    }
}

void escribirIvas(pugi::xml_node asiento, const Enlace& enlace) {
    pugi::xml_node seccion = asiento.append_child("APUNTESIVA");
    for (std::int32_t i = 1; i <= enlace.ContadorIva(); ++i) {
        const auto linea = enlace.iva(i);
        pugi::xml_node fila = seccion.append_child("IVA");
        escribir(fila, "CUENTA", linea->CuentaClienteProveedor);
        escribir(fila, "CTA_IVA", linea->CuentaIVA);
        escribir(fila, "FACTURA", linea->Factura);
        escribir(fila, "FECHA_FRA", linea->FechaFactura);
        escribir(fila, "TIPO", linea->TipoIva);
        escribir(fila, "SRTC", linea->SRTC);
        escribir(fila, "BASE", numero(linea->Base));
        escribir(fila, "TOTAL", numero(linea->TOTAL));
        escribir(fila, "TITULO", linea->titulo);
        escribir(fila, "NIF", linea->NIF);
        escribir(fila, "ORDEN", linea->NumeroOrden);
    }
}

void escribirCarteras(pugi::xml_node asiento, const Enlace& enlace) {
    pugi::xml_node seccion = asiento.append_child("APUNTESCARTERA");
    for (std::int32_t i = 1; i <= enlace.ContadorCartera(); ++i) {
        const auto linea = enlace.cartera(i);
        pugi::xml_node fila = seccion.append_child("CARTERA");
        escribir(fila, "FECHA_VTO", linea->FechaVencimiento);
        escribir(fila, "CUENTA", linea->Cuenta);
        escribir(fila, "CA", linea->cartera);
        escribir(fila, "NOTAS", linea->NOTAS);
        escribir(fila, "TOTAL", numero(linea->Importe));
    }
}

void escribirAnaliticas(pugi::xml_node asiento, const Enlace& enlace) {
    pugi::xml_node seccion = asiento.append_child("APUNTESANALI");
    for (std::int32_t i = 1; i <= enlace.ContadorAnalitica(); ++i) {
        const auto linea = enlace.Analitica(i);
        pugi::xml_node fila = seccion.append_child("ANALI");
        escribir(fila, "CUENTA", linea->CuentaContable);
        escribir(fila, "CODANALI", linea->CuentaAnalitica);
        escribir(fila, "DESCRIPCION", linea->Descripción);
        escribir(fila, "TIPO", "1");
        escribir(fila, "IMPORTE", numero(linea->Importe));
    }
}

}  // namespace

void exigirImporte(const std::string& texto) {
    const std::string suyo = core::Recortar(texto);
    if (!esImporte(suyo) || !(std::fabs(core::Val(suyo)) < importeMayor))
        throw ErrorForma("ERROR: no es un importe: " + suyo);
}

std::string grabarAsiento(const FormaEnlace& forma, Enlace& enlace) {
    const pugi::xml_node asientos = forma.documento->document_element().child("ASIENTOS");
    if (!asientos.child("ASIENTO")) throw ErrorForma("ERROR: no hay ningún asiento");
    for (const pugi::xml_node asiento : asientos.children("ASIENTO"))
        comprobar(enlace, asiento);
    for (const pugi::xml_node asiento : asientos.children("ASIENTO"))
        grabarUno(enlace, asiento);
    return enlace.Número();
}

std::string xmlDeAsiento(const Enlace& enlace, const link::Mostrador& mostrador) {
    pugi::xml_document documento;
    pugi::xml_node grupo = documento.append_child("LEERASIENTO").append_child("ASIENTOS");
    const bool hay = enlace.ContadorApuntes() + enlace.ContadorIva() + enlace.ContadorCartera() +
                         enlace.ContadorAnalitica() >
                     0;
    if (hay) {
        pugi::xml_node asiento = grupo.append_child("ASIENTO");
        escribir(asiento, "NUMERO", enlace.Número());
        escribir(asiento, "FECHA", mostrador.fechaLarga());
        escribirApuntes(asiento, enlace);
        escribirIvas(asiento, enlace);
        escribirCarteras(asiento, enlace);
        escribirAnaliticas(asiento, enlace);
    }
    std::ostringstream texto;
    documento.save(texto, "", pugi::format_raw | pugi::format_no_declaration);
    return texto.str();
}

}  // namespace tarvoline::server
