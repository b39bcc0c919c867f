#include "link/remoto/filas_remotas.h"

#include <array>

#include "core/texto.h"
#include "link/campos_plan.h"
#include "link/remoto/lector_asientos.h"

namespace tarvoline::link::remoto {

namespace {

constexpr std::string_view marcada = "1";
constexpr std::array<const char*, periodosPlan> nombresPeriodo{
    "APERTURA", "ENERO",      "FEBRERO", "MARZO",     "ABRIL",     "MAYO",           "JUNIO", "JULIO",
    "AGOSTO",   "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE", "REGULARIZACION", "CIERRE"};

}  // namespace

PlanClass planDe(const TablaRespuesta& tabla, std::size_t fila) {
    PlanClass cuenta;
    cuenta.Cuenta = tabla.texto(fila, "CUENTA");
    cuenta.titulo = tabla.texto(fila, "TITULO");
    cuenta.Nivel = tabla.texto(fila, "NIVEL");
    for (std::size_t periodo = 0; periodo < periodosPlan; ++periodo) {
        const std::string nombre = nombresPeriodo[periodo];
        ponerPeriodo(cuenta, periodo, tabla.numero(fila, "DEBE " + nombre),
                     tabla.numero(fila, "HABER " + nombre));
    }
    cuenta.EsAnalitica = tabla.texto(fila, "ANALITICA") == marcada;
    cuenta.NIF = tabla.texto(fila, "NIF");
    cuenta.NOTAS = tabla.texto(fila, "NOTAS");
    cuenta.OMITIR347 = tabla.texto(fila, "OMITIR 347");
    cuenta.OMITIR415 = tabla.texto(fila, "OMITIR 415");
    cuenta.Clave347 = tabla.texto(fila, "CLAVE 347");
    cuenta.CriterioCaja = tabla.texto(fila, "CRITERIO CAJA");
    return cuenta;
}

DatosClass datosDe(const TablaRespuesta& tabla, std::size_t fila) {
    DatosClass uno;
    uno.Cuenta = tabla.texto(fila, "CUENTA");
    uno.titulo = tabla.texto(fila, "NOMBRE");
    uno.NIF = tabla.texto(fila, "NIF");
    uno.Direccion = tabla.texto(fila, "DIRECCION");
    uno.cp = tabla.texto(fila, "CP");
    uno.Municipio = tabla.texto(fila, "MUNICIPIO");
    uno.Provincia = tabla.texto(fila, "PROVINCIA");
    uno.CVP = tabla.texto(fila, "CLAVE 347");
    uno.Importe_347 = tabla.numero(fila, "IMPORTE 347");
    uno.Telefono = tabla.texto(fila, "TELEFONO");
    uno.Fax = tabla.texto(fila, "FAX");
    uno.Riesgo = tabla.numero(fila, "RIESGO");
    uno.TipoIva = tabla.texto(fila, "TIPO IVA");
    uno.NOTAS = tabla.texto(fila, "NOTAS");
    uno.Vencimientos = tabla.texto(fila, "VENCIMIENTOS");
    uno.DiasDePago = tabla.texto(fila, "DIAS DE PAGO");
    uno.email = tabla.texto(fila, "EMAIL");
    uno.PaginaWeb = tabla.texto(fila, "PAGINA WEB");
    uno.Pais = tabla.texto(fila, "PAIS");
    uno.EsCriterioCaja = tabla.texto(fila, "CRITERIO CAJA") == marcada;
    uno.OMITIR347 = tabla.texto(fila, "OMITIR 347");
    uno.OMITIR415 = tabla.texto(fila, "OMITIR 415");
    uno.Trimestre1_347 = tabla.numero(fila, "TRIMESTRE 1 347");
    uno.Trimestre2_347 = tabla.numero(fila, "TRIMESTRE 2 347");
    uno.Trimestre3_347 = tabla.numero(fila, "TRIMESTRE 3 347");
    uno.Trimestre4_347 = tabla.numero(fila, "TRIMESTRE 4 347");
    return uno;
}

CarteraClass carteraDe(const Sesion& sesion, const TablaRespuesta& tabla, std::size_t fila) {
    CarteraClass linea;
    linea.FechaVencimiento = fechaDeRespuesta(sesion, tabla.texto(fila, "FECHA VENCIMIENTO"));
    linea.Cuenta = tabla.texto(fila, "CUENTA");
    linea.NOTAS = tabla.texto(fila, "NOTAS");
    linea.cartera = tabla.texto(fila, "CARTERA/BANCO");
    linea.Importe = tabla.numero(fila, "IMPORTE");
    linea.Marca = tabla.texto(fila, "MARCA");
    linea.Fecha = fechaDeRespuesta(sesion, tabla.texto(fila, "FECHA CONTABLE"));
    linea.Asiento = tabla.texto(fila, "ASIENTO CONTABLE");
    return linea;
}

ExtractoClass lineaDe(const Sesion& sesion, const TablaRespuesta& tabla, std::size_t fila) {
    constexpr int debe = 1;
    ExtractoClass linea;
    linea.Cuenta = tabla.texto(fila, "CUENTA");
    linea.Fecha = fechaDeRespuesta(sesion, tabla.texto(fila, "FECHA"));
    linea.Asiento = tabla.texto(fila, "ASIENTO");
    linea.Descripción = tabla.texto(fila, "DESCRIPCION");
    linea.TIPO = core::ValEntero(tabla.texto(fila, "TIPO"));
    linea.Importe = tabla.numero(fila, "IMPORTE");
    linea.Diario = tabla.texto(fila, "DIARIO");
    linea.Punteo = static_cast<std::uint8_t>(core::ValEntero(tabla.texto(fila, "PUNTEO")));
    linea.Canal = tabla.texto(fila, "CANAL");
    linea.Referencia = tabla.texto(fila, "REFERENCIA");
    linea.Moneda = tabla.texto(fila, "MONEDA");
    linea.CambioMoneda = tabla.numero(fila, "CAMBIO MONEDA");
    linea.ValorEnMoneda = tabla.numero(fila, "VALOR EN MONEDA");
    linea.Usuario = tabla.texto(fila, "USUARIO");
    linea.FechaGrabacion = fechaDeRespuesta(sesion, tabla.texto(fila, "FECHA GRABACION"));
    (linea.TIPO == debe ? linea.Debe : linea.Haber) = linea.Importe;
    return linea;
}

}  // namespace tarvoline::link::remoto
