// Records and entries are held against each other by sums: both sides add up a mark of (key text, record),
// for every key and every 256 records apart. Where the sums differ, and there alone, the entries themselves
// are taken into memory and looked at.
#include "data/verificacion.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <set>
#include <thread>

#include "data/claves_tabla.h"
#include "data/huella.h"
#include "data/volcado.h"
#include "motor/cerrojos.h"
#include "motor/revision.h"

namespace tarvoline::data {

namespace {

using motor::ArchivoClaves;
using platform::ErrorArchivo;
using platform::TipoBloqueo;

constexpr unsigned bitsCubeta = 8;
constexpr std::size_t cubetasPorMirada = 1024;
constexpr std::uint64_t cadaCuantos = 4096;
constexpr std::chrono::milliseconds esperaDeInsercion{1000};
constexpr std::array<std::chrono::milliseconds, 4> pausas{
    std::chrono::milliseconds{20}, std::chrono::milliseconds{100}, std::chrono::milliseconds{300},
    std::chrono::milliseconds{600}};

using Conjunto = std::set<Discrepancia>;

std::size_t cubetaDe(std::int64_t registro) {
    return static_cast<std::size_t>(registro) >> bitsCubeta;
}

// As good as different for any two pairs.
std::uint64_t marcaDe(std::int64_t registro, std::string_view texto) {
    return motor::sumaDeControl(reinterpret_cast<const motor::Octeto*>(texto.data()), texto.size(),
                                static_cast<std::uint64_t>(registro));
}

// As revisar() gives the entries.
std::string_view sinRelleno(std::string_view texto) {
    return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

class Cotejo {
  public:
    Cotejo(TablaSuelta& tabla, const AlDiscrepar& alDiscrepar, const Progreso& progreso)
        : tabla_(tabla),
          def_(tabla.definicion()),
          alDiscrepar_(alDiscrepar),
          progreso_(progreso),
          campos_(def_.campos.size()) {}

    Verificacion hacer(platform::SistemaArchivos& archivos, const std::string& rutaClaves) {
        lugares_ = tabla_.lugares();
        if (def_.numeroClaves > 0) abrirClaves(archivos, rutaClaves);
        tope_ = std::max<std::int64_t>(lugares_, resultado_.contador);
        if (claves_) sumas_.assign(static_cast<std::size_t>(def_.numeroClaves), Sumas(cubetaDe(tope_) + 1));
        for (const Discrepancia& una : persistentes([this] { return medidas(); }))
            contar(una);
        leerRegistros();
        if (claves_) cotejarClaves();
        return std::move(resultado_);
    }

  private:
    using Sumas = std::vector<std::uint64_t>;
    using Cubetas = std::vector<bool>;
    // By record and key.
    using Entradas = std::map<std::pair<std::int64_t, int>, std::vector<std::string>>;

    void contar(const Discrepancia& discrepancia) {
        ++resultado_.discrepancias;
        if (alDiscrepar_) alDiscrepar_(discrepancia);
    }

    void avanzar() {
        ++hecho_;
        if (!progreso_ || hecho_ % cadaCuantos != 0) return;
        progreso_(hecho_, static_cast<std::uint64_t>(lugares_) * (1 + sumas_.size()));
    }

    void abrirClaves(platform::SistemaArchivos& archivos, const std::string& ruta) {
        auto abierto = ArchivoClaves::abrir(archivos, ruta, platform::Apertura::lectura);
        // A company is made without them; the first opening of a table makes them.
        const bool sinEstrenar = abierto.estado == motor::estado_archivo::noExiste && lugares_ == 0;
        if (sinEstrenar) return;
        if (!abierto.archivo) {
            const auto que = abierto.estado == motor::estado_archivo::noExiste ? Desacuerdo::clavesAusentes
                             : abierto.estado == motor::estado_archivo::ajeno  ? Desacuerdo::clavesAjenas
                                                                               : Desacuerdo::clavesDannadas;
            contar({0, que, 0, {}, {}});
            return;
        }
        const motor::Cabecera& cabecera = abierto.archivo->cabecera();
        if (cabecera.claves != def_.numeroClaves || cabecera.longitud != def_.longitudMayor()) {
            const auto medidas = [](auto claves, auto longitud) {
                return std::to_string(claves) + " de hasta " + std::to_string(longitud) + " caracteres";
            };
            contar({0, Desacuerdo::clavesDeOtra, 0, medidas(unsigned{cabecera.claves}, cabecera.longitud),
                    medidas(def_.numeroClaves, def_.longitudMayor())});
            return;
        }
        claves_ = std::move(abierto.archivo);
        resultado_.contador = contadorActual();
        resultado_.clavesCotejadas = true;
    }

    std::uint32_t contadorActual() {
        std::uint32_t contador = 0;
        claves_->leer([&] { contador = claves_->cabecera().contador; });
        return contador;
    }

    bool nadieMas() {
        const platform::Rango centinela{platform::byteCentinela, 1};
        return tabla_.archivo().podriaBloquear(centinela, TipoBloqueo::exclusivo) &&
               (!claves_ || claves_->archivo().podriaBloquear(centinela, TipoBloqueo::exclusivo));
    }

    // What `mirar` finds every time.
    template <typename Mirar>
    Conjunto persistentes(Mirar&& mirar) {
        Conjunto quedan = mirar();
        for (const auto pausa : pausas) {
            if (quedan.empty() || nadieMas()) break;
            std::this_thread::sleep_for(pausa);
            const Conjunto ahora = mirar();
            std::erase_if(quedan, [&](const Discrepancia& una) { return !ahora.contains(una); });
        }
        return quedan;
    }

    Conjunto medidas() {
        Conjunto halladas;
        // Who inserts raises the counter first and writes then.
        const std::int64_t lugares = tabla_.lugares();
        if (const std::uint64_t sobrante = tabla_.sobrante(); sobrante > 0) {
            halladas.insert({lugares, Desacuerdo::registroCortado, 0, std::to_string(sobrante), {}});
        }
        if (claves_ && contadorActual() < lugares) {
            halladas.insert({contadorActual(), Desacuerdo::contadorBajo, 0, std::to_string(lugares), {}});
        }
        return halladas;
    }

    void textoDeClave(int clave, std::string& texto) const {
        texto.clear();
        anadirClave(def_, clave, campos_, texto);
        texto.resize(sinRelleno(texto).size());
    }

    void leerRegistros() {
        Huella huella;
        std::string linea;
        anadirTitulos(def_, linea);
        huella.anadir(linea);
        std::string texto;
        tabla_.recorrer(1, lugares_, [&](const RegistroLeido& registro) {
            avanzar();
            if (registro.estado == EstadoRegistro::anulado) ++resultado_.anulados;
            if (registro.estado == EstadoRegistro::sinEscribir) ++resultado_.sinEscribir;
            if (registro.estado != EstadoRegistro::vivo) return;
            ++resultado_.vivos;
            descifrarRegistro(def_, registro.bytes, campos_);
            linea.clear();
            anadirLinea(def_, registro.numero, campos_, linea);
            huella.anadir(linea);
            for (std::size_t i = 0; i < sumas_.size(); ++i) {
                textoDeClave(static_cast<int>(i) + 1, texto);
                sumas_[i][cubetaDe(registro.numero)] += marcaDe(registro.numero, texto);
            }
        });
        resultado_.huella = huella.enHexadecimal();
    }

    void cotejarClaves() {
        try {
            restarEntradas();
            mirarDeCerca();
        } catch (const motor::ErrorMotor& error) {
            resultado_.clavesCotejadas = false;
            contar({0, Desacuerdo::clavesDannadas, 0, error.what(), {}});
        }
    }

    void exigirSanas(const motor::Revision& revision) {
        if (!revision.fallo.empty()) throw motor::ErrorMotor(revision.fallo);
    }

    void restarEntradas() {
        resultado_.entradas.assign(sumas_.size(), 0);
        exigirSanas(motor::revisar(*claves_, [&](unsigned clave, std::string_view texto, std::uint32_t r) {
            avanzar();
            ++resultado_.entradas[clave - 1];
            if (r > claves_->cabecera().contador) {
                contar({r,
                        Desacuerdo::entradaSinRegistro,
                        static_cast<int>(clave),
                        std::string(texto),
                        {},
                        EstadoRegistro::sinEscribir});
            }
            if (r <= tope_) sumas_[clave - 1][cubetaDe(r)] -= marcaDe(r, texto);
        }));
    }

    void mirarDeCerca() {
        const std::size_t cuantas = cubetaDe(tope_) + 1;
        Cubetas enDuda(cuantas);
        std::size_t apuntadas = 0;
        const auto mirar = [&] {
            if (apuntadas == 0) return;
            for (const Discrepancia& una : persistentes([&] { return discrepanciasDe(enDuda); }))
                contar(una);
            enDuda.assign(cuantas, false);
            apuntadas = 0;
        };
        for (std::size_t i = 0; i < cuantas; ++i) {
            if (std::ranges::all_of(sumas_, [&](const Sumas& suma) { return suma[i] == 0; })) continue;
            enDuda[i] = true;
            if (++apuntadas == cubetasPorMirada) mirar();
        }
        mirar();
    }

    Conjunto discrepanciasDe(const Cubetas& enDuda) {
        Entradas entradas;
        exigirSanas(motor::revisar(*claves_, [&](unsigned clave, std::string_view texto, std::uint32_t r) {
            if (r > tope_ || !enDuda[cubetaDe(r)]) return;
            entradas[{r, static_cast<int>(clave)}].emplace_back(texto);
        }));
        Conjunto halladas;
        for (std::size_t i = 0; i < enDuda.size(); ++i) {
            if (!enDuda[i]) continue;
            const auto desde = static_cast<std::int64_t>(i << bitsCubeta);
            const auto hasta = static_cast<std::int64_t>((i + 1) << bitsCubeta) - 1;
            tabla_.recorrer(std::max<std::int64_t>(1, desde), std::min(hasta, tope_),
                            [&](const RegistroLeido& registro) { juzgar(registro, entradas, halladas); });
        }
        return halladas;
    }

    // Those of one record; the same thing found in all keys is said once.
    void juzgar(const RegistroLeido& registro, Entradas& entradas, Conjunto& halladas) {
        const bool vivo = registro.estado == EstadoRegistro::vivo;
        if (vivo) descifrarRegistro(def_, registro.bytes, campos_);
        std::vector<Discrepancia> suyas;
        for (int clave = 1; clave <= def_.numeroClaves; ++clave) {
            auto& textos = entradas[{registro.numero, clave}];
            Discrepancia una{registro.numero, {}, clave, {}, {}, registro.estado};
            if (vivo) juzgarVivo(una, textos, suyas);
            if (!vivo && !textos.empty()) {
                una.que = Desacuerdo::entradaSinRegistro;
                una.texto = textos.front();
                suyas.push_back(una);
            }
        }
        if (suyas.empty()) return;
        const bool enTodas =
            static_cast<int>(suyas.size()) == def_.numeroClaves &&
            std::ranges::all_of(suyas, [&](const Discrepancia& una) {
                return una.que == suyas.front().que && (una.que == Desacuerdo::registroSinEntrada ||
                                                        una.que == Desacuerdo::entradaSinRegistro);
            });
        if (enTodas) {
            suyas.resize(1);
            suyas.front().clave = 0;
        }
        halladas.insert(suyas.begin(), suyas.end());
    }

    // `textos`: what the key has the record under.
    void juzgarVivo(Discrepancia una, std::vector<std::string>& textos, std::vector<Discrepancia>& suyas) {
        textoDeClave(una.clave, una.esperado);
        if (textos.empty()) {
            una.que = Desacuerdo::registroSinEntrada;
            suyas.push_back(una);
            return;
        }
        const auto bueno = std::ranges::find(textos, una.esperado);
        if (bueno != textos.end()) {
            textos.erase(bueno);
        } else {
            una.que = Desacuerdo::otraClave;
            una.texto = textos.front();
            textos.erase(textos.begin());
            suyas.push_back(una);
        }
        una.que = Desacuerdo::entradaDeMas;
        for (const std::string& texto : textos) {
            una.texto = texto;
            suyas.push_back(una);
        }
    }

    TablaSuelta& tabla_;
    const DefinicionTabla& def_;
    const AlDiscrepar& alDiscrepar_;
    const Progreso& progreso_;
    std::unique_ptr<ArchivoClaves> claves_;  // null: none to hold against the records
    std::int64_t lugares_ = 0;
    std::int64_t tope_ = 0;     // entries and places above came after the beginning
    std::vector<Sumas> sumas_;  // by key, by bucket: marks of the records less those of the entries
    std::uint64_t hecho_ = 0;
    std::vector<std::string> campos_;
    Verificacion resultado_;
};

}  // namespace

Verificacion verificarTabla(platform::SistemaArchivos& archivos, TablaSuelta& tabla,
                            const AlDiscrepar& alDiscrepar, const Progreso& progreso) {
    return verificarTabla(archivos, tabla, rutaClavesDe(tabla.rutaDatos()), alDiscrepar, progreso);
}

Verificacion verificarTabla(platform::SistemaArchivos& archivos, TablaSuelta& tabla,
                            const std::string& rutaClaves, const AlDiscrepar& alDiscrepar,
                            const Progreso& progreso) {
    const motor::CerrojoInsercion cerrojo(tabla.archivo(), TipoBloqueo::compartido, esperaDeInsercion);
    if (!cerrojo.tomado()) {
        throw ErrorArchivo(platform::error_archivo::permisoDenegado, tabla.rutaDatos(),
                           "otro programa rehace las claves");
    }
    return Cotejo(tabla, alDiscrepar, progreso).hacer(archivos, rutaClaves);
}

}  // namespace tarvoline::data
