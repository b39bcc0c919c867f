#include "data/tipos_iva.h"

#include <span>

#include "data/acceso_archivo.h"
#include "data/bytes.h"
#include "data/datos_comunes.h"
#include "data/texto_fijo.h"
#include "data/vista_nombrada.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t anchoDescripcion = 21, anchoClave = 2;
constexpr std::size_t lugarClaveOp2 = 21, lugarClaveOp = 23, lugarCuota = 25, lugarRecargo = 29;

}  // namespace

TipoIva interpretarTipoIva(std::string_view bytes) {
    std::string fila(bytes.substr(0, bytesTipoIva));
    fila.resize(bytesTipoIva);
    const auto texto = [&](std::size_t lugar, std::size_t ancho) {
        return leerTextoFijo(std::string_view(fila).substr(lugar, ancho));
    };
    const auto numero = [&](std::size_t lugar) {
        return leerNumero<float>(platform::comoBytes(fila).subspan(lugar));
    };
    return {texto(0, anchoDescripcion), texto(lugarClaveOp2, anchoClave), texto(lugarClaveOp, anchoClave),
            numero(lugarCuota), numero(lugarRecargo)};
}

std::string componerTipoIva(const TipoIva& tipo) {
    auto bytes = ponerTextoFijo(tipo.Descripción, anchoDescripcion) +
                 ponerTextoFijo(tipo.ClaveOp2, anchoClave) + ponerTextoFijo(tipo.ClaveOp, anchoClave);
    bytes.resize(bytesTipoIva);
    const auto numeros = std::as_writable_bytes(std::span(bytes));
    ponerNumero(numeros.subspan(lugarCuota), tipo.Cuota);
    ponerNumero(numeros.subspan(lugarRecargo), tipo.Recargo);
    return bytes;
}

TiposIva::TiposIva(std::string_view bytes) {
    bytes = bytes.substr(0, bytesTipoIva * maxTiposIva);
    for (std::size_t lugar = 0; lugar < bytes.size(); lugar += bytesTipoIva) {
        tipos_.push_back(interpretarTipoIva(bytes.substr(lugar, bytesTipoIva)));
    }
}

TiposIva TiposIva::leer(CapaDatos& capa, std::string_view ruta) {
    std::string bytes(bytesTipoIva * maxTiposIva, '\0');
    exigirEmpresa(capa, ruta, [&](platform::Archivo& archivo) {
        bytes.resize(archivo.leer(0, std::as_writable_bytes(std::span(bytes))));
    });
    return TiposIva(bytes);
}

const TipoIva& TiposIva::operator()(int numero) const {
    static const TipoIva ninguno;
    return numero >= 1 && numero <= cuantos() ? tipos_[static_cast<std::size_t>(numero) - 1] : ninguno;
}

std::string rutaTiposIva(CapaDatos& capa) {
    const bool propio = VistaNombrada(capa).GetTotal("IvaporEmpresa") == "1";
    return RutaDatoComun(capa, clave_comun::iva,
                         propio ? "IVA03" + capa.enVigor.gEmpresaActual + ".QZF" : "IVA03.QZF");
}

}  // namespace tarvoline::data
