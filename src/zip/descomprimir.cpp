#include <zip.h>

#include <memory>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "zip/lector.h"
#include "zip/nombres.h"
#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

struct CerrarEntrada {
    void operator()(zip_file_t* entrada) const { zip_fclose(entrada); }
};

struct Destino {
    std::uint64_t indice = 0;
    std::string ruta;  // relative to the target folder
};

// Where everything goes, found out before anything is written.
struct Plan {
    std::vector<Destino> archivos;
    std::set<std::string> carpetas;
    std::uint64_t total = 0;
    bool omitidas = false;
};

// Notes the folders above `ruta`.
void anotarPadres(std::string_view ruta, std::set<std::string>& carpetas) {
    for (auto corte = ruta.rfind('/'); corte != std::string_view::npos; corte = ruta.rfind('/')) {
        ruta = ruta.substr(0, corte);
        if (!carpetas.emplace(ruta).second) return;
    }
}

// False when an entry would leave the target folder, or two of them want one path.
bool planear(const std::vector<EntradaLeida>& entradas, Plan& plan) {
    std::set<std::string> rutas;
    for (std::uint64_t i = 0; i < entradas.size(); ++i) {
        const EntradaLeida& entrada = entradas[i];
        auto ruta = rutaSegura(entrada.nombre);
        if (entrada.conNul || !ruta) return false;
        anotarPadres(*ruta, plan.carpetas);
        if (entrada.esDirectorio) {
            plan.carpetas.insert(*ruta);
            continue;
        }
        if (!rutas.insert(*ruta).second) return false;
        if (!entrada.admitida) {
            plan.omitidas = true;
            continue;
        }
        plan.total += entrada.longitud;
        plan.archivos.push_back({i, std::move(*ruta)});
    }
    for (const auto& carpeta : plan.carpetas) {
        if (rutas.contains(carpeta)) return false;
    }
    return true;
}

class Desempaquetador {
  public:
    Desempaquetador(platform::SistemaArchivos& archivos, const Lector& lector, const Progreso& progreso)
        : archivos_(archivos), lector_(lector), progreso_(progreso), bufer_(std::size_t{256} << 10) {}

    int ejecutar(const Plan& plan, const std::string& carpeta) {
        total_ = plan.total;
        archivos_.crearDirectorios(carpeta);
        for (const auto& cada : plan.carpetas)
            archivos_.crearDirectorios(carpeta + "/" + cada);
        for (const auto& destino : plan.archivos) {
            if (const int resto = sacar(destino.indice, carpeta + "/" + destino.ruta)) return resto;
        }
        return plan.omitidas ? codigo::entradasOmitidas : codigo::bien;
    }

  private:
    // Writes one entry; a file that does not come out whole is deleted.
    int sacar(std::uint64_t indice, const std::string& ruta) {
        const std::unique_ptr<zip_file_t, CerrarEntrada> entrada(zip_fopen_index(lector_.zip(), indice, 0));
        if (entrada == nullptr) return falloDeEntrada();
        auto archivo = archivos_.abrir(ruta, platform::Apertura::vaciar);
        bool entero = false;
        try {
            const int resto = copiar(*entrada, *archivo, lector_.entradas()[indice].longitud);
            entero = resto == codigo::bien;
            archivo.reset();
            if (!entero) archivos_.borrar(ruta);
            return resto;
        } catch (...) {
            archivo.reset();
            if (!entero) archivos_.borrar(ruta);
            throw;
        }
    }

    int copiar(zip_file_t& entrada, platform::Archivo& archivo, std::uint64_t declarada) {
        std::uint64_t escritos = 0;
        while (true) {
            const auto leidos = zip_fread(&entrada, bufer_.data(), bufer_.size());
            if (leidos < 0) return falloDeEntrada();
            if (leidos == 0) return escritos == declarada ? codigo::bien : codigo::estructura;
            const auto cuantos = static_cast<std::size_t>(leidos);
            if (cuantos > declarada - escritos) return codigo::estructura;
            archivo.escribir(escritos, std::span(bufer_).first(cuantos));
            escritos += cuantos;
            hecho_ += cuantos;
            if (progreso_ && !progreso_(hecho_, total_)) return codigo::abortado;
        }
    }

    int falloDeEntrada() const { return lector_.falloLectura() ? codigo::errorArchivo : codigo::estructura; }

    platform::SistemaArchivos& archivos_;
    const Lector& lector_;
    const Progreso& progreso_;
    std::vector<std::byte> bufer_;
    std::uint64_t hecho_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace

int Zip::listar(std::vector<EntradaListada>& entradas) {
    const Lector lector(archivos_, destino);
    entradas.assign(lector.entradas().begin(), lector.entradas().end());
    return lector.resultado();
}

int Zip::descomprimir(std::string_view carpeta) {
    try {
        const Lector lector(archivos_, destino);
        if (lector.resultado() != codigo::bien) return lector.resultado();
        Plan plan;
        if (!planear(lector.entradas(), plan)) return codigo::estructura;
        return Desempaquetador(archivos_, lector, progreso).ejecutar(plan, std::string(carpeta));
    } catch (const platform::ErrorArchivo& error) {
        const bool lleno = error.numero() == platform::error_archivo::discoLleno;
        return lleno ? codigo::discoLleno : codigo::errorArchivo;
    } catch (const std::bad_alloc&) {
        return codigo::memoria;
    }
}

}  // namespace tarvoline::zip
