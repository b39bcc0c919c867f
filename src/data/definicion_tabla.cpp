#include "data/definicion_tabla.h"

#include <algorithm>

#include "core/texto.h"
#include "data/texto_fijo.h"
#include "data/utilidades.h"
#include "motor/formato.h"

namespace tarvoline::data {

namespace {

// One entry of the file, and the places in it.
constexpr std::size_t bytesEntrada = 33;
constexpr std::size_t bytesDeCampos = 4000;  // other programs look for fields within these alone
static_assert(bytesEntrada * (maxCamposTabla + 1) <= bytesDeCampos);
constexpr std::size_t lugarAncho = 4, lugarTipo = 6, lugarNombre = 8, lugarPosicion = 31;
constexpr std::size_t anchoNombre = 23;
constexpr int claveCero = 250;  // "I0"
constexpr char primeraDeClave = 'I';
constexpr std::string_view sinUsar = "0000";

std::string nombreDe(std::string_view entrada) {
    return core::Recortar(core::aUtf8(entrada.substr(lugarNombre, anchoNombre)));
}

int bytesEnDisco(FormaCampo forma, int ancho) {
    switch (forma) {
        case FormaCampo::entero16:
            return 2;
        case FormaCampo::entero32:
        case FormaCampo::simple:
            return 4;
        case FormaCampo::doble:
            return 8;
        case FormaCampo::fecha:
            return 6;
        case FormaCampo::texto:
            break;
    }
    return ancho;
}

CampoTabla leerCampo(std::string_view entrada, int desplazamiento) {
    CampoTabla campo;
    campo.nombre = nombreDe(entrada);
    campo.ancho = NumeroDeDosCaracteres(entrada.substr(lugarAncho, 2));
    campo.tipo = NumeroDeDosCaracteres(entrada.substr(lugarTipo, 2));
    campo.posicion = NumeroDeDosCaracteres(entrada.substr(lugarPosicion, 2));
    campo.forma = formaDeTipo(campo.tipo);
    campo.bytes = bytesEnDisco(campo.forma, campo.ancho);
    campo.desplazamiento = desplazamiento;
    return campo;
}

int leerCuenta(std::string_view bytes) {
    const int cuenta = NumeroDeDosCaracteres(bytes.substr(0, 2));
    if (bytes.empty() || cuenta < 1) {
        throw ErrorDefinicion("la definición no tiene ningún campo");
    }
    if (cuenta > maxCamposTabla) {
        throw ErrorDefinicion("la definición tiene " + std::to_string(cuenta) + " campos; caben " +
                              std::to_string(maxCamposTabla));
    }
    if (bytes.size() < bytesEntrada * (static_cast<std::size_t>(cuenta) + 1)) {
        throw ErrorDefinicion("la definición acaba antes de su último campo");
    }
    return cuenta;
}

void leerCampos(std::string_view bytes, DefinicionTabla& definicion) {
    definicion.gNumeroCampos = leerCuenta(bytes);
    int desplazamiento = 0;
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        const auto entrada = bytes.substr(bytesEntrada * static_cast<std::size_t>(i), bytesEntrada);
        auto campo = leerCampo(entrada, desplazamiento);
        desplazamiento += campo.bytes;
        if (const auto posicion = static_cast<std::size_t>(campo.posicion);
            posicion < definicion.gCampoDePosicion.size()) {
            definicion.gCampoDePosicion[posicion] = static_cast<std::int16_t>(i);
        }
        definicion.campos.push_back(std::move(campo));
    }
    definicion.gCampoDePosicion[0] = 0;  // no position
    definicion.gLongitudRegistro = desplazamiento;
    if (desplazamiento < 1) {
        throw ErrorDefinicion("el registro de la definición está vacío");
    }
}

void leerSegmento(std::string_view entrada, DefinicionTabla& definicion) {
    const int clave = NumeroDeDosCaracteres(entrada.substr(0, 2)) - claveCero;
    if (clave < 1 || clave > maxClaves) {
        throw ErrorDefinicion("la definición nombra la clave " + std::to_string(clave));
    }
    SegmentoClave segmento;
    segmento.campo = NumeroDeDosCaracteres(entrada.substr(2, 2));
    if (segmento.campo == 0) {
        segmento.campo = definicion.campoDePosicion(NumeroDeDosCaracteres(entrada.substr(lugarPosicion, 2)));
    }
    segmento.inicio = NumeroDeDosCaracteres(entrada.substr(4, 2));
    segmento.longitud = NumeroDeDosCaracteres(entrada.substr(6, 2));
    const auto de = " en la clave " + std::to_string(clave) + " de la definición";
    if (segmento.campo < 1 || segmento.campo > definicion.gNumeroCampos) {
        throw ErrorDefinicion("un segmento sin campo" + de);
    }
    if (segmento.inicio < 1 || segmento.longitud < 1) {
        throw ErrorDefinicion("un segmento vacío" + de);
    }
    auto& segmentos = definicion.claves[static_cast<std::size_t>(clave)];
    if (segmentos.size() == maxSegmentos) {
        throw ErrorDefinicion("más de " + std::to_string(maxSegmentos) + " segmentos" + de);
    }
    segmentos.push_back(segmento);
    definicion.numeroClaves = std::max(definicion.numeroClaves, clave);
}

// Key entries lie anywhere from the last field on: a field whose entry begins like one counts as both.
// `ultimo`: number of fields that the file counts.
void leerClaves(std::string_view bytes, int ultimo, DefinicionTabla& definicion) {
    const std::size_t entradas = bytes.size() / bytesEntrada;
    for (auto i = static_cast<std::size_t>(ultimo); i < entradas; ++i) {
        const auto entrada = bytes.substr(bytesEntrada * i, bytesEntrada);
        if (entrada.front() == primeraDeClave) {
            leerSegmento(entrada, definicion);
        } else if (static_cast<unsigned char>(entrada.front()) < ' ') {
            break;
        }
    }
    if (definicion.longitudMayor() > static_cast<int>(motor::maxLongitud)) {
        throw ErrorDefinicion("una clave de " + std::to_string(definicion.longitudMayor()) +
                              " caracteres en la definición; caben " + std::to_string(motor::maxLongitud));
    }
}

}  // namespace

