#include "ui/panel_lateral.h"

#include <QSignalBlocker>

#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

// The nine commands, in the order of their pictures.
struct Mandato {
    const char* nombre;
    const char* imagen;
    const char* texto;
    const char* textoIngles;
    const char* ayuda;
    const char* ayudaInglesa;
};

constexpr std::array<Mandato, 9> mandatos = {{
    {"CambiarUsuario", "107", "Cambiar de Usuario", "Change user", "Cambiar de Usuario", "Change user"},
    {"SubirPendientes", "135", "Subir empresas &pendientes", "Upload pendin&g companies",
     "Subir Empresas Pendientes", "Upload pending companies"},
    {"SubirEmpresa", "134", "Subir &una empresa", "&Upload a company", "Subir una Empresas",
     "Upload a company"},
    {"Subir", "124", "&Subir un archivo personal", "Upload a personal &file", "Subir un archivo personal",
     "Upload a personal file"},
    {"CalcularEspacio", "calcular-espacio", "Calcular espacio &ocupado (total)",
     "Measure space used (tota&l)", "Calcular espacio ocupado (Total)", "Measure the space used (total)"},
    {"Restaurar", "132", "&Restaurar empresa", "&Restore company", "Restaurar Empresa", "Restore company"},
    {"Descargar", "136", "&Descargar", "&Download", "Descargar Datos Seleccionados",
     "Download selected data"},
    {"Command1", "espacio-seleccion", "&Calcular espacio ocupado", "Measure spa&ce used",
     "Calcular espacio ocupado (Archivo seleccionadol)", "Measure the space used (selected files)"},
    {"Eliminar", "119", "&Eliminar", "D&elete", "Eliminar", "Delete"},
}};

// As they are read: first what goes up, then what is done with the chosen copies, then what only tells.
constexpr std::array<std::size_t, 9> ordenEnPantalla = {2, 1, 3, 5, 6, 8, 7, 4, 0};

QLabel* crearTitulo(const QString& texto, QWidget* padre) {
    auto* titulo = new QLabel(texto, padre);
    auto letra = titulo->font();
    letra.setBold(true);
    titulo->setFont(letra);
    return titulo;
}

}  // namespace

PanelLateral::PanelLateral(const core::Vista& vista, const Palabras& palabras, const QString& excedida,
                           QWidget* padre)
    : QWidget(padre), vista_(vista), palabras_(palabras) {
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(0, 0, 0, 0);
    crearCarpetas(*columna);
    crearOpciones(*columna);
    crearBotones(*columna);
    columna->addStretch(1);
    almacen_ = new PanelAlmacen(vista, palabras, excedida, this);
    columna->addWidget(almacen_);
}

void PanelLateral::crearOpciones(QVBoxLayout& columna) {
    for (int i : {0, 3, 1, 2}) {
        auto* opcion = new QRadioButton(this);
        opcion->setObjectName(QString("Option1(%1)").arg(i));
        opcion->setAccessibleDescription(
            palabras_("Elige lo que muestra la lista", "Chooses what the list shows"));
        connect(opcion, &QRadioButton::clicked, this, [this, i] { emit opcionElegida(i); });
        columna.addWidget(opcion);
        Option1_[static_cast<std::size_t>(i)] = opcion;
    }
}

void PanelLateral::crearCarpetas(QVBoxLayout& columna) {
    carpetas_ = new QComboBox(this);
    carpetas_->setObjectName("carpetas");
    carpetas_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    carpetas_->setMinimumContentsLength(12);
    carpetas_->setAccessibleDescription(
        palabras_("Las carpetas del usuario en el servicio", "The user's folders on the service"));
    Label2_ = crearTitulo({}, this);
    Label2_->setObjectName("Label2");
    Label2_->setBuddy(carpetas_);
    connect(carpetas_, &QComboBox::activated, this, &PanelLateral::carpetaElegida);
    columna.addWidget(Label2_);
    columna.addWidget(carpetas_);
}

void PanelLateral::crearBotones(QVBoxLayout& columna) {
    columna.addSpacing(fontMetrics().height() / 2);
    for (const std::size_t i : ordenEnPantalla) {
        const auto& mandato = mandatos[i];
        auto* boton = new BotonImagen(mandato.nombre, static_cast<int>(i), mandato.imagen, this);
        boton->setText(palabras_(mandato.texto, mandato.textoIngles));
        boton->setToolTip(palabras_(mandato.ayuda, mandato.ayudaInglesa));
        boton->setAccessibleDescription(boton->toolTip());
        connect(boton, &BotonImagen::clicked, this, [this, i] { emit imagenPulsada(static_cast<int>(i)); });
        columna.addWidget(boton);
        botones_[i] = boton;
    }
    columna.setSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) / 2);
}

void PanelLateral::pintarOpcion() {
    Option1_[static_cast<std::size_t>(vista_.Option1)]->setChecked(true);
}

void PanelLateral::pintarCarpetas() {
    const QSignalBlocker callada(carpetas_);
    QStringList nombres;
    for (const auto& nombre : vista_.carpetas) {
        nombres << aQt(nombre);
    }
    carpetas_->clear();
    carpetas_->addItems(nombres);
    carpetas_->setCurrentIndex(vista_.carpetaElegida);
    // A folder in force that the list does not have is told all the same.
    carpetas_->setPlaceholderText(aQt(vista_.textoCarpetas));
}

void PanelLateral::pintarRotulos() {
    for (std::size_t i = 0; i < Option1_.size(); ++i) {
        Option1_[i]->setText(aQt(vista_.rotulos.Option1[i]));
    }
    Label2_->setText(aQt(vista_.rotulos.Label2));
    carpetas_->setAccessibleName(Label2_->text());
    almacen_->pintarRotulos();
}

void PanelLateral::pintarBloqueo() {
    const bool libre = vista_.habilitada && !vista_.bloqueada;
    carpetas_->setEnabled(libre);
    for (auto* opcion : Option1_) {
        opcion->setEnabled(libre);
    }
    for (auto* boton : botones_) {
        boton->setEnabled(libre);
    }
    almacen_->habilitar(vista_.habilitada);
}

void PanelLateral::normalizar() {
    for (auto* boton : botones_) {
        boton->normalizar();
    }
}

}  // namespace tarvoline::ui
