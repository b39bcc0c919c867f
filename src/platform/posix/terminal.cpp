#include "platform/terminal.h"

#include <unistd.h>

namespace tarvoline::platform {

bool hayTerminalEntrada() {
    return isatty(STDIN_FILENO) == 1;
}

bool hayTerminalSalida() {
    return isatty(STDOUT_FILENO) == 1;
}

bool hayTerminalError() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace tarvoline::platform
