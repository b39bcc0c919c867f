// Paths as text: nothing here asks the file system.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::platform {

// "\" or "/".
inline bool esSeparador(char c) {
    return c == '/' || c == '\\';
}
// Of "a/b/c" the folder "a/b" and the name "c"; separators at the end do not count. The folder of a bare name
// is ".", that of the root the root.
std::string carpetaDe(std::string_view ruta);
std::string nombreDe(std::string_view ruta);
// The two with exactly one separator of the system between them; an empty folder adds none.
std::string unirRuta(std::string_view carpeta, std::string_view nombre);

}  // namespace tarvoline::platform
