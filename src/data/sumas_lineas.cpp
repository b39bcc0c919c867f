#include "data/sumas_lineas.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/texto.h"
#include "data/bytes.h"
#include "data/cuadre_asientos.h"

namespace tarvoline::data {

namespace {

const CampoTabla& campoEn(const DefinicionTabla& definicion, int posicion) {
    const int campo = definicion.campoDePosicion(posicion);
    if (campo == 0)
        throw std::out_of_range("los apuntes no tienen ningún campo en la posición " +
                                std::to_string(posicion));
    return definicion.campo(campo);
}

std::string_view bytesDe(const CampoTabla& campo, std::string_view registro) {
    return registro.substr(static_cast<std::size_t>(campo.desplazamiento),
                           static_cast<std::size_t>(campo.bytes));
}

// As a field's text reads: cut at a zero byte, without the blanks at its end.
std::string_view textoDe(const CampoTabla& campo, std::string_view registro) {
    auto texto = bytesDe(campo, registro);
    texto = texto.substr(0, texto.find('\0'));
    return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

// The fields of a line that are looked at.
struct CamposLinea {
    const CampoTabla &fecha, &asiento, &cuenta, &tipo, &diario, &importe, &analitica;

    CamposLinea(const DefinicionTabla& definicion, int posicionCuenta, int posicionImporte)
        : fecha(campoEn(definicion, posicion_linea::fecha)),
          asiento(campoEn(definicion, posicion_linea::asiento)),
          cuenta(campoEn(definicion, posicionCuenta)),
          tipo(campoEn(definicion, posicion_linea::tipo)),
          diario(campoEn(definicion, posicion_linea::diario)),
          importe(campoEn(definicion, posicionImporte)),
          analitica(campoEn(definicion, posicion_linea::numeroAnalitica)) {}
};

}  // namespace

void SumaExacta::anadir(double valor) {
    const double suma = suma_ + valor;
    resto_ += std::fabs(suma_) >= std::fabs(valor) ? (suma_ - suma) + valor : (valor - suma) + suma_;
    suma_ = suma;
}

void SumaExacta::anadir(const SumaExacta& otra) {
    anadir(otra.suma_);
    anadir(otra.resto_);
}

void SumasLineas::sumar(TablaSuelta& lineas, int posicionCuenta, int posicionImporte,
                        const AlFallar& alFallar, const Progreso& progreso, CuadreAsientos* cuadre) {
    const CamposLinea campos(lineas.definicion(), posicionCuenta, posicionImporte);
    const std::int64_t lugares = lineas.lugares();
    lineas.recorrer(1, lugares, [&](const RegistroLeido& linea) {
        if (progreso) progreso(static_cast<std::uint64_t>(linea.numero), static_cast<std::uint64_t>(lugares));
        if (linea.estado != EstadoRegistro::vivo || linea.bytes.empty()) return;
        const auto numero = core::ValEntero(textoDe(campos.analitica, linea.bytes));
        mayorAnalitica_ = std::max<std::int64_t>(mayorAnalitica_, numero);
        const auto columna =
            columnaDeLinea(textoDe(campos.tipo, linea.bytes), textoDe(campos.diario, linea.bytes),
                           textoDe(campos.fecha, linea.bytes));
        if (!columna) return;
        const auto cuenta = textoDe(campos.cuenta, linea.bytes);
        const auto importe = leerNumero<double>(platform::comoBytes(bytesDe(campos.importe, linea.bytes)));
        if (std::isfinite(importe)) {
            anadir(cuenta, *columna, importe);
            if (cuadre != nullptr) {
                cuadre->anadir(linea.numero, textoDe(campos.fecha, linea.bytes),
                               textoDe(campos.asiento, linea.bytes), importe);
            }
        } else {
            alFallar(linea.numero, cuenta);
        }
    });
}

void SumasLineas::anadir(std::string_view cuenta, const ColumnaPeriodo& columna, double importe) {
    (columna.haber ? haber_ : debe_).anadir(importe);
    if (cuenta.empty()) return;
    cuenta_.assign(cuenta);
    cuentas_[cuenta_][lugarDeColumna(columna)].anadir(importe);
}

SaldosPorCuenta SumasLineas::conMayores(
    const std::array<int, 9>& niveles,
    const std::function<bool(const std::string& cuenta)>& cuentaVale) const {
    SaldosPorCuenta todos;
    const auto sumarEn = [&](const std::string& codigo, const SaldosCuenta& saldos) {
        SaldosCuenta& suyos = todos[codigo];
        for (std::size_t i = 0; i < suyos.size(); ++i)
            suyos[i].anadir(saldos[i]);
    };
    for (const auto& [cuenta, saldos] : cuentas_) {
        if (!cuentaVale(cuenta)) continue;
        sumarEn(cuenta, saldos);
        for (const Mayor& mayor : mayoresDe(cuenta, niveles))
            sumarEn(mayor.codigo, saldos);
    }
    return todos;
}

}  // namespace tarvoline::data
