// Fields on disk and as text.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "core/texto.h"
#include "data/codec.h"
#include "data/vista_nombrada.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::data;
using namespace std::string_literals;

CampoTabla campoDe(FormaCampo forma, int bytes) {
    CampoTabla campo;
    campo.nombre = "IMPORTE";
    campo.forma = forma;
    campo.bytes = bytes;
    return campo;
}

const CampoTabla entero16 = campoDe(FormaCampo::entero16, 2);
const CampoTabla entero32 = campoDe(FormaCampo::entero32, 4);
const CampoTabla simple = campoDe(FormaCampo::simple, 4);
const CampoTabla doble = campoDe(FormaCampo::doble, 8);
const CampoTabla texto5 = campoDe(FormaCampo::texto, 5);
const CampoTabla fecha = campoDe(FormaCampo::fecha, 6);

std::string cifrado(const CampoTabla& campo, std::string_view texto) {
    std::string bytes(static_cast<std::size_t>(campo.bytes), '#');
    cifrarCampo(campo, texto, bytes.data());
    return bytes;
}

std::string descifrado(const CampoTabla& campo, std::string_view bytes) {
    std::string texto = "what was there before";
    descifrarCampo(campo, bytes, texto);
    return texto;
}

TEST(Codec, NumerosDeLosBytes) {
    EXPECT_EQ(TextoAEntero("\x01\x80"), std::int16_t{-32767});
    EXPECT_EQ(TextoALargo("\x78\x56\x34\x12"), 0x12345678);
    EXPECT_EQ(TextoALargo("\xFF\xFF\xFF\xFF"), -1);
    EXPECT_EQ(TextoASimple("\0\0\x80\x3F"s), 1.0F);
    EXPECT_EQ(TextoADoble("\0\0\0\0\0\0\xF0\x3F"s), 1.0);
    EXPECT_EQ(DobleATexto(-2.5), "\0\0\0\0\0\0\x04\xC0"s);
    EXPECT_EQ(TextoAEntero("\x07"), 7);  // what is missing counts as zero
    EXPECT_EQ(TextoADoble(""), 0);
}

TEST(Codec, CadaFormaEnDisco) {
    struct Caso {
        const CampoTabla& campo;
        std::string texto, bytes, vuelta;
    };
    const std::vector<Caso> casos{
        {entero16, "258", "\x02\x01", "258"},
        {entero16, "-1", "\xFF\xFF", "-1"},
        {entero16, "2.5", "\x02\0"s, "2"},  // halves go to the even neighbour
        {entero16, "3.5", "\x04\0"s, "4"},
        {entero16, "-2.5", "\xFE\xFF", "-2"},
        {entero16, "", "\0\0"s, "0"},
        {entero16, "x9", "\0\0"s, "0"},
        {entero16, " 12 pesetas", "\x0C\0"s, "12"},
        {entero32, "70000.5", "\x70\x11\x01\0"s, "70000"},
        {entero32, "-2147483648", "\0\0\0\x80"s, "-2147483648"},
        {simple, "0.1", "\xCD\xCC\xCC\x3D", "0.1"},
        {simple, "16777216", "\0\0\x80\x4B"s, "16777220"},  // seven digits
        {doble, "1.5", "\0\0\0\0\0\0\xF8\x3F"s, "1.5"},
        {doble, ".5", "\0\0\0\0\0\0\xE0\x3F"s, "0.5"},
        {doble, "        ", "\0\0\0\0\0\0\0\0"s, "0"},
        {texto5, "abc", "abc  ", "abc  "},
        {texto5, "abcdefg", "abcde", "abcde"},
        {texto5, "", "     ", "     "},
        {texto5, "a\0\\"s, "a\0\\  "s, "a\0\\  "s},
        {fecha, "260309", "260309", "260309"},
        {fecha, "", "      ", "      "},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(cifrado(caso.campo, caso.texto), caso.bytes) << caso.texto;
        EXPECT_EQ(descifrado(caso.campo, caso.bytes), caso.vuelta) << caso.texto;
    }
}

TEST(Codec, TextoDeUnDoble) {
    struct Caso {
        double valor;
        const char* texto;
    };
    for (const auto& [valor, texto] : std::initializer_list<Caso>{{0, "0"},
                                                                  {-0.0, "0"},
                                                                  {7, "7"},
                                                                  {-0.05, "-0.05"},
                                                                  {0.1 + 0.2, "0.3"},
                                                                  {1234.5, "1234.5"},
                                                                  {1000, "1000"},
                                                                  {-100.01, "-100.01"},
                                                                  {1.0 / 3, "0.333333333333333"},
                                                                  {166.386, "166.386"},
                                                                  {1e-7, "0.0000001"},
                                                                  {999999999999999, "999999999999999"},
                                                                  {1e15, "1E+15"},
                                                                  {-1.25e20, "-1.25E+20"},
                                                                  {9999999999999.99, "9999999999999.99"}}) {
        EXPECT_EQ(descifrado(doble, DobleATexto(valor)), texto);
    }
}

TEST(Codec, LoQueNoCabeNoSeEscribe) {
    for (const char* texto : {"32768", "-32769", "1E30"})
        EXPECT_THROW(cifrado(entero16, texto), ErrorCampo) << texto;
    EXPECT_EQ(cifrado(entero16, "32767.4"), "\xFF\x7F");
    EXPECT_THROW(cifrado(entero32, "2147483648"), ErrorCampo);
    EXPECT_THROW(cifrado(simple, "1E+39"), ErrorCampo);
}

