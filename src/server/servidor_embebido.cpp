#include "server/servidor_embebido.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "core/carpetas.h"
#include "platform/zocalo.h"
#include "server/almacen_archivos.h"
#include "server/conexiones.h"
#include "server/deposito.h"
#include "server/historial.h"
#include "server/operaciones.h"
#include "server/puerta.h"

namespace tarvoline::server {
namespace {

constexpr std::chrono::seconds entreRondas{5};

// Opening a company moves the process, so a root that was given from the current folder is made whole first.
OpcionesServicio conRaizEntera(OpcionesServicio opciones) {
    opciones.raiz = core::rutaCompleta(opciones.raiz);
    return opciones;
}

std::unique_ptr<platform::Archivo> ocuparRaiz(platform::SistemaArchivos& archivos, const std::string& raiz) {
    archivos.crearDirectorios(raiz, 0700);
    auto cerrojo = archivos.abrir(raiz + "/servicio.lock", platform::Apertura::crear,
                                  platform::Comparticion::libre, 0600);
    if (!cerrojo->bloquear(platform::todoElArchivo, platform::TipoBloqueo::exclusivo)) {
        throw ErrorServidor("otro servicio usa ya la carpeta " + raiz);
    }
    return cerrojo;
}

// A port that is listened to in a thread of its own.
class Escucha {
  public:
    Escucha(const ContextoTls* tls, core::Registro& registro) : servidor_(tls) {
        servidor_.alFallar = [&registro](const std::exception& error) {
            registro.error(std::string("conexión: ") + error.what());
        };
    }
    ~Escucha() { detener(); }
    Escucha(const Escucha&) = delete;
    Escucha& operator=(const Escucha&) = delete;

    void arrancar(const std::string& direccion, int puerto) {
        if (puerto == 0) {
            puerto_ = servidor_.bind_to_any_port(direccion);
        } else {
            puerto_ = servidor_.bind_to_port(direccion, puerto) ? puerto : -1;
        }
        if (puerto_ <= 0) {
            throw ErrorServidor("no se puede escuchar en " + direccion + ", puerto " +
                                std::to_string(puerto));
        }
        hilo_ = std::thread([this] { servidor_.listen_after_bind(); });
        while (!servidor_.is_running())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    void detener() {
        if (!hilo_.joinable()) return;
        servidor_.detener();
        hilo_.join();
    }

    ServidorHttp& servidor() { return servidor_; }
    int puerto() const { return puerto_; }

  private:
    ServidorHttp servidor_;
    std::thread hilo_;
    int puerto_ = 0;
};

}  // namespace

class ServidorEmbebido::Interior {
  public:
    Interior(OpcionesServicio opciones, platform::SistemaArchivos& archivos, const platform::Reloj& reloj,
             core::Registro& registro)
        : opciones_(conRaizEntera(std::move(opciones))),
          registro_(registro),
          cerrojoRaiz_(ocuparRaiz(archivos, opciones_.raiz)),
          deposito_(archivos, opciones_.raiz),
          archivos_(archivos, deposito_.base(), registro, opciones_.raiz + "/datos"),
          historial_(deposito_.base(), reloj),
          operaciones_(deposito_.usuarios(), archivos_, historial_, reloj, registro),
          enlace_(deposito_.usuarios(), archivos, opciones_.raiz, reloj, registro),
          puerta_(operaciones_, enlace_, registro) {
        comprobarOpciones();
        if (opciones_.conTls()) tls_.emplace(opciones_.certificado, opciones_.claveCertificado);
    }
    ~Interior() { detener(); }

    void arrancar();
    void detener();

    int puerto() const { return llana_ ? llana_->puerto() : 0; }
    int puertoTls() const { return cifrada_ ? cifrada_->puerto() : 0; }
    AlmacenUsuarios& usuarios() { return deposito_.usuarios(); }

  private:
    void comprobarOpciones() const;
    void rondar();

    OpcionesServicio opciones_;
    core::Registro& registro_;
    std::unique_ptr<platform::Archivo> cerrojoRaiz_;
    Deposito deposito_;
    AlmacenArchivos archivos_;
    Historial historial_;
    Operaciones operaciones_;
    OperacionesEnlace enlace_;
    Puerta puerta_;
    std::optional<ContextoTls> tls_;
    std::optional<Escucha> llana_;
    std::optional<Escucha> cifrada_;

    std::mutex cerrojo_;
    std::condition_variable despertar_;
    bool fin_ = false;
    std::thread ronda_;
};

void ServidorEmbebido::Interior::comprobarOpciones() const {
    if (opciones_.conTls() == opciones_.claveCertificado.empty()) {
        throw ErrorServidor("el certificado y su clave van juntos");
    }
    if (!platform::zocalo::esLocal(opciones_.direccion) && !opciones_.conTls() && !opciones_.sinCifrar) {
        throw ErrorServidor("escuchar en " + opciones_.direccion +
                            " sin certificado expone las claves y las copias en la red: dé --certificado y "
                            "--clave-certificado, o --sin-cifrar si lo asume");
    }
}

void ServidorEmbebido::Interior::arrancar() {
    llana_.emplace(nullptr, registro_);
    if (tls_) {
        cifrada_.emplace(&*tls_, registro_);
        puerta_.montarLlamadas(cifrada_->servidor(), "https");
        cifrada_->arrancar(opciones_.direccion, opciones_.puertoTls);
        puerta_.montarSoloContrato(llana_->servidor(), cifrada_->puerto());
    } else {
        puerta_.montarLlamadas(llana_->servidor(), "http");
    }
    llana_->arrancar(opciones_.direccion, opciones_.puerto);
    ronda_ = std::thread([this] { rondar(); });
}

void ServidorEmbebido::Interior::detener() {
    if (llana_) llana_->detener();
    if (cifrada_) cifrada_->detener();
    if (!ronda_.joinable()) return;
    {
        const std::lock_guard guardia(cerrojo_);
        fin_ = true;
        despertar_.notify_all();
    }
    ronda_.join();
}

// What was not a file's last piece reaches the disk here, so that the last one need not wait for all; and who
// holds a line without end loses it.
void ServidorEmbebido::Interior::rondar() {
    std::unique_lock guardia(cerrojo_);
    while (!fin_) {
        despertar_.wait_for(guardia, entreRondas, [this] { return fin_; });
        guardia.unlock();
        llana_->servidor().cortarLentas();
        if (cifrada_) cifrada_->servidor().cortarLentas();
        archivos_.sincronizarTodo();
        guardia.lock();
    }
}

ServidorEmbebido::ServidorEmbebido(OpcionesServicio opciones, platform::SistemaArchivos& archivos,
                                   const platform::Reloj& reloj, core::Registro& registro)
    : interior_(std::make_unique<Interior>(std::move(opciones), archivos, reloj, registro)) {}

ServidorEmbebido::~ServidorEmbebido() = default;

void ServidorEmbebido::arrancar() {
    interior_->arrancar();
}
void ServidorEmbebido::detener() {
    interior_->detener();
}
int ServidorEmbebido::puerto() const {
    return interior_->puerto();
}
int ServidorEmbebido::puertoTls() const {
    return interior_->puertoTls();
}
AlmacenUsuarios& ServidorEmbebido::usuarios() {
    return interior_->usuarios();
}

std::string ServidorEmbebido::url() const {
    return "http://127.0.0.1:" + std::to_string(puerto()) + "/qzback/service.asmx?wsdl";
}

}  // namespace tarvoline::server
