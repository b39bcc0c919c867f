#include "link/campos_registros.h"

#include <array>

#include "core/texto.h"
#include "link/fechas_enlace.h"

namespace tarvoline::link {

namespace {

template <typename Registro>
constexpr CampoRegistro<Registro> texto(int posicion, std::string Registro::*campo) {
    return {CampoRegistro<Registro>::Forma::texto, posicion, campo};
}

template <typename Registro>
constexpr CampoRegistro<Registro> cifras(int posicion, int cuantas, std::string Registro::*campo) {
    return {CampoRegistro<Registro>::Forma::cifras, posicion, campo, nullptr, cuantas};
}

template <typename Registro>
constexpr CampoRegistro<Registro> fecha(int posicion, std::string Registro::*campo) {
    return {CampoRegistro<Registro>::Forma::fecha, posicion, campo};
}

template <typename Registro>
constexpr CampoRegistro<Registro> numero(int posicion, double Registro::*campo) {
    return {CampoRegistro<Registro>::Forma::numero, posicion, nullptr, campo};
}

constexpr std::array camposInmovilizado{
    texto(1, &InmoClass::I01_Codigo_String_10),
    texto(2, &InmoClass::I02_Descripcion_String_40),
    texto(10, &InmoClass::I03_Material_Inmaterial_String_1),
    cifras(11, 2, &InmoClass::I04_Tipo_Elemento_ZeroFilled_2),
    cifras(12, 3, &InmoClass::I05_Centro_Inventario_ZeroFilled_3),
    texto(4, &InmoClass::I06_Cuenta_Proveedor_String_10),
    texto(13, &InmoClass::I07_Elemento_Tabla_String_7),
    texto(5, &InmoClass::I08_Cuenta_Activo_String_10),
    texto(6, &InmoClass::I09_Cuenta_Amortizacion_String_10),
    texto(7, &InmoClass::I10_Cuenta_Gastos_String_10),
    numero(18, &InmoClass::I11_Valor_Inicial_Long_12),
    numero(19, &InmoClass::I12_Importe_Amortizado_Long_12),
    numero(20, &InmoClass::I13_Valor_Actual_Long_12),
    numero(21, &InmoClass::I14_Valor_Residual_Long_12),
    cifras(17, 1, &InmoClass::I15_Metodo_ZeroFilled_1),
    numero(16, &InmoClass::I16_Porcentaje_Long_5),
    cifras(14, 3, &InmoClass::I17_Vida_Util_Anos_ZeroFilled_3),
    cifras(15, 2, &InmoClass::I18_Vida_Util_Meses_ZeroFilled_2),
    cifras(8, 2, &InmoClass::I19_Periodo_Amort_Meses_ZeroFilled_2),
    fecha(22, &InmoClass::I20_Fecha_Compra_ddmmyy_8),
    fecha(23, &InmoClass::I21_Fecha_Entrada_Funcion_ddmmyy_8),
    fecha(24, &InmoClass::I22_Fecha_Ult_Amortizacion_ddmmyy_8),
    fecha(25, &InmoClass::I23_Fecha_Fin_Amortizacion_ddmmyy_8),
    fecha(26, &InmoClass::I24_Fecha_Baja_ddmmyy_8),
    texto(27, &InmoClass::I25_Notas_String_80),
    numero(28, &InmoClass::I26_Valor_Amort_Anterior_Long_12),
    fecha(29, &InmoClass::I27_Fecha_1_Revision_ddmmyy_8),
    fecha(30, &InmoClass::I28_Fecha_2_Revision_ddmmyy_8),
    numero(31, &InmoClass::I29_Revision_1_Porcentaje_Long_9),
    numero(32, &InmoClass::I30_Revision_2_Porcentaje_Long_9),
    texto(33, &InmoClass::I31_Centro_Costos_String_10),
    cifras(34, 3, &InmoClass::I32_Canal_ZeroFilled_3),
    texto(35, &InmoClass::I33_Estado_String_1),
    texto(36, &InmoClass::I34_Restriciones_String_2),
    numero(37, &InmoClass::I35_Valor_Mercado_Long_12),
    numero(38, &InmoClass::I36_Valor_Catastral_Long_12),
    texto(39, &InmoClass::I37_Descripcion2_String_99),
    texto(40, &InmoClass::I38_Proveedor_String_75),
    texto(41, &InmoClass::I39_Supervisor_String_3),
    texto(42, &InmoClass::I40_Codigo_Talleres_String_15),
    texto(43, &InmoClass::I41_Donado_String_1),
    texto(44, &InmoClass::I42_Ubicacion_String_3),
    texto(45, &InmoClass::I43_Subnivel_String_3),
    texto(46, &InmoClass::I44_Flota_String_3),
    texto(47, &InmoClass::I45_Instalacion_String_3),
    fecha(48, &InmoClass::I46_Fecha_Enajenacion_ddmmyy_8),
    numero(49, &InmoClass::I47_Precio_Long_12),
    texto(50, &InmoClass::I48_Comprador_String_50),
    numero(51, &InmoClass::I49_Unidades_Long_12),
    texto(52, &InmoClass::I50_ImagenPdf),
};

constexpr std::array camposGlobales{
    texto(3, &DatosGlobalClass::G01_NIF_String_18),
    texto(2, &DatosGlobalClass::G02_Nombre_String_50),
    texto(27, &DatosGlobalClass::G03_ApellidoRazonSocial_String_90),
    texto(28, &DatosGlobalClass::G04_TipoVia_String_5),
    texto(4, &DatosGlobalClass::G05_Direccion_String_99),
    texto(29, &DatosGlobalClass::G06_Numero_String_5),
    texto(30, &DatosGlobalClass::G07_Escalera_String_3),
    texto(31, &DatosGlobalClass::G08_Piso_String_3),
    texto(32, &DatosGlobalClass::G09_Puerta_String_3),
    texto(60, &DatosGlobalClass::G10_Administracion_String_6),
    texto(33, &DatosGlobalClass::G11_CodigoINE_String_6),
    texto(34, &DatosGlobalClass::G12_CodAdmLocal_String_6),
    texto(5, &DatosGlobalClass::G13_CP_String_8),
    texto(6, &DatosGlobalClass::G14_Municipio_String_30),
    texto(7, &DatosGlobalClass::G15_Provincia_String_22),
    texto(15, &DatosGlobalClass::G16_Pais_String_2),
    texto(8, &DatosGlobalClass::G17_Claves347_String_1),
    numero(9, &DatosGlobalClass::G18_Importe347_Long_12),
    texto(10, &DatosGlobalClass::G19_Telefono1_String_15),
    texto(35, &DatosGlobalClass::G20_Telefono2_String_15),
    texto(11, &DatosGlobalClass::G21_Fax_String_15),
    texto(18, &DatosGlobalClass::G22_Email_String_99),
    texto(19, &DatosGlobalClass::G23_Pagina_Web_String_99),
    texto(36, &DatosGlobalClass::G24_CNAE_String_4),
    texto(37, &DatosGlobalClass::G25_Epigrafe_String_5),
    numero(12, &DatosGlobalClass::G26_Riesgo_Long_12),
    texto(13, &DatosGlobalClass::G27_Tipo_Iva_String_2),
    texto(16, &DatosGlobalClass::G28_Vtos_30_60_90_String_15),
    texto(17, &DatosGlobalClass::G29_Dias_De_Pago_String_15),
    texto(14, &DatosGlobalClass::G30_Notas_String_4),
    texto(26, &DatosGlobalClass::G31_CriterioDeCaja_String_1),
    texto(38, &DatosGlobalClass::G32_SocDominante_String_40),
    texto(39, &DatosGlobalClass::G33_NifSocDominante_String_18),
    texto(40, &DatosGlobalClass::G34_SocDomGrupo_String_40),
    texto(41, &DatosGlobalClass::G35_NifSocDomGrupo_String_18),
    cifras(42, 7, &DatosGlobalClass::G36_Hombre_Fijo_ZeroFilled_7),
    cifras(43, 7, &DatosGlobalClass::G37_Mujer_Fijo_ZeroFilled_7),
    cifras(44, 7, &DatosGlobalClass::G38_Hombre_No_Fijo_ZeroFilled_7),
    cifras(45, 7, &DatosGlobalClass::G39_Mujer_No_Fijo_ZeroFilled_7),
    texto(46, &DatosGlobalClass::G40_Registro_Mercantil_String_25),
    texto(47, &DatosGlobalClass::G41_Tomo_String_9),
    texto(48, &DatosGlobalClass::G42_Folio_String_9),
    texto(49, &DatosGlobalClass::G43_Hoja_String_6),
    fecha(50, &DatosGlobalClass::G44_FechaConst_Dd_Mm_Yy_8),
    texto(51, &DatosGlobalClass::G45_MunicipioConst_String_30),
    numero(52, &DatosGlobalClass::G46_CapitalSocial_Long_12),
    numero(53, &DatosGlobalClass::G47_CapitalDesembolsado_Long_12),
    numero(54, &DatosGlobalClass::G48_AccionParticipacion_Long_11),
    numero(55, &DatosGlobalClass::G49_ValorAccionParticipa_Long_12),
    texto(56, &DatosGlobalClass::G50_ObjetoSocial_String_99),
    texto(57, &DatosGlobalClass::G51_SA_SL_Otros_String_15),
    texto(58, &DatosGlobalClass::G52_EurosMilesMillones_String_1),
    texto(59, &DatosGlobalClass::G53_PYME_Abrev_Normal_Mixto_String_1),
    texto(61, &DatosGlobalClass::G54_MicroEmpresa_String_1),
    texto(62, &DatosGlobalClass::G55_AutoCartera_String_1),
    numero(63, &DatosGlobalClass::G56_ImportePrestamos_Long_12),
    numero(64, &DatosGlobalClass::G57_ImporteProvisiones_Long_12),
    numero(65, &DatosGlobalClass::G58_ImporteSalarios_Long_12),
    cifras(68, 6, &DatosGlobalClass::G59_Licencia_ZeroFilled_6),
    texto(69, &DatosGlobalClass::G60_Tipo_Numero_String_5),
    texto(70, &DatosGlobalClass::G61_Calificador_String_5),
    texto(71, &DatosGlobalClass::G62_Bloque_String_5),
    texto(72, &DatosGlobalClass::G63_Portal_String_5),
    texto(73, &DatosGlobalClass::G64_Complemento_String_40),
    texto(74, &DatosGlobalClass::G65_Localidad_String_30),
};

}  // namespace

std::string fechaLeida(const Sesion& sesion, std::string_view guardada) {
    return fechaCorta(sesion, guardada);
}

std::string fechaGuardada(const Sesion& sesion, std::string_view texto) {
    const bool ninguna = texto.find_first_not_of(" 0/-.") == std::string_view::npos;
    return ninguna ? std::string() : fechaDeTexto(sesion, texto);
}

std::string conCifras(const std::string& texto, int cifras) {
    std::string limpio = core::Recortar(texto);
    const auto ancho = static_cast<std::size_t>(cifras);
    const bool deCifras = limpio.find_first_not_of("0123456789") == std::string::npos;
    if (limpio.empty() || !deCifras || limpio.size() >= ancho) return limpio;
    return std::string(ancho - limpio.size(), '0') + limpio;
}

template <>
std::span<const CampoRegistro<InmoClass>> camposDe<InmoClass>() {
    return camposInmovilizado;
}

template <>
std::span<const CampoRegistro<DatosGlobalClass>> camposDe<DatosGlobalClass>() {
    return camposGlobales;
}

}  // namespace tarvoline::link
