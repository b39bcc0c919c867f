#include "ui/dialogo_clave.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/dialogo.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

DialogoClave::DialogoClave(const core::Peticion& peticion, const Palabras& palabras, QWidget* padre)
    : QDialog(padre), linea_(crearLinea({}, peticion.longitud, peticion.oculto, this)) {
    setObjectName("Pedir");
    setWindowTitle(aQt(peticion.titulo));
    linea_->setObjectName("respuesta");
    const auto texto = enLineas(aQt(peticion.texto));
    auto* etiqueta = new QLabel(sinMarca(texto), this);
    etiqueta->setTextFormat(Qt::PlainText);
    etiqueta->setBuddy(linea_);
    describir(*etiqueta, texto);
    describir(*linea_, texto,
              peticion.oculto ? palabras("Lo que se escribe no se ve", "What is typed is not shown") : texto);

    auto* columna = new QVBoxLayout(this);
    columna->setSizeConstraint(QLayout::SetMinimumSize);
    columna->addWidget(etiqueta);
    columna->addWidget(linea_);
    columna->addStretch();
    columna->addWidget(crearAceptarCancelar(*this, palabras));
    linea_->setFocus(Qt::OtherFocusReason);
}

std::string DialogoClave::respuesta() const {
    return deQt(linea_->text());
}

}  // namespace tarvoline::ui
