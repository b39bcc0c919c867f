#include "core/inicio.h"

#include <array>

#include "core/barra.h"
#include "core/despliegue.h"
#include "core/estado_ejecucion.h"
#include "core/texto.h"
#include "platform/reloj.h"

namespace tarvoline::core {

namespace {

constexpr std::string_view veldorix = "VELDORIX";
constexpr std::string_view vxcrm = "VXCRM";
constexpr std::string_view seccionServicio = "NETBACKUP";

// The record of an interrupted upload, in the order in which it is cleared.
constexpr std::array<std::string_view, 7> clavesSubida = {"Active",   "Offset",         "Carpeta", "User",
                                                          "Password", "CarpetaDestino", "Cuenta"};

void ponerFrases(Estado& estado) {
    estado.gTextosHistorico[haSubidoEmpresa] = " ha subido la empresa ";
    estado.gTextosHistorico[haBajadoEmpresa] = " ha bajado la empresa ";
    estado.gTextosHistorico[haSubidoArchivo] = " ha subido el archivo ";
    estado.gTextosHistorico[haBajadoArchivo] = " ha bajado el archivo ";
    estado.gTextosHistorico[haBorradoArchivo] = " ha borrado el archivo ";
}

}  // namespace

bool esCaminoInteractivo(std::string_view ordenes) {
    return ordenes.empty() || ordenes == "2" || ordenes == "22";
}

std::string productoDeOrdenes(std::string_view ordenes) {
    const bool crm = Mayusculas(ordenes) == "Y" || Val(ordenes) == 22;
    return std::string(crm ? vxcrm : veldorix);
}

std::string elegirUrlServicio(Entorno& entorno) {
    const auto ip = entorno.almacen.Leer("IP", seccionServicio, "", entorno.estado.gProducto);
    if (ip.empty()) {
        return "https://" + std::string(despliegue::hostServicioPublico) + "/qzback/service.asmx?wsdl";
    }
    if (Mayusculas(ip).find("LOCALHOST") == std::string::npos) {
        return "http://" + ip + "/qzback/service.asmx?wsdl";
    }
    return "http://" + entorno.almacen.Leer("IP", "qzback") + "/qzbackup/service.asmx?wsdl";
}

int Inicio::Main(std::string_view ordenes) {
    const auto inicio = entorno_.reloj.ahora();
    int codigo = salida::noArranca;
    try {
        preparar(ordenes);
        codigo = tomarCamino(ordenes);
    } catch (const FinDePrograma& fin) {
        codigo = fin.codigo;
    } catch (const std::exception& error) {
        motivo_ = error.what();
        entorno_.escritorio.Mensaje({motivo_, Icono::parada, "Tarvoline"});
    }
    // The instance that is running owns the status file.
    if (!esCaminoInteractivo(ordenes) && codigo != salida::otraInstancia) {
        grabarEstado(inicio, codigo);
    }
    return codigo;
}

void prepararTextos(Entorno& entorno) {
    auto& estado = entorno.estado;
    for (const auto& linea : entorno.ajustes.arbol().lineasOmitidas()) {
        entorno.registro.aviso("settings not understood, " + linea);
    }
    estado.gDecimalesMoneda = platform::digitosMonedaLocal().value_or(0);
    estado.gDirectorio = entorno.carpetas.DirectorioPrograma();
    estado.gEnReposo = true;
    ponerFrases(estado);
    CargarIdioma(entorno, nombreIdioma(entorno));
    estado.gRefrescando = false;
    estado.gModoGauge = modo_gauge::ninguno;
}

void prepararServicio(Entorno& entorno) {
    auto& estado = entorno.estado;
    estado.gUnidadTamano = ValEntero(entorno.almacen.Leer("Visualiza datos en", "BACKUP", "2"));
    estado.gCarpeta = "DATOS";
    estado.gUrlServicio = elegirUrlServicio(entorno);
}

void Inicio::preparar(std::string_view ordenes) {
    auto& estado = entorno_.estado;
    prepararTextos(entorno_);
    elegirProducto(ordenes);
    estado.gDatosDir = entorno_.ajustes.leerCarpeta("DATOS_DIR", estado.gProducto);
    // Another instance may be packing or sending what would be deleted.
    if (!instancia_.hayOtra()) {
        ignorandoErrores(entorno_, "LimpiarZipsTemporales", [&] { caminos_.LimpiarZipsTemporales(); });
    }
    estado.gInicio = true;
    prepararServicio(entorno_);
}

// An empty command line says nothing of the product, so an upload that only VXCRM has interrupted makes it
// the product, with its data directory and its service.
void Inicio::elegirProducto(std::string_view ordenes) {
    auto producto = productoDeOrdenes(ordenes);
    if (ordenes.empty() && subidaInterrumpida(veldorix).empty() && !subidaInterrumpida(vxcrm).empty()) {
        producto = vxcrm;
    }
    entorno_.estado.gProducto = producto;
}

int Inicio::tomarCamino(std::string_view ordenes) {
    return esCaminoInteractivo(ordenes) ? caminoInteractivo(ordenes) : caminoDesatendido();
}

std::string Inicio::subidaInterrumpida(std::string_view producto) const {
    return entorno_.almacen.Leer("Active", seccionServicio, "", producto);
}

int Inicio::caminoInteractivo(std::string_view ordenes) {
    // Without a person the resume question would answer itself with No, which drops the upload.
    if (!entorno_.escritorio.hayPersona()) {
        throw std::runtime_error(
            "there is no window to show here; a command line other than \"\", \"2\" and \"22\" runs "
            "unattended");
    }
    if (ordenes.empty() && !subidaInterrumpida(entorno_.estado.gProducto).empty() && !reanudarConPregunta()) {
        return salida::bien;
    }
    prepararVentana();
    entorno_.estado.gEnReposo = false;
    const bool mostrada = ignorandoErrores(entorno_, "MostrarVentana", [&] { caminos_.MostrarVentana(); });
    return mostrada ? salida::bien : salida::noArranca;
}

// False when the run ends here: the user said No, or the upload was interrupted again.
bool Inicio::reanudarConPregunta() {
    ComprobarIdioma(entorno_);  // the window's load step comes too late for this question
    const auto pregunta = entorno_.texto(2257) + "\n" + entorno_.texto(980);
    if (!entorno_.escritorio.Preguntar({pregunta, Icono::pregunta, ""}, false)) {
        olvidarSubida();
        return false;
    }
    const auto mensaje = caminos_.ContinuarSubida();
    if (entorno_.estado.gInterrumpido) {
        caminos_.Reiniciar("2");
        return false;
    }
    if (!mensaje.empty()) {
        entorno_.escritorio.Mensaje({mensaje, Icono::ninguno, ""});
    }
    return true;
}

void Inicio::olvidarSubida() {
    for (const auto clave : clavesSubida) {
        entorno_.almacen.Grabar(clave, "", seccionServicio, entorno_.estado.gProducto);
    }
    caminos_.QuitarAccesoInicio();
}

void Inicio::prepararVentana() {
    auto& vista = entorno_.vista;
    caminos_.CrearVentana();
    entorno_.estado.gInicio = true;
    caminos_.CargarConfiguracionEmpresa("");
    caminos_.PrepararGrid();
    vista.titulo = "Gestor de Copias. Usuario: " + entorno_.estado.gUsuario;
    vista.avisar(Parte::titulo);
    vista.Option1 = entorno_.estado.gProducto == vxcrm ? Opcion::vxcrm : Opcion::veldorix;
    vista.avisar(Parte::opcion);
}

int Inicio::caminoDesatendido() {
    if (!instancia_.soyLaUnica()) {
        return salida::otraInstancia;
    }
    entorno_.estado.gDesatendido = true;  // before the first call that might ask something
    ComprobarIdioma(entorno_);
    const bool reanudada = reanudarSinPregunta();
    const bool enviadas = subirPendientes();
    return reanudada && enviadas ? salida::bien : salida::empresaFallida;
}

bool Inicio::subirPendientes() {
    try {
        return caminos_.SubirPendientesBatch(false);
    } catch (const std::exception& error) {
        motivo_ = error.what();
        entorno_.registro.error("SubirPendientesBatch: " + motivo_);
        return false;
    }
}

// True when there was nothing to go on with, or it was sent. Whatever happens, the pending companies come
// next.
bool Inicio::reanudarSinPregunta() {
    const auto activa = subidaInterrumpida(entorno_.estado.gProducto);
    if (activa.empty()) {
        return true;
    }
    std::string texto;
    const bool terminada =
        ignorandoErrores(entorno_, "ContinuarSubida", [&] { texto = caminos_.ContinuarSubida(); });
    const bool enviada = terminada && !entorno_.estado.gInterrumpido && !esError(texto) && texto != "NO";
    entorno_.estado.resumen.reanudacion = {activa, enviada, texto};
    return enviada;
}

void Inicio::grabarEstado(std::chrono::system_clock::time_point inicio, int codigo) {
    const EstadoEjecucion ejecucion{inicio, entorno_.reloj.ahora(), codigo, motivo_, entorno_.estado.resumen};
    ignorandoErrores(entorno_, "status file",
                     [&] { escribirEstadoEjecucion(entorno_.archivos, rutaEstado_, ejecucion); });
}

}  // namespace tarvoline::core
