// What the commands of the main window do that is theirs alone: the guarded settings, the deletion, the
// request for support.
#include "core/barra.h"
#include "core/despliegue.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/cabecera_empresa.h"
#include "data/utilidades.h"
#include "workflows/espacio.h"
#include "workflows/formulario_configuracion.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoClave = 310;
constexpr int turnosTrasVentana = 4;

}  // namespace

// The password of the active company's head guards its settings; the window then has a company of its own.
void VentanaPrincipal::configurar() {
    if (!claveDeConfiguracionCorrecta()) {
        return;
    }
    FormularioConfiguracion formulario(flujos_);
    if (!mostrandoErrores([&] {
            formulario.DatosIniciales();
            ventanas_.frmconfig(formulario);
        })) {
        return;
    }
    for (int turno = 0; turno < turnosTrasVentana; ++turno) {
        entorno_.escritorio.Turno();
    }
    activar();
}

bool VentanaPrincipal::claveDeConfiguracionCorrecta() {
    std::string guardada;
    const auto leer = [&](platform::Archivo& archivo) {
        const auto cabecera = data::CabeceraEmpresa::leer(archivo);
        estado().gClavesConfig[2] = cabecera.ansi(data::cabecera::PASSWORD2).bytes();
        guardada = data::DesenmascararClave(cabecera.ansi(data::cabecera::PASSWORD2));
    };
    try {
        data::exigirEmpresa(flujos_.enlaces().datos(), entorno_.almacen.Leer("ACTIVE"), leer);
    } catch (const std::exception& error) {
        entorno_.registro.aviso(std::string("password of the active company: ") + error.what());
        const auto* deArchivo = dynamic_cast<const platform::ErrorArchivo*>(&error);
        if (deArchivo != nullptr && deArchivo->numero() == platform::error_archivo::permisoDenegado) {
            avisar(error.what(), core::Icono::exclamacion);  // a company in use is not one without password
            return false;
        }
    }
    if (guardada.empty()) {
        return true;
    }
    const auto escrita = entorno_.almacen.Pedir(texto(textoClave)).value_or("");
    if (escrita.empty()) {
        estado().gModoGauge = core::modo_gauge::sinDuenio;
        return false;
    }
    if (escrita != guardada) {
        entorno_.escritorio.Mensaje({texto(textoClave) + " incorrecta", core::Icono::parada, ""});
        return false;
    }
    return true;
}

bool VentanaPrincipal::confirmarRestauracion() {
    constexpr int textoSeRestaura = 1112;
    constexpr int textoSeguro = 243;
    constexpr int textoDestino = 616;
    return entorno_.escritorio.Preguntar({texto(textoSeRestaura) + "\n" + texto(textoSeguro) + "\n\n" +
                                              texto(textoDestino) + ": " + estado().gDatosDir,
                                          core::Icono::informacion, "QzTarvoline"},
                                         false);
}

void VentanaPrincipal::eliminarSeleccion() {
    estado().gBorrandoSeleccion = true;
    flujos_.lista().Eliminar_Click();
    // How it ended is told behind the command; measuring anew does not change it.
    const bool detenido = estado().gDetener;
    const bool interrumpido = estado().gInterrumpido;
    flujos_.panel().entrada([this] {
        flujos_.espacio().Controlar_capacidad(false);
        if (flujos_.listados().faltanTamanos()) {
            flujos_.listados().ActualizaTamanoFila();
        }
    });
    estado().gDetener = estado().gDetener || detenido;
    estado().gInterrumpido = estado().gInterrumpido || interrumpido;
    estado().gBorrandoSeleccion = false;
}

void VentanaPrincipal::pedirSoporte() {
    SolicitudAsistencia("AN", "", "", "", "", estado().gCuentaSesion,
                        "\n\n" + std::string(26, '=') + "\nQzTarvoline " + vista().rotulos.versionlb +
                            "\n\nDatos Usuario\n" + vista().titulo);
}

// The person sees what is asked for, and sends it by mail or not.
void VentanaPrincipal::SolicitudAsistencia(std::string_view codigo, std::string_view asunto,
                                           std::string_view texto1, std::string_view texto2,
                                           std::string_view texto3, std::string_view cuenta,
                                           std::string_view texto) {
    std::string cuerpo;
    for (const auto parte : {texto1, texto2, texto3, cuenta, texto}) {
        cuerpo += parte.empty() ? std::string() : std::string(parte) + "\n";
    }
    const auto cabecera = core::Recortar(std::string(codigo) + " " + std::string(asunto));
    const std::string correo(core::despliegue::correoSoporte);
    if (entorno_.escritorio.Confirmar({correo + "\n" + cabecera + "\n" + cuerpo, core::Icono::informacion,
                                       std::string(tituloPrograma)})) {
        entorno_.escritorio.Abrir("mailto:" + correo + "?subject=" + core::codificarUrl(cabecera) +
                                  "&body=" + core::codificarUrl(core::Sustituir(cuerpo, "\n", "\r\n")));
    }
}

}  // namespace tarvoline::workflows
