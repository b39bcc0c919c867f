// A company file from a stranger: every name reads to something, what is written by name comes back, and what
// stands beside it stays. The first byte chooses the name to write, the next eight are its value; the rest is
// the file.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "apoyo/ajustes_memoria.h"
#include "apoyo/archivos_memoria.h"
#include "apoyo/reloj_fijo.h"
#include "data/cabecera_empresa.h"
#include "data/capa_datos.h"
#include "data/seccion_textos.h"
#include "data/vista_nombrada.h"

namespace {

using namespace tarvoline;

constexpr std::string_view ruta = "/datos/X.QZT";
constexpr std::size_t bytesOrden = 9;

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

struct Mundo {
    Mundo() {
        capa.reintentosEmpresa = {2, std::chrono::milliseconds(0)};
        capa.alAvisar = [](std::string_view) {};
        capa.alMostrar = [](const core::Caja&) {};
        capa.enVigor.gEmpresaActual = "01";
        capa.enVigor.gArchivoEmpresa = ruta;
        capa.enVigor.gDirectorioEmpresa = "/datos/";
    }
    pruebas::ArchivosMemoria archivos;
    pruebas::AjustesMemoria arbol;
    core::Ajustes ajustes{arbol};
    core::Carpetas carpetas{archivos, ajustes, "/temporal"};
    pruebas::RelojFijo reloj;
    data::CapaDatos capa{archivos, ajustes, carpetas, reloj};
};

// A text by name goes into its own bytes and comes back without what does not fit.
void escribirTexto(Mundo& mundo, const data::CampoNombrado& campo, const std::string& valor) {
    data::VistaNombrada vista(mundo.capa);
    const auto antes = platform::leerTodo(mundo.archivos, ruta);
    vista.PutTotal(campo.nombre, valor);
    const auto despues = platform::leerTodo(mundo.archivos, ruta);
    exigir(despues.size() >= antes.size());
    for (std::size_t i = 0; i < antes.size(); ++i) {
        const bool propio = i + 1 >= campo.posicion && i + 1 < campo.posicion + campo.longitud;
        exigir(propio || antes[i] == despues[i]);
    }
    const auto texto = vista.GetTotal(campo.nombre);
    exigir(valor.empty() || texto.substr(0, 1) == valor.substr(0, 1));
}

// A line of the text section is replaced or added; the head stays.
void escribirLinea(Mundo& mundo, const std::string& valor) {
    data::SeccionTextos seccion(mundo.capa);
    const auto antes = platform::leerTodo(mundo.archivos, ruta);
    seccion.PUT_TOTAL("TVUSER", valor);
    const auto despues = platform::leerTodo(mundo.archivos, ruta);
    const auto cabeza = std::min<std::size_t>(antes.size(), data::desplazamientoTextos);
    exigir(antes.substr(0, cabeza) == despues.substr(0, cabeza));
    exigir(despues.find('\x1A', data::desplazamientoTextos) != std::string::npos);
    seccion.PUT_TOTAL("TVUSER", valor);
    exigir(platform::leerTodo(mundo.archivos, ruta) == despues);  // writing it again changes nothing
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    if (longitud < bytesOrden) return 0;
    Mundo mundo;
    const std::string_view bytes(reinterpret_cast<const char*>(datos), longitud);
    mundo.archivos.sembrar(ruta, bytes.substr(bytesOrden));
    data::VistaNombrada vista(mundo.capa);
    const auto campos = data::camposNombrados();
    for (const auto& campo : campos)
        vista.GetTotal(campo.nombre);
    vista.GetTotal("TVUSER");

    std::string valor;
    for (const char c : bytes.substr(1, bytesOrden - 1))
        valor += static_cast<char>('!' + (c & 63));
    const auto cual = datos[0] % (campos.size() + 1);
    if (cual == campos.size()) {
        escribirLinea(mundo, valor);
    } else if (campos[cual].tipo == data::TipoNombrado::texto) {
        escribirTexto(mundo, campos[cual], valor);
    } else {
        vista.PutTotal(campos[cual].nombre, valor);
    }
    return 0;
}
