// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "restart.hpp"

#include "auto_negotiation.hpp"
#include "network_mng/operate_log.h"
#include "refusal.hpp"

namespace bmc::manager {

void editRestart(Draft &draft, Payload payload)
{
    constexpr std::uint32_t longest = 3600;
    const auto seconds = contentOf<std::uint32_t>(payload);
    require(seconds <= longest, Result::badDelay, "restart");
    if (seconds == 0) {
        selectEverything(draft);
    } else {
        draft.restartDelay = std::chrono::seconds(seconds);
    }
}

void selectEverything(Draft &draft)
{
    draft.modules =
        NW_LOG_HOSTNAME | NW_LOG_LAN | NW_LOG_DNS | NW_LOG_LLDP | NW_LOG_NET_MODE | NW_LOG_AN;
    draft.ports = {NW_PORT_ETH0, NW_PORT_ETH1, NW_PORT_BOND0};
    draft.linkModes = portsWithLinkMode(draft.after.an);
}

} // namespace bmc::manager
