// qzmotor: the index engine by hand. Commands on standard input, one a line; for each, one line with its
// status, a tab, and the record number. Everything is bytes: paths as the system spells them, key texts in
// Windows-1252.
#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "core/linea_ordenes.h"
#include "motor/motor_indexados.h"

namespace {

using namespace tarvoline;

namespace salida {
constexpr int hecho = 0;
constexpr int ordenMala = 2;
constexpr int fallo = 1;
}  // namespace salida

constexpr const char* ayuda =
    "Órdenes (clave y tabla son números; los valores, bytes):\n"
    "  /C/RUTA/LONGITUD/CLAVES/A/TABLA   crea un archivo de claves (.QZC)\n"
    "  /O/RUTA/TABLA                     lo abre con un número de tabla, de 0 a 15\n"
    "  I\\TABLA\\K1\\...\\KN                 inserta; da el número del registro\n"
    "  D\\REGISTRO\\Y\\TABLA\\K1\\...\\KN      borra\n"
    "  R\\CLAVE\\REGISTRO\\TABLA\\VIEJO\\NUEVO   cambia una clave de un registro\n"
    "  S\\CLAVE\\TABLA\\VALOR   G\\CLAVE\\TABLA\\VALOR    busca; G, por el principio\n"
    "  F\\CLAVE\\TABLA         L\\CLAVE\\TABLA          primero, último\n"
    "  N\\TABLA               P\\TABLA                siguiente, anterior\n"
    "  A\\CLAVE\\999999\\TABLA\\VALOR   E\\CLAVE\\0\\TABLA\\VALOR   el de encima, el de debajo\n"
    "  M\\TABLA               vacía las claves\n"
    "  K                     cierra todo (al final se hace siempre)\n"
    "Estados: 0 hecho; 1 orden mala o archivo dañado; 2 no existe; 9 no hay; 12, 13, 15 no está: entre dos,\n"
    "antes del primero, tras el último; 23 no se puede crear; 26 es otro formato; 29 no se puede insertar.\n"
    "R sigue con \\CLAVE\\VIEJO\\NUEVO por cada otra clave del registro. Un fallo del disco se dice aparte "
    "y\n"
    "su orden responde 1; las demás siguen.\n"
    "Salida: 0 hecho, 1 algún fallo del motor, 2 argumentos malos.";

int atender(bool sincronizar) {
    const auto archivos = platform::crearSistemaArchivos();
    motor::MotorIndexados motorIndexados(*archivos, sincronizar);
    std::int32_t registro = 0;
    std::int16_t estado = 0;
    bool fallado = false;
    const auto ejecutar = [&](std::string& comando) {
        try {
            motorIndexados.Ejecutar(comando, registro, estado);
        } catch (const std::exception& error) {
            std::cerr << "qzmotor: " << error.what() << '\n';
            fallado = true;
            estado = motor::estado::malo;
            registro = 0;
        }
    };
    for (std::string comando; std::getline(std::cin, comando);) {
        if (!comando.empty() && comando.back() == '\r') comando.pop_back();
        ejecutar(comando);
        std::cout << estado << '\t' << registro << '\n';
        // A person or a program at the other end waits for the answer, unless more commands wait already.
        if (std::cin.rdbuf()->in_avail() <= 0) std::cout.flush();
    }
    std::string cierre = "K";
    ejecutar(cierre);
    std::cout.flush();
    return std::cout && !fallado ? salida::hecho : salida::fallo;
}

int correr(int argc, char** argv) {
    CLI::App programa("Motor de archivos de claves, a mano: una orden por línea en la entrada", "qzmotor");
    core::hablarEspanol(programa);
    programa.footer(ayuda);
    bool sincronizar = false;
    programa.add_flag("--sincronizar", sincronizar, "Al cerrar espera a que las claves estén en el disco");
    try {
        programa.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? salida::hecho : salida::ordenMala;
    }
    std::ios::sync_with_stdio(false);
    return atender(sincronizar);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "qzmotor: " << error.what() << '\n';
        return salida::fallo;
    }
}
