#include "workflows/configuracion_empresa.h"

#include "core/carpetas.h"
#include "core/texto.h"
#include "core/xml_comun.h"
#include "data/acceso_archivo.h"
#include "data/cabecera_empresa.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/listados.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoClave = 310;
constexpr int textoSinActiva = 1931;
constexpr int carpetasAdjuntas = 100;
constexpr std::size_t inicioTextos = 1024;  // of the text lines, counted from 0
constexpr std::string_view carpetaPorDefecto = "DATOS";
constexpr char finDeTextos = '\x1a';

// Lowers a flag again on every way out.
class Durante {
  public:
    explicit Durante(bool& marca) : marca_(marca), antes_(marca) { marca_ = true; }
    ~Durante() { marca_ = antes_; }
    Durante(const Durante&) = delete;
    Durante& operator=(const Durante&) = delete;

  private:
    bool& marca_;
    bool antes_;
};

}  // namespace

ConfiguracionEmpresa::~ConfiguracionEmpresa() = default;

link::Enlace& ConfiguracionEmpresa::gEnlace() {
    if (!gEnlace_) {
        gEnlace_ = std::make_unique<link::Enlace>(flujos_.enlaces());
    }
    return *gEnlace_;
}

std::string ConfiguracionEmpresa::rutaActiva() const {
    const auto& almacen = entorno_.almacen;
    if (core::Mayusculas(estado().gProducto) != "VXCRM") {
        return almacen.Leer("ACTIVE");
    }
    const auto codigo = almacen.Leer("COMUN", "", "", estado().gProducto);
    return entorno_.ajustes.leerCarpeta("DATOS_DIR", estado().gProducto) + "TOTAL" +
           core::conCeros(core::ValEntero(codigo), 2) + ".XML";
}

void ConfiguracionEmpresa::CargarConfiguracionEmpresa(std::string_view ruta) {
    if (cargando_) {
        return;
    }
    const Durante cargando(cargando_);
    claveRechazada_ = false;
    std::string empresa(ruta);
    if (empresa.empty()) {
        if (!estado().gUsuarioSesion.empty()) {
            estado().gUsuario = estado().gUsuarioSesion;
            estado().gPassword = estado().gPasswordSesion;
            if (!core::Recortar(estado().gCuentaSesion).empty()) {
                estado().gCuenta = estado().gCuentaSesion;
            }
            return;
        }
        empresa = rutaActiva();
    }
    if (empresa.empty()) {
        if (!avisadoSinEmpresa_) {
            avisadoSinEmpresa_ = true;  // once in a run: the views ask for a company again and again
            entorno_.escritorio.Mensaje({texto(textoSinActiva), core::Icono::exclamacion, {}});
        }
        return;
    }
    if (core::Mayusculas(estado().gProducto) == "VXCRM") {
        cargarVXCRM(empresa, ruta.empty());
    } else {
        LeerConfiguracionArchivoEmpresa(empresa);
    }
}

void ConfiguracionEmpresa::reponerCarpeta() {
    const auto elegida = vista().carpetaElegida;
    const bool hay = elegida >= 0 && elegida < static_cast<int>(vista().carpetas.size());
    estado().gCarpeta =
        hay ? vista().carpetas[static_cast<std::size_t>(elegida)] : std::string(carpetaPorDefecto);
}

void ConfiguracionEmpresa::cargarVXCRM(std::string_view ruta, bool activa) {
    auto& e = estado();
    const auto codigo = esEmpresaVXCRM(ruta) && !activa ? numeroDeTabla(core::SoloNombre(ruta))
                                                        : entorno_.almacen.Leer("comun", "", "", "VXCRM");
    e.gEmpresaCRM = core::conCeros(core::ValEntero(codigo), 2);
    e.gAdjuntarCarpetas.clear();
    const auto leer = [&](std::string_view clave) { return core::LeerClaveXML(entorno_, clave, "", "", ""); };
    if (core::Val(leer("TarvolineActivado")) != 1) {
        e.gUsuario.clear();
        e.gPassword.clear();
        e.gCuenta.clear();
        e.gCarpeta.clear();
        return;
    }
    e.gUsuario = leer("TVUSER");
    e.gPassword = leer("TVPASSWORD");
    e.gCarpeta = leer("TVCARPETA");
    e.gAdjuntarCarpetas.assign(2, {});
    for (int i = 1; i <= carpetasAdjuntas; ++i) {
        auto carpeta = leer("ADJUNTARCARPETAS" + std::to_string(i));
        if (carpeta.empty()) {
            break;
        }
        e.gAdjuntarCarpetas.push_back(std::move(carpeta));
    }
    if (e.gCarpeta.empty()) {
        e.gCarpeta = carpetaPorDefecto;
    }
    if (!e.gDesatendido) {
        const Durante inicio(e.gInicio);
        vista().carpetas = {e.gCarpeta};
        vista().carpetaElegida = 0;
        vista().textoCarpetas = e.gCarpeta;
        vista().avisar(core::Parte::carpetas);
    }
}

void ConfiguracionEmpresa::AbrirConClaves(link::Enlace& enlace, std::string_view ruta,
                                          const Pregunta& pedir) {
    std::string clave;
    for (int intento = -1;; ++intento) {
        try {
            enlace.AbrirEmpresa(ruta, clave);
            return;
        } catch (const link::ErrorEnlace& error) {
            const bool agotadas = intento + 1 == static_cast<int>(estado().gClavesEmpresa.size());
            if (error.numero() != link::error_enlace::claveNoValida || agotadas) {
                throw;
            }
            auto& recordada = estado().gClavesEmpresa[static_cast<std::size_t>(intento + 1)];
            if (recordada.empty()) {
                auto escrita = pedir();
                if (!escrita && entorno_.escritorio.hayPersona()) {
                    throw core::FinDePrograma{};
                }
                if (!escrita) {
                    throw;  // nobody there: this company stays closed, the run goes on
                }
                recordada = std::move(*escrita);
            }
            clave = recordada;
        }
    }
}

