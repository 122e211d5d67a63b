/* Would a change put two ports, or a port and the wireless interface, into one segment? */
#pragma once

#include "lan_change.hpp"
#include "network_mng/check.h"

namespace nwctl {

/* First conflict in the record as the change would leave it; NW_OK without one, and for a change
 * that no segment depends on. */
NW_RESULT checkSegments(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                        NW_LAN_CFG_DB_INFO_S record, const NW_WIFI_ADDR_S &wireless);

} // namespace nwctl
