#include "workflows/subida_empresa.h"

#include <algorithm>

#include "core/carpetas.h"
#include "core/texto.h"
#include "core/xml_comun.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/empaquetado.h"
#include "workflows/historico.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/sesion.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoTerminado = 214;
constexpr int textoContinuar = 980;
constexpr int textoConUsuario = 1923;
constexpr int textoEmpresaCRM = 1932;
constexpr int textoSinCRM = 1933;
constexpr int textoSinUsuario = 2215;
constexpr int textoOtroUsuario = 2258;
constexpr int textoUsuarioSesion = 2259;
constexpr int empresasCRM = 99;
constexpr std::size_t archivosPersonales = 999;

// Puts the session's user back on every way out, the failures too: whatever the window does next is his.
class UsuarioDeSesion {
  public:
    explicit UsuarioDeSesion(Flujos& flujos) : flujos_(flujos), carpetas_(flujos.entorno().vista) {}
    ~UsuarioDeSesion() {
        carpetas_.reponer();
        flujos_.sesion().reponerUsuario();
        flujos_.configuracion().reponerCarpeta();
    }
    UsuarioDeSesion(const UsuarioDeSesion&) = delete;
    UsuarioDeSesion& operator=(const UsuarioDeSesion&) = delete;

  private:
    Flujos& flujos_;
    CarpetasMostradas carpetas_;
};

}  // namespace

void SubidaEmpresa::SubirEmpresa_Click() {
    auto& panel = flujos_.panel();
    panel.entrada([&] {
        entorno_.escritorio.Puntero(true);
        panel.Desabilitar_Formulario(false);
        panel.Barra(-1);
        {
            const UsuarioDeSesion alFinal(flujos_);
            contar(SubirUnaEmpresa());
        }
        if (!estado().gInterrumpido) {
            flujos_.listados().LlenarCarpetas();
            flujos_.listados().RefrescarVista();
        }
    });
}

void SubidaEmpresa::contar(const std::string& resultado) {
    entorno_.escritorio.Puntero(false);
    if (!resultado.empty()) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::informacion, {}});
    }
    flujos_.panel().Barra(0);
    vista().NombreArchivo.clear();
    vista().avisar(core::Parte::etiquetas);
    if (resultado == texto(textoTerminado) && !estado().gInterrumpido &&
        estado().gUsuario != estado().gUsuarioSesion) {
        entorno_.escritorio.Mensaje(
            {texto(textoConUsuario) + " " + estado().gUsuario, core::Icono::informacion, {}});
    }
}

std::string SubidaEmpresa::SubirUnaEmpresa() {
    return core::Mayusculas(estado().gProducto) == "VXCRM" ? subirVXCRM() : subirVeldorix();
}

// The company file that the person picks; nothing when there is none to work on.
std::optional<std::string> SubidaEmpresa::elegirEmpresa() {
    estado().gInterrumpido = false;
    const auto elegida = entorno_.escritorio.ElegirArchivo(
        {{}, {"Empresas Veldorix", "*.qzt"}, entorno_.almacen.Leer("Ultimaruta", "BACKUP"), {}});
    if (!elegida) {
        estado().gInterrumpido = true;
        return std::nullopt;
    }
    if (elegida->empty()) {
        estado().gDetener = false;
        return std::nullopt;
    }
    entorno_.almacen.Grabar("Ultimaruta", core::SepararRuta(*elegida).directorio, "BACKUP");
    return elegida;
}

bool SubidaEmpresa::aceptaUsuario() {
    if (core::Recortar(estado().gUsuario).empty()) {
        entorno_.escritorio.Mensaje({texto(textoSinUsuario), core::Icono::exclamacion, {}});
        estado().gInterrumpido = true;
        return false;
    }
    if (estado().gUsuario == estado().gUsuarioSesion) {
        return true;
    }
    const auto pregunta = texto(textoOtroUsuario) + " " + estado().gUsuario + "\r\n" +
                          texto(textoUsuarioSesion) + " " + estado().gUsuarioSesion + "\r\n\r\n" +
                          texto(textoContinuar);
    if (entorno_.escritorio.Preguntar({pregunta, core::Icono::pregunta, {}})) {
        return true;
    }
    estado().gInterrumpido = true;
    estado().gDetener = false;
    return false;
}

