#include "data/totales.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "core/texto.h"
#include "data/acceso_archivo.h"

namespace tarvoline::data {

namespace {

namespace estado = motor::estado;
namespace linea = posicion_linea;
namespace cuenta = posicion_cuenta;
namespace iva {
constexpr int serie = 10, orden = 12;  // positions
}

constexpr int tituloMayor = 504;
constexpr std::string_view tituloAnalitica = "Mayor sin título";
constexpr std::string_view nivelCuenta = "0";

constexpr int cifrasContador = 6;
constexpr std::int64_t contadorMayor = 999999;
constexpr int cifrasOrden = 10;
constexpr std::string_view ordenMayor = "9999999999";

// Somebody who has inserted the keys writes the record in a moment.
constexpr int esperasDeRegistro = 20;
constexpr std::chrono::milliseconds esperaDeRegistro{1};

std::string sinBlancos(std::string_view texto) {
    return std::string(texto.substr(0, texto.find_last_not_of(' ') + 1));
}

// Puts gCampos of a table back as they were.
class CamposGuardados {
  public:
    CamposGuardados(Tablas& tablas, int tabla)
        : tablas_(tablas), tabla_(tabla), campos_(tablas.ranura(tabla).gCampos) {}
    ~CamposGuardados() {
        for (std::size_t i = 1; i < campos_.size(); ++i)
            tablas_.gCampos(tabla_, static_cast<int>(i)).swap(campos_[i]);
    }
    CamposGuardados(const CamposGuardados&) = delete;
    CamposGuardados& operator=(const CamposGuardados&) = delete;

