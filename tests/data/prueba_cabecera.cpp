// The head record: where each field lies, the defaults of a new company, files that are too short.
#include <gtest/gtest.h>

#include "apoyo/mundo_datos.h"
#include "data/cabecera_empresa.h"
#include "data/utilidades.h"

namespace {

using namespace tarvoline;
using data::CabeceraEmpresa;
namespace campo = data::cabecera;

std::string bytesDe(const CabeceraEmpresa& cabecera) {
    const pruebas::CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    cabecera.grabar(*archivos->abrir(carpeta.ruta("x"), platform::Apertura::nuevo));
    return carpeta.leer("x");
}

CabeceraEmpresa cabeceraDe(const std::string& bytes) {
    const pruebas::CarpetaPrueba carpeta;
    const auto archivos = platform::crearSistemaArchivos();
    return CabeceraEmpresa::leer(*archivos->abrir(carpeta.escribir("x", bytes), platform::Apertura::lectura));
}

// The record's bytes, each its position from 1 modulo 256: what is read tells where it was read.
std::string regla() {
    std::string bytes(CabeceraEmpresa::longitud, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i + 1);
    }
    return bytes;
}

TEST(Cabecera, CadaTextoOcupaSuLugar) {
    struct Caso {
        data::CampoTexto campo;
        std::size_t posicion, longitud;
    };
    for (const auto& caso : std::initializer_list<Caso>{{campo::COMUN, 1, 2},
                                                        {campo::EFECTOS1, 6, 20},
                                                        {campo::NIVEL, 26, 5},
                                                        {campo::AUX, 31, 4},
                                                        {campo::CONTADORANALITICA, 36, 6},
                                                        {campo::BORRADOR, 82, 1},
                                                        {campo::LINEAS, 86, 2},
                                                        {campo::AÑO, 92, 2},
                                                        {campo::PASSWORD1, 96, 4},
                                                        {campo::PASSWORD2, 100, 4},
                                                        {campo::DOCUMENTO, 127, 6},
                                                        {campo::CUENTACANAL, 134, 7},
                                                        {campo::FECHALIMITE, 141, 6},
                                                        {campo::APERTURA, 181, 2},
                                                        {campo::RESERVA7, 264, 1}}) {
        CabeceraEmpresa cabecera;
        cabecera.poner(caso.campo, std::string(caso.longitud + 3, 'x'));  // too long: cut, never spilt
        std::string esperado(CabeceraEmpresa::longitud, '\0');
        esperado.replace(caso.posicion - 1, caso.longitud, caso.longitud, 'x');
        EXPECT_EQ(bytesDe(cabecera), esperado) << "position " << caso.posicion;
        EXPECT_EQ(cabeceraDe(regla()).ansi(caso.campo).bytes(),
                  regla().substr(caso.posicion - 1, caso.longitud));
    }
}

TEST(Cabecera, LosNumerosSonDeMenorAMayor) {
    CabeceraEmpresa cabecera;
    cabecera.poner(campo::APUNTES, 1.0F);
    cabecera.poner(campo::CARGOSA, -2.5);
    cabecera.poner(campo::CONTADOR1, std::int32_t{0x01020304});
    cabecera.poner(campo::MINUTOSDESDEULTIMACOPIA, std::int16_t{-2});
    cabecera.poner(campo::ARCHIVOMONEDABASE, std::uint8_t{200});
    const auto bytes = bytesDe(cabecera);
    using namespace std::string_literals;
    EXPECT_EQ(bytes.substr(41, 4), "\x00\x00\x80\x3F"s);
    EXPECT_EQ(bytes.substr(49, 8), "\x00\x00\x00\x00\x00\x00\x04\xC0"s);
    EXPECT_EQ(bytes.substr(153, 4), "\x04\x03\x02\x01"s);
    EXPECT_EQ(bytes.substr(148, 2), "\xFE\xFF"s);
    EXPECT_EQ(bytes[172], '\xC8');
    const auto leida = cabeceraDe(bytes);
    EXPECT_EQ(leida, cabecera);
    EXPECT_EQ(leida.valor(campo::CARGOSA), -2.5);
    EXPECT_EQ(leida.valor(campo::MINUTOSDESDEULTIMACOPIA), -2);
    EXPECT_EQ(leida.valor(campo::ARCHIVOMONEDABASE), 200);
}

TEST(Cabecera, DeUnaEmpresaNueva) {
    const auto nueva = CabeceraEmpresa::nueva("26", 4.5F);
    EXPECT_EQ(nueva.texto(campo::NIVEL), "12340");
    EXPECT_EQ(nueva.texto(campo::AUX), "0010");
    EXPECT_EQ(nueva.texto(campo::AÑO), "26");
    EXPECT_EQ(nueva.texto(campo::APERTURA), "01");
    EXPECT_EQ(nueva.texto(campo::DOCUMENTO), "000001");
    EXPECT_EQ(nueva.texto(campo::CHECK) + nueva.texto(campo::AUTOMATICO) + nueva.texto(campo::AVISOS), "000");
    EXPECT_EQ(nueva.ansi(campo::PASSWORD1).bytes(), "    ");
    EXPECT_EQ(nueva.valor(campo::ARCHIVOMONEDABASE), 1);
    EXPECT_EQ(nueva.valor(campo::VERSION), 4.5F);
    // Text is blank and numbers are zero, to the last byte: no other value anywhere.
    const auto bytes = bytesDe(nueva);
    EXPECT_EQ(bytes[168], '\0');
    EXPECT_EQ(bytes[171], '\0');
    EXPECT_EQ(bytes[165], ' ');
    EXPECT_EQ(bytes.substr(182, 40), std::string(40, ' '));
    EXPECT_EQ(bytes.substr(222, 1) + bytes.substr(259, 4), std::string(5, '\0'));
    EXPECT_EQ(bytes.back(), ' ');
}

TEST(Cabecera, LoQueFaltaEsCero) {
    for (const std::size_t longitud : {0U, 1U, 100U, 263U, 264U, 1025U}) {
        const auto entera = regla() + std::string(1000, 'z');
        auto esperada = entera.substr(0, longitud);
        esperada.resize(CabeceraEmpresa::longitud, '\0');
        EXPECT_EQ(bytesDe(cabeceraDe(entera.substr(0, longitud))), esperada) << longitud;
    }
}

}  // namespace
