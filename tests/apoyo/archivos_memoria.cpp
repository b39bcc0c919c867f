#include "platform/archivos.h"
