#include "link/acceso_empresa.h"

#include <optional>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/actualizacion.h"
#include "data/crear_empresa.h"
#include "data/empresa_suelta.h"
#include "data/error_datos.h"
#include "data/seccion_textos.h"
#include "data/utilidades.h"
#include "data/vista_nombrada.h"

namespace tarvoline::link {

namespace {

constexpr std::string_view sinFuente;
constexpr std::string_view formaCreacion = "/C";
constexpr std::string_view productoEmpresas = "VELDORIX";

[[noreturn]] void fallarConEmpresa(std::uint32_t numero, std::string_view texto, const std::string& empresa) {
    throw ErrorEnlace(numero, std::string(texto) + "\n" + empresa);
}

}  // namespace

void AccesoEmpresa::LoadEmpresas() {
    auto& ajustes = sesion_.contexto.datos.ajustes;
    sesion_.Empresas.clear();
    auto directorio = ajustes.leerCarpeta("DATOS_DIR");
    if (directorio.empty()) {
        ajustes.usarMaquina(true);
        directorio = ajustes.leerCarpeta("DATOS_DIR");
    }
    if (directorio.empty()) {
        throw ErrorEnlace(error_enlace::noInstalado, "Veldorix no está instalado", std::string(sinFuente));
    }
    for (const auto& nombre : platform::listarMascara(sesion_.contexto.datos.archivos, directorio, "*.QZT")) {
        sesion_.Empresas.push_back(directorio + nombre);
    }
}

void AccesoEmpresa::AbrirEmpresa(std::string_view empresa, std::string_view clave) {
    if (core::Mayusculas(clave).starts_with(formaCreacion)) {
        crear(empresa, clave);
        return;
    }
    // Whatever fails from here on, the company before is no longer open: its number does not belong to this
    // file.
    std::string ruta = rutaPedida(empresa);
    sesion_.empresa = {};
    sesion_.empresa.gArchivoEmpresa = std::move(ruta);
    sesion_.ponerEnVigor();
    comprobarArchivo();
    leerCabecera();
    comprobarClave(clave);
    sesion_.contexto.datos.carpetas.PonerDirectorioDatos(productoEmpresas);
    conciliarDirectorioGlobal();
}

// The new company is named but not open, and neither is the one before: its number belongs to another file.
void AccesoEmpresa::crear(std::string_view nombre, std::string_view opciones) {
    try {
        auto archivo = data::CrearEmpresaArchivos(sesion_.contexto.datos, nombre, opciones);
        sesion_.empresa = {};
        sesion_.empresa.gArchivoEmpresa = std::move(archivo);
        sesion_.ponerEnVigor();
    } catch (const data::ErrorDatos& error) {
        throw ErrorEnlace(error.numero(), error.what(), error.fuente());
    }
    LoadEmpresas();
}

std::string AccesoEmpresa::rutaPedida(std::string_view empresa) const {
    const auto& ajustes = sesion_.contexto.datos.ajustes;
    return core::rutaCompleta(
        data::rutaCabecera(ajustes, empresa.empty() ? ajustes.leer("Active") : std::string(empresa)));
}

// Everything that can be said of the file before it is opened.
void AccesoEmpresa::comprobarArchivo() const {
    const auto& ruta = sesion_.empresa.gArchivoEmpresa;
    const auto estado = sesion_.contexto.datos.archivos.estado(ruta);
    if (!estado || estado->esDirectorio) {
        fallarConEmpresa(error_enlace::empresaNoExiste, "Empresa Veldorix no existe: ", ruta);
    }
    const auto respuesta = data::GuardaVersionDatos(sesion_.contexto.datos).Comprobar(ruta);
    if (respuesta != data::respuestaBien) {
        throw ErrorEnlace(
            error_enlace::versionPosterior,
            respuesta + " - Debe actualizar Veldorix en todos los equipos que accedan a estos datos.",
            std::string(sinFuente));
    }
    if (estado->longitud == 0) {
        fallarConEmpresa(error_enlace::empresaNoExiste, "Empresa Veldorix no existe: ", ruta);
    }
}

// From here on the session has a number, so it counts as open, whatever fails behind.
void AccesoEmpresa::leerCabecera() {
    auto& empresa = sesion_.empresa;
    data::CabeceraEmpresa cabecera;
    data::exigirEmpresa(sesion_.contexto.datos, empresa.gArchivoEmpresa,
                        [&](platform::Archivo& archivo) { cabecera = data::CabeceraEmpresa::leer(archivo); });
    empresa.gEmpresaActual = cabecera.texto(data::cabecera::COMUN);
    if (empresa.gEmpresaActual.size() < 2 || core::ValEntero(empresa.gEmpresaActual) == 0) {
        fallarConEmpresa(error_enlace::numeroNoValido,
                         "Número Empresa Veldorix no válido: ", empresa.gArchivoEmpresa);
    }
    sesion_.contexto.datos.gMultiusuario = true;
    empresa.cabecera = cabecera;
    empresa.gDirectorioEmpresa = core::SepararRuta(empresa.gArchivoEmpresa).directorio;
    empresa.gNiveles = data::nivelesDeCuentas(cabecera);
    sesion_.ponerEnVigor();
    empresa.gNivelesAnalitica =
        data::nivelesDeAnalitica(data::VistaNombrada(sesion_.contexto.datos).GetTotal("NivelesCosto"));
    sesion_.ponerEnVigor();
}

void AccesoEmpresa::comprobarClave(std::string_view clave) const {
    constexpr int longitudClave = 4;
    const auto& empresa = sesion_.empresa;
    const auto esperada = data::DesenmascararClave(empresa.cabecera.ansi(data::cabecera::PASSWORD1));
    if (esperada.empty() || esperada == clave) return;

    std::optional<std::string> tecleada;
    if (sesion_.opciones.pedirClave) {
        tecleada = sesion_.opciones.pedirClave({.titulo = "Clave",
                                                .empresa = core::SoloNombre(empresa.gArchivoEmpresa),
                                                .longitud = longitudClave});
    }
    if (!tecleada || core::Recortar(*tecleada).empty() || *tecleada != esperada) {
        fallarConEmpresa(error_enlace::claveNoValida,
                         "Password Empresa Veldorix no válido: ", empresa.gArchivoEmpresa);
    }
}

// The folder of the data that companies share stands in the settings and in each company: whichever has it
// gives it to the other. A company that cannot be written opens all the same.
void AccesoEmpresa::conciliarDirectorioGlobal() {
    auto& datos = sesion_.contexto.datos;
    pasandoErrores(datos, "GLOBAL_DIR", [&] {
        data::VistaNombrada vista(datos);
        const auto delAjuste = core::Recortar(datos.ajustes.leer("GLOBAL_DIR"));
        const auto deLaEmpresa = core::Recortar(vista.GetTotal("Global_Dir"));
        if (delAjuste.empty() && !deLaEmpresa.empty()) {
            data::GrabarAjuste(datos, "Global_Dir", deLaEmpresa);
        } else if (!delAjuste.empty() && deLaEmpresa.empty()) {
            vista.PutTotal("Global_Dir", delAjuste);
        }
    });
}

}  // namespace tarvoline::link
