#include "python/modulo.h"

#include <pybind11/stl.h>

#include "tarvoline/clases.h"

namespace py = pybind11;

namespace tarvoline::python {

namespace {

void anadirLineas(py::module_& modulo) {
    py::class_<link::ApunteClass, std::shared_ptr<link::ApunteClass>>(modulo, "ApunteClass",
                                                                      "A line of the journal.")
        .def(py::init<>())
        .def_readwrite("Cuenta", &link::ApunteClass::Cuenta)
        .def_readwrite("Descripción", &link::ApunteClass::Descripción)
        .def_readwrite("TIPO", &link::ApunteClass::TIPO)
        .def_readwrite("Importe", &link::ApunteClass::Importe)
        .def_readwrite("Diario", &link::ApunteClass::Diario)
        .def_readwrite("Punteo", &link::ApunteClass::Punteo)
        .def_readwrite("Canal", &link::ApunteClass::Canal)
        .def_readwrite("Referencia", &link::ApunteClass::Referencia)
        .def_readwrite("REGISTRO", &link::ApunteClass::REGISTRO)
        .def_readwrite("NOTAS", &link::ApunteClass::NOTAS)
        .def_readwrite("ArchivoImagen", &link::ApunteClass::ArchivoImagen);
    py::class_<link::AnaliticaClass, std::shared_ptr<link::AnaliticaClass>>(
        modulo, "AnaliticaClass", "What a line of the journal is divided into.")
        .def(py::init<>())
        .def_readwrite("CuentaContable", &link::AnaliticaClass::CuentaContable)
        .def_readwrite("CuentaAnalitica", &link::AnaliticaClass::CuentaAnalitica)
        .def_readwrite("Descripción", &link::AnaliticaClass::Descripción)
        .def_readwrite("Importe", &link::AnaliticaClass::Importe);
    py::class_<link::CarteraClass, std::shared_ptr<link::CarteraClass>>(modulo, "CarteraClass",
                                                                        "A line of the portfolio.")
        .def(py::init<>())
        .def_readwrite("FechaVencimiento", &link::CarteraClass::FechaVencimiento)
        .def_readwrite("Cuenta", &link::CarteraClass::Cuenta)
        .def_readwrite("cartera", &link::CarteraClass::cartera)
        .def_readwrite("NOTAS", &link::CarteraClass::NOTAS)
        .def_readwrite("Importe", &link::CarteraClass::Importe)
        .def_readwrite("Marca", &link::CarteraClass::Marca)
        .def_readwrite("Fecha", &link::CarteraClass::Fecha)
        .def_readwrite("Asiento", &link::CarteraClass::Asiento);
    py::class_<link::IVAClass, std::shared_ptr<link::IVAClass>>(modulo, "IVAClass",
                                                                "A line of the book of invoices.")
        .def(py::init<>())
        .def_readwrite("CuentaClienteProveedor", &link::IVAClass::CuentaClienteProveedor)
        .def_readwrite("CuentaIVA", &link::IVAClass::CuentaIVA)
        .def_readwrite("Factura", &link::IVAClass::Factura)
        .def_readwrite("FechaFactura", &link::IVAClass::FechaFactura)
        .def_readwrite("TipoIva", &link::IVAClass::TipoIva)
        .def_readwrite("SRTC", &link::IVAClass::SRTC)
        .def_readwrite("Base", &link::IVAClass::Base)
        .def_readwrite("TOTAL", &link::IVAClass::TOTAL)
        .def_readwrite("Prorata", &link::IVAClass::Prorata)
        .def_readwrite("titulo", &link::IVAClass::titulo)
        .def_readwrite("NIF", &link::IVAClass::NIF)
        .def_readwrite("NumeroOrden", &link::IVAClass::NumeroOrden)
        .def_readwrite("Referencia", &link::IVAClass::Referencia)
        .def_readwrite("CuotaProrrata", &link::IVAClass::CuotaProrrata)
        .def_readwrite("SerieFacturas", &link::IVAClass::SerieFacturas)
        .def_readwrite("CLAVEOPERACION", &link::IVAClass::CLAVEOPERACION)
        .def_readwrite("FechaCobro", &link::IVAClass::FechaCobro)
        .def_readwrite("MedioCobro", &link::IVAClass::MedioCobro)
        .def_readwrite("DescripcionMedioCobro", &link::IVAClass::DescripcionMedioCobro)
        .def_readwrite("PorcRetencion", &link::IVAClass::PorcRetencion)
        .def_readwrite("RegimenEspecial", &link::IVAClass::RegimenEspecial)
        .def_readwrite("Liquido", &link::IVAClass::Liquido)
        .def_readwrite("SII_Codigo", &link::IVAClass::SII_Codigo)
        .def_readwrite("SII_DescripcionDocumento", &link::IVAClass::SII_DescripcionDocumento)
        .def_readwrite("SII_Id", &link::IVAClass::SII_Id)
        .def_readwrite("SII_FacturaExtendida", &link::IVAClass::SII_FacturaExtendida)
        .def_readwrite("SII_FacturaRectificativa_DUA", &link::IVAClass::SII_FacturaRectificativa_DUA)
        .def_readwrite("SII_PeriodoPresentacion", &link::IVAClass::SII_PeriodoPresentacion);
}

void anadirResultados(py::module_& modulo) {
    py::class_<link::TipoIvaClass, std::shared_ptr<link::TipoIvaClass>>(modulo, "TipoIvaClass",
                                                                        "A rate of VAT.")
        .def(py::init<>())
        .def_readwrite("TIPO", &link::TipoIvaClass::TIPO)
        .def_readwrite("Descripción", &link::TipoIvaClass::Descripción)
        .def_readwrite("ClaveOp2", &link::TipoIvaClass::ClaveOp2)
        .def_readwrite("ClaveOp", &link::TipoIvaClass::ClaveOp)
        .def_readwrite("Cuota", &link::TipoIvaClass::Cuota)
        .def_readwrite("Recargo", &link::TipoIvaClass::Recargo);
    py::class_<link::ExtractoClass, std::shared_ptr<link::ExtractoClass>>(modulo, "ExtractoClass",
                                                                          "A line of a statement.")
        .def(py::init<>())
        .def_readwrite("Cuenta", &link::ExtractoClass::Cuenta)
        .def_readwrite("Fecha", &link::ExtractoClass::Fecha)
        .def_readwrite("Asiento", &link::ExtractoClass::Asiento)
        .def_readwrite("Descripción", &link::ExtractoClass::Descripción)
        .def_readwrite("TIPO", &link::ExtractoClass::TIPO)
        .def_readwrite("Importe", &link::ExtractoClass::Importe)
        .def_readwrite("Diario", &link::ExtractoClass::Diario)
        .def_readwrite("Punteo", &link::ExtractoClass::Punteo)
        .def_readwrite("Canal", &link::ExtractoClass::Canal)
        .def_readwrite("Referencia", &link::ExtractoClass::Referencia)
        .def_readwrite("Moneda", &link::ExtractoClass::Moneda)
        .def_readwrite("CambioMoneda", &link::ExtractoClass::CambioMoneda)
        .def_readwrite("ValorEnMoneda", &link::ExtractoClass::ValorEnMoneda)
        .def_readwrite("Usuario", &link::ExtractoClass::Usuario)
        .def_readwrite("FechaGrabacion", &link::ExtractoClass::FechaGrabacion)
        .def_readwrite("REGISTRO", &link::ExtractoClass::REGISTRO)
        .def_readwrite("Debe", &link::ExtractoClass::Debe)
        .def_readwrite("Haber", &link::ExtractoClass::Haber)
        .def_readwrite("Saldo", &link::ExtractoClass::Saldo);
    py::class_<link::DebeClass, std::shared_ptr<link::DebeClass>>(modulo, "DebeClass",
                                                                  "A debit column of an account.")
        .def(py::init<>())
        .def_readwrite("Importe", &link::DebeClass::Importe);
    py::class_<link::HaberClass, std::shared_ptr<link::HaberClass>>(modulo, "HaberClass",
                                                                    "A credit column of an account.")
        .def(py::init<>())
        .def_readwrite("Importe", &link::HaberClass::Importe);
    py::class_<link::FechaAsto, std::shared_ptr<link::FechaAsto>>(modulo, "FechaAsto",
                                                                  "An entry by its date and number.")
        .def(py::init<>())
        .def_readwrite("Fecha", &link::FechaAsto::Fecha)
        .def_readwrite("Asiento", &link::FechaAsto::Asiento);
}

void anadirCuentas(py::module_& modulo) {
    py::class_<link::PlanClass, std::shared_ptr<link::PlanClass>>(modulo, "PlanClass",
                                                                  "An account of a chart.")
        .def(py::init<>())
        .def_readwrite("Cuenta", &link::PlanClass::Cuenta)
        .def_readwrite("titulo", &link::PlanClass::titulo)
        .def_readwrite("Nivel", &link::PlanClass::Nivel)
        .def_readwrite("coldebe", &link::PlanClass::coldebe)
        .def_readwrite("colhaber", &link::PlanClass::colhaber)
        .def_readwrite("DebeApertura", &link::PlanClass::DebeApertura)
        .def_readwrite("DebeEnero", &link::PlanClass::DebeEnero)
        .def_readwrite("DebeFebrero", &link::PlanClass::DebeFebrero)
        .def_readwrite("DebeMarzo", &link::PlanClass::DebeMarzo)
        .def_readwrite("DebeAbril", &link::PlanClass::DebeAbril)
        .def_readwrite("DebeMayo", &link::PlanClass::DebeMayo)
        .def_readwrite("DebeJunio", &link::PlanClass::DebeJunio)
        .def_readwrite("DebeJulio", &link::PlanClass::DebeJulio)
        .def_readwrite("DebeAgosto", &link::PlanClass::DebeAgosto)
        .def_readwrite("DebeSeptiembre", &link::PlanClass::DebeSeptiembre)
        .def_readwrite("DebeOctubre", &link::PlanClass::DebeOctubre)
        .def_readwrite("DebeNoviembre", &link::PlanClass::DebeNoviembre)
        .def_readwrite("DebeDiciembre", &link::PlanClass::DebeDiciembre)
        .def_readwrite("DebeRegularizacion", &link::PlanClass::DebeRegularizacion)
        .def_readwrite("DebeCierre", &link::PlanClass::DebeCierre)
        .def_readwrite("HaberApertura", &link::PlanClass::HaberApertura)
        .def_readwrite("HaberEnero", &link::PlanClass::HaberEnero)
        .def_readwrite("HaberFebrero", &link::PlanClass::HaberFebrero)
        .def_readwrite("HaberMarzo", &link::PlanClass::HaberMarzo)
        .def_readwrite("HaberAbril", &link::PlanClass::HaberAbril)
        .def_readwrite("HaberMayo", &link::PlanClass::HaberMayo)
        .def_readwrite("HaberJunio", &link::PlanClass::HaberJunio)
        .def_readwrite("HaberJulio", &link::PlanClass::HaberJulio)
        .def_readwrite("HaberAgosto", &link::PlanClass::HaberAgosto)
        .def_readwrite("HaberSeptiembre", &link::PlanClass::HaberSeptiembre)
        .def_readwrite("HaberOctubre", &link::PlanClass::HaberOctubre)
        .def_readwrite("HaberNoviembre", &link::PlanClass::HaberNoviembre)
        .def_readwrite("HaberDiciembre", &link::PlanClass::HaberDiciembre)
        .def_readwrite("HaberRegularizacion", &link::PlanClass::HaberRegularizacion)
        .def_readwrite("HaberCierre", &link::PlanClass::HaberCierre)
        .def_readwrite("EsAnalitica", &link::PlanClass::EsAnalitica)
        .def_readwrite("NIF", &link::PlanClass::NIF)
        .def_readwrite("NOTAS", &link::PlanClass::NOTAS)
        .def_readwrite("OMITIR347", &link::PlanClass::OMITIR347)
        .def_readwrite("OMITIR415", &link::PlanClass::OMITIR415)
        .def_readwrite("Clave347", &link::PlanClass::Clave347)
        .def_readwrite("CriterioCaja", &link::PlanClass::CriterioCaja);
    py::class_<link::DatosClass, std::shared_ptr<link::DatosClass>>(modulo, "DatosClass",
                                                                    "Master data of an account.")
        .def(py::init<>())
        .def_readwrite("Cuenta", &link::DatosClass::Cuenta)
        .def_readwrite("titulo", &link::DatosClass::titulo)
        .def_readwrite("NIF", &link::DatosClass::NIF)
        .def_readwrite("Direccion", &link::DatosClass::Direccion)
        .def_readwrite("cp", &link::DatosClass::cp)
        .def_readwrite("Municipio", &link::DatosClass::Municipio)
        .def_readwrite("Provincia", &link::DatosClass::Provincia)
        .def_readwrite("CVP", &link::DatosClass::CVP)
        .def_readwrite("Importe_347", &link::DatosClass::Importe_347)
        .def_readwrite("Telefono", &link::DatosClass::Telefono)
        .def_readwrite("Fax", &link::DatosClass::Fax)
        .def_readwrite("Riesgo", &link::DatosClass::Riesgo)
        .def_readwrite("TipoIva", &link::DatosClass::TipoIva)
        .def_readwrite("NOTAS", &link::DatosClass::NOTAS)
        .def_readwrite("Vencimientos", &link::DatosClass::Vencimientos)
        .def_readwrite("DiasDePago", &link::DatosClass::DiasDePago)
        .def_readwrite("email", &link::DatosClass::email)
        .def_readwrite("PaginaWeb", &link::DatosClass::PaginaWeb)
        .def_readwrite("Pais", &link::DatosClass::Pais)
        .def_readwrite("EsCriterioCaja", &link::DatosClass::EsCriterioCaja)
        .def_readwrite("OMITIR347", &link::DatosClass::OMITIR347)
        .def_readwrite("OMITIR415", &link::DatosClass::OMITIR415)
        .def_readwrite("Trimestre1_347", &link::DatosClass::Trimestre1_347)
        .def_readwrite("Trimestre2_347", &link::DatosClass::Trimestre2_347)
        .def_readwrite("Trimestre3_347", &link::DatosClass::Trimestre3_347)
        .def_readwrite("Trimestre4_347", &link::DatosClass::Trimestre4_347);
}

}  // namespace

void anadirClases(py::module_& modulo) {
    anadirLineas(modulo);
    anadirResultados(modulo);
    anadirCuentas(modulo);
}

}  // namespace tarvoline::python
