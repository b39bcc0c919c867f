#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <new>
#include <system_error>
#include <thread>

#include "zip/compresor.h"
#include "zip/fuente_archivo.h"
#include "zip/fuente_entrada.h"
#include "zip/lector.h"
#include "zip/seleccion.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

std::time_t segundos(std::int64_t nanosegundos) {
    constexpr std::int64_t porSegundo = 1'000'000'000;
    const std::int64_t resto = nanosegundos % porSegundo;
    return static_cast<std::time_t>(nanosegundos / porSegundo - (resto < 0 ? 1 : 0));
}

// Puts finished entries into the archive: the second half of a packing run.
class Escritor {
  public:
    Escritor(platform::SistemaArchivos& archivos, const std::string& destino, Derrame& derrame)
        : archivos_(archivos), fuente_(archivos, destino), derrame_(derrame), destino_(destino) {}

    int escribir(const std::vector<Seleccionado>& entradas, const std::vector<Comprimida>& comprimidas,
                 const std::function<bool()>& seguir) {
        if (const int resto = abrir()) return resto;
        bool hay = false;
        for (std::size_t i = 0; i < entradas.size(); ++i) {
            if (!comprimidas[i].legible) continue;
            if (!poner(entradas[i], comprimidas[i])) return codigoDe(*zip_get_error(zip_.get()));
            hay = true;
        }
        if (!hay) return codigo::bien;
        fuente_.alEscribir(seguir);
        return cerrar();
    }

  private:
    // An archive that is there must be sound: what is wrong in it would stay wrong.
    int abrir() {
        if (const auto estado = archivos_.estado(destino_); estado && estado->longitud > 0) {
            Lector lector(archivos_, destino_);
            if (lector.resultado() != codigo::bien) return lector.resultado();
        }
        zip_error_t error;
        zip_error_init(&error);
        int resto = codigo::bien;
        zip_source_t* fuente = fuente_.crear(&error);
        if (fuente != nullptr) zip_.reset(zip_open_from_source(fuente, ZIP_CREATE, &error));
        if (zip_ == nullptr) {
            if (fuente != nullptr) zip_source_free(fuente);
            resto = codigoDe(error);
        }
        zip_error_fini(&error);
        return resto;
    }

    bool poner(const Seleccionado& entrada, const Comprimida& comprimida) {
        return entrada.esDirectorio ? ponerCarpeta(entrada) : ponerArchivo(entrada, comprimida);
    }

    bool ponerCarpeta(const Seleccionado& entrada) {
        if (zip_name_locate(zip_.get(), entrada.nombre.c_str(), 0) >= 0) return true;
        const auto indice = zip_dir_add(zip_.get(), entrada.nombre.c_str(), ZIP_FL_ENC_UTF_8);
        return indice >= 0 && fechar(indice, entrada, S_IFDIR | 0755U);
    }

    bool ponerArchivo(const Seleccionado& entrada, const Comprimida& comprimida) {
        fuentes_.emplace_back(comprimida, derrame_, segundos(entrada.modificado));
        zip_source_t* fuente = fuentes_.back().crear(zip_.get());
        if (fuente == nullptr) return false;
        const char* nombre = entrada.nombre.c_str();
        auto indice = zip_file_add(zip_.get(), nombre, fuente, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8);
        if (indice < 0 && zip_error_code_zip(zip_get_error(zip_.get())) == ZIP_ER_INVAL) {
            // A name on disk that is not UTF-8 goes in as its bytes: better an odd name than a missing file.
            indice = zip_file_add(zip_.get(), nombre, fuente, ZIP_FL_OVERWRITE | ZIP_FL_ENC_CP437);
        }
        if (indice < 0) {
            zip_source_free(fuente);
            return false;
        }
        const auto metodo = comprimida.deflactada ? ZIP_CM_DEFAULT : ZIP_CM_STORE;
        return zip_set_file_compression(zip_.get(), static_cast<zip_uint64_t>(indice), metodo, 0) == 0 &&
               fechar(indice, entrada, S_IFREG | 0644U);
    }

