#include "link/lectura_plan.h"

#include "core/texto.h"
#include "data/filtro.h"
#include "link/campos_plan.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace planc = posicion::planc;
namespace datos = posicion::datos;

constexpr int claveCuenta = 1, claveTitulo = 2;
static_assert(planc::cuenta == datos::cuenta);  // one reader for accounts and their master data
constexpr std::string_view marcada = "1";

bool esPatron(std::string_view texto) {
    return texto.find_first_of("*?") != std::string_view::npos;
}

std::string ansi(std::string_view utf8) {
    return std::string(sinRelleno(core::aAnsi(utf8).bytes()));
}

PlanClass planDe(const Fila& fila) {
    PlanClass cuenta;
    cuenta.Cuenta = fila.texto(planc::cuenta);
    cuenta.titulo = fila.texto(planc::titulo);
    cuenta.Nivel = fila.texto(planc::nivel);
    for (std::size_t periodo = 0; periodo < periodosPlan; ++periodo) {
        const auto columna = static_cast<int>(periodo);
        ponerPeriodo(cuenta, periodo, fila.numero(planc::debe, columna), fila.numero(planc::haber, columna));
    }
    cuenta.EsAnalitica = fila.texto(planc::analitica) == marcada;
    cuenta.NIF = fila.texto(planc::nif);
    cuenta.NOTAS = fila.texto(planc::notas);
    cuenta.OMITIR347 = fila.texto(planc::omitir347);
    cuenta.OMITIR415 = fila.texto(planc::omitir415);
    cuenta.Clave347 = fila.texto(planc::clave347);
    cuenta.CriterioCaja = fila.texto(planc::criterioCaja);
    return cuenta;
}

DatosClass datosDe(const Fila& fila) {
    DatosClass uno;
    uno.Cuenta = fila.texto(datos::cuenta);
    uno.titulo = fila.texto(datos::nombre);
    uno.NIF = fila.texto(datos::nif);
    uno.Direccion = fila.texto(datos::direccion);
    uno.cp = fila.texto(datos::cp);
    uno.Municipio = fila.texto(datos::municipio);
    uno.Provincia = fila.texto(datos::provincia);
    uno.CVP = fila.texto(datos::clave347);
    uno.Importe_347 = fila.numero(datos::importe347);
    uno.Telefono = fila.texto(datos::telefono);
    uno.Fax = fila.texto(datos::fax);
    uno.Riesgo = fila.numero(datos::riesgo);
    uno.TipoIva = fila.texto(datos::tipoIva);
    uno.NOTAS = fila.texto(datos::notas);
    uno.Vencimientos = fila.texto(datos::vencimientos);
    uno.DiasDePago = fila.texto(datos::diasDePago);
    uno.email = fila.texto(datos::email);
    uno.PaginaWeb = fila.texto(datos::paginaWeb);
    uno.Pais = fila.texto(datos::pais);
    uno.EsCriterioCaja = fila.texto(datos::criterioCaja) == marcada;
    uno.OMITIR347 = fila.texto(datos::omitir347);
    uno.OMITIR415 = fila.texto(datos::omitir415);
    uno.Trimestre1_347 = fila.numero(datos::trimestre1);
    uno.Trimestre2_347 = fila.numero(datos::trimestre2);
    uno.Trimestre3_347 = fila.numero(datos::trimestre3);
    uno.Trimestre4_347 = fila.numero(datos::trimestre4);
    return uno;
}

}  // namespace

// "" is "?", which alone means every account. Empty items of a list are none.
bool LecturaPlan::LeerPlan(std::string_view cuenta, std::string_view nivel, std::string_view titulo) {
    auto& plan = sesion_.resultados.plan;
    plan.vaciar();
    const TablasAbiertas abiertas(sesion_);
    const Origen origen{data::tabla::planc, planc::titulo};
    std::string_view resto = cuenta.empty() ? "?" : cuenta;
    for (bool quedan = true; quedan;) {
        const std::size_t coma = resto.find(',');
        const std::string una = core::Recortar(resto.substr(0, coma));
        if (!una.empty()) {
            leer(origen, {una == "?" ? "*" : ansi(una), {}, ansi(nivel), ansi(titulo)},
                 [this](const Fila& fila) { anadirCuenta(fila); });
        }
        quedan = coma != std::string_view::npos;
        if (quedan) resto.remove_prefix(coma + 1);
    }
    return !plan.vacia();
}

