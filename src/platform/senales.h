// Requests of the system to end the program.
#pragma once

namespace tarvoline::platform {

// While it lives, the first request to end (SIGTERM, SIGINT, SIGHUP) is only noted; a second one of the same
// kind ends the process at once. At most one object at a time.
class SenalesFin {
  public:
    SenalesFin();
    ~SenalesFin();
    SenalesFin(const SenalesFin&) = delete;
    SenalesFin& operator=(const SenalesFin&) = delete;

    // Number of the last signal that came; 0 = none.
    int recibida() const;
};

}  // namespace tarvoline::platform
