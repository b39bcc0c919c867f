// The lines of VAT of an entry on their way to the book of invoices.
#pragma once

#include <optional>
#include <string>

#include "data/tipos_iva.h"
#include "link/asiento_en_curso.h"
#include "link/calculo_iva.h"
#include "tarvoline/clases.h"

namespace tarvoline::link {

class GrabacionIva {
  public:
    // The entry is borrowed. Reads the company's rates. Throws platform::ErrorArchivo.
    explicit GrabacionIva(AsientoEnCurso& asiento);
    void grabar(const IVAClass& linea);

  private:
    std::string numeroOrden(const IVAClass& linea);
    std::string codigoTipo(const IVAClass& linea);
    void elegirTipo(int numero, const IVAClass& linea);
    void ponerIdentidad(const IVAClass& linea);
    void ponerImportes(const IVAClass& linea, const ImportesIva& importes);
    void ponerInmediato(const IVAClass& linea);
    void ponerRetencion(const IVAClass& linea, const ImportesIva& importes);
    std::string periodo(const IVAClass& linea) const;

    AsientoEnCurso& asiento_;
    data::TiposIva tipos_;
    data::TipoIva TipoIvaActual_;
    // Of the line before: lines of one invoice share a number of order.
    std::string factura_, srtc_, orden_;
};

}  // namespace tarvoline::link
