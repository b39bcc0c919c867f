#include <pybind11/stl.h>

#include "python/modulo.h"
#include "python/sesion_datos.h"

namespace py = pybind11;

namespace tarvoline::python {

namespace {

using link::Contexto;
using link::Enlace;
using Clase = ClaseEnlace;
using py::arg;

// Sessions made without a context share one, which the module keeps.
constexpr const char* contextoDelModulo = "_contexto";

std::shared_ptr<Contexto> contextoOSuyo(std::shared_ptr<Contexto> dado) {
    if (dado) return dado;
    const py::module_ modulo = py::module_::import("enlace");
    if (!py::hasattr(modulo, contextoDelModulo))
        modulo.attr(contextoDelModulo) = std::make_shared<Contexto>();
    return modulo.attr(contextoDelModulo).cast<std::shared_ptr<Contexto>>();
}

// A session keeps its context as long as Python holds it, also while the interpreter takes its modules apart.
struct Sostenida {
    explicit Sostenida(std::shared_ptr<Contexto> suyo) : contexto(std::move(suyo)), enlace(*contexto) {}
    std::shared_ptr<Contexto> contexto;
    Enlace enlace;
};

std::shared_ptr<Enlace> crear(std::shared_ptr<Contexto> contexto) {
    const auto sostenida = std::make_shared<Sostenida>(contextoOSuyo(std::move(contexto)));
    return {sostenida, &sostenida->enlace};
}

// An entry's lines: the Spanish name and its English twin take the same arguments.
void anadirLineas(Clase& clase) {
    for (const char* nombre : {"AñadirApunte", "AddEntry"}) {
        clase.def(nombre, &Enlace::AñadirApunte, "Adds a line to the entry.", arg("Cuenta"),
                  arg("Descripción"), arg("TIPO"), arg("Importe"), arg("Diario") = "1", arg("Punteo") = 0,
                  arg("Canal") = "N", arg("Referencia") = "", arg("NOTAS") = "", arg("ArchivoImagen") = "");
    }
    for (const char* nombre : {"AñadirAnalitica", "AddCostCenter"}) {
        clase.def(nombre, &Enlace::AñadirAnalitica,
                  "Divides a line of the entry; TIPO and what follows Importe count "
                  "for nothing.",
                  arg("CuentaContable"), arg("CuentaAnalitica"), arg("Descripción"), arg("TIPO"),
                  arg("Importe"), arg("Diario") = "", arg("Punteo") = 0, arg("Canal") = "");
    }
    for (const char* nombre : {"AñadirCartera", "AddPortfolio"}) {
        clase.def(nombre, &Enlace::AñadirCartera, "Adds a line of the portfolio to the entry.",
                  arg("FechaVencimiento"), arg("Cuenta"), arg("cartera"), arg("NOTAS"), arg("Importe"),
                  arg("FechaApunte") = "", arg("Marca") = "");
    }
    using ConTodo = std::shared_ptr<link::IVAClass> (Enlace::*)(
        std::string_view, std::string_view, std::string_view, std::string_view, std::string_view,
        std::string_view, double, double, int, std::string_view, std::string_view, std::string_view,
        std::string_view, std::string_view, std::string_view, double, std::string_view, std::string_view,
        std::string_view, std::string_view, std::string_view, std::string_view, std::string_view);
    clase.def("AñadirIVA", static_cast<ConTodo>(&Enlace::AñadirIVA), "Adds a line of VAT to the entry.",
              arg("CuentaClienteProveedor"), arg("CuentaIVA"), arg("Factura"), arg("FechaFactura"),
              arg("TipoIva"), arg("SRTC"), arg("Base"), arg("TOTAL"), arg("Prorata") = 0, arg("titulo") = "",
              arg("NIF") = "", arg("NumeroOrden") = "", arg("CLAVEOPERACION") = "", arg("Referencia") = "",
              arg("SerieFacturas") = "", arg("PorcRetencion") = 0.0, arg("RegimenEspecial") = "",
              arg("CodigoSII") = "", arg("DescripcionSII") = "", arg("Id_SII") = "",
              arg("Factura60Caracteres") = "", arg("NoFacturaRectificativa_DUA") = "",
              arg("PeriodoPresentacion") = "0");
    clase.def("AddVAT", &Enlace::AddVAT, "AñadirIVA without the immediate supply of information.",
              arg("CuentaClienteProveedor"), arg("CuentaIVA"), arg("Factura"), arg("FechaFactura"),
              arg("TipoIva"), arg("SRTC"), arg("Base"), arg("TOTAL"), arg("Prorata") = 0, arg("titulo") = "",
              arg("NIF") = "", arg("NumeroOrden") = "", arg("CLAVEOPERACION") = "", arg("Referencia") = "",
              arg("SerieFacturas") = "", arg("PorcRetencion") = 0.0, arg("RegimenEspecial") = "");
}

// A property from the two overloads of a member, the one that gives and the one that takes.
template <typename Da>
void anadirTexto(Clase& clase, const char* nombre, Da (Enlace::*da)() const,
                 void (Enlace::*toma)(std::string_view), const char* ayuda) {
    clase.def_property(
        nombre, [da](const Enlace& enlace) { return std::string((enlace.*da)()); },
        [toma](Enlace& enlace, const std::string& valor) { (enlace.*toma)(valor); }, ayuda);
}

void anadirPropiedades(Clase& clase) {
    anadirTexto<std::string>(clase, "Fecha", &Enlace::Fecha, &Enlace::Fecha,
                             "Date of the entry: out \"yymmdd\", in also \"dd/mm/yy\" and \"dd/mm/yyyy\".");
    for (const char* nombre : {"Número", "Number"}) {
        anadirTexto<const std::string&>(clase, nombre, &Enlace::Número, &Enlace::Número,
                                        "Number of the entry; \"\" takes the next one of the company.");
    }
    anadirTexto<std::string>(clase, "Canal", &Enlace::Canal, &Enlace::Canal,
                             "Channel of the session, three digits.");
    anadirTexto<const std::string&>(clase, "Carpeta", &Enlace::Carpeta, &Enlace::Carpeta,
                                    "Folder of companies at the service; \"\" that of the user.");
    anadirTexto<const std::string&>(clase, "Usuario", &Enlace::Usuario, &Enlace::Usuario,
                                    "User that entries are posted under, two digits.");
    anadirTexto<const std::string&>(clase, "Moneda", &Enlace::Moneda, &Enlace::Moneda,
                                    "Code of the currency of the amounts; \"\" the base currency.");
    clase.def_property("CambioMoneda", py::overload_cast<>(&Enlace::CambioMoneda, py::const_),
                       py::overload_cast<double>(&Enlace::CambioMoneda),
                       "Units of the base currency for one of the currency.");
    clase.def_property_readonly("Empresas", &Enlace::Empresas, "Full paths of the companies found.")
        .def_property_readonly("ModoRemoto", &Enlace::ModoRemoto,
                               "Whether the session goes through the service.")
        .def_property_readonly("Empresa", &Enlace::Empresa, "Path of the company.")
        .def_property_readonly("NumeroEmpresa", &Enlace::NumeroEmpresa, "Its number; \"\" when none is open.")
        .def_property_readonly("MesInicioEjercicio", &Enlace::MesInicioEjercicio,
                               "First month of the accounting year, two digits.")
        .def_property_readonly("HayPendientes", &Enlace::HayPendientes, "Whether an entry has been begun.");
}

void crearEmpresa(Enlace& enlace, std::string nombre, std::string año, std::string niveles,
                  std::string auxiliares, std::string moneda, std::string mes, std::string plan,
                  std::string ivaIgic) {
    enlace.CrearEmpresa({std::move(nombre), std::move(año), std::move(niveles), std::move(auxiliares),
                         std::move(moneda), std::move(mes), std::move(plan), std::move(ivaIgic)});
}

py::object config(Enlace& enlace, const std::string& nombre, const std::optional<std::string>& valor) {
    if (!valor) return py::str(enlace.Config(nombre));
    enlace.Config(nombre, *valor);
    return py::none();
}

void anadirEmpresa(Clase& clase) {
    clase.def_static("Version", &Enlace::Version)
        .def("Login", &Enlace::Login,
             "Goes over to the accounting service at this address; companies are names there.",
             arg("Usuario"), arg("Password"), arg("ip"))
        .def("LeerCarpetas", &Enlace::LeerCarpetas, "Folders of companies that the user may open.")
        .def("LoadEmpresas", &Enlace::LoadEmpresas, "Refills Empresas.")
        .def("AbrirEmpresa", &Enlace::AbrirEmpresa,
             "Opens a company by path, or by name in the data directory; \"\" the product's last one.",
             arg("Empresa") = "", arg("Password") = "")
        .def("CerrarEmpresa", &Enlace::CerrarEmpresa)
        .def("CrearEmpresa", &crearEmpresa, "Creates a company, which is not open afterwards.",
             arg("NombreEmpresa"), arg("año") = "", arg("Niveles") = "", arg("Auxiliares") = "",
             arg("MonedaBase") = "", arg("MesApertura") = "", arg("PlanContablePorDefecto") = "",
             arg("IvaIgic") = "")
        .def("año", &Enlace::año, "Calendar year of a month of the accounting year.", arg("Mes"))
        .def("year", &Enlace::year, arg("Mes"))
        .def("EmpresaAñoAnterior", &Enlace::EmpresaAñoAnterior,
             "Path of the company of the year before, or \"\".")
        .def("PreviousYearCompany", &Enlace::PreviousYearCompany)
        .def("MASTER", &Enlace::MASTER, arg("funcion"), arg("codigo"))
        .def("Config", &config, "A named value of the company; with a value writes it.", arg("Descripcion"),
             arg("Valor") = py::none());
}

// What a member gives back through an argument comes beside its result.
template <typename... Resto>
auto conCuenta(bool (Enlace::*crear)(std::string&, Resto...)) {
    return [crear](Enlace& enlace, std::string cuenta, std::decay_t<Resto>... resto) {
        const bool hecha = (enlace.*crear)(cuenta, resto...);
        return py::make_tuple(hecha, cuenta);
    };
}

void anadirOperaciones(Clase& clase) {
    clase.def("LimpiarPendientes", &Enlace::LimpiarPendientes)
        .def("GrabarAsiento", &Enlace::GrabarAsiento, "Stores the entry.")
        .def(
            "CalcularMoneda",
            [](Enlace& enlace, double importe) {
                const auto valores = enlace.CalcularMoneda(importe);
                return py::make_tuple(valores.ValorEnEuros, valores.ValorEnPesetas);
            },
            "(in the second currency, in the base currency)", arg("ImporteEntrada"))
        .def("AnularAsiento", &Enlace::AnularAsiento, arg("Fecha"), arg("NúmeroAsiento"))
        .def("AnularApuntePorReferencia", &Enlace::AnularApuntePorReferencia, arg("Referencia"),
             arg("IncluirIva") = false, arg("IncluirAnalitica") = false)
        .def("AnularApuntePorRegistro", &Enlace::AnularApuntePorRegistro, arg("REGISTRO"),
             arg("IncluirAnalitica") = false)
        .def("AnularCuenta", &Enlace::AnularCuenta, arg("Cuenta"))
        .def("CrearCuenta", conCuenta(&Enlace::CrearCuenta), "(made, account)", arg("Cuenta"), arg("titulo"),
             arg("Nivel") = "0", arg("IsAnalitica") = false, arg("NIF") = "-1")
        .def("CrearAnalitica", conCuenta(&Enlace::CrearAnalitica), "(made, account)", arg("Cuenta"),
             arg("titulo"), arg("Nivel") = "0")
        .def("CrearAlterna", conCuenta(&Enlace::CrearAlterna), "(made, account)", arg("Cuenta"),
             arg("titulo"), arg("Nivel") = "0")
        .def_static("ValTIVA", &Enlace::ValTIVA, arg("Des"))
        .def("tiposiva", &Enlace::tiposiva, "The rate of this number.", arg("Index"));
}

void anadirLecturas(Clase& clase) {
    clase
        .def("LeerAsiento", &Enlace::LeerAsiento, "Reads an entry into the pending collections.",
             arg("Fecha") = "", arg("Asiento") = "")
        .def("LeerProximoAsiento", &Enlace::LeerProximoAsiento)
        .def("LeerAnteriorAsiento", &Enlace::LeerAnteriorAsiento)
        .def("LeerPrimerAsiento", &Enlace::LeerPrimerAsiento)
        .def("LeerUltimoAsiento", &Enlace::LeerUltimoAsiento)
        .def("LeerReferencia", &Enlace::LeerReferencia, arg("Referencia"))
        .def("BuscarReferencia", &Enlace::BuscarReferencia, arg("Referencia"),
             arg("MayusculasMinusculas") = false)
        .def("BuscarDescripcion", &Enlace::BuscarDescripcion, arg("Descripcion"),
             arg("MayusculasMinusculas") = false)
        .def("BuscarImporte", &Enlace::BuscarImporte, arg("Importe"))
        .def("ExisteReferencia", &Enlace::ExisteReferencia, arg("Referencia"))
        .def("ExisteIva", &Enlace::ExisteIva, arg("Referencia"))
        .def("LeerExtracto", &Enlace::LeerExtracto, "A statement, into Extracto.", arg("Cuenta"),
             arg("DesdeFecha") = "", arg("HastaFecha") = "", arg("Archivo") = 2)
        .def("LeerExtractoEx", &Enlace::LeerExtractoEx, "A statement as a text of tab-separated lines.",
             arg("Cuenta"), arg("DesdeFecha") = "", arg("HastaFecha") = "")
        .def("LeerPlan", &Enlace::LeerPlan, "Accounts, into Plan.", arg("Cuenta") = "", arg("Nivel") = "",
             arg("titulo") = "")
        .def("LeerPlanEx", &Enlace::LeerPlanEx, "Accounts of a chart, into Plan; how many.", arg("Fi"),
             arg("Cuenta") = "", arg("Nivel") = "", arg("titulo") = "", arg("HastaCuenta") = "",
             arg("Siguiente_1_Anterior_2") = 0)
        .def("LeerDatos", &Enlace::LeerDatos, "Master data of accounts, into DATOS; how many.",
             arg("Cuenta") = "", arg("titulo") = "")
        .def("PlanDebe", &Enlace::PlanDebe, arg("Index"), arg("Mes"))
        .def("PlanHaber", &Enlace::PlanHaber, arg("Index"), arg("Mes"));
}

void anadirResultados(Clase& clase) {
    clase.def("ContadorApuntes", &Enlace::ContadorApuntes)
        .def("ContadorAnalitica", &Enlace::ContadorAnalitica)
        .def("ContadorIva", &Enlace::ContadorIva)
        .def("ContadorCartera", &Enlace::ContadorCartera)
        .def("ContadorExtracto", &Enlace::ContadorExtracto)
        .def("ContadorPlan", &Enlace::ContadorPlan)
        .def("ContadorDatos", &Enlace::ContadorDatos)
        .def("ContadorDatosGlobal", &Enlace::ContadorDatosGlobal)
        .def("ContadorInmovilizado", &Enlace::ContadorInmovilizado)
        .def("Apunte", &Enlace::Apunte, arg("Index"))
        .def("Analitica", &Enlace::Analitica, arg("Index"))
        .def("iva", &Enlace::iva, arg("Index"))
        .def("cartera", &Enlace::cartera, arg("Index"))
        .def("Extracto", &Enlace::Extracto, arg("Index"))
        .def("Plan", &Enlace::Plan, arg("Index"))
        .def("DATOS", &Enlace::DATOS, arg("Index"))
        .def("DatosGlobales", &Enlace::DatosGlobales, arg("Index"))
        .def("inmovilizado", &Enlace::inmovilizado, arg("Index"));
}

}  // namespace

void anadirSesion(py::module_& modulo) {
    py::class_<Contexto, std::shared_ptr<Contexto>>(
        modulo, "Contexto",
        "What the sessions of a process share: settings, folders, the record layer, the currency.")
        .def(py::init<>());
    Clase clase(modulo, "Enlace", "A session on one company.");
    clase.def(py::init(&crear), arg("contexto") = nullptr);
    anadirEmpresa(clase);
    anadirPropiedades(clase);
    anadirLineas(clase);
    anadirOperaciones(clase);
    anadirLecturas(clase);
    anadirDatos(clase);
    anadirResultados(clase);
}

}  // namespace tarvoline::python
