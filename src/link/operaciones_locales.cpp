#include "link/operaciones_locales.h"

#include "link/anulacion.h"
#include "link/busquedas.h"
#include "link/creacion_cuentas.h"
#include "link/extractos.h"
#include "link/grabacion.h"
#include "link/lectura_asientos.h"
#include "link/lectura_plan.h"
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

TipoIvaClass OperacionesLocales::tiposiva(int numero) {
    return leerTipoIva(sesion_, numero);
}

}  // namespace tarvoline::link
