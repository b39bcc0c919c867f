"""The accounting link of Tarvoline: a session on one company."""

from typing import Optional, Union

# An amount or a code, as a text or a number.
Texto = Union[str, int, float]

class ErrorEnlace(RuntimeError):
    numero: int
    fuente: str
    descripcion: str

class ApunteClass:
    """A line of the journal."""
    def __init__(self) -> None: ...
    Cuenta: str
    Descripción: str
    TIPO: int
    Importe: float
    Diario: str
    Punteo: int
    Canal: str
    Referencia: str
    REGISTRO: int
    NOTAS: str
    ArchivoImagen: str

class AnaliticaClass:
    """What a line of the journal is divided into."""
    def __init__(self) -> None: ...
    CuentaContable: str
    CuentaAnalitica: str
    Descripción: str
    Importe: float

class CarteraClass:
    """A line of the portfolio."""
    def __init__(self) -> None: ...
    FechaVencimiento: str
    Cuenta: str
    cartera: str
    NOTAS: str
    Importe: float
    Marca: str
    Fecha: str
    Asiento: str

class IVAClass:
    """A line of the book of invoices."""
    def __init__(self) -> None: ...
    CuentaClienteProveedor: str
    CuentaIVA: str
    Factura: str
    FechaFactura: str
    TipoIva: str
    SRTC: str
    Base: float
    TOTAL: float
    Prorata: int
    titulo: str
    NIF: str
    NumeroOrden: str
    Referencia: str
    CuotaProrrata: float
    SerieFacturas: str
    CLAVEOPERACION: str
    FechaCobro: str
    MedioCobro: str
    DescripcionMedioCobro: str
    PorcRetencion: float
    RegimenEspecial: str
    Liquido: float
    SII_Codigo: str
    SII_DescripcionDocumento: str
    SII_Id: str
    SII_FacturaExtendida: str
    SII_FacturaRectificativa_DUA: str
    SII_PeriodoPresentacion: str

class TipoIvaClass:
    """A rate of VAT."""
    def __init__(self) -> None: ...
    TIPO: int
    Descripción: str
    ClaveOp2: str
    ClaveOp: str
    Cuota: float
    Recargo: float

class ExtractoClass:
    """A line of a statement."""
    def __init__(self) -> None: ...
    Cuenta: str
    Fecha: str
    Asiento: str
    Descripción: str
    TIPO: int
    Importe: float
    Diario: str
    Punteo: int
    Canal: str
    Referencia: str
    Moneda: str
    CambioMoneda: float
    ValorEnMoneda: float
    Usuario: str
    FechaGrabacion: str
    REGISTRO: int
    Debe: float
    Haber: float
    Saldo: float

class DebeClass:
    """A debit column of an account."""
    def __init__(self) -> None: ...
    Importe: float

class HaberClass:
    """A credit column of an account."""
    def __init__(self) -> None: ...
    Importe: float

class PlanClass:
    """An account of a chart."""
    def __init__(self) -> None: ...
    Cuenta: str
    titulo: str
    Nivel: str
    coldebe: list[DebeClass]
    colhaber: list[HaberClass]
    DebeApertura: float
    DebeEnero: float
    DebeFebrero: float
    DebeMarzo: float
    DebeAbril: float
    DebeMayo: float
    DebeJunio: float
    DebeJulio: float
    DebeAgosto: float
    DebeSeptiembre: float
    DebeOctubre: float
    DebeNoviembre: float
    DebeDiciembre: float
    DebeRegularizacion: float
    DebeCierre: float
    HaberApertura: float
    HaberEnero: float
    HaberFebrero: float
    HaberMarzo: float
    HaberAbril: float
    HaberMayo: float
    HaberJunio: float
    HaberJulio: float
    HaberAgosto: float
    HaberSeptiembre: float
    HaberOctubre: float
    HaberNoviembre: float
    HaberDiciembre: float
    HaberRegularizacion: float
    HaberCierre: float
    EsAnalitica: bool
    NIF: str
    NOTAS: str
    OMITIR347: str
    OMITIR415: str
    Clave347: str
    CriterioCaja: str

