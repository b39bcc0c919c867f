// Whether a file was left alone while it was opened, told without asking for its name again.
#pragma once

#include <ctime>

namespace tarvoline::platform::posix {

// A moment by two clocks: the one that dates files, which may be set, and one that runs on.
struct Momento {
    timespec fecha{};
    timespec corrido{};

    static Momento ahora();
};

// True when a file last changed at `cambio` (st_ctime) has certainly not been changed between `antes` and
// `despues`, on a file system of this machine that dates every change. False when that is not certain: the
// change is of the last moments or in the future, time was long, or the clock was set meanwhile.
bool quietoEntre(const Momento& antes, const Momento& despues, const timespec& cambio);

}  // namespace tarvoline::platform::posix
