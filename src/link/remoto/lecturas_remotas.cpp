// What is read through the service: searches on its tables, put into the collections of the session.
#include <algorithm>
#include <map>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/codec.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"
#include "link/remoto/filas_remotas.h"
#include "link/remoto/lector_asientos.h"
#include "link/remoto/operaciones_remotas.h"

namespace tarvoline::link::remoto {

namespace {

constexpr int decimales = 2;

bool esPatron(std::string_view texto) {
    return texto.find_first_of("*?") != std::string_view::npos;
}

// A filter of conditions joined by " AND "; those without a value are left out.
class FiltroTexto {
  public:
    FiltroTexto& con(std::string_view columnaYOperador, std::string_view valor) {
        if (valor.empty()) return *this;
        if (!texto_.empty()) texto_ += " AND ";
        texto_.append(columnaYOperador).append(valor);
        return *this;
    }
    // Equality, or likeness where the value is a pattern.
    FiltroTexto& como(const std::string& columna, std::string_view valor) {
        return con(columna + (esPatron(valor) ? " LIKE " : "="), valor);
    }
    const std::string& texto() const { return texto_; }

  private:
    std::string texto_;
};

// Without folder, and without ".QZT": a point elsewhere is the name's own.
std::string nombreDeEmpresa(std::string_view ruta) {
    constexpr std::string_view extension = ".QZT";
    std::string nombre(ruta.substr(ruta.find_last_of("/\\") + 1));
    const std::size_t sin = nombre.size() - std::min(nombre.size(), extension.size());
    if (core::igualSinCaja(nombre.substr(sin), extension)) nombre.erase(sin);
    return nombre;
}

std::string numero(double valor) {
    std::string texto;
    data::ponerTextoDeNumero(valor, texto);
    return texto;
}

const char* archivoDe(TablaPlan plan) {
    switch (plan) {
        case TablaPlan::analitica:
            return "Costo";
        case TablaPlan::alterna:
            return "PLANA";
        default:
            return "PLANC";
    }
}

}  // namespace

bool OperacionesRemotas::buscarLineas(const std::string& filtro) {
    auto& extracto = sesion_.resultados.extracto;
    extracto.vaciar();
    const TablaRespuesta tabla(cliente_.buscar("EXTRA", filtro));
    for (std::size_t i = 0; i < tabla.filas(); ++i)
        extracto.anadir(lineaDe(sesion_, tabla, i));
    return !extracto.vacia();
}

bool OperacionesRemotas::BuscarReferencia(std::string_view referencia, bool /*ignorarMayusculas*/) {
    return buscarLineas("REFERENCIA LIKE *" + std::string(referencia) + "*");
}

bool OperacionesRemotas::BuscarDescripcion(std::string_view descripcion, bool /*ignorarMayusculas*/) {
    return buscarLineas("DESCRIPCION LIKE *" + std::string(descripcion) + "*");
}

bool OperacionesRemotas::BuscarImporte(double importe) {
    return buscarLineas("ABS(IMPORTE)= " + numero(importe));
}

std::int32_t OperacionesRemotas::ExisteReferencia(std::string_view referencia) {
    return static_cast<std::int32_t>(
        TablaRespuesta(cliente_.buscar("EXTRA", "REFERENCIA=" + std::string(referencia))).filas());
}

std::int32_t OperacionesRemotas::ExisteIva(std::string_view factura) {
    return static_cast<std::int32_t>(
        TablaRespuesta(cliente_.buscar("IVA01", "FACTURA No. = " + std::string(factura))).filas());
}

void OperacionesRemotas::LeerExtracto(std::string_view cuenta, std::string_view desde, std::string_view hasta,
                                      int archivo) {
    constexpr int analitico = 10;
    sesion_.resultados.extracto.vaciar();
    if (core::Recortar(cuenta).empty()) return;
    if (archivo == analitico) noDisponibleEnRemoto();
    extractoDe(std::string(cuenta), desde, hasta);
}

OperacionesRemotas::LineasCuenta OperacionesRemotas::lineasDe(const std::string& cuenta,
                                                              std::string_view desde,
                                                              std::string_view hasta) {
    LineasCuenta lineas{TablaRespuesta(cliente_.buscar("EXTRA", FiltroTexto()
                                                                    .como("CUENTA", cuenta)
                                                                    .con("FECHA=>", fechaNormal(desde))
                                                                    .con("FECHA<=", fechaNormal(hasta))
                                                                    .texto())),
                        {}};
    const TablaRespuesta& tabla = lineas.tabla;
    std::vector<std::pair<std::string, std::string>> lugares;
    for (std::size_t i = 0; i < tabla.filas(); ++i) {
        lineas.orden.push_back(i);
        lugares.emplace_back(tabla.texto(i, "CUENTA"),
                             fechaDeTexto(sesion_, fechaDeRespuesta(sesion_, tabla.texto(i, "FECHA"))));
    }
    std::ranges::stable_sort(lineas.orden,
                             [&](std::size_t a, std::size_t b) { return lugares[a] < lugares[b]; });
    return lineas;
}

// What lies before the first day counts in the balance.
void OperacionesRemotas::extractoDe(const std::string& cuenta, std::string_view desde,
                                    std::string_view hasta) {
    std::map<std::string, double> saldos;
    if (!desde.empty()) {
        const TablaRespuesta antes(cliente_.buscar(
            "EXTRA", FiltroTexto().como("CUENTA", cuenta).con("FECHA<", fechaNormal(desde)).texto()));
        for (std::size_t i = 0; i < antes.filas(); ++i)
            saldos[antes.texto(i, "CUENTA")] += antes.numero(i, "IMPORTE");
    }
    const LineasCuenta lineas = lineasDe(cuenta, desde, hasta);
    for (const std::size_t fila : lineas.orden) {
        ExtractoClass linea = lineaDe(sesion_, lineas.tabla, fila);
        double& saldo = saldos[linea.Cuenta];
        saldo = data::Redondear(saldo + linea.Importe, decimales);
        linea.Saldo = saldo;
        sesion_.resultados.extracto.anadir(std::move(linea));
    }
}

// Of one account; the balance begins with 0.
std::string OperacionesRemotas::LeerExtractoEx(std::string_view cuenta, std::string_view desde,
                                               std::string_view hasta) {
    if (core::Recortar(cuenta).empty()) return {};
    if (esPatron(cuenta)) return {};
    const LineasCuenta lineas = lineasDe(std::string(cuenta), desde, hasta);
    std::string texto;
    double saldo = 0;
    for (const std::size_t fila : lineas.orden) {
        const auto celda = [&](const char* columna) { return lineas.tabla.texto(fila, columna) + "\t"; };
        const double importe = lineas.tabla.numero(fila, "IMPORTE");
        const bool alDebe = lineas.tabla.texto(fila, "TIPO") == "1";
        saldo = data::Redondear(saldo + importe, decimales);
        texto += celda("CUENTA") + fechaDeRespuesta(sesion_, lineas.tabla.texto(fila, "FECHA")) + "\t" +
                 celda("ASIENTO") + celda("DESCRIPCION") + numero(alDebe ? importe : 0) + "\t" +
                 numero(alDebe ? 0 : importe) + "\t" + numero(saldo) + "\t" + celda("PUNTEO") +
                 celda("DIARIO") + celda("CANAL") + lineas.tabla.texto(fila, "REFERENCIA") + "\r\n";
    }
    return texto;
}

// --- Charts and master data

void OperacionesRemotas::leerPlan(const char* archivo, const std::string& filtro, bool porTitulo) {
    const TablaRespuesta tabla(cliente_.buscar(archivo, filtro));
    std::vector<PlanClass> cuentas;
    for (std::size_t i = 0; i < tabla.filas(); ++i)
        cuentas.push_back(planDe(tabla, i));
    if (porTitulo) {
        std::ranges::stable_sort(cuentas, {}, [](const PlanClass& una) {
            return std::make_pair(core::aAnsi(una.titulo).bytes(), una.Cuenta);
        });
    }
    for (PlanClass& una : cuentas)
        sesion_.resultados.plan.anadir(std::move(una));
}

bool OperacionesRemotas::LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) {
    sesion_.resultados.plan.vaciar();
    const std::string pedida(cuenta.empty() ? "?" : cuenta);
    for (const auto& una : core::Partir(pedida, ",")) {
        std::string codigo = core::Recortar(una);
        if (codigo.empty()) continue;
        if (codigo == "?") codigo = "*";
        leerPlan("PLANC",
                 FiltroTexto().como("CUENTA", codigo).con("NIVEL=", nivel).como("TITULO", titulo).texto(),
                 esPatron(codigo) && !titulo.empty());
    }
    return !sesion_.resultados.plan.vacia();
}

