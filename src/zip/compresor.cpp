#include "zip/compresor.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <new>
#include <thread>
#include <utility>

namespace tarvoline::zip {
namespace {

// Large enough that pieces which do not look back cost next to nothing, small enough for a prompt stop.
constexpr std::uint64_t piezaMayor = std::uint64_t{8} << 20;
constexpr std::uint64_t piezaMenor = std::uint64_t{16} << 10;

std::uint32_t sumar(std::span<const std::byte> datos) {
    return libdeflate_crc32(0, datos.data(), datos.size());
}

}  // namespace

int codigoEscritura(const platform::ErrorArchivo& error) {
    return error.numero() == platform::error_archivo::discoLleno ? codigo::discoLleno : codigo::escritura;
}

// An input while its pieces are being made.
struct Compresor::EnCurso {
    std::size_t indice = 0;  // in entradas_
    std::size_t piezas = 0;
    std::size_t empezadas = 0;   // guarded by mutex_
    std::size_t terminadas = 0;  // guarded by mutex_
    std::uint64_t contados = 0;  // guarded by mutex_: bytes in the progress
    bool ilegible = false;       // guarded by mutex_

    std::mutex lectura;  // guards what follows
    std::unique_ptr<platform::Archivo> archivo;
};

struct Compresor::Tarea {
    std::shared_ptr<EnCurso> curso;
    std::size_t pieza = 0;
    std::uint64_t posicion = 0;
    std::size_t longitud = 0;
    bool ultima() const { return pieza + 1 == curso->piezas; }
};

// What one worker holds: together with the compressor's output never more than two pieces.
struct Compresor::Obrero {
    Deflactor deflactor;
    Bytes entrada;
};

Compresor::Compresor(platform::SistemaArchivos& archivos, Derrame& derrame, const AjustesCompresor& ajustes)
    : archivos_(archivos),
      derrame_(derrame),
      ajustes_(ajustes),
      longitudPieza_(
          std::clamp(ajustes.presupuesto / (std::uint64_t{4} * ajustes.hilos), piezaMenor, piezaMayor)) {}

int Compresor::comprimir(const std::vector<Seleccionado>& entradas, std::vector<Comprimida>& resultado,
                         const Progreso& progreso) {
    entradas_ = &entradas;
    resultado.assign(entradas.size(), {});
    resultado_ = &resultado;
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < entradas.size(); ++i) {
        resultado[i].legible = entradas[i].esDirectorio;
        if (!entradas[i].esDirectorio) indices.push_back(i);
        total_ += entradas[i].longitud;
    }
    if (const int resto = pasada(std::move(indices), ajustes_.nivel > 0, progreso)) return resto;

    // A file of one piece was stored at once when it did not shrink; one of several is read again.
    std::vector<std::size_t> hinchadas;
    for (std::size_t i = 0; i < resultado.size(); ++i) {
        if (!resultado[i].deflactada || resultado[i].comprimida < resultado[i].longitud) continue;
        soltar(resultado[i]);
        resultado[i] = {};
        hinchadas.push_back(i);
    }
    if (hinchadas.empty()) return codigo::bien;
    repaso_ = true;
    return pasada(std::move(hinchadas), false, progreso);
}

int Compresor::pasada(std::vector<std::size_t> indices, bool comprimir, const Progreso& progreso) {
    comprimiendo_ = comprimir;
    cola_ = std::move(indices);
    enCola_ = 0;
    curso_.reset();
    std::vector<std::jthread> obreros;
    const auto parada = [this] {
        const std::lock_guard cerrojo(mutex_);
        parar_ = true;
    };
    try {
        activos_ = ajustes_.hilos;
        for (unsigned i = 0; i < ajustes_.hilos; ++i)
            obreros.emplace_back([this] { trabajar(); });
        vigilar(progreso);
    } catch (...) {
        parada();
        throw;
    }
    obreros.clear();
    return fallo_;
}

