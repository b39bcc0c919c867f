#include "python/modulo.h"

#include "platform/archivos.h"
#include "soap/valores.h"
#include "tarvoline/error_enlace.h"

namespace py = pybind11;

namespace tarvoline::python {

namespace {

constexpr const char* claseError = "ErrorEnlace";

// The exception with number, source and text as attributes; its text is the description.
void lanzarErrorEnlace(const link::ErrorEnlace& error) {
    const py::object clase = py::module_::import("enlace").attr(claseError);
    const py::object lanzado = clase(error.descripcion());
    lanzado.attr("numero") = error.numero();
    lanzado.attr("fuente") = error.fuente();
    lanzado.attr("descripcion") = error.descripcion();
    PyErr_SetObject(clase.ptr(), lanzado.ptr());
}

}  // namespace

void anadirErrores(py::module_& modulo) {
    const auto clase = py::reinterpret_steal<py::object>(PyErr_NewExceptionWithDoc(
        "enlace.ErrorEnlace",
        "What the link raises: numero (unsigned, with the object base 0x80040000 where it "
        "applies), fuente, descripcion (a Spanish text for the user).",
        PyExc_RuntimeError, nullptr));
    modulo.attr(claseError) = clase;
    // The library's own form of the argument.
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    py::register_exception_translator([](std::exception_ptr lanzada) {
        try {
            if (lanzada) std::rethrow_exception(lanzada);
        } catch (const link::ErrorEnlace& error) {
            lanzarErrorEnlace(error);
        } catch (const platform::ErrorArchivo& error) {
            PyErr_SetString(PyExc_OSError, (error.ruta() + ": " + error.what()).c_str());
        } catch (const soap::ErrorServicio& error) {
            PyErr_SetString(PyExc_ConnectionError, error.what());
        }
    });
}

}  // namespace tarvoline::python

PYBIND11_MODULE(enlace, modulo) {
    modulo.doc() =
        "The accounting link: a session on one company, which posts, reads and annuls its entries.\n\n"
        "    import enlace\n"
        "    sesion = enlace.Enlace()\n"
        "    sesion.AbrirEmpresa('Emp01')\n"
        "    sesion.Fecha = '31/12/25'\n"
        "    sesion.Número = ''\n"
        "    sesion.AñadirApunte('5700000000', 'Venta', TIPO=1, Importe=100)\n"
        "    sesion.AñadirApunte('7000000000', 'Venta', TIPO=2, Importe=100)\n"
        "    sesion.GrabarAsiento()\n\n"
        "Failures raise ErrorEnlace, those of the file system OSError, those of the line to the service "
        "RuntimeError. Boxes go to standard error, prompts are answered as cancelled. One thread.";
    tarvoline::python::anadirErrores(modulo);
    tarvoline::python::anadirClases(modulo);
    tarvoline::python::anadirRegistros(modulo);
    tarvoline::python::anadirSesion(modulo);
}
