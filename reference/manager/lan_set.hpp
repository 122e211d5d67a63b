/* Command 3: change LAN settings of one or more ports. */
#pragma once

#include "manager.hpp"

namespace bmc::manager {

/* Fills the response's detail; throws Refusal with nothing changed. */
void setLan(Manager &manager, const NW_RPC_REQUEST_S &request, NW_RPC_RESPONSE_S &response);

} // namespace bmc::manager
