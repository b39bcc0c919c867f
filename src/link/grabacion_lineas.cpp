#include "link/grabacion_lineas.h"

#include "core/texto.h"
#include "data/utilidades.h"
#include "link/creacion_cuentas.h"
#include "link/fechas_enlace.h"
#include "link/moneda_sesion.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::extra;
namespace tabla = data::tabla;

constexpr std::string_view abono = "2";

struct ImporteConSigno {
    double importe;
    int tipo;
};

// 1 a debit, 2 a credit; 3 and 4 the same with the sign turned. Credits are kept negative.
ImporteConSigno conSigno(int tipo, double importe) {
    switch (tipo) {
        case 2:
            return {-importe, 2};
        case 3:
            return {-importe, 1};
        case 4:
            return {importe, 2};
        default:
            return {importe, tipo};
    }
}

std::string diarioValido(const std::string& diario) {
    const std::string letra = core::Mayusculas(diario);
    const bool bien =
        letra.size() == 1 && ((letra[0] >= '1' && letra[0] <= '9') || (letra[0] >= 'A' && letra[0] <= 'C'));
    return bien ? letra : "1";
}

// The amount in the three currencies, and the rates that made them.
Enlace::ValoresMoneda ponerImporte(AsientoEnCurso& asiento, int tabla, double importe) {
    const Enlace::ValoresMoneda valores = MonedaSesion(asiento.sesion).calcular(importe);
    const Contexto::Interior& contexto = asiento.sesion.contexto;
    asiento.poner(tabla, campo::importe, valores.ValorEnPesetas);
    asiento.poner(tabla, campo::cambioSegundaMoneda, contexto.datos.monedas.CambioMonedaBase);
    asiento.poner(tabla, campo::valorSegundaMoneda, valores.ValorEnEuros);
    asiento.poner(tabla, campo::cambioMoneda, contexto.CambioMoneda);
    asiento.poner(tabla, campo::valorEnMoneda, importe);
    return valores;
}

// `codigo` is the account that was made, which a pattern leaves open.
AsientoEnCurso::Cuenta cuentaOCrearla(AsientoEnCurso& asiento, std::string& codigo) {
    if (const auto cuenta = asiento.buscarCuenta(codigo)) return *cuenta;
    CuentaNueva nueva{codigo, "Cuenta Sin Titulo"};
    CreacionCuentas(asiento.sesion).crear(TablaPlan::cuentas, nueva);
    codigo = nueva.Cuenta;
    return asiento.buscarCuenta(codigo).value_or(AsientoEnCurso::Cuenta{});
}

void ponerApunte(AsientoEnCurso& asiento, const ApunteClass& linea, const ImporteConSigno& con) {
    const Sesion& sesion = asiento.sesion;
    const auto poner = [&](int posicion, std::string_view texto) {
        asiento.poner(tabla::extra, posicion, texto);
    };
    poner(campo::fecha, sesion.Fecha);
    poner(campo::asiento, sesion.Número);
    poner(campo::cuenta, linea.Cuenta);
    poner(campo::descripcion, linea.Descripción);
    poner(campo::tipo, std::to_string(con.tipo));
    poner(campo::punteo, std::to_string(linea.Punteo));
    poner(campo::moneda, sesion.gIndiceMoneda);
    poner(campo::canal, linea.Canal == "N" ? sesion.canalTexto() : linea.Canal);
    poner(campo::usuario, sesion.Usuario);
    poner(campo::fechaGrabacion, asiento.hoy);
    poner(campo::diario, diarioValido(linea.Diario));
    poner(campo::referencia, linea.Referencia);
}

void grabarNotas(AsientoEnCurso& asiento, std::int32_t registro, const ApunteClass& linea) {
    if (linea.NOTAS.empty()) return;
    asiento.cambiarRegistro(asiento.cursorExtra, tabla::extra, registro, [&](data::TablaCursor& cursor) {
        cursor.EscribirCampo(campo::notas, 0, linea.NOTAS);
    });
}

// The row of an analytic line begins as its journal line.
void copiarApunte(AsientoEnCurso& asiento, std::int32_t registro) {
    data::Tablas& tablas = asiento.tablas;
    tablas.LeerRegistro(tabla::extra, registro);
    const int campos = tablas.definicion(tabla::extra).gNumeroCampos;
    for (int i = 1; i <= campos; ++i)
        tablas.ponerCampo(tabla::anali, i, tablas.gCampos(tabla::extra, i));
}

