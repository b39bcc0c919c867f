#include "ui/escritorio_qt.h"

#include <QCoreApplication>

namespace tarvoline::ui {

QWidget* EscritorioQt::sobre() const {
    return ventana_;
}
void EscritorioQt::Mensaje(const core::Caja&) {}
bool EscritorioQt::Preguntar(const core::Caja&, bool) {
    return false;
}
bool EscritorioQt::Confirmar(const core::Caja&) {
    return false;
}
std::optional<std::string> EscritorioQt::Pedir(const core::Peticion&) {
    return std::nullopt;
}
bool EscritorioQt::PedirDatos(core::EntradaDatos&) {
    return false;
}
std::optional<std::string> EscritorioQt::ElegirArchivo(const core::EleccionArchivo&) {
    return std::nullopt;
}
std::optional<std::string> EscritorioQt::GuardarComo(const core::EleccionArchivo&) {
    return std::nullopt;
}
std::optional<std::string> EscritorioQt::ElegirCarpeta(std::string_view) {
    return std::nullopt;
}
void EscritorioQt::MostrarListado(const core::Listado&) {}
void EscritorioQt::Abrir(std::string_view) {}
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
    espera_ = espera;
}

}  // namespace tarvoline::ui
