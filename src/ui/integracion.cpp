#include "ui/integracion.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QFileInfo>
#include <QUuid>

#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr auto nombreAplicacion = "tarvoline";

QString direccion(const char* variable, const QString& enchufe) {
    if (const auto puesta = qEnvironmentVariable(variable); !puesta.isEmpty()) {
        return puesta;
    }
    return QFileInfo::exists(enchufe) ? "unix:path=" + enchufe : QString();
}

}  // namespace

DireccionesBus DireccionesBus::delEntorno() {
    const auto carpeta = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return {carpeta.isEmpty() ? qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")
                              : direccion("DBUS_SESSION_BUS_ADDRESS", carpeta + "/bus"),
            direccion("DBUS_SYSTEM_BUS_ADDRESS", "/run/dbus/system_bus_socket")};
}

// The two connections, under names of their own: they end with this object and share nothing with the
// toolkit.
class Integracion::Buses {
  public:
    explicit Buses(DireccionesBus direcciones) : direcciones_(std::move(direcciones)) {}
    ~Buses() {
        QDBusConnection::disconnectFromBus(sesion_);
        QDBusConnection::disconnectFromBus(sistema_);
    }
    Buses(const Buses&) = delete;
    Buses& operator=(const Buses&) = delete;

    QDBusConnection sesion() { return unir(direcciones_.sesion, sesion_); }
    QDBusConnection sistema() { return unir(direcciones_.sistema, sistema_); }

  private:
    // A name that nobody connected stands for no bus: calls on it are dropped.
    static QDBusConnection unir(QString& direccion, const QString& nombre) {
        if (direccion.isEmpty()) {
            return QDBusConnection(nombre);
        }
        return QDBusConnection::connectToBus(std::exchange(direccion, {}), nombre);
    }

    DireccionesBus direcciones_;  // emptied as they are joined
    const QString sesion_ = "tarvoline-" + QUuid::createUuid().toString(QUuid::Id128);
    const QString sistema_ = "tarvoline-" + QUuid::createUuid().toString(QUuid::Id128);
};

// Keeps the computer awake from its making to its end. The login manager holds the lock as long as its
// descriptor is open; where there is none, the power manager of the desktop gives a number to hand back.
class Integracion::Vigilia {
  public:
    Vigilia(Buses& buses, const QString& motivo) : asa_(std::make_shared<Asa>(buses.sesion())) {
        const auto sistema = buses.sistema();
        if (!sistema.isConnected()) {
            pedirAlEscritorio(asa_, motivo);  // a call on no connection is never answered
            return;
        }
        auto orden = QDBusMessage::createMethodCall("org.freedesktop.login1", "/org/freedesktop/login1",
                                                    "org.freedesktop.login1.Manager", "Inhibit");
        orden << "sleep" << nombreAplicacion << motivo << "block";
        alResponder(sistema.asyncCall(orden), [asa = asa_, motivo](const QDBusMessage& respuesta) {
            if (!asa->enVigor) {
                return;  // the descriptor closes with the answer
            }
            if (respuesta.type() == QDBusMessage::ReplyMessage) {
                asa->cerrojo = respuesta.arguments().value(0).value<QDBusUnixFileDescriptor>();
            } else {
                pedirAlEscritorio(asa, motivo);
            }
        });
    }
    ~Vigilia() { asa_->soltar(); }
    Vigilia(const Vigilia&) = delete;
    Vigilia& operator=(const Vigilia&) = delete;

  private:
    // Shared with the answers under way, which may come after the end.
    struct Asa {
        explicit Asa(QDBusConnection bus) : sesion(std::move(bus)) {}
        void soltar() {
            enVigor = false;
            cerrojo = {};
            if (numero != 0) {
                sesion.asyncCall(delEscritorio("UnInhibit") << std::exchange(numero, 0));
            }
        }
        QDBusConnection sesion;
        QDBusUnixFileDescriptor cerrojo;
        uint numero = 0;
        bool enVigor = true;
    };

    static QDBusMessage delEscritorio(const char* metodo) {
        return QDBusMessage::createMethodCall("org.freedesktop.PowerManagement",
                                              "/org/freedesktop/PowerManagement/Inhibit",
                                              "org.freedesktop.PowerManagement.Inhibit", metodo);
    }

    template <typename Hacer>
    static void alResponder(const QDBusPendingCall& llamada, Hacer hacer) {
        auto* espera = new QDBusPendingCallWatcher(llamada, QCoreApplication::instance());
        QObject::connect(espera, &QDBusPendingCallWatcher::finished, espera, [espera, hacer] {
            hacer(espera->reply());
            espera->deleteLater();
        });
    }

    static void pedirAlEscritorio(const std::shared_ptr<Asa>& asa, const QString& motivo) {
        alResponder(asa->sesion.asyncCall(delEscritorio("Inhibit") << nombreAplicacion << motivo),
                    [asa](const QDBusMessage& respuesta) {
                        asa->numero = respuesta.arguments().value(0).toUInt();
                        if (!asa->enVigor) {
                            asa->soltar();
                        }
                    });
    }

    std::shared_ptr<Asa> asa_;
};

Integracion::Integracion(const core::Vista& vista, QWidget& ventana, const Palabras& palabras,
                         DireccionesBus direcciones)
    : vista_(vista),
      ventana_(ventana),
      palabras_(palabras),
      buses_(std::make_unique<Buses>(std::move(direcciones))) {}

Integracion::~Integracion() = default;

void Integracion::alCambiar(core::Parte parte) {
    if (parte != core::Parte::transferencia || vista_.transferencia.activa == (vigilia_ != nullptr)) {
        return;
    }
    if (vista_.transferencia.activa) {
        empezada();
    } else {
        terminada();
    }
}

void Integracion::empezada() {
    vigilia_ =
        std::make_unique<Vigilia>(*buses_, palabras_("Copia de seguridad en curso", "A backup is under way"));
}

void Integracion::terminada() {
    vigilia_.reset();
    const auto& hecha = vista_.transferencia;
    if (hecha.segundos < transferenciaLarga || QGuiApplication::focusWindow() != nullptr) {
        return;
    }
    QApplication::alert(&ventana_);
    const bool entera = hecha.hecho >= hecha.total;
    const auto titulo = hecha.subida ? (entera ? palabras_("Subida terminada", "Upload finished")
                                               : palabras_("Subida sin terminar", "Upload not finished"))
                                     : (entera ? palabras_("Descarga terminada", "Download finished")
                                               : palabras_("Descarga sin terminar", "Download not finished"));
    auto orden =
        QDBusMessage::createMethodCall("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                       "org.freedesktop.Notifications", "Notify");
    constexpr uint otraNueva = 0;
    constexpr int loQueElEscritorioQuiera = -1;
    // The body is markup on most desktops.
    orden << "Tarvoline" << otraNueva << nombreAplicacion << titulo << aQt(hecha.nombre).toHtmlEscaped()
          << QStringList() << QVariantMap{{"desktop-entry", nombreAplicacion}} << loQueElEscritorioQuiera;
    buses_->sesion().asyncCall(orden);
}

}  // namespace tarvoline::ui
