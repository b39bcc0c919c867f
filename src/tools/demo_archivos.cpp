#include "tools/demo_archivos.h"

#include <algorithm>
#include <array>

#include "core/carpetas.h"
#include "core/texto.h"

namespace tarvoline::tools {

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::array subcarpetas = {"Facturas"sv, "Nóminas"sv, "Tickets/Mañana"sv, "Tickets/Tarde"sv};
constexpr std::size_t bloque = 4096;

std::string bloqueAzar(Azar& azar) {
    std::string bytes(bloque, '\0');
    for (auto& c : bytes) {
        c = static_cast<char>(azar.crudo() & 0xFFU);
    }
    return bytes;
}

std::string bloqueLlano(Azar& azar) {
    const auto linea = "BT /F1 10 Tf 72 " + azar.cifras(3) + " Td (Importe " + azar.cifras(4) + ") Tj ET\n";
    std::string bytes;
    while (bytes.size() < bloque) {
        bytes += linea;
    }
    bytes.resize(bloque);
    return bytes;
}

// Blocks that shrink to nothing and blocks that do not shrink, by turns.
std::string relleno(Azar& azar, std::size_t longitud) {
    std::string bytes;
    for (bool llano = false; bytes.size() < longitud; llano = !llano) {
        bytes += llano ? bloqueLlano(azar) : bloqueAzar(azar);
    }
    bytes.resize(longitud);
    return bytes;
}

std::string jpeg(Azar& azar, std::size_t longitud) {
    return "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01"s.append(relleno(azar, longitud)).append("\xFF\xD9");
}

std::string pdf(Azar& azar, std::size_t longitud) {
    return "%PDF-1.4\n1 0 obj\n<< /Length " + std::to_string(longitud) + " >>\nstream\n" +
           relleno(azar, longitud) + "\nendstream\nendobj\ntrailer\n%%EOF\n";
}

std::size_t tamanoArchivo(Azar& azar) {
    return static_cast<std::size_t>(azar.entre(20, 180)) * 1024;
}

ArchivoDemo grabar(platform::SistemaArchivos& archivos, const std::string& ruta,
                   const std::string& contenido) {
    archivos.crearDirectorios(core::SepararRuta(ruta).directorio);
    archivos.abrir(ruta, platform::Apertura::vaciar)->escribir(0, platform::comoBytes(contenido));
    return {ruta, contenido.size()};
}

}  // namespace

std::vector<ArchivoDemo> crearImagenes(platform::SistemaArchivos& archivos, Azar& azar,
                                       const std::string& carpeta, std::size_t bytes) {
    std::vector<ArchivoDemo> hechos;
    const auto raiz = core::conSeparadorFinal(carpeta);
    std::size_t total = 0;
    for (int n = 1; total < bytes; ++n) {
        const auto donde = raiz + std::string(azar.uno(subcarpetas)) + "/Escaneo n.º " + core::conCeros(n, 4);
        const auto tamano = std::min(tamanoArchivo(azar), bytes - total);
        hechos.push_back(azar.unaDeCada(2) ? grabar(archivos, donde + ".jpg", jpeg(azar, tamano))
                                           : grabar(archivos, donde + ".pdf", pdf(azar, tamano)));
        total += hechos.back().longitud;
    }
    return hechos;
}

std::vector<ArchivoDemo> crearAdjuntos(platform::SistemaArchivos& archivos, Azar& azar,
                                       const std::string& carpeta, std::size_t bytes) {
    const auto raiz = core::conSeparadorFinal(carpeta);
    std::vector<ArchivoDemo> hechos = {
        grabar(archivos, raiz + "Contratos/Escritura de constitución.pdf", pdf(azar, bytes / 2)),
        grabar(archivos, raiz + "Año anterior/Impuestos/Declaración anual.pdf", pdf(azar, bytes / 4)),
        grabar(archivos, raiz + "Logotipo Ñandú.jpg", jpeg(azar, bytes / 4)),
        grabar(archivos, raiz + "Léame.txt", "Documentos que acompañan a la empresa.\r\n"),
        grabar(archivos, raiz + "Vacío.txt", ""),
    };
    return hechos;
}

}  // namespace tarvoline::tools
