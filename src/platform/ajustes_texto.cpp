#include "platform/ajustes_texto.h"

#include <algorithm>
#include <string>

#include "platform/caja.h"
#include "platform/comillas.h"

namespace tarvoline::platform {

namespace {

constexpr std::string_view marcaOrden = "\xEF\xBB\xBF";

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
