// The buttons of the main window: gates, command, and what follows each.
#include "core/despliegue.h"
#include "core/texto.h"
#include "workflows/descargas.h"
#include "workflows/espacio.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/pendientes.h"
#include "workflows/personales.h"
#include "workflows/restauracion.h"
#include "workflows/sesion.h"
#include "workflows/subida_empresa.h"
#include "workflows/temporales.h"
#include "workflows/ventana_principal.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoTerminosPendientes = 2240;
constexpr int textoIdentificarse = 2241;
constexpr int textoCapacidadSuperada = 2249;
constexpr int textoAmpliar = 2233;
constexpr int textoNoCompletado = 1227;
constexpr int textoNoEnHistorico = 269;
constexpr int textoTemporalVaciado = 2250;

constexpr int panelSubida = 1;
constexpr int panelBajada = 2;
constexpr int panelNinguno = 99;
constexpr int fraseDetenido = 9;

bool esSubida(int numero) {
    return numero == boton::subirPersonal || numero == boton::subirEmpresa ||
           numero == boton::subirPendientes;
}

bool entraSinSesion(int numero) {
    return numero == boton::online || numero == boton::nuevoUsuario || numero == boton::cambiarUsuario;
}

}  // namespace

void VentanaPrincipal::ButtonClick(int numero, int argumento) {
    if (numero == boton::detener) {
        estado().gDetener = true;
        return;
    }
    if (vista().ocupada) {
        return;
    }
    estado().gDetener = false;
    estado().gInterrumpido = false;
    if (pasaPuertas(numero) && ejecutarOrden(numero, argumento)) {
        trasOrden(numero);
    }
}

bool VentanaPrincipal::pasaPuertas(int numero) {
    if (estado().gTerminosPendientes == 1 && numero != boton::terminos) {
        avisar(texto(textoTerminosPendientes), core::Icono::informacion);
        estado().gDetener = true;
        return false;
    }
    if (!estado().gSesionValida && !entraSinSesion(numero)) {
        avisar(texto(textoIdentificarse), core::Icono::informacion);
        estado().gDetener = true;
        return false;
    }
    if (estado().gCapacidadExcedida && esSubida(numero)) {
        avisar(texto(textoCapacidadSuperada) + " " + texto(textoAmpliar) + " " +
                   std::string(core::despliegue::telefonoSoporte),
               core::Icono::parada);
        return false;
    }
    return true;
}

// False for a command that ends without the step behind it.
bool VentanaPrincipal::ejecutarOrden(int numero, int argumento) {
    auto& panel = flujos_.panel();
    switch (numero) {
        case boton::cambiarUsuario:
            panel.entrada([this] { flujos_.sesion().CambiarUsuario(); });
            return true;
        case boton::subirPendientes:
            flujos_.pendientes().SubirPendientes_Click();
            return true;
        case boton::subirEmpresa:
            panel.Adaptar_imagenes(panelSubida);
            flujos_.subidaEmpresa().SubirEmpresa_Click();
            return true;
        case boton::subirPersonal:
            panel.Adaptar_imagenes(panelSubida);
            flujos_.personales().Subir_Click();
            panel.Adaptar_imagenes(panelNinguno);
            return true;
        case boton::configuracion:
            configurar();
            return false;
        case boton::restaurar:
            if (!confirmarRestauracion()) {
                return false;
            }
            flujos_.restauracion().Restaurar_Click();
            return true;
        case boton::descargar:
            panel.Adaptar_imagenes(panelBajada);
            flujos_.descargas().Descargar_Click();
            return true;
        case boton::eliminar:
            if (vista().Option1 == core::Opcion::historico) {
                entorno_.escritorio.Mensaje({texto(textoNoEnHistorico), core::Icono::ninguno, ""});
                return false;
            }
            eliminarSeleccion();
            return true;
        case boton::vaciarTemporal:
            if (panel.entrada([this] { flujos_.temporales().Elimina_Temporal(); })) {
                entorno_.escritorio.Mensaje({texto(textoTemporalVaciado), core::Icono::ninguno, ""});
            }
            return true;
        case boton::calcularEspacio:
            flujos_.listados().Command1_Click();
            if (argumento == 1) {
                CalcularEspacio_Click();
            }
            return true;
        default:
            mostrandoErrores([&] { ejecutarPagina(numero); });
            return true;
    }
}

