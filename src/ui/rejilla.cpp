#include "ui/rejilla.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "workflows/lista.h"

namespace tarvoline::ui {

namespace {

namespace columna = workflows::columna_rejilla;

constexpr int columnas = core::Rejilla::columnas;

// The column on show of each sort order, and the column that holds its key.
constexpr std::array columnaVisible = {columna::descripcion, columna::fecha, columna::tamano};
constexpr std::array columnaClave = {columna::nombre, columna::ordenFecha, columna::ordenTamano};

bool esModificador(int tecla) {
    switch (tecla) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_Super_L:
        case Qt::Key_Super_R:
        case Qt::Key_CapsLock:
        case Qt::Key_NumLock:
        case Qt::Key_ScrollLock:
        case Qt::Key_Mode_switch:
        case Qt::Key_unknown:
            return true;
        default:
            return false;
    }
}

// Keys that the grid sees as such. A held modifier makes a shortcut of any of them; Tab and the menu key lead
// out of the grid.
bool esTeclaPropia(const QKeyEvent& evento) {
    const auto atajo = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return !(evento.modifiers() & atajo) && !esModificador(evento.key()) && evento.key() != Qt::Key_Tab &&
           evento.key() != Qt::Key_Backtab && evento.key() != Qt::Key_Menu;
}

}  // namespace

Rejilla::Rejilla(core::Rejilla& rejilla, QWidget* padre)
    : QTableView(padre), rejilla_(rejilla), modelo_(new ModeloRejilla(rejilla, this)) {
    setObjectName("fx1");
    setModel(modelo_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 8 / 5);
    horizontalHeader()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int seccion) {
        const auto* lugar = std::find(columnaVisible.begin(), columnaVisible.end(), seccion);
        if (lugar != columnaVisible.end()) {
            emit ordenPedido(static_cast<int>(lugar - columnaVisible.begin()));
        }
        mostrarOrden();  // the header has turned its mark by itself
    });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &Rejilla::leerEleccion);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &Rejilla::leerEleccion);
    // The view repaints the cells of a choice; the band beside them is ours.
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, viewport(),
            qOverload<>(&QWidget::update));
}

void Rejilla::refrescar(bool tamanosALaDerecha) {
    mostrando_ = true;
    const int altura = verticalScrollBar()->value();
    modelo_->refrescar(tamanosALaDerecha);
    for (int i = 0; i < columnas; ++i) {
        setColumnHidden(i, rejilla_.anchos[static_cast<std::size_t>(i)] == 0);
    }
    repartirAnchos();
    mostrarEleccion();
    mostrarOrden();
    verticalScrollBar()->setValue(altura);
    mostrando_ = false;
}

// Each column its share; the one without a share takes what is left.
void Rejilla::repartirAnchos() {
    const int ancho = viewport()->width();
    int resto = ancho;
    int sinParte = -1;
    for (int i = 0; i < columnas; ++i) {
        const int parte = rejilla_.anchos[static_cast<std::size_t>(i)];
        if (parte < 0) {
            sinParte = i;
        } else if (parte > 0) {
            setColumnWidth(i, ancho * parte / 1000);
            resto -= columnWidth(i);
        }
    }
    if (sinParte >= 0) {
        setColumnWidth(sinParte, std::max(resto, horizontalHeader()->minimumSectionSize()));
    }
}

// The selection's two ends: where it began is the end that the current row is not at.
void Rejilla::leerEleccion() {
    const auto rangos = selectionModel()->selection();
    if (mostrando_) {
        return;
    }
    if (rangos.isEmpty()) {
        rejilla_.Row = rejilla_.RowSel = 0;  // what nobody sees chosen is not deleted either
        return;
    }
    int primera = modelo_->rowCount();
    int ultima = 0;
    for (const auto& rango : rangos) {
        primera = std::min(primera, rango.top());
        ultima = std::max(ultima, rango.bottom());
    }
    const bool haciaArriba = currentIndex().row() == primera;
    rejilla_.Row = (haciaArriba ? ultima : primera) + 1;
    rejilla_.RowSel = (haciaArriba ? primera : ultima) + 1;
}

void Rejilla::mostrarEleccion() {
    const int filas = modelo_->rowCount();
    if (rejilla_.Row < 1 || rejilla_.Row > filas) {
        return;
    }
    const int hasta = std::clamp(rejilla_.RowSel, 1, filas);
    const auto comienzo = modelo_->index(rejilla_.Row - 1, columna::descripcion);
    const auto final = modelo_->index(hasta - 1, columna::descripcion);
    const auto filasEnteras = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    selectionModel()->setCurrentIndex(final, QItemSelectionModel::NoUpdate);
    selectionModel()->select(QItemSelection(std::min(comienzo, final), std::max(comienzo, final)),
                             filasEnteras);
}

