// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Rules that a whole LAN configuration follows. */
#pragma once

#include "network_mng/store.h"
#include "segments.hpp"

namespace bmc::manager {

/* Throws Refusal unless the port's addresses, masks, gateways and routes fit one another. */
void checkPort(const NW_LAN_CFG_PORT_S &port);

/* Throws Refusal, with the segment check's own code, when one of the checks finds two ports, or a
 * port and the wireless interface, in one segment, or a route that leads into another's. */
void checkSegments(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                   const SegmentChecks &checks);

} // namespace bmc::manager
