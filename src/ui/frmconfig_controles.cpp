// How the configuration window is laid out.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <QValidator>

#include "ui/frmconfig.h"
#include "ui/iconos.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr int botonNuevaCarpeta = 0;
constexpr int botonBorrarCarpeta = 78;

// A folder's name is a single level: separators vanish, typed or pasted.
class SinSeparadores : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& texto, int& lugar) const override {
        for (auto i = texto.size() - 1; i >= 0; --i) {
            if (texto[i] == '/' || texto[i] == '\\') {
                texto.remove(i, 1);
                lugar -= i < lugar ? 1 : 0;
            }
        }
        return Acceptable;
    }
};

}  // namespace

QLabel* frmconfig::crearLabel1(int indice, const QString& texto, QWidget* companero) {
    auto* etiqueta = new QLabel(texto, this);
    etiqueta->setObjectName(QString("Label1(%1)").arg(indice));
    etiqueta->setBuddy(companero);
    describir(*etiqueta, texto);
    return etiqueta;
}

// What is stored in the company, under its name.
void frmconfig::crearEmpresa(QVBoxLayout& columna) {
    auto letra = lbemrpesa_->font();
    letra.setBold(true);
    lbemrpesa_->setFont(letra);
    lbemrpesa_->setObjectName("lbemrpesa");
    lbemrpesa_->setTextFormat(Qt::PlainText);
    lbemrpesa_->setText(aQt(formulario_.lbemrpesa));
    describir(*lbemrpesa_, lbemrpesa_->text(), palabras_("Empresa activa", "Active company"));
    TarvolineActivar_->setObjectName("TarvolineActivar");
    TarvolineActivar_->setText(texto(1356));
    TarvolineActivar_->setChecked(formulario_.TarvolineActivar);
    describir(*TarvolineActivar_, texto(1356));
    columna.addWidget(lbemrpesa_);
    columna.addWidget(TarvolineActivar_);
    crearAcceso(columna);
    crearCarpetas(columna);
    Command1_->setObjectName("Command1");
    Command1_->setText(texto(1357));
    Command1_->setAutoDefault(false);
    describir(*Command1_, texto(1357));
    columna.addWidget(Command1_);
}

void frmconfig::crearAcceso(QVBoxLayout& columna) {
    auto* campos = new QFormLayout;
    campos->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto fila = [&](int indice, const QString& etiqueta, QLineEdit& linea, const char* nombre) {
        linea.setObjectName(nombre);
        linea.installEventFilter(this);
        describir(linea, etiqueta.trimmed().remove(':'));
        campos->addRow(crearLabel1(indice, etiqueta, &linea), &linea);
    };
    fila(18, texto(1353), *TarvolineUser_, "TarvolineUser");
    fila(19, texto(310) + ": ", *TarvolinePassword_, "TarvolinePassword");
    fila(20, texto(1354), *TarvolineCarpeta_, "TarvolineCarpeta");
    TarvolineCarpeta_->setValidator(new SinSeparadores(this));
    TarvolineCarpeta_->setAccessibleDescription(palabras_(
        "Nombre de una carpeta del servicio, de un solo nivel", "Name of a service folder, one level"));
    crearClave();
    crearMinutos(*campos);
    columna.addLayout(campos);
}

void frmconfig::crearMinutos(QFormLayout& campos) {
    TarvolineMinutos_->setObjectName("TarvolineMinutos");
    for (const auto& entrada : formulario_.minutos) {
        TarvolineMinutos_->addItem(aQt(entrada));
    }
    TarvolineMinutos_->setCurrentIndex(formulario_.TarvolineMinutos);
    describir(*TarvolineMinutos_, texto(1032), texto(2255) + ' ' + texto(2256));
    auto* fila = new QHBoxLayout;
    auto* notas = new QVBoxLayout;
    notas->setSpacing(0);
    for (auto* nota : {crearLabel1(16, texto(2255), nullptr), crearLabel1(2, texto(2256), nullptr)}) {
        notas->addWidget(nota);
    }
    fila->addWidget(TarvolineMinutos_);
    fila->addLayout(notas, 1);
    campos.addRow(crearLabel1(17, texto(1032), TarvolineMinutos_), fila);
}

// The eye at the end of the password's line.
void frmconfig::crearClave() {
    Command3_ = TarvolinePassword_->addAction(icono("ojo"), QLineEdit::TrailingPosition);
    Command3_->setObjectName("Command3");
    Command3_->setCheckable(true);
    connect(Command3_, &QAction::toggled, this, &frmconfig::mostrarClave);
    for (auto* boton : TarvolinePassword_->findChildren<QToolButton*>()) {
        boton->setFocusPolicy(Qt::TabFocus);
    }
    mostrarClave(false);
}

