#include "ui/dialogo_datos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/dialogo.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

std::string marca(bool puesta) {
    return puesta ? "1" : "0";
}

}  // namespace

DialogoDatos::DialogoDatos(const core::EntradaDatos& datos, const Palabras& palabras, QWidget* padre)
    : QDialog(padre), palabras_(palabras), campos_(new QFormLayout), opciones_(new QButtonGroup(this)) {
    setObjectName("EntradaDatos");
    setWindowTitle(aQt(datos.titulo));
    campos_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* columna = new QVBoxLayout(this);
    columna->setSizeConstraint(QLayout::SetMinimumSize);
    columna->addLayout(campos_);
    columna->addStretch();
    for (const auto& campo : datos.campos) {
        poner(campo, datos.opcion);
    }
    columna->addWidget(crearAceptarCancelar(*this, palabras));
    if (auto* primero = findChild<QWidget*>("campo1")) {
        primero->setFocus(Qt::TabFocusReason);  // its default is chosen: typing replaces it
    }
}

void DialogoDatos::recoger(core::EntradaDatos& datos) const {
    for (std::size_t i = 0; i < std::min(lectores_.size(), datos.campos.size()); ++i) {
        datos.campos[i].valor = lectores_[i]();
    }
    datos.opcion = std::max(0, opciones_->checkedId());
}

void DialogoDatos::poner(const core::CampoDatos& campo, int opcionElegida) {
    const auto etiqueta = enLineas(aQt(campo.etiqueta));
    switch (campo.tipo) {
        case core::TipoCampo::texto:
        case core::TipoCampo::oculto:
            return ponerLinea(campo, etiqueta);
        case core::TipoCampo::eleccion:
            return ponerEleccion(campo, etiqueta);
        case core::TipoCampo::casilla:
            return ponerCasilla(campo, etiqueta);
        case core::TipoCampo::opcion:
            return ponerOpcion(etiqueta, opcionElegida);
    }
}

void DialogoDatos::ponerLinea(const core::CampoDatos& campo, const QString& etiqueta) {
    const bool oculto = campo.tipo == core::TipoCampo::oculto;
    auto* linea = crearLinea(aQt(campo.valor), campo.longitud, oculto, this);
    ponerFila(etiqueta, *linea);
    if (oculto) {
        linea->setAccessibleDescription(
            palabras_("Lo que se escribe no se ve", "What is typed is not shown"));
    }
    lectores_.emplace_back([linea] { return deQt(linea->text()); });
}

// The answer is one of the choices as it was given, byte for byte.
void DialogoDatos::ponerEleccion(const core::CampoDatos& campo, const QString& etiqueta) {
    auto* lista = new QComboBox(this);
    for (const auto& eleccion : campo.elecciones) {
        lista->addItem(aQt(eleccion));
    }
    const auto elegida = std::find(campo.elecciones.begin(), campo.elecciones.end(), campo.valor);
    lista->setCurrentIndex(elegida == campo.elecciones.end()
                               ? std::min(0, lista->count() - 1)
                               : static_cast<int>(elegida - campo.elecciones.begin()));
    ponerFila(etiqueta, *lista);
    lectores_.emplace_back([lista, elecciones = campo.elecciones] {
        const int lugar = lista->currentIndex();
        return lugar < 0 ? std::string() : elecciones[static_cast<std::size_t>(lugar)];
    });
}

void DialogoDatos::ponerCasilla(const core::CampoDatos& campo, const QString& etiqueta) {
    auto* casilla = new QCheckBox(sinMarca(etiqueta), this);
    casilla->setChecked(campo.valor == "1");
    describir(*casilla, etiqueta);
    ponerFila({}, *casilla);
    lectores_.emplace_back([casilla] { return marca(casilla->isChecked()); });
}

void DialogoDatos::ponerOpcion(const QString& etiqueta, int opcionElegida) {
    auto* opcion = new QRadioButton(sinMarca(etiqueta), this);
    const int numero = static_cast<int>(opciones_->buttons().size());
    opciones_->addButton(opcion, numero);
    opcion->setChecked(numero == opcionElegida);
    describir(*opcion, etiqueta);
    ponerFila({}, *opcion);
    lectores_.emplace_back([opcion] { return marca(opcion->isChecked()); });
}

// A control without a label of its own takes the whole row.
void DialogoDatos::ponerFila(const QString& etiqueta, QWidget& control) {
    control.setObjectName(QString("campo%1").arg(lectores_.size() + 1));
    if (etiqueta.isEmpty()) {
        campos_->addRow(&control);
        return;
    }
    auto* texto = new QLabel(sinMarca(etiqueta), this);
    texto->setBuddy(&control);
    describir(*texto, etiqueta);
    describir(control, etiqueta);
    campos_->addRow(texto, &control);
}

}  // namespace tarvoline::ui