class DatosClass:
    """Master data of an account."""
    def __init__(self) -> None: ...
    Cuenta: str
    titulo: str
    NIF: str
    Direccion: str
    cp: str
    Municipio: str
    Provincia: str
    CVP: str
    Importe_347: float
    Telefono: str
    Fax: str
    Riesgo: float
    TipoIva: str
    NOTAS: str
    Vencimientos: str
    DiasDePago: str
    email: str
    PaginaWeb: str
    Pais: str
    EsCriterioCaja: bool
    OMITIR347: str
    OMITIR415: str
    Trimestre1_347: float
    Trimestre2_347: float
    Trimestre3_347: float
    Trimestre4_347: float

class FechaAsto:
    """An entry by its date and number."""
    def __init__(self) -> None: ...
    Fecha: str
    Asiento: str

class InmoClass:
    """A fixed asset."""
    def __init__(self) -> None: ...
    I01_Codigo_String_10: str
    I02_Descripcion_String_40: str
    I03_Material_Inmaterial_String_1: str
    I04_Tipo_Elemento_ZeroFilled_2: str
    I05_Centro_Inventario_ZeroFilled_3: str
    I06_Cuenta_Proveedor_String_10: str
    I07_Elemento_Tabla_String_7: str
    I08_Cuenta_Activo_String_10: str
    I09_Cuenta_Amortizacion_String_10: str
    I10_Cuenta_Gastos_String_10: str
    I11_Valor_Inicial_Long_12: float
    I12_Importe_Amortizado_Long_12: float
    I13_Valor_Actual_Long_12: float
    I14_Valor_Residual_Long_12: float
    I15_Metodo_ZeroFilled_1: str
    I16_Porcentaje_Long_5: float
    I17_Vida_Util_Anos_ZeroFilled_3: str
    I18_Vida_Util_Meses_ZeroFilled_2: str
    I19_Periodo_Amort_Meses_ZeroFilled_2: str
    I20_Fecha_Compra_ddmmyy_8: str
    I21_Fecha_Entrada_Funcion_ddmmyy_8: str
    I22_Fecha_Ult_Amortizacion_ddmmyy_8: str
    I23_Fecha_Fin_Amortizacion_ddmmyy_8: str
    I24_Fecha_Baja_ddmmyy_8: str
    I25_Notas_String_80: str
    I26_Valor_Amort_Anterior_Long_12: float
    I27_Fecha_1_Revision_ddmmyy_8: str
    I28_Fecha_2_Revision_ddmmyy_8: str
    I29_Revision_1_Porcentaje_Long_9: float
    I30_Revision_2_Porcentaje_Long_9: float
    I31_Centro_Costos_String_10: str
    I32_Canal_ZeroFilled_3: str
    I33_Estado_String_1: str
    I34_Restriciones_String_2: str
    I35_Valor_Mercado_Long_12: float
    I36_Valor_Catastral_Long_12: float
    I37_Descripcion2_String_99: str
    I38_Proveedor_String_75: str
    I39_Supervisor_String_3: str
    I40_Codigo_Talleres_String_15: str
    I41_Donado_String_1: str
    I42_Ubicacion_String_3: str
    I43_Subnivel_String_3: str
    I44_Flota_String_3: str
    I45_Instalacion_String_3: str
    I46_Fecha_Enajenacion_ddmmyy_8: str
    I47_Precio_Long_12: float
    I48_Comprador_String_50: str
    I49_Unidades_Long_12: float
    I50_ImagenPdf: str

