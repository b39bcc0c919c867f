// A filter and a record from a stranger: the filter is refused or understood, and a row that it lets through
// is one that its key finds. Input: the text of the filter, a line feed, the record.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "data/claves_tabla.h"
#include "data/codec.h"
#include "data/filtro.h"
#include "platform/arbol_ajustes.h"

namespace {

using namespace tarvoline;

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

data::CampoTabla campo(const char* nombre, int tipo, int ancho, int posicion) {
    data::CampoTabla uno;
    uno.nombre = nombre;
    uno.tipo = tipo;
    uno.ancho = ancho;
    uno.posicion = posicion;
    return uno;
}

data::DefinicionTabla componer() {
    data::DefinicionTabla definicion;
    definicion.titulo = "LINEAS";
    definicion.campos = {{},
                         campo("FECHA", 5, 6, 1),
                         campo("CUENTA", 0, 10, 2),
                         campo("S/R", 0, 1, 3),
                         campo("IMPORTE", 3, 12, 4),
                         campo("NUMERO", 4, 8, 5),
                         campo("CAMBIO", 2, 8, 6)};
    definicion.gNumeroCampos = static_cast<int>(definicion.campos.size()) - 1;
    definicion.claves[1] = {{1, 1, 6}, {2, 1, 10}};
    definicion.claves[2] = {{2, 2, 4}};
    definicion.claves[3] = {{3, 1, 1}, {2, 1, 10}};
    definicion.numeroClaves = 3;
    return data::interpretarDefinicion(data::componerDefinicion(definicion));
}

struct Mundo {
    std::unique_ptr<platform::SistemaArchivos> archivos = platform::crearSistemaArchivos();
    std::unique_ptr<platform::ArbolAjustes> arbol = platform::crearArbolAjustes(*archivos, "no/ajustes.ini");
    core::Ajustes ajustes{*arbol};
    core::Carpetas carpetas{*archivos, ajustes, "no"};
    std::unique_ptr<platform::Reloj> reloj = platform::crearReloj();
    data::CapaDatos capa{*archivos, ajustes, carpetas, *reloj};
    const data::DefinicionTabla definicion = componer();
};

void probar(const Mundo& mundo, std::string_view texto, std::string registro) {
    registro.resize(static_cast<std::size_t>(mundo.definicion.gLongitudRegistro), ' ');
    const data::Filtro filtro(mundo.capa, mundo.definicion, data::interpretarFiltro(texto));
    if (!filtro.cumple(registro) || !filtro.llave()) return;
    std::vector<std::string> campos(mundo.definicion.campos.size());
    data::descifrarRegistro(mundo.definicion, registro, campos);
    std::string clave;
    data::anadirClave(mundo.definicion, filtro.llave()->clave, campos, clave);
    exigir(clave == filtro.llave()->texto || registro.find('\0') != std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    static const Mundo mundo;
    const std::string_view entrada(reinterpret_cast<const char*>(datos), longitud);
    const std::size_t fin = std::min(entrada.find('\n'), entrada.size());
    const std::string_view registro = entrada.substr(std::min(fin + 1, entrada.size()));
    try {
        probar(mundo, entrada.substr(0, fin), std::string(registro));
    } catch (const data::ErrorFiltro&) {
        return 0;  // refused, as it may be
    }
    return 0;
}
