// The rows of core::Rejilla as the toolkit's tables read them. Rows here count from 0 and leave out the
// heading, which is the model's horizontal header; columns are the same nine.
#pragma once

#include <QAbstractTableModel>

#include "core/vista.h"

namespace tarvoline::ui {

class ModeloRejilla : public QAbstractTableModel {
    Q_OBJECT

  public:
    // `rejilla` is borrowed.
    ModeloRejilla(const core::Rejilla& rejilla, QObject* padre);

    // All of it is another one. `tamanosALaDerecha`: column 5 holds sizes, which are read from their end.
    void refrescar(bool tamanosALaDerecha);
    // The cells of one row of core::Rejilla are others.
    void refrescarFila(int fila);

    // No row, or one alone without a text: an empty list of some views has such a row.
    bool enBlanco() const;
    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& lugar, int papel) const override;
    QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

  private:
    int alineacion(int columna) const;

    const core::Rejilla& rejilla_;
    // As of the last refresh: between a change and its notice the table must not see the rows come and go.
    int filas_ = 0;
    bool tamanosALaDerecha_ = true;
};

}  // namespace tarvoline::ui
