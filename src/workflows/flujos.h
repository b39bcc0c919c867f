// The workflows joined: builds every class of this folder in the order they need each other and hands them
// out.
#pragma once

#include <memory>

#include "core/entorno.h"
#include "soap/cliente.h"

namespace tarvoline::link {
class Contexto;
}

namespace tarvoline::workflows {

class ConfiguracionEmpresa;
class Espacio;
class Historico;
class Listados;
class Pendientes;
class Personales;
class Restauracion;
class Sesion;
class SubidaEmpresa;
class Transferencia;

// What a workflow needs beside the core: the connection to the service and the accounting link.
struct Medios {
    core::Entorno& entorno;
    soap::Conexion& conexion;
    link::Contexto& enlaces;
};

class Flujos {
  public:
    explicit Flujos(Medios medios);
    ~Flujos();
    Flujos(const Flujos&) = delete;
    Flujos& operator=(const Flujos&) = delete;

    ConfiguracionEmpresa& configuracion() { return *configuracion_; }
    Listados& listados() { return *listados_; }
    Espacio& espacio() { return *espacio_; }
    Historico& historico() { return *historico_; }
    Sesion& sesion() { return *sesion_; }
    Transferencia& transferencia() { return *transferencia_; }
    SubidaEmpresa& subidaEmpresa() { return *subidaEmpresa_; }
    Pendientes& pendientes() { return *pendientes_; }
    Personales& personales() { return *personales_; }
    Restauracion& restauracion() { return *restauracion_; }

  private:
    std::unique_ptr<ConfiguracionEmpresa> configuracion_;
    std::unique_ptr<Listados> listados_;
    std::unique_ptr<Espacio> espacio_;
    std::unique_ptr<Historico> historico_;
    std::unique_ptr<Sesion> sesion_;
    std::unique_ptr<Transferencia> transferencia_;
    std::unique_ptr<SubidaEmpresa> subidaEmpresa_;
    std::unique_ptr<Pendientes> pendientes_;
    std::unique_ptr<Personales> personales_;
    std::unique_ptr<Restauracion> restauracion_;
};

}  // namespace tarvoline::workflows
