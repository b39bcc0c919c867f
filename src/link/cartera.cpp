#include "link/cartera.h"

#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::efect;
using data::Condicion;
using data::Operador;

std::vector<Condicion> condicionesDe(const Sesion& sesion, const FiltroCartera& filtro) {
    constexpr const char* vencimiento = "FECHA VENCIMIENTO";
    std::vector<Condicion> condiciones;
    if (!filtro.cartera.empty())
        condiciones.push_back(iguales("CARTERA/BANCO", filtro.cartera, ancho::cartera));
    if (!filtro.DesdeFechaVencimiento.empty())
        condiciones.push_back(
            {vencimiento, Operador::mayorIgual, fechaDeTexto(sesion, filtro.DesdeFechaVencimiento)});
    if (!filtro.HastaFechaVencimiento.empty())
        condiciones.push_back(
            {vencimiento, Operador::menorIgual, fechaDeTexto(sesion, filtro.HastaFechaVencimiento)});
    if (!filtro.Cuenta.empty()) condiciones.push_back(iguales(columna::cuenta, filtro.Cuenta, ancho::cuenta));
    if (!filtro.Asiento.empty())
        condiciones.push_back(iguales("ASIENTO CONTABLE", filtro.Asiento, ancho::asiento));
    return condiciones;
}

}  // namespace

CarteraLeida Cartera::LeerCartera(const FiltroCartera& filtro) {
    CarteraLeida lineas;
    recorrer(filtro, [&](data::TablaCursor& cursor) {
        auto linea = std::make_shared<CarteraClass>();
        linea->FechaVencimiento = fechaCorta(sesion_, cursor.LeerCampo(campo::vencimiento));
        linea->Cuenta = cursor.LeerCampo(campo::cuenta);
        linea->NOTAS = cursor.LeerCampo(campo::notas);
        linea->cartera = cursor.LeerCampo(campo::cartera);
        linea->Importe = cursor.LeerNumero(campo::importe);
        linea->Marca = cursor.LeerCampo(campo::marca);
        linea->Fecha = fechaCorta(sesion_, cursor.LeerCampo(campo::fecha));
        linea->Asiento = cursor.LeerCampo(campo::asiento);
        lineas.push_back(std::move(linea));
    });
    return lineas;
}

void Cartera::MarcarCartera(std::string_view marca, const FiltroCartera& filtro) {
    recorrer(filtro, [&](data::TablaCursor& cursor) {
        try {
            cursor.Editar();
            cursor.EscribirCampo(campo::marca, 0, marca);
            cursor.Actualizar();
        } catch (const data::ErrorCursor&) {
            return;  // somebody has removed it
        }
        exigirClaves(sesion_.contexto.tablas());
    });
}

void Cartera::AnularCartera(const FiltroCartera& filtro) {
    recorrer(filtro, [&](data::TablaCursor& cursor) {
        cursor.Borrar();
        exigirClaves(sesion_.contexto.tablas());
    });
}

void Cartera::recorrer(const FiltroCartera& filtro, const std::function<void(data::TablaCursor&)>& alPasar) {
    data::TablaCursor cursor(sesion_.contexto.datos, sesion_.contexto.tablas());
    abrirCursor(sesion_, cursor, data::tabla::efect);
    cursor.Filtrar(condicionesDe(sesion_, filtro));
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente())
        alPasar(cursor);
}

}  // namespace tarvoline::link