// The commands that lead out of the program.
void VentanaPrincipal::ejecutarPagina(int numero) {
    const std::string sitio(core::despliegue::sitioFabricante);
    switch (numero) {
        case boton::nuevoUsuario:
        case boton::online:
            entorno_.escritorio.Abrir(sitio);
            break;
        case boton::asistenciaRemota:
            entorno_.escritorio.Abrir("\"" + entorno_.carpetas.DirectorioPrograma() + "SoporteVX.exe\"");
            break;
        case boton::soporte:
            pedirSoporte();
            break;
        case boton::calidad:
            SolicitudAsistencia("99", "Tarvoline ", "", "", "", estado().gCuenta, "");
            break;
        case boton::terminos:
            Label6_Click();
            break;
        case boton::manual:
            entorno_.escritorio.Abrir(sitio + std::string(core::despliegue::paginaManual));
            break;
        default:
            break;
    }
}

void VentanaPrincipal::trasOrden(int numero) {
    auto& panel = flujos_.panel();
    if (estado().gDetener) {
        estado().gTextosHistorico[fraseDetenido] = texto(textoNoCompletado);
        entorno_.escritorio.Mensaje({texto(textoNoCompletado), core::Icono::parada, ""});
        estado().gInterrumpido = true;
    }
    estado().gDetener = false;
    panel.Barra(0);
    panel.Adaptar_imagenes(panelNinguno);
    if (estado().gInterrumpido) {
        estado().gInterrumpido = false;
        return;
    }
    panel.entrada([&] { flujos_.espacio().Controlar_capacidad(!esSubida(numero)); });
    ponerBarra();
    panel.Adaptar_imagenes(panelNinguno);
}

void VentanaPrincipal::Picture2_Click(Imagen imagen) {
    if (vista().ocupada) {
        return;
    }
    switch (imagen) {
        case Imagen::cambiarUsuario:
            flujos_.panel().entrada([this] { flujos_.sesion().CambiarUsuario(); });
            break;
        case Imagen::subirPendientes:
            flujos_.pendientes().SubirPendientes_Click();
            break;
        case Imagen::subirEmpresa:
            flujos_.subidaEmpresa().SubirEmpresa_Click();
            break;
        case Imagen::subirPersonal:
            flujos_.personales().Subir_Click();
            break;
        case Imagen::calcularEspacio:
            CalcularEspacio_Click();
            break;
        case Imagen::restaurar:
            flujos_.restauracion().Restaurar_Click();
            break;
        case Imagen::descargar:
            flujos_.descargas().Descargar_Click();
            break;
        case Imagen::espacioSeleccion:
            flujos_.listados().Command1_Click();
            break;
        case Imagen::eliminar:
            flujos_.lista().Eliminar_Click();
            break;
    }
}

void VentanaPrincipal::elegirVista(int entrada) {
    if (entrada >= 0 && entrada < static_cast<int>(core::opcionDeVista.size())) {
        flujos_.listados().elegirVista(core::opcionDeVista[static_cast<std::size_t>(entrada)]);
    }
}

void VentanaPrincipal::Imgcapacidad_Click() {
    flujos_.espacio().Imgcapacidad_Click();
}

void VentanaPrincipal::Label4_Click() {
    if (vista().ocupada) {
        return;
    }
    entorno_.escritorio.Abrir(std::string(core::despliegue::sitioFabricante) +
                              std::string(core::despliegue::paginaOnline));
}

void VentanaPrincipal::Label6_Click() {
    if (vista().ocupada) {
        return;
    }
    mostrarTerminos();
    revisarTerminos();
    activar();
}

}  // namespace tarvoline::workflows
