// A request as a stranger sends it to the service; what was read must also be answerable.
#include "soap/servidor.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    using namespace tarvoline::soap;
    static const Contrato contrato{"S",
                                   "urn:s",
                                   {{"DTS", {}},
                                    {"Backup",
                                     {{"nombre", TipoValor::texto, true},
                                      {"bytes", TipoValor::bytes, true},
                                      {"posicion", TipoValor::entero, true}}}}};
    try {
        const auto peticion = LeerPeticion(contrato, {reinterpret_cast<const char*>(datos), longitud});
        const auto respuesta = EscribirRespuesta(contrato, peticion, "hecho");
        if (respuesta.empty() || peticion.argumentos.size() != peticion.operacion->parametros.size()) {
            __builtin_trap();
        }
    } catch (const ErrorServicio&) {
        return 0;  // the one way to refuse
    }
    return 0;
}
