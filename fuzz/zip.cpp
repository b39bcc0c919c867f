// An archive from a stranger: listing and unpacking it must refuse or succeed, write nothing outside the
// target and never more than was declared.
#include <cstdlib>
#include <string>

#include "apoyo/archivos_memoria.h"
#include "zip/zip.h"

namespace {

using tarvoline::pruebas::ArchivosMemoria;
using tarvoline::zip::EntradaListada;

void exigir(bool condicion) {
    if (!condicion) std::abort();
}

std::uint64_t declarado(const std::vector<EntradaListada>& lista) {
    std::uint64_t total = 0;
    for (const auto& entrada : lista) {
        if (entrada.longitud > UINT64_MAX - total) return UINT64_MAX;
        total += entrada.longitud;
    }
    return total;
}

std::uint64_t escritoDebajo(ArchivosMemoria& archivos) {
    std::uint64_t total = 0;
    for (const auto& ruta : archivos.todas()) {
        const bool dentro = ruta.find("fuera/") != std::string::npos;
        exigir(dentro || ruta.ends_with("malo.zip") || ruta == "/");
        if (dentro && !ruta.ends_with('/')) total += archivos.estado(ruta)->longitud;
    }
    return total;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud) {
    using namespace tarvoline::zip;
    ArchivosMemoria archivos;
    archivos.sembrar("malo.zip", {reinterpret_cast<const char*>(datos), longitud});
    Zip zip(archivos);
    zip.destino = "malo.zip";
    std::vector<EntradaListada> lista;
    const int alListar = zip.listar(lista);
    const std::uint64_t total = declarado(lista);
    constexpr std::uint64_t demasiado = std::uint64_t{16} << 20;
    if (total > demasiado) return 0;

    const int alSacar = zip.descomprimir("fuera");
    const std::uint64_t escrito = escritoDebajo(archivos);
    if (alListar != codigo::bien) {
        exigir(alSacar == alListar && escrito == 0);
    } else {
        exigir(escrito <= total);
    }
    return 0;
}
