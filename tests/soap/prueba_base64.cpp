#include <gtest/gtest.h>

#include <random>

#include "soap/base64.h"

namespace tarvoline::soap {
namespace {

// A slow reference, so that the wide registers and the tables are held against the definition.
std::string referencia(const Bytes& bytes) {
    const std::string letras = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits, texto;
    for (const auto b : bytes) {
        for (int i = 7; i >= 0; --i)
            bits += (std::to_integer<int>(b) >> i & 1) != 0 ? '1' : '0';
    }
    while (bits.size() % 6 != 0)
        bits += '0';
    for (std::size_t i = 0; i < bits.size(); i += 6)
        texto += letras[std::stoul(bits.substr(i, 6), nullptr, 2)];
    while (texto.size() % 4 != 0)
        texto += '=';
    return texto;
}

TEST(Base64, TodaLongitudIdaYVuelta) {
    std::mt19937 azar(20240611);
    for (std::size_t longitud = 0; longitud < 300; ++longitud) {
        Bytes bytes(longitud);
        for (auto& b : bytes)
            b = static_cast<std::byte>(azar());
        std::string texto;
        CodificarBase64(bytes, texto);
        ASSERT_EQ(texto, referencia(bytes));
        ASSERT_EQ(DecodificarBase64(texto), bytes) << longitud;
        while (texto.ends_with('='))
            texto.pop_back();
        ASSERT_EQ(DecodificarBase64(texto), bytes) << "without padding, " << longitud;
    }
}

TEST(Base64, PasaPorAltoLosBlancosDondequieraQueEsten) {
    Bytes bytes(500, std::byte{0xA7});
    std::string texto;
    CodificarBase64(bytes, texto);
    for (std::size_t cada = 1; cada < 90; ++cada) {
        std::string partido = " ";
        for (std::size_t i = 0; i < texto.size(); ++i) {
            partido += texto[i];
            if (i % cada == 0) partido += "\r\n\t";
        }
        ASSERT_EQ(DecodificarBase64(partido), bytes) << cada;
    }
}

TEST(Base64, RechazaCualquierCaracterAjenoEnCualquierSitio) {
    const std::string letras = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/ \t\r\n";
    for (int codigo = 0; codigo < 256; ++codigo) {
        const char c = static_cast<char>(codigo);
        if (letras.find(c) != std::string::npos) continue;
        for (const std::size_t lugar : {0U, 17U, 40U, 97U}) {
            std::string texto(100, 'Q');
            texto[lugar] = c;
            EXPECT_THROW(DecodificarBase64(texto), ErrorServicio) << codigo << " at " << lugar;
        }
    }
    for (const char* malo : {"A", "AAAAA", "AA=", "AAA==", "=", "A===", "AA==AA==", "AA=A", "QUJD="}) {
        EXPECT_THROW(DecodificarBase64(malo), ErrorServicio) << malo;
    }
}

}  // namespace
}  // namespace tarvoline::soap
