// What the engine must answer, the simple way: sorted sets, texts filled to their width.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvoline::pruebas {

struct Contestado {
    int estado = 0;
    std::int32_t registro = 0;  // counts with statuses 0, 9, 12, 13, 15
    bool operator==(const Contestado&) const = default;
};

// One key file.
class ModeloTabla {
  public:
    using Par = std::pair<std::basic_string<unsigned char>, std::uint32_t>;

    ModeloTabla(unsigned ancho, unsigned claves) : ancho_(ancho), claves_(claves) {}

    std::basic_string<unsigned char> rellenar(const std::string& texto) const {
        std::basic_string<unsigned char> lleno(texto.begin(), texto.end());
        lleno.resize(ancho_, ' ');
        return lleno;
    }

    Contestado insertar(const std::vector<std::string>& textos) {
        ++contador;
        for (std::size_t i = 0; i < textos.size(); ++i)
            claves_[i].insert({rellenar(textos[i]), contador});
        registros[contador] = textos;
        return {0, static_cast<std::int32_t>(contador)};
    }
    Contestado borrar(std::uint32_t registro, const std::vector<std::string>& textos) {
        bool todas = true;
        for (std::size_t i = 0; i < textos.size(); ++i)
            todas = claves_[i].erase({rellenar(textos[i]), registro}) == 1 && todas;
        return todas ? Contestado{} : Contestado{9, 0};
    }
    Contestado cambiar(unsigned clave, std::uint32_t registro, const std::string& antiguo,
                       const std::string& nuevo) {
        if (claves_[clave - 1].erase({rellenar(antiguo), registro}) == 0) return {9, 0};
        claves_[clave - 1].insert({rellenar(nuevo), registro});
        return {};
    }
    void vaciar() {
        for (auto& clave : claves_)
            clave.clear();
        registros.clear();
    }

    const std::set<Par>& clave(unsigned numero) const { return claves_[numero - 1]; }
    unsigned cuantas() const { return static_cast<unsigned>(claves_.size()); }
    unsigned ancho() const { return ancho_; }

    std::uint32_t contador = 0;
    std::map<std::uint32_t, std::vector<std::string>> registros;

  private:
    unsigned ancho_;
    std::vector<std::set<Par>> claves_;
};

// One table number's place in a key file.
class ModeloPosicion {
  public:
    explicit ModeloPosicion(ModeloTabla& tabla) : tabla_(&tabla) {}

    Contestado buscar(unsigned clave, const std::string& valor, bool generico) {
        const auto& entradas = tabla_->clave(clave);
        auto buscado = tabla_->rellenar(valor);
        if (generico) buscado.assign(valor.begin(), valor.end());
        const auto sitio = entradas.lower_bound({buscado, 0});
        const bool igual = sitio != entradas.end() && sitio->first.compare(0, buscado.size(), buscado) == 0;
        if (igual) return quedar(clave, 0, *sitio);
        if (entradas.empty()) return nada(clave);
        if (sitio == entradas.begin()) return quedar(clave, 13, *sitio);
        return quedar(clave, sitio == entradas.end() ? 15 : 12, *std::prev(sitio));
    }
    Contestado extremo(unsigned clave, bool ultima) {
        const auto& entradas = tabla_->clave(clave);
        if (entradas.empty()) return nada(clave);
        return quedar(clave, 0, ultima ? *entradas.rbegin() : *entradas.begin());
    }
    Contestado vecina(unsigned clave, const std::string& valor, bool encima) {
        const auto& entradas = tabla_->clave(clave);
        if (entradas.empty()) return nada(clave);
        const auto sitio = entradas.lower_bound({tabla_->rellenar(valor), encima ? ~std::uint32_t{0} : 0});
        if (encima) return sitio == entradas.end() ? Contestado{9, 0} : quedar(clave, 0, *sitio);
        return sitio == entradas.begin() ? Contestado{9, 0} : quedar(clave, 0, *std::prev(sitio));
    }
    Contestado mover(bool adelante) {
        if (clave_ == 0) return {9, 0};
        const auto& entradas = tabla_->clave(clave_);
        if (adelante) {
            const auto sitio = situada_ ? entradas.upper_bound(par_) : entradas.begin();
            return sitio == entradas.end() ? Contestado{9, 0} : quedar(clave_, 0, *sitio);
        }
        const auto sitio = situada_ ? entradas.lower_bound(par_) : entradas.begin();
        return sitio == entradas.begin() ? Contestado{9, 0} : quedar(clave_, 0, *std::prev(sitio));
    }

  private:
    Contestado quedar(unsigned clave, int estado, const ModeloTabla::Par& par) {
        clave_ = clave;
        situada_ = true;
        par_ = par;
        return {estado, static_cast<std::int32_t>(par.second)};
    }
    Contestado nada(unsigned clave) {
        clave_ = clave;
        situada_ = false;
        return {9, 0};
    }

    ModeloTabla* tabla_;
    unsigned clave_ = 0;
    bool situada_ = false;
    ModeloTabla::Par par_;
};

}  // namespace tarvoline::pruebas
