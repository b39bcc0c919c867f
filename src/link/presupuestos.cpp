#include "link/presupuestos.h"

#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "link/consultas.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::presu;

constexpr std::string_view sinCambio = "-1";
constexpr int meses = 12;

void situar(data::TablaCursor& cursor, std::string_view cuenta) {
    cursor.Filtrar({iguales(columna::cuenta, cuenta, ancho::cuenta)});
    cursor.Primero();
}

void empezar(data::TablaCursor& cursor, std::string_view cuenta, bool analitica) {
    cursor.Nuevo();
    cursor.EscribirCampo(campo::cuenta, 0, cuenta);
    cursor.EscribirCampo(campo::nivel, 0, "0");
    cursor.EscribirCampo(campo::analitica, 0, analitica ? "1" : "0");
    for (int mes = 1; mes <= meses; ++mes)
        cursor.EscribirCampo(campo::antesDeEnero + mes, 0, 0.0);
}

}  // namespace

void Presupuestos::CrearPresupuesto(std::string_view cuenta, std::string_view titulo, std::string_view nivel,
                                    bool analitica) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    data::TablaCursor cursor(sesion_.contexto.datos, tablas);
    abrirCursor(sesion_, cursor, data::tabla::presu);
    data::conTurnoEnTabla(sesion_.contexto.datos, data::rutaDeTabla(sesion_.contexto.datos, "Presu"), [&] {
        situar(cursor, cuenta);
        if (cursor.FinDeTabla()) {
            empezar(cursor, cuenta, analitica);
        } else {
            cursor.Editar();
        }
        if (titulo != sinCambio) cursor.EscribirCampo(campo::titulo, 0, titulo);
        if (nivel != sinCambio) cursor.EscribirCampo(campo::nivel, 0, nivel);
        cursor.Actualizar();
    });
    exigirClaves(tablas);
}

void Presupuestos::ModificarPresupuesto(std::string_view cuenta, int mes, double importe) {
    if (mes < 1 || mes > meses) return;
    data::Tablas& tablas = sesion_.contexto.tablas();
    data::TablaCursor cursor(sesion_.contexto.datos, tablas);
    abrirCursor(sesion_, cursor, data::tabla::presu);
    situar(cursor, cuenta);
    if (cursor.FinDeTabla()) return;
    cursor.Editar();
    cursor.EscribirCampo(campo::antesDeEnero + mes, 0, importe);
    cursor.Actualizar();
    exigirClaves(tablas);
}

}  // namespace tarvoline::link
