// Balances and counters that postings keep up: the period columns of an account and of its parents, the
// totals in the head of the company file, the counters of analytic lines and of VAT orders.
//
// An account has 15 debit columns, which begin at position 12, and 15 credit columns from position 13, one a
// period: 0 opening, 1 to 12 the months, 13 and 14 the closing periods. The line that is posted stands in
// gCampos of its table; the tables that a routine names must be open with their keys. gCampos stays as it
// was, gComando, gRegistro, gEstado and the tables' positions do not.
//
// With CapaDatos::gMultiusuario every sum is read and written under a lock: a column of eight bytes by its
// own, so that postings to other accounts and periods go on beside it, the head by one on the whole company
// file. None is ever passed over: when the tries are used up (Tablas, acceso_archivo.h) the operation throws
// platform::ErrorArchivo permisoDenegado. What it had added until then stays added.
//
// An account that is missing is made under the lock of the company file, too: a caller must not hold it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "data/capa_datos.h"
#include "data/regla_totales.h"
#include "data/tablas.h"

namespace tarvoline::data {

class Totales {
  public:
    // Both are borrowed and must outlive this object.
    Totales(CapaDatos& capa, Tablas& tablas) : capa_(capa), tablas_(tablas) {}

    // The amount of the line for ActualizarTotalesCuenta, as posted: an ordinary credit is negative.
    double gImporte = 0;
    // Record numbers that the last AsegurarMayores... found or made: [0] the account, [1] to [8] its parents
    // by level; 0: none.
    std::array<std::int32_t, 9> gRegistrosCuenta{};

    // Posts the line of EXTRA (date at 1, account at 2, "1" debit or "2" credit at 5, journal at 8) with
    // gImporte: to its account and all parents in PLANC, missing parents being made, and to CARGOSA or
    // ABONOSA, MES becoming the line's month, in the company file `rutaCabecera` ("": the one in force).
    // Journal "A" is the period 0, "B" 13, "C" 14, any other the month of the date; a month that is none
    // counts as 0. A line neither debit nor credit is told to CapaDatos::avisar and changes nothing. An
    // account that is not in PLANC moves the totals of the company alone.
    void ActualizarTotalesCuenta(int signo, std::string_view rutaCabecera = {});
    // Fills gRegistrosCuenta for the account `codigo` (UTF-8) and makes its missing parents, by the level
    // table of the company in force; nothing when PLANC does not have the account.
    void AsegurarMayoresCuenta(std::string_view codigo);

    // The same for a line of Anali, its analytic account being at position 19, in Costo; the account itself
    // is made when it is missing, and the company file is not touched. `importe`: position 6 of the line.
    void ActualizarTotalesAnalitica(int signo, double importe);
    void AsegurarMayoresAnalitica(std::string_view codigo);

    // The next number of an analytic line in six digits, free in key 3 of Anali; the company file keeps it.
    // Throws std::overflow_error behind 999999, the company file being as before.
    std::string SiguienteContadorAnalitica(std::string_view rutaCabecera = {});
    // The order number behind the highest of a VAT series (one character) in IVA01, in ten digits;
    // "0000000001" for a series without any. Who inserts it first has it: nothing is kept back for the
    // caller.
    std::string SiguienteOrdenIva(std::string_view serie);

  private:
    struct Plan {
        int tabla;     // of the accounts
        int lineas;    // of what is posted
        int posicion;  // of the account in a line
        const std::array<int, 9>& niveles;
    };

    Plan planCuentas() const;
    Plan planAnalitica() const;
    std::optional<ColumnaPeriodo> columnaDe(int lineas);
    void asegurar(const Plan& plan, std::string_view codigo, bool conCuenta);
    std::int32_t buscar(const Plan& plan, const std::string& codigo);
    std::int32_t buscarOCrear(const Plan& plan, const std::string& codigo, std::string_view titulo,
                              std::string_view nivel);
    void crear(const Plan& plan, const std::string& codigo, std::string_view titulo, std::string_view nivel);
    void sumarEnCuentas(const Plan& plan, const ColumnaPeriodo& columna, double importe);
    void sumarEnColumna(int tabla, std::int32_t registro, int campo, double importe);
    void cambiarCabecera(std::string_view ruta, const std::function<void(CabeceraEmpresa&)>& cambiar);
    std::int64_t contadorLibre(std::int64_t numero);

    CapaDatos& capa_;
    Tablas& tablas_;
};

}  // namespace tarvoline::data
