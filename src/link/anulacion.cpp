#include "link/anulacion.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/texto.h"
#include "data/codec.h"
#include "data/utilidades.h"
#include "link/consultas.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace tabla = data::tabla;
namespace extra = posicion::extra;
using data::EstadoRegistro;

// The accounts that VAT quotas are posted to, by their beginning.
constexpr std::array<std::string_view, 2> cuentasDeCuota{"477", "472"};

bool esDeCuota(std::string_view cuenta) {
    return std::ranges::any_of(cuentasDeCuota, [&](auto raiz) { return core::empiezaPor(cuenta, raiz); });
}

// Held from the reading of a row to its end, so that of two who annul the same line one finds it gone.
class FilaTomada {
  public:
    FilaTomada(const data::CapaDatos& capa, data::Tablas& tablas, int tabla, std::int32_t registro)
        : capa_(capa), tablas_(tablas), tabla_(tabla), registro_(registro), tomada_(capa.gMultiusuario) {
        if (tomada_) tablas_.BloquearRegistro(tabla_, registro_);
    }
    ~FilaTomada() {
        if (!tomada_) return;
        pasandoErrores(capa_, "DesbloquearRegistro",
                       [this] { tablas_.DesbloquearRegistro(tabla_, registro_); });
    }
    FilaTomada(const FilaTomada&) = delete;
    FilaTomada& operator=(const FilaTomada&) = delete;

  private:
    const data::CapaDatos& capa_;
    data::Tablas& tablas_;
    int tabla_;
    std::int32_t registro_;
    bool tomada_;
};

}  // namespace

// Everything is collected before anything goes, since rows are found by what removal takes away.
std::int32_t Anulacion::AnularAsiento(std::string_view fecha, std::string_view numero) {
    const TablasAbiertas abiertas(sesion_);
    const FechaAsto asiento{std::string(fecha), std::string(numero)};
    const auto apuntes = filasCon(sesion_, tabla::extra, delAsiento(tabla::extra, asiento));
    std::vector<std::string> analiticas;
    for (const std::int32_t registro : apuntes) {
        if (const auto apunte = leerApunte(registro)) analiticas.push_back(apunte->numeroAnalitica);
    }
    const auto ivas = filasCon(sesion_, tabla::iva01, delAsiento(tabla::iva01, asiento));
    const auto efectos = filasCon(sesion_, tabla::efect, delAsiento(tabla::efect, asiento));
    // The lines alone know the numbers of their analytic lines: annulled in part and once more, all goes.
    for (const std::string& analitica : analiticas)
        quitarAnalitica(analitica);
    for (const std::int32_t registro : apuntes)
        quitarApunte(registro);
    quitarFilas(tabla::iva01, ivas);
    quitarFilas(tabla::efect, efectos);
    return motor::estado::bien;
}

void Anulacion::AnularApuntePorReferencia(std::string_view referencia, bool incluirIva,
                                          bool incluirAnalitica) {
    const TablasAbiertas abiertas(sesion_);
    std::vector<FechaAsto> asientos;
    double cuotas = 0;
    // Its lines lead to all else: keys that fail are told when everything has been taken.
    std::optional<ErrorEnlace> fallo;
    const auto quitando = [&](const auto& paso) {
        try {
            return paso();
        } catch (const ErrorEnlace& error) {
            if (!fallo) fallo = error;
            return true;  // the row is gone
        }
    };
    const auto condicion = iguales(columna::referencia, referencia, ancho::referencia);
    for (const std::int32_t registro : filasCon(sesion_, tabla::extra, {condicion})) {
        const auto apunte = leerApunte(registro);
        if (!apunte) continue;
        if (std::ranges::find(asientos, apunte->asiento) == asientos.end())
            asientos.push_back(apunte->asiento);
        // Before the line, which alone knows the number of its analytic lines.
        if (incluirAnalitica) quitando([&] { return quitarAnalitica(apunte->numeroAnalitica), true; });
        const bool quitado = quitando([&] { return quitarApunte(registro); });
        if (quitado && esDeCuota(apunte->cuenta)) cuotas += apunte->importe;
    }
    if (incluirIva) quitando([&] { return quitarIva(referencia, asientos, cuotas), true; });
    for (const FechaAsto& asiento : asientos) {
        for (const std::int32_t registro : filasCon(sesion_, tabla::efect, delAsiento(tabla::efect, asiento)))
            quitando([&] { return quitar(tabla::efect, registro); });
    }
    if (fallo) throw ErrorEnlace(*fallo);
}

