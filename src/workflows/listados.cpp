#include "workflows/listados.h"

#include <algorithm>

#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/panel.h"
#include "workflows/sesion.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoFallo = 1250;
constexpr int textoSinConexion = 1934;
constexpr int textoComprobarUsuario = 2224;
constexpr std::string_view carpetaPorDefecto = "Datos";

// The service's own words, without "ERROR:".
std::string sinCabecera(std::string_view fallo) {
    return core::Mid(fallo, 7);
}

}  // namespace

std::string Listados::VistaActual() {
    switch (vista().Option1) {
        case core::Opcion::veldorix:
            estado().gProducto = "VELDORIX";
            return "VELDORIX";
        case core::Opcion::personal:
            estado().gProducto = "VELDORIX";
            return "PERSONAL";
        case core::Opcion::vxcrm:
            estado().gProducto = "VXCRM";
            return "VXCRM";
        case core::Opcion::historico:
            break;
    }
    return {};
}

void Listados::RefrescarVista() {
    if (estado().gDesatendido) {
        return;
    }
    if (vista().Option1 == core::Opcion::historico) {
        flujos_.historico().ListarHistorico();
    } else {
        ListarArchivos(VistaActual());
    }
}

void Listados::ListarArchivos(std::string_view tipo) {
    std::string resultado;
    try {
        AnadirCarpetasNuevas();
        auto cliente = flujos_.nuevoCliente();
        flujos_.configuracion().CargarConfiguracionEmpresa("");
        resultado = cliente.ListadoArchivos(flujos_.enVigor(), tipo);
    } catch (const std::exception& error) {
        entorno_.registro.aviso(std::string("ListarArchivos: ") + error.what());
        vaciarLista();
        entorno_.escritorio.Mensaje(
            {texto(textoFallo) + " " + texto(textoSinConexion), core::Icono::parada, {}});
        return;
    }
    if (resultado == errorSinClave) {
        if (core::Recortar(estado().gUsuarioSesion).empty() && core::Recortar(estado().gUsuario).empty()) {
            estado().gSesionValida = false;
        }
        vaciarLista();
        flujos_.sesion().CambiarUsuario();
        return;
    }
    if (core::esError(resultado)) {
        vaciarLista();
        entorno_.escritorio.Mensaje(
            {texto(textoFallo) + texto(textoComprobarUsuario), core::Icono::ninguno, {}});
        return;
    }
    vista().List1 = service::leerNombres(resultado);
    vista().elegidoList1 = -1;
    vista().avisar(core::Parte::lista);
    flujos_.lista().LlenarGrid();
}

// What is on show must never belong to another view or folder than the one in force: rows are deleted and
// fetched by their names.
void Listados::vaciarLista() {
    vista().List1.clear();
    vista().elegidoList1 = -1;
    vista().avisar(core::Parte::lista);
    vista().listaLeida = false;
    vista().lbtotalocupado.clear();
    vista().avisar(core::Parte::etiquetas);
    flujos_.lista().PrepararGrid();
}

void Listados::LlenarCarpetas() {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.listadocarpetas(flujos_.enVigor());
    if (core::esError(resultado)) {
        estado().gRefrescando = true;
        entorno_.escritorio.Mensaje({sinCabecera(resultado), core::Icono::exclamacion, {}});
        estado().gRefrescando = false;
        return;
    }
    elegirCarpeta(service::leerNombres(resultado), vista().carpetaElegida);
    vista().avisar(core::Parte::carpetas);
    if (estado().gUsuarioNuevo) {
        RefrescarVista();
        estado().gUsuarioNuevo = false;
    }
}

// The list shows what is in force: the entry chosen before if there is still one at its place, else the
// folder in force if the user has one of that name, else the default folder.
void Listados::elegirCarpeta(const std::vector<std::string>& nombres, int recordada) {
    auto& gCarpeta = estado().gCarpeta;
    vista().carpetas = nombres;
    if (recordada >= 0 && recordada < static_cast<int>(nombres.size())) {
        gCarpeta = nombres[static_cast<std::size_t>(recordada)];
        vista().carpetaElegida = recordada;
    } else if (nombres.empty()) {
        gCarpeta = carpetaPorDefecto;
        vista().carpetas = {gCarpeta};
        vista().carpetaElegida = 0;
    } else {
        const auto buscar = [&] {
            return std::find_if(nombres.begin(), nombres.end(),
                                [&](const auto& nombre) { return core::igualSinCaja(nombre, gCarpeta); });
        };
        if (buscar() == nombres.end()) {
            gCarpeta = carpetaPorDefecto;
        }
        const auto lugar = buscar();
        vista().carpetaElegida = lugar == nombres.end() ? -1 : static_cast<int>(lugar - nombres.begin());
    }
    vista().textoCarpetas = gCarpeta;
}

