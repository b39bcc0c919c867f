// A form of the accounting link from a stranger is read or refused. And whatever a client puts into a field,
// whole or cut at a separator, makes a form that is read back as it was sent.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "link/remoto/formas.h"
#include "server/enlace_forma.h"

namespace {

using namespace tarvoline;
using link::remoto::Remite;

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

// What comes back: control characters are no text, and what is all blanks is nothing.
std::string leido(const std::string& valor) {
    const Remite remite{"t", valor, "e"};
    const std::string forma = link::remoto::formaCampos(
        remite, "BUSCAR", {link::remoto::elementoEntero("FILTER", valor), "ARCHIVO=EXTRA"});
    const server::FormaEnlace suya = server::leerForma(forma);
    exigir(suya.operacion == "BUSCAR" && suya.token == "t" && suya.empresa == "e");
    exigir(suya.campo("ARCHIVO") == "EXTRA");
    exigir(suya.carpeta == suya.campo("FILTER"));
    return suya.campo("FILTER");
}

void irYVolver(std::string_view entrada) {
    std::string valor(entrada);
    std::erase_if(valor, [](char c) { return static_cast<unsigned char>(c) < ' '; });
    const std::string una = leido(valor);
    exigir(leido(una) == una);
    const bool ascii = std::ranges::all_of(valor, [](unsigned char c) { return c < 127; });
    const bool nada = valor.find_first_not_of(' ') == std::string::npos;
    exigir(!ascii || una == (nada ? std::string() : valor));
    exigir(link::remoto::formaSimple({"t", "", valor}, "GETTOTAL", "", valor).find('\0') ==
           std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    const std::string_view entrada(reinterpret_cast<const char*>(datos), longitud);
    try {
        const server::FormaEnlace forma = server::leerForma(entrada);
        exigir(!forma.operacion.empty() && forma.documento != nullptr);
    } catch (const server::ErrorForma& error) {
        exigir(*error.what() != '\0');
    }
    constexpr std::size_t largo = 4096;
    irYVolver(entrada.substr(0, std::min(entrada.size(), largo)));
    return 0;
}
