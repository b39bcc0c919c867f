// Files that lie beside a company: scanned invoices in its image folder, documents in an attached one. Their
// contents begin and end like the real thing and shrink to about half.
#pragma once

#include <string>
#include <vector>

#include "platform/archivos.h"
#include "tools/demo_azar.h"

namespace tarvoline::tools {

struct ArchivoDemo {
    std::string ruta;
    std::size_t longitud = 0;
};

// Both make the folders they need. Throw platform::ErrorArchivo.
std::vector<ArchivoDemo> crearImagenes(platform::SistemaArchivos& archivos, Azar& azar,
                                       const std::string& carpeta, std::size_t bytes);
std::vector<ArchivoDemo> crearAdjuntos(platform::SistemaArchivos& archivos, Azar& azar,
                                       const std::string& carpeta, std::size_t bytes);

}  // namespace tarvoline::tools
