// The head record of a company file (`.QZT`): 264 bytes at the start of the file, read and written in one
// piece.
//
// Positions count from 1. Texts are Windows-1252, of fixed length, filled with blanks; numbers are
// little-endian, encoded byte by byte: single and double as IEEE 754, integers in two's complement.
// docs/formats.md has the whole table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/texto.h"
#include "platform/archivos.h"

namespace tarvoline::data {

// A field of the head: where it lies and what it holds. The type of the descriptor decides what is read.
struct CampoTexto {
    std::size_t posicion, longitud;
};
struct CampoByte {
    std::size_t posicion;
};
struct CampoEntero16 {
    std::size_t posicion;
};
struct CampoEntero32 {
    std::size_t posicion;
};
struct CampoSimple {
    std::size_t posicion;
};
struct CampoDoble {
    std::size_t posicion;
};

namespace cabecera {
inline constexpr CampoTexto COMUN{1, 2};  // company number
inline constexpr CampoByte ANALITICA{3}, CANAL{4}, ACREEDORPRESU{5};
inline constexpr CampoTexto EFECTOS1{6, 20};
inline constexpr CampoTexto NIVEL{26, 5};  // one digit per account level
inline constexpr CampoTexto AUX{31, 4};    // AUX1, AUX2 one digit, AUX3 two
inline constexpr CampoTexto IVAIGIC{35, 1};
inline constexpr CampoTexto CONTADORANALITICA{36, 6};
inline constexpr CampoSimple APUNTES{42}, PAGINAS{46};
inline constexpr CampoDoble CARGOSA{50}, ABONOSA{58}, CARGOSD{66}, ABONOSD{74};
inline constexpr CampoTexto BORRADOR{82, 1};  // "1": copies are active for this company
inline constexpr CampoTexto CANALACTIVO{83, 3};
inline constexpr CampoTexto LINEAS{86, 2};  // first character: the plan chosen at creation
inline constexpr CampoEntero16 COMPRIMIDO{88};
inline constexpr CampoTexto MES{90, 2};  // month of the last posting
inline constexpr CampoTexto AÑO{92, 2};  // year in which the accounting year opens
inline constexpr CampoTexto CLAVE4{94, 1}, CHECK{95, 1};
inline constexpr CampoTexto PASSWORD1{96, 4}, PASSWORD2{100, 4};  // masked: DesenmascararClave
inline constexpr CampoTexto AUTOMATICO{104, 1}, AVISOS{105, 1}, ACTUALIZADO{106, 1};
inline constexpr CampoTexto EFECTOS2{107, 20};
inline constexpr CampoTexto DOCUMENTO{127, 6};  // entry counter
inline constexpr CampoByte MONTH_CHECK{133};
inline constexpr CampoTexto CUENTACANAL{134, 7};
inline constexpr CampoTexto FECHALIMITE{141, 6};  // stored date
inline constexpr CampoByte PRESUPUESTOANALITICO{147}, MOSTRAREMPRESAS{148};
inline constexpr CampoEntero16 MINUTOSDESDEULTIMACOPIA{149};
inline constexpr CampoByte CARTERAULTIMAPENULTIMA{151}, CANALALFA{152}, REFERENCIA{153};
inline constexpr CampoEntero32 CONTADOR1{154}, CONTADOR2{158}, CONTADOR3{162};
inline constexpr CampoTexto NULL3{166, 7};          // five characters and two bytes (169, 172)
inline constexpr CampoByte ARCHIVOMONEDABASE{173};  // 1: currency table Moneda1.QZF
inline constexpr CampoByte NUEVAAMORT{174}, NUM_DIARIO{175}, DIAROIO_COLOR{176};
inline constexpr CampoSimple VERSION{177};      // version of the files
inline constexpr CampoTexto APERTURA{181, 2};   // first month of the accounting year
inline constexpr CampoTexto RESERVA1{183, 38};  // nineteen texts of two
inline constexpr CampoTexto RESERVA2{221, 2};
inline constexpr CampoByte RESERVA3{223};
inline constexpr CampoTexto RESERVA4{224, 35}, RESERVA5{259, 1};
inline constexpr CampoEntero32 RESERVA6{260};
inline constexpr CampoTexto RESERVA7{264, 1};
}  // namespace cabecera

class CabeceraEmpresa {
  public:
    static constexpr std::size_t longitud = 264;

    // All bytes zero: what a file of length 0 reads as.
    CabeceraEmpresa() = default;
    // The head of a new company of the year `anio` (two digits), its files being of version `version`. The
    // number (COMUN) is left blank.
    static CabeceraEmpresa nueva(std::string_view anio, float version);

    // The start of an open company file; bytes that the file does not have are zero. Throws ErrorArchivo.
    static CabeceraEmpresa leer(platform::Archivo& archivo);
    void grabar(platform::Archivo& archivo) const;

    // The field's bytes as they stand, blanks and zero bytes included.
    core::TextoAnsi ansi(CampoTexto campo) const;
    // The same in UTF-8, without zero bytes and trailing blanks.
    std::string texto(CampoTexto campo) const;
    std::uint8_t valor(CampoByte campo) const;
    std::int16_t valor(CampoEntero16 campo) const;
    std::int32_t valor(CampoEntero32 campo) const;
    float valor(CampoSimple campo) const;
    double valor(CampoDoble campo) const;

    // Left-justified, filled with blanks, cut to the field.
    void poner(CampoTexto campo, std::string_view utf8) { poner(campo, core::aAnsi(utf8)); }
    void poner(CampoTexto campo, const core::TextoAnsi& texto);
    void poner(CampoByte campo, std::uint8_t valor);
    void poner(CampoEntero16 campo, std::int16_t valor);
    void poner(CampoEntero32 campo, std::int32_t valor);
    void poner(CampoSimple campo, float valor);
    void poner(CampoDoble campo, double valor);

    bool operator==(const CabeceraEmpresa&) const = default;

  private:
    std::array<std::byte, longitud> bytes_{};
};

}  // namespace tarvoline::data
