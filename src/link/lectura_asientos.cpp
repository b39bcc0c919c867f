#include "link/lectura_asientos.h"

#include "core/texto.h"
#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/lector_registros.h"
#include "link/lectura_iva.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace extra = posicion::extra;
namespace efect = posicion::efect;
using data::TablaCursor;

constexpr std::string_view haber = "2";

// The amount that a caller would give to have this very line stored: credits turn their sign on the way to
// the books, and what was given in another currency is kept beside its worth.
double importeDado(TablaCursor& linea) {
    const double cambio = linea.LeerNumero(extra::cambioMoneda);
    const bool enMonedaBase = cambio == 0 || cambio == 1;
    const double importe = linea.LeerNumero(enMonedaBase ? extra::importe : extra::valorEnMoneda);
    return linea.LeerCampo(extra::tipo) == haber ? 0 - importe : importe;
}

ApunteClass apunteDe(TablaCursor& linea) {
    ApunteClass apunte;
    apunte.Cuenta = linea.LeerCampo(extra::cuenta);
    apunte.Descripción = linea.LeerCampo(extra::descripcion);
    apunte.TIPO = core::ValEntero(linea.LeerCampo(extra::tipo));
    apunte.Importe = importeDado(linea);
    apunte.Diario = linea.LeerCampo(extra::diario);
    apunte.Punteo = static_cast<std::uint8_t>(core::ValEntero(linea.LeerCampo(extra::punteo)));
    apunte.Canal = linea.LeerCampo(extra::canal);
    apunte.Referencia = linea.LeerCampo(extra::referencia);
    apunte.NOTAS = linea.LeerCampo(extra::notas);
    return apunte;
}

AnaliticaClass analiticaDe(TablaCursor& linea) {
    return {linea.LeerCampo(extra::cuenta), linea.LeerCampo(extra::cuentaAnalitica),
            linea.LeerCampo(extra::descripcion), importeDado(linea)};
}

CarteraClass carteraDe(const Sesion& sesion, TablaCursor& efecto) {
    CarteraClass linea;
    linea.FechaVencimiento = fechaCorta(sesion, efecto.LeerCampo(efect::vencimiento));
    linea.Cuenta = efecto.LeerCampo(efect::cuenta);
    linea.cartera = efecto.LeerCampo(efect::cartera);
    linea.NOTAS = efecto.LeerCampo(efect::notas);
    linea.Importe = efecto.LeerNumero(efect::importe);
    linea.Marca = efecto.LeerCampo(efect::marca);
    linea.Fecha = fechaCorta(sesion, efecto.LeerCampo(efect::fecha));
    linea.Asiento = efecto.LeerCampo(efect::asiento);
    return linea;
}

}  // namespace

void LecturaAsientos::LeerAsiento() {
    leer(Falta::cualquiera);
}

void LecturaAsientos::leer(Falta falta) {
    const auto leerFilas = [&](int tabla, const std::function<void(TablaCursor & fila)>& alLeer) {
        this->leerFilas(tabla, falta, alLeer);
    };
    Pendientes& pendientes = sesion_.pendientes;
    leerFilas(data::tabla::extra, [&](TablaCursor& fila) { pendientes.anadir(apunteDe(fila)); });
    leerFilas(data::tabla::iva01, [&](TablaCursor& fila) { pendientes.anadir(ivaDe(sesion_, fila)); });
    leerFilas(data::tabla::efect, [&](TablaCursor& fila) { pendientes.anadir(carteraDe(sesion_, fila)); });
    leerFilas(data::tabla::anali, [&](TablaCursor& fila) { pendientes.anadir(analiticaDe(fila)); });
}

void LecturaAsientos::leerFilas(int tabla, Falta falta,
                                const std::function<void(TablaCursor& fila)>& alLeer) {
    auto condiciones = delAsiento(tabla, {sesion_.Fecha, sesion_.Número});
    if (falta == Falta::cualquiera) {
        std::erase_if(condiciones, [](const data::Condicion& una) { return una.valor.empty(); });
    }
    TablaCursor filas(sesion_.contexto.datos, sesion_.contexto.tablas());
    abrirCursor(sesion_, filas, tabla);
    filas.Filtrar(condiciones);
    for (filas.Primero(); !filas.FinDeTabla(); filas.Siguiente())
        alLeer(filas);
}

void LecturaAsientos::leerVecino(Vecino cual) {
    const auto hallado = vecino(cual);
    sesion_.LimpiarPendientes();
    if (!hallado) return;
    sesion_.Fecha = hallado->Fecha;
    sesion_.Número = hallado->Asiento;
    leer(Falta::ninguna);
}

std::optional<FechaAsto> LecturaAsientos::vecino(Vecino cual) {
    constexpr int claveAsiento = 1;
    using Sentido = RecorridoClave::Sentido;
    const bool adelante = cual == Vecino::proximo || cual == Vecino::primero;
    const TablasAbiertas abiertas(sesion_);
    RecorridoClave lineas(sesion_.contexto.tablas(), data::tabla::extra, claveAsiento,
                          adelante ? Sentido::adelante : Sentido::atras);
    const auto asientoDe = [](const Fila& fila) {
        return FechaAsto{fila.texto(extra::fecha), fila.texto(extra::asiento)};
    };
    if (cual == Vecino::primero || cual == Vecino::ultimo) {
        lineas.desdeExtremo();
    } else {
        std::string fecha = core::aAnsi(sesion_.Fecha).bytes();
        std::string numero = core::aAnsi(sesion_.Número).bytes();
        fecha.resize(ancho::fecha, ' ');
        numero.resize(ancho::asiento, ' ');
        lineas.desde(fecha + numero);
        while (lineas.fila() && lineas.fila()->bytes(extra::fecha) == fecha &&
               lineas.fila()->bytes(extra::asiento) == numero)
            lineas.avanzar();
    }
    if (!lineas.fila()) return std::nullopt;
    return asientoDe(*lineas.fila());
}

}  // namespace tarvoline::link
