// Who calls, what he may, and the table of operations; the operations on files are in
// operaciones_archivos.cpp.
#include "server/operaciones.h"

#include <algorithm>
#include <thread>

#include "core/texto.h"
#include "server/llamada.h"
#include "server/textos.h"

namespace tarvoline::server {

struct Operaciones::Entrada {
    Metodo metodo;
    bool conCredencial = true;  // the first two arguments are user and credential
};

const std::map<std::string_view, Operaciones::Entrada>& Operaciones::tabla() {
    static const std::map<std::string_view, Entrada> entradas{
        {"DTS", {&Operaciones::DTS, false}},
        {"ActualizaNserie", {&Operaciones::ActualizaNserie, false}},
        {"CarpetasNserie", {&Operaciones::CarpetasNserie, false}},
        {"DatosUsuario", {&Operaciones::DatosUsuario}},
        {"Carpetaraizusuario", {&Operaciones::Carpetaraizusuario}},
        {"listadocarpetas", {&Operaciones::listadocarpetas}},
        {"ListadoArchivos", {&Operaciones::ListadoArchivos}},
        {"FileSize", {&Operaciones::FileSize}},
        {"Backup", {&Operaciones::Backup}},
        {"Restore", {&Operaciones::Restore}},
        {"EliminarArchivo", {&Operaciones::EliminarArchivo}},
        {"CalcularEspacioTotal", {&Operaciones::CalcularEspacioTotal}},
        {"GrabarHistorico", {&Operaciones::GrabarHistorico}},
        {"LeerHistorico", {&Operaciones::LeerHistorico}},
        {"CapacidadContratada", {&Operaciones::CapacidadContratada}},
    };
    return entradas;
}

Operaciones::Operaciones(AlmacenUsuarios& usuarios, AlmacenArchivos& archivos, Historial& historial,
                         const platform::Reloj& reloj, core::Registro& registro)
    : usuarios_(usuarios),
      archivos_(archivos),
      historial_(historial),
      registro_(registro),
      credenciales_(reloj),
      identificados_(reloj),
      freno_(reloj) {}

std::string Operaciones::llamar(soap::PeticionSoap& peticion, const std::string& direccion) {
    const Entrada& entrada = tabla().at(peticion.operacion->nombre);
    Llamada llamada{direccion, peticion.argumentos, nullptr};
    if (entrada.conCredencial) {
        if (std::string rechazo = identificar(llamada); !rechazo.empty()) return rechazo;
    }
    return (this->*entrada.metodo)(llamada);
}

std::string Operaciones::identificar(Llamada& llamada) {
    const std::string& nombre = llamada.texto(0);
    if (core::Recortar(nombre).empty()) return respuesta::sinClaveAcceso;  // nobody is logged in yet
    const UsuarioLeido usuario = usuarios_.buscar(nombre);
    if (!usuario) return rechazar(llamada, respuesta::sinClaveAcceso);
    if (!credenciales_.comprobar(llamada.texto(1), usuario->clave)) {
        return rechazar(llamada, respuesta::claveIncorrecta);
    }
    identificados_.anotar(llamada.direccion, usuario->id);
    llamada.usuario = usuario;
    return {};
}

std::string Operaciones::rechazar(const Llamada& llamada, const char* texto) {
    registro_.aviso("acceso rechazado desde " + llamada.direccion + ", usuario \"" +
                    core::Mid(llamada.texto(0), 1, 64) + "\"");
    std::this_thread::sleep_for(freno_.fallo(llamada.direccion));
    return texto;
}

std::string Operaciones::DTS(Llamada& llamada) {
    return credenciales_.DTS(llamada.direccion);
}

std::string Operaciones::DatosUsuario(Llamada& llamada) {
    const Usuario& usuario = *llamada.usuario;
    return std::to_string(usuario.id) + "-" + usuario.usuario + "-" + usuario.cuenta + "-" + usuario.etiqueta;
}

std::string Operaciones::Carpetaraizusuario(Llamada& llamada) {
    return "D:\\VX\\" + llamada.usuario->carpetaRaiz() + "\\";
}

bool Operaciones::algunoIdentificado(std::string_view cuenta, const std::string& direccion) {
    return std::ranges::any_of(usuarios_.porCuenta(cuenta), [&](const UsuarioLeido& usuario) {
        return identificados_.reciente(direccion, usuario->id);
    });
}

// A user may only be put where nothing new can be read from: into the account he has, or, having none, into
// one of which somebody has proved himself from the same address.
std::string Operaciones::ActualizaNserie(Llamada& llamada) {
    const UsuarioLeido usuario = usuarios_.porCarpetaRaiz(llamada.texto(0));
    const std::string cuenta = core::Mayusculas(llamada.texto(1));
    if (!usuario || !identificados_.reciente(llamada.direccion, usuario->id)) return respuesta::sinPermiso;
    if (usuario->cuenta == cuenta) return {};
    if (!usuario->cuenta.empty() || !algunoIdentificado(cuenta, llamada.direccion)) {
        registro_.aviso("no se asigna la cuenta \"" + core::Mid(cuenta, 1, 64) + "\" al usuario " +
                        usuario->usuario + ", pedida desde " + llamada.direccion);
        return respuesta::cuentaNoAsignable;
    }
    usuarios_.asignarCuenta(usuario->id, cuenta);
    return {};
}

// Hands out passwords: clients measure the whole account, user by user, each under his own.
std::string Operaciones::CarpetasNserie(Llamada& llamada) {
    const std::string& cuenta = llamada.texto(0);
    if (!algunoIdentificado(cuenta, llamada.direccion)) {
        registro_.aviso("usuarios de la cuenta \"" + core::Mid(cuenta, 1, 64) +
                        "\" pedidos sin permiso desde " + llamada.direccion);
        return respuesta::sinPermiso;
    }
    std::string registros;
    for (const UsuarioLeido& usuario : usuarios_.porCuenta(cuenta)) {
        if (!registros.empty()) registros += '|';
        registros += std::to_string(usuario->id) + "-" + usuario->usuario + "-" + usuario->clave + "-" +
                     usuario->etiqueta;
    }
    return registros;
}

// Of his own account only.
std::string Operaciones::CapacidadContratada(Llamada& llamada) {
    const std::string cuenta = core::Mayusculas(llamada.texto(2));
    const bool suya = !cuenta.empty() && cuenta == llamada.usuario->cuenta;
    return std::to_string(suya ? usuarios_.capacidadGb(cuenta) : 0);
}

}  // namespace tarvoline::server
