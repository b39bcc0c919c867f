// The configuration window: paints and edits a workflows::FormularioConfiguracion.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>

#include "ui/dialogo.h"
#include "workflows/formulario_configuracion.h"

namespace tarvoline::ui {

class frmconfig : public DialogoSeguro {
    Q_OBJECT

  public:
    // `formulario` is filled already, borrowed, and outlives the dialog.
    frmconfig(workflows::FormularioConfiguracion& formulario, core::Entorno& entorno, QWidget* padre);

  public slots:
    // Escape and the frame leave without saving.
    void reject() override;

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    QString texto(int numero) const;
    QLabel* crearLabel1(int indice, const QString& texto, QWidget* companero);
    void crearEmpresa(QVBoxLayout& columna);
    void crearAcceso(QVBoxLayout& columna);
    void crearMinutos(QFormLayout& campos);
    void crearClave();
    void crearCarpetas(QVBoxLayout& columna);
    void crearPrograma(QVBoxLayout& columna);
    void crearBotones(QVBoxLayout& columna);
    void unirLinea(QLineEdit& linea, std::string& valor);
    void conectar();
    void ordenarFocos();

    void mostrarClave(bool visible);
    void pintarList1();
    void pulsarToolbar1(int numero);
    void salir(bool grabar);

    workflows::FormularioConfiguracion& formulario_;
    Palabras palabras_;
    QLabel* lbemrpesa_;
    QCheckBox* TarvolineActivar_;
    QLineEdit* TarvolineUser_;
    QLineEdit* TarvolinePassword_;
    QAction* Command3_ = nullptr;
    QLineEdit* TarvolineCarpeta_;
    QComboBox* TarvolineMinutos_;
    QCheckBox* INCLUYEIMAGENES_;
    QComboBox* datosen_;
    QListWidget* List1_;
    QToolBar* Toolbar1_;
    std::array<QAction*, 2> carpetas_{};  // buttons 0 and 78 of Toolbar1
    QPushButton* Command1_;
    std::array<QPushButton*, 2> Command2_{};
    bool saliendo_ = false;
};

}  // namespace tarvoline::ui
