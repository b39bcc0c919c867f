#include "motor/motor_indexados.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

#include "motor/edicion_arbol.h"

namespace tarvoline::motor {

namespace {

constexpr std::uint32_t mayorRegistro = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t trasTodas = std::numeric_limits<std::uint32_t>::max();

// The text's length without the blanks at its end.
std::size_t largoDe(std::string_view texto) {
    const std::size_t ultimo = texto.find_last_not_of(' ');
    return ultimo == std::string_view::npos ? 0 : ultimo + 1;
}

bool cabe(std::string_view texto, unsigned ancho) {
    return texto.size() <= ancho || largoDe(texto) <= ancho;
}

bool esPosicion(Verbo verbo) {
    return verbo <= Verbo::debajo;
}

// What a command writes that changes one leaf of every key, and with it all above.
void preverUnaDeCada(Escritura& escritura) {
    const Cabecera& cabecera = escritura.cabecera();
    unsigned hojas = 0, interiores = 0;
    for (unsigned i = 0; i < cabecera.claves; ++i) {
        if (cabecera.raices[i].altura == 0) continue;
        ++hojas;
        interiores += cabecera.raices[i].altura - 1U;
    }
    escritura.prever(hojas, interiores);
}

}  // namespace

MotorIndexados::MotorIndexados(platform::SistemaArchivos& archivos, bool sincronizarAlCerrar)
    : archivos_(archivos), sincronizarAlCerrar_(sincronizarAlCerrar) {}

MotorIndexados::~MotorIndexados() = default;

void MotorIndexados::Ejecutar(std::string& comando, std::int32_t& registro, std::int16_t& estadoComando) {
    estadoComando = estado::malo;
    if (!entender(comando, orden_)) return;
    try {
        estadoComando = cumplir(registro);
    } catch (const platform::ErrorArchivo& error) {
        if (orden_.verbo != Verbo::insertar) throw ErrorMotor(error.what());
        estadoComando = estado::lleno;
    } catch (const ErrorMotor&) {
        if (orden_.verbo != Verbo::insertar) throw;
        estadoComando = estado::lleno;
    }
    if (estadoComando == estado::noHay) registro = 0;
}

std::int16_t MotorIndexados::cumplir(std::int32_t& registro) {
    switch (orden_.verbo) {
        case Verbo::cerrar:
            cerrar();
            return estado::bien;
        case Verbo::abrir:
            return abrir();
        case Verbo::crear:
            return crear();
        default:
            break;
    }
    if (!abierta(orden_.tabla)) return estado::malo;
    if (esPosicion(orden_.verbo)) return situar(registro);
    switch (orden_.verbo) {
        case Verbo::insertar:
            return insertar(registro);
        case Verbo::borrar:
            return borrar();
        case Verbo::cambiar:
            return cambiar();
        default:
            return vaciar();
    }
}

std::int16_t MotorIndexados::abrir() {
    Mesa& mesa = mesas_[orden_.tabla];
    mesa.levantar();
    auto abierto = ArchivoClaves::abrir(archivos_, orden_.ruta);
    if (abierto.archivo) acoger(mesa, std::move(abierto.archivo));
    return static_cast<std::int16_t>(abierto.estado);
}

std::int16_t MotorIndexados::crear() {
    const bool medidas = orden_.longitud >= 1 && orden_.longitud <= maxLongitud && orden_.clave >= 1 &&
                         orden_.clave <= maxClaves;
    if (!medidas) return estado::malo;
    Mesa& mesa = mesas_[orden_.tabla];
    mesa.levantar();
    auto creado = ArchivoClaves::crear(archivos_, orden_.ruta, orden_.longitud, orden_.clave);
    if (creado.archivo) acoger(mesa, std::move(creado.archivo));
    return static_cast<std::int16_t>(creado.estado);
}

// A file that another table number has open already is used through that one handle.
void MotorIndexados::acoger(Mesa& mesa, std::unique_ptr<ArchivoClaves> archivo) {
    const std::uint64_t identidad = archivo->cabecera().archivo;
    for (const Mesa& otra : mesas_) {
        if (otra.archivo == nullptr || otra.archivo->cabecera().archivo != identidad) continue;
        // A copy of a key file bears the same identity and is another file all the same.
        const auto una = archivo->archivo().estado();
        const auto suya = otra.archivo->archivo().estado();
        if (una.dispositivo != suya.dispositivo || una.identidad != suya.identidad) continue;
        mesa.archivo = otra.archivo;
        return;
    }
    mesa.archivo = std::move(archivo);
}

// What cannot be synchronised keeps nothing open: the first error is told when all are closed.
void MotorIndexados::cerrar() {
    std::exception_ptr fallo;
    for (unsigned tabla = 0; tabla < maxTablas; ++tabla) {
        try {
            soltar(tabla);
        } catch (const platform::ErrorArchivo&) {
            if (!fallo) fallo = std::current_exception();
        }
    }
    if (fallo) std::rethrow_exception(fallo);
}

void MotorIndexados::soltar(unsigned tabla) {
    const auto archivo = mesas_.at(tabla).levantar();
    if (sincronizarAlCerrar_ && archivo) archivo->archivo().sincronizar();
}

std::int16_t MotorIndexados::situar(std::int32_t& registro) {
    Mesa& mesa = mesas_[orden_.tabla];
    const bool anda = orden_.verbo == Verbo::siguiente || orden_.verbo == Verbo::anterior;
    if (!anda && orden_.clave > mesa.archivo->cabecera().claves) return estado::malo;
    if (anda && mesa.clave == 0) return estado::noHay;
    std::int16_t respuesta = estado::noHay;
    mesa.archivo->leer([&] { respuesta = responder(mesa); });
    if (respuesta == estado::noHay) {
        // Nothing to stand on. An empty key becomes the current one even so.
        const auto& raices = mesa.archivo->cabecera().raices;
        if (!anda && raices[orden_.clave - 1].altura == 0) {
            mesa.clave = orden_.clave;
            mesa.situada = false;
        }
        return respuesta;
    }
    if (!anda) mesa.clave = orden_.clave;
    mesa.situada = true;
    mesa.cual = 1 - mesa.cual;
    registro = static_cast<std::int32_t>(mesa.sitio().clave.registro);
    return respuesta;
}

// Run once or more, see ArchivoClaves::leer(): changes nothing but the place that is not yet in force.
std::int16_t MotorIndexados::responder(Mesa& mesa) {
    const bool anda = orden_.verbo == Verbo::siguiente || orden_.verbo == Verbo::anterior;
    Arbol arbol(*mesa.archivo, anda ? mesa.clave : orden_.clave);
    const auto siHay = [](bool hay) { return hay ? estado::bien : estado::noHay; };
    switch (orden_.verbo) {
        case Verbo::buscar:
        case Verbo::generico:
            return buscar(arbol, mesa);
        case Verbo::encima:
        case Verbo::debajo:
            return vecina(arbol, mesa);
        case Verbo::primera:
            return siHay(arbol.primera(mesa.siguiente()));
        case Verbo::ultima:
            return siHay(arbol.ultima(mesa.siguiente()));
        default:
            return mover(arbol, mesa);
    }
}

std::int16_t MotorIndexados::buscar(Arbol& arbol, Mesa& mesa) const {
    const unsigned ancho = mesa.archivo->ancho();
    Clave buscada;
    // A value longer than any key lies behind all that equal its beginning, and equals none.
    const bool larga = !cabe(orden_.valor, ancho);
    const bool generico = orden_.verbo == Verbo::generico;
    buscada.poner(orden_.valor, ancho, larga ? trasTodas : 0);
    const std::size_t largo = std::min<std::size_t>(orden_.valor.size(), ancho);
    if (generico && !larga) {
        // Whatever follows the prefix, be it less than a blank, follows it.
        std::memset(buscada.texto.data() + largo, 0, ancho - largo);
    }
    switch (arbol.situar(buscada, generico ? largo : ancho, mesa.siguiente())) {
        case Arbol::Hallazgo::igual:
            return estado::bien;
        case Arbol::Hallazgo::entre:
            return estado::entre;
        case Arbol::Hallazgo::antes:
            return estado::antes;
        case Arbol::Hallazgo::despues:
            return estado::despues;
        case Arbol::Hallazgo::nada:
            break;
    }
    return estado::noHay;
}

std::int16_t MotorIndexados::vecina(Arbol& arbol, Mesa& mesa) const {
    const unsigned ancho = mesa.archivo->ancho();
    Clave buscada;
    const bool encima = orden_.verbo == Verbo::encima;
    const bool larga = !cabe(orden_.valor, ancho);
    buscada.poner(orden_.valor, ancho, encima || larga ? trasTodas : 0);
    const bool hay = encima ? arbol.desde(buscada, Cota::superior, mesa.siguiente())
                            : arbol.antesDe(buscada, mesa.siguiente());
    return hay ? estado::bien : estado::noHay;
}

std::int16_t MotorIndexados::mover(Arbol& arbol, Mesa& mesa) const {
    const Sitio& sitio = mesa.sitio();
    Sitio& siguiente = mesa.siguiente();
    bool hay = false;
    if (orden_.verbo == Verbo::anterior) {
        hay = mesa.situada && arbol.antesDe(sitio.clave, siguiente);
    } else if (!mesa.situada) {
        hay = arbol.primera(siguiente);
    } else if (sitio.cabecera == mesa.archivo->cabecera().sello) {
        hay = arbol.trasSitio(sitio, siguiente);
    } else {
        hay = arbol.desde(sitio.clave, Cota::superior, siguiente);
    }
    return hay ? estado::bien : estado::noHay;
}

std::size_t MotorIndexados::siguientes(unsigned tabla, std::span<std::int32_t> registros) {
    Mesa& mesa = mesas_.at(tabla);
    if (!mesa.archivo || mesa.clave == 0 || !mesa.situada) return 0;
    std::size_t hay = 0;
    try {
        mesa.archivo->leer([&] {
            Arbol arbol(*mesa.archivo, mesa.clave);
            Sitio actual = mesa.sitio();
            const bool mismaCabecera = actual.cabecera == mesa.archivo->cabecera().sello;
            for (hay = 0; hay < registros.size(); ++hay) {
                const bool otra = hay > 0 || mismaCabecera
                                      ? arbol.trasSitio(actual, mesa.siguiente())
                                      : arbol.desde(actual.clave, Cota::superior, mesa.siguiente());
                if (!otra) break;
                actual = mesa.siguiente();
                registros[hay] = static_cast<std::int32_t>(actual.clave.registro);
            }
            mesa.siguiente() = actual;
        });
    } catch (const platform::ErrorArchivo& error) {
        throw ErrorMotor(error.what());
    }
    mesa.cual = 1 - mesa.cual;
    return hay;
}

// Reads the pages that a command with a text for every key will change.
void MotorIndexados::adelantarClaves(ArchivoClaves& archivo) {
    archivo.adelantar([&] {
        Clave clave;
        Sitio sitio;
        for (unsigned i = 0; i < orden_.textos.size(); ++i) {
            clave.poner(orden_.textos[i], archivo.ancho(), orden_.registro);
            Arbol(archivo, i + 1).desde(clave, Cota::inferior, sitio);
        }
    });
}

std::int16_t MotorIndexados::insertar(std::int32_t& registro) {
    ArchivoClaves& archivo = archivoDeOrden();
    const auto& textos = orden_.textos;
    const unsigned ancho = archivo.ancho();
    if (textos.size() != archivo.cabecera().claves) return estado::malo;
    if (!std::all_of(textos.begin(), textos.end(), [&](auto texto) { return cabe(texto, ancho); })) {
        return estado::malo;
    }
    escribir(
        archivo, [&] { adelantarClaves(archivo); },
        [&](Escritura& escritura) {
            Cabecera& cabecera = escritura.cabecera();
            if (cabecera.contador >= mayorRegistro)
                throw ErrorMotor("la tabla ha dado ya todos los números de registro");
            const std::uint32_t numero = ++cabecera.contador;
            preverUnaDeCada(escritura);
            Clave clave;
            for (unsigned i = 0; i < textos.size(); ++i) {
                clave.poner(textos[i], ancho, numero);
                EdicionArbol(escritura, i + 1).insertar(clave);
            }
            escritura.confirmar();
            registro = static_cast<std::int32_t>(numero);
        });
    return estado::bien;
}

std::int16_t MotorIndexados::borrar() {
    ArchivoClaves& archivo = archivoDeOrden();
    const auto& textos = orden_.textos;
    const unsigned ancho = archivo.ancho();
    if (textos.size() != archivo.cabecera().claves) return estado::malo;
    return escribir(
        archivo, [&] { adelantarClaves(archivo); },
        [&](Escritura& escritura) {
            preverUnaDeCada(escritura);
            unsigned quitadas = 0;
            Clave clave;
            for (unsigned i = 0; i < textos.size(); ++i) {
                if (!cabe(textos[i], ancho)) continue;
                clave.poner(textos[i], ancho, orden_.registro);
                if (EdicionArbol(escritura, i + 1).quitar(clave)) ++quitadas;
            }
            if (quitadas > 0) escritura.confirmar();
            return quitadas == textos.size() ? estado::bien : estado::noHay;
        });
}

// All of it or nothing: one old entry that is not there leaves every key as it was.
std::int16_t MotorIndexados::cambiar() {
    ArchivoClaves& archivo = archivoDeOrden();
    const unsigned ancho = archivo.ancho();
    for (const Orden::Cambio& cambio : orden_.cambios) {
        if (cambio.clave > archivo.cabecera().claves || !cabe(cambio.nuevo, ancho)) return estado::malo;
    }
    return escribir(archivo, [&](Escritura& escritura) {
        for (const Orden::Cambio& cambio : orden_.cambios) {
            Clave clave;
            clave.poner(cambio.antiguo, ancho, orden_.registro);
            if (!cabe(cambio.antiguo, ancho)) return estado::noHay;
            EdicionArbol edicion(escritura, cambio.clave);
            if (!edicion.quitar(clave)) return estado::noHay;
            clave.poner(cambio.nuevo, ancho, orden_.registro);
            edicion.insertar(clave);
        }
        escritura.confirmar();
        return estado::bien;
    });
}

std::int16_t MotorIndexados::vaciar() {
    escribir(archivoDeOrden(), [](Escritura& escritura) {
        escritura.liberarTodo();
        escritura.confirmar();
    });
    return estado::bien;
}

std::uint32_t MotorIndexados::ultimoRegistro(unsigned tabla) {
    ArchivoClaves& archivo = *mesas_[tabla].archivo;
    std::uint32_t contador = 0;
    archivo.leer([&] { contador = archivo.cabecera().contador; });
    return contador;
}

}  // namespace tarvoline::motor
