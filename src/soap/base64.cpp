// The bulk goes through base64_bloques.h; here are the tables that work on any processor, and the ends, white
// space and padding that only they see. Encoding looks up 12 bits at a time, decoding ORs four tables whose
// entries are already shifted into place, so that neither has a branch for each character.
#include "soap/base64.h"

#include <array>
#include <cstring>

#include "soap/base64_bloques.h"

namespace tarvoline::soap {
namespace {

constexpr std::string_view letras = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t ajeno = 0x8000'0000U;  // no letter: above the 24 bits of a group

constexpr auto parejas = [] {
    std::array<std::array<char, 2>, 4096> tabla{};
    for (std::size_t i = 0; i < tabla.size(); ++i)
        tabla[i] = {letras[i >> 6U], letras[i & 63U]};
    return tabla;
}();

// valores[p][c]: what character c gives at place p of its group.
constexpr auto valores = [] {
    std::array<std::array<std::uint32_t, 256>, 4> tabla{};
    for (auto& lugar : tabla)
        lugar.fill(ajeno);
    for (std::uint32_t i = 0; i < 64; ++i) {
        for (std::uint32_t p = 0; p < 4; ++p) {
            tabla[p][static_cast<unsigned char>(letras[i])] = i << (18U - 6U * p);
        }
    }
    return tabla;
}();

void codificarGrupo(const unsigned char* origen, char* destino) {
    const std::uint32_t grupo = static_cast<std::uint32_t>(origen[0]) << 16U |
                                static_cast<std::uint32_t>(origen[1]) << 8U | origen[2];
    std::memcpy(destino, parejas[grupo >> 12U].data(), 2);
    std::memcpy(destino + 2, parejas[grupo & 0xFFFU].data(), 2);
}

std::uint32_t valorDe(std::size_t lugar, char caracter) {
    return valores[lugar][static_cast<unsigned char>(caracter)];
}

bool esBlanco(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

void ponerBytes(std::uint32_t grupo, std::size_t cuantos, unsigned char* destino) {
    for (std::size_t i = 0; i < cuantos; ++i) {
        destino[i] = static_cast<unsigned char>(grupo >> (16U - 8U * static_cast<std::uint32_t>(i)));
    }
}

// Reads a text from front to back into room that is large enough.
class Decodificador {
  public:
    Decodificador(std::string_view texto, unsigned char* destino) : texto_(texto), destino_(destino) {}

    std::size_t todo() {
        while (pos_ < texto_.size()) {
            gruposLimpios();
            grupoSuelto();
        }
        return escritos_;
    }

  private:
    // As many groups as stand there without white space or padding between.
    void gruposLimpios() {
        if (terminado_) return;
        const std::size_t hechos =
            decodificarBloques(texto_.data() + pos_, texto_.size() - pos_, destino_ + escritos_);
        pos_ += hechos;
        escritos_ += hechos / 4 * 3;
        for (; pos_ + 4 <= texto_.size(); pos_ += 4) {
            const char* c = texto_.data() + pos_;
            const std::uint32_t grupo =
                valorDe(0, c[0]) | valorDe(1, c[1]) | valorDe(2, c[2]) | valorDe(3, c[3]);
            if ((grupo & ajeno) != 0) return;
            unsigned char* const salida = destino_ + escritos_;
            salida[0] = static_cast<unsigned char>(grupo >> 16U);
            salida[1] = static_cast<unsigned char>(grupo >> 8U);
            salida[2] = static_cast<unsigned char>(grupo);
            escritos_ += 3;
        }
    }

    // One group character by character: white space, padding and the end of the text are seen here.
    void grupoSuelto() {
        std::uint32_t grupo = 0;
        std::size_t cuantas = 0, relleno = 0;
        for (; pos_ < texto_.size() && cuantas + relleno < 4; ++pos_) {
            const char c = texto_[pos_];
            if (esBlanco(c)) continue;
            if (terminado_) throw ErrorServicio("hay datos tras el final de un contenido en Base64");
            if (c == '=') {
                ++relleno;
                continue;
            }
            if (valorDe(0, c) == ajeno || relleno > 0) {
                throw ErrorServicio("el contenido en Base64 tiene un carácter que no le corresponde");
            }
            grupo |= valorDe(cuantas++, c);
        }
        cerrarGrupo(grupo, cuantas, relleno);
    }

    void cerrarGrupo(std::uint32_t grupo, std::size_t cuantas, std::size_t relleno) {
        if (cuantas + relleno == 0) return;
        if (cuantas < 2 || (relleno > 0 && cuantas + relleno != 4)) {
            throw ErrorServicio("el contenido en Base64 está cortado");
        }
        terminado_ = cuantas < 4;
        ponerBytes(grupo, cuantas - 1, destino_ + escritos_);
        escritos_ += cuantas - 1;
    }

    std::string_view texto_;
    unsigned char* destino_;
    std::size_t pos_ = 0;
    std::size_t escritos_ = 0;
    bool terminado_ = false;  // a short group was read: only white space may follow
};

}  // namespace

void CodificarBase64(std::span<const std::byte> bytes, std::string& destino) {
    const std::size_t antes = destino.size();
    destino.resize(antes + longitudBase64(bytes.size()));
    const auto* origen = reinterpret_cast<const unsigned char*>(bytes.data());
    char* salida = destino.data() + antes;
    std::size_t i = codificarBloques(origen, bytes.size(), salida);
    salida += i / 3 * 4;
    for (; i + 3 <= bytes.size(); i += 3, salida += 4)
        codificarGrupo(origen + i, salida);
    const std::size_t resto = bytes.size() - i;
    if (resto == 0) return;
    const std::array<unsigned char, 3> ultimo{origen[i], resto == 2 ? origen[i + 1] : std::uint8_t{0}, 0};
    codificarGrupo(ultimo.data(), salida);
    salida[3] = '=';
    if (resto == 1) salida[2] = '=';
}

Bytes DecodificarBase64(std::string_view texto) {
    Bytes bytes(texto.size() / 4 * 3 + 3);
    bytes.resize(Decodificador(texto, reinterpret_cast<unsigned char*>(bytes.data())).todo());
    return bytes;
}

}  // namespace tarvoline::soap
