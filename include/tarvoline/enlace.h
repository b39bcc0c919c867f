// The accounting link: an object is a session on one company.
//
//     tarvoline::link::Contexto contexto;
//     tarvoline::link::Enlace enlace(contexto);
//     enlace.AbrirEmpresa("Emp01", "");
//     enlace.Fecha("31/12/25");
//     enlace.Número("");
//     enlace.AñadirApunte("5700000000", "Venta de contado", 1, 121.0, "1");
//     enlace.AñadirApunte("7000000000", "Venta de contado", 2, 100.0, "1");
//     enlace.AñadirApunte("4770000000", "Venta de contado", 2, 21.0, "1");
//     enlace.GrabarAsiento();
//
// Members throw ErrorEnlace (tarvoline/error_enlace.h); what fails in the file system itself (a file held by
// another program, a full disk) passes through as an exception with a text for the user. Members on company
// data throw empresaNoAbierta when no company is open, unless it is said otherwise. Several objects may live
// on one Contexto, each on its own company; other programs may be at the same company. One thread. Texts are
// UTF-8.
//
// Results lie in collections of the session: a counter tells how many items there are, an item member gives
// the one at `Index`, from 1, or nothing outside the collection; it never throws. An item stays valid as long
// as the caller holds it. English twins do what the Spanish member does.
//
// Dates are taken as "yymmdd" ("131231"), "dd/mm/yy" or "dd/mm/yyyy", and lie in the accounting year: else
// fechaNoValida.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvoline/clases.h"
#include "tarvoline/contexto.h"
#include "tarvoline/error_enlace.h"
#include "tarvoline/exportar.h"
#include "tarvoline/registros.h"

namespace tarvoline::link {

class Mostrador;

struct PreguntaClave {
    std::string titulo{};   // "Clave"
    std::string empresa{};  // name of the company's file
    int longitud = 4;       // most characters that can be typed
};

struct OpcionesEnlace {
    // Asks for the password of a company; nothing when cancelled. Absent: the answer is empty, and
    // `AbrirEmpresa` fails with error_enlace::claveNoValida.
    std::function<std::optional<std::string>(const PreguntaClave&)> pedirClave{};
};

// Arguments of a new company; an empty one takes its default.
struct EmpresaNueva {
    std::string NombreEmpresa{};
    std::string año{};                     // its last two characters count
    std::string Niveles{};                 // five digits
    std::string Auxiliares{};              // four digits
    std::string MonedaBase{};              // number of the base currency's file
    std::string MesApertura{};             // first month of the accounting year
    std::string PlanContablePorDefecto{};  // template plan to copy: 0 and 1, 4 to 6, any other
    std::string IvaIgic{};
};

class TARVOLINE_PUBLICO Enlace {
  public:
    // Fills `Empresas`. Throws noInstalado when no settings name the data directory.
    explicit Enlace(Contexto& contexto, OpcionesEnlace opciones = {});
    // Closes all tables of the context.
    ~Enlace();
    Enlace(const Enlace&) = delete;
    Enlace& operator=(const Enlace&) = delete;

    // --- The session
    // ----------------------------------------------------------------------------------------------
    // "major.minor.revision" of the program.
    static std::string Version();

    // Goes over to the accounting service at `ip` ("https://books.example", "10.0.0.5:8080"), for all that
    // follows; the company that was open is closed, and companies are names there. The first login that
    // reaches a service settles the address for later ones. Throws entradaRehusada with the service's answer,
    // noDisponible for a user who may not come this way. Failures of the line pass, here and behind, as
    // exceptions with a text for the user. What the service does not offer throws noDisponible.
    void Login(std::string_view usuario, std::string_view password, std::string_view ip);
    bool ModoRemoto() const;
    // Folder of companies at the service, "" that of the user; an administrator may choose another one. Throw
    // soloEnRemoto, soloAdministradores.
    const std::string& Carpeta() const;
    void Carpeta(std::string_view carpeta);
    std::vector<std::string> LeerCarpetas();

    // Full paths of the company files in the data directory, sorted by name, case ignored.
    const std::vector<std::string>& Empresas() const;
    void LoadEmpresas();

