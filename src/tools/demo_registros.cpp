#include "tools/demo_registros.h"

#include <array>
#include <cmath>
#include <stdexcept>

#include "core/texto.h"
#include "data/bytes.h"
#include "data/utilidades.h"

namespace tarvoline::tools {

namespace {

using namespace std::string_view_literals;

constexpr std::array nombres = {"María"sv,  "José"sv,    "Begoña"sv,   "Íñigo"sv,  "Andrés"sv, "Lucía"sv,
                                "Núria"sv,  "Ramón"sv,   "Asunción"sv, "Álvaro"sv, "Inés"sv,   "Tomás"sv,
                                "Mónica"sv, "Joaquín"sv, "Carmen"sv,   "Hugo"sv,   "Paula"sv,  "Óscar"sv};
constexpr std::array apellidos = {
    "Núñez"sv, "García"sv, "Muñoz"sv, "Peña"sv,      "Sánchez"sv, "Ibáñez"sv,    "Martínez"sv, "Gómez"sv,
    "Yáñez"sv, "Ferrer"sv, "Ruiz"sv,  "Domínguez"sv, "Castaño"sv, "Rodríguez"sv, "Alarcón"sv,  "Pascual"sv};
constexpr std::array oficios = {"Harinas"sv,   "Transportes"sv, "Lácteos"sv,  "Suministros"sv, "Cafés"sv,
                                "Papelería"sv, "Hostelería"sv,  "Talleres"sv, "Limpiezas"sv,   "Embalajes"sv};
constexpr std::array calles = {"Calle Mayor"sv,     "Avenida de la Constitución"sv,
                               "Plaza de España"sv, "Calle del Peñón"sv,
                               "Paseo Marítimo"sv,  "Camino Viejo"sv};
constexpr std::array municipios = {"Logroño"sv, "A Coruña"sv, "Cádiz"sv, "León"sv, "Málaga"sv, "Ávila"sv};
constexpr std::array articulos = {"pan de molde"sv, "bollería"sv,          "harina de trigo"sv,
                                  "levadura"sv,     "azúcar moreno"sv,     "café en grano"sv,
                                  "servilletas"sv,  "alquiler del local"sv};
struct Tipo {
    std::string_view codigo;
    double porcentaje, recargo;
};
constexpr std::array tipos = {Tipo{"01", 21, 5.2}, Tipo{"02", 10, 1.4}, Tipo{"03", 4, 0.5}};

constexpr int anchoCuenta = 10;

double centimos(double importe) {
    return data::Redondear(importe, 2);
}

// One record: fields in the order of the file, each of its width.
class Registro {
  public:
    Registro& texto(std::string_view utf8, std::size_t ancho) {
        auto bytes = core::aAnsi(utf8).bytes();
        bytes.resize(ancho, ' ');
        bytes_ += bytes;
        return *this;
    }
    Registro& doble(double valor) {
        std::array<std::byte, sizeof(double)> bytes{};
        data::ponerNumero(std::span(bytes), valor);
        for (const auto b : bytes) {
            bytes_ += static_cast<char>(b);
        }
        return *this;
    }
    // The record, which must have come out at its length.
    const std::string& deLongitud(std::size_t longitud) const {
        if (bytes_.size() != longitud) throw std::logic_error("a record has the wrong length");
        return bytes_;
    }

  private:
    std::string bytes_;
};

struct Fecha {
    int anio, mes, dia;

