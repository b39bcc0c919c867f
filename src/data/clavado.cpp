#include "data/clavado.h"

#include <limits>

#include "data/claves_tabla.h"
#include "motor/carga.h"

namespace tarvoline::data {

namespace {

constexpr std::int64_t lugaresPorLote = 4096;

}  // namespace

std::int64_t clavarRegistros(const DefinicionTabla& definicion, std::int64_t lugares, const LeerBytes& leer,
                             motor::ArchivoClaves& claves, const Progreso& progreso) {
    if (lugares > std::numeric_limits<std::int32_t>::max()) {
        throw motor::ErrorMotor("la tabla tiene más registros que números");
    }
    std::vector<std::string> campos(definicion.campos.size());
    motor::LoteEntradas lote(static_cast<std::size_t>(definicion.numeroClaves));
    std::string texto;
    std::int64_t vivos = 0;
    recorrerLugares(definicion, 1, lugares, leer, [&](const RegistroLeido& registro) {
        const auto numero = static_cast<std::uint32_t>(registro.numero);
        if (registro.estado == EstadoRegistro::vivo) {
            ++vivos;
            descifrarRegistro(definicion, registro.bytes, campos);
            for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
                texto.clear();
                anadirClave(definicion, clave, campos, texto);
                lote[static_cast<std::size_t>(clave - 1)].push_back({texto, numero});
            }
        }
        if (registro.numero % lugaresPorLote != 0 && registro.numero != lugares) return;
        motor::cargarLote(claves, lote, numero);
        if (progreso) progreso(numero, static_cast<std::uint64_t>(lugares));
    });
    return vivos;
}

}  // namespace tarvoline::data
