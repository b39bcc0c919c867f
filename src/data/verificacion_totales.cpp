#include "data/verificacion_totales.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <set>
#include <thread>
#include <tuple>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/bytes.h"
#include "data/tablas.h"
#include "data/texto_fijo.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

using Diferencias = std::vector<DiferenciaTotal>;

// Equal amounts posted again and again may differ by the same twice, hardly ever so often.
constexpr int vueltas = 6;
constexpr std::chrono::milliseconds entreVueltas{100};

std::string_view codigoDe(const DefinicionTabla& definicion, std::string_view registro) {
    const CampoTabla& campo = definicion.campo(definicion.campoDePosicion(posicion_cuenta::codigo));
    const auto codigo = registro.substr(static_cast<std::size_t>(campo.desplazamiento),
                                        static_cast<std::size_t>(campo.bytes));
    return codigo.substr(0, codigo.find_last_not_of(' ') + 1);
}

// Calls `paso` for every account that is alive.
template <typename Paso>
void recorrerCuentas(TablaSuelta& cuentas, Paso&& paso) {
    cuentas.recorrer(1, cuentas.lugares(), [&](const RegistroLeido& leido) {
        if (leido.estado == EstadoRegistro::vivo && !leido.bytes.empty()) paso(leido);
    });
}

// What makes two findings of different moments the same one.
auto senna(const DiferenciaTotal& una) {
    constexpr int decimales = 4;
    const double exceso = una.presente - una.justo;
    return std::tuple(una.que, una.tabla, una.registro, una.cuenta, una.campo, una.columna,
                      std::isfinite(exceso) ? Redondear(exceso, decimales) : 0.0);
}

void quedarseCon(Diferencias& anteriores, const Diferencias& nuevas) {
    std::set<decltype(senna(nuevas.front()))> vistas;
    for (const auto& una : nuevas)
        vistas.insert(senna(una));
    std::erase_if(anteriores, [&](const auto& una) { return !vistas.contains(senna(una)); });
}

}  // namespace

RevisionTotales::RevisionTotales(CapaDatos& capa, TablaSuelta::Acceso lineas)
    : capa_(capa),
      contables_{tabla::planc,
                 tabla::extra,
                 abrirSuelta(capa, "PLANC"),
                 abrirSuelta(capa, "EXTRA", lineas),
                 posicion_linea::cuenta,
                 posicion_linea::importe,
                 capa.enVigor.gNiveles,
                 false},
      analiticas_{tabla::costo,
                  tabla::anali,
                  abrirSuelta(capa, "Costo"),
                  abrirSuelta(capa, "Anali", lineas),
                  posicion_linea::cuentaAnalitica,
                  posicion_linea::importeBase,
                  capa.enVigor.gNivelesAnalitica,
                  true} {}

const std::vector<std::string>& RevisionTotales::porAsegurar(int tabla) const {
    return tabla == tabla::planc ? contables_.porAsegurar : analiticas_.porAsegurar;
}

bool RevisionTotales::enUso() {
    constexpr platform::Rango centinela{platform::byteCentinela, 1};
    const auto ocupada = [&](TablaSuelta& lineas) {
        return !lineas.archivo().podriaBloquear(centinela, platform::TipoBloqueo::exclusivo);
    };
    return ocupada(contables_.lineas) || ocupada(analiticas_.lineas);
}

void RevisionTotales::sumarLineas(const Progreso& progreso) {
    importesMalos_.clear();
    cuadre_ = {};
    sumarPlan(contables_, progreso, &cuadre_);
    sumarPlan(analiticas_, progreso, nullptr);
}

void RevisionTotales::sumarPlan(Plan& plan, const Progreso& progreso, CuadreAsientos* cuadre) {
    plan.sumas = SumasLineas();
    const auto anotar = [&](std::int64_t registro, std::string_view cuenta) {
        DiferenciaTotal mala;
        mala.que = DiferenciaTotal::Que::importe;
        mala.tabla = plan.tablaLineas;
        mala.registro = registro;
        mala.cuenta = core::aUtf8(cuenta);
        mala.presente = std::numeric_limits<double>::quiet_NaN();
        importesMalos_.push_back(mala);
    };
    plan.sumas.sumar(plan.lineas, plan.posicionCuenta, plan.posicionImporte, anotar, progreso, cuadre);
}