    // Opens a company by path, or by name in the data directory, with or without ".QZT"; an empty name means
    // the product's last company. A protected company wants its password here or from
    // OpcionesEnlace::pedirClave. Throws empresaNoExiste (no file, or an empty one), versionPosterior,
    // numeroNoValido, claveNoValida. After claveNoValida the company counts as open all the same: a caller
    // that does not want it open calls CerrarEmpresa.
    //
    // A password that begins with "/C" creates the company instead (CrearEmpresa makes that text); it is not
    // open afterwards, `Empresa` gives its path.
    void AbrirEmpresa(std::string_view empresa, std::string_view clave = {});
    // Empties the pending collections, too.
    void CerrarEmpresa();
    void CrearEmpresa(const EmpresaNueva& nueva);

    // Path and two-character number of the company last opened; the number is "" when none is open.
    const std::string& Empresa() const;
    const std::string& NumeroEmpresa() const;
    // Two digits; the accounting year's first month.
    std::string MesInicioEjercicio() const;
    // Calendar year of a month of the accounting year, two digits or more ("100" follows "99"); 13 and 14 are
    // the closing periods.
    std::string año(int mes) const;
    std::string year(int mes) const { return año(mes); }
    // Path of the company of the year before; "" when there is none.
    std::string EmpresaAñoAnterior();
    std::string PreviousYearCompany() { return EmpresaAñoAnterior(); }

    // A named value of the company: a field of its head, or a line of its text section; without zero
    // characters and outer blanks, "" when there is none. Names in any case.
    std::string Config(std::string_view descripcion);
    // Writing "" removes a text line. Throws also when the file stays held.
    void Config(std::string_view descripcion, std::string_view valor);
    // The two stores behind Config, without its test and trimming.
    std::string GetTotal(std::string_view nombre);
    void PutTotal(std::string_view nombre, std::string_view valor);
    std::string GET_TOTAL(std::string_view nombre);
    void PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo = {});

    // With the right code and a number other than 99 shows the number in a box; nothing else.
    void MASTER(std::int32_t funcion, std::string_view codigo);

    // Two-digit code of the user that entries are posted under, "99" from the start.
    const std::string& Usuario() const;
    void Usuario(std::string_view usuario);
    // Channel of the session: three digits out, its numeric value in.
    std::string Canal() const;
    void Canal(std::string_view canal);
    // Three-letter code of the currency of the amounts, "" the base currency, and its rate: units of the base
    // currency for one of it. Both belong to the context, not to the session.
    const std::string& Moneda() const;
    void Moneda(std::string_view codigo);
    double CambioMoneda() const;
    void CambioMoneda(double cambio);

    // --- The entry
    // ------------------------------------------------------------------------------------------------ Date
    // of the entry, "yymmdd" out; "" when there is none. A text of a length that no form has gives none.
    std::string Fecha() const;
    void Fecha(std::string_view fecha);
    // Its number. "" takes the next number of the company, six digits ("(Auto)" from a service); any other
    // text stands.
    const std::string& Número() const;
    void Número(std::string_view numero);
    const std::string& Number() const { return Número(); }
    void Number(std::string_view numero) { Número(numero); }

    // True from the first line of an entry until it is stored. The first line added then empties the
    // collections of the entry before; an analytic line does not begin an entry.
    bool HayPendientes() const;
    void LimpiarPendientes();

    // Each gives the line that it added, which may be changed until the entry is stored.
    std::shared_ptr<ApunteClass> AñadirApunte(std::string_view cuenta, std::string_view descripción, int tipo,
                                              double importe, std::string_view diario = "1", int punteo = 0,
                                              std::string_view canal = "N", std::string_view referencia = {},
                                              std::string_view notas = {},
                                              std::string_view archivoImagen = {});
    // The last four arguments are accepted and dropped.
    std::shared_ptr<AnaliticaClass> AñadirAnalitica(std::string_view cuentaContable,
                                                    std::string_view cuentaAnalitica,
                                                    std::string_view descripción, int tipo, double importe,
                                                    std::string_view diario = {}, int punteo = 0,
                                                    std::string_view canal = {});
    std::shared_ptr<CarteraClass> AñadirCartera(std::string_view fechaVencimiento, std::string_view cuenta,
                                                std::string_view cartera, std::string_view notas,
                                                double importe, std::string_view fechaApunte = {},
                                                std::string_view marca = {});
    // All that a line of VAT may be given. The date of the invoice is kept as "dd/mm/yy", SII texts without
    // outer blanks.
    std::shared_ptr<IVAClass> AñadirIVA(const IVAClass& linea);
    std::shared_ptr<IVAClass> AñadirIVA(
        std::string_view cuentaClienteProveedor, std::string_view cuentaIVA, std::string_view factura,
        std::string_view fechaFactura, std::string_view tipoIva, std::string_view srtc, double base,
        double total, int prorata, std::string_view titulo, std::string_view nif,
        std::string_view numeroOrden, std::string_view claveOperacion, std::string_view referencia,
        std::string_view serieFacturas, double porcRetencion, std::string_view regimenEspecial,
        std::string_view codigoSII, std::string_view descripcionSII, std::string_view idSII,
        std::string_view factura60Caracteres, std::string_view noFacturaRectificativaDUA,
        std::string_view periodoPresentacion);

