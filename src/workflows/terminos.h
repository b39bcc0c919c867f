// The terms window without its widgets: the text in the program's language, and the answer as it is recorded.
#pragma once

#include <string>

#include "workflows/flujos.h"

namespace tarvoline::workflows {

class Terminos : public Flujo {
  public:
    using Flujo::Flujo;

    // The whole text, lines ended by LF. Throws platform::ErrorArchivo, naming the path, when the file is
    // missing.
    std::string leer() const;
    // Button 0 accepts, 1 leaves; the index is what is recorded. Closing the window by its frame calls
    // nothing.
    void Command1_Click(int indice);
    // True when the recorded answer is that the user left without accepting.
    bool pendientes() const;
};

}  // namespace tarvoline::workflows
