#include "link/creacion_datos.h"

#include <algorithm>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "link/campos_datos.h"
#include "link/campos_registros.h"
#include "link/consultas.h"
#include "link/importe_texto.h"
#include "link/posiciones.h"
#include "link/registro_global.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::datos;

constexpr std::string_view sinCambio = "-1";

}  // namespace

void CreacionDatos::CrearDatos(const DatosNuevos& datos) {
    grabarFila(datos);
    if (datos.NIF != sinCambio && !core::Recortar(datos.NIF).empty()) grabarGlobales(datos);
}

void CreacionDatos::grabarFila(const DatosNuevos& datos) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    data::TablaCursor cursor(sesion_.contexto.datos, tablas);
    abrirCursor(sesion_, cursor, data::tabla::datos);
    // Programs that miss the same account at the same time make one row.
    data::conTurnoEnTabla(sesion_.contexto.datos, data::rutaDeTabla(sesion_.contexto.datos, "DATOS"), [&] {
        cursor.Filtrar({iguales(columna::cuenta, datos.Cuenta, ancho::cuenta)});
        cursor.Primero();
        if (cursor.FinDeTabla()) {
            cursor.Nuevo();
            cursor.EscribirCampo(campo::cuenta, 0, datos.Cuenta);
        } else {
            cursor.Editar();
        }
        for (const CampoDatos& uno : camposDeDatos()) {
            const std::string& valor = datos.*uno.valor;
            if (valor == sinCambio) continue;
            if (uno.esImporte()) {
                cursor.EscribirCampo(uno.posicion, 0, importeDeTexto(valor));
            } else {
                cursor.EscribirCampo(uno.posicion, 0, valor);
            }
        }
        cursor.Actualizar();
    });
    exigirClaves(tablas);
}

// What is left alone here stays in the global data, too.
void CreacionDatos::grabarGlobales(const DatosNuevos& datos) {
    const auto lugar = [](auto igual) {
        return std::ranges::find_if(camposDe<DatosGlobalClass>(), igual)->posicion;
    };
    RegistroGlobal(sesion_).guardar(datos.NIF, datos.Actualizar, [&](data::TablaCursor& cursor) {
        for (const CampoDatos& uno : camposDeDatos()) {
            const std::string& valor = datos.*uno.valor;
            if (valor == sinCambio) continue;
            if (uno.esImporte()) {
                cursor.EscribirCampo(lugar([&](const auto& campo) { return campo.numero == uno.importe; }), 0,
                                     importeDeTexto(valor));
            } else if (uno.global != nullptr) {
                cursor.EscribirCampo(lugar([&](const auto& campo) { return campo.texto == uno.global; }), 0,
                                     valor);
            }
        }
    });
}

}  // namespace tarvoline::link
