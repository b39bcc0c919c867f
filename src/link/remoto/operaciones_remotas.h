// The operations of a session through the accounting service. What it does not offer throws ErrorEnlace
// noDisponible; docs/remote-link.md lists that, and what its answers do not carry.
#pragma once

#include "link/operaciones.h"
#include "link/remoto/cliente.h"
#include "link/remoto/tabla_respuesta.h"
#include "link/sesion.h"

namespace tarvoline::link::remoto {

class OperacionesRemotas : public Operaciones {
  public:
    // The session is borrowed and must outlive this object.
    explicit OperacionesRemotas(Sesion& sesion) : sesion_(sesion), cliente_(sesion) {}

    Cliente& cliente() { return cliente_; }
    std::vector<std::string> LeerCarpetas();

    void LoadEmpresas() override;
    void AbrirEmpresa(std::string_view empresa, std::string_view clave) override;
    std::string leerConfig(std::string_view nombre) override;
    void grabarConfig(std::string_view nombre, std::string_view valor) override;
    std::string EmpresaAñoAnterior() override;
    std::string siguienteNumero() override { return "(Auto)"; }

    std::int32_t GrabarAsiento() override;
    void LeerAsiento() override;
    void leerVecino(Vecino cual) override;
    bool BuscarReferencia(std::string_view referencia, bool ignorarMayusculas) override;
    bool BuscarDescripcion(std::string_view descripcion, bool ignorarMayusculas) override;
    bool BuscarImporte(double importe) override;
    std::int32_t ExisteReferencia(std::string_view referencia) override;
    std::int32_t ExisteIva(std::string_view factura) override;
    void LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta,
                      int archivo) override;
    std::string LeerExtractoEx(std::string_view cuenta, std::string_view desde,
                               std::string_view hasta) override;
    std::int32_t AnularAsiento(std::string_view fecha, std::string_view numero) override;
    void AnularApuntePorReferencia(std::string_view referencia, bool incluirIva,
                                   bool incluirAnalitica) override;
    void AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica) override;
    void AnularCuenta(std::string_view cuenta) override;

    bool LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) override;
    std::int32_t LeerPlanEx(const PeticionPlan& peticion) override;
    std::int32_t LeerDatos(std::string_view cuenta, std::string_view titulo) override;
    bool crearCuenta(TablaPlan plan, CuentaNueva& cuenta) override;
    void CrearDatos(const DatosNuevos& datos) override;
    CarteraLeida LeerCartera(const FiltroCartera& filtro) override;
    void MarcarCartera(std::string_view marca, const FiltroCartera& filtro) override;
    void AnularCartera(const FiltroCartera& filtro) override;
    TipoIvaClass tiposiva(int numero) override;
    std::string EsCriterioCaja(std::string_view cuenta) override;
    double TotalPendiente(std::string_view cliente, std::string_view factura,
                          std::string_view fechaFactura) override;
    void cobrar(const CobroCaja& cobro) override;
    void CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel,
                          bool analitica) override;
    void ModificarPresupuesto(std::string_view cuenta, int mes, double importe) override;
    std::int32_t LeerInmovilizado(std::string_view codigo) override;
    void CrearInmovilizado(const InmoClass& datos) override;
    std::int32_t LeerDatosGlobales(std::string_view nif) override;
    void CrearDatosGloblales(const DatosGlobalClass& datos) override;
    bool ExisteNifDatosGlobales(std::string_view nif) override;
    std::string Util_LeerDatos(std::string_view tabla, std::string_view campo, std::string_view valor,
                               std::string_view filtro) override;
    std::string leerGuid(std::string_view asiento) override;
    void grabarGuid(std::string_view asiento, std::string_view guid) override;
    std::vector<std::string> LeerFechasAsiento(std::string_view asiento) override;
    std::vector<std::string> LeerAsientosGuid(std::string_view guid) override;

  private:
    bool existe(std::string_view empresa, std::string_view clave);
    std::string fechaNormal(std::string_view guardada) const;
    void leerAsientoCon(const std::string& fecha, const std::string& numero, const std::string& posicion);
    bool buscarLineas(const std::string& filtro);
    // Lines of the journal in the order of statements: account, day, and within a day as they were stored.
    struct LineasCuenta {
        TablaRespuesta tabla;
        std::vector<std::size_t> orden;
    };
    LineasCuenta lineasDe(const std::string& cuenta, std::string_view desde, std::string_view hasta);
    void extractoDe(const std::string& cuenta, std::string_view desde, std::string_view hasta);
    // Rows of an invoice in the book of a company; "": the session's.
    struct SumaFactura {
        bool hay = false;
        double pendiente = 0;
    };
    SumaFactura sumarFactura(const std::string& filtro, std::string_view empresa);
    void leerPlan(const char* archivo, const std::string& filtro, bool porTitulo);

    Sesion& sesion_;
    Cliente cliente_;
};

// For what the service does not offer.
[[noreturn]] void noDisponibleEnRemoto();

}  // namespace tarvoline::link::remoto
