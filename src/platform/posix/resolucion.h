// Names on disk: both separators, case ignored.
#pragma once

#include <string>
#include <string_view>

namespace tarvoline::platform::posix {

// "/" as only separator, none doubled, none at the end. Throws ErrorArchivo (ruta) for a zero byte.
std::string normalizar(std::string_view ruta);
// The above with each name that exists in the spelling of the disk; what does not exist stays as given.
std::string resolverRuta(std::string_view ruta);

}  // namespace tarvoline::platform::posix
