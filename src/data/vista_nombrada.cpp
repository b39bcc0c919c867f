#include "data/vista_nombrada.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "data/acceso_archivo.h"
#include "data/bytes.h"
#include "data/fechas.h"
#include "data/seccion_textos.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

using enum TipoNombrado;

constexpr std::array campos = std::to_array<CampoNombrado>({
    {"COMUN", 1, 2, texto8},
    {"ANALITICA", 3, 1, byte},
    {"CANAL", 4, 1, byte},
    {"ACREEDORPRESU", 5, 1, byte},
    {"EFECTOS1", 6, 20, texto},
    {"NIVEL", 26, 5, texto},
    {"NIVEL1", 26, 1, texto},
    {"NIVEL2", 27, 1, texto},
    {"NIVEL3", 28, 1, texto},
    {"NIVEL4", 29, 1, texto},
    {"NIVEL5", 30, 1, texto},
    {"AUX", 31, 4, texto},
    {"AUX1", 31, 1, texto},
    {"AUX2", 32, 1, texto},
    {"AUX3", 33, 2, texto},
    {"IVAIGIC", 35, 1, texto},
    {"CONTADORANALITICA", 36, 6, texto},
    {"APUNTES", 42, 4, simple},
    {"PAGINAS", 46, 4, simple},
    {"CARGOSA", 50, 8, doble},
    {"ABONOSA", 58, 8, doble},
    {"CARGOSD", 66, 8, doble},
    {"ABONOSD", 74, 8, doble},
    {"BORRADOR", 82, 1, texto},
    {"CANALACTIVO", 83, 3, texto},
    {"LINEAS", 86, 2, texto},
    {"COMPRIMIDO", 88, 2, texto},  // a number in the record, two raw characters by name
    {"MES", 90, 2, texto8},
    {"AÑO", 92, 2, texto8},
    {"CLAVE4", 94, 1, texto},
    {"CHECK", 95, 1, texto},
    {"PASSWORD1", 96, 4, protegido},
    {"PASSWORD2", 100, 4, protegido},
    {"AUTOMATICO", 104, 1, texto},
    {"AVISOS", 105, 1, texto},
    {"ACTUALIZADO", 106, 1, texto},
    {"EFECTOS2", 107, 20, texto},
    {"DOCUMENTO", 127, 6, texto},
    {"MONTH_CHECK", 133, 1, byte},
    {"CUENTACANAL", 134, 7, texto},
    {"FECHALIMITE", 141, 6, fecha},
    {"PRESUPUESTOANALITICO", 147, 1, byte},
    {"MOSTRAREMPRESAS", 148, 1, byte},
    {"MINUTOSDESDEULTIMACOPIA", 149, 2, entero},  // four bytes, over the next two fields: on purpose
    {"CARTERAULTIMAPENULTIMA", 151, 1, byte},
    {"CANALALFA", 152, 1, byte},
    {"REFERENCIA", 153, 1, byte},
    {"CONTADOR1", 154, 4, entero},
    {"CONTADOR2", 158, 4, entero},
    {"CONTADOR3", 162, 4, entero},
    {"NULL3", 166, 7, texto},
    {"RecalcularPresupuesto", 171, 1, texto},  // never found: names are compared in upper case
    {"ARCHIVOMONEDABASE", 173, 1, byte},
    {"NUEVAAMORT", 174, 1, byte},
    {"NUM_DIARIO", 175, 1, byte},
    {"DIAROIO_COLOR", 176, 1, byte},
    {"VERSION", 177, 4, simple},
    {"APERTURA", 181, 2, texto8},
    {"NULL4", 183, 330, texto},
    {"DIRECCION", 513, 35, texto},
    {"CP", 548, 5, texto},
    {"POBLACION", 553, 30, texto},
    {"PROVINCIA", 583, 30, texto},
    {"CAPITAL_SOCIAL", 613, 8, doble},
    {"NIF", 621, 15, texto},
    {"REF", 636, 10, texto},
    {"IVA1", 646, 20, texto},
    {"IVA2", 666, 20, texto},
    {"IVA3", 686, 20, texto},
    {"IVA4", 706, 20, texto},
    {"IVA5", 726, 20, texto},
    {"IVA6", 746, 20, texto},
});

constexpr std::string_view sinEmpresa = "No hay una empresa abierta";
constexpr int cifrasSimple = 7;

std::size_t bytesDe(const CampoNombrado& campo) {
    switch (campo.tipo) {
        case simple:
        case entero:
            return 4;
        case doble:
            return 8;
        case byte:
            return 1;
        default:
            return campo.longitud;
    }
}

// Blanks where a number should be are the filling of a file that was made longer: no number was ever stored
// there.
bool esRelleno(std::span<const std::byte> bytes) {
    return std::ranges::all_of(bytes, [](std::byte b) { return b == std::byte{' '}; });
}

std::string mostrarReal(std::span<const std::byte> bytes, bool esDoble) {
    if (esRelleno(bytes)) return "0";
    return esDoble ? textoDeNumero(leerNumero<double>(bytes))
                   : textoDeNumero(static_cast<double>(leerNumero<float>(bytes)), cifrasSimple);
}

