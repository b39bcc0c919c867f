#include "zip/lector.h"

#include <algorithm>
#include <utility>

#include "zip/directorio_central.h"
#include "zip/nombres.h"

namespace tarvoline::zip {

Lector::Lector(platform::SistemaArchivos& archivos, const std::string& ruta)
    : fuente_(archivos, ruta), resultado_(codigo::bien) {
    try {
        resultado_ = abrir(archivos, ruta);
    } catch (const platform::ErrorArchivo& error) {
        const bool falta = error.numero() == platform::error_archivo::noExiste ||
                           error.numero() == platform::error_archivo::rutaNoExiste;
        resultado_ = falta ? codigo::noEsZip : codigo::errorArchivo;
    } catch (const std::bad_alloc&) {
        resultado_ = codigo::memoria;
    }
}

int Lector::abrir(platform::SistemaArchivos& archivos, const std::string& ruta) {
    std::vector<NombreCrudo> nombres;
    {
        const auto archivo = archivos.abrir(ruta, platform::Apertura::lectura);
        if (const int resto = leerDirectorioCentral(*archivo, nombres)) return resto;
    }
    if (const int resto = abrirZip()) return resto;
    // An archive that two readers read in two ways is made to deceive one of them.
    const auto cuantas = zip_get_num_entries(zip_.get(), 0);
    if (cuantas < 0 || static_cast<std::uint64_t>(cuantas) != nombres.size()) return codigo::estructura;
    entradas_.reserve(nombres.size());
    for (std::uint64_t i = 0; i < nombres.size(); ++i) {
        if (!describir(i, nombres[i].nombre, nombres[i].utf8)) return codigo::estructura;
    }
    return codigo::bien;
}

int Lector::abrirZip() {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* fuente = fuente_.crear(&error);
    if (fuente != nullptr) zip_.reset(zip_open_from_source(fuente, ZIP_RDONLY, &error));
    if (zip_ == nullptr && fuente != nullptr) zip_source_free(fuente);
    const int causa = zip_error_code_zip(&error);
    zip_error_fini(&error);
    if (zip_ != nullptr) return codigo::bien;
    if (fuente_.fallo()) return codigo::errorArchivo;
    if (causa == ZIP_ER_MEMORY) return codigo::memoria;
    return causa == ZIP_ER_NOZIP ? codigo::noEsZip : codigo::estructura;
}

bool Lector::describir(std::uint64_t indice, const std::string& crudo, bool utf8) {
    zip_stat_t ficha;
    zip_stat_init(&ficha);
    const char* deLibzip = zip_get_name(zip_.get(), indice, ZIP_FL_ENC_RAW);
    if (deLibzip == nullptr || zip_stat_index(zip_.get(), indice, 0, &ficha) != 0) return false;

    EntradaLeida entrada;
    entrada.conNul = crudo.find('\0') != std::string::npos;
    // libzip prefers a name from the Unicode path field; that one is UTF-8 too.
    const bool otro = !entrada.conNul && crudo != deLibzip;
    entrada.nombre = otro || utf8 ? std::string(deLibzip) : desdeCP850(crudo);
    std::replace(entrada.nombre.begin(), entrada.nombre.end(), '\\', '/');
    entrada.esDirectorio = entrada.nombre.ends_with('/');
    entrada.longitud = ficha.size;
    entrada.comprimida = ficha.comp_size;
    entrada.cifrada = ficha.encryption_method != ZIP_EM_NONE;
    entrada.admitida = !entrada.cifrada && zip_compression_method_supported(ficha.comp_method, 0) != 0;
    entradas_.push_back(std::move(entrada));
    return true;
}

}  // namespace tarvoline::zip
