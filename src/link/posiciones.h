// The columns of a company's tables, by position (docs/formats.md).
#pragma once

namespace tarvoline::link::posicion {

namespace planc {  // and Costo, PlanA
inline constexpr int cuenta = 1, titulo = 2, nivel = 3, notas = 4, clave347 = 5, analitica = 6, omitir347 = 8,
                     omitir415 = 9, criterioCaja = 10, debe = 12, haber = 13, nif = 14;
}  // namespace planc

namespace extra {  // and Anali, where cuentaAnalitica is used
inline constexpr int fecha = 1, cuenta = 2, asiento = 3, descripcion = 4, tipo = 5, importe = 6, punteo = 7,
                     diario = 8, cambioSegundaMoneda = 9, valorSegundaMoneda = 10, moneda = 11,
                     cambioMoneda = 12, valorEnMoneda = 13, canal = 14, usuario = 15, notas = 16, titulo = 17,
                     numeroAnalitica = 18, cuentaAnalitica = 19, fechaGrabacion = 20, referencia = 22;
}  // namespace extra

namespace datos {
inline constexpr int cuenta = 1, nombre = 2, nif = 3, direccion = 4, cp = 5, municipio = 6, provincia = 7,
                     clave347 = 8, importe347 = 9, telefono = 10, fax = 11, riesgo = 12, tipoIva = 13,
                     notas = 14, pais = 15, vencimientos = 16, diasDePago = 17, email = 18, paginaWeb = 19,
                     trimestre1 = 20, trimestre2 = 21, trimestre3 = 22, trimestre4 = 23, omitir347 = 24,
                     omitir415 = 25, criterioCaja = 26;
}  // namespace datos

namespace iva {
inline constexpr int cuenta = 1, titulo = 2, nif = 3, factura = 5, base = 6, tipo = 7, asiento = 8,
                     cuentaIva = 9, srtc = 10, fechaFactura = 11, orden = 12, cuota = 13, recargo = 14,
                     total = 15, prorrata = 16, importeCuota = 17, importeRecargo = 18, fecha = 21,
                     referencia = 22, cuotaProrrata = 23, serieFacturas = 24, claveOperacion = 25,
                     fechaCobro = 26, medioCobro = 27, descripcionMedioCobro = 28, retencion = 29,
                     regimenEspecial = 30, liquido = 31, siiCodigo = 33, siiDescripcion = 34, siiId = 35,
                     facturaExtendida = 36, facturaRectificativa = 37, periodo = 38;
}  // namespace iva

namespace efect {
inline constexpr int vencimiento = 1, cuenta = 2, titulo = 3, notas = 4, cartera = 5, importe = 6, marca = 7,
                     fecha = 8, asiento = 9;
}  // namespace efect

namespace presu {
inline constexpr int cuenta = 1, titulo = 2, nivel = 3, analitica = 6, antesDeEnero = 11;
}  // namespace presu

namespace guid {
inline constexpr int asiento = 1, fecha = 2, guid = 3;
}  // namespace guid

}  // namespace tarvoline::link::posicion