std::optional<std::string> ConfiguracionEmpresa::pedirClave(std::string_view ruta) {
    return entorno_.almacen.Pedir(texto(textoClave) + " " + core::SoloNombre(ruta), "Empresa Veldorix");
}

void ConfiguracionEmpresa::AbrirEmpresaActiva(link::Enlace& enlace) {
    const auto ruta = entorno_.almacen.Leer("ACTIVE");
    AbrirConClaves(enlace, ruta, [&] { return pedirClave(ruta); });
}

void ConfiguracionEmpresa::LeerConfiguracionArchivoEmpresa(std::string_view ruta) {
    auto& e = estado();
    e.gAdjuntarCarpetas.clear();
    try {
        auto& enlace = gEnlace();
        AbrirConClaves(enlace, ruta, [&] { return pedirClave(ruta); });
        leerEmpresaAbierta(enlace);
    } catch (const std::exception& error) {
        const auto* delEnlace = dynamic_cast<const link::ErrorEnlace*>(&error);
        claveRechazada_ = delEnlace != nullptr && delEnlace->numero() == link::error_enlace::claveNoValida;
        entorno_.registro.aviso("Company not configured: " + std::string(ruta) + ": " + error.what());
        e.gUsuario.clear();
        e.gPassword.clear();
        e.gCuenta.clear();
    }
    if (gEnlace_) {
        gEnlace_->CerrarEmpresa();
    }
}

void ConfiguracionEmpresa::leerEmpresaAbierta(link::Enlace& enlace) {
    data::CabeceraEmpresa cabecera;
    std::string contenido;
    data::exigirEmpresa(flujos_.enlaces().datos(), enlace.Empresa(), [&](platform::Archivo& archivo) {
        cabecera = data::CabeceraEmpresa::leer(archivo);
        contenido.resize(archivo.longitud());
        contenido.resize(archivo.leer(0, std::as_writable_bytes(std::span(contenido))));
    });
    auto& e = estado();
    e.gClavesConfig[1] = cabecera.ansi(data::cabecera::PASSWORD1).bytes();
    e.gClavesConfig[2] = cabecera.ansi(data::cabecera::PASSWORD2).bytes();
    if (cabecera.texto(data::cabecera::BORRADOR) == "1") {
        leerUsuario(enlace, contenido);
    }
}

void ConfiguracionEmpresa::leerUsuario(link::Enlace& enlace, std::string_view contenido) {
    auto& e = estado();
    const auto leer = [&](std::string_view clave) {
        const auto valor = enlace.Config(clave);
        return core::Recortar(valor).empty() ? LeerClaveFichero(contenido, clave, "") : valor;
    };
    e.gUsuario = leer("TVUSER");
    e.gPassword = leer("TVPASSWORD");
    const auto carpeta = leer("TVCARPETA");
    leerAdjuntos(enlace);
    if (!carpeta.empty()) {
        e.gCarpeta = carpeta;
    }
    if (core::Recortar(e.gCarpeta).empty()) {
        e.gCarpeta = carpetaPorDefecto;
    }
    e.gCuenta.clear();
    core::ignorandoErrores(entorno_, "account code of the company's user",
                           [&] { e.gCuenta = core::Mayusculas(flujos_.listados().CodigoCuentaDeUsuario()); });
    if (!e.gDesatendido && e.gInicio) {
        e.gUsuarioSesion = e.gUsuario;
        e.gPasswordSesion = e.gPassword;
        e.gCuentaSesion = e.gCuenta;
        core::ignorandoErrores(entorno_, "folders of the company's user",
                               [&] { flujos_.listados().LlenarCarpetas(); });
    }
}

// Numbered from 0 in the company, from 1 here.
void ConfiguracionEmpresa::leerAdjuntos(link::Enlace& enlace) {
    auto& adjuntos = estado().gAdjuntarCarpetas;
    adjuntos.assign(1, {});
    for (int i = 0; i <= carpetasAdjuntas; ++i) {
        auto carpeta = enlace.Config("ADJUNTARCARPETAS" + std::to_string(i));
        if (carpeta.empty()) {
            break;
        }
        adjuntos.push_back(std::move(carpeta));
    }
}

std::string ConfiguracionEmpresa::LeerClaveFichero(std::string_view contenido, std::string_view clave,
                                                   std::string_view defecto) {
    if (contenido.size() <= inicioTextos) {
        return std::string(defecto);
    }
    const auto buscada = core::Mayusculas(clave);
    const auto textos = contenido.substr(inicioTextos);
    for (const auto& bytes : core::Partir(textos.substr(0, textos.find(finDeTextos)), "\n")) {
        auto linea = core::aUtf8(std::string_view(bytes));
        if (!linea.empty() && linea.back() == '\r') {
            linea.pop_back();
        }
        if (!core::empiezaPor(core::Mayusculas(linea), buscada)) {
            continue;
        }
        const auto igual = linea.find('=');
        const auto valor =
            igual == std::string::npos ? std::string() : core::Recortar(linea.substr(igual + 1));
        return valor.empty() ? std::string(defecto) : valor;
    }
    return std::string(defecto);
}

}  // namespace tarvoline::workflows