// A neighbour is the first, or the last, of all that lie on that side.
std::int32_t OperacionesRemotas::LeerPlanEx(const PeticionPlan& peticion) {
    using Vecina = PeticionPlan::Vecina;
    auto& plan = sesion_.resultados.plan;
    plan.vaciar();
    FiltroTexto filtro;
    if (peticion.vecina == Vecina::anterior && peticion.Cuenta.empty()) return 0;
    if (peticion.vecina != Vecina::ninguna) {
        filtro.con(peticion.vecina == Vecina::siguiente ? "CUENTA>" : "CUENTA<", peticion.Cuenta);
    } else if (!peticion.HastaCuenta.empty()) {
        filtro.con("CUENTA>=", peticion.Cuenta).con("CUENTA<=", peticion.HastaCuenta);
    } else {
        filtro.como("CUENTA", peticion.Cuenta);
    }
    filtro.con("NIVEL=", peticion.Nivel).como("TITULO", peticion.titulo);
    const bool porTitulo = peticion.vecina == Vecina::ninguna && peticion.HastaCuenta.empty() &&
                           !peticion.titulo.empty() && (peticion.Cuenta.empty() || esPatron(peticion.Cuenta));
    leerPlan(archivoDe(peticion.plan), filtro.texto(), porTitulo);
    if (peticion.vecina != Vecina::ninguna && !plan.vacia()) {
        const auto una = plan(peticion.vecina == Vecina::siguiente ? 1 : plan.contar());
        plan.vaciar();
        plan.anadir(*una);
    }
    return plan.contar();
}