// Tells the progress until the last worker has ended. It also asks now and then while nothing moves, so that
// a slow device does not keep a stop from being heard.
void Compresor::vigilar(const Progreso& progreso) {
    constexpr std::chrono::milliseconds latido(100);
    std::unique_lock cerrojo(mutex_);
    for (std::uint64_t visto = 0; activos_ > 0;) {
        aviso_.wait_for(cerrojo, latido, [&] { return activos_ == 0 || hecho_ != visto; });
        visto = hecho_;
        if (!progreso || parar_) continue;
        cerrojo.unlock();
        const bool sigue = progreso(visto, total_);
        cerrojo.lock();
        if (sigue || parar_) continue;
        parar_ = true;
        fallo_ = codigo::abortado;
    }
}

void Compresor::trabajar() noexcept {
    try {
        Obrero obrero{Deflactor(std::max(ajustes_.nivel, 1)), {}};
        while (const auto tarea = siguiente())
            hacer(obrero, *tarea);
    } catch (const platform::ErrorArchivo& error) {
        fallar(codigoEscritura(error));
    } catch (const std::bad_alloc&) {
        fallar(codigo::memoria);
    } catch (const std::exception&) {
        fallar(codigo::escritura);
    }
    const std::lock_guard cerrojo(mutex_);
    --activos_;
    aviso_.notify_all();
}

std::optional<Compresor::Tarea> Compresor::siguiente() {
    const std::lock_guard cerrojo(mutex_);
    if (parar_) return std::nullopt;
    if (curso_ == nullptr || curso_->ilegible || curso_->empezadas == curso_->piezas) {
        if (!empezarSiguiente()) return std::nullopt;
    }
    const std::uint64_t longitud = (*entradas_)[curso_->indice].longitud;
    Tarea tarea{curso_, curso_->empezadas++, 0, 0};
    tarea.posicion = tarea.pieza * longitudPieza_;
    tarea.longitud = static_cast<std::size_t>(std::min(longitudPieza_, longitud - tarea.posicion));
    return tarea;
}

// REQUIRES: mutex_ held.
bool Compresor::empezarSiguiente() {
    if (enCola_ == cola_.size()) return false;
    curso_ = std::make_shared<EnCurso>();
    curso_->indice = cola_[enCola_++];
    const std::uint64_t longitud = (*entradas_)[curso_->indice].longitud;
    const std::uint64_t piezas = (longitud + longitudPieza_ - 1) / longitudPieza_;
    curso_->piezas = static_cast<std::size_t>(std::max<std::uint64_t>(piezas, 1));
    Comprimida& entrada = (*resultado_)[curso_->indice];
    entrada.legible = true;
    entrada.deflactada = comprimiendo_;
    entrada.longitud = longitud;
    entrada.piezas.resize(curso_->piezas);
    return true;
}

void Compresor::hacer(Obrero& obrero, const Tarea& tarea) {
    if (obrero.entrada.size() < tarea.longitud) obrero.entrada.resize(tarea.longitud);
    if (!leerPieza(obrero, tarea)) {
        abandonar(tarea);
        return;
    }
    const std::span datos(obrero.entrada.data(), tarea.longitud);
    const std::uint32_t crc = sumar(datos);
    std::span<const std::byte> salida = datos;
    if (comprimiendo_) {
        const auto comprimida = obrero.deflactor.comprimir(datos, tarea.ultima());
        const bool unica = tarea.curso->piezas == 1;
        if (!unica || comprimida.size() < datos.size()) salida = comprimida;
    }
    const bool cruda = salida.data() == datos.data();
    Pieza pieza = guardar(salida);
    pieza.crc = crc;
    if (cruda) {
        const std::lock_guard cerrojo(mutex_);
        (*resultado_)[tarea.curso->indice].deflactada = false;
    }
    terminar(tarea, std::move(pieza));
}

