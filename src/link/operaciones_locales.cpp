#include "link/operaciones_locales.h"

#include "link/anulacion.h"
#include "link/busquedas.h"
#include "link/cartera.h"
#include "link/creacion_cuentas.h"
#include "link/creacion_datos.h"
#include "link/criterio_caja.h"
#include "link/extractos.h"
#include "link/grabacion.h"
#include "link/identificadores.h"
#include "link/inmovilizado.h"
#include "link/lectura_asientos.h"
#include "link/lectura_plan.h"
#include "link/presupuestos.h"
#include "link/registro_global.h"
#include "link/tablas_texto.h"
#include "link/tipos_iva_enlace.h"

namespace tarvoline::link {

std::int32_t OperacionesLocales::GrabarAsiento() {
    return Grabacion(sesion_).GrabarAsiento();
}

void OperacionesLocales::LeerAsiento() {
    LecturaAsientos(sesion_).LeerAsiento();
}

void OperacionesLocales::leerVecino(Vecino cual) {
    LecturaAsientos(sesion_).leerVecino(cual);
}

bool OperacionesLocales::BuscarReferencia(std::string_view referencia, bool) {
    return Busquedas(sesion_).BuscarReferencia(referencia);
}

bool OperacionesLocales::BuscarDescripcion(std::string_view descripcion, bool ignorarMayusculas) {
    Busquedas(sesion_).BuscarDescripcion(descripcion, ignorarMayusculas);
    return false;
}

bool OperacionesLocales::BuscarImporte(double importe) {
    Busquedas(sesion_).BuscarImporte(importe);
    return false;
}

std::int32_t OperacionesLocales::ExisteReferencia(std::string_view referencia) {
    return Busquedas(sesion_).ExisteReferencia(referencia);
}

std::int32_t OperacionesLocales::ExisteIva(std::string_view factura) {
    return Busquedas(sesion_).ExisteIva(factura);
}

void OperacionesLocales::LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta,
                                      int archivo) {
    Extractos(sesion_).LeerExtracto(cuenta, desde, hasta, archivo);
}

std::string OperacionesLocales::LeerExtractoEx(std::string_view cuenta, std::string_view desde,
                                               std::string_view hasta) {
    return Extractos(sesion_).LeerExtractoEx(cuenta, desde, hasta);
}

std::int32_t OperacionesLocales::AnularAsiento(std::string_view fecha, std::string_view numero) {
    return Anulacion(sesion_).AnularAsiento(fecha, numero);
}

void OperacionesLocales::AnularApuntePorReferencia(std::string_view referencia, bool incluirIva,
                                                   bool incluirAnalitica) {
    Anulacion(sesion_).AnularApuntePorReferencia(referencia, incluirIva, incluirAnalitica);
}

void OperacionesLocales::AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica) {
    Anulacion(sesion_).AnularApuntePorRegistro(registro, incluirAnalitica);
}

void OperacionesLocales::AnularCuenta(std::string_view cuenta) {
    Anulacion(sesion_).AnularCuenta(cuenta);
}

bool OperacionesLocales::LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) {
    return LecturaPlan(sesion_).LeerPlan(cuenta, nivel, titulo);
}

std::int32_t OperacionesLocales::LeerPlanEx(const PeticionPlan& peticion) {
    return LecturaPlan(sesion_).LeerPlanEx(peticion);
}

std::int32_t OperacionesLocales::LeerDatos(std::string_view cuenta, std::string_view titulo) {
    return LecturaPlan(sesion_).LeerDatos(cuenta, titulo);
}

bool OperacionesLocales::crearCuenta(TablaPlan plan, CuentaNueva& cuenta) {
    return CreacionCuentas(sesion_).crear(plan, cuenta);
}

void OperacionesLocales::CrearDatos(const DatosNuevos& datos) {
    CreacionDatos(sesion_).CrearDatos(datos);
}

CarteraLeida OperacionesLocales::LeerCartera(const FiltroCartera& filtro) {
    return Cartera(sesion_).LeerCartera(filtro);
}

void OperacionesLocales::MarcarCartera(std::string_view marca, const FiltroCartera& filtro) {
    Cartera(sesion_).MarcarCartera(marca, filtro);
}

void OperacionesLocales::AnularCartera(const FiltroCartera& filtro) {
    Cartera(sesion_).AnularCartera(filtro);
}

std::string OperacionesLocales::EsCriterioCaja(std::string_view cuenta) {
    return CriterioCaja(sesion_).EsCriterioCaja(cuenta);
}

double OperacionesLocales::TotalPendiente(std::string_view cliente, std::string_view factura,
                                          std::string_view fechaFactura) {
    return CriterioCaja(sesion_).TotalPendiente(cliente, factura, fechaFactura);
}

void OperacionesLocales::cobrar(const CobroCaja& cobro) {
    CriterioCaja(sesion_).cobrar(cobro);
}

void OperacionesLocales::CrearPresupuesto(std::string_view cuenta, std::string_view titulo,
                                          std::string_view nivel, bool analitica) {
    Presupuestos(sesion_).CrearPresupuesto(cuenta, titulo, nivel, analitica);
}

void OperacionesLocales::ModificarPresupuesto(std::string_view cuenta, int mes, double importe) {
    Presupuestos(sesion_).ModificarPresupuesto(cuenta, mes, importe);
}

std::int32_t OperacionesLocales::LeerInmovilizado(std::string_view codigo) {
    return Inmovilizado(sesion_).LeerInmovilizado(codigo);
}

void OperacionesLocales::CrearInmovilizado(const InmoClass& datos) {
    Inmovilizado(sesion_).CrearInmovilizado(datos);
}

std::int32_t OperacionesLocales::LeerDatosGlobales(std::string_view nif) {
    return RegistroGlobal(sesion_).LeerDatosGlobales(nif);
}

void OperacionesLocales::CrearDatosGloblales(const DatosGlobalClass& datos) {
    RegistroGlobal::exigirNif(datos);
    RegistroGlobal(sesion_).CrearDatosGloblales(datos);
}

bool OperacionesLocales::ExisteNifDatosGlobales(std::string_view nif) {
    return RegistroGlobal(sesion_).ExisteNifDatosGlobales(nif);
}

std::string OperacionesLocales::Util_LeerDatos(std::string_view tabla, std::string_view campo,
                                               std::string_view valor, std::string_view filtro) {
    return TablasTexto(sesion_).Util_LeerDatos(tabla, campo, valor, filtro);
}

std::string OperacionesLocales::leerGuid(std::string_view asiento) {
    return Identificadores(sesion_).leerGuid(asiento);
}

void OperacionesLocales::grabarGuid(std::string_view asiento, std::string_view guid) {
    Identificadores(sesion_).grabarGuid(asiento, guid);
}

std::vector<std::string> OperacionesLocales::LeerFechasAsiento(std::string_view asiento) {
    return Identificadores(sesion_).LeerFechasAsiento(asiento);
}

std::vector<std::string> OperacionesLocales::LeerAsientosGuid(std::string_view guid) {
    return Identificadores(sesion_).LeerAsientosGuid(guid);
}

TipoIvaClass OperacionesLocales::tiposiva(int numero) {
    return leerTipoIva(sesion_, numero);
}

}  // namespace tarvoline::link
