// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace tarvoline::platform::posix {

class Descriptor {
  public:
    explicit Descriptor(int numero = -1) : numero_(numero) {}
    ~Descriptor() { cerrar(); }
    Descriptor(Descriptor&& otro) noexcept : numero_(std::exchange(otro.numero_, -1)) {}
    Descriptor& operator=(Descriptor&& otro) noexcept {
        if (this != &otro) {
            cerrar();
            numero_ = std::exchange(otro.numero_, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int numero() const { return numero_; }
    bool abierto() const { return numero_ >= 0; }
    // The descriptor is gone even when close() reports an error; what was to be safe was synchronised before.
    void cerrar() {
        if (abierto()) ::close(std::exchange(numero_, -1));
    }

  private:
    int numero_;
};

}  // namespace tarvoline::platform::posix
