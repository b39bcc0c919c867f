#include "ui/frmconfig.h"

#include <QKeyEvent>
#include <QToolButton>
#include <algorithm>

#include "core/idioma.h"
#include "ui/iconos.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr int botonNuevaCarpeta = 0;

}  // namespace

frmconfig::frmconfig(workflows::FormularioConfiguracion& formulario, core::Entorno& entorno, QWidget* padre)
    : DialogoSeguro(entorno, padre),
      formulario_(formulario),
      palabras_(core::idiomaEspanol(entorno)),
      lbemrpesa_(new QLabel(this)),
      TarvolineActivar_(new QCheckBox(this)),
      TarvolineUser_(crearLinea(aQt(formulario.TarvolineUser), 0, false, this)),
      TarvolinePassword_(crearLinea(aQt(formulario.TarvolinePassword), 0, true, this)),
      TarvolineCarpeta_(crearLinea(aQt(formulario.TarvolineCarpeta), 0, false, this)),
      TarvolineMinutos_(new QComboBox(this)),
      INCLUYEIMAGENES_(new QCheckBox(this)),
      datosen_(new QComboBox(this)),
      List1_(new QListWidget(this)),
      Toolbar1_(new QToolBar(this)),
      Command1_(new QPushButton(this)) {
    setObjectName("frmconfig");
    setWindowTitle(palabras_("Configuracion Tarvoline", "Tarvoline settings"));
    auto* columna = new QVBoxLayout(this);
    crearEmpresa(*columna);
    crearPrograma(*columna);
    crearBotones(*columna);
    conectar();
    ordenarFocos();
    TarvolineUser_->setFocus(Qt::OtherFocusReason);
}

QString frmconfig::texto(int numero) const {
    return aQt(entorno_.texto(numero));
}

void frmconfig::mostrarClave(bool visible) {
    TarvolinePassword_->setEchoMode(visible ? QLineEdit::Normal : QLineEdit::Password);
    Command3_->setIcon(icono(visible ? "ojo-tachado" : "ojo"));
    const auto nombre = visible ? palabras_("Ocultar la clave", "Hide the password")
                                : palabras_("Mostrar la clave", "Show the password");
    Command3_->setText(nombre);
    Command3_->setToolTip(nombre);
    for (auto* boton : TarvolinePassword_->findChildren<QToolButton*>()) {
        describir(*boton, nombre);
    }
}

// A key that was swallowed changes nothing.
void frmconfig::unirLinea(QLineEdit& linea, std::string& valor) {
    connect(&linea, &QLineEdit::textChanged, this, [this, &valor](const QString& escrito) {
        if (auto nuevo = deQt(escrito); nuevo != valor) {
            valor = std::move(nuevo);
            formulario_.modificar();
        }
    });
}

void frmconfig::conectar() {
    unirLinea(*TarvolineUser_, formulario_.TarvolineUser);
    unirLinea(*TarvolinePassword_, formulario_.TarvolinePassword);
    unirLinea(*TarvolineCarpeta_, formulario_.TarvolineCarpeta);
    connect(TarvolineMinutos_, &QComboBox::currentIndexChanged, this, [this](int indice) {
        formulario_.TarvolineMinutos = indice;
        formulario_.modificar();
    });
    connect(TarvolineActivar_, &QCheckBox::toggled, this,
            [this](bool marcada) { formulario_.TarvolineActivar = marcada; });
    connect(datosen_, &QComboBox::currentIndexChanged, this,
            [this](int indice) { formulario_.datosen = indice; });
    connect(INCLUYEIMAGENES_, &QCheckBox::clicked, this,
            [this](bool marcada) { ejecutar([&] { formulario_.INCLUYEIMAGENES_Click(marcada); }); });
    connect(Command1_, &QPushButton::clicked, this,
            [this] { ejecutar([&] { formulario_.TarvolineActivarCopiasTodas(); }); });
    connect(List1_, &QListWidget::currentRowChanged, this,
            [this](int elegida) { carpetas_[1]->setEnabled(elegida >= 0); });
}

bool frmconfig::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) {
        return DialogoSeguro::eventFilter(objeto, evento);
    }
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (tecla != Qt::Key_Return && tecla != Qt::Key_Enter) {
        return DialogoSeguro::eventFilter(objeto, evento);
    }
    QWidget* siguiente = objeto == TarvolineUser_       ? static_cast<QWidget*>(TarvolinePassword_)
                         : objeto == TarvolinePassword_ ? static_cast<QWidget*>(TarvolineCarpeta_)
                                                        : Command2_[0];
    siguiente->setFocus(Qt::TabFocusReason);
    return true;
}

void frmconfig::pintarList1() {
    List1_->clear();
    for (const auto& carpeta : formulario_.List1) {
        List1_->addItem(aQt(carpeta));
        List1_->item(List1_->count() - 1)->setToolTip(aQt(carpeta));
    }
    carpetas_[1]->setEnabled(false);  // until an entry is chosen
}

void frmconfig::pulsarToolbar1(int numero) {
    const int elegida = List1_->currentRow();
    ejecutar([&] { formulario_.Toolbar1_ButtonClick(numero, elegida); });
    pintarList1();
    List1_->setCurrentRow(numero == botonNuevaCarpeta ? List1_->count() - 1
                                                      : std::min(elegida, List1_->count() - 1));
}

// A failed save leaves the window open with everything in it; leaving always leaves.
void frmconfig::salir(bool grabar) {
    if (saliendo_) {
        return;  // the way out gives the window a turn
    }
    saliendo_ = true;
    const bool fuera = ejecutar([&] { formulario_.Salir(grabar); }) || !grabar;
    saliendo_ = false;
    if (fuera) {
        done(grabar ? QDialog::Accepted : QDialog::Rejected);
    }
}

void frmconfig::reject() {
    salir(false);
}

}  // namespace tarvoline::ui
