/* Rules that a whole LAN configuration follows. */
#pragma once

#include <cstdint>

#include "network_mng/store.h"

namespace bmc::manager {

/* Throws Refusal unless the port's addresses, masks, gateways and routes fit one another. */
void checkPort(const NW_LAN_CFG_PORT_S &port);

/* Throws Refusal, with the segment check's own code, when one of the checks (NW_SEGCHK_*) finds two
 * ports, or a port and the wireless interface, in one segment. */
void checkSegments(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                   std::uint32_t checks);

} // namespace bmc::manager
