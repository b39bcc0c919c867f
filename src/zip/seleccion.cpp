#include "zip/seleccion.h"

#include <optional>
#include <unordered_map>
#include <utility>

#include "zip/nombres.h"

namespace tarvoline::zip {
namespace {

using platform::EstadoArchivo;

bool mismo(const EstadoArchivo& uno, const EstadoArchivo& otro) {
    return uno.dispositivo == otro.dispositivo && uno.identidad == otro.identidad;
}

std::string unir(std::string_view carpeta, std::string_view nombre) {
    std::string ruta(carpeta);
    if (!ruta.empty() && ruta.back() != '/' && ruta.back() != '\\') ruta += '/';
    return ruta.append(nombre);
}

class Seleccion {
  public:
    Seleccion(platform::SistemaArchivos& archivos, bool recursivo, std::string_view excluido)
        : archivos_(archivos), recursivo_(recursivo), excluido_(archivos.estado(excluido)) {}

    void agregar(std::string_view base, std::string_view nombre) {
        const std::string ruta = esAbsoluto(nombre) ? std::string(nombre) : unir(base, nombre);
        const std::string interno = nombreRelativo(nombre);
        if (const auto estado = archivos_.estado(ruta)) {
            agregarExistente(ruta, interno, *estado);
        } else if (nombre.find_first_of("?*") != std::string_view::npos) {
            agregarMascara(ruta, interno);
        }
    }

    std::vector<Seleccionado> resultado() && { return std::move(lista_); }

  private:
    void agregarExistente(const std::string& ruta, const std::string& interno, const EstadoArchivo& estado) {
        if (!estado.esDirectorio) {
            poner({{ruta, interno}, false, estado.longitud, estado.modificado});
        } else if (recursivo_) {
            agregarCarpeta(ruta, interno, estado);
        }
    }

    void agregarMascara(const std::string& ruta, const std::string& interno) {
        const auto corte = ruta.find_last_of("/\\") + 1;
        const auto corteInterno = interno.rfind('/') + 1;
        const std::string carpeta = ruta.substr(0, corte);
        for (const auto& nombre : platform::listarMascara(archivos_, carpeta, ruta.substr(corte))) {
            const std::string origen = carpeta + nombre;
            if (const auto estado = archivos_.estado(origen)) {
                agregarExistente(origen, interno.substr(0, corteInterno) + nombre, *estado);
            }
        }
    }

    // A link can lead a folder back to one that holds it; such a one is not entered again.
    bool esAncestro(const EstadoArchivo& estado) const {
        for (const auto& uno : ancestros_) {
            if (mismo(uno, estado)) return true;
        }
        return false;
    }

    void agregarCarpeta(const std::string& ruta, const std::string& interno, const EstadoArchivo& estado) {
        if (esAncestro(estado)) return;
        const auto contenido = archivos_.listar(ruta);
        if (contenido.empty() && !interno.empty()) {
            poner({{ruta, interno + "/"}, true, 0, estado.modificado});
        }
        ancestros_.push_back(estado);
        for (const auto& entrada : contenido) {
            const std::string origen = unir(ruta, entrada.nombre);
            const std::string suyo = interno.empty() ? entrada.nombre : interno + "/" + entrada.nombre;
            if (!entrada.esDirectorio) {
                poner({{origen, suyo}, false, entrada.longitud, entrada.modificado});
            } else if (const auto suEstado = archivos_.estado(origen)) {
                agregarCarpeta(origen, suyo, *suEstado);
            }
        }
        ancestros_.pop_back();
    }

    void poner(Seleccionado nuevo) {
        if (esExcluido(nuevo)) return;
        const auto [puesto, esNuevo] = puestos_.emplace(nuevo.nombre, lista_.size());
        if (esNuevo) {
            lista_.push_back(std::move(nuevo));
        } else {
            lista_[puesto->second] = std::move(nuevo);
        }
    }

    bool esExcluido(const Seleccionado& nuevo) const {
        if (!excluido_ || nuevo.esDirectorio || nuevo.longitud != excluido_->longitud) return false;
        const auto estado = archivos_.estado(nuevo.origen);
        return estado && mismo(*estado, *excluido_);
    }

    platform::SistemaArchivos& archivos_;
    bool recursivo_;
    std::optional<EstadoArchivo> excluido_;
    std::vector<EstadoArchivo> ancestros_;
    std::vector<Seleccionado> lista_;
    std::unordered_map<std::string, std::size_t> puestos_;
};

}  // namespace

std::vector<Seleccionado> seleccionar(platform::SistemaArchivos& archivos, std::string_view base,
                                      const std::vector<std::string>& lista, bool recursivo,
                                      std::string_view excluido) {
    Seleccion seleccion(archivos, recursivo, excluido);
    for (const auto& nombre : lista)
        seleccion.agregar(base, nombre);
    return std::move(seleccion).resultado();
}

}  // namespace tarvoline::zip
