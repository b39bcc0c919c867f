// Processes of this user, the second-instance test, and opening documents and programs.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archivos.h"

namespace tarvoline::platform {

// Whether this process can show a window: a display of the session, or a toolkit told to do without one
// (QT_QPA_PLATFORM).
bool hayPantalla();

// Opens a document, folder or URL with the desktop's own handler. False when there is no desktop, no handler,
// or it cannot be started.
bool abrirDocumento(std::string_view rutaOUrl);

// Starts a program (full path, or a name that is looked up as a command) that goes on when this one ends,
// without this one's standard streams. False when it cannot be started.
bool arrancarPrograma(std::string_view programa, const std::vector<std::string>& argumentos);

// Ends at once, without a question, every process of this user whose name contains `texto` (case ignored; a
// final ".exe" of `texto` may be missing in the process's name, which then must be exactly equal). Never this
// process; an empty `texto` ends none. Waits up to two seconds until they are gone, so that what they held is
// free. Returns how many were ended.
int terminarProcesos(std::string_view texto);

int procesoPropio();

// Marks this process as an instance of the program for this user, for as long as the object lives.
class MarcaInstancia {
  public:
    virtual ~MarcaInstancia() = default;
    // True when another process holds a mark now.
    virtual bool hayOtra() = 0;
    // Asks for the mark of an only instance. True: no other mark is held; others may be taken again at once.
    // False: another instance runs, and this object's own mark is given up, since its process is about to
    // end. Of several processes that ask at once exactly one gets true.
    virtual bool soyLaUnica() = 0;
};

// `ruta` is the lock file that all instances share; it is made when missing.
std::unique_ptr<MarcaInstancia> crearMarcaInstancia(SistemaArchivos& archivos, const std::string& ruta);

}  // namespace tarvoline::platform
