#include "data/monedas.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "data/acceso_archivo.h"
#include "data/bytes.h"
#include "data/datos_comunes.h"
#include "data/texto_fijo.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t lugarDecimales = 0, lugarNombre = 1, lugarAbreviatura = 23, lugarTexto = 26,
                      lugarNumero = 51, lugarCambio = 55, lugarEnVigor = 63;
constexpr std::size_t anchoNombre = 22, anchoAbreviatura = 3, anchoTexto = 25;

constexpr std::size_t segundaMoneda = 1;
// A rate with too few decimals that stands for the peseta, and what the law fixed it at.
constexpr double pesetaCorta = 0.006;
constexpr double pesetaExacta = 1 / 166.386;

std::optional<int> cifra(char byte) {
    return byte >= '0' && byte <= '9' ? std::optional(byte - '0') : std::nullopt;
}

char byteDe(const std::optional<int>& cifra) {
    return cifra ? static_cast<char>('0' + *cifra % 10) : '\0';
}

double cambioSegunda(double cambio) {
    if (!std::isfinite(cambio)) return 0;
    return Redondear(cambio, 3) == pesetaCorta ? pesetaExacta : cambio;
}

std::string_view archivoMonedas(const CapaDatos& capa) {
    return capa.enVigor.cabecera.valor(cabecera::ARCHIVOMONEDABASE) == 1 ? "Moneda1.QZF" : "Moneda.QZF";
}

bool sigueIgual(CapaDatos& capa, std::string_view archivo) {
    const auto& origen = capa.monedas.origen;
    if (!capa.monedas.cargadas || origen.archivo != archivo) return false;
    if (capa.ajustes.leer(clave_comun::monedas) != origen.ajuste) return false;
    return origen.marca.vale(capa.archivos, origen.ruta);
}

void cargarDe(CapaDatos& capa, std::string_view archivo, const std::function<std::string()>& rutaDe) {
    MonedasEnVigor monedas;
    try {
        const auto ruta = rutaDe();
        monedas.origen = {archivo, capa.ajustes.leer(clave_comun::monedas), ruta, {capa.archivos, ruta}};
        const auto tabla = leerMonedas(capa, ruta);
        monedas.CambioMonedaBase = cambioSegunda(tabla[segundaMoneda].cambio);
        for (std::size_t i = 0; i < tabla.size(); ++i) {
            monedas.DecimalesMonedas[i] = tabla[i].decimalesEnVigor.value_or(capa.gDecimalesMoneda);
            monedas.AbreviaturasMonedas[i] = tabla[i].abreviatura;
        }
        monedas.cargadas = true;
    } catch (const platform::ErrorArchivo& error) {
        capa.avisar(error.what());
    }
    capa.monedas = monedas;
}

}  // namespace

FilaMoneda interpretarMoneda(std::string_view bytes) {
    std::string fila(bytes.substr(0, bytesMoneda));
    fila.resize(bytesMoneda);
    const auto numeros = platform::comoBytes(fila);
    const auto texto = [&](std::size_t lugar, std::size_t ancho) {
        return std::string_view(fila).substr(lugar, ancho);
    };
    FilaMoneda moneda;
    moneda.decimales = cifra(fila[lugarDecimales]);
    moneda.nombre = leerTextoFijo(texto(lugarNombre, anchoNombre));
    moneda.abreviatura = leerTextoFijo(texto(lugarAbreviatura, anchoAbreviatura));
    moneda.texto = leerTextoFijo(texto(lugarTexto, anchoTexto));
    moneda.numero = leerNumero<std::int32_t>(numeros.subspan(lugarNumero));
    moneda.cambio = leerNumero<double>(numeros.subspan(lugarCambio));
    moneda.decimalesEnVigor = cifra(fila[lugarEnVigor]);
    return moneda;
}

std::string componerMoneda(const FilaMoneda& fila) {
    std::string bytes(1, byteDe(fila.decimales));
    bytes += ponerTextoFijo(fila.nombre, anchoNombre) + ponerTextoFijo(fila.abreviatura, anchoAbreviatura) +
             ponerTextoFijo(fila.texto, anchoTexto);
    bytes.resize(bytesMoneda);
    const auto numeros = std::as_writable_bytes(std::span(bytes));
    ponerNumero(numeros.subspan(lugarNumero), fila.numero);
    ponerNumero(numeros.subspan(lugarCambio), fila.cambio);
    bytes[lugarEnVigor] = byteDe(fila.decimalesEnVigor);
    return bytes;
}

TablaMonedas interpretarMonedas(std::string_view bytes) {
    TablaMonedas tabla;
    for (std::size_t i = 0; i < tabla.size(); ++i) {
        tabla[i] = interpretarMoneda(bytes.substr(std::min(i * bytesMoneda, bytes.size()), bytesMoneda));
    }
    return tabla;
}

TablaMonedas leerMonedas(CapaDatos& capa, std::string_view ruta) {
    std::string bytes(bytesMoneda * numeroMonedas, '\0');
    exigirEmpresa(capa, ruta, [&](platform::Archivo& archivo) {
        bytes.resize(archivo.leer(0, std::as_writable_bytes(std::span(bytes))));
    });
    return interpretarMonedas(bytes);
}

std::string rutaMonedas(CapaDatos& capa) {
    return RutaDatoComun(capa, clave_comun::monedas, archivoMonedas(capa));
}

void cargarMonedas(CapaDatos& capa) {
    const auto archivo = archivoMonedas(capa);
    if (!sigueIgual(capa, archivo)) cargarDe(capa, archivo, [&] { return rutaMonedas(capa); });
}

void mirarMonedas(CapaDatos& capa) {
    const auto archivo = archivoMonedas(capa);
    cargarDe(capa, archivo, [&] {
        const auto suya = capa.ajustes.leerCarpeta(clave_comun::monedas) + std::string(archivo);
        return platform::existe(capa.archivos, suya) ? suya
                                                     : CarpetaPrograma(capa.carpetas) + std::string(archivo);
    });
}

}  // namespace tarvoline::data
