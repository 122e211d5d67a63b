// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_check.hpp"

#include "segments.hpp"

namespace nwctl {

NW_RESULT checkSegments(std::span<const LanChange> changes,
                        const NW_IFC_STATE_DB_INFO_S &interfaces, NW_LAN_CFG_DB_INFO_S record,
                        const NW_WIFI_ADDR_S &wireless)
{
    bmc::manager::SegmentChecks checks;
    for (const LanChange &change : changes) {
        bmc::manager::addChecks(checks, change.port, change.bits);
        bmc::manager::applyFields(change.bits, change.fields, record.astPort[change.port]);
    }
    return bmc::manager::findConflict(interfaces, record, wireless, checks);
}

} // namespace nwctl
