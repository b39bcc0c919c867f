// The two errors of the engine.
#pragma once

#include <stdexcept>
#include <string>

namespace tarvoline::motor {

// A command could not be carried out, and not for what it asked: the key file is damaged, the device failed,
// the disk is full. The table is as it was before the command.
class ErrorMotor : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What was read is not what was written: raised while a page or a head is read. A reader that holds no lock
// may meet it by mere chance, and then looks again under the lock.
class Danno : public ErrorMotor {
  public:
    using ErrorMotor::ErrorMotor;
};

}  // namespace tarvoline::motor