  private:
    Tablas& tablas_;
    int tabla_;
    std::vector<std::string> campos_;
};

}  // namespace

Totales::Plan Totales::planCuentas() const {
    return {tabla::planc, tabla::extra, linea::cuenta, capa_.enVigor.gNiveles};
}

Totales::Plan Totales::planAnalitica() const {
    return {tabla::costo, tabla::anali, linea::cuentaAnalitica, capa_.enVigor.gNivelesAnalitica};
}

void Totales::ActualizarTotalesCuenta(int signo, std::string_view rutaCabecera) {
    const Plan plan = planCuentas();
    const auto columna = columnaDe(plan.lineas);
    if (!columna) return;
    AsegurarMayoresCuenta(tablas_.texto(plan.lineas, plan.posicion));
    const double importe = signo * gImporte;
    sumarEnCuentas(plan, *columna, importe);
    const std::string mes = core::Mid(tablas_.texto(plan.lineas, linea::fecha), 3, 2);
    const CampoDoble total = columna->haber ? cabecera::ABONOSA : cabecera::CARGOSA;
    cambiarCabecera(rutaCabecera, [&](CabeceraEmpresa& cabeza) {
        cabeza.poner(cabecera::MES, mes);
        cabeza.poner(total, cabeza.valor(total) + importe);
    });
}

void Totales::ActualizarTotalesAnalitica(int signo, double importe) {
    const Plan plan = planAnalitica();
    const auto columna = columnaDe(plan.lineas);
    if (!columna) return;
    AsegurarMayoresAnalitica(tablas_.texto(plan.lineas, plan.posicion));
    sumarEnCuentas(plan, *columna, signo * importe);
}

void Totales::AsegurarMayoresCuenta(std::string_view codigo) {
    asegurar(planCuentas(), codigo, false);
}

void Totales::AsegurarMayoresAnalitica(std::string_view codigo) {
    asegurar(planAnalitica(), codigo, true);
}

std::optional<ColumnaPeriodo> Totales::columnaDe(int lineas) {
    const std::string tipo = tablas_.texto(lineas, linea::tipo);
    const auto columna =
        columnaDeLinea(tipo, tablas_.texto(lineas, linea::diario), tablas_.texto(lineas, linea::fecha));
    if (!columna) {
        capa_.avisar("un apunte de " + tablas_.TituloTabla(lineas) + " no es debe ni haber: " + tipo);
    }
    return columna;
}

// `conCuenta`: the account itself is made, too.
void Totales::asegurar(const Plan& plan, std::string_view codigo, bool conCuenta) {
    gRegistrosCuenta.fill(0);
    const std::string suya = sinBlancos(core::aAnsi(codigo).bytes());
    if (suya.empty()) return;
    gRegistrosCuenta[0] =
        conCuenta ? buscarOCrear(plan, suya, tituloAnalitica, nivelCuenta) : buscar(plan, suya);
    if (gRegistrosCuenta[0] == 0) return;
    for (const Mayor& mayor : mayoresDe(suya, plan.niveles)) {
        gRegistrosCuenta[mayor.nivel] =
            buscarOCrear(plan, mayor.codigo, capa_.gErrores(tituloMayor), std::to_string(mayor.nivel));
    }
}

// The record of an account, `codigo` being Windows-1252; 0 when there is none. An entry whose record is not
// written yet is waited for; one whose record never comes is passed over.
std::int32_t Totales::buscar(const Plan& plan, const std::string& codigo) {
    const std::string tabla = std::to_string(plan.tabla);
    const int campo = tablas_.gCampoDePosicion(plan.tabla, cuenta::codigo);
    const std::string busqueda = "S\\1\\" + tabla + "\\" + codigo;
    for (int espera = 0; espera < esperasDeRegistro; ++espera) {
        bool enCamino = false;
        tablas_.orden(busqueda);
        while (tablas_.gEstado == estado::bien) {
            const std::int32_t registro = tablas_.gRegistro;
            const std::string suyo = sinBlancos(tablas_.LeerCampo(plan.tabla, registro, campo));
            if (suyo == codigo) return registro;
            if (suyo > codigo) break;
            enCamino = enCamino || suyo.empty() || suyo.front() == '\0';
            tablas_.orden("N\\" + tabla);
        }
        if (!enCamino || !capa_.gMultiusuario) break;
        std::this_thread::sleep_for(esperaDeRegistro);
    }
    return 0;
}

// Two programs that miss the same account at the same time make one: who makes one holds the company file
// and looks again.
std::int32_t Totales::buscarOCrear(const Plan& plan, const std::string& codigo, std::string_view titulo,
                                   std::string_view nivel) {
    std::int32_t registro = buscar(plan, codigo);
    if (registro > 0) return registro;
    const auto crearSiFalta = [&] {
        registro = buscar(plan, codigo);
        if (registro > 0) return;
        crear(plan, codigo, titulo, nivel);
        if (tablas_.gEstado == estado::bien) registro = tablas_.gRegistro;
    };
    const std::string& empresa = capa_.enVigor.gArchivoEmpresa;
    if (!capa_.gMultiusuario || empresa.empty()) {
        crearSiFalta();
    } else {
        conEmpresaBloqueada(capa_, empresa, crearSiFalta);
    }
    return registro;
}

// gRegistro and gEstado are those of the insertion.
void Totales::crear(const Plan& plan, const std::string& codigo, std::string_view titulo,
                    std::string_view nivel) {
    const CamposGuardados guardados(tablas_, plan.tabla);
    const auto campo = [&](int cual) { return tablas_.gCampoDePosicion(plan.tabla, cual); };
    tablas_.blanquear(plan.tabla);
    tablas_.ponerCampo(plan.tabla, campo(cuenta::codigo), codigo);
    tablas_.ponerTexto(plan.tabla, cuenta::titulo, titulo);
    tablas_.ponerTexto(plan.tabla, cuenta::nivel, nivel);
    tablas_.ponerTexto(plan.tabla, cuenta::analitica, "0");
    for (const int base : {cuenta::debe, cuenta::haber}) {
        for (int periodo = 0; periodo < periodosCuenta; ++periodo)
            tablas_.ponerCampo(plan.tabla, campo(base) + periodo, "0");
    }
    tablas_.AnadirRegistro(plan.tabla);
}

void Totales::sumarEnCuentas(const Plan& plan, const ColumnaPeriodo& columna, double importe) {
    const int campo = tablas_.gCampoDePosicion(plan.tabla, columna.posicionBase()) + columna.periodo;
    for (const std::int32_t registro : gRegistrosCuenta) {
        if (registro > 0) sumarEnColumna(plan.tabla, registro, campo, importe);
    }
}

void Totales::sumarEnColumna(int tabla, std::int32_t registro, int campo, double importe) {
    const auto sumar = [&] {
        tablas_.escribirCampoDoble(tabla, registro, campo,
                                   tablas_.LeerCampoDoble(tabla, registro, campo) + importe);
    };
    if (!capa_.gMultiusuario) {
        sumar();
        return;
    }
    tablas_.BloquearRegistro(tabla, registro, campo);
    try {
        sumar();
    } catch (...) {
        tablas_.DesbloquearRegistro(tabla, registro, campo);
        throw;
    }
    tablas_.DesbloquearRegistro(tabla, registro, campo);
}

void Totales::cambiarCabecera(std::string_view ruta, const std::function<void(CabeceraEmpresa&)>& cambiar) {
    const std::string archivo(ruta.empty() ? capa_.enVigor.gArchivoEmpresa : ruta);
    exigirCambioEmpresa(capa_, archivo, [&](platform::Archivo& abierto) {
        CabeceraEmpresa cabeza = CabeceraEmpresa::leer(abierto);
        cambiar(cabeza);
        cabeza.grabar(abierto);
    });
}

std::string Totales::SiguienteContadorAnalitica(std::string_view rutaCabecera) {
    std::string texto;
    cambiarCabecera(rutaCabecera, [&](CabeceraEmpresa& cabeza) {
        const auto ultimo = core::ValEntero(cabeza.texto(cabecera::CONTADORANALITICA));
        texto = core::conCeros(contadorLibre(std::int64_t{ultimo} + 1), cifrasContador);
        cabeza.poner(cabecera::CONTADORANALITICA, texto);
    });
    return texto;
}

// `numero`, or when a line has it already, one behind the highest in use.
std::int64_t Totales::contadorLibre(std::int64_t numero) {
    const std::string tabla = std::to_string(tabla::anali);
    const int campo = tablas_.gCampoDePosicion(tabla::anali, linea::numeroAnalitica);
    while (tablas_.orden("S\\3\\" + tabla + "\\" + core::conCeros(numero, cifrasContador)) == estado::bien) {
        std::int64_t mayor = numero;
        if (tablas_.orden("L\\3\\" + tabla) == estado::bien) {
            const std::string ultimo = tablas_.LeerCampo(tabla::anali, tablas_.gRegistro, campo);
            mayor = std::max<std::int64_t>(mayor, core::ValEntero(ultimo));
        }
        numero = mayor + 1;
    }
    if (numero > contadorMayor) throw std::overflow_error("no queda ningún número para un apunte analítico");
    return numero;
}

std::string Totales::SiguienteOrdenIva(std::string_view serie) {
    const std::string tabla = std::to_string(tabla::iva01);
    const auto campo = [&](int cual) {
        return tablas_.LeerCampo(tabla::iva01, tablas_.gRegistro,
                                 tablas_.gCampoDePosicion(tabla::iva01, cual));
    };
    std::string buscada = core::aAnsi(serie).bytes();
    buscada.resize(1, ' ');
    tablas_.gRegistro = 0;
    tablas_.orden("S\\3\\" + tabla + "\\" + buscada + std::string(ordenMayor));
    // An entry whose record is not there, or has been removed under its keys, is no order of anybody.
    while (tablas_.gRegistro > 0 && estadoDeRegistro(campo(1)) != EstadoRegistro::vivo) {
        if (tablas_.orden("P\\" + tabla) != estado::bien) tablas_.gRegistro = 0;
    }
    std::int64_t siguiente = 1;
    if (tablas_.gRegistro > 0 && campo(iva::serie) == buscada) {
        siguiente = static_cast<std::int64_t>(core::Val(campo(iva::orden))) + 1;
    }
    const std::string texto = core::conCeros(siguiente, cifrasOrden);
    return texto.substr(texto.size() - cifrasOrden);  // behind the highest it begins again
}

}  // namespace tarvoline::data
