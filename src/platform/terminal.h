// The terminal that a command-line program may be attached to.
#pragma once

namespace tarvoline::platform {

bool hayTerminalEntrada();  // a person can type an answer
bool hayTerminalSalida();   // what is written to standard output is seen at once
bool hayTerminalError();    // a line on standard error can be drawn over

}  // namespace tarvoline::platform
