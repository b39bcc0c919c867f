#include "tarvoline/contexto.h"

#include "link/contexto_interior.h"
#include "platform/carpetas_sistema.h"
#include "platform/modulo.h"

namespace tarvoline::link {

namespace {

constexpr const char* archivoAjustes = "/QZ/ajustes.ini";

// The folder beside which share/tarvoline lies: that from which this code was loaded, or the nearest above
// it, as libraries and modules lie in folders below lib/. The caller's own program tells nothing of it.
std::string carpetaParaPrograma(platform::SistemaArchivos& archivos) {
    std::string suya = platform::carpetaDelModulo();
    std::string carpeta = suya;
    while (!carpeta.empty()) {
        const std::string arriba = core::SepararRuta(carpeta).directorio;
        if (arriba.size() <= 1) break;
        if (platform::existe(archivos, arriba + "share/tarvoline")) return carpeta;
        carpeta = arriba.substr(0, arriba.size() - 1);
    }
    return suya;
}

}  // namespace

PropiosDelSistema::PropiosDelSistema()
    : archivos(platform::crearSistemaArchivos()),
      reloj(platform::crearReloj()),
      arbol(platform::crearArbolAjustes(*archivos, platform::carpetaConfiguracion() + archivoAjustes)),
      arbolMaquina(
          platform::crearArbolMaquina(*archivos, platform::carpetaConfiguracionMaquina() + archivoAjustes)),
      ajustes(*arbol, arbolMaquina.get()),
      carpetas(*archivos, ajustes, platform::carpetaTemporal(), carpetaParaPrograma(*archivos)) {}

Contexto::Interior::Interior(platform::SistemaArchivos& archivos, core::Ajustes& ajustes,
                             core::Carpetas& carpetas, platform::Reloj& reloj)
    : datos{archivos, ajustes, carpetas, reloj} {
    datos.gDecimalesMoneda = platform::digitosMonedaLocal().value_or(datos.gDecimalesMoneda);
}

data::Tablas& Contexto::Interior::tablas() {
    if (!tablas_) {
        tablas_.emplace(datos);
        totales_.emplace(datos, *tablas_);
    }
    return *tablas_;
}

data::Totales& Contexto::Interior::totales() {
    tablas();
    return *totales_;
}

void Contexto::Interior::cerrarTablas() {
    if (tablas_) tablas_->CerrarTodo();
}

Contexto::Contexto() {
    auto propios = std::make_unique<PropiosDelSistema>();
    interior_ =
        std::make_unique<Interior>(*propios->archivos, propios->ajustes, propios->carpetas, *propios->reloj);
    interior_->propios = std::move(propios);
}

Contexto::Contexto(platform::SistemaArchivos& archivos, core::Ajustes& ajustes, core::Carpetas& carpetas,
                   platform::Reloj& reloj)
    : interior_(std::make_unique<Interior>(archivos, ajustes, carpetas, reloj)) {}

Contexto::~Contexto() = default;

data::CapaDatos& Contexto::datos() {
    return interior_->datos;
}

void Contexto::alMostrar(std::function<void(const std::string& titulo, const std::string& texto)> mostrar) {
    interior_->datos.alMostrar = [mostrar = std::move(mostrar)](const core::Caja& caja) {
        mostrar(caja.titulo, caja.texto);
    };
}

void Contexto::alAvisar(std::function<void(const std::string& texto)> avisar) {
    interior_->datos.alAvisar = [avisar = std::move(avisar)](std::string_view texto) {
        avisar(std::string(texto));
    };
}

}  // namespace tarvoline::link
