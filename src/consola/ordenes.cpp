#include "consola/ordenes.h"

#include <map>

#include "core/barra.h"
#include "core/idioma.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/lista.h"
#include "workflows/listados.h"

namespace tarvoline::consola {

namespace {

constexpr int columnaNombre = 2;

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
    // The pending companies bring their own users.
    if (opciones_.orden == "pendientes" || identificar(informe)) {
        (this->*metodos.at(opciones_.orden))(informe);
    }
    return informe;
}

void Ordenes::preparar() {
    auto& estado = montaje_.estado();
    auto& entorno = montaje_.entorno();
    core::prepararTextos(entorno);
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
    if (!opciones_.usuario.empty()) {
        estado.gUsuarioSesion = opciones_.usuario;
        estado.gPasswordSesion = opciones_.clave;
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
    if (core::Recortar(estado.gUsuario).empty()) {
        fallar(informe, salida::sinUsuario, montaje_.entorno().texto(2241));
        return false;
    }
    return entrar(informe);
}

bool Ordenes::entrar(Informe& informe) {
    auto& estado = montaje_.estado();
    if (!flujos_.listados().ValidarUsuario(estado.gUsuario, estado.gPassword)) {
        fallar(informe, salida::sinUsuario, ultimoFallo());
        return false;
    }
    estado.gCuenta = core::Mayusculas(flujos_.listados().CodigoCuentaDeUsuario());
    estado.gCuentaSesion = estado.gCuenta;
    estado.gSesionValida = true;
    return true;
}

bool Ordenes::mostrarLista(Informe& informe) {
    const auto antes = escritorio_.fallos().size();
    montaje_.vista().Option1 = vistaElegida();
    flujos_.listados().ListarArchivos(flujos_.listados().VistaActual());
    if (escritorio_.fallos().size() == antes) {
        return true;
    }
    fallar(informe, salida::fallida, ultimoFallo());
    return false;
}

bool Ordenes::elegirFila(const std::string& nombre) {
    auto& rejilla = montaje_.vista().fx1;
    for (int fila = 1; fila < rejilla.filas(); ++fila) {
        if (rejilla.celda(fila, columnaNombre) == nombre) {
            rejilla.Row = fila;
            rejilla.RowSel = fila;
            return true;
        }
    }
    return false;
}

void Ordenes::fallar(Informe& informe, int codigo, std::string motivo) const {
    informe.codigo = codigo;
    informe.motivo = std::move(motivo);
}

std::string Ordenes::ultimoFallo() const {
    return escritorio_.fallos().empty() ? std::string() : escritorio_.fallos().back();
}

}  // namespace tarvoline::consola
