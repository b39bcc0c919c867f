// An archive opened for reading.
#pragma once

#include <zip.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/archivos.h"
#include "zip/fuente_archivo.h"
#include "zip/zip.h"

namespace tarvoline::zip {

struct DescartarZip {
    void operator()(zip_t* archivo) const { zip_discard(archivo); }
};
using ZipAbierto = std::unique_ptr<zip_t, DescartarZip>;

struct EntradaLeida : EntradaListada {
    bool conNul = false;   // the name holds a NUL
    bool admitida = true;  // not encrypted, and of a method that can be unpacked
};

class Lector {
  public:
    // Opens at once; see resultado().
    Lector(platform::SistemaArchivos& archivos, const std::string& ruta);

    // codigo::bien, noEsZip, estructura, memoria, or errorArchivo when the file layer failed.
    int resultado() const { return resultado_; }
    // In the archive's order, which is also the numbering of zip().
    const std::vector<EntradaLeida>& entradas() const { return entradas_; }
    zip_t* zip() const { return zip_.get(); }
    // True when the file layer failed under libzip.
    bool falloLectura() const { return fuente_.fallo().has_value(); }

  private:
    int abrir(platform::SistemaArchivos& archivos, const std::string& ruta);
    int abrirZip();
    bool describir(std::uint64_t indice, const std::string& crudo, bool utf8);

    FuenteArchivo fuente_;
    ZipAbierto zip_;
    std::vector<EntradaLeida> entradas_;
    int resultado_;
};

}  // namespace tarvoline::zip