// False when the input cannot be read, or no longer has the length that it was listed with.
bool Compresor::leerPieza(Obrero& obrero, const Tarea& tarea) {
    EnCurso& curso = *tarea.curso;
    const Seleccionado& entrada = (*entradas_)[curso.indice];
    const std::lock_guard cerrojo(curso.lectura);
    try {
        if (curso.archivo == nullptr) {
            curso.archivo = archivos_.abrir(entrada.origen, platform::Apertura::lectura,
                                            platform::Comparticion::compartida);
        }
        const std::span destino(obrero.entrada.data(), tarea.longitud);
        return curso.archivo->leer(tarea.posicion, destino) == destino.size() &&
               curso.archivo->longitud() == entrada.longitud;
    } catch (const platform::ErrorArchivo&) {
        return false;
    }
}

Pieza Compresor::guardar(std::span<const std::byte> datos) {
    Pieza pieza;
    pieza.longitud = datos.size();
    const std::uint64_t enObra = 2 * longitudPieza_ * ajustes_.hilos;
    {
        const std::lock_guard cerrojo(mutex_);
        if (enObra + retenido_ + datos.size() > ajustes_.presupuesto) {
            pieza.enDerrame = 0;
        } else {
            retenido_ += datos.size();
        }
    }
    if (pieza.enDerrame) {
        pieza.enDerrame = derrame_.agregar(datos);
    } else {
        pieza.memoria.assign(datos.begin(), datos.end());
    }
    return pieza;
}

void Compresor::terminar(const Tarea& tarea, Pieza pieza) {
    EnCurso& curso = *tarea.curso;
    bool completa = false;
    {
        const std::lock_guard cerrojo(mutex_);
        ++curso.terminadas;
        if (curso.ilegible) {
            retenido_ -= pieza.memoria.size();
        } else {
            Comprimida& entrada = (*resultado_)[curso.indice];
            entrada.comprimida += pieza.longitud;
            entrada.piezas[tarea.pieza] = std::move(pieza);
            contar(curso, tarea.longitud);
            completa = curso.terminadas == curso.piezas;
        }
    }
    if (completa) completar(curso);
    aviso_.notify_all();
}

// REQUIRES: mutex_ held. The pass that reads an input again does not count it again.
void Compresor::contar(EnCurso& curso, std::uint64_t bytes) {
    if (repaso_) return;
    curso.contados += bytes;
    hecho_ += bytes;
}

// All pieces stand and no other worker knows this input any more.
void Compresor::completar(EnCurso& curso) {
    {
        const std::lock_guard cerrojo(curso.lectura);
        curso.archivo.reset();
    }
    const std::lock_guard cerrojo(mutex_);
    Comprimida& entrada = (*resultado_)[curso.indice];
    std::uint64_t posicion = 0;
    for (const Pieza& pieza : entrada.piezas) {
        const std::uint64_t suya = std::min(longitudPieza_, entrada.longitud - posicion);
        entrada.crc =
            static_cast<std::uint32_t>(crc32_combine(entrada.crc, pieza.crc, static_cast<z_off_t>(suya)));
        posicion += suya;
    }
}

void Compresor::abandonar(const Tarea& tarea) {
    EnCurso& curso = *tarea.curso;
    const std::lock_guard cerrojo(mutex_);
    if (std::exchange(curso.ilegible, true)) return;
    Comprimida& entrada = (*resultado_)[curso.indice];
    soltar(entrada);
    entrada.legible = false;
    contar(curso, entrada.longitud - curso.contados);
    aviso_.notify_all();
}

// REQUIRES: mutex_ held, or no worker running.
void Compresor::soltar(Comprimida& entrada) {
    for (const Pieza& pieza : entrada.piezas)
        retenido_ -= pieza.memoria.size();
    entrada.piezas.clear();
}

void Compresor::fallar(int codigo) {
    const std::lock_guard cerrojo(mutex_);
    parar_ = true;
    if (fallo_ == codigo::bien) fallo_ = codigo;
}

}  // namespace tarvoline::zip
