// The workflows joined. Routines of this folder call each other in many directions, as the work does, so one
// object owns them all and hands them out; each holds a reference to it.
#pragma once

#include <memory>

#include "core/credencial.h"
#include "core/entorno.h"
#include "service/operaciones.h"
#include "soap/cliente.h"
#include "tarvoline/contexto.h"

namespace tarvoline::workflows {

class ConfiguracionEmpresa;
class Descargas;
class Empaquetado;
class Espacio;
class Historico;
class Listados;
class Lista;
class Panel;
class Pendientes;
class Personales;
class Restauracion;
class Sesion;
class SubidaEmpresa;
class Temporales;
class Transferencia;

class Flujos {
  public:
    // All are borrowed and must outlive this object.
    Flujos(core::Entorno& entorno, soap::Conexion& conexion, link::Contexto& enlaces);
    ~Flujos();
    Flujos(const Flujos&) = delete;
    Flujos& operator=(const Flujos&) = delete;

    core::Entorno& entorno() { return entorno_; }
    soap::Conexion& conexion() { return conexion_; }
    link::Contexto& enlaces() { return enlaces_; }

    // A client of the service for one routine, made with Estado::gUrlServicio. Throws soap::ErrorServicio.
    service::ClienteServicio nuevoCliente();
    // The user, password, folder and account code in force now.
    service::Identidad enVigor() const;

    Panel& panel() { return *panel_; }
    ConfiguracionEmpresa& configuracion() { return *configuracion_; }
    Listados& listados() { return *listados_; }
    Lista& lista() { return *lista_; }
    Espacio& espacio() { return *espacio_; }
    Historico& historico() { return *historico_; }
    Sesion& sesion() { return *sesion_; }
    Transferencia& transferencia() { return *transferencia_; }
    Empaquetado& empaquetado() { return *empaquetado_; }
    Temporales& temporales() { return *temporales_; }
    SubidaEmpresa& subidaEmpresa() { return *subidaEmpresa_; }
    Pendientes& pendientes() { return *pendientes_; }
    Personales& personales() { return *personales_; }
    Descargas& descargas() { return *descargas_; }
    Restauracion& restauracion() { return *restauracion_; }

  private:
    core::Entorno& entorno_;
    soap::Conexion& conexion_;
    link::Contexto& enlaces_;
    core::FuenteAleatoria fuente_;  // one generator for all credentials of the run
    std::unique_ptr<Panel> panel_;
    std::unique_ptr<ConfiguracionEmpresa> configuracion_;
    std::unique_ptr<Listados> listados_;
    std::unique_ptr<Lista> lista_;
    std::unique_ptr<Espacio> espacio_;
    std::unique_ptr<Historico> historico_;
    std::unique_ptr<Sesion> sesion_;
    std::unique_ptr<Transferencia> transferencia_;
    std::unique_ptr<Empaquetado> empaquetado_;
    std::unique_ptr<Temporales> temporales_;
    std::unique_ptr<SubidaEmpresa> subidaEmpresa_;
    std::unique_ptr<Pendientes> pendientes_;
    std::unique_ptr<Personales> personales_;
    std::unique_ptr<Descargas> descargas_;
    std::unique_ptr<Restauracion> restauracion_;
};

// What every workflow class is built on: the others, and the core's handful.
class Flujo {
  public:
    explicit Flujo(Flujos& flujos) : flujos_(flujos), entorno_(flujos.entorno()) {}
    Flujo(const Flujo&) = delete;
    Flujo& operator=(const Flujo&) = delete;

  protected:
    ~Flujo() = default;
    core::Estado& estado() const { return entorno_.estado; }
    core::Vista& vista() const { return entorno_.vista; }
    const std::string& texto(int numero) const { return entorno_.texto(numero); }

    Flujos& flujos_;
    core::Entorno& entorno_;
};

}  // namespace tarvoline::workflows
