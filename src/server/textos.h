// What the service allows in the texts that it is given, and the texts of its refusals. A result that begins
// with "ERROR" is a failure to every client, and is shown to the user as it stands.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarvoline::server {

namespace respuesta {
// Clients recognise this one, letter by letter, and open the login.
inline constexpr const char* sinClaveAcceso = "ERROR:Es obligatorio asignar una clave de acceso";
inline constexpr const char* claveIncorrecta = "ERROR:La clave de acceso no es correcta";
inline constexpr const char* sinPermiso =
    "ERROR:Antes ha de identificarse un usuario de la cuenta desde este mismo equipo";
inline constexpr const char* cuentaNoAsignable = "ERROR:La cuenta no se puede asignar a este usuario";
inline constexpr const char* noExiste = "ERROR:El archivo no existe en el servicio";
inline constexpr const char* nombreNoValido = "ERROR:El nombre del archivo no es válido";
inline constexpr const char* carpetaNoValida = "ERROR:El nombre de la carpeta no es válido";
inline constexpr const char* tipoNoValido = "ERROR:El tipo de contenido no es válido";
inline constexpr const char* posicionNoValida = "ERROR:La posición o la longitud no son válidas";
inline constexpr const char* hueco =
    "ERROR:La posición está más allá del final de lo recibido; vuelva a subir el archivo";
inline constexpr const char* sinEspacio = "ERROR:No hay espacio contratado suficiente";
inline constexpr const char* demasiadosArchivos = "ERROR:La cuenta ha alcanzado el número máximo de archivos";
inline constexpr const char* falloAlGuardar = "ERROR:El servicio no ha podido guardar los datos";
inline constexpr const char* falloAlLeer = "ERROR:El servicio no ha podido leer los datos";
}  // namespace respuesta

constexpr bool esAlfanumerico(char letra) {
    return (letra >= '0' && letra <= '9') || (letra >= 'A' && letra <= 'Z') || (letra >= 'a' && letra <= 'z');
}

// 1 to `maximo` characters of well-formed UTF-8, without control characters (lists are separated by tabs).
bool textoLimpio(std::string_view texto, std::size_t maximo);

}  // namespace tarvoline::server
