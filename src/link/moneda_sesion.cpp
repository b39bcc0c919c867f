#include "link/moneda_sesion.h"

#include <algorithm>
#include <span>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/monedas.h"
#include "data/utilidades.h"

namespace tarvoline::link {

namespace {

constexpr std::size_t letrasDeCodigo = 3;
constexpr std::size_t ultimaFila = data::numeroMonedas - 1;

bool sinMoneda(const std::string& codigo) {
    return codigo.empty() || codigo.front() == '\0' || codigo.front() == ' ';
}

std::optional<std::size_t> filaDe(const data::TablaMonedas& tabla, const std::string& codigo) {
    const auto hallada = std::ranges::find(tabla, codigo, &data::FilaMoneda::abreviatura);
    if (hallada == tabla.end()) return std::nullopt;
    return static_cast<std::size_t>(hallada - tabla.begin());
}

// The row takes its decimals from the base currency.
data::FilaMoneda nuevaFila(const data::FilaMoneda& base, const std::string& codigo, double cambio) {
    data::FilaMoneda fila;
    fila.nombre = fila.abreviatura = codigo;
    fila.cambio = cambio;
    fila.decimales = base.decimales;
    fila.decimalesEnVigor = base.decimalesEnVigor;
    return fila;
}

// The currency's row in the file, which another program may just have taken it into: the first free one, or
// the last when all are taken.
std::size_t anotar(data::CapaDatos& capa, const std::string& codigo, double cambio) {
    std::size_t fila = ultimaFila;
    data::exigirCambioEmpresa(capa, data::rutaMonedas(capa), [&](platform::Archivo& archivo) {
        std::string bytes(data::numeroMonedas * data::bytesMoneda, '\0');
        archivo.leer(0, std::as_writable_bytes(std::span(bytes)));
        const data::TablaMonedas tabla = data::interpretarMonedas(bytes);
        if (const auto hallada = filaDe(tabla, codigo)) {
            fila = *hallada;
            return;
        }
        const auto libre = std::ranges::find_if(tabla, &data::FilaMoneda::libre);
        if (libre != tabla.end()) fila = static_cast<std::size_t>(libre - tabla.begin());
        archivo.escribir(fila * data::bytesMoneda,
                         platform::comoBytes(data::componerMoneda(nuevaFila(tabla.front(), codigo, cambio))));
    });
    return fila;
}

}  // namespace

void MonedaSesion::resolver() {
    Contexto::Interior& contexto = sesion_.contexto;
    if (contexto.Moneda.empty()) contexto.Moneda.assign(letrasDeCodigo, '\0');
    sesion_.gIndiceMoneda.assign(1, '0');
    if (sinMoneda(contexto.Moneda)) {
        contexto.CambioMoneda = 1;
        return;
    }
    // As the table keeps it.
    const std::string codigo = core::Recortar(core::Mid(contexto.Moneda, 1, letrasDeCodigo));
    data::MonedasEnVigor& monedas = contexto.datos.monedas;
    const auto conocida = std::ranges::find(monedas.AbreviaturasMonedas, codigo);
    auto fila = static_cast<std::size_t>(conocida - monedas.AbreviaturasMonedas.begin());
    if (conocida == monedas.AbreviaturasMonedas.end()) {
        fila = anotar(contexto.datos, codigo, contexto.CambioMoneda);
        monedas.AbreviaturasMonedas[fila] = codigo;
        monedas.DecimalesMonedas[fila] = monedas.DecimalesMonedas.front();
    }
    sesion_.gIndiceMoneda = std::to_string(fila);
}

Enlace::ValoresMoneda MonedaSesion::calcular(double importe) const {
    data::CapaDatos& datos = sesion_.contexto.datos;
    const double cambio = sesion_.contexto.CambioMoneda, segunda = datos.monedas.CambioMonedaBase;
    Enlace::ValoresMoneda valores;
    valores.ValorEnPesetas = data::Redondear(datos, cambio == 0 ? importe : cambio * importe);
    if (segunda == 0) {
        datos.mostrar({.texto = "No está definida el cambio de moneda", .titulo = "Veldorix"});
    } else if (segunda == cambio) {
        valores.ValorEnEuros = importe;
    } else {
        valores.ValorEnEuros =
            data::Redondear(valores.ValorEnPesetas / segunda, datos.monedas.DecimalesMonedas[1]);
    }
    return valores;
}

}  // namespace tarvoline::link