    std::shared_ptr<ApunteClass> AddEntry(std::string_view cuenta, std::string_view descripción, int tipo,
                                          double importe, std::string_view diario = "1", int punteo = 0,
                                          std::string_view canal = "N", std::string_view referencia = {},
                                          std::string_view notas = {}, std::string_view archivoImagen = {}) {
        return AñadirApunte(cuenta, descripción, tipo, importe, diario, punteo, canal, referencia, notas,
                            archivoImagen);
    }
    std::shared_ptr<AnaliticaClass> AddCostCenter(std::string_view cuentaContable,
                                                  std::string_view cuentaAnalitica,
                                                  std::string_view descripción, int tipo, double importe,
                                                  std::string_view diario = {}, int punteo = 0,
                                                  std::string_view canal = {}) {
        return AñadirAnalitica(cuentaContable, cuentaAnalitica, descripción, tipo, importe, diario, punteo,
                               canal);
    }
    std::shared_ptr<CarteraClass> AddPortfolio(std::string_view fechaVencimiento, std::string_view cuenta,
                                               std::string_view cartera, std::string_view notas,
                                               double importe, std::string_view fechaApunte = {},
                                               std::string_view marca = {}) {
        return AñadirCartera(fechaVencimiento, cuenta, cartera, notas, importe, fechaApunte, marca);
    }
    // The short form: code SII "00", the four texts behind it empty, period "0000".
    std::shared_ptr<IVAClass> AddVAT(std::string_view cuentaClienteProveedor, std::string_view cuentaIVA,
                                     std::string_view factura, std::string_view fechaFactura,
                                     std::string_view tipoIva, std::string_view srtc, double base,
                                     double total, int prorata, std::string_view titulo, std::string_view nif,
                                     std::string_view numeroOrden, std::string_view claveOperacion,
                                     std::string_view referencia, std::string_view serieFacturas,
                                     double porcRetencion, std::string_view regimenEspecial) {
        return AñadirIVA(cuentaClienteProveedor, cuentaIVA, factura, fechaFactura, tipoIva, srtc, base, total,
                         prorata, titulo, nif, numeroOrden, claveOperacion, referencia, serieFacturas,
                         porcRetencion, regimenEspecial, "00", {}, {}, {}, {}, "0000");
    }

    // Stores the entry under `Fecha` and `Número`: its lines, its VAT, portfolio and analytic lines, and
    // moves the totals. Nothing happens when nothing is pending. There is no way back: errorEnIva,
    // analiticaSinApunte, tipoIvaNoExiste and soloPdf tell of something to look at in an entry that has been
    // stored, and only the last of them is thrown. A failure of another kind is told to Contexto::alAvisar,
    // and ends the lines of its kind. Returns 0.
    std::int32_t GrabarAsiento();

    struct ValoresMoneda {
        double ValorEnEuros = 0;    // in the second currency
        double ValorEnPesetas = 0;  // in the base currency
    };
    // The amount, in the currency of the session, in the two currencies of the company's table.
    ValoresMoneda CalcularMoneda(double importeEntrada);

