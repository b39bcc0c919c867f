#include "workflows/panel.h"

#include "core/barra.h"
#include "core/carpetas.h"
#include "core/formato.h"

namespace tarvoline::workflows {

namespace {

constexpr int sinPanel = 99;

// The busy flag goes down on every way out, the end of the program included.
class Ocupacion {
  public:
    explicit Ocupacion(core::Vista& vista) : vista_(vista) { vista_.ocupada = true; }
    ~Ocupacion() { vista_.ocupada = false; }
    Ocupacion(const Ocupacion&) = delete;
    Ocupacion& operator=(const Ocupacion&) = delete;

  private:
    core::Vista& vista_;
};

}  // namespace

void Panel::Desabilitar_Formulario(bool estado) {
    vista().bloqueada = !estado;
    vista().avisar(core::Parte::bloqueo);
}

void Panel::Adaptar_imagenes(int modo) {
    estado().gEnReposo = modo == sinPanel;
    vista().panel = modo;
    if (modo == sinPanel) {
        limpiarProgreso();
    }
    vista().avisar(core::Parte::panel);
}

void Panel::MostrarProgreso(std::string_view nombre, std::int64_t total, std::int64_t actual) {
    vista().NombreArchivo = core::SoloNombre(nombre);
    vista().Progreso = core::formatoEntero(actual) + " / " + core::formatoEntero(total);
    vista().Tamaño = enUnidad(static_cast<double>(total));
    vista().avisar(core::Parte::etiquetas);
}

void Panel::MostrarEmpaquetado(std::string_view nombre) {
    vista().NombreArchivo = core::SoloNombre(nombre);
    vista().Progreso = "Zip";
    vista().avisar(core::Parte::etiquetas);
}

void Panel::limpiarProgreso() {
    vista().NombreArchivo.clear();
    vista().Progreso.clear();
    vista().avisar(core::Parte::etiquetas);
}

void Panel::Barra(double valor, double total) {
    core::Barra(estado(), vista(), valor, total);
}

void Panel::Traza(std::string_view marca) {
    if (estado().gModoComprobacion) {
        entorno_.escritorio.Mensaje({std::string(marca), core::Icono::ninguno, {}});
    }
}

std::string Panel::enUnidad(double bytes) const {
    const int unidad = estado().gUnidadTamano;
    const auto& nombres = estado().gUnidades;
    const bool conocida = unidad >= 0 && unidad < static_cast<int>(nombres.size());
    return core::formatoImporte(core::ConvertirUnidad(bytes, 0, unidad)) + " " +
           (conocida ? nombres[static_cast<std::size_t>(unidad)] : std::string());
}

bool Panel::entrada(const std::function<void()>& accion) {
    if (vista().ocupada || estado().gRefrescando) {
        return false;
    }
    const Ocupacion ocupacion(vista());
    estado().gDetener = false;
    estado().gInterrumpido = false;
    try {
        accion();
    } catch (const std::exception& error) {
        estado().gInterrumpido = true;
        restaurar();
        entorno_.registro.error(error.what());
        entorno_.escritorio.Mensaje({error.what(), core::Icono::exclamacion, std::string(tituloPrograma)});
        return false;
    }
    restaurar();
    return true;
}

void Panel::restaurar() {
    entorno_.escritorio.Puntero(false);
    Desabilitar_Formulario(true);
    Barra(0);
    Adaptar_imagenes(sinPanel);
}

}  // namespace tarvoline::workflows