Diferencias RevisionTotales::comparar() {
    Diferencias diferencias;
    compararCabecera(diferencias);
    diferencias.insert(diferencias.end(), importesMalos_.begin(), importesMalos_.end());
    compararPlan(contables_, diferencias);
    compararPlan(analiticas_, diferencias);
    return diferencias;
}

void RevisionTotales::compararPlan(Plan& plan, Diferencias& diferencias) {
    plan.registros.clear();
    plan.vivas = 0;
    recorrerCuentas(plan.cuentas, [&](const RegistroLeido& leida) {
        ++plan.vivas;
        // Of accounts with one code postings go to the first.
        plan.registros.emplace(codigoDe(plan.cuentas.definicion(), leida.bytes), leida.numero);
    });
    const auto saldos = plan.sumas.conMayores(plan.niveles, [&](const std::string& codigo) {
        return plan.creaCuentas || plan.registros.contains(codigo);
    });
    anotarFaltas(plan, saldos, diferencias);
    compararColumnas(plan, saldos, diferencias);
}

void RevisionTotales::anotarFaltas(Plan& plan, const SaldosPorCuenta& saldos,
                                   Diferencias& diferencias) const {
    const auto falta = [&](const std::string& codigo) { return !plan.registros.contains(codigo); };
    std::set<std::string> codigos;
    for (const auto& [codigo, suyos] : saldos) {
        if (falta(codigo)) codigos.insert(codigo);
    }
    for (const std::string& codigo : codigos) {
        DiferenciaTotal una;
        una.que = DiferenciaTotal::Que::falta;
        una.tabla = plan.tabla;
        una.cuenta = core::aUtf8(codigo);
        diferencias.push_back(una);
    }
    plan.porAsegurar.clear();
    plan.fuera = 0;
    for (const auto& [codigo, suyos] : plan.sumas.cuentas()) {
        if (!plan.creaCuentas && falta(codigo)) {
            ++plan.fuera;
            continue;
        }
        const bool incompleta =
            falta(codigo) || std::ranges::any_of(mayoresDe(codigo, plan.niveles),
                                                 [&](const Mayor& mayor) { return falta(mayor.codigo); });
        if (incompleta) plan.porAsegurar.push_back(core::aUtf8(codigo));
    }
    std::ranges::sort(plan.porAsegurar);
}

void RevisionTotales::compararColumnas(Plan& plan, const SaldosPorCuenta& saldos,
                                       Diferencias& diferencias) const {
    const DefinicionTabla& definicion = plan.cuentas.definicion();
    const SaldosCuenta ninguno{};
    recorrerCuentas(plan.cuentas, [&](const RegistroLeido& leida) {
        const std::string codigo(codigoDe(definicion, leida.bytes));
        const auto suyos = saldos.find(codigo);
        const auto primero = plan.registros.find(codigo);
        const bool cuenta =
            suyos != saldos.end() && primero != plan.registros.end() && primero->second == leida.numero;
        const SaldosCuenta& justos = cuenta ? suyos->second : ninguno;
        for (const bool haber : {false, true}) {
            for (int periodo = 0; periodo < periodosCuenta; ++periodo) {
                const ColumnaPeriodo columna{haber, periodo};
                const int campo = definicion.campoDePosicion(columna.posicionBase()) + periodo;
                const CampoTabla& este = definicion.campo(campo);
                const double presente =
                    TextoADoble(leida.bytes.substr(static_cast<std::size_t>(este.desplazamiento)));
                const double justo = justos[lugarDeColumna(columna)].valor();
                if (!distintos(presente, justo)) continue;
                diferencias.push_back({DiferenciaTotal::Que::columna, plan.tabla, leida.numero,
                                       core::aUtf8(codigo), este.nombre, campo, presente, justo});
            }
        }
    });
}