std::string SubidaEmpresa::subirVeldorix() {
    const auto archivo = elegirEmpresa();
    if (!archivo) {
        return {};
    }
    flujos_.configuracion().CargarConfiguracionEmpresa(*archivo);
    if (!aceptaUsuario()) {
        return {};
    }
    const bool conImagenes = core::Val(entorno_.almacen.Leer("IncluirImagenesTarvoline", "BACKUP", "0")) != 0;
    const auto zip =
        flujos_.empaquetado().ZipEmpresa(*archivo, entorno_.carpetas.carpetaTransferencia(), conImagenes);
    flujos_.panel().Barra(-1);
    if (core::esError(zip)) {
        return zip;
    }
    if (estado().gDetener) {
        return {};
    }
    auto resultado = subirConPersonales(zip);
    if (estado().gDetener || estado().gInterrumpido) {
        return core::esError(resultado) ? resultado : std::string();
    }
    if (!core::esError(resultado)) {
        flujos_.temporales().VaciarTemporal();
        resultado = texto(textoTerminado);
        flujos_.historico().anotarHecho(estado().gUsuario + estado().gTextosHistorico[core::haSubidoEmpresa] +
                                        core::SoloNombre(*archivo));
    }
    estado().gDetener = false;
    return resultado;
}

// The archive, and the extra personal files that go with it.
std::string SubidaEmpresa::subirConPersonales(const std::string& zip) {
    auto resultado = flujos_.transferencia().SubirArchivo(zip, estado().gProducto, true, 1);
    const auto& extras = estado().gArchivosPersonales;
    for (std::size_t i = 1; i <= archivosPersonales && i < extras.size(); ++i) {
        // A company that did not arrive is not made good by a file that does.
        if (estado().gDetener || estado().gInterrumpido || core::esError(resultado)) {
            break;
        }
        if (!core::Recortar(extras[i]).empty()) {
            resultado = flujos_.transferencia().SubirArchivo(extras[i], "PERSONAL", true, 1);
        }
    }
    return resultado;
}

// "nn- description" of each VXCRM company that has a file.
std::vector<std::string> SubidaEmpresa::empresasVXCRM() {
    std::vector<std::string> empresas;
    for (int i = 1; i <= empresasCRM; ++i) {
        const auto codigo = core::conCeros(i, 2);
        const auto archivo = estado().gDatosDir + "total" + codigo + ".xml";
        const auto hay = entorno_.archivos.estado(archivo);
        if (hay && !hay->esDirectorio && hay->longitud >= 1) {
            empresas.push_back(codigo + "- " +
                               core::LeerClaveXML(entorno_, "DescripciónEmpresa", "", codigo, archivo));
        }
    }
    return empresas;
}

std::string SubidaEmpresa::subirVXCRM() {
    const auto empresas = empresasVXCRM();
    if (empresas.empty()) {
        entorno_.escritorio.Mensaje({texto(textoSinCRM), core::Icono::exclamacion, {}});
        return {};
    }
    // The choices travel as one text divided by commas, so a description that holds one shows as two choices.
    std::string elecciones;
    for (const auto& empresa : empresas) {
        elecciones += (elecciones.empty() ? "" : ",") + empresa;
    }
    core::EntradaDatos datos{.titulo = texto(textoEmpresaCRM),
                             .campos = {{.etiqueta = texto(textoEmpresaCRM),
                                         .tipo = core::TipoCampo::eleccion,
                                         .longitud = 0,
                                         .valor = {},
                                         .elecciones = core::Partir(elecciones, ",")}},
                             .opcion = 0};
    if (!entorno_.escritorio.PedirDatos(datos)) {
        estado().gInterrumpido = true;
        return {};
    }
    const auto& elegida = datos.campos.front().valor;
    const auto codigo = core::Mid(elegida, 1, 2);
    const auto archivo = estado().gDatosDir + "TOTAL" + codigo + ".XML";
    flujos_.configuracion().CargarConfiguracionEmpresa(archivo);
    estado().gEmpresaCRM = codigo;
    auto resultado = flujos_.empaquetado().ZipEmpresa(archivo, entorno_.carpetas.carpetaTransferencia(),
                                                      false, true, 9, elegida);
    flujos_.panel().Barra(-1);
    if (core::esError(resultado) || estado().gDetener) {
        return core::esError(resultado) ? resultado : std::string();
    }
    resultado = subirConPersonales(resultado);
    if (core::esError(resultado)) {
        return resultado;
    }
    return estado().gDetener || estado().gInterrumpido ? std::string() : texto(textoTerminado);
}

}  // namespace tarvoline::workflows