std::int32_t OperacionesRemotas::LeerDatos(std::string_view cuenta, std::string_view titulo) {
    auto& maestros = sesion_.resultados.datos;
    maestros.vaciar();
    const std::string nombre = titulo.empty() ? std::string() : "*" + std::string(titulo) + "*";
    const TablaRespuesta tabla(
        cliente_.buscar("DATOS", FiltroTexto()
                                     .con("NOMBRE LIKE ", nombre)
                                     .con(esPatron(cuenta) ? "CUENTA LIKE " : "CUENTA = ", cuenta)
                                     .texto()));
    std::vector<DatosClass> filas;
    for (std::size_t i = 0; i < tabla.filas(); ++i)
        filas.push_back(datosDe(tabla, i));
    const bool porNombre = !titulo.empty() && (cuenta.empty() || esPatron(cuenta));
    std::ranges::stable_sort(filas, {}, [&](const DatosClass& uno) {
        return std::make_pair(porNombre ? core::aAnsi(uno.titulo).bytes() : std::string(), uno.Cuenta);
    });
    for (DatosClass& uno : filas)
        maestros.anadir(std::move(uno));
    return maestros.contar();
}

std::string OperacionesRemotas::EsCriterioCaja(std::string_view /*cuenta*/) {
    noDisponibleEnRemoto();
}

// Rows with a date of collection have been collected; the others are the invoice.
OperacionesRemotas::SumaFactura OperacionesRemotas::sumarFactura(const std::string& filtro,
                                                                 std::string_view empresa) {
    const TablaRespuesta tabla(cliente_.buscar("IVA01", filtro, empresa));
    SumaFactura suma{tabla.filas() > 0, 0};
    for (std::size_t i = 0; i < tabla.filas(); ++i) {
        const bool cobro = !fechaDeRespuesta(sesion_, tabla.texto(i, "FECHA COBRO/PAGO")).empty();
        suma.pendiente += (cobro ? -1 : 1) * tabla.numero(i, "LIQUIDO");
    }
    return suma;
}

// The year before counts where it is in the same folder.
double OperacionesRemotas::TotalPendiente(std::string_view cliente, std::string_view factura,
                                          std::string_view fechaFactura) {
    const std::string fecha = fechaNormal(fechaDeTexto(sesion_, fechaFactura));
    std::string filtro =
        "CLIENTE/PROVEEDOR = " + std::string(cliente) + " and factura No. = " + std::string(factura);
    if (!fecha.empty()) filtro += " and FECHA FACTURA  =" + fecha;
    SumaFactura suma = sumarFactura(filtro, {});
    const std::string anterior = nombreDeEmpresa(EmpresaAñoAnterior());
    // A failure here is none of "there was no such year": the sum would be half of it.
    if (!anterior.empty() && cliente_.simple("EMPRESAEXISTS", anterior, "") != "NO") {
        const SumaFactura antes = sumarFactura(filtro, anterior);
        suma = {suma.hay || antes.hay, suma.pendiente + antes.pendiente};
    }
    if (!suma.hay) {
        throw ErrorEnlace(error_enlace::facturaNoExiste, "No existe la factura " + std::string(factura) +
                                                             " para el cliente/proveedor " +
                                                             std::string(cliente));
    }
    return data::Redondear(suma.pendiente, decimales);
}

}  // namespace tarvoline::link::remoto
