// An ordered collection whose items callers may go on holding after it has been emptied.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace tarvoline::link {

template <typename T>
class Coleccion {
  public:
    std::shared_ptr<T> anadir(T nuevo) {
        elementos_.push_back(std::make_shared<T>(std::move(nuevo)));
        return elementos_.back();
    }
    // The item at `indice`, from 1; null outside.
    std::shared_ptr<T> operator()(std::int32_t indice) const {
        return indice < 1 || indice > contar() ? nullptr : elementos_[static_cast<std::size_t>(indice - 1)];
    }
    std::int32_t contar() const { return static_cast<std::int32_t>(elementos_.size()); }
    bool vacia() const { return elementos_.empty(); }
    void vaciar() { elementos_.clear(); }

    auto begin() const { return elementos_.begin(); }
    auto end() const { return elementos_.end(); }

  private:
    std::vector<std::shared_ptr<T>> elementos_;
};

}  // namespace tarvoline::link
