// The contract of the backup service: its operations and their parameters, in order.
#pragma once

#include "soap/servidor.h"

namespace tarvoline::server {

// Reads and writes of file bytes bring no more back than they must: only the bytes of `Restore` stand in a
// reply.
soap::Contrato contratoCopias();

}  // namespace tarvoline::server