class DatosGlobalClass:
    """A person or firm that all companies share."""
    def __init__(self) -> None: ...
    G01_NIF_String_18: str
    G02_Nombre_String_50: str
    G03_ApellidoRazonSocial_String_90: str
    G04_TipoVia_String_5: str
    G05_Direccion_String_99: str
    G06_Numero_String_5: str
    G07_Escalera_String_3: str
    G08_Piso_String_3: str
    G09_Puerta_String_3: str
    G10_Administracion_String_6: str
    G11_CodigoINE_String_6: str
    G12_CodAdmLocal_String_6: str
    G13_CP_String_8: str
    G14_Municipio_String_30: str
    G15_Provincia_String_22: str
    G16_Pais_String_2: str
    G17_Claves347_String_1: str
    G18_Importe347_Long_12: float
    G19_Telefono1_String_15: str
    G20_Telefono2_String_15: str
    G21_Fax_String_15: str
    G22_Email_String_99: str
    G23_Pagina_Web_String_99: str
    G24_CNAE_String_4: str
    G25_Epigrafe_String_5: str
    G26_Riesgo_Long_12: float
    G27_Tipo_Iva_String_2: str
    G28_Vtos_30_60_90_String_15: str
    G29_Dias_De_Pago_String_15: str
    G30_Notas_String_4: str
    G31_CriterioDeCaja_String_1: str
    G32_SocDominante_String_40: str
    G33_NifSocDominante_String_18: str
    G34_SocDomGrupo_String_40: str
    G35_NifSocDomGrupo_String_18: str
    G36_Hombre_Fijo_ZeroFilled_7: str
    G37_Mujer_Fijo_ZeroFilled_7: str
    G38_Hombre_No_Fijo_ZeroFilled_7: str
    G39_Mujer_No_Fijo_ZeroFilled_7: str
    G40_Registro_Mercantil_String_25: str
    G41_Tomo_String_9: str
    G42_Folio_String_9: str
    G43_Hoja_String_6: str
    G44_FechaConst_Dd_Mm_Yy_8: str
    G45_MunicipioConst_String_30: str
    G46_CapitalSocial_Long_12: float
    G47_CapitalDesembolsado_Long_12: float
    G48_AccionParticipacion_Long_11: float
    G49_ValorAccionParticipa_Long_12: float
    G50_ObjetoSocial_String_99: str
    G51_SA_SL_Otros_String_15: str
    G52_EurosMilesMillones_String_1: str
    G53_PYME_Abrev_Normal_Mixto_String_1: str
    G54_MicroEmpresa_String_1: str
    G55_AutoCartera_String_1: str
    G56_ImportePrestamos_Long_12: float
    G57_ImporteProvisiones_Long_12: float
    G58_ImporteSalarios_Long_12: float
    G59_Licencia_ZeroFilled_6: str
    G60_Tipo_Numero_String_5: str
    G61_Calificador_String_5: str
    G62_Bloque_String_5: str
    G63_Portal_String_5: str
    G64_Complemento_String_40: str
    G65_Localidad_String_30: str
    G66_Actualizar: bool

class Contexto:
    """What the sessions of a process share: settings, folders, the record layer and the currency."""
    def __init__(self) -> None: ...