    // --- Reading
    // --------------------------------------------------------------------------------------------------
    // Reads an entry into the pending collections: "" keeps the date or number of the session. The amounts
    // are as they would be given to store it again, credits positive. Nothing found leaves them empty. A
    // caller that stores then has the entry twice, unless it has annulled it. With neither date nor number
    // nothing happens.
    void LeerAsiento(std::string_view fecha = {}, std::string_view asiento = {});
    // The entry behind, or before, that of the session; the first and the last. They move `Fecha` and
    // `Número`. When there is none the collections are empty, and date and number stay.
    void LeerProximoAsiento();
    void LeerAnteriorAsiento();
    void LeerPrimerAsiento();
    void LeerUltimoAsiento();

    // Always throws noDisponible.
    void LeerReferencia(std::string_view referencia);
    // Lines of the journal to the collection of the statement: of this reference, all of it; with this text
    // in the description, without regard to case when `mayusculasMinusculas`; of this amount with either
    // sign. Locally only the first tells by its result that there is one.
    bool BuscarReferencia(std::string_view referencia, bool mayusculasMinusculas = false);
    bool BuscarDescripcion(std::string_view descripcion, bool mayusculasMinusculas = false);
    bool BuscarImporte(double importe);
    // Lines of the journal with this reference, and rows of the book of invoices with this invoice number.
    std::int32_t ExisteReferencia(std::string_view referencia);
    std::int32_t ExisteIva(std::string_view factura);

    // Statement of an account, or of all that match a pattern with "*" and "?". "" as a date: no limit; what
    // lies before the first date counts in the balance. `archivo` 10: of analytic accounts; else of accounts.
    void LeerExtracto(std::string_view cuenta, std::string_view desdeFecha = {},
                      std::string_view hastaFecha = {}, int archivo = 2);
    // The same of one account as a text, the fast way: a line ends with CR LF, its columns are parted by
    // tabs: account, date, entry, description, debit, credit, balance, mark, journal, channel, reference. The
    // balance begins with 0.
    std::string LeerExtractoEx(std::string_view cuenta, std::string_view desdeFecha = {},
                               std::string_view hastaFecha = {});

