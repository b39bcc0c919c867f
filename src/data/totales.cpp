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
namespace posicion {
constexpr int fecha = 1, tipo = 5, diario = 8, numeroAnalitica = 18, cuentaAnalitica = 19;  // of a line
constexpr int codigo = 1, titulo = 2, nivel = 3, analitica = 6, debe = 12, haber = 13;      // of an account
constexpr int serie = 10, orden = 12;                                                       // of VAT
constexpr int cuenta = 2;
}  // namespace posicion

constexpr int periodos = 15;
constexpr int regularizacion = 13, cierre = 14;
constexpr int meses = 12;
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
    return {tabla::planc, tabla::extra, posicion::cuenta, capa_.enVigor.gNiveles};
}

Totales::Plan Totales::planAnalitica() const {
    return {tabla::costo, tabla::anali, posicion::cuentaAnalitica, capa_.enVigor.gNivelesAnalitica};
}

void Totales::ActualizarTotalesCuenta(int signo, std::string_view rutaCabecera) {
    const Plan plan = planCuentas();
    const Columna columna = columnaDe(plan.lineas);
    if (columna.posicion == 0) return;
    AsegurarMayoresCuenta(tablas_.texto(plan.lineas, plan.posicion));
    const double importe = signo * gImporte;
    sumarEnCuentas(plan, columna, importe);
    const std::string mes = core::Mid(tablas_.texto(plan.lineas, posicion::fecha), 3, 2);
    const CampoDoble total = columna.posicion == posicion::debe ? cabecera::CARGOSA : cabecera::ABONOSA;
    cambiarCabecera(rutaCabecera, [&](CabeceraEmpresa& cabeza) {
        cabeza.poner(cabecera::MES, mes);
        cabeza.poner(total, cabeza.valor(total) + importe);
    });
}

void Totales::ActualizarTotalesAnalitica(int signo, double importe) {
    const Plan plan = planAnalitica();
    const Columna columna = columnaDe(plan.lineas);
    if (columna.posicion == 0) return;
    AsegurarMayoresAnalitica(tablas_.texto(plan.lineas, plan.posicion));
    sumarEnCuentas(plan, columna, signo * importe);
}

void Totales::AsegurarMayoresCuenta(std::string_view codigo) {
    asegurar(planCuentas(), codigo, false);
}

void Totales::AsegurarMayoresAnalitica(std::string_view codigo) {
    asegurar(planAnalitica(), codigo, true);
}

Totales::Columna Totales::columnaDe(int lineas) {
    const std::string tipo = tablas_.texto(lineas, posicion::tipo);
    if (tipo != "1" && tipo != "2") {
        capa_.avisar("a line of " + tablas_.TituloTabla(lineas) + " is neither debit nor credit: " + tipo);
        return {};
    }
    const int base = tipo == "1" ? posicion::debe : posicion::haber;
    const std::string diario = tablas_.texto(lineas, posicion::diario);
    if (diario == "A") return {base, 0};
    if (diario == "B") return {base, regularizacion};
    if (diario == "C") return {base, cierre};
    const int mes = core::ValEntero(core::Mid(tablas_.texto(lineas, posicion::fecha), 3, 2));
    return {base, mes >= 1 && mes <= meses ? mes : 0};
}

// `conCuenta`: the account itself is made, too.
void Totales::asegurar(const Plan& plan, std::string_view codigo, bool conCuenta) {
    gRegistrosCuenta.fill(0);
    const std::string cuenta = sinBlancos(core::aAnsi(codigo).bytes());
    if (cuenta.empty()) return;
    gRegistrosCuenta[0] =
        conCuenta ? buscarOCrear(plan, cuenta, tituloAnalitica, nivelCuenta) : buscar(plan, cuenta);
    if (gRegistrosCuenta[0] == 0) return;
    for (std::size_t nivel = 1; nivel < gRegistrosCuenta.size(); ++nivel) {
        const auto longitud = static_cast<std::size_t>(std::max(0, plan.niveles[nivel]));
        if (longitud == 0 || longitud >= cuenta.size()) continue;
        const std::int32_t mayor = buscarOCrear(plan, cuenta.substr(0, longitud), capa_.gErrores(tituloMayor),
                                                std::to_string(nivel));
        // Two levels of one length have one parent, and it is posted once.
        const bool nuevo = std::ranges::find(gRegistrosCuenta, mayor) == gRegistrosCuenta.end();
        if (nuevo) gRegistrosCuenta[nivel] = mayor;
    }
}

