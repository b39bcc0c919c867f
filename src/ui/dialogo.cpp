#include "ui/dialogo.h"

#include <QFontMetrics>
#include <QPushButton>
#include <algorithm>

namespace tarvoline::ui {

QString enLineas(QString texto) {
    return texto.replace("\r\n", "\n").replace('\r', '\n');
}

QString sinMarca(QString texto) {
    return texto.replace('&', "&&");
}

QDialogButtonBox* crearAceptarCancelar(QDialog& dialogo, const Palabras& palabras) {
    auto* botones = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialogo);
    auto* aceptar = botones->button(QDialogButtonBox::Ok);
    auto* cancelar = botones->button(QDialogButtonBox::Cancel);
    aceptar->setText(palabras("&Aceptar", "&OK"));
    aceptar->setObjectName("aceptar");
    aceptar->setDefault(true);
    cancelar->setText(palabras("&Cancelar", "&Cancel"));
    cancelar->setObjectName("cancelar");
    describir(*aceptar, palabras("Aceptar", "OK"),
              palabras("Da por bueno lo escrito", "Takes what was entered"));
    describir(*cancelar, palabras("Cancelar", "Cancel"),
              palabras("Cierra sin cambiar nada", "Closes and changes nothing"));
    QObject::connect(botones, &QDialogButtonBox::accepted, &dialogo, &QDialog::accept);
    QObject::connect(botones, &QDialogButtonBox::rejected, &dialogo, &QDialog::reject);
    return botones;
}

void describir(QWidget& control, const QString& nombre, const QString& descripcion) {
    control.setAccessibleName(nombre);
    control.setAccessibleDescription(descripcion.isEmpty() ? nombre : descripcion);
}

QLineEdit* crearLinea(const QString& valor, int longitud, bool oculto, QWidget* padre) {
    constexpr int anchoLegible = 36;  // characters
    constexpr int anchoMenor = 8;
    auto* linea = new QLineEdit(padre);
    if (longitud > 0) {
        linea->setMaxLength(longitud);
    }
    linea->setEchoMode(oculto ? QLineEdit::Password : QLineEdit::Normal);
    linea->setText(valor);
    const int caracteres = std::clamp(longitud > 0 ? longitud : anchoLegible, anchoMenor, anchoLegible);
    linea->setMinimumWidth(linea->fontMetrics().averageCharWidth() * caracteres);
    return linea;
}

int DialogoSeguro::exec() {
    const int resultado = QDialog::exec();
    if (fin_) {
        throw core::FinDePrograma(*fin_);
    }
    return resultado;
}

bool DialogoSeguro::ejecutar(const std::function<void()>& paso) {
    try {
        paso();
        return true;
    } catch (const core::FinDePrograma& fin) {
        fin_ = fin;
        done(QDialog::Rejected);
    } catch (const std::exception& error) {
        entorno_.registro.error(error.what());
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, "Tarvoline"});
    }
    return false;
}

}  // namespace tarvoline::ui
