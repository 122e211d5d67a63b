/* Would a change put two ports, or a port and the wireless interface, into one segment? */
#pragma once

#include "lan_change.hpp"
#include "network_mng/check.h"

namespace nwctl {

/* First conflict in the record as the change would leave it. Only what the fields of the change
 * call for is checked, as the network manager itself does; NW_OK without a conflict. */
NW_RESULT checkSegments(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                        NW_LAN_CFG_DB_INFO_S record, const NW_WIFI_ADDR_S &wireless);

} // namespace nwctl
