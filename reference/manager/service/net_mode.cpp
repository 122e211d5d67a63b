// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include <utility>

#include "manager/service/lan_checks.hpp"
#include "network_mng/check.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint8_t onlyBit = 1;

void swapRoles(NW_IFC_STATE_DB_INFO_S &state)
{
    std::swap(state.acIfcName[NW_PORT_ETH0], state.acIfcName[NW_PORT_ETH1]);
    std::swap(state.aucPortPresent[NW_PORT_ETH0], state.aucPortPresent[NW_PORT_ETH1]);
}

} // namespace

void selectNetMode(Change &change, Payload payload)
{
    const auto request = contentOf<NW_NET_MODE_SET_S>(payload);
    require((request.ucSetMask & ~onlyBit) == 0, Result::unknownField, "network port mode");
    if (request.ucSetMask == 0) {
        return;
    }
    require(request.ucNetMode <= NW_IFC_STATE_ADAPTIVE, Result::badNetMode, "network port mode");

    NW_IFC_STATE_DB_INFO_S &state = change.after.state;
    state.ucIfcState = request.ucNetMode;
    const bool isServable = isServed(state, NW_PORT_ETH0) || isServed(state, NW_PORT_ETH1) ||
                            isServed(state, NW_PORT_BOND0);
    require(isServable, Result::portNotServed, "network port mode");
    change.scope.select(NW_LOG_NET_MODE);
}

void checkNetMode(const Change &change)
{
    checkSegments(change.after.state, change.after.lan, allChecks());
}

void editNetMode(Change &change, Payload payload)
{
    selectNetMode(change, payload);
    if (!change.scope.selected.empty()) {
        checkNetMode(change);
    }
}

void editLanReverse(Change &change, Payload payload)
{
    const auto request = contentOf<NW_LAN_REVERSE_SET_S>(payload);
    require((request.ucSetMask & ~onlyBit) == 0, Result::unknownField, "switchover");
    if (request.ucSetMask == 0) {
        return;
    }
    require(request.ucEnable <= 1, Result::badNetMode, "switchover");

    NW_IFC_STATE_DB_INFO_S &state = change.after.state;
    if (settings::switchoverIn(state) != request.ucEnable) {
        settings::switchoverIn(state) = request.ucEnable;
        swapRoles(state);
    }
    change.scope.select(NW_LOG_LAN_REVERSE);
}

} // namespace bmc::manager