void Anulacion::AnularApuntePorRegistro(std::int32_t registro, bool incluirAnalitica) {
    const TablasAbiertas abiertas(sesion_);
    const auto apunte = leerApunte(registro);
    if (!apunte) return;
    if (incluirAnalitica) quitarAnalitica(apunte->numeroAnalitica);
    quitarApunte(registro);
}

void Anulacion::AnularCuenta(std::string_view cuenta) {
    if (core::Recortar(cuenta).empty()) return;
    const TablasAbiertas abiertas(sesion_);
    for (const int una : {tabla::planc, tabla::datos}) {
        auto filas = filasCon(sesion_, una, {iguales(columna::cuenta, cuenta, ancho::cuenta)});
        filas.resize(std::min<std::size_t>(filas.size(), 1));  // an account is one row
        quitarFilas(una, filas);
    }
}

// The rows of the book of invoices with this reference; of those of the entries the ones whose quota is the
// sum that went from the quota accounts, where credits are negative.
void Anulacion::quitarIva(std::string_view referencia, const std::vector<FechaAsto>& asientos,
                          double cuotas) {
    const auto enLimpio = [this](double valor) {
        return std::fabs(data::Redondear(sesion_.contexto.datos, valor));
    };
    if (!core::Recortar(referencia).empty()) {
        const auto condicion = iguales(columna::referencia, referencia, ancho::referencia);
        quitarFilas(tabla::iva01, filasCon(sesion_, tabla::iva01, {condicion}));
    }
    data::Tablas& tablas = sesion_.contexto.tablas();
    const int campo = tablas.gCampoDePosicion(tabla::iva01, posicion::iva::importeCuota);
    for (const FechaAsto& asiento : asientos) {
        auto filas = filasCon(sesion_, tabla::iva01, delAsiento(tabla::iva01, asiento));
        std::erase_if(filas, [&](std::int32_t registro) {
            const double cuota = data::valorDeTexto(tablas.LeerCampo(tabla::iva01, registro, campo));
            return enLimpio(cuota) != enLimpio(cuotas);
        });
        quitarFilas(tabla::iva01, filas);
    }
}

std::optional<Anulacion::Apunte> Anulacion::leerApunte(std::int32_t registro) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    if (tablas.LeerRegistro(tabla::extra, registro) != EstadoRegistro::vivo) return std::nullopt;
    const auto texto = [&](int posicion) { return tablas.texto(tabla::extra, posicion); };
    return Apunte{{texto(extra::fecha), texto(extra::asiento)},
                  texto(extra::cuenta),
                  texto(extra::numeroAnalitica),
                  data::valorDeTexto(texto(extra::valorEnMoneda))};
}

bool Anulacion::quitarApunte(std::int32_t registro) {
    return quitar(tabla::extra, registro, [this] {
        data::Totales& totales = sesion_.contexto.totales();
        totales.gImporte =
            data::valorDeTexto(sesion_.contexto.tablas().texto(tabla::extra, extra::valorEnMoneda));
        totales.ActualizarTotalesCuenta(-1);
    });
}

// The analytic lines with this number; nothing for "".
void Anulacion::quitarAnalitica(const std::string& numero) {
    if (numero.empty()) return;
    const auto condicion = iguales(columna::analitica, numero, ancho::analitica);
    for (const std::int32_t registro : filasCon(sesion_, tabla::anali, {condicion})) {
        quitar(tabla::anali, registro, [this] {
            const std::string importe = sesion_.contexto.tablas().texto(tabla::anali, extra::importe);
            sesion_.contexto.totales().ActualizarTotalesAnalitica(-1, data::valorDeTexto(importe));
        });
    }
}

void Anulacion::quitarFilas(int tabla, const std::vector<std::int32_t>& registros) {
    for (const std::int32_t registro : registros)
        quitar(tabla, registro);
}

// Removes a row, `antes` being called when it stands in gCampos. False when it is gone already. Throws
// errorIndexados when its keys could not be taken out; the row is gone then.
bool Anulacion::quitar(int tabla, std::int32_t registro, const std::function<void()>& antes) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    const FilaTomada tomada(sesion_.contexto.datos, tablas, tabla, registro);
    if (tablas.LeerRegistro(tabla, registro) != EstadoRegistro::vivo) return false;
    if (antes) antes();
    tablas.BorrarRegistro(tabla, registro);
    exigirClaves(tablas);
    return true;
}

}  // namespace tarvoline::link
