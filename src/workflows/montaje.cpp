#include "workflows/montaje.h"

#include <stdexcept>

#include "core/registro_spdlog.h"
#include "data/capa_datos.h"
#include "platform/carpetas_sistema.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/pendientes.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr std::string_view archivoAjustes = "/QZ/ajustes.ini";

std::unique_ptr<platform::MarcaInstancia> marcarInstancia(platform::SistemaArchivos& archivos) {
    const auto carpeta = core::carpetaRegistro();
    archivos.crearDirectorios(carpeta, 0700);
    return platform::crearMarcaInstancia(archivos, carpeta + "/instancia");
}

}  // namespace

Montaje::Montaje(core::Escritorio& escritorio, core::Registro& registro)
    : archivos_(platform::crearSistemaArchivos()),
      reloj_(platform::crearReloj()),
      arbol_(platform::crearArbolAjustes(*archivos_,
                                         platform::carpetaConfiguracion() + std::string(archivoAjustes))),
      arbolMaquina_(platform::crearArbolMaquina(
          *archivos_, platform::carpetaConfiguracionMaquina() + std::string(archivoAjustes))),
      ajustes_(*arbol_, arbolMaquina_.get()),
      almacen_(ajustes_, escritorio),
      carpetas_(*archivos_, ajustes_, platform::carpetaTemporal()),
      entorno_{estado_, vista_, escritorio, ajustes_, almacen_, carpetas_, *archivos_, *reloj_, registro},
      enlaces_(*archivos_, ajustes_, carpetas_, *reloj_),
      flujos_(entorno_, conexion_, enlaces_) {
    enlaces_.datos().alAvisar = [&registro](std::string_view texto) { registro.aviso(texto); };
    conexion_.alLatir = [&escritorio] { escritorio.Latido(); };
    enlaces_.datos().alMostrar = [&escritorio](const core::Caja& caja) { escritorio.Mensaje(caja); };
}

platform::MarcaInstancia& Montaje::instancia() {
    if (!instancia_) {
        instancia_ = marcarInstancia(*archivos_);
    }
    return *instancia_;
}

std::string CaminosFlujos::ContinuarSubida() {
    return montaje_.flujos().transferencia().ContinuarSubida();
}

bool CaminosFlujos::SubirPendientesBatch(bool mostrar) {
    return montaje_.flujos().pendientes().SubirPendientesBatch(mostrar);
}

void CaminosFlujos::CargarConfiguracionEmpresa(std::string_view ruta) {
    montaje_.flujos().configuracion().CargarConfiguracionEmpresa(ruta);
}

void CaminosFlujos::PrepararGrid() {
    montaje_.flujos().lista().PrepararGrid();
}

void CaminosFlujos::QuitarAccesoInicio() {
    montaje_.flujos().transferencia().QuitarAccesoInicio();
}

void CaminosFlujos::CrearVentana() {
    throw std::runtime_error("este programa se ha construido sin su ventana");
}

void CaminosFlujos::MostrarVentana() {
    CrearVentana();
}

void CaminosFlujos::Reiniciar(std::string_view ordenes) {
    const auto programa = montaje_.entorno().carpetas.rutaPrograma();
    if (!platform::arrancarPrograma(programa, {std::string(ordenes)})) {
        montaje_.entorno().registro.error("cannot be started again: " + programa);
    }
}

void CaminosFlujos::LimpiarZipsTemporales() {
    montaje_.flujos().temporales().LimpiarZipsTemporales(montaje_.instancia().hayOtra());
}

}  // namespace tarvoline::workflows
