#include "workflows/sesion.h"

#include <algorithm>

#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/espacio.h"
#include "workflows/listados.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoCuenta = 15;
constexpr int textoClave = 310;
constexpr int textoTitulo = 586;
constexpr int textoUsuario = 1353;
constexpr int textoTarvoline = 2080;
constexpr int textoGestor = 2218;
constexpr int textoUsuarioTitulo = 2219;
constexpr int textoCarpeta = 2220;
constexpr int textoGuardarEnEmpresa = 2221;
constexpr int textoIdentificarse = 2241;

constexpr int longitudUsuario = 30;
constexpr int longitudCuenta = 11;
constexpr int longitudClaveEmpresa = 4;
constexpr std::string_view marcada = "1";

// gInicio holds the change handlers back while the lists are filled for the new user.
class Inicio {
  public:
    explicit Inicio(core::Estado& estado) : estado_(estado) { estado_.gInicio = true; }
    ~Inicio() {
        estado_.gInicio = false;
        estado_.gUsuarioNuevo = false;
    }
    Inicio(const Inicio&) = delete;
    Inicio& operator=(const Inicio&) = delete;

  private:
    core::Estado& estado_;
};

bool enBlanco(std::string_view texto) {
    return core::Recortar(texto).empty();
}

}  // namespace

std::optional<Sesion::Respuesta> Sesion::preguntar() {
    core::EntradaDatos datos;
    datos.titulo = core::Sustituir(texto(textoTitulo), "Veldorix", texto(textoTarvoline));
    datos.campos = {
        {texto(textoUsuario), core::TipoCampo::texto, longitudUsuario, estado().gUsuarioSesion, {}},
        {texto(textoClave), core::TipoCampo::oculto, longitudUsuario, estado().gPasswordSesion, {}},
        {texto(textoCuenta), core::TipoCampo::texto, longitudCuenta, estado().gCuentaSesion, {}},
        {texto(textoGuardarEnEmpresa), core::TipoCampo::casilla, 0, "0", {}}};
    if (!entorno_.escritorio.PedirDatos(datos)) {
        return std::nullopt;
    }
    return Respuesta{core::Recortar(datos.campos[0].valor), datos.campos[1].valor,
                     core::Mayusculas(core::Recortar(datos.campos[2].valor)),
                     datos.campos[3].valor == marcada};
}

void Sesion::CambiarUsuario() {
    if (!enBlanco(estado().gUsuarioSesion) && !enBlanco(estado().gPasswordSesion)) {
        estado().gCuentaSesion = flujos_.listados().CodigoCuentaDeUsuario();
    }
    const auto respuesta = preguntar();
    if (!respuesta) {
        if (estado().gUsuarioSesion.empty()) {
            estado().gSesionValida = false;
        }
        return;
    }
    if (flujos_.listados().ValidarUsuario(respuesta->usuario, respuesta->password)) {
        iniciar(*respuesta);
    }
}

void Sesion::iniciar(const Respuesta& respuesta) {
    const Inicio inicio(estado());
    auto& estado = this->estado();
    estado.gUsuarioNuevo = true;
    estado.gUsuario = estado.gUsuarioSesion = respuesta.usuario;
    estado.gPassword = estado.gPasswordSesion = respuesta.password;
    estado.gCuentaSesion = respuesta.cuenta;
    auto& listados = flujos_.listados();
    listados.vaciarLista();  // the rows of the user before are not this one's, whatever fails from here on
    if (!estado.gCuentaSesion.empty()) {
        listados.ActualizarCodigoCuenta(estado.gCuentaSesion);
    }
    estado.gCuenta = listados.CodigoCuentaDeUsuario();
    usuarioHallado_ = estado.gUsuario;
    cuentaHallada_ = estado.gCuenta;
    estado.gSesionValida = true;
    flujos_.espacio().Controlar_capacidad(false);
    vista().titulo = titulo();
    vista().avisar(core::Parte::titulo);
    listados.LlenarCarpetas();
    if (listados.faltanTamanos()) {
        listados.ActualizaTamanoFila();
    }
    if (respuesta.guardarEnEmpresa) {
        guardarEnEmpresa();
    }
}

void Sesion::guardarEnEmpresa() {
    link::Enlace enlace(flujos_.enlaces());
    if (!EmpresaParaUsuario(enlace)) {
        return;
    }
    enlace.Config("TVUSER", estado().gUsuario);
    enlace.Config("TVPASSWORD", estado().gPasswordSesion);
    enlace.Config("Borrador", "1");
    enlace.CerrarEmpresa();
}

bool Sesion::EmpresaParaUsuario(link::Enlace& enlace) {
    const auto& rutas = enlace.Empresas();
    core::CampoDatos campo{texto(textoGuardarEnEmpresa), core::TipoCampo::eleccion, 0, {}, {}};
    const auto activa = core::SoloNombre(entorno_.almacen.Leer("ACTIVE"));
    for (const auto& ruta : rutas) {
        campo.elecciones.push_back(core::SoloNombre(ruta));
        if (core::igualSinCaja(campo.elecciones.back(), activa)) {
            campo.valor = campo.elecciones.back();
        }
    }
    core::EntradaDatos datos{texto(textoGuardarEnEmpresa), {std::move(campo)}, 0};
    if (rutas.empty() || !entorno_.escritorio.PedirDatos(datos)) {
        return false;
    }
    const auto& nombre = datos.campos[0].valor;
    const auto elegida = std::find_if(rutas.begin(), rutas.end(), [&](const auto& ruta) {
        return core::igualSinCaja(core::SoloNombre(ruta), nombre);
    });
    if (elegida == rutas.end()) {
        return false;
    }
    flujos_.configuracion().AbrirConClaves(enlace, *elegida, [&]() -> std::optional<std::string> {
        core::EntradaDatos clave;
        clave.titulo = "Tarvoline (" + texto(textoGestor) + " Veldorix)";
        clave.campos = {
            {nombre + " " + texto(textoClave), core::TipoCampo::oculto, longitudClaveEmpresa, {}, {}}};
        if (!entorno_.escritorio.PedirDatos(clave)) {
            return std::nullopt;
        }
        return clave.campos[0].valor;
    });
    return true;
}

std::string Sesion::titulo() {
    const auto cabeza = texto(textoGestor) + ". ";
    if (estado().gUsuario.empty() || estado().gPassword.empty()) {
        return cabeza + texto(textoIdentificarse);
    }
    return cabeza + texto(textoUsuarioTitulo) + " " + estado().gUsuario + " " + texto(textoCarpeta) + " " +
           flujos_.listados().CarpetaRaizUsuario();
}

void Sesion::reponerUsuario() {
    auto& estado = this->estado();
    estado.gUsuario = estado.gUsuarioSesion;
    estado.gPassword = estado.gPasswordSesion;
    estado.gCuenta = core::Mayusculas(estado.gCuentaSesion);
    if (enBlanco(estado.gCuenta) && estado.gUsuario == usuarioHallado_) {
        estado.gCuenta = cuentaHallada_;
    }
}

}  // namespace tarvoline::workflows
