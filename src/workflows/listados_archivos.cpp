// The part of the lists that looks at single files: their sizes, and their end.
#include <stdexcept>

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
    if (midiendo_ || vista().Option1 == core::Opcion::historico || vista().fx1.filas() < 2) {
        return;
    }
    const Midiendo midiendo(midiendo_);
    dejarDeMedir_ = false;
    flujos_.panel().Barra(-1);
    try {
        ponerTamanos();
    } catch (const std::exception& error) {
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, {}});
    }
    flujos_.panel().Barra(0);
    if (!dejarDeMedir_) {
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

void Listados::ponerTamanos() {
    auto& rejilla = vista().fx1;
    const auto tipo = VistaActual();
    std::vector<std::string> nombres;
    for (int fila = 1; fila < rejilla.filas(); ++fila) {
        nombres.push_back(rejilla.celda(fila, columna_rejilla::nombre));
    }
    double total = 0;
    vista().lbtotalocupado.clear();
    const int cuantos = static_cast<int>(nombres.size());
    for (int i = 1; i <= cuantos && !dejarDeMedir_; ++i) {
        const auto& nombre = nombres[static_cast<std::size_t>(i - 1)];
        if (core::Recortar(nombre).empty() || filaDe(nombre, i) == 0) {
            continue;
        }
        if (const auto bytes = pedirTamanoDeFila(tipo, nombre)) {
            const int fila = filaDe(nombre, i);
            rejilla.ponerCelda(fila, columna_rejilla::tamano, flujos_.panel().enUnidad(*bytes));
            rejilla.ponerCelda(fila, columna_rejilla::ordenTamano, std::to_string(*bytes));
            vista().avisarFila(fila);
            total += *bytes;
        }
        flujos_.panel().Barra(i, cuantos);
        flujos_.panel().Turno();
    }
    if (!dejarDeMedir_) {
        vista().lbtotalocupado = flujos_.panel().enUnidad(total);
    }
    vista().avisar(core::Parte::etiquetas);
}

void Listados::Command1_Click() {
    flujos_.panel().entrada([&] { TamanoSeleccion(); });
}

}  // namespace tarvoline::workflows
