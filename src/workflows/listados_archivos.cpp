// The part of the lists that looks at single files: their sizes, and their end.
#include <stdexcept>
#include <utility>

#include "core/formato.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoSinSeleccion = 1935;

class Midiendo {
  public:
    explicit Midiendo(bool& marca) : marca_(marca) { marca_ = true; }
    ~Midiendo() { marca_ = false; }
    Midiendo(const Midiendo&) = delete;
    Midiendo& operator=(const Midiendo&) = delete;

  private:
    bool& marca_;
};

}  // namespace

bool Listados::EliminarArchivoServidor(std::string_view tipo, std::string_view nombre) {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.EliminarArchivo(flujos_.enVigor(), tipo, nombre);
    if (!core::esError(resultado)) {
        return true;
    }
    entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
    RefrescarVista();
    return false;
}

// Nothing on a failure, which is shown; a raised error goes up.
std::optional<std::int32_t> Listados::pedirTamano(std::string_view tipo, std::string_view nombre) {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.FileSize(flujos_.enVigor(), tipo, nombre);
    if (core::esError(resultado)) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::exclamacion, {}});
        return std::nullopt;
    }
    return service::leerTamano(resultado);
}

double Listados::TamanoArchivo(std::string_view tipo, std::string_view nombre) {
    try {
        return pedirTamano(tipo, nombre).value_or(-1);
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
        return -1;
    }
}

void Listados::TamanoSeleccion() {
    const auto tipo = VistaActual();
    if (tipo.empty()) {
        return;
    }
    double total = 0;
    const auto [desde, hasta] = flujos_.lista().seleccion();
    for (int fila = desde; fila <= hasta; ++fila) {
        const auto nombre = vista().fx1.celda(fila, columna_rejilla::nombre);
        if (core::Recortar(nombre).empty()) {
            entorno_.escritorio.Mensaje({texto(textoSinSeleccion), core::Icono::ninguno, {}});
            return;
        }
        const double bytes = TamanoArchivo(tipo, nombre);
        if (bytes < 0) {
            return;
        }
        total += bytes;
    }
    vista().Tamaño = flujos_.panel().enUnidad(total);
    vista().avisar(core::Parte::etiquetas);
}

bool Listados::faltanTamanos() const {
    return core::Recortar(vista().fx1.celda(1, columna_rejilla::ordenTamano)).empty();
}

void Listados::ActualizaTamanoFila() {
    medirFilas(false);
}

void Listados::retomarTamanos() {
    if (quedanTamanos()) {
        dejarDeMedir_ = false;
        flujos_.panel().entrada([this] { medirFilas(true); });
    }
}

void Listados::medirFilas(bool soloLasQueFaltan) {
    if (midiendo_) {
        return;
    }
    dejarDeMedir_ = false;
    if (!soloLasQueFaltan) {
        sinTamano_.clear();
    }
    if (vista().Option1 == core::Opcion::historico || vista().fx1.filas() < 2) {
        return;
    }
    const Midiendo midiendo(midiendo_);
    flujos_.panel().Barra(-1);
    bool todas = true;  // those that a failure kept away will not come by waiting
    try {
        todas = ponerTamanos(soloLasQueFaltan);
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    flujos_.panel().Barra(0);
    if (todas) {
        flujos_.lista().alConocerTamanos();
    }
}

// A size that cannot be read costs its own row; a line that is down would fail for all alike.
std::optional<std::int32_t> Listados::pedirTamanoDeFila(std::string_view tipo, const std::string& nombre) {
    try {
        return pedirTamano(tipo, nombre);
    } catch (const std::logic_error& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    } catch (const std::overflow_error& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    return std::nullopt;
}

// The row of a file: where it was, unless the rows were sorted meanwhile; 0 when it is gone.
int Listados::filaDe(const std::string& nombre, int cerca) const {
    const auto& rejilla = vista().fx1;
    if (rejilla.celda(cerca, columna_rejilla::nombre) == nombre) {
        return cerca;
    }
    for (int fila = 1; fila < rejilla.filas(); ++fila) {
        if (rejilla.celda(fila, columna_rejilla::nombre) == nombre) {
            return fila;
        }
    }
    return 0;
}

std::vector<std::string> Listados::nombresDeFilas() const {
    std::vector<std::string> nombres;
    for (int fila = 1; fila < vista().fx1.filas(); ++fila) {
        nombres.push_back(vista().fx1.celda(fila, columna_rejilla::nombre));
    }
    return nombres;
}

// False when it was left before its end.
bool Listados::ponerTamanos(bool soloLasQueFaltan) {
    auto& rejilla = vista().fx1;
    const auto tipo = VistaActual();
    const auto nombres = nombresDeFilas();
    double total = 0;
    vista().lbtotalocupado.clear();
    vista().avisar(core::Parte::etiquetas);
    // A stop of what went before is not one of the sizes; one of the sizes is not one of what went before.
    const bool yaDetenido = estado().gDetener;
    const int cuantos = static_cast<int>(nombres.size());
    for (int i = 1; i <= cuantos; ++i) {
        const auto& nombre = nombres[static_cast<std::size_t>(i - 1)];
        const int antes = filaDe(nombre, i);
        if (core::Recortar(nombre).empty() || antes == 0) {
            continue;
        }
        const auto& sabido = rejilla.celda(antes, columna_rejilla::ordenTamano);
        if (soloLasQueFaltan && (!sabido.empty() || sinTamano_.contains(nombre))) {
            total += core::Val(sabido);
            continue;
        }
        if (const auto bytes = pedirTamanoDeFila(tipo, nombre)) {
            const int fila = filaDe(nombre, i);
            rejilla.ponerCelda(fila, columna_rejilla::tamano, flujos_.panel().enUnidad(*bytes));
            rejilla.ponerCelda(fila, columna_rejilla::ordenTamano, std::to_string(*bytes));
            vista().avisarFila(fila);
            total += *bytes;
        } else {
            sinTamano_.insert(nombre);
        }
        flujos_.panel().Barra(i, cuantos);
        flujos_.panel().Turno();
        const bool detenido = !yaDetenido && std::exchange(estado().gDetener, false);
        if (detenido || dejarDeMedir_) {
            return false;
        }
    }
    vista().lbtotalocupado = flujos_.panel().enUnidad(total);
    vista().avisar(core::Parte::etiquetas);
    return true;
}

void Listados::Command1_Click() {
    flujos_.panel().entrada([&] { TamanoSeleccion(); });
}

}  // namespace tarvoline::workflows
