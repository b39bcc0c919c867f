#include "python/modulo.h"

#include "tarvoline/registros.h"

namespace py = pybind11;

namespace tarvoline::python {

namespace {

void anadirInmovilizado(py::module_& modulo) {
    py::class_<link::InmoClass, std::shared_ptr<link::InmoClass>>(modulo, "InmoClass", "A fixed asset.")
        .def(py::init<>())
        .def_readwrite("I01_Codigo_String_10", &link::InmoClass::I01_Codigo_String_10)
        .def_readwrite("I02_Descripcion_String_40", &link::InmoClass::I02_Descripcion_String_40)
        .def_readwrite("I03_Material_Inmaterial_String_1", &link::InmoClass::I03_Material_Inmaterial_String_1)
        .def_readwrite("I04_Tipo_Elemento_ZeroFilled_2", &link::InmoClass::I04_Tipo_Elemento_ZeroFilled_2)
        .def_readwrite("I05_Centro_Inventario_ZeroFilled_3",
                       &link::InmoClass::I05_Centro_Inventario_ZeroFilled_3)
        .def_readwrite("I06_Cuenta_Proveedor_String_10", &link::InmoClass::I06_Cuenta_Proveedor_String_10)
        .def_readwrite("I07_Elemento_Tabla_String_7", &link::InmoClass::I07_Elemento_Tabla_String_7)
        .def_readwrite("I08_Cuenta_Activo_String_10", &link::InmoClass::I08_Cuenta_Activo_String_10)
        .def_readwrite("I09_Cuenta_Amortizacion_String_10",
                       &link::InmoClass::I09_Cuenta_Amortizacion_String_10)
        .def_readwrite("I10_Cuenta_Gastos_String_10", &link::InmoClass::I10_Cuenta_Gastos_String_10)
        .def_readwrite("I11_Valor_Inicial_Long_12", &link::InmoClass::I11_Valor_Inicial_Long_12)
        .def_readwrite("I12_Importe_Amortizado_Long_12", &link::InmoClass::I12_Importe_Amortizado_Long_12)
        .def_readwrite("I13_Valor_Actual_Long_12", &link::InmoClass::I13_Valor_Actual_Long_12)
        .def_readwrite("I14_Valor_Residual_Long_12", &link::InmoClass::I14_Valor_Residual_Long_12)
        .def_readwrite("I15_Metodo_ZeroFilled_1", &link::InmoClass::I15_Metodo_ZeroFilled_1)
        .def_readwrite("I16_Porcentaje_Long_5", &link::InmoClass::I16_Porcentaje_Long_5)
        .def_readwrite("I17_Vida_Util_Anos_ZeroFilled_3", &link::InmoClass::I17_Vida_Util_Anos_ZeroFilled_3)
        .def_readwrite("I18_Vida_Util_Meses_ZeroFilled_2", &link::InmoClass::I18_Vida_Util_Meses_ZeroFilled_2)
        .def_readwrite("I19_Periodo_Amort_Meses_ZeroFilled_2",
                       &link::InmoClass::I19_Periodo_Amort_Meses_ZeroFilled_2)
        .def_readwrite("I20_Fecha_Compra_ddmmyy_8", &link::InmoClass::I20_Fecha_Compra_ddmmyy_8)
        .def_readwrite("I21_Fecha_Entrada_Funcion_ddmmyy_8",
                       &link::InmoClass::I21_Fecha_Entrada_Funcion_ddmmyy_8)
        .def_readwrite("I22_Fecha_Ult_Amortizacion_ddmmyy_8",
                       &link::InmoClass::I22_Fecha_Ult_Amortizacion_ddmmyy_8)
        .def_readwrite("I23_Fecha_Fin_Amortizacion_ddmmyy_8",
                       &link::InmoClass::I23_Fecha_Fin_Amortizacion_ddmmyy_8)
        .def_readwrite("I24_Fecha_Baja_ddmmyy_8", &link::InmoClass::I24_Fecha_Baja_ddmmyy_8)
        .def_readwrite("I25_Notas_String_80", &link::InmoClass::I25_Notas_String_80)
        .def_readwrite("I26_Valor_Amort_Anterior_Long_12", &link::InmoClass::I26_Valor_Amort_Anterior_Long_12)
        .def_readwrite("I27_Fecha_1_Revision_ddmmyy_8", &link::InmoClass::I27_Fecha_1_Revision_ddmmyy_8)
        .def_readwrite("I28_Fecha_2_Revision_ddmmyy_8", &link::InmoClass::I28_Fecha_2_Revision_ddmmyy_8)
        .def_readwrite("I29_Revision_1_Porcentaje_Long_9", &link::InmoClass::I29_Revision_1_Porcentaje_Long_9)
        .def_readwrite("I30_Revision_2_Porcentaje_Long_9", &link::InmoClass::I30_Revision_2_Porcentaje_Long_9)
        .def_readwrite("I31_Centro_Costos_String_10", &link::InmoClass::I31_Centro_Costos_String_10)
        .def_readwrite("I32_Canal_ZeroFilled_3", &link::InmoClass::I32_Canal_ZeroFilled_3)
        .def_readwrite("I33_Estado_String_1", &link::InmoClass::I33_Estado_String_1)
        .def_readwrite("I34_Restriciones_String_2", &link::InmoClass::I34_Restriciones_String_2)
        .def_readwrite("I35_Valor_Mercado_Long_12", &link::InmoClass::I35_Valor_Mercado_Long_12)
        .def_readwrite("I36_Valor_Catastral_Long_12", &link::InmoClass::I36_Valor_Catastral_Long_12)
        .def_readwrite("I37_Descripcion2_String_99", &link::InmoClass::I37_Descripcion2_String_99)
        .def_readwrite("I38_Proveedor_String_75", &link::InmoClass::I38_Proveedor_String_75)
        .def_readwrite("I39_Supervisor_String_3", &link::InmoClass::I39_Supervisor_String_3)
        .def_readwrite("I40_Codigo_Talleres_String_15", &link::InmoClass::I40_Codigo_Talleres_String_15)
        .def_readwrite("I41_Donado_String_1", &link::InmoClass::I41_Donado_String_1)
        .def_readwrite("I42_Ubicacion_String_3", &link::InmoClass::I42_Ubicacion_String_3)
        .def_readwrite("I43_Subnivel_String_3", &link::InmoClass::I43_Subnivel_String_3)
        .def_readwrite("I44_Flota_String_3", &link::InmoClass::I44_Flota_String_3)
        .def_readwrite("I45_Instalacion_String_3", &link::InmoClass::I45_Instalacion_String_3)
        .def_readwrite("I46_Fecha_Enajenacion_ddmmyy_8", &link::InmoClass::I46_Fecha_Enajenacion_ddmmyy_8)
        .def_readwrite("I47_Precio_Long_12", &link::InmoClass::I47_Precio_Long_12)
        .def_readwrite("I48_Comprador_String_50", &link::InmoClass::I48_Comprador_String_50)
        .def_readwrite("I49_Unidades_Long_12", &link::InmoClass::I49_Unidades_Long_12)
        .def_readwrite("I50_ImagenPdf", &link::InmoClass::I50_ImagenPdf);
}

using Persona = py::class_<link::DatosGlobalClass, std::shared_ptr<link::DatosGlobalClass>>;

void anadirIdentidad(Persona& clase) {
    clase.def_readwrite("G01_NIF_String_18", &link::DatosGlobalClass::G01_NIF_String_18)
        .def_readwrite("G02_Nombre_String_50", &link::DatosGlobalClass::G02_Nombre_String_50)
        .def_readwrite("G03_ApellidoRazonSocial_String_90",
                       &link::DatosGlobalClass::G03_ApellidoRazonSocial_String_90)
        .def_readwrite("G04_TipoVia_String_5", &link::DatosGlobalClass::G04_TipoVia_String_5)
        .def_readwrite("G05_Direccion_String_99", &link::DatosGlobalClass::G05_Direccion_String_99)
        .def_readwrite("G06_Numero_String_5", &link::DatosGlobalClass::G06_Numero_String_5)
        .def_readwrite("G07_Escalera_String_3", &link::DatosGlobalClass::G07_Escalera_String_3)
        .def_readwrite("G08_Piso_String_3", &link::DatosGlobalClass::G08_Piso_String_3)
        .def_readwrite("G09_Puerta_String_3", &link::DatosGlobalClass::G09_Puerta_String_3)
        .def_readwrite("G10_Administracion_String_6", &link::DatosGlobalClass::G10_Administracion_String_6)
        .def_readwrite("G11_CodigoINE_String_6", &link::DatosGlobalClass::G11_CodigoINE_String_6)
        .def_readwrite("G12_CodAdmLocal_String_6", &link::DatosGlobalClass::G12_CodAdmLocal_String_6)
        .def_readwrite("G13_CP_String_8", &link::DatosGlobalClass::G13_CP_String_8)
        .def_readwrite("G14_Municipio_String_30", &link::DatosGlobalClass::G14_Municipio_String_30)
        .def_readwrite("G15_Provincia_String_22", &link::DatosGlobalClass::G15_Provincia_String_22)
        .def_readwrite("G16_Pais_String_2", &link::DatosGlobalClass::G16_Pais_String_2)
        .def_readwrite("G17_Claves347_String_1", &link::DatosGlobalClass::G17_Claves347_String_1)
        .def_readwrite("G18_Importe347_Long_12", &link::DatosGlobalClass::G18_Importe347_Long_12)
        .def_readwrite("G19_Telefono1_String_15", &link::DatosGlobalClass::G19_Telefono1_String_15)
        .def_readwrite("G20_Telefono2_String_15", &link::DatosGlobalClass::G20_Telefono2_String_15)
        .def_readwrite("G21_Fax_String_15", &link::DatosGlobalClass::G21_Fax_String_15)
        .def_readwrite("G22_Email_String_99", &link::DatosGlobalClass::G22_Email_String_99)
        .def_readwrite("G23_Pagina_Web_String_99", &link::DatosGlobalClass::G23_Pagina_Web_String_99)
        .def_readwrite("G24_CNAE_String_4", &link::DatosGlobalClass::G24_CNAE_String_4)
        .def_readwrite("G25_Epigrafe_String_5", &link::DatosGlobalClass::G25_Epigrafe_String_5)
        .def_readwrite("G26_Riesgo_Long_12", &link::DatosGlobalClass::G26_Riesgo_Long_12)
        .def_readwrite("G27_Tipo_Iva_String_2", &link::DatosGlobalClass::G27_Tipo_Iva_String_2)
        .def_readwrite("G28_Vtos_30_60_90_String_15", &link::DatosGlobalClass::G28_Vtos_30_60_90_String_15)
        .def_readwrite("G29_Dias_De_Pago_String_15", &link::DatosGlobalClass::G29_Dias_De_Pago_String_15)
        .def_readwrite("G30_Notas_String_4", &link::DatosGlobalClass::G30_Notas_String_4)
        .def_readwrite("G31_CriterioDeCaja_String_1", &link::DatosGlobalClass::G31_CriterioDeCaja_String_1)
        .def_readwrite("G32_SocDominante_String_40", &link::DatosGlobalClass::G32_SocDominante_String_40)
        .def_readwrite("G33_NifSocDominante_String_18",
                       &link::DatosGlobalClass::G33_NifSocDominante_String_18);
}

void anadirSociedad(Persona& clase) {
    clase.def_readwrite("G34_SocDomGrupo_String_40", &link::DatosGlobalClass::G34_SocDomGrupo_String_40)
        .def_readwrite("G35_NifSocDomGrupo_String_18", &link::DatosGlobalClass::G35_NifSocDomGrupo_String_18)
        .def_readwrite("G36_Hombre_Fijo_ZeroFilled_7", &link::DatosGlobalClass::G36_Hombre_Fijo_ZeroFilled_7)
        .def_readwrite("G37_Mujer_Fijo_ZeroFilled_7", &link::DatosGlobalClass::G37_Mujer_Fijo_ZeroFilled_7)
        .def_readwrite("G38_Hombre_No_Fijo_ZeroFilled_7",
                       &link::DatosGlobalClass::G38_Hombre_No_Fijo_ZeroFilled_7)
        .def_readwrite("G39_Mujer_No_Fijo_ZeroFilled_7",
                       &link::DatosGlobalClass::G39_Mujer_No_Fijo_ZeroFilled_7)
        .def_readwrite("G40_Registro_Mercantil_String_25",
                       &link::DatosGlobalClass::G40_Registro_Mercantil_String_25)
        .def_readwrite("G41_Tomo_String_9", &link::DatosGlobalClass::G41_Tomo_String_9)
        .def_readwrite("G42_Folio_String_9", &link::DatosGlobalClass::G42_Folio_String_9)
        .def_readwrite("G43_Hoja_String_6", &link::DatosGlobalClass::G43_Hoja_String_6)
        .def_readwrite("G44_FechaConst_Dd_Mm_Yy_8", &link::DatosGlobalClass::G44_FechaConst_Dd_Mm_Yy_8)
        .def_readwrite("G45_MunicipioConst_String_30", &link::DatosGlobalClass::G45_MunicipioConst_String_30)
        .def_readwrite("G46_CapitalSocial_Long_12", &link::DatosGlobalClass::G46_CapitalSocial_Long_12)
        .def_readwrite("G47_CapitalDesembolsado_Long_12",
                       &link::DatosGlobalClass::G47_CapitalDesembolsado_Long_12)
        .def_readwrite("G48_AccionParticipacion_Long_11",
                       &link::DatosGlobalClass::G48_AccionParticipacion_Long_11)
        .def_readwrite("G49_ValorAccionParticipa_Long_12",
                       &link::DatosGlobalClass::G49_ValorAccionParticipa_Long_12)
        .def_readwrite("G50_ObjetoSocial_String_99", &link::DatosGlobalClass::G50_ObjetoSocial_String_99)
        .def_readwrite("G51_SA_SL_Otros_String_15", &link::DatosGlobalClass::G51_SA_SL_Otros_String_15)
        .def_readwrite("G52_EurosMilesMillones_String_1",
                       &link::DatosGlobalClass::G52_EurosMilesMillones_String_1)
        .def_readwrite("G53_PYME_Abrev_Normal_Mixto_String_1",
                       &link::DatosGlobalClass::G53_PYME_Abrev_Normal_Mixto_String_1)
        .def_readwrite("G54_MicroEmpresa_String_1", &link::DatosGlobalClass::G54_MicroEmpresa_String_1)
        .def_readwrite("G55_AutoCartera_String_1", &link::DatosGlobalClass::G55_AutoCartera_String_1)
        .def_readwrite("G56_ImportePrestamos_Long_12", &link::DatosGlobalClass::G56_ImportePrestamos_Long_12)
        .def_readwrite("G57_ImporteProvisiones_Long_12",
                       &link::DatosGlobalClass::G57_ImporteProvisiones_Long_12)
        .def_readwrite("G58_ImporteSalarios_Long_12", &link::DatosGlobalClass::G58_ImporteSalarios_Long_12)
        .def_readwrite("G59_Licencia_ZeroFilled_6", &link::DatosGlobalClass::G59_Licencia_ZeroFilled_6)
        .def_readwrite("G60_Tipo_Numero_String_5", &link::DatosGlobalClass::G60_Tipo_Numero_String_5)
        .def_readwrite("G61_Calificador_String_5", &link::DatosGlobalClass::G61_Calificador_String_5)
        .def_readwrite("G62_Bloque_String_5", &link::DatosGlobalClass::G62_Bloque_String_5)
        .def_readwrite("G63_Portal_String_5", &link::DatosGlobalClass::G63_Portal_String_5)
        .def_readwrite("G64_Complemento_String_40", &link::DatosGlobalClass::G64_Complemento_String_40)
        .def_readwrite("G65_Localidad_String_30", &link::DatosGlobalClass::G65_Localidad_String_30)
        .def_readwrite("G66_Actualizar", &link::DatosGlobalClass::G66_Actualizar);
}

void anadirDatosGlobales(py::module_& modulo) {
    Persona clase(modulo, "DatosGlobalClass", "A person or firm that all companies share.");
    clase.def(py::init<>());
    anadirIdentidad(clase);
    anadirSociedad(clase);
}

}  // namespace

void anadirRegistros(py::module_& modulo) {
    anadirInmovilizado(modulo);
    anadirDatosGlobales(modulo);
}

}  // namespace tarvoline::python
