// The rows of an invoice in the books of a company and of the year before, for the cash-basis regime.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/tabla_cursor.h"
#include "link/posiciones.h"
#include "link/reparto_caja.h"
#include "link/sesion.h"

namespace tarvoline::link {

// Which invoice.
struct FacturaPedida {
    std::string tercero;  // account of the customer or supplier
    std::string factura;
    std::string fecha{};  // of the invoice, as stored; "": any
};

// A row of the book of invoices, apart from its table.
class FilaIva {
  public:
    // The current row.
    static FilaIva leer(data::TablaCursor& cursor);
    // Fills the row that is being made.
    void escribir(data::TablaCursor& cursor) const;

    // By position.
    std::string texto(int posicion) const { return textos_[indice(posicion)]; }
    void poner(int posicion, std::string_view valor) { textos_[indice(posicion)] = valor; }
    ImportesFila importes{};

    // A row with the date of a collection or payment; the invoice itself has none.
    bool esCobro() const;

  private:
    static constexpr std::size_t posiciones = posicion::iva::periodo + 1;
    static std::size_t indice(int posicion) { return static_cast<std::size_t>(posicion); }

    std::array<std::string, posiciones> textos_{};
    double cuota_ = 0, recargo_ = 0;  // percentages
};

struct FilasFactura {
    std::vector<FilaIva> factura, cobros;

    bool vacias() const { return factura.empty() && cobros.empty(); }
    void anadir(FilasFactura otras);
    double totalFactura() const;
    double totalCobrado() const;
    // What has been collected of each row of `factura`.
    std::vector<ImportesFila> cobradoPorFila() const;
};

class LibroFacturas {
  public:
    explicit LibroFacturas(Sesion& sesion) : sesion_(sesion) {}
    FilasFactura enVigor(const FacturaPedida& pedida);
    // Those of the company of the year before; none when there is no such company.
    FilasFactura delAñoAnterior(const FacturaPedida& pedida);

  private:
    FilasFactura leer(const std::string& ruta, const FacturaPedida& pedida);
    std::optional<std::string> rutaAñoAnterior();

    Sesion& sesion_;
};

// Kind of the rows of a collection, by that of the invoice's rows; any other kind stays.
std::string serieDeCobro(std::string_view serie);

}  // namespace tarvoline::link