class Enlace:
    """A session on one company. Sessions made without a context share one."""
    def __init__(self, contexto: Optional[Contexto] = None) -> None: ...

    # The session
    @staticmethod
    def Version() -> str: ...
    def Login(self, Usuario: str, Password: str, ip: str) -> None:
        """Goes over to the accounting service at this address; companies are names there."""
    Carpeta: str
    """Folder of companies at the service; "" that of the user."""
    def LeerCarpetas(self) -> list[str]: ...
    def LoadEmpresas(self) -> None: ...
    def AbrirEmpresa(self, Empresa: str = ..., Password: str = ...) -> None: ...
    def CerrarEmpresa(self) -> None: ...
    def CrearEmpresa(self, NombreEmpresa: str, año: str = ..., Niveles: str = ..., Auxiliares: str = ...,
                     MonedaBase: str = ..., MesApertura: str = ..., PlanContablePorDefecto: str = ...,
                     IvaIgic: str = ...) -> None: ...
    @property
    def Empresas(self) -> list[str]: ...
    @property
    def ModoRemoto(self) -> bool: ...
    @property
    def Empresa(self) -> str: ...
    @property
    def NumeroEmpresa(self) -> str: ...
    @property
    def MesInicioEjercicio(self) -> str: ...
    @property
    def HayPendientes(self) -> bool: ...
    def año(self, Mes: int) -> str: ...
    def year(self, Mes: int) -> str: ...
    def EmpresaAñoAnterior(self) -> str: ...
    def PreviousYearCompany(self) -> str: ...
    def Config(self, Descripcion: str, Valor: str = ...) -> Optional[str]:
        """With a name the value; with a name and a value writes it."""
    def MASTER(self, funcion: int, codigo: str) -> None: ...
    Usuario: str
    Canal: str
    Moneda: str
    CambioMoneda: float
    Fecha: str
    """Out "yymmdd"; in also "dd/mm/yy" and "dd/mm/yyyy"."""
    Número: str
    """"" takes the next number of the company."""
    Number: str

    # The entry
    def AñadirApunte(self, Cuenta: str, Descripción: str, TIPO: int, Importe: float, Diario: str = ...,
                     Punteo: int = ..., Canal: str = ..., Referencia: str = ..., NOTAS: str = ...,
                     ArchivoImagen: str = ...) -> ApunteClass: ...
    def AddEntry(self, Cuenta: str, Descripción: str, TIPO: int, Importe: float, Diario: str = ...,
                 Punteo: int = ..., Canal: str = ..., Referencia: str = ..., NOTAS: str = ...,
                 ArchivoImagen: str = ...) -> ApunteClass: ...
    def AñadirAnalitica(self, CuentaContable: str, CuentaAnalitica: str, Descripción: str, TIPO: int, Importe: float,
                        Diario: str = ..., Punteo: int = ..., Canal: str = ...) -> AnaliticaClass: ...
    def AddCostCenter(self, CuentaContable: str, CuentaAnalitica: str, Descripción: str, TIPO: int, Importe: float,
                      Diario: str = ..., Punteo: int = ..., Canal: str = ...) -> AnaliticaClass: ...
    def AñadirCartera(self, FechaVencimiento: str, Cuenta: str, cartera: str, NOTAS: str, Importe: float,
                      FechaApunte: str = ..., Marca: str = ...) -> CarteraClass: ...
    def AddPortfolio(self, FechaVencimiento: str, Cuenta: str, cartera: str, NOTAS: str, Importe: float,
                     FechaApunte: str = ..., Marca: str = ...) -> CarteraClass: ...
    def AñadirIVA(self, CuentaClienteProveedor: str, CuentaIVA: str, Factura: str, FechaFactura: str, TipoIva: str,
                  SRTC: str, Base: float, TOTAL: float, Prorata: int = ..., titulo: str = ..., NIF: str = ...,
                  NumeroOrden: str = ..., CLAVEOPERACION: str = ..., Referencia: str = ..., SerieFacturas: str = ...,
                  PorcRetencion: float = ..., RegimenEspecial: str = ..., CodigoSII: str = ...,
                  DescripcionSII: str = ..., Id_SII: str = ..., Factura60Caracteres: str = ...,
                  NoFacturaRectificativa_DUA: str = ..., PeriodoPresentacion: str = ...) -> IVAClass: ...
    def AddVAT(self, CuentaClienteProveedor: str, CuentaIVA: str, Factura: str, FechaFactura: str, TipoIva: str,
               SRTC: str, Base: float, TOTAL: float, Prorata: int = ..., titulo: str = ..., NIF: str = ...,
               NumeroOrden: str = ..., CLAVEOPERACION: str = ..., Referencia: str = ..., SerieFacturas: str = ...,
               PorcRetencion: float = ..., RegimenEspecial: str = ...) -> IVAClass: ...
    def LimpiarPendientes(self) -> None: ...
    def GrabarAsiento(self) -> int: ...
    def CalcularMoneda(self, ImporteEntrada: float) -> tuple[float, float]:
        """(ValorEnEuros, ValorEnPesetas)"""

    # Reading
    def LeerAsiento(self, Fecha: str = ..., Asiento: str = ...) -> None: ...
    def LeerProximoAsiento(self) -> None: ...
    def LeerAnteriorAsiento(self) -> None: ...
    def LeerPrimerAsiento(self) -> None: ...
    def LeerUltimoAsiento(self) -> None: ...
    def LeerReferencia(self, Referencia: str) -> None: ...
    def BuscarReferencia(self, Referencia: str, MayusculasMinusculas: bool = ...) -> bool: ...
    def BuscarDescripcion(self, Descripcion: str, MayusculasMinusculas: bool = ...) -> bool: ...
    def BuscarImporte(self, Importe: float) -> bool: ...
    def ExisteReferencia(self, Referencia: str) -> int: ...
    def ExisteIva(self, Referencia: str) -> int: ...
    def LeerExtracto(self, Cuenta: str, DesdeFecha: str = ..., HastaFecha: str = ..., Archivo: int = ...) -> None: ...
    def LeerExtractoEx(self, Cuenta: str, DesdeFecha: str = ..., HastaFecha: str = ...) -> str: ...
    def LeerPlan(self, Cuenta: str = ..., Nivel: str = ..., titulo: str = ...) -> bool: ...
    def LeerPlanEx(self, Fi: int, Cuenta: str = ..., Nivel: str = ..., titulo: str = ..., HastaCuenta: str = ...,
                   Siguiente_1_Anterior_2: int = ...) -> int: ...
    def LeerDatos(self, Cuenta: str = ..., titulo: str = ...) -> int: ...
    def PlanDebe(self, Index: int, Mes: int) -> float: ...
    def PlanHaber(self, Index: int, Mes: int) -> float: ...

    # Annulling
    def AnularAsiento(self, Fecha: str, NúmeroAsiento: str) -> int: ...
    def AnularApuntePorReferencia(self, Referencia: str, IncluirIva: bool = ...,
                                  IncluirAnalitica: bool = ...) -> None: ...
    def AnularApuntePorRegistro(self, REGISTRO: int, IncluirAnalitica: bool = ...) -> None: ...
    def AnularCuenta(self, Cuenta: str) -> None: ...

    # Accounts and VAT; the account comes back beside the result
    def CrearCuenta(self, Cuenta: str, titulo: str, Nivel: str = ..., IsAnalitica: bool = ...,
                    NIF: str = ...) -> tuple[bool, str]: ...
    def CrearAnalitica(self, Cuenta: str, titulo: str, Nivel: str = ...) -> tuple[bool, str]: ...
    def CrearAlterna(self, Cuenta: str, titulo: str, Nivel: str = ...) -> tuple[bool, str]: ...
    @staticmethod
    def ValTIVA(Des: str) -> int: ...
    def tiposiva(self, Index: int) -> TipoIvaClass: ...

    # Master data; "-1" leaves a field as it is
    def CrearDatos(self, Cuenta: str, titulo: str = ..., NIF: str = ..., Direccion: str = ..., cp: str = ...,
                   Municipio: str = ..., Provincia: str = ..., CVP: str = ..., Importe_347: Texto = ...,
                   Telefono: str = ..., Fax: str = ..., Riesgo: Texto = ..., TipoIva: str = ..., NOTAS: str = ...,
                   Actualizar: bool = ..., Pais: str = ..., Vencimientos: str = ..., DiasDePago: str = ...,
                   email: str = ..., PaginaWeb: str = ..., CriterioCaja: str = ..., OMITIR347: str = ...,
                   OMITIR415: str = ...) -> None: ...

    # Portfolio: lines that meet the conditions which are not empty
    def LeerCartera(self, cartera: str = ..., DesdeFechaVencimiento: str = ..., HastaFechaVencimiento: str = ...,
                    Cuenta: str = ..., Asiento: str = ...) -> list[CarteraClass]: ...
    def MarcarCartera(self, Marca: str, cartera: str, DesdeFechaVencimiento: str, HastaFechaVencimiento: str,
                      Cuenta: str, Asiento: str) -> None: ...
    def AnularCartera(self, cartera: str, DesdeFechaVencimiento: str, HastaFechaVencimiento: str, Cuenta: str,
                      Asiento: str) -> None: ...

    # VAT on a cash basis
    def EsCriterioCaja(self, Cuenta: str) -> str: ...
    def TotalPendiente(self, Cliente: str, Factura: str, FechaFactura: str = ...) -> float: ...
    def PagoFacturaCriterioCaja(self, Proveedor: str, Factura: str, ImportePago: Texto, CuentaContablePago: str,
                                CLAVEOPERACION: Texto = ..., fechapago: str = ..., MedioCobro: Texto = ...,
                                DescripcionMedioCobro: str = ..., DescripcionAsiento: str = ..., Diario: str = ...,
                                Canal: str = ..., Referencia: str = ..., NOTAS: str = ..., ArchivoImagen: str = ...,
                                FechaFactura: str = ...) -> None: ...
    def CobroFacturaCriterioCaja(self, Cliente: str, Factura: str, ImporteCobro: Texto, CuentaContableCobro: str,
                                 CLAVEOPERACION: Texto = ..., FechaCobro: str = ..., MedioCobro: Texto = ...,
                                 DescripcionMedioCobro: str = ..., DescripcionAsiento: str = ..., Diario: str = ...,
                                 Canal: str = ..., Referencia: str = ..., NOTAS: str = ..., ArchivoImagen: str = ...,
                                 FechaFactura: str = ...) -> None: ...
    def AñadirIvaCriterioCaja(self, Cliente: str, Factura: str, ImporteCobro: Texto, MedioCobro: Texto,
                              DescripcionMedioCobro: str, ComprobarCobros: bool, CLAVEOPERACION: Texto,
                              FechaCobro: str, FechaFactura: str = ...) -> None: ...
    def AddVATCashBased(self, Cliente: str, Factura: str, ImporteCobro: Texto, MedioCobro: Texto,
                        DescripcionMedioCobro: str, ComprobarCobros: bool, CLAVEOPERACION: Texto,
                        FechaCobro: str, FechaFactura: str = ...) -> None: ...

    # Budgets, fixed assets, the persons that all companies share
    def CrearPresupuesto(self, Cuenta: str, titulo: str, Nivel: str = ..., Analitica: bool = ...) -> None: ...
    def ModificarPresupuesto(self, Cuenta: str, Mes: int, Importe: float) -> None: ...
    def LeerInmovilizado(self, Codigo: str = ...) -> int: ...
    def CrearInmovilizado(self, DatosInm: InmoClass) -> None: ...
    def LeerDatosGlobales(self, NIF: str = ...) -> int: ...
    def CrearDatosGloblales(self, DatosGlob: DatosGlobalClass) -> None: ...
    def ExisteNifDatosGlobales(self, NIF: str) -> bool: ...

    # Tables as texts, identifiers of entries
    @staticmethod
    def Util_TextoToArray(Txt: str) -> list[str]: ...
    def Util_LeerTablas(self) -> str: ...
    def Util_LeerCampos(self, tabla: str) -> str: ...
    def Util_LeerDatos(self, tabla: str, CampoTabla: str = ..., Valor: str = ..., Filtro: str = ...) -> str: ...
    def GUID(self, Asiento: str, Valor: Optional[str] = ...) -> Optional[str]: ...
    def LeerFechasAsiento(self, Asiento: str) -> list[str]: ...
    def LeerAsientosGuid(self, Guid: str) -> list[str]: ...

    # Results: counters, and items from 1 or None
    def ContadorApuntes(self) -> int: ...
    def ContadorAnalitica(self) -> int: ...
    def ContadorIva(self) -> int: ...
    def ContadorCartera(self) -> int: ...
    def ContadorExtracto(self) -> int: ...
    def ContadorPlan(self) -> int: ...
    def ContadorDatos(self) -> int: ...
    def ContadorDatosGlobal(self) -> int: ...
    def ContadorInmovilizado(self) -> int: ...
    def Apunte(self, Index: int) -> Optional[ApunteClass]: ...
    def Analitica(self, Index: int) -> Optional[AnaliticaClass]: ...
    def iva(self, Index: int) -> Optional[IVAClass]: ...
    def cartera(self, Index: int) -> Optional[CarteraClass]: ...
    def Extracto(self, Index: int) -> Optional[ExtractoClass]: ...
    def Plan(self, Index: int) -> Optional[PlanClass]: ...
    def DATOS(self, Index: int) -> Optional[DatosClass]: ...
    def DatosGlobales(self, Index: int) -> Optional[DatosGlobalClass]: ...
    def inmovilizado(self, Index: int) -> Optional[InmoClass]: ...
