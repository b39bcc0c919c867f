#include "server/enlace_mundo.h"

#include <map>

#include "core/texto.h"
#include "link/mostrador.h"
#include "platform/arbol_ajustes.h"
#include "platform/carpetas_sistema.h"

namespace tarvoline::server {

namespace {

constexpr std::string_view extension = ".QZT";

// Settings that live as long as the session.
class ArbolDeSesion : public platform::ArbolAjustes {
  public:
    std::optional<std::string> leer(const platform::ClaveAjuste& donde) override {
        const auto suyo = valores_.find(clave(donde));
        return suyo == valores_.end() ? std::nullopt : std::optional(suyo->second.valor);
    }
    void grabar(const platform::ClaveAjuste& donde, std::string_view valor) override {
        valores_[clave(donde)] = {donde, std::string(valor)};
    }
    void borrar(const platform::ClaveAjuste& donde) override { valores_.erase(clave(donde)); }
    std::vector<platform::Ajuste> listar() override {
        std::vector<platform::Ajuste> todos;
        for (const auto& [nombre, ajuste] : valores_)
            todos.push_back(ajuste);
        return todos;
    }

  private:
    static std::string clave(const platform::ClaveAjuste& donde) {
        return core::Mayusculas(donde.producto + "\t" + donde.seccion + "\t" + donde.clave);
    }
    std::map<std::string, platform::Ajuste> valores_;
};

std::string claveDe(const std::string& carpeta, const std::string& nombre) {
    return core::Mayusculas(carpeta + "\t" + nombre);
}

}  // namespace

MundoEnlace::MundoEnlace(platform::SistemaArchivos& archivos, core::Registro& registro, std::string carpeta)
    : archivos_(archivos),
      carpeta_(std::move(carpeta)),
      reloj_(platform::crearReloj()),
      arbol_(std::make_unique<ArbolDeSesion>()),
      ajustes_(*arbol_),
      carpetas_(archivos, ajustes_, platform::carpetaTemporal()),
      contexto_(archivos, ajustes_, carpetas_, *reloj_) {
    const std::string comunes = carpeta_ + "comunes/";
    archivos_.crearDirectorios(comunes, 0700);
    for (const char* archivo : {"Moneda.QZF", "Moneda1.QZF", "IVA03.QZF"}) {
        if (platform::existe(archivos_, comunes + archivo)) continue;
        platform::escribirAtomico(archivos_, comunes + archivo,
                                  platform::leerTodo(archivos_, carpetas_.DirectorioPrograma() + archivo));
    }
    ajustes_.GrabarRegistro("DATOS_DIR", carpeta_);
    for (const char* clave : {"CON_DIR", "IVA_DIR", "GLOBAL_DIR"})
        ajustes_.GrabarRegistro(clave, comunes);
    contexto_.alMostrar([this, &registro](const std::string&, const std::string& texto) {
        // One line a form: nobody washes the log away with a form of many wrong rows.
        if (!mostrado_.empty()) return;
        registro.aviso("enlace: " + texto);
        mostrado_ = texto;
    });
    contexto_.alAvisar([&registro](const std::string& texto) { registro.aviso(texto); });
    enlace_ = std::make_unique<link::Enlace>(contexto_);
}

MundoEnlace::~MundoEnlace() = default;

// A name is one of those that there are: no path leads out of the folder.
std::string MundoEnlace::ruta(std::string_view empresa) const {
    for (const auto& archivo : platform::listarMascara(archivos_, carpeta_, "*.QZT")) {
        const std::string nombre = archivo.substr(0, archivo.size() - extension.size());
        if (core::igualSinCaja(nombre, empresa) || core::igualSinCaja(archivo, empresa))
            return carpeta_ + archivo;
    }
    return {};
}

MundoEnlace& SesionEnlace::mundo(const std::string& carpeta) {
    const std::string suya = raiz_ + (carpeta.empty() ? usuario_->carpetaRaiz() : carpeta) + "/";
    if (!mundo_ || mundo_->carpeta() != suya) {
        abierta_.clear();
        mundo_.reset();
        mundo_ = std::make_unique<MundoEnlace>(archivos_, registro_, suya);
    }
    return *mundo_;
}

std::optional<std::string> SesionEnlace::claveConocida(const std::string& carpeta,
                                                       const std::string& nombre) const {
    const auto suya = claves_.find(claveDe(carpeta, nombre));
    return suya == claves_.end() ? std::nullopt : std::optional(suya->second);
}

SesionEnlace::Puerta SesionEnlace::desbloquear(const std::string& carpeta, const std::string& nombre,
                                               const std::string& clave) {
    MundoEnlace& suyo = mundo(carpeta);
    const std::string ruta = suyo.ruta(nombre);
    if (ruta.empty()) return Puerta::noEsta;
    abierta_.clear();
    try {
        abrir(suyo, ruta, clave);
    } catch (const link::ErrorEnlace& error) {
        suyo.enlace().CerrarEmpresa();
        if (error.numero() == link::error_enlace::claveNoValida) return Puerta::cerrada;
        throw;
    }
    claves_[claveDe(carpeta, nombre)] = clave;
    return Puerta::abierta;
}

link::Enlace& SesionEnlace::empresa(const std::string& carpeta, const std::string& nombre) {
    MundoEnlace& suyo = mundo(carpeta);
    const std::string ruta = suyo.ruta(nombre);
    if (ruta.empty() || ruta != abierta_) {
        abierta_.clear();
        const auto clave = claves_.find(claveDe(carpeta, nombre));
        // What is no name of a company is told as a company that does not exist.
        abrir(suyo, ruta.empty() ? suyo.carpeta() + "?" : ruta,
              clave == claves_.end() ? std::string() : clave->second);
    }
    return suyo.enlace();
}

// The entry that the session stood at was another company's. REQUIRES: `clave` is no order to make one.
void SesionEnlace::abrir(MundoEnlace& suyo, const std::string& ruta, const std::string& clave) {
    suyo.enlace().AbrirEmpresa(ruta, clave);
    link::Mostrador(suyo.enlace()).situar("", "");
    abierta_ = ruta;
}

}  // namespace tarvoline::server
