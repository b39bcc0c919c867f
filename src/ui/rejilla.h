// The grid `fx1`: shows core::Rejilla and writes back what the person chooses in it, as Row (where the
// selection began) and RowSel (where it ends, above or below). Everything else it only reports.
#pragma once

#include <QTableView>
#include <array>

#include "core/vista.h"
#include "ui/modelo_rejilla.h"

namespace tarvoline::ui {

class Rejilla : public QTableView {
    Q_OBJECT

  public:
    // `rejilla` is borrowed.
    Rejilla(core::Rejilla& rejilla, QWidget* padre);

    // Shows the grid anew: rows, headings, widths, selection, sort mark.
    void refrescar(bool tamanosALaDerecha);
    void refrescarFila(int fila) { modelo_->refrescarFila(fila); }
    // What an empty grid says.
    void ponerTextoVacio(const QString& texto);
    // Makes one row of core::Rejilla the chosen one and brings it into sight.
    void elegirFila(int fila);

  signals:
    // A key of the grid's own: workflows::teclaSuprimir, or 0 for any other. Shortcuts, Tab and modifiers on
    // their own are none, nor is the repetition of a key that is held down.
    void teclaPulsada(int tecla);
    void abrirPedido();                // double click, or Enter
    void menuPedido(QPoint pantalla);  // right button, or the menu key
    void ordenPedido(int indice);      // a click on a heading: 0 name, 1 date, 2 size

  protected:
    void keyPressEvent(QKeyEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

  private:
    void repartirAnchos();
    void leerEleccion();
    void mostrarEleccion();
    void mostrarOrden();
    void pintarResto();

    core::Rejilla& rejilla_;
    ModeloRejilla* modelo_;
    QString textoVacio_;
    bool mostrando_ = false;  // the selection is being set from the model, not by the person
};

}  // namespace tarvoline::ui
