#include "ui/integracion.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTest>
#include <array>
#include <optional>
#include <utility>

namespace tarvoline::ui {
namespace {

constexpr auto avisos = "org.freedesktop.Notifications";
constexpr auto sesiones = "org.freedesktop.login1";
constexpr auto energia = "org.freedesktop.PowerManagement";

// A bus of its own with as many of the desktop's services on it as a case wants.
class Bus : public QDBusVirtualObject {
  public:
    explicit Bus(const QStringList& servicios) {
        demonio_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
        if (!demonio_.waitForReadyRead(10'000)) {
            throw std::runtime_error("no dbus-daemon: " + demonio_.errorString().toStdString());
        }
        direccion = QString::fromUtf8(demonio_.readLine()).trimmed();
        conexion_.emplace(QDBusConnection::connectToBus(direccion, "prueba"));
        conexion_->registerVirtualObject("/", this, QDBusConnection::SubPath);
        for (const auto& servicio : servicios) {
            conexion_->registerService(servicio);
        }
    }
    ~Bus() override {
        QDBusConnection::disconnectFromBus("prueba");
        demonio_.kill();
        demonio_.waitForFinished();
        ::close(cerrojo);
    }

    bool handleMessage(const QDBusMessage& orden, const QDBusConnection& bus) override {
        llamadas.push_back(orden.member());
        argumentos = orden.arguments();
        if (orden.interface() == QString(sesiones) + ".Manager") {
            std::array<int, 2> tubo{};
            EXPECT_EQ(::pipe(tubo.data()), 0);
            ::close(std::exchange(cerrojo, tubo[0]));
            bus.send(orden.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(tubo[1]))));
            ::close(tubo[1]);
        } else if (orden.member() == "Inhibit" && retrasar) {
            retrasada = orden;
        } else {
            bus.send(orden.createReply(77U));
        }
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    void responderRetrasada() { conexion_->send(retrasada->createReply(77U)); }
    bool ha(const QStringList& esperadas) {
        const bool vistas = QTest::qWaitFor([&] { return llamadas.size() >= esperadas.size(); }, 10'000);
        return vistas && llamadas == esperadas;
    }
    // The other end of the lock has been closed.
    bool cerrojoSuelto() {
        char byte = 0;
        return QTest::qWaitFor([&] { return ::read(cerrojo, &byte, 1) == 0; }, 10'000);
    }

    QString direccion;
    QStringList llamadas;
    QVariantList argumentos;
    bool retrasar = false;
    std::optional<QDBusMessage> retrasada;
    int cerrojo = -1;

  private:
    QProcess demonio_;
    std::optional<QDBusConnection> conexion_;
};

class IntegracionEscritorio : public ::testing::Test {
  protected:
    void empezar(Integracion& integracion, std::string nombre, bool subida = true) {
        vista.transferencia = {};
        vista.transferencia.activa = true;
        vista.transferencia.subida = subida;
        vista.transferencia.nombre = std::move(nombre);
        vista.transferencia.total = 100;
        integracion.alCambiar(core::Parte::transferencia);
    }
    void terminar(Integracion& integracion, double segundos, long long hecho = 100) {
        vista.transferencia.segundos = segundos;
        vista.transferencia.hecho = hecho;
        integracion.alCambiar(core::Parte::transferencia);  // the last piece
        vista.transferencia.activa = false;
        integracion.alCambiar(core::Parte::transferencia);
    }

    core::Vista vista;
    QWidget ventana;
    Palabras espanol{true};
};

TEST_F(IntegracionEscritorio, a_long_transfer_keeps_the_computer_awake_and_is_told_when_nobody_looks) {
    Bus bus({avisos, sesiones});
    Integracion integracion(vista, ventana, espanol, {bus.direccion, bus.direccion});
    empezar(integracion, "Núñez & <Hijos>.zip");
    ASSERT_TRUE(bus.ha({"Inhibit"}));
    EXPECT_EQ(bus.argumentos.value(0), "sleep");
    EXPECT_EQ(bus.argumentos.value(3), "block");
    terminar(integracion, Integracion::transferenciaLarga);
    ASSERT_TRUE(bus.ha({"Inhibit", "Notify"}));
    EXPECT_EQ(bus.argumentos.value(3), "Subida terminada");
    EXPECT_EQ(bus.argumentos.value(4), "Núñez &amp; &lt;Hijos&gt;.zip");
    EXPECT_TRUE(bus.cerrojoSuelto());

    empezar(integracion, "A.zip", false);
    terminar(integracion, 60, 99);
    ASSERT_TRUE(bus.ha({"Inhibit", "Notify", "Inhibit", "Notify"}));
    EXPECT_EQ(bus.argumentos.value(3), "Descarga sin terminar");
}

// Over one connection, so that the calls come in the order in which they were sent.
TEST_F(IntegracionEscritorio, a_short_transfer_or_one_that_was_watched_is_not_told) {
    Bus bus({avisos, energia});
    Integracion integracion(vista, ventana, espanol, {bus.direccion, {}});
    empezar(integracion, "corta");
    ASSERT_TRUE(bus.ha({"Inhibit"}));
    terminar(integracion, Integracion::transferenciaLarga - 1);
    ASSERT_TRUE(bus.ha({"Inhibit", "UnInhibit"}));
    ventana.show();
    ventana.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    empezar(integracion, "a la vista");
    ASSERT_TRUE(bus.ha({"Inhibit", "UnInhibit", "Inhibit"}));
    terminar(integracion, 60);
    ASSERT_TRUE(bus.ha({"Inhibit", "UnInhibit", "Inhibit", "UnInhibit"}));
    empezar(integracion, "la última");
    EXPECT_TRUE(bus.ha({"Inhibit", "UnInhibit", "Inhibit", "UnInhibit", "Inhibit"}));
}

TEST_F(IntegracionEscritorio, without_a_login_manager_the_power_manager_is_asked_and_gets_its_number_back) {
    Bus bus({energia});
    Integracion integracion(vista, ventana, espanol, {bus.direccion, {}});
    empezar(integracion, "A.zip");
    ASSERT_TRUE(bus.ha({"Inhibit"}));
    bus.retrasar = true;
    terminar(integracion, 1);
    ASSERT_TRUE(bus.ha({"Inhibit", "UnInhibit"}));
    EXPECT_EQ(bus.argumentos, QVariantList{77U});

    // The answer comes when the transfer has ended already.
    empezar(integracion, "B.zip");
    ASSERT_TRUE(QTest::qWaitFor([&] { return bus.retrasada.has_value(); }, 10'000));
    terminar(integracion, 1);
    bus.responderRetrasada();
    EXPECT_TRUE(bus.ha({"Inhibit", "UnInhibit", "Inhibit", "UnInhibit"}));
}

TEST_F(IntegracionEscritorio, neither_a_missing_bus_nor_missing_services_are_noticed) {
    Bus vacio({});
    for (const auto& direcciones : {DireccionesBus{}, DireccionesBus{vacio.direccion, vacio.direccion},
                                    DireccionesBus{"unix:path=/no/such/bus", "nonsense"}}) {
        Integracion integracion(vista, ventana, espanol, direcciones);
        empezar(integracion, "A.zip");
        QTest::qWait(20);  // let the refusals come
        terminar(integracion, 60);
        EXPECT_TRUE(vacio.llamadas.isEmpty());
    }
}

}  // namespace
}  // namespace tarvoline::ui
