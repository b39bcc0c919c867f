#include "link/campos_datos.h"

#include <array>

#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::datos;

constexpr std::array<CampoDatos, 21> campos{{
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
    {campo::importe347, &DatosNuevos::Importe_347, nullptr, &DatosGlobalClass::G18_Importe347_Long_12},
    {campo::riesgo, &DatosNuevos::Riesgo, nullptr, &DatosGlobalClass::G26_Riesgo_Long_12},
}};

}  // namespace

std::span<const CampoDatos> camposDeDatos() {
    return campos;
}

}  // namespace tarvoline::link
