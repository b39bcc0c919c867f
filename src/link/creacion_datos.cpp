#include "link/creacion_datos.h"

#include <array>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "link/consultas.h"
#include "link/importe_texto.h"
#include "link/posiciones.h"
#include "link/registro_global.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::datos;

constexpr std::string_view sinCambio = "-1";

struct CampoDatos {
    int posicion;
    std::string DatosNuevos::*valor;
    std::string DatosGlobalClass::*global = nullptr;  // that holds the same of a person; null: none does
};
constexpr std::array<CampoDatos, 19> camposTexto{{
    {campo::nombre, &DatosNuevos::titulo, &DatosGlobalClass::G02_Nombre_String_50},
    {campo::nif, &DatosNuevos::NIF, &DatosGlobalClass::G01_NIF_String_18},
    {campo::direccion, &DatosNuevos::Direccion, &DatosGlobalClass::G05_Direccion_String_99},
    {campo::cp, &DatosNuevos::cp, &DatosGlobalClass::G13_CP_String_8},
    {campo::municipio, &DatosNuevos::Municipio, &DatosGlobalClass::G14_Municipio_String_30},
    {campo::provincia, &DatosNuevos::Provincia, &DatosGlobalClass::G15_Provincia_String_22},
    {campo::clave347, &DatosNuevos::CVP, &DatosGlobalClass::G17_Claves347_String_1},
    {campo::telefono, &DatosNuevos::Telefono, &DatosGlobalClass::G19_Telefono1_String_15},
    {campo::fax, &DatosNuevos::Fax, &DatosGlobalClass::G21_Fax_String_15},
    {campo::tipoIva, &DatosNuevos::TipoIva, &DatosGlobalClass::G27_Tipo_Iva_String_2},
    {campo::notas, &DatosNuevos::NOTAS, &DatosGlobalClass::G30_Notas_String_4},
    {campo::pais, &DatosNuevos::Pais, &DatosGlobalClass::G16_Pais_String_2},
    {campo::vencimientos, &DatosNuevos::Vencimientos, &DatosGlobalClass::G28_Vtos_30_60_90_String_15},
    {campo::diasDePago, &DatosNuevos::DiasDePago, &DatosGlobalClass::G29_Dias_De_Pago_String_15},
    {campo::email, &DatosNuevos::email, &DatosGlobalClass::G22_Email_String_99},
    {campo::paginaWeb, &DatosNuevos::PaginaWeb, &DatosGlobalClass::G23_Pagina_Web_String_99},
    {campo::criterioCaja, &DatosNuevos::CriterioCaja, &DatosGlobalClass::G31_CriterioDeCaja_String_1},
    {campo::omitir347, &DatosNuevos::OMITIR347},
    {campo::omitir415, &DatosNuevos::OMITIR415},
}};

struct ImporteDatos {
    int posicion;
    std::string DatosNuevos::*valor;
    double DatosGlobalClass::*global;
};
constexpr std::array<ImporteDatos, 2> camposImporte{{
    {campo::importe347, &DatosNuevos::Importe_347, &DatosGlobalClass::G18_Importe347_Long_12},
    {campo::riesgo, &DatosNuevos::Riesgo, &DatosGlobalClass::G26_Riesgo_Long_12},
}};

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
        for (const CampoDatos& uno : camposTexto) {
            const std::string& valor = datos.*uno.valor;
            if (valor != sinCambio) cursor.EscribirCampo(uno.posicion, 0, valor);
        }
        for (const ImporteDatos& uno : camposImporte) {
            const std::string& valor = datos.*uno.valor;
            if (valor != sinCambio) cursor.EscribirCampo(uno.posicion, 0, importeDeTexto(valor));
        }
        cursor.Actualizar();
    });
    exigirClaves(tablas);
}

// What is left alone here stays in the global data, too.
void CreacionDatos::grabarGlobales(const DatosNuevos& datos) {
    RegistroGlobal(sesion_).guardar(datos.NIF, datos.Actualizar, [&](DatosGlobalClass& persona) {
        for (const CampoDatos& uno : camposTexto) {
            const std::string& valor = datos.*uno.valor;
            if (uno.global != nullptr && valor != sinCambio) persona.*uno.global = valor;
        }
        for (const ImporteDatos& uno : camposImporte) {
            const std::string& valor = datos.*uno.valor;
            if (valor != sinCambio) persona.*uno.global = importeDeTexto(valor);
        }
    });
}

}  // namespace tarvoline::link