void Listados::AnadirCarpetasNuevas() {
    auto cliente = flujos_.nuevoCliente();
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    const auto resultado = cliente.listadocarpetas(flujos_.enVigor());
    if (core::esError(resultado)) {
        return;
    }
    auto& carpetas = vista().carpetas;
    for (auto& nombre : service::leerNombres(resultado)) {
        if (std::find(carpetas.begin(), carpetas.end(), nombre) == carpetas.end()) {
            carpetas.push_back(std::move(nombre));
        }
    }
    vista().avisar(core::Parte::carpetas);
}

std::string Listados::CodigoCuentaDeUsuario() {
    auto cliente = flujos_.nuevoCliente();
    const auto resultado = cliente.DatosUsuario(flujos_.enVigor());
    if (core::esError(resultado)) {
        entorno_.escritorio.Mensaje({resultado, core::Icono::parada, {}});
        return {};
    }
    return core::Mayusculas(service::codigoDeDatosUsuario(resultado));
}

bool Listados::ValidarUsuario(std::string_view usuario, std::string_view clave) {
    auto cliente = flujos_.nuevoCliente();
    const auto resultado = cliente.DatosUsuario({std::string(usuario), std::string(clave), {}, {}});
    if (!core::esError(resultado)) {
        return true;
    }
    const auto motivo = resultado == errorSinClave ? texto(textoComprobarUsuario) : sinCabecera(resultado);
    entorno_.escritorio.Mensaje({motivo, core::Icono::parada, {}});
    return false;
}

void Listados::ActualizarCodigoCuenta(std::string_view codigo) {
    constexpr std::size_t longitudCarpeta = 9;
    auto cliente = flujos_.nuevoCliente();
    const auto raiz = cliente.Carpetaraizusuario(flujos_.enVigor());
    const auto longitud = core::longitudTexto(raiz);
    const auto final = core::Mid(raiz, 1 + longitud - std::min(longitud, longitudCarpeta), longitudCarpeta);
    cliente.ActualizaNserie(core::Sustituir(final, "\\", ""), codigo);
}

std::string Listados::CarpetaRaizUsuario() {
    std::string resultado;
    core::ignorandoErrores(entorno_, "CarpetaRaizUsuario", [&] {
        auto cliente = flujos_.nuevoCliente();
        resultado = cliente.Carpetaraizusuario(flujos_.enVigor());
    });
    if (core::esError(resultado)) {
        return {};
    }
    return core::Sustituir(core::Sustituir(core::Mayusculas(resultado), "D:\\VX\\", ""), "\\", "");
}

void Listados::Option1_Click(int indice) {
    if (vista().ocupada || estado().gRefrescando) {
        return;
    }
    vista().Option1 = static_cast<core::Opcion>(indice);
    vista().avisar(core::Parte::opcion);
    if (!vista().textoCarpetas.empty()) {
        estado().gCarpeta = vista().textoCarpetas;
    }
    if (estado().gInicio) {
        return;
    }
    flujos_.panel().entrada([&] {
        entorno_.almacen.Grabar("Programa", std::to_string(indice), "NETBACKUP", estado().gProducto);
        flujos_.lista().ordenarAlLlenar(0);
        if (vista().Option1 == core::Opcion::historico) {
            flujos_.historico().ListarHistorico();
        } else {
            ListarArchivos(VistaActual());
        }
    });
}

void Listados::carpetas_Click(int indice) {
    if (indice < 0 || indice >= static_cast<int>(vista().carpetas.size()) || vista().ocupada ||
        estado().gRefrescando) {
        return;
    }
    vista().carpetaElegida = indice;
    vista().textoCarpetas = vista().carpetas[static_cast<std::size_t>(indice)];
    estado().gCarpeta = vista().textoCarpetas;
    vista().avisar(core::Parte::carpetas);
    if (estado().gInicio) {
        return;
    }
    flujos_.panel().entrada([&] {
        flujos_.lista().ordenarAlLlenar(estado().gOrdenGrid);
        RefrescarVista();
        if (estado().gOrdenGrid > 100) {
            flujos_.lista().aplicarOrden(estado().gOrdenGrid);
        }
    });
}

}  // namespace tarvoline::workflows
