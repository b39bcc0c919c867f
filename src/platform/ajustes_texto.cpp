#include "platform/ajustes_texto.h"

#include <algorithm>
#include <string>

#include "platform/caja.h"

namespace tarvoline::platform {

namespace {

constexpr std::string_view marcaOrden = "\xEF\xBB\xBF";

bool esBlanco(char c) {
    return c == ' ' || c == '\t';
}

std::string_view sinBlancos(std::string_view texto) {
    while (!texto.empty() && esBlanco(texto.front()))
        texto.remove_prefix(1);
    while (!texto.empty() && esBlanco(texto.back()))
        texto.remove_suffix(1);
    return texto;
}

bool esControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

bool esUtf8(std::string_view texto) {
    const std::u32string codigos = codigosDe(texto);
    return std::none_of(codigos.begin(), codigos.end(), [](char32_t c) { return c > 0x10FFFF; });
}

// What a name or value may not hold outside quotes. Bytes that are no UTF-8 go into quotes, so that the file
// stays text.
bool quiereComillas(std::string_view texto, std::string_view reservados) {
    if (texto.empty()) return false;
    return sinBlancos(texto).size() != texto.size() || texto.front() == '"' ||
           texto.find_first_of(reservados) != std::string_view::npos ||
           std::any_of(texto.begin(), texto.end(), esControl) || !esUtf8(texto);
}

void anadirHex(std::string& salida, unsigned char byte) {
    constexpr std::string_view cifras = "0123456789abcdef";
    salida.append("\\x").push_back(cifras[byte >> 4U]);
    salida.push_back(cifras[byte & 0xFU]);
}

std::string entreComillas(std::string_view texto) {
    const bool enBytes = !esUtf8(texto);
    std::string salida = "\"";
    for (const char c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '\\':
                salida += "\\\\";
                break;
            case '"':
                salida += "\\\"";
                break;
            case '\n':
                salida += "\\n";
                break;
            case '\r':
                salida += "\\r";
                break;
            case '\t':
                salida += "\\t";
                break;
            default:
                if (esControl(c) || (enBytes && byte >= 0x80)) {
                    anadirHex(salida, byte);
                } else {
                    salida.push_back(c);
                }
        }
    }
    return salida + '"';
}

std::string escribirNombre(std::string_view nombre) {
    const bool comentario = !nombre.empty() && (nombre.front() == ';' || nombre.front() == '#');
    if (nombre.empty() || comentario || quiereComillas(nombre, "\"\\[]=")) return entreComillas(nombre);
    return std::string(nombre);
}

std::string escribirValor(std::string_view valor) {
    return quiereComillas(valor, {}) ? entreComillas(valor) : std::string(valor);
}

int cifraHex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Takes one escape behind its backslash off `texto`; false when there is no such escape.
bool leerEscape(std::string_view& texto, std::string& salida) {
    if (texto.empty()) return false;
    const char c = texto.front();
    texto.remove_prefix(1);
    switch (c) {
        case '\\':
        case '"':
            salida.push_back(c);
            return true;
        case 'n':
            salida.push_back('\n');
            return true;
        case 'r':
            salida.push_back('\r');
            return true;
        case 't':
            salida.push_back('\t');
            return true;
        case 'x':
            break;
        default:
            return false;
    }
    if (texto.size() < 2 || cifraHex(texto[0]) < 0 || cifraHex(texto[1]) < 0) return false;
    salida.push_back(static_cast<char>(cifraHex(texto[0]) * 16 + cifraHex(texto[1])));
    texto.remove_prefix(2);
    return true;
}

// Takes a text in quotes off `texto`, which starts with one.
std::optional<std::string> leerComillas(std::string_view& texto) {
    std::string salida;
    texto.remove_prefix(1);
    while (!texto.empty()) {
        const char c = texto.front();
        texto.remove_prefix(1);
        if (c == '"') return salida;
        if (c != '\\') {
            salida.push_back(c);
        } else if (!leerEscape(texto, salida)) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

// Takes a name and the `final` character behind it off `texto`.
std::optional<std::string> leerNombre(std::string_view& texto, char final) {
    std::string nombre;
    if (!texto.empty() && texto.front() == '"') {
        const auto leido = leerComillas(texto);
        while (!texto.empty() && esBlanco(texto.front()))
            texto.remove_prefix(1);
        if (!leido || texto.empty() || texto.front() != final) return std::nullopt;
        nombre = *leido;
    } else {
        const std::size_t corte = texto.find(final);
        if (corte == std::string_view::npos) return std::nullopt;
        nombre = sinBlancos(texto.substr(0, corte));
        if (nombre.empty() || quiereComillas(nombre, "\"\\[]=")) return std::nullopt;
        texto.remove_prefix(corte);
    }
    texto.remove_prefix(1);
    while (!texto.empty() && esBlanco(texto.front()))
        texto.remove_prefix(1);
    return nombre;
}

std::optional<std::string> leerValor(std::string_view texto) {
    if (texto.empty() || texto.front() != '"') {
        if (quiereComillas(texto, {})) return std::nullopt;
        return std::string(texto);
    }
    auto valor = leerComillas(texto);
    return texto.empty() ? valor : std::nullopt;
}

ClaveAjuste plegar(const ClaveAjuste& donde) {
    return {plegarCaja(donde.producto), plegarCaja(donde.seccion), plegarCaja(donde.clave)};
}

bool mismaSeccion(const ClaveAjuste& a, const ClaveAjuste& b) {
    return a.producto == b.producto && a.seccion == b.seccion;
}

std::string escribirLinea(std::string_view clave, std::string_view valor) {
    return escribirNombre(clave) + '=' + escribirValor(valor);
}

}  // namespace

AjustesTexto::AjustesTexto(std::string_view texto) {
    Linea cabecera;  // the one in force; one that is not understood leaves none
    if (texto.substr(0, marcaOrden.size()) == marcaOrden) texto.remove_prefix(marcaOrden.size());
    if (texto.find("\r\n") != std::string_view::npos) fin_ = "\r\n";
    while (!texto.empty()) {
        const std::size_t corte = texto.find('\n');
        std::string_view cruda = texto.substr(0, corte);
        texto.remove_prefix(corte == std::string_view::npos ? texto.size() : corte + 1);
        if (!cruda.empty() && cruda.back() == '\r') cruda.remove_suffix(1);
        Linea linea = interpretar(cruda, cabecera);
        if (sinBlancos(cruda).substr(0, 1) == "[") cabecera = linea;
        lineas_.push_back(std::move(linea));
    }
}

AjustesTexto::Linea AjustesTexto::interpretar(std::string_view cruda, const Linea& cabecera) {
    Linea linea;
    linea.cruda = cruda;
    std::string_view resto = sinBlancos(cruda);
    if (resto.empty() || resto.front() == ';' || resto.front() == '#') return linea;
    linea.clase = Clase::omitida;
    if (resto.front() == '[') {
        leerCabecera(resto, linea);
        return linea;
    }
    if (cabecera.clase != Clase::cabecera) return linea;
    const auto clave = leerNombre(resto, '=');
    const auto valor = clave ? leerValor(resto) : std::nullopt;
    if (!valor) return linea;
    linea.clase = Clase::valor;
    linea.donde = {cabecera.donde.producto, cabecera.donde.seccion, *clave};
    linea.plegada = {cabecera.plegada.producto, cabecera.plegada.seccion, plegarCaja(*clave)};
    linea.valor = *valor;
    return linea;
}

void AjustesTexto::leerCabecera(std::string_view resto, Linea& linea) {
    resto.remove_prefix(1);
    const auto producto = leerNombre(resto, '\\');
    const auto seccion = producto ? leerNombre(resto, ']') : std::nullopt;
    if (!seccion || !resto.empty()) return;
    linea.clase = Clase::cabecera;
    linea.donde = {*producto, *seccion, {}};
    linea.plegada = plegar(linea.donde);
}

std::optional<std::size_t> AjustesTexto::ultima(const ClaveAjuste& plegada) const {
    for (std::size_t i = lineas_.size(); i-- > 0;) {
        if (lineas_[i].clase == Clase::valor && lineas_[i].plegada == plegada) return i;
    }
    return std::nullopt;
}

std::optional<std::string> AjustesTexto::leer(const ClaveAjuste& donde) const {
    const auto indice = ultima(plegar(donde));
    if (!indice) return std::nullopt;
    return lineas_[*indice].valor;
}

bool AjustesTexto::grabar(const ClaveAjuste& donde, std::string_view valor) {
    const ClaveAjuste plegada = plegar(donde);
    const auto indice = ultima(plegada);
    if (!indice) {
        insertar({escribirLinea(donde.clave, valor), Clase::valor, donde, plegada, std::string(valor)});
        return true;
    }
    Linea& linea = lineas_[*indice];
    if (linea.valor == valor) return false;
    linea.valor = valor;
    linea.cruda = escribirLinea(linea.donde.clave, valor);
    return true;
}

std::optional<AjustesTexto::Sitio> AjustesTexto::sitio(const ClaveAjuste& donde) const {
    const auto indice = ultima(plegar(donde));
    if (!indice) return std::nullopt;
    const std::string& cruda = lineas_[*indice].cruda;
    const auto igual = cruda.find('=');
    if (cruda.find('"') != std::string::npos || igual == std::string::npos) return std::nullopt;
    Sitio sitio{igual + 1, cruda.size() - igual - 1};
    for (std::size_t i = 0; i < *indice; ++i)
        sitio.desde += lineas_[i].cruda.size() + fin_.size();
    return sitio;
}

bool AjustesTexto::grabarConSitio(const ClaveAjuste& donde, std::string_view valor, std::size_t ancho) {
    const bool cambia = grabar(donde, valor);
    std::string& cruda = lineas_[*ultima(plegar(donde))].cruda;
    if (valor.size() < ancho) cruda.append(ancho - valor.size(), ' ');
    return cambia;
}

// A new value stands below the last line of its section, which may have to be opened.
void AjustesTexto::insertar(Linea linea) {
    const auto suya = [&](const Linea& otra) {
        const bool cuenta = otra.clase == Clase::cabecera || otra.clase == Clase::valor;
        return cuenta && mismaSeccion(otra.plegada, linea.plegada);
    };
    const auto ultimaSuya = std::find_if(lineas_.rbegin(), lineas_.rend(), suya);
    if (ultimaSuya != lineas_.rend()) {
        lineas_.insert(ultimaSuya.base(), std::move(linea));
        return;
    }
    if (!lineas_.empty() && !lineas_.back().cruda.empty()) lineas_.emplace_back();
    const ClaveAjuste& donde = linea.donde;
    Linea cabecera;
    cabecera.cruda = '[' + escribirNombre(donde.producto) + '\\' + escribirNombre(donde.seccion) + ']';
    cabecera.clase = Clase::cabecera;
    cabecera.donde = {donde.producto, donde.seccion, {}};
    cabecera.plegada = plegar(cabecera.donde);
    lineas_.push_back(std::move(cabecera));
    lineas_.push_back(std::move(linea));
}

bool AjustesTexto::borrar(const ClaveAjuste& donde) {
    const ClaveAjuste plegada = plegar(donde);
    return std::erase_if(lineas_, [&](const Linea& linea) {
               return linea.clase == Clase::valor && linea.plegada == plegada;
           }) != 0;
}

std::vector<Ajuste> AjustesTexto::listar() const {
    std::vector<Ajuste> ajustes;
    for (std::size_t i = 0; i < lineas_.size(); ++i) {
        const Linea& linea = lineas_[i];
        if (linea.clase == Clase::valor && ultima(linea.plegada) == i) {
            ajustes.push_back({linea.donde, linea.valor});
        }
    }
    return ajustes;
}

std::vector<std::string> AjustesTexto::omitidas() const {
    std::vector<std::string> omitidas;
    for (std::size_t i = 0; i < lineas_.size(); ++i) {
        if (lineas_[i].clase != Clase::omitida) continue;
        omitidas.push_back("line " + std::to_string(i + 1) + ": " + lineas_[i].cruda);
    }
    return omitidas;
}

std::string AjustesTexto::texto() const {
    std::string texto;
    for (const Linea& linea : lineas_)
        texto.append(linea.cruda).append(fin_);
    return texto;
}

}  // namespace tarvoline::platform
