// Records and fields between disk and gCampos, and their locks.
#include <thread>

#include "data/claves_tabla.h"
#include "data/tablas.h"
#include "data/tablas_insistir.h"

namespace tarvoline::data {

namespace {

using platform::Archivo;
using platform::ErrorArchivo;
using platform::Rango;
using platform::TipoBloqueo;

constexpr int camposCabecera = 3;

// Waits until no other handle holds the range, `espera` at most. It is asked for, not taken: giving it back
// would give up what this handle itself holds of it.
void esperarRango(Archivo& archivo, Rango rango, TipoBloqueo tipo, std::chrono::milliseconds espera) {
    using std::chrono::microseconds;
    using std::chrono::steady_clock;
    constexpr microseconds pausaMayor{2000};
    const auto limite = steady_clock::now() + espera;
    microseconds pausa{100};
    while (!archivo.podriaBloquear(rango, tipo)) {
        const auto resto = std::chrono::duration_cast<microseconds>(limite - steady_clock::now());
        if (resto <= microseconds::zero()) return;
        std::this_thread::sleep_for(std::min(pausa, resto));
        pausa = std::min(pausa * 2, pausaMayor);
    }
}

std::uint64_t exigirNumero(std::int32_t registro) {
    if (registro < 1) throw std::out_of_range("no hay ningún registro " + std::to_string(registro));
    return static_cast<std::uint64_t>(registro);
}

}  // namespace

// Called where an error is being handled.
void Tablas::trasFallo(int fallos, Archivo& archivo, Rango rango, TipoBloqueo tipo) {
    if (fallos <= capa_.reintentosTablas.intentos) {
        esperarRango(archivo, rango, tipo, capa_.reintentosTablas.espera);
        return;
    }
    caja(capa_.gErrores(153), core::Icono::exclamacion);
    if (!capa_.alguienMira || !capa_.alMostrar) throw;
}

// Of a field, or of the whole record (`campo` 0).
Rango Tablas::rangoDe(int tabla, std::int32_t registro, int campo) const {
    const DefinicionTabla& def = definicion(tabla);
    const auto longitud = static_cast<std::uint64_t>(def.gLongitudRegistro);
    const std::uint64_t comienzo = (exigirNumero(registro) - 1) * longitud;
    if (campo == 0) return {comienzo, longitud};
    const CampoTabla& uno = def.campo(campo);
    return {comienzo + static_cast<std::uint64_t>(uno.desplazamiento), static_cast<std::uint64_t>(uno.bytes)};
}

// Reads the range into bytes_; what the file does not have reads as zero bytes.
EstadoRegistro Tablas::leerBytes(Ranura& ranura, Rango rango) {
    bytes_.resize(rango.longitud);
    std::size_t leidos = 0;
    insistir(*ranura.archivo, rango, TipoBloqueo::compartido,
             [&] { leidos = ranura.archivo->leer(rango.desde, std::as_writable_bytes(std::span(bytes_))); });
    std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(leidos), bytes_.end(), '\0');
    return leidos < bytes_.size() ? EstadoRegistro::sinEscribir : estadoDeRegistro(bytes_);
}

void Tablas::escribirBytes(Ranura& ranura, std::uint64_t posicion, std::string_view bytes) {
    insistir(*ranura.archivo, {posicion, bytes.size()}, TipoBloqueo::exclusivo,
             [&] { ranura.archivo->escribir(posicion, platform::comoBytes(bytes)); });
}

EstadoRegistro Tablas::LeerRegistro(int tabla, std::int32_t registro) {
    if (registro < 1) return EstadoRegistro::sinEscribir;
    Ranura& ranura = abiertaOError(tabla);
    const EstadoRegistro hay = leerBytes(ranura, rangoDe(tabla, registro));
    descifrarRegistro(*ranura.definicion, bytes_, ranura.gCampos);
    return hay;
}

void Tablas::leerRegistros(int tabla, std::int32_t desde, std::string& bytes) {
    Ranura& ranura = abiertaOError(tabla);
    const platform::Rango rango{rangoDe(tabla, desde).desde, bytes.size()};
    std::size_t leidos = 0;
    insistir(*ranura.archivo, rango, TipoBloqueo::compartido,
             [&] { leidos = ranura.archivo->leer(rango.desde, std::as_writable_bytes(std::span(bytes))); });
    bytes.resize(leidos - leidos % static_cast<std::size_t>(ranura.definicion->gLongitudRegistro));
}

