#include "consola/ordenes.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/barra.h"
#include "core/idioma.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/listados.h"

namespace tarvoline::consola {

namespace {

constexpr int textoClave = 310;
constexpr int textoNoCompletado = 1227;
constexpr int textoIdentificarse = 2241;

}  // namespace

Informe Ordenes::ejecutar() {
    using Metodo = void (Ordenes::*)(Informe&);
    static const std::map<std::string, Metodo, std::less<>> metodos = {
        {"listar", &Ordenes::listar},         {"historico", &Ordenes::historico},
        {"espacio", &Ordenes::espacio},       {"subir", &Ordenes::subir},
        {"pendientes", &Ordenes::pendientes}, {"restaurar", &Ordenes::restaurar},
        {"bajar", &Ordenes::bajar},           {"borrar", &Ordenes::borrar}};
    Informe informe;
    preparar();
    try {
        // The pending companies bring their own users.
        if (opciones_.orden == "pendientes" || identificar(informe)) {
            (this->*metodos.at(opciones_.orden))(informe);
        }
    } catch (const std::exception& error) {
        fallar(informe,
               informe.listas.empty() && informe.tablas.empty() ? salida::noArranca : salida::fallida,
               error.what());
    }
    return informe;
}

void Ordenes::preparar() {
    auto& estado = montaje_.estado();
    auto& entorno = montaje_.entorno();
    core::prepararTextos(entorno);
    core::ComprobarIdioma(entorno);
    estado.gProducto = opciones_.crm ? "VXCRM" : "VELDORIX";
    estado.gDatosDir = entorno.ajustes.leerCarpeta("DATOS_DIR", estado.gProducto);
    core::prepararServicio(entorno);
    estado.gModoGauge = core::modo_gauge::ventanaPrincipal;
    escritorio_.parar(estado);
    montaje_.vista().Option1 = vistaElegida();
}

core::Opcion Ordenes::vistaElegida() const {
    if (opciones_.tipo == "personales") {
        return core::Opcion::personal;
    }
    return opciones_.crm ? core::Opcion::vxcrm : core::Opcion::veldorix;
}

// Puts the user in force: the one named on the command line, a company's, or the active company's.
bool Ordenes::identificar(Informe& informe) {
    auto& estado = montaje_.estado();
    const auto& entorno = montaje_.entorno();
    if (!opciones_.usuario.empty()) {
        estado.gUsuarioSesion = opciones_.usuario;
        estado.gPasswordSesion = opciones_.clave;
    } else if (!opciones_.empresa.empty() && !entorno.carpetas.ArchivoExiste(opciones_.empresa)) {
        fallar(informe, salida::noEncontrado, estado.gErrores(188) + ": " + opciones_.empresa);
        return false;
    } else {
        estado.gDesatendido = true;  // no folder list is asked for while the company is read
        flujos_.configuracion().CargarConfiguracionEmpresa(opciones_.empresa);
        estado.gDesatendido = false;
        estado.gUsuarioSesion = estado.gUsuario;
        estado.gPasswordSesion = estado.gPassword;
        estado.gCuentaSesion = estado.gCuenta;
    }
    estado.gUsuario = estado.gUsuarioSesion;
    estado.gPassword = estado.gPasswordSesion;
    if (!opciones_.carpeta.empty()) {
        estado.gCarpeta = opciones_.carpeta;
    }
    if (estado.gCarpeta.empty()) {
        estado.gCarpeta = "DATOS";
    }
    // The folder in force is the one "chosen at the window": what a company brings along gives way to it.
    montaje_.vista().carpetas = {estado.gCarpeta};
    montaje_.vista().carpetaElegida = 0;
    if (!core::Recortar(estado.gUsuario).empty()) {
        return entrar(informe);
    }
    const bool cerrada = flujos_.configuracion().claveRechazada();
    fallar(informe, salida::sinUsuario,
           cerrada ? entorno.texto(textoClave) + " incorrecta" : entorno.texto(textoIdentificarse));
    return false;
}

bool Ordenes::entrar(Informe& informe) {
    auto& estado = montaje_.estado();
    const auto antes = escritorio_.fallos().size();
    if (!flujos_.listados().ValidarUsuario(estado.gUsuario, estado.gPassword)) {
        informe.codigo = salida::sinUsuario;
        fallarUno(informe, antes, estado.gUsuario);
        return false;
    }
    estado.gCuenta = core::Mayusculas(flujos_.listados().CodigoCuentaDeUsuario());
    estado.gCuentaSesion = estado.gCuenta;
    estado.gSesionValida = true;
    return true;
}

// The names alone: sizes are a call each, and a name that the grid cannot take apart is a name all the same.
bool Ordenes::mostrarLista(Informe& informe) {
    const auto antes = escritorio_.fallos().size();
    auto& estado = montaje_.estado();
    montaje_.vista().Option1 = vistaElegida();
    montaje_.vista().List1.clear();
    estado.gInicio = true;
    try {
        flujos_.listados().ListarArchivos(flujos_.listados().VistaActual());
    } catch (const core::ErrorIndice& error) {
        montaje_.entorno().registro.aviso(error.what());
    }
    estado.gInicio = false;
    if (escritorio_.fallos().size() == antes) {
        return true;
    }
    fallarUno(informe, antes, {});
    return false;
}

bool Ordenes::elegirFila(Informe& informe, const std::string& nombre) {
    const auto& guardados = montaje_.vista().List1;
    if (std::ranges::find(guardados, nombre) == guardados.end()) {
        fallar(informe, salida::noEncontrado, montaje_.estado().gErrores(188) + ": " + nombre);
        return false;
    }
    auto& rejilla = montaje_.vista().fx1;
    rejilla.vaciar();
    rejilla.ponerFilas(2);
    rejilla.ponerCelda(1, workflows::columna_rejilla::nombre, nombre);
    rejilla.Row = 1;
    rejilla.RowSel = 1;
    return true;
}

void Ordenes::paraCada(Informe& informe, const char* clave, const char* etiqueta,
                       const std::function<std::optional<std::string>(const std::string&)>& hacer) {
    informe.listas.push_back({clave, etiqueta, {}});
    for (const auto& nombre : opciones_.nombres) {
        if (escritorio_.parado()) {
            fallar(informe, salida::fallida, montaje_.entorno().texto(textoNoCompletado) + ": " + nombre);
            return;
        }
        auto& estado = montaje_.estado();
        estado.gDetener = false;
        estado.gInterrumpido = false;
        const int codigoAntes = std::exchange(informe.codigo, salida::bien);
        const auto antes = escritorio_.fallos().size();
        if (auto hecho = hacer(nombre)) {
            informe.listas.back().valores.push_back(std::move(*hecho));
        } else {
            fallarUno(informe, antes, nombre);
        }
        informe.codigo = informe.codigo == salida::bien ? codigoAntes : informe.codigo;
    }
}

void Ordenes::fallar(Informe& informe, int codigo, const std::string& motivo) {
    informe.codigo = codigo;
    escritorio_.Mensaje({motivo, core::Icono::exclamacion, {}});
    informe.motivo = escritorio_.fallos().back();
}

void Ordenes::fallarUno(Informe& informe, std::size_t antes, const std::string& nombre) {
    if (informe.codigo == salida::bien) {
        informe.codigo = salida::fallida;
    }
    if (escritorio_.fallos().size() == antes) {
        fallar(informe, informe.codigo, montaje_.entorno().texto(textoNoCompletado) + ": " + nombre);
    }
    informe.motivo = escritorio_.fallos().back();
}

}  // namespace tarvoline::consola