    // --- Annulling: rows go, and the totals with them
    // --------------------------------------------------------------- errorIndexados: a row's keys could not
    // be taken out; what went before stays gone. An entry that is not there is nothing. Returns the status of
    // the last removal, 0.
    std::int32_t AnularAsiento(std::string_view fecha, std::string_view numeroAsiento);
    // All lines with this reference and the portfolio of their entries. "" is a reference like any other: it
    // means every line without one.
    void AnularApuntePorReferencia(std::string_view referencia, bool incluirIva = false,
                                   bool incluirAnalitica = false);
    // One line by its record number; locally only.
    void AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica = false);
    // The account and its master data, whether or not there are lines on it.
    void AnularCuenta(std::string_view cuenta);

    // --- Accounts
    // ---------------------------------------------------------------------------------------------------
    // Makes an account; a code with "*" ("4300*") takes the number behind the highest that matches, and comes
    // back changed. `nivel` "-6": with the analytic mark. Of one that exists "-1" changes the title, "-6"
    // sets the analytic mark; any other leaves it alone. False when the row could not be stored.
    bool CrearCuenta(std::string& cuenta, std::string_view titulo, std::string_view nivel = "0",
                     bool isAnalitica = false, std::string_view nif = "-1");
    bool CrearAnalitica(std::string& cuenta, std::string_view titulo, std::string_view nivel = "0");
    bool CrearAlterna(std::string& cuenta, std::string_view titulo, std::string_view nivel = "0");

    // Accounts into Plan: one ("4300000001"), those of a pattern ("4300*", "?"), or of a list of both with
    // commas; "" and "?" alone mean every account. `nivel` and `titulo`, which may be a pattern, restrict
    // them; with a title they come in the order of titles. True when there is one.
    bool LeerPlan(std::string_view cuenta = {}, std::string_view nivel = {}, std::string_view titulo = {});
    // The same of one of the charts: `fi` 1 the accounts, 8 the analytic ones, 9 the alternate ones; of any
    // other there is none. "" means all accounts, `hastaCuenta` makes a range of it, both ends in it.
    // `siguiente1Anterior2` 1 or 2: the one account behind, or before, `cuenta`. Tells how many.
    std::int32_t LeerPlanEx(int fi, std::string_view cuenta = {}, std::string_view nivel = {},
                            std::string_view titulo = {}, std::string_view hastaCuenta = {},
                            int siguiente1Anterior2 = 0);
    // Master data into DATOS, of an account, a pattern, or all (""), whose name has `titulo` in it. Tells how
    // many.
    std::int32_t LeerDatos(std::string_view cuenta = {}, std::string_view titulo = {});
    // Debits and credits of a period (0 opening, 1 to 12, 13 regularisation, 14 closing) of the account at
    // `index` of Plan; 0 when there is no such account or period.
    double PlanDebe(std::int32_t index, int mes) const;
    double PlanHaber(std::int32_t index, int mes) const;

    // Stores master data of an account, in a row that exists or a new one, but for what is "-1". With a `NIF`
    // the global data of that person come into being, or with `Actualizar` are changed, by the same fields.
    void CrearDatos(const DatosNuevos& datos);

    // --- Portfolio: the lines that meet all of the conditions that are not empty
    // -------------------------------------
    // A collection of its own, apart from the pending lines; empty when there is none.
    CarteraLeida LeerCartera(std::string_view cartera = {}, std::string_view desdeFechaVencimiento = {},
                             std::string_view hastaFechaVencimiento = {}, std::string_view cuenta = {},
                             std::string_view asiento = {});
    // Sets the mark of all of them.
    void MarcarCartera(std::string_view marca, std::string_view cartera,
                       std::string_view desdeFechaVencimiento, std::string_view hastaFechaVencimiento,
                       std::string_view cuenta, std::string_view asiento);
    // Removes all of them; their entries stay.
    void AnularCartera(std::string_view cartera, std::string_view desdeFechaVencimiento,
                       std::string_view hastaFechaVencimiento, std::string_view cuenta,
                       std::string_view asiento);

    // --- VAT
    // --------------------------------------------------------------------------------------------------------
    // Number of a rate: one character is its digit, two its number or letter form ("A1" is 101), else 0. No
    // company need be open.
    static int ValTIVA(std::string_view des);
    // The rate of this number, from 1; an empty one when there is none.
    std::shared_ptr<TipoIvaClass> tiposiva(int index);

    // --- VAT on a cash basis: an invoice stays in the book as issued; each collection or payment adds a row
    // for each of its rates, with the part of the tax that falls due
    // -----------------------------------------------------
    // "1": the account is under the regime; else "".
    std::string EsCriterioCaja(std::string_view cuenta);
    // What is left to be collected of an invoice, one of the year before among them. Throws facturaNoExiste.
    double TotalPendiente(std::string_view cliente, std::string_view factura,
                          std::string_view fechaFactura = {});
    // Makes the entry of the payment of a supplier's invoice, or of the collection of a customer's, and its
    // rows. The parts of all payments add up to the invoice: the one that leaves nothing pending takes what
    // is left of each rate. Throws, before anything is written: sinTercero, facturaNoExiste, importeCero,
    // sinCuentaContable, claveOperacionIncorrecta, medioCobroIncorrecto, soloPdf, superaFactura,
    // superaRestante, sinCuentasIva (the value "iva2" is empty), fechaNoValida. An entry that is being built
    // stays as it is.
    void PagoFacturaCriterioCaja(const CobroFactura& pago);
    void CobroFacturaCriterioCaja(const CobroFactura& cobro);
    // The rows alone, without an entry; they bear `Fecha` and `Número` of the session when these are set.
    // `comprobarCobros`: not more than what is pending.
    void AñadirIvaCriterioCaja(std::string_view cliente, std::string_view factura,
                               std::string_view importeCobro, std::string_view medioCobro,
                               std::string_view descripcionMedioCobro, bool comprobarCobros,
                               std::string_view claveOperacion, std::string_view fechaCobro,
                               std::string_view fechaFactura = {});
    void AddVATCashBased(std::string_view cliente, std::string_view factura, std::string_view importeCobro,
                         std::string_view medioCobro, std::string_view descripcionMedioCobro,
                         bool comprobarCobros, std::string_view claveOperacion, std::string_view fechaCobro,
                         std::string_view fechaFactura = {}) {
        AñadirIvaCriterioCaja(cliente, factura, importeCobro, medioCobro, descripcionMedioCobro,
                              comprobarCobros, claveOperacion, fechaCobro, fechaFactura);
    }

    // --- Budgets
    // ----------------------------------------------------------------------------------------------------
    // Makes the budget of an account, twelve months of 0, or changes its title and level ("-1": as it is).
    void CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel = "0",
                          bool analitica = false);
    // Sets a month, 1 to 12; nothing for any other month, or an account without a budget.
    void ModificarPresupuesto(std::string_view cuenta, int mes, double importe);

    // --- Fixed assets, and the persons that all companies share
    // ---------------------------------------------------------
    // Of this code, or all (""), into inmovilizado. Tells how many.
    std::int32_t LeerInmovilizado(std::string_view codigo = {});
    // Throws registroRehusado, nothing being stored: no company open, no code, a code that there is already.
    // Texts are cut to their width; a date that is none throws fechaNoValida.
    void CrearInmovilizado(const InmoClass& datosInm);
    // Of this tax number, or all (""), into DatosGlobales. Tells how many.
    std::int32_t LeerDatosGlobales(std::string_view nif = {});
    // A tax number stands there once: a new one is made; one that exists changes with `G66_Actualizar` only.
    // Throws registroRehusado without a number.
    void CrearDatosGloblales(const DatosGlobalClass& datosGlob);
    // "": whether there is any.
    bool ExisteNifDatosGlobales(std::string_view nif);

    // --- Tables as texts
    // ---------------------------------------------------------------------------------------------
    // The cells of a line that are parted by tabs.
    static std::vector<std::string> Util_TextoToArray(std::string_view txt);
    // A line for each definition in the program directory: name, tab, title, CR LF. No company need be open.
    std::string Util_LeerTablas();
    // A line for each field, in the order of the record: title, tab, position, tab, type code, tab, width, CR
    // LF. No company need be open. Throws registroRehusado without a table.
    std::string Util_LeerCampos(std::string_view tabla);
    // Rows of a table of the company: those with `valor` in the column `campoTabla`, else those that meet
    // `filtro` ("CUENTA = 4300000001 AND ..."), else all. Fields in the order of the record, parted by tabs,
    // a row ends with CR LF; tabs and line breaks in a field come as blanks. Throws registroRehusado without
    // a table or an open company.
    std::string Util_LeerDatos(std::string_view tabla, std::string_view campoTabla = {},
                               std::string_view valor = {}, std::string_view filtro = {});

    // --- Identifiers of entries
    // --------------------------------------------------------------------------------------
    // That of an entry by its number; "" when it has none.
    std::string GUID(std::string_view asiento);
    // "" makes a new one of 36 characters. Throws sinGuid when it cannot be stored.
    void GUID(std::string_view asiento, std::string_view guid);
    // Dates ("dd/mm/yy") of the entries with this number that have an identifier.
    std::vector<std::string> LeerFechasAsiento(std::string_view asiento);
    // Numbers of the entries of an identifier.
    std::vector<std::string> LeerAsientosGuid(std::string_view guid);

    // --- Results
    // ----------------------------------------------------------------------------------------------------
    std::int32_t ContadorApuntes() const;
    std::int32_t ContadorAnalitica() const;
    std::int32_t ContadorIva() const;
    std::int32_t ContadorCartera() const;
    std::int32_t ContadorExtracto() const;
    std::int32_t ContadorPlan() const;
    std::int32_t ContadorDatos() const;
    std::int32_t ContadorDatosGlobal() const;
    std::int32_t ContadorInmovilizado() const;
    std::shared_ptr<ApunteClass> Apunte(std::int32_t index) const;
    std::shared_ptr<AnaliticaClass> Analitica(std::int32_t index) const;
    std::shared_ptr<IVAClass> iva(std::int32_t index) const;
    std::shared_ptr<CarteraClass> cartera(std::int32_t index) const;
    std::shared_ptr<ExtractoClass> Extracto(std::int32_t index) const;
    std::shared_ptr<PlanClass> Plan(std::int32_t index) const;
    std::shared_ptr<DatosClass> DATOS(std::int32_t index) const;
    std::shared_ptr<DatosGlobalClass> DatosGlobales(std::int32_t index) const;
    std::shared_ptr<InmoClass> inmovilizado(std::int32_t index) const;

  private:
    friend class Mostrador;  // of the program's own service
    struct Interior;
    std::unique_ptr<Interior> interior_;
};

}  // namespace tarvoline::link
