// The desktop of a run that nobody watches: everything shown goes to the log, nothing ever waits.
#pragma once

#include <functional>

#include "core/escritorio.h"
#include "core/registro.h"

namespace tarvoline::core {

// Yes/No answers No, everything else that asks answers as cancelled.
class EscritorioDesatendido : public Escritorio {
  public:
    // `parada`: 0 while the run may go on, else the exit code to end with; asked at each turn. The program
    // then ends as in a crash, so that an upload under way keeps its record and goes on at the next start.
    explicit EscritorioDesatendido(Registro& registro, std::function<int()> parada = {})
        : registro_(registro), parada_(std::move(parada)) {}

    void Mensaje(const Caja& caja) override;
    bool Preguntar(const Caja& caja, bool siPorDefecto = true) override;
    bool Confirmar(const Caja& caja) override;
    std::optional<std::string> Pedir(const Peticion& peticion) override;
    bool PedirDatos(EntradaDatos& datos) override;
    std::optional<std::string> ElegirArchivo(const EleccionArchivo& eleccion) override;
    std::optional<std::string> GuardarComo(const EleccionArchivo& eleccion) override;
    std::optional<std::string> ElegirCarpeta(std::string_view titulo) override;
    void MostrarListado(const Listado& listado) override;
    void Abrir(std::string_view documento) override;  // logged, not opened
    void Turno() override;
    void Puntero(bool) override {}
    bool hayPersona() const override { return false; }

  private:
    void sinRespuesta(std::string_view que, std::string_view titulo, std::string_view texto);

    Registro& registro_;
    std::function<int()> parada_;
};

}  // namespace tarvoline::core
