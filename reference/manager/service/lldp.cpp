// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

enum Bit : std::uint8_t { enableBit = 1, workModeBit = 2 };

} // namespace

void editLldp(Change &change, Payload payload)
{
    const auto request = contentOf<NW_LLDP_SET_S>(payload);
    NW_LLDP_DB_INFO_S &record = change.after.lldp;
    require((request.ucSetMask & ~(enableBit | workModeBit)) == 0, Result::unknownField, "LLDP");
    if ((request.ucSetMask & enableBit) != 0) {
        require(request.ucLldpEnable <= 1, Result::badLldpMode, "LLDP state");
        record.ucLldpEnable = request.ucLldpEnable;
    }
    if ((request.ucSetMask & workModeBit) != 0) {
        require(request.ucLldpWorkMode >= 1 && request.ucLldpWorkMode <= 3, Result::badLldpMode,
                "LLDP work mode");
        record.ucLldpWorkMode = request.ucLldpWorkMode;
    }
    if (request.ucSetMask != 0) {
        change.scope.select(NW_LOG_LLDP);
    }
}

} // namespace bmc::manager
