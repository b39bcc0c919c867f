#include "tarvoline/enlace.h"

#include "core/despliegue.h"
#include "core/texto.h"
#include "data/monedas.h"
#include "link/enlace_interior.h"
#include "link/fechas_enlace.h"
#include "link/moneda_sesion.h"
#include "link/tipos_iva_enlace.h"

namespace tarvoline::link {

namespace {

std::string dosCaracteresFinales(const std::string& texto) {
    const auto longitud = core::longitudTexto(texto);
    return longitud < 2 ? texto : core::Mid(texto, longitud - 1);
}

// "/X=value", or nothing for an argument that was left out.
std::string opcion(std::string_view letra, const std::string& valor) {
    return valor.empty() ? std::string() : "/" + std::string(letra) + "=" + valor;
}

}  // namespace

Enlace::Enlace(Contexto& contexto, OpcionesEnlace opciones)
    : interior_(std::make_unique<Interior>(contexto, std::move(opciones))) {
    LoadEmpresas();
}

Enlace::~Enlace() {
    Sesion& sesion = interior_->sesion;
    pasandoErrores(sesion.contexto.datos, "CerrarArchivos", [&] { sesion.CerrarArchivos(false); });
    // The company in force must not outlive the session that opened it.
    auto& enVigor = sesion.contexto.datos.enVigor;
    if (enVigor.gArchivoEmpresa == sesion.empresa.gArchivoEmpresa) enVigor = {};
}

// --- The session

std::string Enlace::Version() {
    using namespace core::despliegue;
    return std::to_string(versionMayor) + "." + std::to_string(versionMenor) + "." +
           std::to_string(versionRevision);
}

const std::vector<std::string>& Enlace::Empresas() const {
    return interior_->sesion.Empresas;
}

void Enlace::LoadEmpresas() {
    interior_->operaciones().LoadEmpresas();
}

void Enlace::AbrirEmpresa(std::string_view empresa, std::string_view clave) {
    interior_->operaciones().AbrirEmpresa(empresa, clave);
}

void Enlace::CerrarEmpresa() {
    interior_->sesion.CerrarArchivos(true);
}

void Enlace::CrearEmpresa(const EmpresaNueva& nueva) {
    const auto mes =
        nueva.MesApertura.empty() ? std::string() : core::conCeros(core::ValEntero(nueva.MesApertura), 2);
    AbrirEmpresa(nueva.NombreEmpresa,
                 "/C" + opcion("A", dosCaracteresFinales(nueva.año)) + opcion("N", nueva.Niveles) +
                     opcion("X", nueva.Auxiliares) + opcion("M", nueva.MonedaBase) + opcion("P", mes) +
                     opcion("I", nueva.IvaIgic) + opcion("Z", nueva.PlanContablePorDefecto));
}

const std::string& Enlace::Empresa() const {
    return interior_->sesion.empresa.gArchivoEmpresa;
}

const std::string& Enlace::NumeroEmpresa() const {
    return interior_->sesion.empresa.gEmpresaActual;
}

std::string Enlace::MesInicioEjercicio() const {
    return interior_->sesion.empresa.cabecera.texto(data::cabecera::APERTURA);
}

std::string Enlace::año(int mes) const {
    return añoDeMes(interior_->sesion, mes);
}

std::string Enlace::EmpresaAñoAnterior() {
    return interior_->conEmpresa().EmpresaAñoAnterior();
}

std::string Enlace::Config(std::string_view descripcion) {
    return interior_->conEmpresa().leerConfig(descripcion);
}

void Enlace::Config(std::string_view descripcion, std::string_view valor) {
    interior_->conEmpresa().grabarConfig(descripcion, valor);
}

std::string Enlace::GetTotal(std::string_view nombre) {
    return ValoresEmpresa(interior_->sesion).GetTotal(nombre);
}

void Enlace::PutTotal(std::string_view nombre, std::string_view valor) {
    ValoresEmpresa(interior_->sesion).PutTotal(nombre, valor);
}

std::string Enlace::GET_TOTAL(std::string_view nombre) {
    return ValoresEmpresa(interior_->sesion).GET_TOTAL(nombre);
}

void Enlace::PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo) {
    ValoresEmpresa(interior_->sesion).PUT_TOTAL(nombre, valor, archivo);
}

void Enlace::MASTER(std::int32_t funcion, std::string_view codigo) {
    constexpr std::string_view codigoAcceso = "XK4826";
    constexpr std::int32_t sinEfecto = 99;
    if (codigo != codigoAcceso || funcion == sinEfecto) return;
    interior_->sesion.contexto.datos.mostrar(
        {"FUNCIÓN " + std::to_string(funcion), core::Icono::ninguno, {}});
}