void RevisionTotales::compararCabecera(Diferencias& diferencias) {
    CabeceraEmpresa cabeza;
    exigirEmpresa(capa_, capa_.enVigor.gArchivoEmpresa,
                  [&](platform::Archivo& archivo) { cabeza = CabeceraEmpresa::leer(archivo); });
    const auto anotar = [&](DiferenciaTotal::Que que, const char* nombre, double presente, double justo) {
        DiferenciaTotal una;
        una.que = que;
        una.columna = nombre;
        una.presente = presente;
        una.justo = justo;
        diferencias.push_back(una);
    };
    const auto total = [&](CampoDoble campo, const char* nombre, double justo) {
        const double presente = cabeza.valor(campo);
        if (distintos(presente, justo)) anotar(DiferenciaTotal::Que::cabecera, nombre, presente, justo);
    };
    total(cabecera::CARGOSA, "CARGOSA", debe());
    total(cabecera::ABONOSA, "ABONOSA", haber());
    const auto contador = core::ValEntero(cabeza.texto(cabecera::CONTADORANALITICA));
    const auto mayor = std::max(contables_.sumas.mayorAnalitica(), analiticas_.sumas.mayorAnalitica());
    if (contador < mayor) {
        anotar(DiferenciaTotal::Que::contador, "CONTADORANALITICA", contador, static_cast<double>(mayor));
    }
}

// Postings round nothing and add in their own order, so a sum on the edge between two cents may round either
// way: what does not show with two decimals more is no difference.
bool RevisionTotales::distintos(double uno, double otro) const {
    if (!std::isfinite(uno) || !std::isfinite(otro)) return true;
    if (Redondear(capa_, uno) == Redondear(capa_, otro)) return false;
    const auto& monedas = capa_.monedas;
    const int decimales = monedas.cargadas ? monedas.DecimalesMonedas.front() : capa_.gDecimalesMoneda;
    return Redondear(uno - otro, decimales + 2) != 0;
}

VerificacionTotales verificarTotales(CapaDatos& capa, const Progreso& progreso) {
    RevisionTotales revision(capa);
    VerificacionTotales resultado;
    for (int vuelta = 1;; ++vuelta) {
        const bool enUsoAntes = revision.enUso();
        revision.sumarLineas(progreso);
        const auto diferencias = revision.comparar();
        resultado.enUso = resultado.enUso || enUsoAntes || revision.enUso();
        if (vuelta == 1) {
            resultado.diferencias = diferencias;
        } else {
            quedarseCon(resultado.diferencias, diferencias);
        }
        if (resultado.diferencias.empty() || !resultado.enUso || vuelta == vueltas) break;
        std::this_thread::sleep_for(entreVueltas);
    }
    resultado.cuentas = revision.cuentas();
    resultado.cuentasFueraDelPlan = revision.cuentasFueraDelPlan();
    resultado.debe = revision.debe();
    resultado.haber = revision.haber();
    resultado.descuadrados = revision.descuadrados();
    return resultado;
}

std::string textoDeImporte(double importe) {
    if (!std::isfinite(importe)) return "(no es un número)";
    std::string texto;
    ponerTextoDeNumero(importe, texto);
    return texto;
}

std::string frase(const DiferenciaTotal& una) {
    const std::string nombre = una.tabla == tabla::planc   ? "PLANC"
                               : una.tabla == tabla::costo ? "COSTO"
                               : una.tabla == tabla::extra ? "EXTRA"
                                                           : "ANALI";
    const std::string donde = nombre + " registro " + std::to_string(una.registro) + ", cuenta " + una.cuenta;
    const std::string importes =
        ": tiene " + textoDeImporte(una.presente) + " y los apuntes suman " + textoDeImporte(una.justo) + ".";
    switch (una.que) {
        case DiferenciaTotal::Que::importe:
            return donde + ": el importe del apunte no es un número.";
        case DiferenciaTotal::Que::falta:
            return nombre + ": falta la cuenta " + una.cuenta +
                   ", que tiene apuntes o subcuentas con apuntes.";
        case DiferenciaTotal::Que::columna:
            return donde + ", " + una.columna + importes;
        case DiferenciaTotal::Que::cabecera:
            return "Empresa, " + una.columna + importes;
        case DiferenciaTotal::Que::contador:
            return "Empresa, " + una.columna + ": tiene " + textoDeImporte(una.presente) +
                   " y hay apuntes hasta el " + textoDeImporte(una.justo) + ".";
    }
    return {};
}

}  // namespace tarvoline::data
