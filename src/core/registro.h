// The program's log.
#pragma once

#include <string_view>

namespace tarvoline::core {

class Registro {
  public:
    virtual ~Registro() = default;
    virtual void info(std::string_view texto) = 0;
    virtual void aviso(std::string_view texto) = 0;
    virtual void error(std::string_view texto) = 0;
};

// Takes everything and keeps nothing.
class RegistroMudo : public Registro {
  public:
    void info(std::string_view) override {}
    void aviso(std::string_view) override {}
    void error(std::string_view) override {}
};

}  // namespace tarvoline::core
