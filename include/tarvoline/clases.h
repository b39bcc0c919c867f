// The plain records that callers of the link give and get. Fields have no behaviour; texts are UTF-8.
//
// Dates: as given to the Enlace members that take them, "dd/mm/yy" where the link fills them. TIPO of a line:
// 1 debit, 2 credit; on posting also 3, a debit with the sign turned, and 4, such a credit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvoline::link {

// A line of the journal.
struct ApunteClass {
    std::string Cuenta{};       // ten characters at most
    std::string Descripción{};  // 60
    int TIPO = 0;
    double Importe = 0;
    std::string Diario{};  // "1" to "9", "A" opening, "B" regularisation, "C" closing; any other is "1"
    std::uint8_t Punteo = 0;
    std::string Canal{};       // three digits; "N": the channel of the session
    std::string Referencia{};  // 20
    std::int32_t REGISTRO = 0;
    std::string NOTAS{};          // 250
    std::string ArchivoImagen{};  // path of a PDF to be kept with the entry
};

// What a line of the journal is divided into.
struct AnaliticaClass {
    std::string CuentaContable{};   // account of the journal line
    std::string CuentaAnalitica{};  // analytic account
    std::string Descripción{};      // "": that of the journal line
    double Importe = 0;
};

// A line of the portfolio.
struct CarteraClass {
    std::string FechaVencimiento{};
    std::string Cuenta{};
    std::string cartera{};  // code of the portfolio or bank, ten characters
    std::string NOTAS{};    // 99
    double Importe = 0;
    std::string Marca{};
    std::string Fecha{};    // of the entry, as read
    std::string Asiento{};  // of the entry, as read
};

using CarteraLeida = std::vector<std::shared_ptr<CarteraClass>>;

// Lines of the portfolio that are asked for; what is empty restricts nothing. Dates in any form that the link
// takes; both limits are in the range.
struct FiltroCartera {
    std::string cartera{};
    std::string DesdeFechaVencimiento{};
    std::string HastaFechaVencimiento{};
    std::string Cuenta{};
    std::string Asiento{};
};

// A line of the book of invoices.
struct IVAClass {
    std::string CuentaClienteProveedor{};
    std::string CuentaIVA{};
    std::string Factura{};
    std::string FechaFactura{};
    std::string TipoIva{};  // number of the rate ("2", "02", "A1"), or its percentage ("21.00")
    std::string SRTC{};     // series, one character
    double Base = 0;        // 0: worked out from TOTAL
    double TOTAL = 0;       // 0: worked out from Base
    std::uint8_t Prorata = 0;
    std::string titulo{};       // "": that of the account
    std::string NIF{};          // the same
    std::string NumeroOrden{};  // ten digits; "": the next of the series
    std::string Referencia{};
    double CuotaProrrata = 0;  // worked out
    std::string SerieFacturas{};
    std::string CLAVEOPERACION{};
    std::string FechaCobro{};
    std::string MedioCobro{};
    std::string DescripcionMedioCobro{};
    double PorcRetencion = 0;
    std::string RegimenEspecial{};
    double Liquido = 0;  // 0: worked out
    std::string SII_Codigo{};
    std::string SII_DescripcionDocumento{};
    std::string SII_Id{};
    std::string SII_FacturaExtendida{};
    std::string SII_FacturaRectificativa_DUA{};
    std::string SII_PeriodoPresentacion{};  // "-1": the month of the entry; "0": none
};

// A rate of VAT.
struct TipoIvaClass {
    int TIPO = 0;  // its number
    std::string Descripción{};
    std::string ClaveOp2{};
    std::string ClaveOp{};
    double Cuota = 0;    // percentage of the tax
    double Recargo = 0;  // percentage of the surcharge
};

// A line of a statement.
struct ExtractoClass {
    std::string Cuenta{};
    std::string Fecha{};
    std::string Asiento{};
    std::string Descripción{};
    int TIPO = 0;
    double Importe = 0;  // in the base currency as it stands on disk, a credit negative
    std::string Diario{};
    std::uint8_t Punteo = 0;
    std::string Canal{};
    std::string Referencia{};
    std::string Moneda{};  // index in the currency table
    double CambioMoneda = 0;
    double ValorEnMoneda = 0;
    std::string Usuario{};
    std::string FechaGrabacion{};
    std::int32_t REGISTRO = 0;
    double Debe = 0;
    double Haber = 0;
    double Saldo = 0;  // running
};

struct DebeClass {
    double Importe = 0;
};
struct HaberClass {
    double Importe = 0;
};