    // The archive's own times are local and even seconds; the extra field 0x5455 tells the exact one.
    bool fechar(zip_int64_t cual, const Seleccionado& entrada, unsigned modo) {
        const auto indice = static_cast<zip_uint64_t>(cual);
        const std::time_t fecha = segundos(entrada.modificado);
        const auto bits = static_cast<std::uint32_t>(fecha);
        const std::array<zip_uint8_t, 5> campo{
            1, static_cast<zip_uint8_t>(bits), static_cast<zip_uint8_t>(bits >> 8),
            static_cast<zip_uint8_t>(bits >> 16), static_cast<zip_uint8_t>(bits >> 24)};
        constexpr zip_uint16_t horaUnix = 0x5455;
        const bool cabe = fecha >= INT32_MIN && fecha <= INT32_MAX;
        const unsigned deDos = S_ISDIR(modo) ? 0x10U : 0U;
        return zip_file_set_mtime(zip_.get(), indice, fecha, 0) == 0 &&
               (!cabe || zip_file_extra_field_set(zip_.get(), indice, horaUnix, 0, campo.data(), campo.size(),
                                                  ZIP_FL_LOCAL | ZIP_FL_CENTRAL) == 0) &&
               zip_file_set_external_attributes(zip_.get(), indice, 0, ZIP_OPSYS_UNIX,
                                                (modo << 16) | deDos) == 0;
    }

    int cerrar() {
        if (zip_close(zip_.get()) == 0) {
            static_cast<void>(zip_.release());
            return codigo::bien;
        }
        fuente_.relanzar();
        return codigoDe(*zip_get_error(zip_.get()));
    }

    int codigoDe(const zip_error_t& error) const {
        if (fuente_.abandonada()) return codigo::abortado;
        if (fuente_.fallo()) return codigoEscritura(*fuente_.fallo());
        return error.zip_err == ZIP_ER_MEMORY ? codigo::memoria : codigo::escritura;
    }

    platform::SistemaArchivos& archivos_;
    FuenteArchivo fuente_;
    std::deque<FuenteEntrada> fuentes_;
    Derrame& derrame_;
    const std::string& destino_;
    ZipAbierto zip_;  // after the sources, so that it lets go of them first
};

unsigned hilosPara(unsigned pedidos) {
    constexpr unsigned maximo = 64;
    return std::clamp(pedidos == 0 ? std::thread::hardware_concurrency() : pedidos, 1U, maximo);
}

std::uint64_t sumaLongitudes(const std::vector<Seleccionado>& entradas) {
    std::uint64_t total = 0;
    for (const auto& entrada : entradas)
        total += entrada.longitud;
    return total;
}

}  // namespace

int Zip::comprimir(std::string_view base, const std::vector<std::string>& lista) {
    ilegibles_.clear();
    try {
        const auto entradas = seleccionar(archivos_, base, lista, recursivo, destino);
        if (entradas.empty()) return codigo::nadaQueHacer;

        Derrame derrame(archivos_, destino);
        std::vector<Comprimida> comprimidas;
        Compresor compresor(archivos_, derrame, {nivel, hilosPara(hilos), presupuesto});
        if (const int resto = compresor.comprimir(entradas, comprimidas, progreso)) return resto;
        for (std::size_t i = 0; i < entradas.size(); ++i) {
            if (!comprimidas[i].legible) ilegibles_.push_back(entradas[i].origen);
        }
        const std::uint64_t total = sumaLongitudes(entradas);
        const auto seguir = [&] { return !progreso || progreso(total, total); };
        Escritor escritor(archivos_, destino, derrame);
        if (const int resto = escritor.escribir(entradas, comprimidas, seguir)) return resto;
        return ilegibles_.empty() ? codigo::bien : codigo::errorArchivo;
    } catch (const platform::ErrorArchivo& error) {
        return codigoEscritura(error);
    } catch (const std::bad_alloc&) {
        return codigo::memoria;
    } catch (const std::system_error&) {
        return codigo::memoria;  // no further thread could be had
    }
}

}  // namespace tarvoline::zip