std::string mostrar(const CapaDatos& capa, const CampoNombrado& campo, std::span<const std::byte> bytes) {
    const std::string crudo(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    switch (campo.tipo) {
        case simple:
        case doble:
            return mostrarReal(bytes, campo.tipo == doble);
        case entero:
            return std::to_string(leerNumero<std::int32_t>(bytes));
        case byte:
            return std::to_string(leerNumero<std::uint8_t>(bytes));
        case fecha:
            return fechaVacia(crudo) ? std::string() : FechaNormal(capa, crudo);
        case protegido:
            return {};
        default:
            return core::aUtf8(crudo);
    }
}

template <typename T>
std::optional<std::vector<std::byte>> imagenEntera(double valor) {
    const double redondo = std::nearbyint(valor);
    if (redondo < std::numeric_limits<T>::min() || redondo > std::numeric_limits<T>::max()) return {};
    std::vector<std::byte> bytes(sizeof(T));
    ponerNumero(std::span(bytes), static_cast<T>(redondo));
    return bytes;
}

template <typename T>
std::optional<std::vector<std::byte>> imagenReal(double valor) {
    if (std::fabs(valor) > static_cast<double>(std::numeric_limits<T>::max())) return {};
    std::vector<std::byte> bytes(sizeof(T));
    ponerNumero(std::span(bytes), static_cast<T>(valor));
    return bytes;
}

std::vector<std::byte> imagenTexto(std::string_view valor, std::size_t longitud) {
    auto texto = core::aAnsi(valor).bytes();
    texto.resize(longitud, ' ');
    const auto bytes = platform::comoBytes(texto);
    return {bytes.begin(), bytes.end()};
}

// The bytes to write; nothing when the field stays as it is.
std::optional<std::vector<std::byte>> imagen(const CampoNombrado& campo, std::string_view valor) {
    switch (campo.tipo) {
        case simple:
            return imagenReal<float>(core::Val(valor));
        case doble:
            return imagenReal<double>(core::Val(valor));
        case entero:
            return imagenEntera<std::int32_t>(core::Val(valor));
        case byte:
            return imagenEntera<std::uint8_t>(core::Val(valor));
        case fecha:  // by name a date is only read
        case protegido:
            return {};
        default:
            return imagenTexto(valor, campo.longitud);
    }
}

}  // namespace

std::span<const CampoNombrado> camposNombrados() {
    return campos;
}

std::optional<CampoNombrado> buscarCampoNombrado(std::string_view nombre) {
    const auto mayusculas = core::aUtf8(MayusculasAnsi(core::aAnsi(nombre)));
    const auto hallado = std::ranges::find(campos, mayusculas, &CampoNombrado::nombre);
    if (hallado == campos.end()) return std::nullopt;
    return *hallado;
}

std::string VistaNombrada::GetTotal(std::string_view nombre) {
    if (!capa_.enVigor.abierta()) return std::string(sinEmpresa);
    const auto campo = buscarCampoNombrado(nombre);
    if (!campo) return SeccionTextos(capa_).GET_TOTAL(nombre);
    std::string valor;
    leerEmpresa(capa_, capa_.enVigor.gArchivoEmpresa, [&](platform::Archivo& archivo) {
        std::vector<std::byte> bytes(bytesDe(*campo));  // zero where the file is shorter
        const bool hay = archivo.leer(campo->posicion - 1, bytes) > 0;
        const bool deTexto = campo->tipo == texto || campo->tipo == texto8;
        valor = hay || !deTexto ? mostrar(capa_, *campo, bytes) : std::string();
    });
    return valor;
}

void VistaNombrada::PutTotal(std::string_view nombre, std::string_view valor) {
    if (!capa_.enVigor.abierta()) return;
    const auto campo = buscarCampoNombrado(nombre);
    if (!campo) {
        SeccionTextos(capa_).PUT_TOTAL(nombre, valor);
        return;
    }
    if (const auto bytes = imagen(*campo, valor)) {
        cambiarEmpresa(capa_, capa_.enVigor.gArchivoEmpresa,
                       [&](platform::Archivo& archivo) { archivo.escribir(campo->posicion - 1, *bytes); });
    }
}

std::string textoDeNumero(double valor, int cifras) {
    constexpr int exponenteDesde = 15;
    if (!std::isfinite(valor) || valor == 0) return "0";
    std::array<char, 48> letras{};
    const auto fin = std::to_chars(letras.data(), letras.data() + letras.size(), std::fabs(valor),
                                   std::chars_format::scientific, cifras - 1)
                         .ptr;
    const std::string_view forma(letras.data(), static_cast<std::size_t>(fin - letras.data()));
    const auto e = forma.find('e');
    const int exponente = core::ValEntero(forma.substr(e + 1));
    std::string digitos(forma.substr(0, e));
    std::erase(digitos, '.');
    digitos.erase(digitos.find_last_not_of('0') + 1);

    std::string resultado;
    if (exponente >= exponenteDesde) {
        resultado = digitos.substr(0, 1) + (digitos.size() > 1 ? "." + digitos.substr(1) : "") + "E+" +
                    std::to_string(exponente);
    } else if (exponente < 0) {
        resultado = "0." + std::string(static_cast<std::size_t>(-exponente - 1), '0') + digitos;
    } else {
        const auto enteros = static_cast<std::size_t>(exponente) + 1;
        digitos.resize(std::max(digitos.size(), enteros), '0');
        resultado = digitos.substr(0, enteros);
        if (digitos.size() > enteros) resultado += "." + digitos.substr(enteros);
    }
    return valor < 0 ? "-" + resultado : resultado;
}

}  // namespace tarvoline::data
