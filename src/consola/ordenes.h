// The commands of tarvoline-copias: each prepares what a person at the window would have chosen and runs the
// same routine.
#pragma once

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
    // Makes the row of that stored name the selected one; false when there is none.
    bool elegirFila(const std::string& nombre);
    void fallar(Informe& informe, int codigo, std::string motivo) const;
    std::string ultimoFallo() const;

    void listar(Informe& informe);
    void historico(Informe& informe);
    void espacio(Informe& informe);
    void subir(Informe& informe);
    bool subirEmpresa(const std::string& ruta);
    void pendientes(Informe& informe);
    void restaurar(Informe& informe);
    void bajar(Informe& informe);
    void borrar(Informe& informe);

    workflows::Montaje& montaje_;
    workflows::Flujos& flujos_;
    EscritorioConsola& escritorio_;
    const Opciones& opciones_;
};

}  // namespace tarvoline::consola
