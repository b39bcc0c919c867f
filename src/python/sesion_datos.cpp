// The members of Enlace beside the journal: master data, portfolio, cash basis, budgets, registers, tables.
#include "python/sesion_datos.h"

#include <pybind11/stl.h>

#include <optional>

namespace tarvoline::python {

namespace py = pybind11;

namespace {

using link::CobroFactura;
using link::Enlace;
using py::arg;

// Amounts and codes may come as numbers; None is the default.
std::string comoTexto(const py::object& valor, const char* defecto = "") {
    return valor.is_none() ? std::string(defecto) : std::string(py::str(valor));
}

void crearDatos(Enlace& enlace, std::string cuenta, std::string titulo, std::string nif,
                std::string direccion, std::string cp, std::string municipio, std::string provincia,
                std::string cvp, const py::object& importe347, std::string telefono, std::string fax,
                const py::object& riesgo, std::string tipoIva, std::string notas, bool actualizar,
                std::string pais, std::string vencimientos, std::string diasDePago, std::string email,
                std::string paginaWeb, std::string criterioCaja, std::string omitir347,
                std::string omitir415) {
    enlace.CrearDatos({std::move(cuenta),    std::move(titulo),       std::move(nif),
                       std::move(direccion), std::move(cp),           std::move(municipio),
                       std::move(provincia), std::move(cvp),          comoTexto(importe347, "-1"),
                       std::move(telefono),  std::move(fax),          comoTexto(riesgo, "-1"),
                       std::move(tipoIva),   std::move(notas),        actualizar,
                       std::move(pais),      std::move(vencimientos), std::move(diasDePago),
                       std::move(email),     std::move(paginaWeb),    std::move(criterioCaja),
                       std::move(omitir347), std::move(omitir415)});
}

void anadirMaestros(ClaseEnlace& clase) {
    clase.def(
        "CrearDatos", &crearDatos,
        "Stores master data of an account; \"-1\" leaves a field as it is. With a NIF the global data of "
        "the person, too.",
        arg("Cuenta"), arg("titulo") = "-1", arg("NIF") = "-1", arg("Direccion") = "-1", arg("cp") = "-1",
        arg("Municipio") = "-1", arg("Provincia") = "-1", arg("CVP") = "-1", arg("Importe_347") = "-1",
        arg("Telefono") = "-1", arg("Fax") = "-1", arg("Riesgo") = "-1", arg("TipoIva") = "-1",
        arg("NOTAS") = "-1", arg("Actualizar") = false, arg("Pais") = "-1", arg("Vencimientos") = "-1",
        arg("DiasDePago") = "-1", arg("email") = "-1", arg("PaginaWeb") = "-1", arg("CriterioCaja") = "-1",
        arg("OMITIR347") = "-1", arg("OMITIR415") = "-1");
}

void anadirCartera(ClaseEnlace& clase) {
    clase
        .def("LeerCartera", &Enlace::LeerCartera,
             "Lines of the portfolio that meet the conditions which are not empty.", arg("cartera") = "",
             arg("DesdeFechaVencimiento") = "", arg("HastaFechaVencimiento") = "", arg("Cuenta") = "",
             arg("Asiento") = "")
        .def("MarcarCartera", &Enlace::MarcarCartera, "Sets the mark of such lines.", arg("Marca"),
             arg("cartera"), arg("DesdeFechaVencimiento"), arg("HastaFechaVencimiento"), arg("Cuenta"),
             arg("Asiento"))
        .def("AnularCartera", &Enlace::AnularCartera, "Removes such lines; their entries stay.",
             arg("cartera"), arg("DesdeFechaVencimiento"), arg("HastaFechaVencimiento"), arg("Cuenta"),
             arg("Asiento"));
}

// A collection and a payment take the same arguments under other names.
void anadirCobro(ClaseEnlace& clase, const char* nombre, void (Enlace::*cobrar)(const CobroFactura&),
                 const char* ayuda, const char* tercero, const char* importe, const char* cuenta,
                 const char* fecha) {
    const auto hacer = [cobrar](Enlace& enlace, std::string suTercero, std::string factura,
                                const py::object& suImporte, std::string suCuenta,
                                const py::object& claveOperacion, std::string suFecha,
                                const py::object& medioCobro, std::string descripcionMedio,
                                std::string descripcionAsiento, std::string diario, std::string canal,
                                std::string referencia, std::string notas, std::string archivoImagen,
                                std::string fechaFactura) {
        (enlace.*cobrar)({std::move(suTercero), std::move(factura), comoTexto(suImporte), std::move(suCuenta),
                          comoTexto(claveOperacion), std::move(suFecha), comoTexto(medioCobro),
                          std::move(descripcionMedio), std::move(descripcionAsiento), std::move(diario),
                          std::move(canal), std::move(referencia), std::move(notas), std::move(archivoImagen),
                          std::move(fechaFactura)});
    };
    clase.def(nombre, hacer, ayuda, arg(tercero), arg("Factura"), arg(importe), arg(cuenta),
              arg("CLAVEOPERACION") = "", arg(fecha) = "", arg("MedioCobro") = "",
              arg("DescripcionMedioCobro") = "", arg("DescripcionAsiento") = "", arg("Diario") = "1",
              arg("Canal") = "N", arg("Referencia") = "", arg("NOTAS") = "", arg("ArchivoImagen") = "",
              arg("FechaFactura") = "");
}

void anadirIvaDeCaja(Enlace& enlace, const std::string& cliente, const std::string& factura,
                     const py::object& importe, const py::object& medioCobro,
                     const std::string& descripcionMedio, bool comprobar, const py::object& claveOperacion,
                     const std::string& fecha, const std::string& fechaFactura) {
    enlace.AñadirIvaCriterioCaja(cliente, factura, comoTexto(importe), comoTexto(medioCobro),
                                 descripcionMedio, comprobar, comoTexto(claveOperacion), fecha, fechaFactura);
}

void anadirCaja(ClaseEnlace& clase) {
    clase
        .def("EsCriterioCaja", &Enlace::EsCriterioCaja, "\"1\": the account is on a cash basis; else \"\".",
             arg("Cuenta"))
        .def("TotalPendiente", &Enlace::TotalPendiente, "What is left to be collected of an invoice.",
             arg("Cliente"), arg("Factura"), arg("FechaFactura") = "");
    anadirCobro(clase, "PagoFacturaCriterioCaja", &Enlace::PagoFacturaCriterioCaja,
                "Posts the payment of a supplier's invoice, with its rows in the book of invoices.",
                "Proveedor", "ImportePago", "CuentaContablePago", "fechapago");
    anadirCobro(clase, "CobroFacturaCriterioCaja", &Enlace::CobroFacturaCriterioCaja,
                "Posts the collection of a customer's invoice, with its rows in the book of invoices.",
                "Cliente", "ImporteCobro", "CuentaContableCobro", "FechaCobro");
    for (const char* nombre : {"AñadirIvaCriterioCaja", "AddVATCashBased"}) {
        clase.def(nombre, &anadirIvaDeCaja, "The rows of a collection alone.", arg("Cliente"), arg("Factura"),
                  arg("ImporteCobro"), arg("MedioCobro"), arg("DescripcionMedioCobro"),
                  arg("ComprobarCobros"), arg("CLAVEOPERACION"), arg("FechaCobro"), arg("FechaFactura") = "");
    }
}

void anadirRegistrosDe(ClaseEnlace& clase) {
    clase
        .def("CrearPresupuesto", &Enlace::CrearPresupuesto,
             "Makes the budget of an account, or changes its title and level.", arg("Cuenta"), arg("titulo"),
             arg("Nivel") = "0", arg("Analitica") = false)
        .def("ModificarPresupuesto", &Enlace::ModificarPresupuesto, "Sets a month, 1 to 12.", arg("Cuenta"),
             arg("Mes"), arg("Importe"))
        .def("LeerInmovilizado", &Enlace::LeerInmovilizado, "Fixed assets, into inmovilizado; how many.",
             arg("Codigo") = "")
        .def("CrearInmovilizado", &Enlace::CrearInmovilizado, arg("DatosInm"))
        .def("LeerDatosGlobales", &Enlace::LeerDatosGlobales, "Persons, into DatosGlobales; how many.",
             arg("NIF") = "")
        .def("CrearDatosGloblales", &Enlace::CrearDatosGloblales,
             "Makes a person, or with G66_Actualizar changes the one that there is.", arg("DatosGlob"))
        .def("ExisteNifDatosGlobales", &Enlace::ExisteNifDatosGlobales, arg("NIF"));
}

py::object guid(Enlace& enlace, const std::string& asiento, const std::optional<std::string>& valor) {
    if (!valor) return py::str(enlace.GUID(asiento));
    enlace.GUID(asiento, *valor);
    return py::none();
}

void anadirTablas(ClaseEnlace& clase) {
    clase.def_static("Util_TextoToArray", &Enlace::Util_TextoToArray, arg("Txt"))
        .def("Util_LeerTablas", &Enlace::Util_LeerTablas, "Name, tab and title of each table.")
        .def("Util_LeerCampos", &Enlace::Util_LeerCampos,
             "Title, position, type code and width of each field of a table.", arg("tabla"))
        .def("Util_LeerDatos", &Enlace::Util_LeerDatos, "Rows of a table of the company.", arg("tabla"),
             arg("CampoTabla") = "", arg("Valor") = "", arg("Filtro") = "")
        .def("GUID", &guid, "Identifier of an entry; with a value stores it, \"\" makes a new one.",
             arg("Asiento"), arg("Valor") = py::none())
        .def("LeerFechasAsiento", &Enlace::LeerFechasAsiento, arg("Asiento"))
        .def("LeerAsientosGuid", &Enlace::LeerAsientosGuid, arg("Guid"));
}

}  // namespace

void anadirDatos(ClaseEnlace& clase) {
    anadirMaestros(clase);
    anadirCartera(clase);
    anadirCaja(clase);
    anadirRegistrosDe(clase);
    anadirTablas(clase);
}

}  // namespace tarvoline::python
