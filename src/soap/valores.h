// Values that travel in a call, and the one error of this floor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tarvoline::soap {

using Bytes = std::vector<std::byte>;

// A text (UTF-8), a 32-bit integer (xsd:int) or a byte array (xsd:base64Binary).
using Valor = std::variant<std::string, std::int32_t, Bytes>;

// Anything that keeps a call from giving its result: no network, a WSDL that cannot be read, a fault of the
// server, a reply that is cut, too large or of the wrong kind. `detail` is the fault's detail text, "" for
// all else.
class ErrorServicio : public std::runtime_error {
  public:
    explicit ErrorServicio(const std::string& descripcion, std::string detail = {})
        : std::runtime_error(descripcion), detail_(std::move(detail)) {}
    const std::string& detail() const { return detail_; }

  private:
    std::string detail_;
};

}  // namespace tarvoline::soap
