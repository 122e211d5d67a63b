// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How the LAN settings of one port fit one another. */
#pragma once

#include "settings/change.hpp"

namespace bmc::settings {

/* What follows from the settings: a static route is valid while it has a destination, and a port
 * whose VLAN is switched off has no VLAN ID unless one is asked for. */
void keepInStep(const Edit &edit, NW_LAN_CFG_PORT_S &port);

/* Throws Refusal unless the port's addresses, masks, gateways and routes fit one another. */
void checkLanPort(const NW_LAN_CFG_PORT_S &port);

} // namespace bmc::settings
