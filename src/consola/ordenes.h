// The commands of tarvoline-copias: each prepares what a person at the window would have chosen and runs the
// same routine.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "consola/escritorio_consola.h"
#include "consola/informe.h"
#include "consola/opciones.h"
#include "workflows/montaje.h"

namespace tarvoline::consola {

class Ordenes {
  public:
    Ordenes(workflows::Montaje& montaje, EscritorioConsola& escritorio, const Opciones& opciones)
        : montaje_(montaje), flujos_(montaje.flujos()), escritorio_(escritorio), opciones_(opciones) {}

    // Loads texts, service address and user, then runs the command.
    Informe ejecutar();

  private:
    void preparar();
    bool identificar(Informe& informe);
    bool entrar(Informe& informe);
    core::Opcion vistaElegida() const;
    // Shows the stored files of the chosen kind; false when the service did not give them.
    bool mostrarLista(Informe& informe);
    // Leaves that stored name as the only row, selected; false (and told) when there is none.
    bool elegirFila(Informe& informe, const std::string& nombre);
    // Does one thing to each file of the command line until a signal comes; `hacer` gives the line of what
    // was done, nothing when it failed.
    void paraCada(Informe& informe, const char* clave, const char* etiqueta,
                  const std::function<std::optional<std::string>(const std::string&)>& hacer);
    bool hayCapacidad(Informe& informe);
    void fallar(Informe& informe, int codigo, const std::string& motivo);
    // Tells the failure when no box has told one since `antes`.
    void fallarUno(Informe& informe, std::size_t antes, const std::string& nombre);

    void listar(Informe& informe);
    std::string fechaDe(const std::string& nombre) const;
    void historico(Informe& informe);
    void espacio(Informe& informe);
    void subir(Informe& informe);
    bool subirUno(Informe& informe, const std::string& ruta);
    bool subirEmpresa(const std::string& ruta);
    std::string subirConImagenes();
    void pendientes(Informe& informe);
    void restaurar(Informe& informe);
    void bajar(Informe& informe);
    bool esCarpeta(const std::string& ruta) const;
    void borrar(Informe& informe);

    workflows::Montaje& montaje_;
    workflows::Flujos& flujos_;
    EscritorioConsola& escritorio_;
    const Opciones& opciones_;
};

}  // namespace tarvoline::consola