// The quick ways for common numbers give what the slow ones give.
TEST(Codec, AtajosIgualesAlCaminoLargo) {
    const auto semilla = std::random_device{}();
    std::mt19937_64 azar(semilla);
    for (int i = 0; i < 200'000; ++i) {
        double valor = 0;
        switch (i % 4) {
            case 0:  // amounts, of any size
                valor = static_cast<double>(azar() >> (azar() % 64)) / 100;
                break;
            case 1:
                valor = static_cast<double>(azar() >> (azar() % 64)) / std::pow(10, azar() % 16);
                break;
            case 2:
                valor = std::ldexp(static_cast<double>(azar()), static_cast<int>(azar() % 200) - 150);
                break;
            default:  // the neighbours of an amount
                valor =
                    std::nextafter(static_cast<double>(azar() % 1'000'000'000) / 100, 1e300 * (i % 8 - 4));
        }
        if (azar() % 2 == 0) valor = -valor;
        std::string texto;
        ponerTextoDeNumero(valor, texto);
        ASSERT_EQ(texto, textoDeNumero(valor, 15)) << "seed " << semilla;
        ASSERT_EQ(valorDeTexto(texto), core::Val(texto)) << texto << ", seed " << semilla;
        // And a text of a number stays the same from here on.
        ASSERT_EQ(descifrado(doble, cifrado(doble, texto)), texto) << "seed " << semilla;
    }
    for (const char* texto : {"", "-", "+5", "1.2.3", "5-", "007", ".", "-.", "-.5", "12 34", "1e3", "-0",
                              "0x10", "123456789012345", "1234567890123456789", "\xF1", "5,2"}) {
        EXPECT_EQ(valorDeTexto(texto), core::Val(texto)) << texto;
    }
}

// Whatever record: what is read and written again is the record, for all forms but numbers that 15 (or 7)
// digits do not tell apart.
TEST(Codec, RegistrosDeIdaYVuelta) {
    const auto semilla = std::random_device{}();
    std::mt19937_64 azar(semilla);
    for (int vuelta = 0; vuelta < 2000; ++vuelta) {
        DefinicionTabla definicion;
        std::string bytes;
        const int campos = 1 + static_cast<int>(azar() % 20);
        for (int i = 0; i < campos; ++i) {
            constexpr FormaCampo formas[] = {FormaCampo::texto,  FormaCampo::entero16, FormaCampo::entero32,
                                             FormaCampo::simple, FormaCampo::doble,    FormaCampo::fecha};
            constexpr int anchos[] = {0, 2, 4, 4, 8, 6};
            const std::size_t cual = azar() % 6;
            auto campo = campoDe(formas[cual], cual == 0 ? 1 + static_cast<int>(azar() % 40) : anchos[cual]);
            campo.desplazamiento = static_cast<int>(bytes.size());
            std::string suyos;
            for (int b = 0; b < campo.bytes; ++b)
                suyos += static_cast<char>(azar());
            if (cual == 3) {
                const float valor = static_cast<float>(azar() % 1'000'000) / 8;
                suyos = cifrado(simple, textoDeNumero(static_cast<double>(valor), 7));
            }
            if (cual == 4) suyos = DobleATexto(static_cast<double>(static_cast<std::int32_t>(azar())) / 100);
            bytes += suyos;
            definicion.campos.push_back(campo);
        }
        definicion.gNumeroCampos = campos;
        definicion.gLongitudRegistro = static_cast<std::int32_t>(bytes.size());
        std::vector<std::string> textos(definicion.campos.size());
        descifrarRegistro(definicion, bytes, textos);
        std::string vuelta2 = "left over";
        cifrarRegistro(definicion, textos, vuelta2);
        ASSERT_EQ(vuelta2, bytes) << "seed " << semilla;
    }
}

TEST(Codec, EstadosDeUnRegistro) {
    EXPECT_EQ(estadoDeRegistro(std::string(20, '\0')), EstadoRegistro::sinEscribir);
    EXPECT_EQ(estadoDeRegistro(""), EstadoRegistro::sinEscribir);
    EXPECT_EQ(estadoDeRegistro("ANULADO   \0\0 "s), EstadoRegistro::anulado);
    EXPECT_EQ(estadoDeRegistro("ANULADO   \0x "s), EstadoRegistro::vivo);  // a description like any other
    EXPECT_EQ(estadoDeRegistro("ANULAD"), EstadoRegistro::vivo);
    EXPECT_EQ(estadoDeRegistro(std::string(19, '\0') + "x"), EstadoRegistro::vivo);
    EXPECT_EQ(estadoDeRegistro("    "), EstadoRegistro::vivo);
}

TEST(Codec, AjustarUnTexto) {
    std::string texto = "old";
    ajustarCampo(texto5, "abcdefg", texto);
    EXPECT_EQ(texto, "abcde");
    ajustarCampo(texto5, "", texto);
    EXPECT_EQ(texto, "     ");
    ajustarCampo(doble, "-123456789.01", texto);  // longer than its bytes on disk
    EXPECT_EQ(texto, "-123456789.01");
}

}  // namespace
