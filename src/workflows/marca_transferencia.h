// While it lives, a transfer shows in the view: name, bytes, pieces, time, and whether a call is under way.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "core/vista.h"
#include "soap/cliente.h"

namespace tarvoline::workflows {

class MarcaTransferencia {
  public:
    // `hecho`: bytes of an earlier run, which this one does not move again.
    MarcaTransferencia(core::Vista& vista, soap::Conexion& conexion, bool subida, std::string nombre,
                       std::int64_t total, std::int64_t hecho = 0)
        : vista_(vista), conexion_(conexion), anterior_(std::exchange(conexion.alEsperar, {})) {
        vista_.transferencia = {};
        vista_.transferencia.activa = true;
        vista_.transferencia.subida = subida;
        vista_.transferencia.nombre = std::move(nombre);
        vista_.transferencia.total = total;
        vista_.transferencia.hecho = hecho;
        conexion_.alEsperar = [this](bool espera) { esperar(espera); };
        vista_.avisar(core::Parte::transferencia);
    }
    ~MarcaTransferencia() {
        conexion_.alEsperar = std::move(anterior_);
        vista_.transferencia.activa = false;
        vista_.transferencia.esperandoServicio = false;
        vista_.avisar(core::Parte::transferencia);
    }
    MarcaTransferencia(const MarcaTransferencia&) = delete;
    MarcaTransferencia& operator=(const MarcaTransferencia&) = delete;

    void avanzar(std::int64_t hecho, int piezas) {
        vista_.transferencia.hecho = hecho;
        vista_.transferencia.piezas = piezas;
        vista_.transferencia.segundos = ahora() - comienzo_;
        vista_.avisar(core::Parte::transferencia);
    }

  private:
    static double ahora() {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
    void esperar(bool espera) {
        vista_.transferencia.esperandoServicio = espera;
        vista_.transferencia.esperaDesde = espera ? ahora() : 0;
        vista_.avisar(core::Parte::transferencia);
    }

    core::Vista& vista_;
    soap::Conexion& conexion_;
    std::function<void(bool)> anterior_;
    double comienzo_ = ahora();
};

}  // namespace tarvoline::workflows
