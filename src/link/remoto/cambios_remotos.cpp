// What is changed through the service, and what it does not offer.
#include <array>

#include "core/texto.h"
#include "data/codec.h"
#include "link/campos_datos.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"
#include "link/remoto/filas_remotas.h"
#include "link/remoto/operaciones_remotas.h"

namespace tarvoline::link::remoto {

namespace {

// A limit that is no date is refused here: what is removed or marked must not depend on how the service reads
// it.
std::string filtroDe(const Sesion& sesion, const FiltroCartera& filtro) {
    std::string texto;
    const auto con = [&](std::string_view condicion, const std::string& valor) {
        if (valor.empty()) return;
        if (!texto.empty()) texto += " AND ";
        texto.append(condicion).append(valor);
    };
    con("CARTERA/BANCO=", filtro.cartera);
    const auto fecha = [&](const std::string& dada) {
        return fechaCorta(sesion, fechaDeTexto(sesion, dada));
    };
    con("FECHA VENCIMIENTO => ", fecha(filtro.DesdeFechaVencimiento));
    con("FECHA VENCIMIENTO =< ", fecha(filtro.HastaFechaVencimiento));
    con("CUENTA=", filtro.Cuenta);
    con("ASIENTO CONTABLE=", filtro.Asiento);
    return texto;
}

}  // namespace

std::int32_t OperacionesRemotas::AnularAsiento(std::string_view fecha, std::string_view numero) {
    cliente_.conCampos("ANULARASIENTO", {"FECHA=" + fechaNormal(fecha), "ASIENTO=" + std::string(numero)});
    return 0;
}

void OperacionesRemotas::AnularApuntePorReferencia(std::string_view referencia, bool /*incluirIva*/,
                                                   bool /*incluirAnalitica*/) {
    cliente_.conCampos("ANULARASIENTO",
                       {elementoEntero("REFERENCIA", "REFERENCIA=" + std::string(referencia))},
                       error_enlace::errorIndexados);
}

void OperacionesRemotas::AnularApuntePorRegistro(std::int32_t /*registro*/, bool /*incluirAnalitica*/) {
    noDisponibleEnRemoto();
}

void OperacionesRemotas::AnularCuenta(std::string_view cuenta) {
    cliente_.conCampos("BORRARCUENTA", {"CUENTA=" + std::string(cuenta)}, error_enlace::errorIndexados);
}

// The answer is the account, which the service may have numbered.
bool OperacionesRemotas::crearCuenta(TablaPlan plan, CuentaNueva& cuenta) {
    namespace campo = posicion::planc;
    std::string cambios = cambioDeCampo(campo::cuenta, cuenta.Cuenta) +
                          cambioDeCampo(campo::titulo, cuenta.titulo) +
                          cambioDeCampo(campo::nivel, cuenta.Nivel);
    if (cuenta.IsAnalitica) cambios += cambioDeCampo(campo::analitica, "1");
    cambios += cambioDeCampo(campo::nif, cuenta.NIF);
    const char* const archivo = plan == TablaPlan::analitica ? "Costo"
                                : plan == TablaPlan::alterna ? "PLANA"
                                                             : "PLANC";
    const std::string respuesta = core::Recortar(cliente_.cambiar(archivo, cambios));
    const bool codigo = !respuesta.empty() && respuesta.find_first_not_of("0123456789") == std::string::npos;
    if (codigo && cuenta.Cuenta.find('*') != std::string::npos) cuenta.Cuenta = respuesta;
    return true;
}

void OperacionesRemotas::CrearDatos(const DatosNuevos& datos) {
    std::string cambios = cambioDeCampo(posicion::datos::cuenta, datos.Cuenta);
    for (const CampoDatos& uno : camposDeDatos())
        cambios += cambioDeCampo(uno.posicion, datos.*uno.valor);
    cliente_.cambiar("DATOS", cambios);
}

CarteraLeida OperacionesRemotas::LeerCartera(const FiltroCartera& filtro) {
    const TablaRespuesta tabla(cliente_.buscar("EFECT", filtroDe(sesion_, filtro)));
    CarteraLeida lineas;
    for (std::size_t i = 0; i < tabla.filas(); ++i)
        lineas.push_back(std::make_shared<CarteraClass>(carteraDe(sesion_, tabla, i)));
    return lineas;
}

void OperacionesRemotas::MarcarCartera(std::string_view marca, const FiltroCartera& filtro) {
    cliente_.cambiarFiltradas("EFECT", filtroDe(sesion_, filtro),
                              cambioDeCampo(posicion::efect::marca, marca));
}

void OperacionesRemotas::AnularCartera(const FiltroCartera& filtro) {
    cliente_.borrarFiltradas("EFECT", filtroDe(sesion_, filtro));
}

void OperacionesRemotas::CrearPresupuesto(std::string_view cuenta, std::string_view titulo,
                                          std::string_view nivel, bool analitica) {
    namespace campo = posicion::presu;
    cliente_.cambiar("PRESU", cambioDeCampo(campo::cuenta, cuenta) + cambioDeCampo(campo::titulo, titulo) +
                                  cambioDeCampo(campo::nivel, nivel) +
                                  cambioDeCampo(campo::analitica, analitica ? "1" : "0"));
}

void OperacionesRemotas::ModificarPresupuesto(std::string_view cuenta, int mes, double importe) {
    namespace campo = posicion::presu;
    constexpr int meses = 12;
    if (mes < 1 || mes > meses) return;
    std::string valor;
    data::ponerTextoDeNumero(importe, valor);
    // An amount of -1 is an amount.
    cliente_.cambiar("PRESU", cambioDeCampo(campo::cuenta, cuenta) +
                                  std::to_string(campo::antesDeEnero + mes) + "=" + valor + "\t");
}

void OperacionesRemotas::cobrar(const CobroCaja& /*cobro*/) {
    noDisponibleEnRemoto();
}

std::int32_t OperacionesRemotas::LeerInmovilizado(std::string_view /*codigo*/) {
    noDisponibleEnRemoto();
}

void OperacionesRemotas::CrearInmovilizado(const InmoClass& /*datos*/) {
    noDisponibleEnRemoto();
}

std::int32_t OperacionesRemotas::LeerDatosGlobales(std::string_view /*nif*/) {
    noDisponibleEnRemoto();
}

void OperacionesRemotas::CrearDatosGloblales(const DatosGlobalClass& /*datos*/) {
    noDisponibleEnRemoto();
}

bool OperacionesRemotas::ExisteNifDatosGlobales(std::string_view /*nif*/) {
    noDisponibleEnRemoto();
}

std::string OperacionesRemotas::Util_LeerDatos(std::string_view /*tabla*/, std::string_view /*campo*/,
                                               std::string_view /*valor*/, std::string_view /*filtro*/) {
    noDisponibleEnRemoto();
}

}  // namespace tarvoline::link::remoto
