#include "link/extractos.h"

#include <stdexcept>

namespace tarvoline::link {

void Extractos::LeerExtracto(std::string_view, std::string_view, std::string_view, int) {
    throw std::logic_error("not there yet");
}

std::string Extractos::LeerExtractoEx(std::string_view, std::string_view, std::string_view) {
    throw std::logic_error("not there yet");
}

}  // namespace tarvoline::link
