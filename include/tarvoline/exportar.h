// What the library shows to its callers; all else in it stays hidden.
#pragma once

#if defined(_WIN32)
#define TARVOLINE_PUBLICO
#else
#define TARVOLINE_PUBLICO __attribute__((visibility("default")))
#endif
