// A key file from a stranger, or from a bad disk: every command must answer one of its statuses or fail as
// the engine fails. An input of odd length has its check sums put right first, so that what they would keep
// out gets in.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <string>

#include "apoyo/archivos_memoria.h"
#include "motor/cabecera.h"
#include "motor/motor_indexados.h"
#include "motor/revision.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::motor;

void enderezar(std::string& bytes) {
    auto* const datos = reinterpret_cast<Octeto*>(bytes.data());
    std::uint64_t archivo = 0;
    for (unsigned lugar = 0; lugar < 2; ++lugar) {
        const std::size_t nucleo = posicionDeNucleo(lugar);
        if (bytes.size() < nucleo + bytesNucleo) return;
        archivo = leerEntero<std::uint64_t>(datos + nucleo + 16);
        Cabecera cabecera;
        cabecera.marca = std::max(primeraPagina, leerEntero<std::uint32_t>(datos + nucleo + 36));
        cabecera.tramos = leerEntero<std::uint32_t>(datos + nucleo + 56);
        const std::size_t huecos = bytesDeHuecos(cabecera);
        if (huecos <= lugarNucleo) {
            const auto suma = sumaDeControl(datos + nucleo - huecos, huecos,
                                            archivo ^ leerEntero<std::uint64_t>(datos + nucleo + lugarSello));
            ponerEntero(datos + nucleo + 60, static_cast<std::uint32_t>(suma));
        }
        ponerEntero(datos + nucleo + 508, static_cast<std::uint32_t>(sumaDeControl(datos + nucleo, 508, 0)));
    }
    for (std::size_t i = primeraPagina; (i + 1) * bytesPagina <= bytes.size(); ++i) {
        Octeto* const pagina = datos + i * bytesPagina;
        const std::size_t usados = leerEntero<std::uint16_t>(pagina + 4);
        if (usados < bytesEncabezado || usados > bytesPagina) continue;
        ponerEntero(pagina, sumaDePagina(pagina, static_cast<std::uint32_t>(i), archivo));
    }
}

int mandar(MotorIndexados& motorIndexados, std::string comando) {
    std::int32_t registro = 0;
    std::int16_t estado = 0;
    try {
        motorIndexados.Ejecutar(comando, registro, estado);
    } catch (const ErrorMotor&) {
        return -1;
    }
    constexpr std::array<int, 10> posibles{0, 1, 2, 9, 12, 13, 15, 23, 26, 29};
    for (const int uno : posibles) {
        if (uno == estado) return estado;
    }
    std::abort();
}

void andar(MotorIndexados& motorIndexados, const std::string& primera, const std::string& otra) {
    constexpr int pasos = 400;
    int estado = mandar(motorIndexados, primera);
    for (int i = 0; estado == 0 && i < pasos; ++i)
        estado = mandar(motorIndexados, otra);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    std::string bytes(reinterpret_cast<const char*>(datos), longitud);
    if (longitud % 2 == 1) enderezar(bytes);
    pruebas::ArchivosMemoria archivos;
    archivos.sembrar("A.QZC", bytes);
    MotorIndexados motorIndexados(archivos);
    if (mandar(motorIndexados, "/O/A.QZC/1") != 0) return 0;
    const std::string claves = std::to_string(motorIndexados.archivo(1).cabecera().claves);
    andar(motorIndexados, "F\\1\\1", "N\\1");
    andar(motorIndexados, "L\\" + claves + "\\1", "P\\1");
    for (const char* comando :
         {"S\\1\\1\\m", "G\\1\\1\\a", "S\\2\\1\\zz", "A\\1\\999999\\1\\a", "E\\1\\0\\1\\z"})
        mandar(motorIndexados, comando);
    // What says that it is far larger than it is would be written far behind its end.
    constexpr std::uint32_t mayorMarca = 4096;
    if (motorIndexados.archivo(1).cabecera().marca > mayorMarca) return 0;
    try {
        revisar(motorIndexados.archivo(1));
    } catch (const ErrorMotor&) {
        mandar(motorIndexados, "K");
        return 0;
    }
    std::string textos;
    for (unsigned i = 0; i < motorIndexados.archivo(1).cabecera().claves; ++i)
        textos += "\\texto" + std::to_string(i);
    for (int i = 0; i < 20; ++i)
        mandar(motorIndexados, "I\\1" + textos);
    mandar(motorIndexados, "R\\1\\3\\1\\texto0\\otro");
    for (int i = 0; i < 20; ++i)
        mandar(motorIndexados, "D\\" + std::to_string(i) + "\\Y\\1" + textos);
    mandar(motorIndexados, "M\\1");
    return 0;
}
