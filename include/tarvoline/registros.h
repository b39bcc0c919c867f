// The records of the two registers beside the journal: fixed assets, and the persons that all companies
// share. The names of the fields tell their form: String_n a text of n characters, ZeroFilled_n digits with
// leading zeros, Long_n a number, ddmmyy_8 a date "dd/mm/yy".
#pragma once

#include <string>

namespace tarvoline::link {

// A fixed asset.
struct InmoClass {
    std::string I01_Codigo_String_10{};
    std::string I02_Descripcion_String_40{};
    std::string I03_Material_Inmaterial_String_1{};
    std::string I04_Tipo_Elemento_ZeroFilled_2{};
    std::string I05_Centro_Inventario_ZeroFilled_3{};
    std::string I06_Cuenta_Proveedor_String_10{};
    std::string I07_Elemento_Tabla_String_7{};
    std::string I08_Cuenta_Activo_String_10{};
    std::string I09_Cuenta_Amortizacion_String_10{};
    std::string I10_Cuenta_Gastos_String_10{};
    double I11_Valor_Inicial_Long_12 = 0;
    double I12_Importe_Amortizado_Long_12 = 0;
    double I13_Valor_Actual_Long_12 = 0;
    double I14_Valor_Residual_Long_12 = 0;
    std::string I15_Metodo_ZeroFilled_1{};
    double I16_Porcentaje_Long_5 = 0;
    std::string I17_Vida_Util_Anos_ZeroFilled_3{};
    std::string I18_Vida_Util_Meses_ZeroFilled_2{};
    std::string I19_Periodo_Amort_Meses_ZeroFilled_2{};
    std::string I20_Fecha_Compra_ddmmyy_8{};
    std::string I21_Fecha_Entrada_Funcion_ddmmyy_8{};
    std::string I22_Fecha_Ult_Amortizacion_ddmmyy_8{};
    std::string I23_Fecha_Fin_Amortizacion_ddmmyy_8{};
    std::string I24_Fecha_Baja_ddmmyy_8{};
    std::string I25_Notas_String_80{};
    double I26_Valor_Amort_Anterior_Long_12 = 0;
    std::string I27_Fecha_1_Revision_ddmmyy_8{};
    std::string I28_Fecha_2_Revision_ddmmyy_8{};
    double I29_Revision_1_Porcentaje_Long_9 = 0;
    double I30_Revision_2_Porcentaje_Long_9 = 0;
    std::string I31_Centro_Costos_String_10{};
    std::string I32_Canal_ZeroFilled_3{};
    std::string I33_Estado_String_1{};
    std::string I34_Restriciones_String_2{};
    double I35_Valor_Mercado_Long_12 = 0;
    double I36_Valor_Catastral_Long_12 = 0;
    std::string I37_Descripcion2_String_99{};
    std::string I38_Proveedor_String_75{};
    std::string I39_Supervisor_String_3{};
    std::string I40_Codigo_Talleres_String_15{};
    std::string I41_Donado_String_1{};
    std::string I42_Ubicacion_String_3{};
    std::string I43_Subnivel_String_3{};
    std::string I44_Flota_String_3{};
    std::string I45_Instalacion_String_3{};
    std::string I46_Fecha_Enajenacion_ddmmyy_8{};
    double I47_Precio_Long_12 = 0;
    std::string I48_Comprador_String_50{};
    double I49_Unidades_Long_12 = 0;
    std::string I50_ImagenPdf{};
};

// A person or firm.
struct DatosGlobalClass {
    std::string G01_NIF_String_18{};
    std::string G02_Nombre_String_50{};
    std::string G03_ApellidoRazonSocial_String_90{};
    std::string G04_TipoVia_String_5{};
    std::string G05_Direccion_String_99{};
    std::string G06_Numero_String_5{};
    std::string G07_Escalera_String_3{};
    std::string G08_Piso_String_3{};
    std::string G09_Puerta_String_3{};
    std::string G10_Administracion_String_6{};
    std::string G11_CodigoINE_String_6{};
    std::string G12_CodAdmLocal_String_6{};
    std::string G13_CP_String_8{};
    std::string G14_Municipio_String_30{};
    std::string G15_Provincia_String_22{};
    std::string G16_Pais_String_2{};
    std::string G17_Claves347_String_1{};
    double G18_Importe347_Long_12 = 0;
    std::string G19_Telefono1_String_15{};
    std::string G20_Telefono2_String_15{};
    std::string G21_Fax_String_15{};
    std::string G22_Email_String_99{};
    std::string G23_Pagina_Web_String_99{};
    std::string G24_CNAE_String_4{};
    std::string G25_Epigrafe_String_5{};
    double G26_Riesgo_Long_12 = 0;
    std::string G27_Tipo_Iva_String_2{};
    std::string G28_Vtos_30_60_90_String_15{};
    std::string G29_Dias_De_Pago_String_15{};
    std::string G30_Notas_String_4{};
    std::string G31_CriterioDeCaja_String_1{};
    std::string G32_SocDominante_String_40{};
    std::string G33_NifSocDominante_String_18{};
    std::string G34_SocDomGrupo_String_40{};
    std::string G35_NifSocDomGrupo_String_18{};
    std::string G36_Hombre_Fijo_ZeroFilled_7{};
    std::string G37_Mujer_Fijo_ZeroFilled_7{};
    std::string G38_Hombre_No_Fijo_ZeroFilled_7{};
    std::string G39_Mujer_No_Fijo_ZeroFilled_7{};
    std::string G40_Registro_Mercantil_String_25{};
    std::string G41_Tomo_String_9{};
    std::string G42_Folio_String_9{};
    std::string G43_Hoja_String_6{};
    std::string G44_FechaConst_Dd_Mm_Yy_8{};
    std::string G45_MunicipioConst_String_30{};
    double G46_CapitalSocial_Long_12 = 0;
    double G47_CapitalDesembolsado_Long_12 = 0;
    double G48_AccionParticipacion_Long_11 = 0;
    double G49_ValorAccionParticipa_Long_12 = 0;
    std::string G50_ObjetoSocial_String_99{};
    std::string G51_SA_SL_Otros_String_15{};
    std::string G52_EurosMilesMillones_String_1{};
    std::string G53_PYME_Abrev_Normal_Mixto_String_1{};
    std::string G54_MicroEmpresa_String_1{};
    std::string G55_AutoCartera_String_1{};
    double G56_ImportePrestamos_Long_12 = 0;
    double G57_ImporteProvisiones_Long_12 = 0;
    double G58_ImporteSalarios_Long_12 = 0;
    std::string G59_Licencia_ZeroFilled_6{};
    std::string G60_Tipo_Numero_String_5{};
    std::string G61_Calificador_String_5{};
    std::string G62_Bloque_String_5{};
    std::string G63_Portal_String_5{};
    std::string G64_Complemento_String_40{};
    std::string G65_Localidad_String_30{};
    bool G66_Actualizar = false;  // no field of the row: an existing row may be changed
};

}  // namespace tarvoline::link