void frmconfig::crearCarpetas(QVBoxLayout& columna) {
    Toolbar1_->setObjectName("Toolbar1");
    describir(*Toolbar1_, palabras_("Carpetas opcionales", "Optional folders"));
    const std::array numeros = {botonNuevaCarpeta, botonBorrarCarpeta};
    const std::array ayudas = {texto(2238), texto(2102)};
    const std::array imagenes = {QString("carpeta"), QString("78")};
    for (std::size_t i = 0; i < carpetas_.size(); ++i) {
        const int numero = numeros.at(i);
        auto* accion = Toolbar1_->addAction(icono(imagenes.at(i)), ayudas.at(i));
        accion->setObjectName(QString("Toolbar1(%1)").arg(numero));
        accion->setToolTip(ayudas.at(i));
        auto* boton = Toolbar1_->widgetForAction(accion);
        boton->setObjectName(accion->objectName());
        boton->setFocusPolicy(Qt::TabFocus);
        describir(*boton, ayudas.at(i));
        connect(accion, &QAction::triggered, this, [this, numero] { pulsarToolbar1(numero); });
        carpetas_.at(i) = accion;
    }
    List1_->setObjectName("List1");
    List1_->setMinimumHeight(List1_->fontMetrics().lineSpacing() * 5);
    List1_->setTextElideMode(Qt::ElideMiddle);
    describir(*List1_, texto(2238),
              palabras_("Carpetas que se copian con la empresa", "Folders that are copied with the company"));
    auto* fila = new QHBoxLayout;
    fila->addWidget(crearLabel1(1, texto(2238), List1_), 1);
    fila->addWidget(Toolbar1_);
    columna.addLayout(fila);
    columna.addWidget(List1_, 1);
    pintarList1();
}

// What is stored for the whole program.
void frmconfig::crearPrograma(QVBoxLayout& columna) {
    auto* grupo = new QGroupBox(palabras_("Programa", "Program"), this);
    describir(*grupo, grupo->title(), palabras_("Vale para todas las empresas", "Holds for all companies"));
    auto* campos = new QFormLayout(grupo);
    INCLUYEIMAGENES_->setObjectName("INCLUYEIMAGENES");
    INCLUYEIMAGENES_->setText(texto(2253));
    INCLUYEIMAGENES_->setChecked(formulario_.INCLUYEIMAGENES);
    describir(*INCLUYEIMAGENES_, texto(2253).simplified());
    datosen_->setObjectName("datosen");
    for (const auto& unidad : workflows::FormularioConfiguracion::unidades()) {
        datosen_->addItem(aQt(unidad));
    }
    datosen_->setCurrentIndex(formulario_.datosen);
    describir(*datosen_, texto(2254).trimmed());
    campos->addRow(INCLUYEIMAGENES_);
    campos->addRow(crearLabel1(0, texto(2254), datosen_), datosen_);
    columna.addWidget(grupo);
}

void frmconfig::crearBotones(QVBoxLayout& columna) {
    auto* fila = new QHBoxLayout;
    fila->addStretch();
    const std::array textos = {texto(1), texto(3)};
    const std::array ayudas = {
        palabras_("Graba lo que ha cambiado y cierra", "Saves what was changed and closes"),
        palabras_("Cierra sin grabar", "Closes without saving")};
    for (std::size_t i = 0; i < Command2_.size(); ++i) {
        auto* boton = new QPushButton(textos.at(i), this);
        boton->setObjectName(QString("Command2(%1)").arg(i));
        describir(*boton, QString(textos.at(i)).remove('&'), ayudas.at(i));
        connect(boton, &QPushButton::clicked, this, [this, i] { salir(i == 0); });
        fila->addWidget(boton);
        Command2_.at(i) = boton;
    }
    Command2_[0]->setDefault(true);
    columna.addLayout(fila);
}

void frmconfig::ordenarFocos() {
    QWidget* anterior = TarvolineActivar_;
    const auto seguir = [&anterior](QWidget* siguiente) {
        QWidget::setTabOrder(anterior, siguiente);
        anterior = siguiente;
    };
    seguir(TarvolineUser_);
    seguir(TarvolinePassword_);
    for (auto* boton : TarvolinePassword_->findChildren<QToolButton*>()) {
        seguir(boton);
    }
    seguir(TarvolineCarpeta_);
    seguir(TarvolineMinutos_);
    seguir(Toolbar1_->widgetForAction(carpetas_[0]));
    seguir(Toolbar1_->widgetForAction(carpetas_[1]));
    seguir(List1_);
    seguir(Command1_);
    seguir(INCLUYEIMAGENES_);
    seguir(datosen_);
    seguir(Command2_[0]);
    seguir(Command2_[1]);
}

}  // namespace tarvoline::ui
