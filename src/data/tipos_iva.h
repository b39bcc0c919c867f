// The VAT rates file (IVA03.QZF): records of 33 bytes, docs/formats.md. Rates are numbered from 1 to 300;
// rate 0 is not in the file. Texts are UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/capa_datos.h"

namespace tarvoline::data {

inline constexpr std::size_t bytesTipoIva = 33;
inline constexpr int maxTiposIva = 300;

struct TipoIva {
    std::string Descripción;  // 21 characters
    std::string ClaveOp2;     // 2
    std::string ClaveOp;      // 2
    float Cuota = 0;          // percentage of the tax
    float Recargo = 0;        // percentage of the surcharge

    bool operator==(const TipoIva&) const = default;
};

// Bytes that are not there count as zero.
TipoIva interpretarTipoIva(std::string_view bytes);
// Exactly bytesTipoIva bytes; texts are cut or filled with blanks.
std::string componerTipoIva(const TipoIva& tipo);

class TiposIva {
  public:
    TiposIva() = default;
    // The content of a file; what lies behind rate 300 is passed over.
    explicit TiposIva(std::string_view bytes);
    // A record that another program is writing is waited for. Throws platform::ErrorArchivo.
    static TiposIva leer(CapaDatos& capa, std::string_view ruta);

    // The highest rate in the file.
    int cuantos() const { return static_cast<int>(tipos_.size()); }
    // A rate that is not in the file is empty, with percentages of 0.
    const TipoIva& operator()(int numero) const;

  private:
    std::vector<TipoIva> tipos_;
};

// The rates file of the company in force: its own IVA03nn.QZF when its value "IvaporEmpresa" is "1", else the
// common one (RutaDatoComun).
std::string rutaTiposIva(CapaDatos& capa);

}  // namespace tarvoline::data