    std::string guardada() const {
        const auto decena = static_cast<char>('A' + anio % 100 / 10);
        return decena + std::to_string(anio % 10) + core::conCeros(mes, 2) + core::conCeros(dia, 2);
    }
};

// The `indice`-th of `cuantos` events that spread over the year in order.
Fecha fechaDe(int anio, int indice, int cuantos) {
    constexpr int diasPorMes = 28;
    const int dia = static_cast<int>(static_cast<long long>(indice) * 12 * diasPorMes / std::max(1, cuantos));
    return {anio, dia / diasPorMes + 1, dia % diasPorMes + 1};
}

std::string persona(Azar& azar) {
    return std::string(azar.uno(nombres)) + " " + std::string(azar.uno(apellidos)) + " " +
           std::string(azar.uno(apellidos));
}

std::string sociedad(Azar& azar) {
    return std::string(azar.uno(oficios)) + " " + std::string(azar.uno(apellidos)) +
           (azar.unaDeCada(2) ? ", S.L." : " e Hijos, S.A.");
}

// Account of a customer (430) or a supplier (400).
std::string cuenta(std::string_view grupo, int numero) {
    return std::string(grupo) + core::conCeros(numero, anchoCuenta - static_cast<int>(grupo.size()));
}

std::string nif(Azar& azar) {
    constexpr std::string_view letras = "TRWAGMYFPDXBNJZSQVHLCKE";
    const auto cifras = azar.cifras(8);
    return cifras + letras[static_cast<std::size_t>(core::ValEntero(cifras)) % letras.size()];
}

struct Linea {
    std::string cuenta, titulo, descripcion, referencia;
    double importe;  // above 0 debit, below 0 credit
};

std::string registroApunte(const Fecha& fecha, int asiento, const Linea& linea) {
    const auto dia = fecha.guardada();
    return Registro()
        .texto(dia, 6)
        .texto(linea.cuenta, 10)
        .texto(core::conCeros(asiento, 6), 6)
        .texto(linea.descripcion, 60)
        .texto(linea.importe < 0 ? "2" : "1", 1)
        .doble(linea.importe)
        .texto("", 3)   // mark
        .texto("1", 1)  // journal
        .doble(0)
        .doble(0)
        .texto("0", 1)  // currency
        .doble(1)
        .doble(linea.importe)
        .texto("000", 3)
        .texto("99", 2)
        .texto("", 250)
        .texto(linea.titulo, 40)
        .texto("", 6)
        .texto("", 10)
        .texto(dia, 6)
        .texto(linea.referencia, 20)
        .deLongitud(465);
}

// A sale: customer against sales and output tax. The three lines add up to nothing.
std::string asientoVenta(Azar& azar, const Fecha& fecha, int asiento) {
    const double base = azar.importe(3000);
    const double cuota = centimos(base * tipos[0].porcentaje / 100);
    const int cliente = azar.entre(1, 400);
    const auto factura = "F" + core::conCeros(asiento, 6);
    const auto concepto = "Venta de " + std::string(azar.uno(articulos)) + ", factura " + factura;
    return registroApunte(
               fecha, asiento,
               {cuenta("430", cliente), sociedad(azar), concepto, factura, centimos(base + cuota)}) +
           registroApunte(fecha, asiento,
                          {cuenta("700", 1), "Ventas de mercaderías", concepto, factura, -base}) +
           registroApunte(fecha, asiento,
                          {cuenta("477", 21), "H.P. IVA repercutido", concepto, factura, -cuota});
}

}  // namespace

std::string tablaApuntes(Azar& azar, int anio, int cuantos) {
    constexpr int lineasPorAsiento = 3;
    std::string tabla;
    const int asientos = cuantos / lineasPorAsiento;
    for (int i = 0; i < asientos; ++i) {
        tabla += asientoVenta(azar, fechaDe(anio, i, asientos), i + 1);
    }
    return tabla;
}

std::string tablaTerceros(Azar& azar, int cuantos) {
    std::string tabla;
    for (int i = 1; i <= cuantos; ++i) {
        const bool cliente = i % 2 == 0;
        const auto municipio = azar.uno(municipios);
        tabla += Registro()
                     .texto(cuenta(cliente ? "430" : "400", i), 10)
                     .texto(cliente ? persona(azar) : sociedad(azar), 50)
                     .texto(nif(azar), 18)
                     .texto(std::string(azar.uno(calles)) + ", " + std::to_string(azar.entre(1, 180)), 99)
                     .texto(azar.cifras(5), 8)
                     .texto(municipio, 30)
                     .texto(municipio, 22)
                     .texto("B", 1)
                     .doble(0)
                     .texto("9" + azar.cifras(8), 15)
                     .texto("", 15)
                     .doble(azar.entre(1, 60) * 100)
                     .texto("01", 2)
                     .texto(azar.unaDeCada(5) ? "Llamar antes de las diez; paga a fin de mes." : "", 250)
                     .texto("ES", 2)
                     .texto("30 60", 15)
                     .texto("25", 15)
                     .texto("contacto" + std::to_string(i) + "@cliente.example", 99)
                     .texto("", 99)
                     .doble(0)
                     .doble(0)
                     .doble(0)
                     .doble(0)
                     .texto("0", 1)
                     .texto("0", 1)
                     .texto("0", 1)
                     .deLongitud(801);
    }
    return tabla;
}

std::string tablaFacturas(Azar& azar, int anio, int cuantos) {
    std::string tabla;
    for (int i = 1; i <= cuantos; ++i) {
        const auto& tipo = tipos[static_cast<std::size_t>(azar.entre(0, 2))];
        const auto dia = fechaDe(anio, i - 1, cuantos).guardada();
        const double base = azar.importe(5000);
        const double cuota = centimos(base * tipo.porcentaje / 100);
        tabla += Registro()
                     .texto(cuenta("430", azar.entre(1, 400)), 10)
                     .texto(sociedad(azar), 50)
                     .texto(nif(azar), 18)
                     .texto("F" + core::conCeros(i, 6), 20)
                     .doble(base)
                     .texto(tipo.codigo, 2)
                     .texto(core::conCeros(i, 6), 6)
                     .texto(cuenta("477", static_cast<int>(tipo.porcentaje)), 10)
                     .texto("R", 1)
                     .texto(dia, 6)
                     .texto(core::conCeros(i, 10), 10)
                     .doble(tipo.porcentaje)
                     .doble(tipo.recargo)
                     .doble(centimos(base + cuota))
                     .texto("", 3)
                     .doble(cuota)
                     .doble(0)
                     .texto(dia, 6)
                     .texto("F" + core::conCeros(i, 6), 20)
                     .doble(0)
                     .texto("A", 10)
                     .texto("", 2)
                     .texto("", 6)
                     .texto("", 1)
                     .texto("", 40)
                     .doble(0)
                     .texto("", 2)
                     .doble(centimos(base + cuota))
                     .texto("F1", 2)
                     .texto("Venta de " + std::string(azar.uno(articulos)), 500)
                     .texto("", 30)
                     .texto("", 60)
                     .texto("", 60)
                     .texto("", 6)
                     .deLongitud(953);
    }
    return tabla;
}

}  // namespace tarvoline::tools
