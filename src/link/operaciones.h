// What a session does with the books of a company. There are two fulfilments: on the files of the company
// (OperacionesLocales), and through the accounting service. Arguments and results are those of the members of
// Enlace with the same names, which has the reference; they work on one Sesion.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tarvoline/clases.h"
#include "tarvoline/registros.h"

namespace tarvoline::link {

enum class Vecino { proximo, anterior, primero, ultimo };

// A chart of accounts, by the table that holds it.
enum class TablaPlan { cuentas = 1, analitica = 8, alterna = 9 };

struct CuentaNueva {
    std::string Cuenta;  // with "*": the number behind the highest that matches takes its place
    std::string titulo;
    std::string Nivel = "0";
    bool IsAnalitica = false;
    std::string NIF = "-1";  // "-1": stays as it is
};

// Accounts of a chart that are asked for. What is empty restricts nothing; the account and the title may be
// patterns with "*" and "?".
struct PeticionPlan {
    enum class Vecina { ninguna, siguiente, anterior };
    TablaPlan plan = TablaPlan::cuentas;
    std::string_view Cuenta, Nivel, titulo;
    std::string_view HastaCuenta;     // given: all accounts from `Cuenta` to this one
    Vecina vecina = Vecina::ninguna;  // the one account behind or before `Cuenta`
};

// The collection or payment of an invoice under the cash-basis regime.
struct CobroCaja {
    CobroFactura datos{};
    bool esProveedor = false;
    bool hacerAsiento = true;
    bool ComprobarCobros = true;
};

class Operaciones {
  public:
    virtual ~Operaciones() = default;

    virtual void LoadEmpresas() = 0;
    virtual void AbrirEmpresa(std::string_view empresa, std::string_view clave) = 0;
    virtual std::string leerConfig(std::string_view nombre) = 0;
    virtual void grabarConfig(std::string_view nombre, std::string_view valor) = 0;
    virtual std::string EmpresaAñoAnterior() = 0;
    // The number that Número("") takes.
    virtual std::string siguienteNumero() = 0;

    virtual std::int32_t GrabarAsiento() = 0;
    // The entry of the session's date and number; at least one of both is set.
    virtual void LeerAsiento() = 0;
    virtual void leerVecino(Vecino cual) = 0;
    virtual bool BuscarReferencia(std::string_view referencia, bool ignorarMayusculas) = 0;
    virtual bool BuscarDescripcion(std::string_view descripcion, bool ignorarMayusculas) = 0;
    virtual bool BuscarImporte(double importe) = 0;
    virtual std::int32_t ExisteReferencia(std::string_view referencia) = 0;
    virtual std::int32_t ExisteIva(std::string_view factura) = 0;
    // The limits are stored dates, or "".
    virtual void LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta,
                              int archivo) = 0;
    virtual std::string LeerExtractoEx(std::string_view cuenta, std::string_view desde,
                                       std::string_view hasta) = 0;

    virtual std::int32_t AnularAsiento(std::string_view fecha, std::string_view numero) = 0;
    virtual void AnularApuntePorReferencia(std::string_view referencia, bool incluirIva,
                                           bool incluirAnalitica) = 0;
    virtual void AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica) = 0;
    virtual void AnularCuenta(std::string_view cuenta) = 0;

    virtual bool LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) = 0;
    virtual std::int32_t LeerPlanEx(const PeticionPlan& peticion) = 0;
    virtual std::int32_t LeerDatos(std::string_view cuenta, std::string_view titulo) = 0;
    // `cuenta.Cuenta` is the account that was made or found when it returns.
    virtual bool crearCuenta(TablaPlan plan, CuentaNueva& cuenta) = 0;
    virtual void CrearDatos(const DatosNuevos& datos) = 0;

    virtual CarteraLeida LeerCartera(const FiltroCartera& filtro) = 0;
    virtual void MarcarCartera(std::string_view marca, const FiltroCartera& filtro) = 0;
    virtual void AnularCartera(const FiltroCartera& filtro) = 0;

    virtual TipoIvaClass tiposiva(int numero) = 0;
    virtual std::string EsCriterioCaja(std::string_view cuenta) = 0;
    virtual double TotalPendiente(std::string_view cliente, std::string_view factura,
                                  std::string_view fechaFactura) = 0;
    // Its arguments have been looked at.
    virtual void cobrar(const CobroCaja& cobro) = 0;

    virtual void CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel,
                                  bool analitica) = 0;
    virtual void ModificarPresupuesto(std::string_view cuenta, int mes, double importe) = 0;
    virtual std::int32_t LeerInmovilizado(std::string_view codigo) = 0;
    virtual void CrearInmovilizado(const InmoClass& datos) = 0;
    virtual std::int32_t LeerDatosGlobales(std::string_view nif) = 0;
    virtual void CrearDatosGloblales(const DatosGlobalClass& datos) = 0;
    virtual bool ExisteNifDatosGlobales(std::string_view nif) = 0;
    // The table's name has been looked at.
    virtual std::string Util_LeerDatos(std::string_view tabla, std::string_view campo, std::string_view valor,
                                       std::string_view filtro) = 0;

    // Identifiers of entries. An empty `guid` to be stored is made anew.
    virtual std::string leerGuid(std::string_view asiento) = 0;
    virtual void grabarGuid(std::string_view asiento, std::string_view guid) = 0;
    virtual std::vector<std::string> LeerFechasAsiento(std::string_view asiento) = 0;
    virtual std::vector<std::string> LeerAsientosGuid(std::string_view guid) = 0;
};

}  // namespace tarvoline::link