CuentaAnalitica* lineaConSitio(AsientoEnCurso& asiento, std::string_view cuenta) {
    const std::string buscada = core::Recortar(cuenta);
    const data::CapaDatos& datos = asiento.sesion.contexto.datos;
    for (CuentaAnalitica& una : asiento.CuentasAnaliticas) {
        const bool falta = data::Redondear(datos, una.importe - una.repartido) != 0;
        if (una.cuenta == buscada && falta) return &una;
    }
    return nullptr;
}

}  // namespace

void grabarApunte(AsientoEnCurso& asiento, const ApunteClass& linea) {
    data::Totales& totales = asiento.sesion.contexto.totales();
    const ImporteConSigno con = conSigno(linea.TIPO, linea.Importe);
    ponerApunte(asiento, linea, con);
    const Enlace::ValoresMoneda valores = ponerImporte(asiento, tabla::extra, con.importe);
    std::string codigo = linea.Cuenta;
    const AsientoEnCurso::Cuenta cuenta = cuentaOCrearla(asiento, codigo);
    asiento.poner(tabla::extra, campo::cuenta, codigo);
    asiento.poner(tabla::extra, campo::titulo, cuenta.titulo);
    asiento.poner(tabla::extra, campo::numeroAnalitica,
                  cuenta.analitica ? totales.SiguienteContadorAnalitica() : std::string());

    const auto registro = asiento.anadir(tabla::extra);
    if (!registro) return;
    if (cuenta.analitica) {
        asiento.CuentasAnaliticas.push_back({core::Recortar(codigo), valores.ValorEnPesetas, 0, *registro});
    }
    // What comes beside the line must not keep it from the totals.
    asiento.paso("NOTAS", [&] { grabarNotas(asiento, *registro, linea); });
    asiento.paso("PDF", [&] { guardarPdf(asiento, linea); });
    totales.gImporte = con.importe;
    totales.ActualizarTotalesCuenta(1);
}

void grabarCartera(AsientoEnCurso& asiento, const CarteraClass& linea) {
    namespace efect = posicion::efect;
    const Sesion& sesion = asiento.sesion;
    const auto poner = [&](int posicion, std::string_view texto) {
        asiento.poner(tabla::efect, posicion, texto);
    };
    const auto cuenta = asiento.buscarCuenta(linea.Cuenta);
    poner(efect::fecha, sesion.Fecha);
    poner(efect::asiento, sesion.Número);
    poner(efect::vencimiento, fechaDeTexto(sesion, linea.FechaVencimiento));
    poner(efect::cuenta, linea.Cuenta);
    poner(efect::titulo, cuenta ? cuenta->titulo : std::string());
    poner(efect::cartera, linea.cartera);
    poner(efect::notas, linea.NOTAS);
    asiento.poner(tabla::efect, efect::importe, linea.Importe);
    asiento.anadir(tabla::efect);
}

void grabarAnalitica(AsientoEnCurso& asiento, const AnaliticaClass& linea) {
    CuentaAnalitica* deCuenta = lineaConSitio(asiento, linea.CuentaContable);
    if (deCuenta == nullptr) {
        asiento.aplazado = {error_enlace::analiticaSinApunte, linea.CuentaContable};
        return;
    }
    copiarApunte(asiento, deCuenta->registro);
    if (!core::Recortar(linea.Descripción).empty()) {
        asiento.poner(tabla::anali, campo::descripcion, linea.Descripción);
    }
    asiento.poner(tabla::anali, campo::cuentaAnalitica, linea.CuentaAnalitica);
    const std::string tipo = asiento.tablas.texto(tabla::anali, campo::tipo);
    const double importe = tipo == abono ? -linea.Importe : linea.Importe;
    const double enBase = ponerImporte(asiento, tabla::anali, importe).ValorEnPesetas;
    if (!asiento.anadir(tabla::anali)) return;
    asiento.sesion.contexto.totales().ActualizarTotalesAnalitica(1, enBase);
    deCuenta->repartido += enBase;
}

}  // namespace tarvoline::link
