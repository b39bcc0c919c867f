#include "ui/modelo_rejilla.h"

#include <algorithm>

#include "ui/texto_qt.h"
#include "workflows/lista.h"

namespace tarvoline::ui {

namespace columna = workflows::columna_rejilla;

ModeloRejilla::ModeloRejilla(const core::Rejilla& rejilla, QObject* padre)
    : QAbstractTableModel(padre), rejilla_(rejilla) {}

void ModeloRejilla::refrescar(bool tamanosALaDerecha) {
    beginResetModel();
    tamanosALaDerecha_ = tamanosALaDerecha;
    filas_ = std::max(rejilla_.filas() - 1, 0);
    endResetModel();
}

void ModeloRejilla::refrescarFila(int fila) {
    if (fila >= 1 && fila <= filas_) {
        emit dataChanged(index(fila - 1, 0), index(fila - 1, core::Rejilla::columnas - 1));
    }
}

bool ModeloRejilla::enBlanco() const {
    if (filas_ > 1) {
        return false;
    }
    for (int columna = 0; filas_ == 1 && columna < core::Rejilla::columnas; ++columna) {
        if (!rejilla_.celda(1, columna).empty()) {
            return false;
        }
    }
    return true;
}

int ModeloRejilla::rowCount(const QModelIndex& padre) const {
    return padre.isValid() ? 0 : filas_;
}

int ModeloRejilla::columnCount(const QModelIndex& padre) const {
    return padre.isValid() ? 0 : core::Rejilla::columnas;
}

int ModeloRejilla::alineacion(int columna) const {
    const auto centrada =
        rejilla_.alineacion[static_cast<std::size_t>(columna)] == core::Rejilla::Alineacion::centro;
    if (centrada) {
        return Qt::AlignCenter;
    }
    const bool derecha = tamanosALaDerecha_ && columna == columna::tamano;
    return static_cast<int>(derecha ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant ModeloRejilla::data(const QModelIndex& lugar, int papel) const {
    if (!lugar.isValid()) {
        return {};
    }
    const int fila = lugar.row() + 1;
    switch (papel) {
        case Qt::DisplayRole:
            return aQt(rejilla_.celda(fila, lugar.column()));
        case Qt::TextAlignmentRole:
            return alineacion(lugar.column());
        case Qt::ToolTipRole:
            // What a narrow column cuts off: the file's name as it is stored, or the line of the history.
            if (lugar.column() == columna::descripcion) {
                const auto& nombre = rejilla_.celda(fila, columna::nombre);
                return aQt(nombre.empty() ? rejilla_.celda(fila, columna::descripcion) : nombre);
            }
            return {};
        case Qt::AccessibleTextRole:
            return QString("%1: %2").arg(aQt(rejilla_.celda(0, lugar.column())),
                                         aQt(rejilla_.celda(fila, lugar.column())));
        default:
            return {};
    }
}

QVariant ModeloRejilla::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
    if (orientacion != Qt::Horizontal || seccion < 0 || seccion >= core::Rejilla::columnas) {
        return {};
    }
    if (papel == Qt::DisplayRole) {
        return aQt(rejilla_.celda(0, seccion));
    }
    return papel == Qt::TextAlignmentRole ? QVariant(alineacion(seccion)) : QVariant();
}

}  // namespace tarvoline::ui
