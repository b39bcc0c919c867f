#include "ui/buscador.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

#include "ui/texto_qt.h"
#include "workflows/lista.h"

namespace tarvoline::ui {

namespace {

// Letters without their accents, in one case.
QString llano(const QString& texto) {
    auto partido = texto.normalized(QString::NormalizationForm_KD);
    partido.erase(std::remove_if(partido.begin(), partido.end(), [](QChar c) { return c.isMark(); }),
                  partido.end());
    return partido.toCaseFolded();
}

}  // namespace

Buscador::Buscador(const core::Rejilla& filas, Rejilla& rejilla, const Palabras& palabras, QWidget* padre)
    : QWidget(padre),
      filas_(filas),
      rejilla_(rejilla),
      palabras_(palabras),
      texto_(new QLineEdit(this)),
      resultado_(new QLabel(this)) {
    texto_->setObjectName("textoBuscado");
    texto_->setPlaceholderText(palabras_("Buscar en la lista", "Find in the list"));
    texto_->setAccessibleName(texto_->placeholderText());
    texto_->setAccessibleDescription(palabras_("Intro busca hacia abajo, Mayúsculas+Intro hacia arriba",
                                               "Enter searches downwards, Shift+Enter upwards"));
    texto_->setClearButtonEnabled(true);
    resultado_->setObjectName("resultadoBusqueda");
    auto* cierre = new QToolButton(this);
    cierre->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    cierre->setAutoRaise(true);
    cierre->setToolTip(palabras_("Cerrar la búsqueda", "Close the search"));
    cierre->setAccessibleName(cierre->toolTip());
    connect(cierre, &QToolButton::clicked, this, &Buscador::cerrar);
    auto* fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(texto_, 1);
    fila->addWidget(resultado_);
    fila->addWidget(cierre);
    hide();
}

void Buscador::abrir() {
    show();
    texto_->selectAll();
    texto_->setFocus(Qt::ShortcutFocusReason);
}

void Buscador::cerrar() {
    hide();
    rejilla_.setFocus(Qt::OtherFocusReason);
}

bool Buscador::coincide(int fila, const QString& buscado) const {
    using namespace workflows::columna_rejilla;
    const auto contiene = [&](int columna) {
        return llano(aQt(filas_.celda(fila, columna))).contains(buscado);
    };
    return contiene(descripcion) || contiene(fecha) || contiene(tamano);
}

void Buscador::buscar(int paso) {
    const auto buscado = llano(texto_->text());
    const int cuantas = filas_.filas() - 1;
    if (buscado.isEmpty() || cuantas < 1) {
        abrir();
        return;
    }
    const int desde = filas_.RowSel > 0 ? filas_.RowSel - 1 : (paso > 0 ? -1 : 0);
    for (int i = 1; i <= cuantas; ++i) {
        const int fila = (desde + paso * i + 2 * cuantas) % cuantas + 1;
        if (coincide(fila, buscado)) {
            resultado_->clear();
            rejilla_.elegirFila(fila);
            return;
        }
    }
    resultado_->setText(palabras_("No está en la lista", "Not in the list"));
}

void Buscador::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            buscar(evento->modifiers() & Qt::ShiftModifier ? -1 : 1);
            break;
        case Qt::Key_Escape:
            cerrar();
            break;
        default:
            QWidget::keyPressEvent(evento);
    }
}

}  // namespace tarvoline::ui