EstadoRegistro Tablas::LeerCabeceraRegistro(int tabla, std::int32_t registro) {
    if (registro < 1) return EstadoRegistro::sinEscribir;
    Ranura& ranura = abiertaOError(tabla);
    const DefinicionTabla& def = *ranura.definicion;
    const int ultimo = std::min(camposCabecera, def.gNumeroCampos);
    Rango rango = rangoDe(tabla, registro);
    const int longitud = def.campo(ultimo).desplazamiento + def.campo(ultimo).bytes;
    rango.longitud = static_cast<std::uint64_t>(longitud);
    bytes_.assign(rango.longitud, '\0');
    std::size_t leidos = 0;
    for (int fallos = 1;; ++fallos) {
        try {
            leidos = ranura.archivo->leer(rango.desde, std::as_writable_bytes(std::span(bytes_)));
            break;
        } catch (const ErrorArchivo&) {
            if (fallos > capa_.reintentosTablas.intentos) {
                caja(capa_.gErrores(153), core::Icono::exclamacion);
                return EstadoRegistro::sinEscribir;
            }
            esperarRango(*ranura.archivo, rango, TipoBloqueo::compartido, capa_.reintentosTablas.espera);
        }
    }
    for (int i = 1; i <= ultimo; ++i) {
        const CampoTabla& campo = def.campo(i);
        ranura.gCampos[static_cast<std::size_t>(i)].assign(
            bytes_, static_cast<std::size_t>(campo.desplazamiento), static_cast<std::size_t>(campo.bytes));
    }
    return leidos < bytes_.size() ? EstadoRegistro::sinEscribir : estadoDeRegistro(bytes_);
}

void Tablas::EscribirRegistro(int tabla, std::int32_t registro) {
    Ranura& ranura = abiertaOError(tabla);
    const Rango rango = rangoDe(tabla, registro);
    cifrarRegistro(*ranura.definicion, ranura.gCampos, bytes_);
    escribirBytes(ranura, rango.desde, bytes_);
}

std::string Tablas::LeerCampo(int tabla, std::int32_t registro, int campo) {
    leerBytes(abiertaOError(tabla), rangoDe(tabla, registro, campo));
    std::string texto;
    descifrarCampo(campoDe(tabla, campo), bytes_, texto);
    return texto;
}

double Tablas::LeerCampoDoble(int tabla, std::int32_t registro, int campo) {
    leerBytes(abiertaOError(tabla), rangoDe(tabla, registro, campo));
    return TextoADoble(bytes_);
}

void Tablas::escribirCampoDoble(int tabla, std::int32_t registro, int campo, double valor) {
    if (campoDe(tabla, campo).bytes != sizeof(double)) {
        throw std::invalid_argument("el campo " + campoDe(tabla, campo).nombre +
                                    " no guarda un número doble");
    }
    escribirBytes(abiertaOError(tabla), rangoDe(tabla, registro, campo).desde, DobleATexto(valor));
}

void Tablas::GrabarCampo(int tabla, std::int32_t registro, int campo, std::string_view bytes) {
    Ranura& ranura = abiertaOError(tabla);
    const Rango rango = rangoDe(tabla, registro, campo);
    ponerCampo(tabla, campo, bytes);
    bytes_.resize(rango.longitud);
    cifrarCampo(campoDe(tabla, campo), gCampos(tabla, campo), bytes_.data());
    escribirBytes(ranura, rango.desde, bytes_);
}

void Tablas::GrabarCampoClave(int tabla, std::int32_t registro, int campo, std::string_view bytes) {
    exigirNumero(registro);
    auto codigo = static_cast<std::int16_t>(campo + 400);
    std::string texto;
    ClavesTabla(tabla, codigo, texto);
    if (texto == "True") {
        codigo = static_cast<std::int16_t>(campo + 300);
        texto = " " + std::to_string(registro) + "\\" + std::string(bytes);
        ClavesTabla(tabla, codigo, texto);
    }
    GrabarCampo(tabla, registro, campo, bytes);
}

// The element behind the last field is the record's length and one, which is why a range that ends there
// takes the next record's first byte along.
Rango Tablas::rangoBloqueo(int tabla, std::int32_t registro, int desde, int hasta) const {
    const DefinicionTabla& def = definicion(tabla);
    if (hasta == 0) hasta = desde == 0 ? def.gNumeroCampos : desde;
    if (desde == 0) desde = 1;
    const int fin =
        hasta < def.gNumeroCampos ? def.campo(hasta + 1).desplazamiento : def.gLongitudRegistro + 1;
    const int comienzo = def.campo(desde).desplazamiento;
    return {rangoDe(tabla, registro).desde + static_cast<std::uint64_t>(comienzo),
            static_cast<std::uint64_t>(fin - comienzo)};
}

void Tablas::BloquearRegistro(int tabla, std::int32_t registro, int desde, int hasta) {
    Ranura& ranura = abiertaOError(tabla);
    const Rango rango = rangoBloqueo(tabla, registro, desde, hasta);
    insistir(*ranura.archivo, rango, TipoBloqueo::exclusivo, [&] {
        if (ranura.archivo->bloquear(rango, TipoBloqueo::exclusivo)) return;
        throw ErrorArchivo(platform::error_archivo::permisoDenegado, ranura.rutaDatos,
                           "otro programa tiene ocupado el registro " + std::to_string(registro));
    });
}

void Tablas::DesbloquearRegistro(int tabla, std::int32_t registro, int desde, int hasta) {
    Ranura& ranura = abiertaOError(tabla);
    const Rango rango = rangoBloqueo(tabla, registro, desde, hasta);
    insistir(*ranura.archivo, rango, TipoBloqueo::exclusivo, [&] { ranura.archivo->desbloquear(rango); });
}

}  // namespace tarvoline::data
