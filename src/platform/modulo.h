// Where the code of this program lies: the library or module that it was linked into, which need not be the
// running program.
#pragma once

#include <string>

namespace tarvoline::platform {

// The folder of that file, absolute, without final separator; "" when the system does not tell.
std::string carpetaDelModulo();

}  // namespace tarvoline::platform
