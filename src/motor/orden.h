// The command language: one command, one text, in bytes. Fields are parted by "\", in open and create by "/".
//
//     S\<clave>\<tabla>\<valor>      search            N\<tabla>   next
//     G\<clave>\<tabla>\<valor>      search a prefix   P\<tabla>   previous
//     F\<clave>\<tabla>[\]           first             M\<tabla>   empty the key file
//     L\<clave>\<tabla>[\]           last              K           close all
//     A\<clave>\999999\<tabla>\<valor>                 first entry above every one of that text
//     E\<clave>\0\<tabla>\<valor>                      last entry below every one of that text
//     I\<tabla>\<k1>...\<kn>                           insert
//     D\<reg>\Y\<tabla>\<k1>...\<kn>                   delete
//     R\<clave>\<reg>\<tabla>\<antiguo>\<nuevo>        replace; more keys of the same record may
//                                                      follow, each \<clave>\<antiguo>\<nuevo>
//     /O/<ruta>/<tabla>                                open
//     /C/<ruta>/<longitud>/<claves>/A/<tabla>          create
//
// Numbers are decimal digits, behind one blank or none. Open and create are read from the right, so a path
// may hold both separators. In a value that ends a command a "\" is a character like any other; it counts as
// byte 31, as it does in the keys that callers compose.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::motor {

enum class Verbo {
    buscar,
    generico,
    primera,
    ultima,
    siguiente,
    anterior,
    encima,
    debajo,
    insertar,
    borrar,
    cambiar,
    vaciar,
    cerrar,
    abrir,
    crear,
};

// What a command says; which members count, the verb tells. Texts are views of the command unless a "\" in a
// value had to be turned.
struct Orden {
    Verbo verbo = Verbo::cerrar;
    unsigned clave = 0;
    unsigned tabla = 0;
    std::uint32_t registro = 0;
    unsigned longitud = 0;  // of create; `clave` is then the number of keys
    std::string_view ruta;
    std::string valor;
    std::vector<std::string_view> textos;  // key texts of I and D
    struct Cambio {
        unsigned clave = 0;
        std::string_view antiguo;
        std::string_view nuevo;
    };
    std::vector<Cambio> cambios;
};

inline constexpr unsigned maxTablas = 16;

// Nothing when the text is no command. `orden` is filled in place: its buffers serve many commands.
bool entender(std::string_view comando, Orden& orden);

}  // namespace tarvoline::motor
