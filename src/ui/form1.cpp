#include "ui/form1.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "core/idioma.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr int textoAcepto = 2151;
constexpr int textoSalir = 2129;
constexpr int textoTitulo = 2146;

// The keys that only move through the text, choose in it or copy what is chosen, and those of the dialog.
bool dejaElTexto(const QKeyEvent& tecla) {
    switch (tecla.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
            return true;
        default:
            return tecla.matches(QKeySequence::Copy) || tecla.matches(QKeySequence::SelectAll) ||
                   tecla.modifiers().testFlag(Qt::AltModifier);
    }
}

}  // namespace

Form1::Form1(workflows::Terminos& terminos, core::Entorno& entorno, QWidget* padre)
    : DialogoSeguro(entorno, padre), flujo_(terminos), terminos_(new QPlainTextEdit(this)) {
    const Palabras palabras(core::idiomaEspanol(entorno));
    setObjectName("Form1");
    setWindowTitle(aQt(entorno.texto(textoTitulo)));
    terminos_->setObjectName("terminos");
    terminos_->setPlainText(aQt(terminos.leer()));
    terminos_->setTabChangesFocus(true);
    terminos_->setUndoRedoEnabled(false);
    terminos_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    terminos_->installEventFilter(this);
    describir(*terminos_, windowTitle(), palabras("Texto para leer", "A text to be read"));

    auto* fila = new QHBoxLayout;
    fila->addStretch();
    for (int i = 0; i < 2; ++i) {
        auto* boton = new QPushButton(aQt(entorno.texto(i == 0 ? textoAcepto : textoSalir)), this);
        boton->setObjectName(QString("Command1(%1)").arg(i));
        boton->setAutoDefault(false);  // the answer is given on purpose, by no stray Enter
        connect(boton, &QPushButton::clicked, this, [this, i] { responder(i); });
        fila->addWidget(boton);
        Command1_.at(static_cast<std::size_t>(i)) = boton;
    }
    describir(*Command1_[0], Command1_[0]->text(), palabras("Acepta y sigue", "Accepts and goes on"));
    describir(*Command1_[1], Command1_[1]->text(),
              palabras("Sale sin aceptar: el programa queda sin uso",
                       "Leaves without accepting: the program stays unused"));
    auto* columna = new QVBoxLayout(this);
    columna->addWidget(terminos_, 1);
    columna->addLayout(fila);

    const auto pantalla = screen()->availableSize() * 0.85;
    resize(std::min(fontMetrics().averageCharWidth() * 95, pantalla.width()),
           std::min(fontMetrics().lineSpacing() * 34, pantalla.height()));
}

bool Form1::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == terminos_ && evento->type() == QEvent::KeyPress) {
        return !dejaElTexto(*static_cast<QKeyEvent*>(evento));
    }
    return DialogoSeguro::eventFilter(objeto, evento);
}

void Form1::responder(int indice) {
    if (ejecutar([&] { flujo_.Command1_Click(indice); })) {
        accept();
    }
}

}  // namespace tarvoline::ui
