// A WSDL from a stranger; every operation it offers must be callable or say why not.
#include "soap/sobre.h"
#include "soap/wsdl.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    using namespace tarvoline::soap;
    try {
        const auto servicio = LeerWsdl({reinterpret_cast<const char*>(datos), longitud});
        for (const auto& [nombre, operacion] : servicio.operaciones) {
            if (!operacion.motivo.empty()) continue;
            const std::vector<Valor> argumentos(operacion.entrada.size(), Valor{std::int32_t{7}});
            std::string sobre;
            EscribirLlamada(operacion, argumentos, sobre);
        }
    } catch (const ErrorServicio&) {
        return 0;  // the one way to refuse
    }
    return 0;
}