void Rejilla::mostrarOrden() {
    const auto* clave = std::find(columnaClave.begin(), columnaClave.end(), rejilla_.columnaOrden());
    const bool ordenada = clave != columnaClave.end();
    horizontalHeader()->setSortIndicatorShown(ordenada);
    if (ordenada) {
        const auto cual = static_cast<std::size_t>(clave - columnaClave.begin());
        horizontalHeader()->setSortIndicator(
            columnaVisible[cual], rejilla_.ordenAscendente() ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

void Rejilla::elegirFila(int fila) {
    if (isEnabled() && fila >= 1 && fila <= modelo_->rowCount()) {
        const auto lugar = modelo_->index(fila - 1, columna::descripcion);
        setCurrentIndex(lugar);
        scrollTo(lugar);
    }
}

void Rejilla::ponerTextoVacio(const QString& texto) {
    textoVacio_ = texto;
    viewport()->update();
}

void Rejilla::keyPressEvent(QKeyEvent* evento) {
    if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
        if (!evento->isAutoRepeat()) {
            emit teclaPulsada(0);
            emit abrirPedido();
        }
        return;
    }
    if (!esTeclaPropia(*evento)) {
        QTableView::keyPressEvent(evento);
        return;
    }
    const bool suprimir = evento->key() == Qt::Key_Delete;
    const bool nadaElegido = !selectionModel()->hasSelection();
    if (nadaElegido && (evento->key() == Qt::Key_Down || evento->key() == Qt::Key_Up)) {
        elegirFila(1);
    } else if (!suprimir) {
        QTableView::keyPressEvent(evento);
    }
    evento->accept();
    if (!evento->isAutoRepeat()) {
        emit teclaPulsada(suprimir ? workflows::teclaSuprimir : 0);
    }
}

void Rejilla::mouseDoubleClickEvent(QMouseEvent* evento) {
    QTableView::mouseDoubleClickEvent(evento);
    if (evento->button() == Qt::LeftButton && indexAt(evento->position().toPoint()).isValid()) {
        emit abrirPedido();
    }
}

void Rejilla::contextMenuEvent(QContextMenuEvent* evento) {
    const bool conRaton = evento->reason() == QContextMenuEvent::Mouse;
    const auto bajoFila = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    emit menuPedido(conRaton ? evento->globalPos() : bajoFila);
}

void Rejilla::resizeEvent(QResizeEvent* evento) {
    QTableView::resizeEvent(evento);
    repartirAnchos();
}

// A locked list is one flat ground: its two bands swap their weight in the colours of what is disabled.
void Rejilla::changeEvent(QEvent* evento) {
    QTableView::changeEvent(evento);
    if (evento->type() == QEvent::EnabledChange) {
        setAlternatingRowColors(isEnabled());
    }
}

void Rejilla::paintEvent(QPaintEvent* evento) {
    pintarResto();
    QTableView::paintEvent(evento);
}

// The bands of the rows go on where the columns end, so that a chosen row is chosen over its whole width.
void Rejilla::pintarResto() {
    QPainter pintor(viewport());
    const int filas = modelo_->rowCount();
    if (modelo_->enBlanco()) {
        pintor.setPen(palette().color(QPalette::PlaceholderText));
        pintor.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, textoVacio_);
        return;
    }
    const int borde = columnViewportPosition(columna::tamano) + columnWidth(columna::tamano);
    const int primera = std::max(rowAt(0), 0);
    const auto grupo = !isEnabled() ? QPalette::Disabled : hasFocus() ? QPalette::Active : QPalette::Inactive;
    for (int fila = primera; fila < filas && rowViewportPosition(fila) < viewport()->height(); ++fila) {
        const bool elegida = selectionModel()->isRowSelected(fila);
        const bool banda = alternatingRowColors() && fila % 2 != 0;
        const auto papel = elegida ? QPalette::Highlight : banda ? QPalette::AlternateBase : QPalette::Base;
        pintor.fillRect(QRect(borde, rowViewportPosition(fila), viewport()->width() - borde, rowHeight(fila)),
                        palette().brush(grupo, papel));
    }
}

}  // namespace tarvoline::ui
