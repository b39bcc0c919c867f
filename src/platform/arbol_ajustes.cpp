#include "platform/arbol_ajustes.h"

#include <chrono>
#include <exception>
#include <mutex>
#include <utility>

#include "platform/ajustes_texto.h"
#include "platform/marca_archivo.h"
#include "platform/rutas.h"

namespace tarvoline::platform {

namespace {

// A writer holds the lock for the time of one small file; who waits this long waits for a process that hangs.
constexpr std::chrono::milliseconds esperaMaxima{10'000};

// Room for any 32-bit position.
constexpr std::size_t anchoLigero = 12;

// Runs `paso`; what goes wrong with the file becomes what went wrong with the store.
template <typename Paso>
auto comoAjustes(Paso&& paso) {
    try {
        return paso();
    } catch (const ErrorArchivo& error) {
        throw ErrorAjustes(error.what());
    }
}

// The store in its file. Readers take no lock: the file is only ever replaced as a whole, or has one short
// value overwritten in place. Writers of all processes take turns through the lock file beside it, which is
// never replaced or removed.
class ArbolArchivo final : public ArbolAjustes {
  public:
    ArbolArchivo(SistemaArchivos& archivos, std::string ruta, bool soloLectura)
        : archivos_(archivos), ruta_(std::move(ruta)), soloLectura_(soloLectura) {}

    std::optional<std::string> leer(const ClaveAjuste& donde) override {
        const std::lock_guard turno(mutex_);
        return comoAjustes([&] { return mirar().leer(donde); });
    }

    void grabar(const ClaveAjuste& donde, std::string_view valor) override {
        cambiar([&](AjustesTexto& ajustes) { return ajustes.grabar(donde, valor); });
    }

    // Overwrites the value where it stands: a rename without bringing the file to the device first could
    // leave an empty file after a power failure, and bringing it there costs more than sending a piece.
    void grabarLigero(const ClaveAjuste& donde, std::string_view valor) override {
        if (soloLectura_) throw ErrorAjustes(ruta_ + ": es de solo lectura");
        const std::lock_guard turno(mutex_);
        comoAjustes([&] {
            archivos_.crearDirectorios(carpetaDe(ruta_), 0700);
            const auto cerrojo = tomarCerrojo();
            AjustesTexto& ajustes = cargar();
            const auto sitio = ajustes.sitio(donde);
            if (sitio && sitio->longitud >= valor.size() && ajustes.texto() == texto_) {
                std::string relleno(valor);
                relleno.resize(sitio->longitud, ' ');
                archivos_.abrir(ruta_, Apertura::escritura)->escribir(sitio->desde, comoBytes(relleno));
                return;
            }
            AjustesTexto nuevos = ajustes;
            nuevos.grabarConSitio(donde, valor, anchoLigero);
            escribirAtomico(archivos_, ruta_, nuevos.texto(), 0600);
        });
    }

    void borrar(const ClaveAjuste& donde) override {
        cambiar([&](AjustesTexto& ajustes) { return ajustes.borrar(donde); });
    }

    std::vector<Ajuste> listar() override {
        const std::lock_guard turno(mutex_);
        return comoAjustes([&] { return cargar().listar(); });
    }

    std::vector<std::string> lineasOmitidas() override {
        const std::lock_guard turno(mutex_);
        comoAjustes([&] { cargar(); });
        return std::exchange(omitidas_, {});
    }

  private:
    // For who only reads: a file that has lain still since it was read holds what it held.
    AjustesTexto& mirar() { return marca_.vale(archivos_, ruta_) ? ajustes_ : cargar(); }

    // Reads the file again; only the work of understanding the same text twice is saved.
    AjustesTexto& cargar() {
        marca_ = {};
        const MarcaArchivo marca(archivos_, ruta_);
        std::string texto;
        try {
            texto = leerTodo(archivos_, ruta_);
        } catch (const ErrorArchivo& error) {
            const int numero = error.numero();
            if (numero != error_archivo::noExiste && numero != error_archivo::rutaNoExiste) throw;
        }
        if (!leido_ || texto != texto_) {
            ajustes_ = AjustesTexto(texto);
            texto_ = std::move(texto);
            leido_ = true;
            omitidas_ = ajustes_.omitidas();
        }
        marca_ = marca;
        return ajustes_;
    }

    template <typename Cambio>
    void cambiar(Cambio&& cambio) {
        if (soloLectura_) throw ErrorAjustes(ruta_ + ": es de solo lectura");
        const std::lock_guard turno(mutex_);
        comoAjustes([&] {
            archivos_.crearDirectorios(carpetaDe(ruta_), 0700);
            const auto cerrojo = tomarCerrojo();
            AjustesTexto nuevos = cargar();
            if (cambio(nuevos)) escribirAtomico(archivos_, ruta_, nuevos.texto(), 0600);
        });
    }

    std::unique_ptr<Archivo> tomarCerrojo() {
        auto cerrojo = archivos_.abrir(ruta_ + ".bloqueo", Apertura::crear, Comparticion::libre, 0600);
        if (!cerrojo->bloquear(todoElArchivo, TipoBloqueo::exclusivo, esperaMaxima)) {
            throw ErrorAjustes(ruta_ + ": otro proceso lo tiene bloqueado");
        }
        return cerrojo;
    }

    SistemaArchivos& archivos_;
    const std::string ruta_;
    const bool soloLectura_;
    std::mutex mutex_;
    bool leido_ = false;
    MarcaArchivo marca_;  // of the file as `texto_` was read from it
    std::string texto_;
    AjustesTexto ajustes_;
    std::vector<std::string> omitidas_;
};

}  // namespace

std::unique_ptr<ArbolAjustes> crearArbolAjustes(SistemaArchivos& archivos, std::string ruta) {
    return std::make_unique<ArbolArchivo>(archivos, std::move(ruta), false);
}

std::unique_ptr<ArbolAjustes> crearArbolMaquina(SistemaArchivos& archivos, std::string ruta) {
    return std::make_unique<ArbolArchivo>(archivos, std::move(ruta), true);
}

}  // namespace tarvoline::platform
