// The helpers over any file system: whole files, masks, atomic writing.
#include "platform/archivos.h"

#include <algorithm>
#include <exception>
#include <random>

#include "platform/caja.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

namespace {

constexpr int intentosDeNombre = 100;

std::string sufijoAlAzar() {
    constexpr std::string_view cifras = "0123456789abcdef";
    std::random_device azar;
    std::string sufijo = ".nuevo-";
    for (int i = 0; i < 12; ++i)
        sufijo.push_back(cifras[azar() % cifras.size()]);
    return sufijo;
}

// A file beside `ruta` that nobody else has.
std::unique_ptr<Archivo> crearAlLado(SistemaArchivos& archivos, const std::string& ruta, unsigned permisos,
                                     std::string& temporal) {
    for (int intento = 1;; ++intento) {
        temporal = ruta + sufijoAlAzar();
        try {
            return archivos.abrir(temporal, Apertura::nuevo, Comparticion::libre, permisos);
        } catch (const ErrorArchivo& error) {
            if (error.numero() != error_archivo::yaExiste || intento == intentosDeNombre) throw;
        }
    }
}

// Used while another error is on its way up: that one is to be seen, not this.
bool intentarBorrar(SistemaArchivos& archivos, const std::string& ruta) {
    try {
        archivos.borrar(ruta);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

bool existe(SistemaArchivos& archivos, std::string_view ruta) {
    return archivos.estado(ruta).has_value();
}

std::vector<std::string> listarMascara(SistemaArchivos& archivos, std::string_view directorio,
                                       std::string_view mascara) {
    std::vector<std::string> nombres;
    for (EntradaDirectorio& entrada : archivos.listar(directorio)) {
        if (!entrada.esDirectorio && coincideMascara(entrada.nombre, mascara)) {
            nombres.push_back(std::move(entrada.nombre));
        }
    }
    return nombres;
}

bool coincideMascara(std::string_view nombre, std::string_view mascara) {
    if (mascara == "*.*") return true;
    const std::u32string n = codigosDe(plegarCaja(nombre));
    const std::u32string m = codigosDe(plegarCaja(mascara));
    std::size_t i = 0;
    std::size_t j = 0;
    // Where to go on when what stands behind the last "*" did not fit: one character later in the name.
    std::size_t trasAsterisco = std::u32string::npos;
    std::size_t reintento = 0;
    while (i < n.size()) {
        if (j < m.size() && m[j] == U'*') {
            trasAsterisco = ++j;
            reintento = i;
        } else if (j < m.size() && (m[j] == U'?' || m[j] == n[i])) {
            ++i;
            ++j;
        } else if (trasAsterisco != std::u32string::npos) {
            j = trasAsterisco;
            i = ++reintento;
        } else {
            return false;
        }
    }
    return std::all_of(m.begin() + static_cast<std::ptrdiff_t>(j), m.end(),
                       [](char32_t c) { return c == U'*'; });
}

std::string leerTodo(SistemaArchivos& archivos, std::string_view ruta) {
    const auto archivo = archivos.abrir(ruta, Apertura::lectura);
    std::string contenido;
    // One byte more than the length shows the end without a second read; a file that grows is read on.
    std::size_t porcion = static_cast<std::size_t>(archivo->longitudAlAbrir()) + 1;
    for (;;) {
        const std::size_t antes = contenido.size();
        contenido.resize(antes + porcion);
        const std::size_t leidos =
            archivo->leer(antes, std::as_writable_bytes(std::span(contenido.data() + antes, porcion)));
        contenido.resize(antes + leidos);
        if (leidos < porcion) return contenido;
        porcion = std::size_t{64} * 1024;
    }
}

void escribirAtomico(SistemaArchivos& archivos, std::string_view ruta, std::string_view contenido,
                     unsigned permisos) {
    const std::string destino = archivos.resolver(ruta);
    std::string temporal;
    auto archivo = crearAlLado(archivos, destino, permisos, temporal);
    try {
        archivo->escribir(0, comoBytes(contenido));
        archivo->sincronizar();
        archivo.reset();
        archivos.renombrar(temporal, destino);
    } catch (...) {
        archivo.reset();
        intentarBorrar(archivos, temporal);
        throw;
    }
    archivos.sincronizarDirectorio(carpetaDe(destino));
}

}  // namespace tarvoline::platform
