// A reply from a stranger, read for an operation with one argument of each kind.
#include "soap/sobre.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    using namespace tarvoline::soap;
    const std::string_view xml(reinterpret_cast<const char*>(datos), longitud);
    OperacionWsdl operacion;
    operacion.nombre = "Restore";
    operacion.envolturaRespuesta = "RestoreResponse";
    operacion.entrada = {{"nombre", "", "string"}, {"posicion", "", "int"}, {"bytes", "", "base64Binary"}};
    std::vector<Valor> argumentos{std::string{}, std::int32_t{0}, Bytes{}};
    const auto fallo = LeerFallo(xml);
    try {
        LeerRespuesta(operacion, xml, argumentos);
        if (fallo) __builtin_trap();  // a fault is never a result
    } catch (const ErrorServicio&) {
        return 0;  // the one way to refuse
    }
    return 0;
}
