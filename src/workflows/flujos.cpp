#include "workflows/flujos.h"

#include "workflows/configuracion_empresa.h"
#include "workflows/descargas.h"
#include "workflows/empaquetado.h"
#include "workflows/espacio.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/listados.h"
#include "workflows/panel.h"
#include "workflows/pendientes.h"
#include "workflows/personales.h"
#include "workflows/restauracion.h"
#include "workflows/sesion.h"
#include "workflows/subida_empresa.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

Flujos::Flujos(core::Entorno& entorno, soap::Conexion& conexion, link::Contexto& enlaces)
    : entorno_(entorno),
      conexion_(conexion),
      enlaces_(enlaces),
      fuente_(core::fuenteAleatoria()),
      panel_(std::make_unique<Panel>(*this)),
      configuracion_(std::make_unique<ConfiguracionEmpresa>(*this)),
      listados_(std::make_unique<Listados>(*this)),
      lista_(std::make_unique<Lista>(*this)),
      espacio_(std::make_unique<Espacio>(*this)),
      historico_(std::make_unique<Historico>(*this)),
      sesion_(std::make_unique<Sesion>(*this)),
      transferencia_(std::make_unique<Transferencia>(*this)),
      empaquetado_(std::make_unique<Empaquetado>(*this)),
      temporales_(std::make_unique<Temporales>(*this)),
      subidaEmpresa_(std::make_unique<SubidaEmpresa>(*this)),
      pendientes_(std::make_unique<Pendientes>(*this)),
      personales_(std::make_unique<Personales>(*this)),
      descargas_(std::make_unique<Descargas>(*this)),
      restauracion_(std::make_unique<Restauracion>(*this)) {}

Flujos::~Flujos() = default;

service::ClienteServicio Flujos::nuevoCliente() {
    return {conexion_, entorno_.estado.gUrlServicio, fuente_};
}

service::Identidad Flujos::enVigor() const {
    const auto& estado = entorno_.estado;
    return {estado.gUsuario, estado.gPassword, estado.gCarpeta, estado.gCuenta};
}

}  // namespace tarvoline::workflows