// Periods of an account: 0 opening, 1 to 12 the months, 13 regularisation, 14 closing.
inline constexpr std::size_t periodosPlan = 15;

// An account of a chart.
struct PlanClass {
    std::string Cuenta{};
    std::string titulo{};
    std::string Nivel{};  // "0" an account for posting, "1" to "8" a parent
    std::array<DebeClass, periodosPlan> coldebe{};
    std::array<HaberClass, periodosPlan> colhaber{};
    double DebeApertura = 0;
    double DebeEnero = 0;
    double DebeFebrero = 0;
    double DebeMarzo = 0;
    double DebeAbril = 0;
    double DebeMayo = 0;
    double DebeJunio = 0;
    double DebeJulio = 0;
    double DebeAgosto = 0;
    double DebeSeptiembre = 0;
    double DebeOctubre = 0;
    double DebeNoviembre = 0;
    double DebeDiciembre = 0;
    double DebeRegularizacion = 0;
    double DebeCierre = 0;
    double HaberApertura = 0;
    double HaberEnero = 0;
    double HaberFebrero = 0;
    double HaberMarzo = 0;
    double HaberAbril = 0;
    double HaberMayo = 0;
    double HaberJunio = 0;
    double HaberJulio = 0;
    double HaberAgosto = 0;
    double HaberSeptiembre = 0;
    double HaberOctubre = 0;
    double HaberNoviembre = 0;
    double HaberDiciembre = 0;
    double HaberRegularizacion = 0;
    double HaberCierre = 0;
    bool EsAnalitica = false;
    std::string NIF{};
    std::string NOTAS{};
    std::string OMITIR347{};
    std::string OMITIR415{};
    std::string Clave347{};
    std::string CriterioCaja{};
};

// Master data of an account.
struct DatosClass {
    std::string Cuenta{};
    std::string titulo{};
    std::string NIF{};
    std::string Direccion{};
    std::string cp{};
    std::string Municipio{};
    std::string Provincia{};
    std::string CVP{};
    double Importe_347 = 0;
    std::string Telefono{};
    std::string Fax{};
    double Riesgo = 0;
    std::string TipoIva{};
    std::string NOTAS{};
    std::string Vencimientos{};
    std::string DiasDePago{};
    std::string email{};
    std::string PaginaWeb{};
    std::string Pais{};
    bool EsCriterioCaja = false;
    std::string OMITIR347{};
    std::string OMITIR415{};
    double Trimestre1_347 = 0;
    double Trimestre2_347 = 0;
    double Trimestre3_347 = 0;
    double Trimestre4_347 = 0;
};

// Master data to be stored: "-1" leaves the field as it is, numbers are texts.
struct DatosNuevos {
    std::string Cuenta{};
    std::string titulo = "-1";
    std::string NIF = "-1";
    std::string Direccion = "-1";
    std::string cp = "-1";
    std::string Municipio = "-1";
    std::string Provincia = "-1";
    std::string CVP = "-1";
    std::string Importe_347 = "-1";
    std::string Telefono = "-1";
    std::string Fax = "-1";
    std::string Riesgo = "-1";
    std::string TipoIva = "-1";
    std::string NOTAS = "-1";
    bool Actualizar = false;  // the global data of this NIF, when there are some already
    std::string Pais = "-1";
    std::string Vencimientos = "-1";
    std::string DiasDePago = "-1";
    std::string email = "-1";
    std::string PaginaWeb = "-1";
    std::string CriterioCaja = "-1";  // "1" or "0"
    std::string OMITIR347 = "-1";
    std::string OMITIR415 = "-1";
};

// The collection of a customer's invoice, or the payment of a supplier's. Amounts and codes are texts.
struct CobroFactura {
    std::string ClienteProveedor{};
    std::string Factura{};
    std::string Importe{};  // "121.00" or "121,00"
    std::string CuentaContable{};
    std::string CLAVEOPERACION{};  // 0 to 8; "": that of the invoice
    std::string Fecha{};
    std::string MedioCobro{};  // 0 to 2
    std::string DescripcionMedioCobro{};
    std::string DescripcionAsiento{};  // "": "Cobro Factura" or "Pago Factura" and its number
    std::string Diario = "1";
    std::string Canal = "N";
    std::string Referencia{};
    std::string NOTAS{};
    std::string ArchivoImagen{};  // a PDF
    std::string FechaFactura{};   // "": any
};

// An entry by its date and number.
struct FechaAsto {
    std::string Fecha{};
    std::string Asiento{};
    bool operator==(const FechaAsto&) const = default;
};

}  // namespace tarvoline::link
