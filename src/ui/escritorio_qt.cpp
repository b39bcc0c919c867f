#include "ui/escritorio_qt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include "platform/procesos.h"
#include "ui/dialogo.h"
#include "ui/dialogo_clave.h"
#include "ui/dialogo_datos.h"
#include "ui/dialogo_listado.h"
#include "ui/texto_qt.h"

namespace tarvoline::ui {

namespace {

constexpr const char* tituloPropio = "Tarvoline";  // of boxes that bring none

QMessageBox::Icon iconoDe(core::Icono icono) {
    switch (icono) {
        case core::Icono::informacion:
            return QMessageBox::Information;
        case core::Icono::exclamacion:
            return QMessageBox::Warning;
        case core::Icono::pregunta:
            return QMessageBox::Question;
        case core::Icono::parada:
            return QMessageBox::Critical;
        case core::Icono::ninguno:
            break;
    }
    return QMessageBox::NoIcon;
}

QString leyenda(QMessageBox::StandardButton boton, const Palabras& palabras) {
    switch (boton) {
        case QMessageBox::Yes:
            return palabras("&Sí", "&Yes");
        case QMessageBox::No:
            return palabras("&No", "&No");
        case QMessageBox::Cancel:
            return palabras("&Cancelar", "&Cancel");
        default:
            return palabras("&Aceptar", "&OK");
    }
}

// Names on this side of the world bear both letter cases: "*.qzt" looks for "*.QZT" too. "*.*" means every
// file, also those without a dot.
QString filtroDe(const core::FiltroArchivo& filtro, const Palabras& palabras) {
    const auto mascara = aQt(filtro.mascara);
    const auto todos = palabras("Todos los archivos", "All files") + " (*)";
    if (mascara.isEmpty() || mascara == "*" || mascara == "*.*") {
        return todos;
    }
    QStringList mascaras;
    for (const auto& una : mascara.split(';')) {
        mascaras << una.trimmed().toLower() << una.trimmed().toUpper();
    }
    mascaras.removeDuplicates();
    return aQt(filtro.descripcion) + " (" + mascaras.join(' ') + ")";
}

QString carpetaInicial(const std::string& carpeta) {
    const auto pedida = aQt(carpeta).replace('\\', '/');
    return !pedida.isEmpty() && QDir(pedida).exists()
               ? pedida
               : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString tituloDe(std::string_view titulo, const QString& propio) {
    return titulo.empty() ? propio : aQt(titulo);
}

// `"program" arguments`, or a document or address without the quotes.
bool abrir(const QString& documento) {
    if (!documento.startsWith('"')) {
        const bool esRuta = !documento.contains("://") && !documento.startsWith("mailto:");
        return platform::abrirDocumento(
            (esRuta ? QString(documento).replace('\\', '/') : documento).toStdString());
    }
    const auto cierre = documento.indexOf('"', 1);
    std::vector<std::string> argumentos;
    if (cierre > 0) {
        for (const auto& argumento : QProcess::splitCommand(documento.mid(cierre + 1))) {
            argumentos.push_back(argumento.toStdString());
        }
    }
    return platform::arrancarPrograma(documento.mid(1, cierre > 0 ? cierre - 1 : -1).toStdString(),
                                      argumentos);
}

}  // namespace

QWidget* EscritorioQt::sobre() const {
    if (auto* abierto = QApplication::activeModalWidget()) {
        return abierto;
    }
    return ventana_ && ventana_->isVisible() ? ventana_.data() : nullptr;
}

int EscritorioQt::mostrar(QDialog& dialogo) {
    const bool esperaba = espera_;
    Puntero(false);
    const int fin = dialogo.exec();
    Puntero(esperaba);
    return fin;
}

QMessageBox::StandardButton EscritorioQt::mostrarCaja(const core::Caja& caja,
                                                      QMessageBox::StandardButtons botones,
                                                      QMessageBox::StandardButton porDefecto) {
    QMessageBox cuadro(iconoDe(caja.icono), tituloDe(caja.titulo, tituloPropio), {}, botones, sobre());
    cuadro.setObjectName("Mensaje");
    cuadro.setTextFormat(Qt::PlainText);
    cuadro.setText(enLineas(aQt(caja.texto)));
    cuadro.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    cuadro.setDefaultButton(porDefecto);
    describir(cuadro, cuadro.windowTitle(), cuadro.text());
    for (auto* boton : cuadro.buttons()) {
        boton->setText(leyenda(cuadro.standardButton(boton), palabras_));
        describir(*boton, boton->text().remove('&'), cuadro.text());
    }
    return static_cast<QMessageBox::StandardButton>(mostrar(cuadro));
}

void EscritorioQt::Mensaje(const core::Caja& caja) {
    mostrarCaja(caja, QMessageBox::Ok, QMessageBox::Ok);
}

bool EscritorioQt::Preguntar(const core::Caja& caja, bool siPorDefecto) {
    return mostrarCaja(caja, QMessageBox::Yes | QMessageBox::No,
                       siPorDefecto ? QMessageBox::Yes : QMessageBox::No) == QMessageBox::Yes;
}

bool EscritorioQt::Confirmar(const core::Caja& caja) {
    return mostrarCaja(caja, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok) == QMessageBox::Ok;
}

std::optional<std::string> EscritorioQt::Pedir(const core::Peticion& peticion) {
    DialogoClave dialogo(peticion, palabras_, sobre());
    if (mostrar(dialogo) != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialogo.respuesta();
}

bool EscritorioQt::PedirDatos(core::EntradaDatos& datos) {
    DialogoDatos dialogo(datos, palabras_, sobre());
    if (mostrar(dialogo) != QDialog::Accepted) {
        return false;
    }
    dialogo.recoger(datos);
    return true;
}

std::optional<std::string> EscritorioQt::ElegirArchivo(const core::EleccionArchivo& eleccion) {
    QFileDialog dialogo(sobre(), tituloDe(eleccion.titulo, palabras_("Elegir un archivo", "Choose a file")),
                        carpetaInicial(eleccion.carpeta), filtroDe(eleccion.filtro, palabras_));
    dialogo.setFileMode(QFileDialog::ExistingFile);
    dialogo.selectFile(aQt(eleccion.nombre));
    return mostrarEleccion(dialogo, palabras_("&Abrir", "&Open"));
}

// Whether a file that exists may be written over is asked by whoever writes it.
std::optional<std::string> EscritorioQt::GuardarComo(const core::EleccionArchivo& eleccion) {
    QFileDialog dialogo(sobre(), tituloDe(eleccion.titulo, palabras_("Guardar como", "Save as")),
                        carpetaInicial(eleccion.carpeta), filtroDe(eleccion.filtro, palabras_));
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setFileMode(QFileDialog::AnyFile);
    dialogo.setOption(QFileDialog::DontConfirmOverwrite);
    dialogo.selectFile(aQt(eleccion.nombre));
    return mostrarEleccion(dialogo, palabras_("&Guardar", "&Save"));
}

std::optional<std::string> EscritorioQt::ElegirCarpeta(std::string_view titulo) {
    QFileDialog dialogo(sobre(), tituloDe(titulo, palabras_("Elegir una carpeta", "Choose a folder")),
                        carpetaInicial({}));
    dialogo.setFileMode(QFileDialog::Directory);
    dialogo.setOption(QFileDialog::ShowDirsOnly);
    return mostrarEleccion(dialogo, palabras_("&Elegir", "&Choose"));
}

std::optional<std::string> EscritorioQt::mostrarEleccion(QFileDialog& dialogo, const QString& aceptar) {
    dialogo.setObjectName("CommonDialog");
    dialogo.setLabelText(QFileDialog::LookIn, palabras_("Buscar en:", "Look in:"));
    dialogo.setLabelText(QFileDialog::FileName, palabras_("&Nombre:", "File &name:"));
    dialogo.setLabelText(QFileDialog::FileType, palabras_("Tipo:", "Type:"));
    dialogo.setLabelText(QFileDialog::Accept, aceptar);
    dialogo.setLabelText(QFileDialog::Reject, palabras_("&Cancelar", "&Cancel"));
    if (mostrar(dialogo) != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialogo.selectedFiles().constFirst().toStdString();  // a path stays as it stands on the disk
}

void EscritorioQt::MostrarListado(const core::Listado& listado) {
    DialogoListado dialogo(listado, palabras_, sobre());
    mostrar(dialogo);
}

void EscritorioQt::Abrir(std::string_view documento) {
    const auto texto =
        QString::fromUtf8(documento.data(), static_cast<qsizetype>(documento.size())).trimmed();
    if (!texto.isEmpty() && !abrir(texto)) {
        Mensaje({deQt(palabras_("No se puede abrir", "It cannot be opened")) + "\r\n" + texto.toStdString(),
                 core::Icono::exclamacion,
                 {}});
    }
}

void EscritorioQt::Turno() {
    QCoreApplication::processEvents();
    if (finPedido_) {
        throw core::FinDePrograma{};
    }
}

void EscritorioQt::Latido() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void EscritorioQt::Puntero(bool espera) {
    if (espera == espera_) {
        return;
    }
    espera_ = espera;
    if (espera) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

}  // namespace tarvoline::ui