std::int32_t LecturaPlan::LeerPlanEx(const PeticionPlan& peticion) {
    auto& plan = sesion_.resultados.plan;
    plan.vaciar();
    const TablasAbiertas abiertas(sesion_);
    const Origen origen{static_cast<int>(peticion.plan), planc::titulo};
    const Condiciones condiciones{ansi(peticion.Cuenta), ansi(peticion.HastaCuenta), ansi(peticion.Nivel),
                                  ansi(peticion.titulo)};
    const auto anadir = [this](const Fila& fila) { anadirCuenta(fila); };
    if (peticion.vecina == PeticionPlan::Vecina::ninguna) {
        leer(origen, condiciones, anadir);
    } else {
        leerVecina(origen, condiciones, peticion.vecina == PeticionPlan::Vecina::siguiente, anadir);
    }
    return plan.contar();
}

std::int32_t LecturaPlan::LeerDatos(std::string_view cuenta, std::string_view titulo) {
    auto& maestros = sesion_.resultados.datos;
    maestros.vaciar();
    const TablasAbiertas abiertas(sesion_);
    // A part of the name is enough.
    const std::string nombre = titulo.empty() ? std::string() : "*" + ansi(titulo) + "*";
    leer({data::tabla::datos, datos::nombre}, {ansi(cuenta), {}, {}, nombre},
         [&](const Fila& fila) { maestros.anadir(datosDe(fila)); });
    return maestros.contar();
}

void LecturaPlan::anadirCuenta(const Fila& fila) {
    sesion_.resultados.plan.anadir(planDe(fila));
}

namespace {

bool coincide(const Fila& fila, int posicion, const std::string& patron) {
    return patron.empty() || data::coincideComodines(fila.ansi(posicion), patron);
}

}  // namespace

// By account, or by title where one is asked for; one account that is named is sought.
void LecturaPlan::leer(const Origen& origen, const Condiciones& condiciones, const AlPasar& alPasar) {
    const bool rango = !condiciones.hasta.empty();
    const bool unaSola = !rango && !condiciones.cuenta.empty() && !esPatron(condiciones.cuenta);
    const bool porTitulo = !unaSola && !rango && !condiciones.titulo.empty();
    RecorridoClave filas(sesion_.contexto.tablas(), origen.tabla, porTitulo ? claveTitulo : claveCuenta);
    if (unaSola || rango) {
        filas.desde(condiciones.cuenta);
    } else {
        filas.desdeExtremo();
    }
    for (; filas.fila() != nullptr; filas.avanzar()) {
        const Fila& fila = *filas.fila();
        const std::string_view cuenta = fila.ansi(planc::cuenta);
        if (rango && cuenta > condiciones.hasta) return;
        if (unaSola && cuenta != condiciones.cuenta) return;
        const bool suya = rango || coincide(fila, planc::cuenta, condiciones.cuenta);
        const bool nivel = condiciones.nivel.empty() || fila.ansi(planc::nivel) == condiciones.nivel;
        if (suya && nivel && coincide(fila, origen.posicionTitulo, condiciones.titulo)) alPasar(fila);
        if (unaSola) return;
    }
}

// The account behind, or before, `cuenta` that is of the level and the title asked for.
void LecturaPlan::leerVecina(const Origen& origen, const Condiciones& condiciones, bool adelante,
                             const AlPasar& alPasar) {
    using Sentido = RecorridoClave::Sentido;
    RecorridoClave filas(sesion_.contexto.tablas(), origen.tabla, claveCuenta,
                         adelante ? Sentido::adelante : Sentido::atras);
    for (filas.desde(condiciones.cuenta); filas.fila() != nullptr; filas.avanzar()) {
        const Fila& fila = *filas.fila();
        if (fila.ansi(planc::cuenta) == condiciones.cuenta) continue;
        if (!condiciones.nivel.empty() && fila.ansi(planc::nivel) != condiciones.nivel) continue;
        if (!coincide(fila, origen.posicionTitulo, condiciones.titulo)) continue;
        alPasar(fila);
        return;
    }
}

}  // namespace tarvoline::link
