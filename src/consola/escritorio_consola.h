// The desktop of a command line: boxes go to standard error, questions are answered by what the command line
// said before, and nothing ever waits for a person.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/escritorio.h"
#include "core/estado.h"
#include "core/registro.h"

namespace tarvoline::consola {

class EscritorioConsola : public core::Escritorio {
  public:
    // `senal`: number of the signal that asked to end, 0 while there is none.
    EscritorioConsola(core::Registro& registro, std::function<int()> senal)
        : registro_(registro), senal_(std::move(senal)) {}

    // Answers given in advance.
    std::string archivoElegido;  // of ElegirArchivo and GuardarComo; "" = cancelled
    bool respuestaSi = false;    // of yes/no questions
    int opcion = 1;              // of a choice between options, from 0
    std::string eleccion;        // of a list, by the beginning of an item; "" = cancelled
    bool mudo = false;           // information boxes are not repeated (the command tells them itself)

    // The boxes that told of a failure, in order; the last one says why a command did not succeed.
    const std::vector<std::string>& fallos() const { return fallos_; }
    // One more, on standard error and in the log.
    void fallar(const std::string& linea);
    // True when a signal asked to end: no further file is begun.
    bool parado() const { return senal_() != 0; }
    // SIGINT stops a transfer as the Stop button does; the state whose flag is raised.
    void parar(core::Estado& estado) { estado_ = &estado; }

    void Mensaje(const core::Caja& caja) override;
    bool Preguntar(const core::Caja& caja, bool siPorDefecto = true) override;
    bool Confirmar(const core::Caja& caja) override;
    std::optional<std::string> Pedir(const core::Peticion& peticion) override;
    bool PedirDatos(core::EntradaDatos& datos) override;
    std::optional<std::string> ElegirArchivo(const core::EleccionArchivo& eleccionArchivo) override;
    std::optional<std::string> GuardarComo(const core::EleccionArchivo& eleccionArchivo) override;
    std::optional<std::string> ElegirCarpeta(std::string_view titulo) override;
    void MostrarListado(const core::Listado& listado) override;
    void Abrir(std::string_view documento) override;
    void Turno() override;
    void Puntero(bool) override {}
    bool hayPersona() const override { return false; }

  private:
    std::optional<std::string> archivo() const;

    core::Registro& registro_;
    std::function<int()> senal_;
    core::Estado* estado_ = nullptr;
    std::vector<std::string> fallos_;
};

}  // namespace tarvoline::consola
