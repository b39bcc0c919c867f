// The members of Enlace for master data, budgets, the registers, tables as texts and identifiers.
#include "core/texto.h"
#include "link/enlace_interior.h"
#include "link/tablas_texto.h"

namespace tarvoline::link {

namespace {

// For members that have an error of their own when no company is open.
void exigirEmpresaAbierta(Sesion& sesion) {
    if (!sesion.empresa.abierta()) throw ErrorEnlace(error_enlace::registroRehusado, "Empresa no Abierta");
    sesion.entrar();
}

}  // namespace

void Enlace::CrearDatos(const DatosNuevos& datos) {
    interior_->conEmpresa().CrearDatos(datos);
}

void Enlace::CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel,
                              bool analitica) {
    interior_->conEmpresa().CrearPresupuesto(cuenta, titulo, nivel, analitica);
}

void Enlace::ModificarPresupuesto(std::string_view cuenta, int mes, double importe) {
    interior_->conEmpresa().ModificarPresupuesto(cuenta, mes, importe);
}

std::int32_t Enlace::LeerInmovilizado(std::string_view codigo) {
    return interior_->conEmpresa().LeerInmovilizado(codigo);
}

void Enlace::CrearInmovilizado(const InmoClass& datosInm) {
    exigirEmpresaAbierta(interior_->sesion);
    interior_->operaciones().CrearInmovilizado(datosInm);
}

std::int32_t Enlace::LeerDatosGlobales(std::string_view nif) {
    interior_->sesion.ponerEnVigor();
    return interior_->operaciones().LeerDatosGlobales(nif);
}

void Enlace::CrearDatosGloblales(const DatosGlobalClass& datosGlob) {
    interior_->sesion.ponerEnVigor();
    interior_->operaciones().CrearDatosGloblales(datosGlob);
}

bool Enlace::ExisteNifDatosGlobales(std::string_view nif) {
    interior_->sesion.ponerEnVigor();
    return interior_->operaciones().ExisteNifDatosGlobales(nif);
}

std::vector<std::string> Enlace::Util_TextoToArray(std::string_view txt) {
    return core::Partir(txt, "\t");
}

std::string Enlace::Util_LeerTablas() {
    return TablasTexto(interior_->sesion).Util_LeerTablas();
}

std::string Enlace::Util_LeerCampos(std::string_view tabla) {
    return TablasTexto(interior_->sesion).Util_LeerCampos(tabla);
}

std::string Enlace::Util_LeerDatos(std::string_view tabla, std::string_view campoTabla,
                                   std::string_view valor, std::string_view filtro) {
    exigirNombreTabla(tabla);
    exigirEmpresaAbierta(interior_->sesion);
    return interior_->operaciones().Util_LeerDatos(tabla, campoTabla, valor, filtro);
}

std::string Enlace::GUID(std::string_view asiento) {
    return interior_->conEmpresa().leerGuid(asiento);
}

void Enlace::GUID(std::string_view asiento, std::string_view guid) {
    interior_->conEmpresa().grabarGuid(asiento, guid);
}

std::vector<std::string> Enlace::LeerFechasAsiento(std::string_view asiento) {
    return interior_->conEmpresa().LeerFechasAsiento(asiento);
}

std::vector<std::string> Enlace::LeerAsientosGuid(std::string_view guid) {
    return interior_->conEmpresa().LeerAsientosGuid(guid);
}

}  // namespace tarvoline::link
