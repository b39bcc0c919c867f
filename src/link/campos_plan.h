// The named columns of an account of a chart beside its two runs of columns.
#pragma once

#include <cstddef>

#include "tarvoline/clases.h"

namespace tarvoline::link {

// Sets a period in both places that it has in the record.
void ponerPeriodo(PlanClass& cuenta, std::size_t periodo, double debe, double haber);

}  // namespace tarvoline::link
