#include "link/linea_extracto.h"

#include "core/texto.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

ExtractoClass lineaExtracto(const Sesion& sesion, const Fila& fila, std::int32_t registro,
                            int posicionCuenta) {
    namespace extra = posicion::extra;
    constexpr int debe = 1;
    ExtractoClass linea;
    linea.Cuenta = fila.texto(posicionCuenta);
    linea.Fecha = fechaCorta(sesion, fila.bytes(extra::fecha));
    linea.Asiento = fila.texto(extra::asiento);
    linea.Descripción = fila.texto(extra::descripcion);
    linea.TIPO = core::ValEntero(fila.ansi(extra::tipo));
    linea.Importe = fila.numero(extra::importe);
    linea.Diario = fila.texto(extra::diario);
    linea.Punteo = static_cast<std::uint8_t>(core::ValEntero(fila.ansi(extra::punteo)));
    linea.Canal = fila.texto(extra::canal);
    linea.Referencia = fila.texto(extra::referencia);
    linea.Moneda = fila.texto(extra::moneda);
    linea.CambioMoneda = fila.numero(extra::cambioMoneda);
    linea.ValorEnMoneda = fila.numero(extra::valorEnMoneda);
    linea.Usuario = fila.texto(extra::usuario);
    linea.FechaGrabacion = fechaCorta(sesion, fila.bytes(extra::fechaGrabacion));
    linea.REGISTRO = registro;
    (linea.TIPO == debe ? linea.Debe : linea.Haber) = linea.Importe;
    return linea;
}

}  // namespace tarvoline::link
