// An answer of the accounting service from a stranger: it is read as an entry and as rows of a table, or
// refused with an error of the link. What has been read is an entry, with amounts that are numbers.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "link/remoto/filas_remotas.h"
#include "link/remoto/lector_asientos.h"
#include "platform/arbol_ajustes.h"

namespace {

using namespace tarvoline;

struct Mundo {
    std::unique_ptr<platform::SistemaArchivos> archivos = platform::crearSistemaArchivos();
    std::unique_ptr<platform::ArbolAjustes> arbol = platform::crearArbolAjustes(*archivos, "no/ajustes.ini");
    core::Ajustes ajustes{*arbol};
    core::Carpetas carpetas{*archivos, ajustes, "no"};
    std::unique_ptr<platform::Reloj> reloj = platform::crearReloj();
    link::Contexto contexto{*archivos, ajustes, carpetas, *reloj};
    const link::Sesion sesion{contexto.interior(), {}};
};

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

void leerEntrada(const link::Sesion& sesion, std::string_view respuesta) {
    const link::remoto::AsientoLeido leido = link::remoto::leerAsiento(sesion, respuesta);
    constexpr std::size_t guardada = 6;
    exigir(leido.fecha.empty() || leido.fecha.size() == guardada);
    const link::Pendientes& lineas = leido.lineas;
    exigir(leido.hay || !lineas.hayLineas());
    for (const auto& linea : lineas.apuntes)
        exigir(std::isfinite(linea->Importe));
    for (const auto& linea : lineas.ivas)
        exigir(std::isfinite(linea->Base) && std::isfinite(linea->TOTAL));
}

void leerFilas(const link::Sesion& sesion, std::string_view respuesta) {
    namespace remoto = link::remoto;
    const remoto::TablaRespuesta tabla(respuesta);
    for (std::size_t i = 0; i < tabla.filas(); ++i) {
        exigir(remoto::planDe(tabla, i).coldebe.size() == remoto::planDe(tabla, i).colhaber.size());
        exigir(std::isfinite(remoto::datosDe(tabla, i).Riesgo));
        exigir(std::isfinite(remoto::carteraDe(sesion, tabla, i).Importe));
        const link::ExtractoClass linea = remoto::lineaDe(sesion, tabla, i);
        exigir(linea.Debe + linea.Haber == linea.Importe);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    static const Mundo mundo;
    const std::string_view respuesta(reinterpret_cast<const char*>(datos), longitud);
    try {
        leerEntrada(mundo.sesion, respuesta);
    } catch (const link::ErrorEnlace& error) {
        exigir(error.numero() != 0);
    }
    try {
        leerFilas(mundo.sesion, respuesta);
    } catch (const link::ErrorEnlace& error) {
        exigir(error.numero() != 0);
    }
    return 0;
}