const std::string& Enlace::Usuario() const {
    return interior_->sesion.Usuario;
}

void Enlace::Usuario(std::string_view usuario) {
    interior_->sesion.Usuario = core::conCeros(core::ValEntero(usuario), 2);
}

std::string Enlace::Canal() const {
    return interior_->sesion.canalTexto();
}

void Enlace::Canal(std::string_view canal) {
    interior_->sesion.Canal = core::ValEntero(canal);
}

const std::string& Enlace::Moneda() const {
    return interior_->sesion.contexto.Moneda;
}

void Enlace::Moneda(std::string_view codigo) {
    interior_->sesion.contexto.Moneda = codigo;
}

double Enlace::CambioMoneda() const {
    return interior_->sesion.contexto.CambioMoneda;
}

void Enlace::CambioMoneda(double cambio) {
    interior_->sesion.contexto.CambioMoneda = cambio;
}

// --- The entry

std::string Enlace::Fecha() const {
    return fechaSinSiglo(interior_->sesion.Fecha);
}

void Enlace::Fecha(std::string_view fecha) {
    Sesion& sesion = interior_->sesion;
    sesion.entrar();
    sesion.Fecha = ValidarFecha(sesion, fecha);
}

const std::string& Enlace::Número() const {
    return interior_->sesion.Número;
}

void Enlace::Número(std::string_view numero) {
    Operaciones& operaciones = interior_->conEmpresa();
    interior_->sesion.Número = numero.empty() ? operaciones.siguienteNumero() : std::string(numero);
}

bool Enlace::HayPendientes() const {
    return interior_->sesion.pendientes.HayPendientes;
}

void Enlace::LimpiarPendientes() {
    interior_->sesion.LimpiarPendientes();
}

std::int32_t Enlace::GrabarAsiento() {
    return interior_->conEmpresa().GrabarAsiento();
}

Enlace::ValoresMoneda Enlace::CalcularMoneda(double importeEntrada) {
    interior_->conEmpresa();
    data::cargarMonedas(interior_->sesion.contexto.datos);
    return MonedaSesion(interior_->sesion).calcular(importeEntrada);
}

// --- Reading

void Enlace::LeerAsiento(std::string_view fecha, std::string_view asiento) {
    Sesion& sesion = interior_->sesion;
    if (!fecha.empty()) sesion.Fecha = fechaSinComprobar(sesion, fecha);
    if (!asiento.empty()) sesion.Número = asiento;
    if (fecha.empty() && sesion.Fecha.empty() && sesion.Número.empty()) return;
    Operaciones& operaciones = interior_->conEmpresa();
    sesion.LimpiarPendientes();
    // What is no date is that of no entry.
    if (!fecha.empty() && sesion.Fecha.empty()) return;
    operaciones.LeerAsiento();
}

void Enlace::LeerProximoAsiento() {
    interior_->leerVecino(Vecino::proximo);
}

void Enlace::LeerAnteriorAsiento() {
    interior_->leerVecino(Vecino::anterior);
}

void Enlace::LeerPrimerAsiento() {
    interior_->leerVecino(Vecino::primero);
}

void Enlace::LeerUltimoAsiento() {
    interior_->leerVecino(Vecino::ultimo);
}

void Enlace::LeerReferencia(std::string_view) {
    throw ErrorEnlace(error_enlace::noDisponible,
                      ModoRemoto() ? "Esta opción no está disponible con enlace a Veldorix Online"
                                   : "Esta opción no está activada");
}

bool Enlace::BuscarReferencia(std::string_view referencia, bool mayusculasMinusculas) {
    return interior_->conEmpresa().BuscarReferencia(referencia, mayusculasMinusculas);
}

bool Enlace::BuscarDescripcion(std::string_view descripcion, bool mayusculasMinusculas) {
    return interior_->conEmpresa().BuscarDescripcion(descripcion, mayusculasMinusculas);
}

bool Enlace::BuscarImporte(double importe) {
    return interior_->conEmpresa().BuscarImporte(importe);
}

std::int32_t Enlace::ExisteReferencia(std::string_view referencia) {
    return interior_->conEmpresa().ExisteReferencia(referencia);
}

std::int32_t Enlace::ExisteIva(std::string_view factura) {
    return interior_->conEmpresa().ExisteIva(factura);
}

