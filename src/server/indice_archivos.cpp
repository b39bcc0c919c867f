#include "server/indice_archivos.h"

#include "core/texto.h"

namespace tarvoline::server {

IndiceArchivos::Clave IndiceArchivos::clave(const Ubicacion& ubicacion) {
    return {ubicacion.usuario, core::Mayusculas(ubicacion.carpeta), core::Mayusculas(ubicacion.tipo),
            ubicacion.nombre};
}

GuardadoLeido IndiceArchivos::buscar(const Ubicacion& ubicacion) const {
    const Clave buscada = clave(ubicacion);
    const std::lock_guard guardia(cerrojo_);
    const auto hallado = guardados_.find(buscada);
    return hallado != guardados_.end() ? hallado->second : nullptr;
}

void IndiceArchivos::poner(const GuardadoLeido& guardado) {
    const Clave nueva = clave(guardado->ubicacion);
    const std::lock_guard guardia(cerrojo_);
    quitarSinCerrojo(nueva);
    guardados_[nueva] = guardado;
    Totales& total = totales_[nueva.usuario];
    total.bytes += guardado->longitud;
    ++total.archivos;
}

void IndiceArchivos::quitar(const Guardado& guardado) {
    const Clave vieja = clave(guardado.ubicacion);
    const std::lock_guard guardia(cerrojo_);
    quitarSinCerrojo(vieja);
}

void IndiceArchivos::quitarSinCerrojo(const Clave& cual) {
    const auto hallado = guardados_.find(cual);
    if (hallado == guardados_.end()) return;
    Totales& total = totales_[cual.usuario];
    total.bytes -= hallado->second->longitud;
    --total.archivos;
    guardados_.erase(hallado);
}

std::vector<std::string> IndiceArchivos::nombres(std::int64_t usuario, std::string_view carpeta,
                                                 std::string_view tipo) const {
    const Clave primera{usuario, core::Mayusculas(carpeta), core::Mayusculas(tipo), ""};
    std::vector<std::string> lista;
    const std::lock_guard guardia(cerrojo_);
    for (auto i = guardados_.lower_bound(primera); i != guardados_.end(); ++i) {
        const Clave& cual = i->first;
        if (cual.usuario != usuario || cual.carpeta != primera.carpeta || cual.tipo != primera.tipo) break;
        lista.push_back(cual.nombre);
    }
    return lista;
}

std::vector<std::string> IndiceArchivos::carpetas(std::int64_t usuario) const {
    std::vector<std::string> lista;
    const std::lock_guard guardia(cerrojo_);
    const std::string* anterior = nullptr;
    for (auto i = guardados_.lower_bound({usuario, "", "", ""});
         i != guardados_.end() && i->first.usuario == usuario; ++i) {
        if (anterior == nullptr || *anterior != i->first.carpeta)
            lista.push_back(i->second->ubicacion.carpeta);
        anterior = &i->first.carpeta;
    }
    return lista;
}

std::string IndiceArchivos::grafia(std::int64_t usuario, const std::string& carpeta) const {
    const std::string plegada = core::Mayusculas(carpeta);
    const std::lock_guard guardia(cerrojo_);
    const auto i = guardados_.lower_bound({usuario, plegada, "", ""});
    const bool hay = i != guardados_.end() && i->first.usuario == usuario && i->first.carpeta == plegada;
    return hay ? i->second->ubicacion.carpeta : carpeta;
}

std::int64_t IndiceArchivos::ocupado(std::int64_t usuario) const {
    const std::lock_guard guardia(cerrojo_);
    const auto hallado = totales_.find(usuario);
    return hallado != totales_.end() ? hallado->second.bytes : 0;
}

std::size_t IndiceArchivos::cuantos(std::int64_t usuario) const {
    const std::lock_guard guardia(cerrojo_);
    const auto hallado = totales_.find(usuario);
    return hallado != totales_.end() ? hallado->second.archivos : 0;
}

bool IndiceArchivos::reservar(Guardado& guardado, std::int64_t longitud, const Cupo& cupo) {
    const std::lock_guard guardia(cerrojo_);
    const std::int64_t crece = longitud - guardado.longitud;
    if (cupo.bytes > 0 && crece > 0) {
        std::int64_t total = crece;
        for (const std::int64_t usuario : cupo.usuarios) {
            const auto hallado = totales_.find(usuario);
            if (hallado != totales_.end()) total += hallado->second.bytes;
        }
        if (total > cupo.bytes) return false;
    }
    totales_[guardado.ubicacion.usuario].bytes += crece;
    guardado.longitud = longitud;
    return true;
}

void IndiceArchivos::fijarLongitud(Guardado& guardado, std::int64_t longitud) {
    const std::lock_guard guardia(cerrojo_);
    totales_[guardado.ubicacion.usuario].bytes += longitud - guardado.longitud;
    guardado.longitud = longitud;
}

}  // namespace tarvoline::server
