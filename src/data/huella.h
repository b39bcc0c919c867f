// SHA-256 of bytes that come in pieces.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tarvoline::data {

class Huella {
  public:
    Huella();
    ~Huella();
    Huella(const Huella&) = delete;
    Huella& operator=(const Huella&) = delete;

    void anadir(std::string_view bytes);
    // Of all that came, as 64 hexadecimal digits in lower case. The last call.
    std::string enHexadecimal();

  private:
    struct Interior;
    std::unique_ptr<Interior> interior_;
};

}  // namespace tarvoline::data
