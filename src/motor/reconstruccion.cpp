#include "motor/reconstruccion.h"

#include <vector>

#include "motor/escritura.h"
#include "platform/rutas.h"

namespace tarvoline::motor {

namespace {

using platform::Apertura;
using platform::Comparticion;

std::string conPrefijo(std::string_view ruta, std::string_view prefijo) {
    return platform::unirRuta(platform::carpetaDe(ruta),
                              std::string(prefijo) + std::string(platform::nombreDe(ruta)));
}

void copiar(platform::Archivo& origen, platform::Archivo& destino) {
    std::vector<std::byte> trozo(std::size_t{1} << 20);
    for (std::uint64_t posicion = 0;;) {
        const std::size_t leidos = origen.leer(posicion, trozo);
        if (leidos == 0) break;
        destino.escribir(posicion, std::span(trozo).first(leidos));
        posicion += leidos;
    }
    destino.sincronizar();
}

void subirContador(ArchivoClaves& nuevo, std::uint32_t contador) {
    escribir(nuevo, [&](Escritura& escritura) {
        if (escritura.cabecera().contador >= contador) return;
        escritura.cabecera().contador = contador;
        escritura.confirmar();
    });
}

}  // namespace

std::string rutaNueva(std::string_view ruta) {
    return conPrefijo(ruta, "nuevo.");
}

std::string rutaAnterior(std::string_view ruta) {
    return conPrefijo(ruta, "anterior.");
}

Cambio cambiarPor(platform::SistemaArchivos& archivos, std::string_view ruta, ArchivoClaves& nuevo) {
    std::unique_ptr<platform::Archivo> viejo;
    try {
        viejo = archivos.abrir(ruta, Apertura::escritura, Comparticion::exclusiva);
    } catch (const platform::ErrorArchivo& error) {
        if (error.numero() == platform::error_archivo::permisoDenegado) return Cambio::ocupado;
        if (error.numero() != platform::error_archivo::noExiste) throw;
    }
    if (viejo) {
        if (const auto contador = ArchivoClaves::contadorDe(*viejo)) subirContador(nuevo, *contador);
        // A copy, not a change of name: at no moment is there no file under the name.
        copiar(*viejo, *archivos.abrir(rutaAnterior(ruta), Apertura::vaciar));
    }
    nuevo.archivo().sincronizar();
    archivos.renombrar(rutaNueva(ruta), ruta);
    archivos.sincronizarDirectorio(platform::carpetaDe(ruta));
    return Cambio::hecho;
}

}  // namespace tarvoline::motor
