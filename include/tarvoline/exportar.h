// What the library shows to its callers; all else in it stays hidden.
#pragma once

#define TARVOLINE_PUBLICO [[gnu::visibility("default")]]
