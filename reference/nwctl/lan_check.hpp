// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Would changes put two ports, or a port and the wireless interface, into one segment? */
#pragma once

#include <span>

#include "lan_change.hpp"
#include "network_mng/check.h"

namespace nwctl {

/* First conflict in the record as the changes would leave it. Only what their fields call for is
 * checked, as the network manager itself does; NW_OK without a conflict. */
NW_RESULT checkSegments(std::span<const LanChange> changes,
                        const NW_IFC_STATE_DB_INFO_S &interfaces, NW_LAN_CFG_DB_INFO_S record,
                        const NW_WIFI_ADDR_S &wireless);

} // namespace nwctl