int NumeroDeDosCaracteres(std::string_view texto) {
    const auto cifra = [&](std::size_t i) {
        return i < texto.size() ? static_cast<unsigned char>(texto[i]) - '0' : -1;
    };
    const int primera = cifra(0);
    const int segunda = cifra(1);
    if (primera < 0) {
        return std::max(segunda, 0);
    }
    return segunda < 0 ? primera : primera * 10 + segunda;
}

std::string DosCaracteres(int numero) {
    return {static_cast<char>('0' + numero / 10), static_cast<char>('0' + numero % 10)};
}

FormaCampo formaDeTipo(int tipo) {
    switch (tipo) {
        case 1:
            return FormaCampo::entero16;
        case 2:
        case 6:
            return FormaCampo::simple;
        case 3:
        case 7:
            return FormaCampo::doble;
        case 4:
            return FormaCampo::entero32;
        case 5:
            return FormaCampo::fecha;
        default:
            return tipo >= 80 && tipo <= 85 ? FormaCampo::doble : FormaCampo::texto;
    }
}

int DefinicionTabla::campoDePosicion(int posicion) const {
    const auto lugar = static_cast<std::size_t>(posicion);
    return posicion > 0 && lugar < gCampoDePosicion.size() ? gCampoDePosicion[lugar] : 0;
}

int DefinicionTabla::campoDeNombre(std::string_view nombre) const {
    for (int i = 1; i <= gNumeroCampos; ++i) {
        if (core::igualSinCaja(campo(i).nombre, nombre)) {
            return i;
        }
    }
    return 0;
}

int DefinicionTabla::longitudClave(int clave) const {
    int longitud = 0;
    for (const auto& segmento : claves.at(static_cast<std::size_t>(clave))) {
        longitud += segmento.longitud;
    }
    return longitud;
}

int DefinicionTabla::longitudMayor() const {
    int mayor = 0;
    for (int clave = 1; clave <= numeroClaves; ++clave) {
        mayor = std::max(mayor, longitudClave(clave));
    }
    return mayor;
}

DefinicionTabla interpretarDefinicion(std::string_view bytes) {
    DefinicionTabla definicion;
    leerCampos(bytes, definicion);
    definicion.titulo = nombreDe(bytes.substr(0, bytesEntrada));
    leerClaves(bytes, definicion.gNumeroCampos, definicion);
    return definicion;
}

DefinicionTabla conClavesDe(const DefinicionTabla& definicion, std::string_view bytes) {
    DefinicionTabla otra = definicion;
    otra.claves = {};
    otra.numeroClaves = 0;
    leerClaves(bytes, leerCuenta(bytes), otra);
    return otra;
}

std::string componerDefinicion(const DefinicionTabla& definicion) {
    auto bytes = DosCaracteres(definicion.gNumeroCampos) + std::string(lugarNombre - 2, ' ') +
                 ponerTextoFijo(definicion.titulo, anchoNombre) + "  ";
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        const auto& campo = definicion.campo(i);
        bytes += std::string(sinUsar) + DosCaracteres(campo.ancho) + DosCaracteres(campo.tipo) +
                 ponerTextoFijo(campo.nombre, anchoNombre) + DosCaracteres(campo.posicion);
    }
    for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
        for (const auto& segmento : definicion.claves[static_cast<std::size_t>(clave)]) {
            bytes += {primeraDeClave, static_cast<char>('0' + clave)};  // key 10 is "I:"
            bytes += DosCaracteres(segmento.campo) + DosCaracteres(segmento.inicio) +
                     DosCaracteres(segmento.longitud) + std::string(anchoNombre + 2, ' ');
        }
    }
    return bytes;
}

std::shared_ptr<const DefinicionTabla> CacheDefiniciones::leer(const std::string& ruta) {
    auto& entrada = entradas_[ruta];
    if (entrada.definicion && entrada.marca.vale(archivos_, ruta)) return entrada.definicion;
    entrada = {platform::MarcaArchivo(archivos_, ruta), nullptr};
    const auto bytes = platform::leerTodo(archivos_, ruta);
    entrada.definicion = std::make_shared<const DefinicionTabla>(interpretarDefinicion(bytes));
    return entrada.definicion;
}

std::string TituloArchivo(platform::SistemaArchivos& archivos, std::string_view ruta) {
    const auto bytes = platform::leerTodo(archivos, ruta);
    const auto titulo = std::string_view(bytes).substr(std::min(lugarNombre, bytes.size()), anchoNombre);
    return NombrePropio(core::Recortar(core::aUtf8(titulo)));
}

void LeerNombresCampos(platform::SistemaArchivos& archivos, std::string_view ruta,
                       std::vector<std::string>& nombres) {
    const auto bytes = platform::leerTodo(archivos, ruta);
    const auto cuenta = static_cast<std::size_t>(NumeroDeDosCaracteres(bytes));
    nombres.assign(1, {});
    for (std::size_t i = 1; i <= cuenta && bytes.size() >= bytesEntrada * (i + 1); ++i) {
        nombres.push_back(
            core::aUtf8(std::string_view(bytes).substr(bytesEntrada * i + lugarNombre, anchoNombre)));
    }
}

}  // namespace tarvoline::data
