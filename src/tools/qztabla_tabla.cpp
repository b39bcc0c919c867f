#include "qztabla_tabla.h"

#include <algorithm>
#include <iostream>

#include "core/carpetas.h"
#include "platform/arbol_ajustes.h"
#include "platform/carpetas_sistema.h"
#include "platform/terminal.h"

namespace tarvoline::tools {

void TablaPedida::anadirOpciones(CLI::App& orden, const std::string& queEs) {
    orden.add_option("TABLA", ruta, queEs)->required();
    orden.add_option(
        "--definicion", rutaDefinicion,
        "Definición de la tabla (.QZA) [la de la carpeta del programa con las cinco primeras letras "
        "de TABLA]");
}

std::shared_ptr<const data::DefinicionTabla> TablaPedida::leerDefinicion(
    platform::SistemaArchivos& archivos) const {
    if (!rutaDefinicion.empty()) return data::CacheDefiniciones(archivos).leer(rutaDefinicion);
    const auto arbol =
        platform::crearArbolAjustes(archivos, platform::carpetaConfiguracion() + "/QZ/ajustes.ini");
    core::Ajustes ajustes(*arbol);
    const core::Carpetas carpetas(archivos, ajustes, platform::carpetaTemporal());
    return data::definicionDeTabla(archivos, carpetas.DirectorioPrograma(), ruta);
}

LineaProgreso::LineaProgreso(bool estorba) : visible_(!estorba && platform::hayTerminalError()) {}

LineaProgreso::~LineaProgreso() {
    borrar();
}

void LineaProgreso::mostrar(std::uint64_t hecho, std::uint64_t total) {
    if (!visible_ || total == 0) return;
    const int porCiento = static_cast<int>(std::min(hecho, total) * 100 / total);
    if (porCiento == porCiento_) return;
    porCiento_ = porCiento;
    std::cerr << '\r' << porCiento << " %  " << std::flush;
}

void LineaProgreso::borrar() {
    if (porCiento_ < 0) return;
    porCiento_ = -1;
    std::cerr << "\r        \r" << std::flush;
}

data::Progreso LineaProgreso::comoFuncion() {
    if (!visible_) return {};
    return [this](std::uint64_t hecho, std::uint64_t total) { mostrar(hecho, total); };
}

void imprimir(const data::Verificacion& v, std::ostream& salida) {
    salida << "registros vivos: " << v.vivos << "\nregistros anulados: " << v.anulados
           << "\nlugares sin escribir: " << v.sinEscribir << '\n';
    if (v.clavesCotejadas) salida << "contador de registros: " << v.contador << '\n';
    for (std::size_t i = 0; v.clavesCotejadas && i < v.entradas.size(); ++i)
        salida << "entradas de la clave " << i + 1 << ": " << v.entradas[i] << '\n';
    salida << "SHA-256 de volcar: " << v.huella << "\ndiscrepancias: " << v.discrepancias << '\n';
}

void terminarSalida() {
    std::cout.flush();
    if (!std::cout) throw std::runtime_error("no se ha podido escribir la salida");
}

}  // namespace tarvoline::tools
