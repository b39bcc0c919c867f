#include "platform/senales.h"

#include <csignal>
#include <initializer_list>

namespace tarvoline::platform {

namespace {

constexpr std::initializer_list<int> senales = {SIGTERM, SIGINT, SIGHUP};

// The one thing that a signal handler can reach.
volatile std::sig_atomic_t ultimaSenal = 0;

extern "C" void anotarSenal(int senal) {
    ultimaSenal = senal;
}

}  // namespace

SenalesFin::SenalesFin() {
    ultimaSenal = 0;
    struct sigaction accion = {};
    accion.sa_handler = anotarSenal;
    accion.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int senal : senales) {
        sigaction(senal, &accion, nullptr);
    }
}

SenalesFin::~SenalesFin() {
    for (const int senal : senales) {
        std::signal(senal, SIG_DFL);
    }
}

int SenalesFin::recibida() const {
    return ultimaSenal;
}

}  // namespace tarvoline::platform
