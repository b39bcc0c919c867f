#include "ui/dialogo_listado.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "ui/dialogo.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr const char* codigoNumero = "3";

}  // namespace

DialogoListado::DialogoListado(const core::Listado& listado, const Palabras& palabras, QWidget* padre)
    : QDialog(padre), tabla_(new QTableWidget(this)) {
    setObjectName("Listado");
    setWindowTitle(aQt(listado.titulo));
    auto* cabecera = new QLabel(aQt(listado.titulo), this);
    auto* fecha = new QLabel(aQt(listado.fecha), this);
    auto letra = cabecera->font();
    letra.setBold(true);
    cabecera->setFont(letra);
    for (auto* etiqueta : {cabecera, fecha}) {
        etiqueta->setTextFormat(Qt::PlainText);
        describir(*etiqueta, etiqueta->text());
    }
    llenar(listado);
    describir(*tabla_, windowTitle(), palabras("Informe; Ctrl+C lo copia", "Report; Ctrl+C copies it"));

    auto* botones = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* cerrar = botones->button(QDialogButtonBox::Close);
    cerrar->setText(palabras("C&errar", "Clos&e"));
    cerrar->setObjectName("cerrar");
    describir(*cerrar, palabras("Cerrar", "Close"));
    auto* copiarTodo = botones->addButton(palabras("&Copiar", "&Copy"), QDialogButtonBox::ActionRole);
    copiarTodo->setObjectName("copiar");
    describir(*copiarTodo, palabras("Copiar", "Copy"),
              palabras("Copia el informe al portapapeles", "Copies the report to the clipboard"));
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copiarTodo, &QPushButton::clicked, this, &DialogoListado::copiar);
    connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, &DialogoListado::copiar);

    auto* columna = new QVBoxLayout(this);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(cabecera, 1);
    arriba->addWidget(fecha);
    columna->addLayout(arriba);
    columna->addWidget(tabla_, 1);
    columna->addWidget(botones);
    cerrar->setDefault(true);
    cerrar->setFocus(Qt::OtherFocusReason);
    ajustar();
}

void DialogoListado::llenar(const core::Listado& listado) {
    const auto cabezas = aQt(listado.encabezado).split(',');
    const auto codigos = aQt(listado.columnas).split(',');
    auto lineas = enLineas(aQt(listado.texto)).split('\n');
    lineas.removeAll(QString());  // the last line ends in a line break too
    const int columnas = static_cast<int>(std::max(cabezas.size(), codigos.size()));
    tabla_->setObjectName("listado");
    tabla_->setColumnCount(columnas);
    tabla_->setRowCount(static_cast<int>(lineas.size()));
    tabla_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabla_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabla_->setAlternatingRowColors(true);
    tabla_->setTabKeyNavigation(false);
    tabla_->setShowGrid(false);
    tabla_->verticalHeader()->hide();
    for (int j = 0; j < columnas; ++j) {
        const auto lado =
            (codigos.value(j).trimmed() == codigoNumero ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
        auto* cabeza = new QTableWidgetItem(cabezas.value(j));
        cabeza->setTextAlignment(lado);
        tabla_->setHorizontalHeaderItem(j, cabeza);
        for (int i = 0; i < tabla_->rowCount(); ++i) {
            auto* celda = new QTableWidgetItem(lineas[i].split('\t').value(j));
            celda->setTextAlignment(lado);
            tabla_->setItem(i, j, celda);
        }
    }
}

// Wide enough for the cells, as far as the screen goes; what is left over widens the first column.
void DialogoListado::ajustar() {
    constexpr int filasALaVista = 12;
    constexpr int anchoMenor = 60;  // characters
    tabla_->resizeColumnsToContents();
    const auto* cabezas = tabla_->horizontalHeader();
    const int aire = 2 * fontMetrics().averageCharWidth();
    const auto margenes = layout()->contentsMargins();
    int contenido = margenes.left() + margenes.right() + 2 * tabla_->frameWidth() +
                    tabla_->verticalScrollBar()->sizeHint().width();
    for (int j = 0; j < tabla_->columnCount(); ++j) {
        tabla_->setColumnWidth(j, tabla_->columnWidth(j) + aire);
        contenido += tabla_->columnWidth(j);
    }
    const auto pantalla = screen()->availableSize() * 0.9;
    const int ancho =
        std::min(std::max(contenido, fontMetrics().averageCharWidth() * anchoMenor), pantalla.width());
    if (tabla_->columnCount() > 0) {
        tabla_->setColumnWidth(0, tabla_->columnWidth(0) + std::max(0, ancho - contenido));
    }
    const int filas = std::clamp(tabla_->rowCount(), 3, filasALaVista);
    const int alto =
        cabezas->sizeHint().height() + filas * tabla_->verticalHeader()->defaultSectionSize() + aire;
    const int resto = sizeHint().height() - tabla_->sizeHint().height();
    resize(ancho, std::min(alto + resto, pantalla.height()));
}

void DialogoListado::copiar() const {
    std::vector<int> filas;
    for (const auto& lugar : tabla_->selectionModel()->selectedRows()) {
        filas.push_back(lugar.row());
    }
    std::sort(filas.begin(), filas.end());
    if (filas.size() < 2) {
        filas.resize(static_cast<std::size_t>(tabla_->rowCount()));
        for (std::size_t i = 0; i < filas.size(); ++i) {
            filas[i] = static_cast<int>(i);
        }
    }
    const auto juntar = [this](const auto& celda) {
        QStringList textos;
        for (int j = 0; j < tabla_->columnCount(); ++j) {
            textos << celda(j)->text();
        }
        return textos.join('\t') + '\n';
    };
    QString texto = juntar([this](int j) { return tabla_->horizontalHeaderItem(j); });
    for (const int i : filas) {
        texto += juntar([this, i](int j) { return tabla_->item(i, j); });
    }
    QGuiApplication::clipboard()->setText(texto);
}

}  // namespace tarvoline::ui
