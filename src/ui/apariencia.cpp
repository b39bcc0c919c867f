#include "ui/apariencia.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QLibraryInfo>
#include <QPalette>
#include <QScopeGuard>
#include <QTranslator>
#include <memory>

#include "ui/estilo.h"
#include "ui/iconos.h"
#include "ui/integracion.h"

namespace tarvoline::ui {

namespace {

constexpr int esperaEscritorio = 300;  // ms: a desktop that does not answer costs no more than this
constexpr auto nombreConexion = "tarvoline-apariencia";
constexpr uint prefiereOscuro = 1;  // "color-scheme" of the freedesktop settings portal

bool escritorioPrefiereOscuro() {
    const auto direccion = DireccionesBus::delEntorno().sesion;
    if (direccion.isEmpty()) {
        return false;
    }
    auto bus = QDBusConnection::connectToBus(direccion, nombreConexion);
    const auto soltar = qScopeGuard([] { QDBusConnection::disconnectFromBus(nombreConexion); });
    auto pregunta =
        QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                       "org.freedesktop.portal.Settings", "Read");
    pregunta << "org.freedesktop.appearance"
             << "color-scheme";
    const auto respuesta = bus.call(pregunta, QDBus::Block, esperaEscritorio);
    if (respuesta.type() != QDBusMessage::ReplyMessage || respuesta.arguments().isEmpty()) {
        return false;
    }
    auto valor = respuesta.arguments().constFirst();
    while (valor.canConvert<QDBusVariant>()) {
        valor = valor.value<QDBusVariant>().variant();
    }
    return valor.toUInt() == prefiereOscuro;
}

bool quiereOscuro() {
    const auto tema = qEnvironmentVariable("TARVOLINE_TEMA");
    return tema.isEmpty() ? escritorioPrefiereOscuro() : tema == "oscuro";
}

QPalette paletaOscura() {
    const QColor fondo(45, 47, 51);
    const QColor base(32, 34, 37);
    const QColor texto(228, 230, 234);
    const QColor apagado(138, 142, 150);
    QPalette paleta(texto, QColor(58, 61, 66), QColor(90, 94, 101), QColor(24, 25, 28), QColor(41, 43, 47),
                    texto, QColor(255, 255, 255), base, fondo);
    paleta.setColor(QPalette::AlternateBase, QColor(38, 40, 44));
    paleta.setColor(QPalette::ToolTipBase, QColor(58, 61, 66));
    paleta.setColor(QPalette::ToolTipText, texto);
    paleta.setColor(QPalette::PlaceholderText, apagado);
    paleta.setColor(QPalette::Highlight, QColor(45, 110, 190));
    paleta.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
    paleta.setColor(QPalette::Link, QColor(110, 175, 245));
    paleta.setColor(QPalette::LinkVisited, QColor(180, 160, 240));
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        paleta.setColor(QPalette::Disabled, papel, apagado);
    }
    paleta.setColor(QPalette::Disabled, QPalette::Highlight, QColor(70, 74, 80));
    return paleta;
}

}  // namespace

void vestir(QApplication& aplicacion) {
    cargarIconos();
    // The application owns it.
    QApplication::setStyle(
        std::make_unique<Estilo>().release());  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
    QApplication::setWindowIcon(iconoPrograma());
    const bool yaOscura = aplicacion.palette().color(QPalette::Window).lightness() < 128;
    if (!yaOscura && quiereOscuro()) {
        QApplication::setPalette(paletaOscura());
    }
}

void hablarEspanol(QApplication& aplicacion) {
    auto* palabras = new QTranslator(&aplicacion);
    if (palabras->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(palabras);
    }
}

}  // namespace tarvoline::ui
