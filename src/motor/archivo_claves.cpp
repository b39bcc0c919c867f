#include "motor/archivo_claves.h"

#include <array>
#include <random>
#include <thread>

namespace tarvoline::motor {

namespace {

using platform::ErrorArchivo;
namespace error_archivo = platform::error_archivo;

// Copies of pages kept a file, some 37 MiB.
constexpr std::size_t topeDeCache = 16384;
// From the first head's core to the end of the second's.
using Cabezas = std::array<Octeto, bytesCabecera + bytesNucleo>;
constexpr std::uint64_t lugarCabezas = posicionDeNucleo(0);

// What is missing at the end of a short file reads as zeros.
std::size_t leerDe(platform::Archivo& archivo, std::uint64_t posicion, Octeto* destino, std::size_t bytes) {
    const std::size_t leidos = archivo.leer(posicion, std::as_writable_bytes(std::span(destino, bytes)));
    std::memset(destino + leidos, 0, bytes - leidos);
    return leidos;
}

std::optional<Cabecera> masNueva(const Cabezas& cabezas) {
    auto una = descifrarCabecera(cabezas.data(), 0);
    auto otra = descifrarCabecera(cabezas.data() + bytesCabecera, 1);
    if (!una || (otra && otra->sello > una->sello)) return otra;
    return una;
}

int estadoSinCabecera(platform::Archivo& archivo) {
    std::array<Octeto, bytesNucleo> comienzo;
    leerDe(archivo, 0, comienzo.data(), comienzo.size());
    return origenDe(comienzo.data()) == Origen::ajeno ? estado_archivo::ajeno : estado_archivo::dannado;
}

bool tieneSentinelaAjena(platform::SistemaArchivos& archivos, std::string_view ruta,
                         platform::Apertura apertura = platform::Apertura::escritura) {
    try {
        archivos.abrir(ruta, apertura);
        return true;
    } catch (const ErrorArchivo&) {
        return false;
    }
}

// Opens a file that somebody may just be making or swapping, which he does holding the sentinel.
std::unique_ptr<platform::Archivo> abrirConPaciencia(platform::SistemaArchivos& archivos,
                                                     std::string_view ruta, platform::Apertura apertura) {
    constexpr int intentos = 500;
    constexpr std::chrono::milliseconds pausa{4};
    for (int i = 1;; ++i) {
        try {
            return archivos.abrir(ruta, apertura, platform::Comparticion::acordada);
        } catch (const ErrorArchivo& error) {
            const bool otraVez = error.numero() == error_archivo::permisoDenegado && i < intentos;
            if (!otraVez || !tieneSentinelaAjena(archivos, ruta, apertura)) throw;
        }
        std::this_thread::sleep_for(pausa);
    }
}

int estadoDeError(const ErrorArchivo& error) {
    const bool falta =
        error.numero() == error_archivo::noExiste || error.numero() == error_archivo::rutaNoExiste;
    return falta ? estado_archivo::noExiste : estado_archivo::dannado;
}

int estadoAlCrear(const ErrorArchivo& error) {
    switch (error.numero()) {
        case error_archivo::noExiste:
        case error_archivo::rutaNoExiste:
        case error_archivo::ruta:
        case error_archivo::permisoDenegado:
            return estado_archivo::negado;
        default:
            return estado_archivo::dannado;
    }
}

}  // namespace

ArchivoClaves::ArchivoClaves(std::unique_ptr<platform::Archivo> archivo, const Cabecera& cabecera)
    : archivo_(std::move(archivo)),
      cabecera_(cabecera),
      cache_(topeDeCache),
      sinTurno_(archivo_->esLocal()) {}

ArchivoClaves::Apertura ArchivoClaves::desde(std::unique_ptr<platform::Archivo> archivo) {
    Cabezas cabezas;
    leerDe(*archivo, lugarCabezas, cabezas.data(), cabezas.size());
    const auto cabecera = masNueva(cabezas);
    if (!cabecera) return {estadoSinCabecera(*archivo), nullptr};
    const auto danno = leerEntero<std::uint64_t>(cabezas.data() + posicionDanno - lugarCabezas);
    if (danno == cabecera->archivo) return {estado_archivo::dannado, nullptr};
    Apertura abierto{estado_archivo::bien, nullptr};
    abierto.archivo.reset(new ArchivoClaves(std::move(archivo), *cabecera));
    return abierto;
}

std::optional<std::uint32_t> ArchivoClaves::contadorDe(platform::Archivo& archivo) {
    Cabezas cabezas;
    leerDe(archivo, lugarCabezas, cabezas.data(), cabezas.size());
    const auto cabecera = masNueva(cabezas);
    return cabecera ? std::optional(cabecera->contador) : std::nullopt;
}

ArchivoClaves::Apertura ArchivoClaves::abrir(platform::SistemaArchivos& archivos, std::string_view ruta,
                                             platform::Apertura apertura) {
    try {
        return desde(abrirConPaciencia(archivos, ruta, apertura));
    } catch (const ErrorArchivo& error) {
        return {estadoDeError(error), nullptr};
    }
}

// Somebody has it open, so it cannot be made; it may be just what is wanted.
ArchivoClaves::Apertura ArchivoClaves::yaCreado(platform::SistemaArchivos& archivos, std::string_view ruta,
                                                unsigned longitud, unsigned claves) {
    if (!tieneSentinelaAjena(archivos, ruta)) return {estado_archivo::negado, nullptr};
    Apertura abierto = abrir(archivos, ruta);
    if (!abierto.archivo) return abierto;
    const Cabecera& c = abierto.archivo->cabecera();
    if (c.longitud == longitud && c.claves == claves && c.contador == 0) return abierto;
    return {estado_archivo::dannado, nullptr};
}

ArchivoClaves::Apertura ArchivoClaves::crear(platform::SistemaArchivos& archivos, std::string_view ruta,
                                             unsigned longitud, unsigned claves, std::uint32_t contador) {
    using platform::Comparticion;
    std::unique_ptr<platform::Archivo> archivo;
    try {
        try {
            archivo = archivos.abrir(ruta, platform::Apertura::crear, Comparticion::exclusiva);
        } catch (const ErrorArchivo& error) {
            if (error.numero() != error_archivo::permisoDenegado) throw;
            return yaCreado(archivos, ruta, longitud, claves);
        }
        Cabezas cabezas;
        leerDe(*archivo, lugarCabezas, cabezas.data(), cabezas.size());
        if (!masNueva(cabezas) && estadoSinCabecera(*archivo) == estado_archivo::ajeno) {
            return {estado_archivo::ajeno, nullptr};
        }
        std::random_device fuente;
        Cabecera nueva;
        nueva.longitud = static_cast<std::uint16_t>(longitud);
        nueva.claves = static_cast<std::uint8_t>(claves);
        nueva.archivo = (std::uint64_t{fuente()} << 32U | fuente()) | 1U;
        nueva.sello = (std::uint64_t{2} << bitsAzar) | (fuente() & ((1U << bitsAzar) - 1));
        nueva.contador = contador;
        std::array<Octeto, 2 * bytesCabecera> bytes{};
        codificarCabecera(nueva, {}, bytes.data());
        ponerComienzo(bytes.data());
        archivo->truncar(0);
        archivo->escribir(0, std::as_bytes(std::span(bytes)));
        // From now on others may open it, too.
        archivo->bloquear({platform::byteCentinela, 1}, platform::TipoBloqueo::compartido);
        return desde(std::move(archivo));
    } catch (const ErrorArchivo& error) {
        return {estadoAlCrear(error), nullptr};
    }
}

void ArchivoClaves::leerExacto(std::uint64_t posicion, Octeto* destino, std::size_t bytes) {
    leerDe(*archivo_, posicion, destino, bytes);
}

bool ArchivoClaves::sigueIgual() {
    std::array<Octeto, 8> palabra;
    const std::uint64_t otra = posicionDeNucleo(1 - cabecera_.lugar()) + lugarSello;
    leerExacto(otra, palabra.data(), palabra.size());
    const auto sello = leerEntero<Sello>(palabra.data());
    return numeroDe(sello) <= numeroDe(cabecera_.sello) || sello == selloRoto_;
}

bool ArchivoClaves::adoptarLaOtra() {
    std::array<Octeto, bytesNucleo> nucleo;
    const unsigned lugar = 1 - cabecera_.lugar();
    leerExacto(posicionDeNucleo(lugar), nucleo.data(), nucleo.size());
    const auto otra = descifrarCabecera(nucleo.data(), lugar);
    if (!otra || otra->archivo != cabecera_.archivo || otra->sello <= cabecera_.sello) return false;
    cabecera_ = *otra;
    return true;
}

void ArchivoClaves::refrescar() {
    if (sigueIgual()) return;
    Cabezas cabezas;
    leerExacto(lugarCabezas, cabezas.data(), cabezas.size());
    const auto nueva = masNueva(cabezas);
    if (!nueva || nueva->archivo != cabecera_.archivo || nueva->sello < cabecera_.sello) {
        throw Danno("las cabeceras del archivo de claves están dañadas");
    }
    cabecera_ = *nueva;
    const unsigned otra = 1 - cabecera_.lugar();
    const auto sello = leerEntero<Sello>(cabezas.data() + otra * bytesCabecera + lugarSello);
    selloRoto_ = numeroDe(sello) > numeroDe(cabecera_.sello) ? sello : 0;
}

void ArchivoClaves::cargarLibres() {
    if (libresDe_ == cabecera_.sello) return;
    std::array<Octeto, lugarNucleo> bytes;
    const std::size_t cuantos = bytesDeHuecos(cabecera_);
    leerExacto(posicionDeNucleo(cabecera_.lugar()) - cuantos, bytes.data(), cuantos);
    auto huecos = descifrarHuecos(cabecera_, bytes.data());
    if (!huecos) throw Danno("las páginas libres del archivo de claves están dañadas");
    libres_.poner(std::move(*huecos));
    libresDe_ = cabecera_.sello;
}

// Best effort: who cannot write the mark leaves the finding to the next one.
void ArchivoClaves::darPorDannado() {
    std::array<Octeto, 8> marca;
    ponerEntero(marca.data(), cabecera_.archivo);
    fallida_ = true;
    try {
        archivo_->escribir(posicionDanno, std::as_bytes(std::span(marca)));
    } catch (const ErrorArchivo&) {
        return;
    }
}

const Pagina* ArchivoClaves::enCache(const Hijo& hijo, unsigned clave, unsigned nivel) {
    const Pagina* copia = cache_.buscar(hijo.pagina, hijo.sello);
    const bool buscada = copia != nullptr && copia->datos[6] == nivel && copia->datos[7] == clave;
    return buscada ? copia : nullptr;
}

const Pagina& ArchivoClaves::pagina(const Hijo& hijo, unsigned clave, unsigned nivel) {
    if (const Pagina* copia = enCache(hijo, clave, nivel)) return *copia;
    return cargarPagina(hijo, clave, nivel);
}

bool ArchivoClaves::paginaSana(const Octeto* datos, std::uint32_t numero) const {
    const VistaPagina vista(datos, ancho());
    return vista.usados() >= bytesEncabezado && vista.usados() <= bytesPagina &&
           leerEntero<std::uint32_t>(datos) == sumaDePagina(datos, numero, cabecera_.archivo) &&
           (vista.nivel() == nivelLibres || (vista.encabezadoSano() && vista.entradas() > 0));
}

// What the last commit wrote of the inner pages stands together, and who needs one mostly needs those of the
// other keys next: they come with it in one reading.
void ArchivoClaves::cargarVecinas(const Hijo& hijo) {
    const std::uint32_t lado = cabecera_.claves - 1U;
    const std::uint32_t primera = hijo.pagina > primeraPagina + lado ? hijo.pagina - lado : primeraPagina;
    const std::uint32_t ultima = std::min(hijo.pagina + lado, cabecera_.marca - 1);
    vecinas_.resize((ultima - primera + 1) * bytesPagina + mayorEntrada);
    leerExacto(posicionDePagina(primera), vecinas_.data(), (ultima - primera + 1) * bytesPagina);
    for (std::uint32_t numero = primera; numero <= ultima; ++numero) {
        const Octeto* const datos = vecinas_.data() + (numero - primera) * bytesPagina;
        const VistaPagina v(datos, ancho());
        if (v.sello() != hijo.sello || cache_.selloDe(numero) >= hijo.sello) continue;
        if (!paginaSana(datos, numero)) continue;
        std::memcpy(cache_.preparar(numero, hijo.sello).datos.data(), datos, v.usados());
    }
}

const Pagina& ArchivoClaves::cargarPagina(const Hijo& hijo, unsigned clave, unsigned nivel) {
    if (hijo.pagina < primeraPagina || hijo.pagina >= cabecera_.marca) {
        throw Danno("una página está fuera del archivo de claves");
    }
    if (nivel > 0 && nivel != nivelLibres && hijo.sello == cabecera_.sello) {
        cargarVecinas(hijo);
        if (const Pagina* copia = enCache(hijo, clave, nivel)) return *copia;
    }
    Pagina& copia = cache_.preparar(hijo.pagina, hijo.sello);
    try {
        leerExacto(posicionDePagina(hijo.pagina), copia.datos.data(), bytesPagina);
    } catch (...) {
        cache_.olvidar(hijo.pagina);
        throw;
    }
    const Octeto* const datos = copia.datos.data();
    const VistaPagina vista(datos, ancho());
    const bool buscada = vista.sello() == hijo.sello && vista.nivel() == nivel && vista.clave() == clave;
    if (!buscada || !paginaSana(datos, hijo.pagina)) {
        cache_.olvidar(hijo.pagina);
        throw Danno("la página " + std::to_string(hijo.pagina) + " del archivo de claves está dañada");
    }
    return copia;
}

}  // namespace tarvoline::motor
