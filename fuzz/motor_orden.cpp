// Commands from a stranger, one a line, on a table of two keys: each answers one of its statuses, and the key
// file stays sound.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>
#include <string>

#include "apoyo/archivos_memoria.h"
#include "motor/motor_indexados.h"
#include "motor/revision.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    using namespace tarvoline;
    pruebas::ArchivosMemoria archivos;
    motor::MotorIndexados motorIndexados(archivos);
    std::int32_t registro = 0;
    std::int16_t estado = 0;
    std::string comando = "/C/A.QZC/ 12/ 2/A/ 1";
    motorIndexados.Ejecutar(comando, registro, estado);
    std::istringstream lineas(std::string(reinterpret_cast<const char*>(datos), longitud));
    constexpr std::array<int, 10> posibles{0, 1, 2, 9, 12, 13, 15, 23, 26, 29};
    while (std::getline(lineas, comando)) {
        const std::string enviado = comando;
        motorIndexados.Ejecutar(comando, registro, estado);
        const bool sabido = std::find(posibles.begin(), posibles.end(), estado) != posibles.end();
        if (!sabido || comando != enviado) std::abort();
    }
    for (unsigned tabla = 0; tabla < motor::maxTablas; ++tabla) {
        if (!motorIndexados.abierta(tabla)) continue;
        if (!motor::revisar(motorIndexados.archivo(tabla)).fallo.empty()) std::abort();
    }
    return 0;
}