// The record of an account, `codigo` being Windows-1252; 0 when there is none. An entry whose record is not
// written yet is waited for; one whose record never comes is passed over.
std::int32_t Totales::buscar(const Plan& plan, const std::string& codigo) {
    const std::string tabla = std::to_string(plan.tabla);
    const int campo = tablas_.gCampoDePosicion(plan.tabla, posicion::codigo);
    for (int espera = 0; espera < esperasDeRegistro; ++espera) {
        bool enCamino = false;
        tablas_.orden("S\\1\\" + tabla + "\\" + codigo);
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
    } else if (!cambiarEmpresa(capa_, empresa, [&](platform::Archivo&) { crearSiFalta(); })) {
        throw platform::ErrorArchivo(platform::error_archivo::permisoDenegado, empresa,
                                     "the company file could not be held to make an account");
    }
    return registro;
}

// gRegistro and gEstado are those of the insertion.
void Totales::crear(const Plan& plan, const std::string& codigo, std::string_view titulo,
                    std::string_view nivel) {
    const CamposGuardados guardados(tablas_, plan.tabla);
    const auto campo = [&](int cual) { return tablas_.gCampoDePosicion(plan.tabla, cual); };
    tablas_.blanquear(plan.tabla);
    tablas_.ponerCampo(plan.tabla, campo(posicion::codigo), codigo);
    tablas_.ponerTexto(plan.tabla, posicion::titulo, titulo);
    tablas_.ponerTexto(plan.tabla, posicion::nivel, nivel);
    tablas_.ponerTexto(plan.tabla, posicion::analitica, "0");
    for (const int base : {posicion::debe, posicion::haber}) {
        for (int periodo = 0; periodo < periodos; ++periodo)
            tablas_.ponerCampo(plan.tabla, campo(base) + periodo, "0");
    }
    tablas_.AnadirRegistro(plan.tabla);
}

void Totales::sumarEnCuentas(const Plan& plan, const Columna& columna, double importe) {
    const int campo = tablas_.gCampoDePosicion(plan.tabla, columna.posicion) + columna.periodo;
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
    const bool hecho = cambiarEmpresa(capa_, archivo, [&](platform::Archivo& abierto) {
        CabeceraEmpresa cabeza = CabeceraEmpresa::leer(abierto);
        cambiar(cabeza);
        cabeza.grabar(abierto);
    });
    if (hecho) return;
    throw platform::ErrorArchivo(platform::error_archivo::permisoDenegado, archivo,
                                 "the head of the company file could not be written");
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
    const int campo = tablas_.gCampoDePosicion(tabla::anali, posicion::numeroAnalitica);
    while (tablas_.orden("S\\3\\" + tabla + "\\" + core::conCeros(numero, cifrasContador)) == estado::bien) {
        std::int64_t mayor = numero;
        if (tablas_.orden("L\\3\\" + tabla) == estado::bien) {
            const std::string ultimo = tablas_.LeerCampo(tabla::anali, tablas_.gRegistro, campo);
            mayor = std::max<std::int64_t>(mayor, core::ValEntero(ultimo));
        }
        numero = mayor + 1;
    }
    if (numero > contadorMayor) throw std::overflow_error("no number is left for an analytic line");
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
    // An entry whose record is not there is no order of anybody.
    while (tablas_.gRegistro > 0 && campo(posicion::serie).front() == '\0') {
        if (tablas_.orden("P\\" + tabla) != estado::bien) tablas_.gRegistro = 0;
    }
    std::int64_t siguiente = 1;
    if (tablas_.gRegistro > 0 && campo(posicion::serie) == buscada) {
        siguiente = static_cast<std::int64_t>(core::Val(campo(posicion::orden))) + 1;
    }
    return core::conCeros(siguiente, cifrasOrden);
}

}  // namespace tarvoline::data
