// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "net_mode.hpp"

#include <utility>

#include "lan_checks.hpp"
#include "network_mng/check.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "plan.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint8_t onlyBit = 1;

/* The switchover that holds stands in a byte of the record that readers copy out. */
std::uint8_t &switchoverIn(NW_IFC_STATE_DB_INFO_S &state)
{
    return state.ucIfcValue1;
}

void selectAllPorts(Draft &draft)
{
    draft.ports = {NW_PORT_ETH0, NW_PORT_ETH1, NW_PORT_BOND0};
}

void swapRoles(NW_IFC_STATE_DB_INFO_S &state)
{
    std::swap(state.acIfcName[NW_PORT_ETH0], state.acIfcName[NW_PORT_ETH1]);
    std::swap(state.aucPortPresent[NW_PORT_ETH0], state.aucPortPresent[NW_PORT_ETH1]);
}

} // namespace

void selectNetMode(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_NET_MODE_SET_S>(payload);
    require((request.ucSetMask & ~onlyBit) == 0, Result::unknownField, "network port mode");
    if (request.ucSetMask == 0) {
        return;
    }
    require(request.ucNetMode <= NW_IFC_STATE_ADAPTIVE, Result::badNetMode, "network port mode");

    NW_IFC_STATE_DB_INFO_S &state = draft.after.state;
    state.ucIfcState = request.ucNetMode;
    const bool isServable = isServed(state, NW_PORT_ETH0) || isServed(state, NW_PORT_ETH1) ||
                            isServed(state, NW_PORT_BOND0);
    require(isServable, Result::portNotServed, "network port mode");
    draft.modules |= NW_LOG_NET_MODE;
    selectAllPorts(draft);
}

void checkNetMode(const Draft &draft)
{
    checkSegments(draft.after.state, draft.after.lan, allChecks());
}

void editNetMode(Draft &draft, Payload payload)
{
    selectNetMode(draft, payload);
    if (draft.modules != 0) {
        checkNetMode(draft);
    }
}

void editLanReverse(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_LAN_REVERSE_SET_S>(payload);
    require((request.ucSetMask & ~onlyBit) == 0, Result::unknownField, "switchover");
    if (request.ucSetMask == 0) {
        return;
    }
    require(request.ucEnable <= 1, Result::badNetMode, "switchover");

    NW_IFC_STATE_DB_INFO_S &state = draft.after.state;
    if (switchoverIn(state) != request.ucEnable) {
        switchoverIn(state) = request.ucEnable;
        swapRoles(state);
    }
    draft.modules |= NW_LOG_LAN_REVERSE;
    selectAllPorts(draft);
}

} // namespace bmc::manager
