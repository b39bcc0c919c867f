// The configuration window without its widgets: the backup settings of the active company and two settings of
// the program.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tarvoline/enlace.h"
#include "workflows/flujos.h"

namespace tarvoline::workflows {

class FormularioConfiguracion : public Flujo {
  public:
    using Flujo::Flujo;
    ~FormularioConfiguracion();

    // What the controls show. The window writes here what the person changes, and calls modificar() for the
    // four edited fields.
    bool TarvolineActivar = false;
    std::string TarvolineUser, TarvolinePassword, TarvolineCarpeta;
    std::vector<std::string> minutos;  // entries of TarvolineMinutos: text 1347, "10", "20", ... "600"
    int TarvolineMinutos = 0;          // index into it
    bool INCLUYEIMAGENES = false;
    int datosen = 2;                 // index into unidades
    std::vector<std::string> List1;  // ADJUNTARCARPETAS
    std::string lbemrpesa;           // name of the company

    static const std::vector<std::string>& unidades();  // "Bytes (B)", ...

    // Opens the active company and fills the fields. Throws link::ErrorEnlace when it stays closed,
    // core::FinDePrograma when its password prompt is cancelled: the window then does not open.
    void DatosIniciales();
    // One of the four edited fields has changed.
    void modificar() { Modificado = true; }
    bool modificado() const { return Modificado; }
    // Saves at once, whatever the end of the dialog.
    void INCLUYEIMAGENES_Click(bool marcada);
    // Toolbar1: 0 asks for a folder and adds it, 78 asks whether to remove entry `elegida` of List1.
    void Toolbar1_ButtonClick(int numero, int elegida);
    // No action.
    void TarvolineActivarCopiasTodas() {}
    // Command2(0) saves, any other does not; the company is closed. What could not be written is thrown
    // (link::ErrorEnlace, platform::ErrorArchivo) with the company still open, so that nothing typed is lost.
    void Salir(bool grabar);

  private:
    void GrabarConfigTarvoline();
    void grabarCarpetas();

    std::unique_ptr<link::Enlace> Enlace_;
    bool Modificado = false;
};

}  // namespace tarvoline::workflows
