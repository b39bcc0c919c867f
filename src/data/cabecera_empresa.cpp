#include "data/cabecera_empresa.h"

#include <algorithm>
#include <span>

#include "data/bytes.h"

namespace tarvoline::data {

namespace {

constexpr std::byte blanco{0x20};

// Every byte of the record that is text and has no default of its own.
constexpr std::array textosEnBlanco = {
    cabecera::COMUN,    cabecera::EFECTOS1,    cabecera::IVAIGIC,     cabecera::CONTADORANALITICA,
    cabecera::BORRADOR, cabecera::CANALACTIVO, cabecera::LINEAS,      cabecera::MES,
    cabecera::CLAVE4,   cabecera::PASSWORD1,   cabecera::PASSWORD2,   cabecera::ACTUALIZADO,
    cabecera::EFECTOS2, cabecera::CUENTACANAL, cabecera::FECHALIMITE, CampoTexto{166, 3},
    CampoTexto{170, 2}, cabecera::RESERVA1,    cabecera::RESERVA2,    cabecera::RESERVA4,
    cabecera::RESERVA5, cabecera::RESERVA7};

template <typename Bytes>
auto trozo(Bytes& bytes, std::size_t posicion, std::size_t longitud) {
    return std::span(bytes).subspan(posicion - 1, longitud);
}

}  // namespace

CabeceraEmpresa CabeceraEmpresa::nueva(std::string_view anio, float version) {
    CabeceraEmpresa nueva;
    for (const auto& campo : textosEnBlanco) {
        nueva.poner(campo, "");
    }
    nueva.poner(cabecera::ARCHIVOMONEDABASE, std::uint8_t{1});
    nueva.poner(cabecera::AÑO, anio);
    nueva.poner(cabecera::NIVEL, "12340");
    nueva.poner(cabecera::AUX, "0010");
    nueva.poner(cabecera::APERTURA, "01");
    nueva.poner(cabecera::CHECK, "0");
    nueva.poner(cabecera::AUTOMATICO, "0");
    nueva.poner(cabecera::AVISOS, "0");
    nueva.poner(cabecera::DOCUMENTO, "000001");
    nueva.poner(cabecera::VERSION, version);
    return nueva;
}

CabeceraEmpresa CabeceraEmpresa::leer(platform::Archivo& archivo) {
    CabeceraEmpresa leida;
    archivo.leer(0, leida.bytes_);
    return leida;
}

void CabeceraEmpresa::grabar(platform::Archivo& archivo) const {
    archivo.escribir(0, bytes_);
}

core::TextoAnsi CabeceraEmpresa::ansi(CampoTexto campo) const {
    std::string texto(campo.longitud, '\0');
    const auto origen = trozo(bytes_, campo.posicion, campo.longitud);
    std::ranges::transform(origen, texto.begin(), [](std::byte b) { return static_cast<char>(b); });
    return core::TextoAnsi(std::move(texto));
}

std::string CabeceraEmpresa::texto(CampoTexto campo) const {
    auto bytes = ansi(campo).bytes();
    std::erase(bytes, '\0');
    bytes.erase(bytes.find_last_not_of(' ') + 1);
    return core::aUtf8(bytes);
}

std::uint8_t CabeceraEmpresa::valor(CampoByte campo) const {
    return leerNumero<std::uint8_t>(trozo(bytes_, campo.posicion, 1));
}

std::int16_t CabeceraEmpresa::valor(CampoEntero16 campo) const {
    return leerNumero<std::int16_t>(trozo(bytes_, campo.posicion, 2));
}

std::int32_t CabeceraEmpresa::valor(CampoEntero32 campo) const {
    return leerNumero<std::int32_t>(trozo(bytes_, campo.posicion, 4));
}

float CabeceraEmpresa::valor(CampoSimple campo) const {
    return leerNumero<float>(trozo(bytes_, campo.posicion, 4));
}

double CabeceraEmpresa::valor(CampoDoble campo) const {
    return leerNumero<double>(trozo(bytes_, campo.posicion, 8));
}

void CabeceraEmpresa::poner(CampoTexto campo, const core::TextoAnsi& texto) {
    const auto destino = trozo(bytes_, campo.posicion, campo.longitud);
    std::ranges::fill(destino, blanco);
    const auto origen = platform::comoBytes(texto.bytes());
    std::ranges::copy(origen.first(std::min(origen.size(), destino.size())), destino.begin());
}

void CabeceraEmpresa::poner(CampoByte campo, std::uint8_t valor) {
    ponerNumero(trozo(bytes_, campo.posicion, 1), valor);
}

void CabeceraEmpresa::poner(CampoEntero16 campo, std::int16_t valor) {
    ponerNumero(trozo(bytes_, campo.posicion, 2), valor);
}

void CabeceraEmpresa::poner(CampoEntero32 campo, std::int32_t valor) {
    ponerNumero(trozo(bytes_, campo.posicion, 4), valor);
}

void CabeceraEmpresa::poner(CampoSimple campo, float valor) {
    ponerNumero(trozo(bytes_, campo.posicion, 4), valor);
}

void CabeceraEmpresa::poner(CampoDoble campo, double valor) {
    ponerNumero(trozo(bytes_, campo.posicion, 8), valor);
}

}  // namespace tarvoline::data