void Enlace::LeerExtracto(std::string_view cuenta, std::string_view desdeFecha, std::string_view hastaFecha,
                          int archivo) {
    Operaciones& operaciones = interior_->conEmpresa();
    Sesion& sesion = interior_->sesion;
    sesion.resultados.extracto.vaciar();
    const std::string desde = ValidarFecha(sesion, desdeFecha);
    const std::string hasta = ValidarFecha(sesion, hastaFecha);
    operaciones.LeerExtracto(cuenta, desde, hasta, archivo);
}

std::string Enlace::LeerExtractoEx(std::string_view cuenta, std::string_view desdeFecha,
                                   std::string_view hastaFecha) {
    Operaciones& operaciones = interior_->conEmpresa();
    const Sesion& sesion = interior_->sesion;
    const std::string desde = ValidarFecha(sesion, desdeFecha);
    const std::string hasta = ValidarFecha(sesion, hastaFecha);
    return operaciones.LeerExtractoEx(cuenta, desde, hasta);
}

// --- Annulling

std::int32_t Enlace::AnularAsiento(std::string_view fecha, std::string_view numeroAsiento) {
    Operaciones& operaciones = interior_->conEmpresa();
    return operaciones.AnularAsiento(ValidarFecha(interior_->sesion, fecha), numeroAsiento);
}

void Enlace::AnularApuntePorReferencia(std::string_view referencia, bool incluirIva, bool incluirAnalitica) {
    interior_->conEmpresa().AnularApuntePorReferencia(referencia, incluirIva, incluirAnalitica);
}

void Enlace::AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica) {
    interior_->conEmpresa().AnularApuntePorRegistro(registro, incluirAnalitica);
}

void Enlace::AnularCuenta(std::string_view cuenta) {
    interior_->conEmpresa().AnularCuenta(cuenta);
}

// --- Accounts and VAT

bool Enlace::CrearCuenta(std::string& cuenta, std::string_view titulo, std::string_view nivel,
                         bool isAnalitica, std::string_view nif) {
    CuentaNueva nueva{cuenta, std::string(titulo), std::string(nivel), isAnalitica, std::string(nif)};
    const bool hecha = interior_->conEmpresa().crearCuenta(TablaPlan::cuentas, nueva);
    cuenta = nueva.Cuenta;
    return hecha;
}

bool Enlace::CrearAnalitica(std::string& cuenta, std::string_view titulo, std::string_view nivel) {
    CuentaNueva nueva{cuenta, std::string(titulo), std::string(nivel)};
    const bool hecha = interior_->conEmpresa().crearCuenta(TablaPlan::analitica, nueva);
    cuenta = nueva.Cuenta;
    return hecha;
}

bool Enlace::CrearAlterna(std::string& cuenta, std::string_view titulo, std::string_view nivel) {
    CuentaNueva nueva{cuenta, std::string(titulo), std::string(nivel)};
    const bool hecha = interior_->conEmpresa().crearCuenta(TablaPlan::alterna, nueva);
    cuenta = nueva.Cuenta;
    return hecha;
}

bool Enlace::LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) {
    return interior_->conEmpresa().LeerPlan(cuenta, nivel, titulo);
}

std::int32_t Enlace::LeerPlanEx(int fi, std::string_view cuenta, std::string_view nivel,
                                std::string_view titulo, std::string_view hastaCuenta,
                                int siguiente1Anterior2) {
    using Vecina = PeticionPlan::Vecina;
    Operaciones& operaciones = interior_->conEmpresa();
    const auto plan = static_cast<TablaPlan>(fi);
    const bool esPlan =
        plan == TablaPlan::cuentas || plan == TablaPlan::analitica || plan == TablaPlan::alterna;
    if (!esPlan) {
        interior_->sesion.resultados.plan.vaciar();
        return 0;
    }
    const Vecina vecina = siguiente1Anterior2 == 1   ? Vecina::siguiente
                          : siguiente1Anterior2 == 2 ? Vecina::anterior
                                                     : Vecina::ninguna;
    return operaciones.LeerPlanEx({plan, cuenta, nivel, titulo, hastaCuenta, vecina});
}

std::int32_t Enlace::LeerDatos(std::string_view cuenta, std::string_view titulo) {
    return interior_->conEmpresa().LeerDatos(cuenta, titulo);
}

int Enlace::ValTIVA(std::string_view des) {
    return link::ValTIVA(des);
}

std::shared_ptr<TipoIvaClass> Enlace::tiposiva(int index) {
    return std::make_shared<TipoIvaClass>(interior_->conEmpresa().tiposiva(index));
}

}  // namespace tarvoline::link
