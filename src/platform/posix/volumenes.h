// What is to be known of the file system that a file lies on.
#pragma once

#include <sys/types.h>

#include <map>
#include <mutex>

namespace tarvoline::platform::posix {

struct Volumen {
    // On a disk or in the memory of this machine. Whatever is not known counts as remote, the safe side.
    bool local = false;
    // Sets the time of a file's last change (st_ctime), by this machine's clock, whenever one of the file's
    // names is given, changed or taken away.
    bool fechaNombres = false;
};

// Asks the system; nothing is known when it does not answer.
Volumen volumenDe(int descriptor);

// The same, asked once a device. Safe between threads.
class Volumenes {
  public:
    // `dispositivo` is the device of that open file.
    Volumen de(int descriptor, dev_t dispositivo);

  private:
    std::mutex mutex_;
    std::map<dev_t, Volumen> conocidos_;
};

}  // namespace tarvoline::platform::posix
