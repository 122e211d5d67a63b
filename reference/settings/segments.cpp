// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/segments.hpp"

namespace bmc::settings {

namespace {

constexpr std::uint32_t allRoutes = NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2 |
                                    NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2;

/* The port whose routes a new address of the port may lie in. The bond has nobody beside it but
 * the wireless interface, into which its own routes may lead. */
unsigned neighbourOf(unsigned port)
{
    return port == NW_PORT_BOND0 ? port : NW_PORT_ETH0 + NW_PORT_ETH1 - port;
}

} // namespace

void addChecks(SegmentChecks &checks, const Edit &edit)
{
    for (const Setting &setting : settingsOf(edit.section)) {
        if (isSelected(edit, setting)) {
            checks.changedRoutes.at(edit.port) |= setting.reach.ownRoutes;
            checks.addresses |= setting.reach.addresses;
            checks.otherRoutes.at(neighbourOf(edit.port)) |= setting.reach.neighboursRoutes;
        }
    }
}

SegmentChecks allChecks()
{
    SegmentChecks checks;
    checks.addresses = NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;
    checks.otherRoutes.fill(allRoutes);
    return checks;
}

bool concernWireless(const SegmentChecks &checks)
{
    constexpr std::uint32_t ipv4Routes = NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2;
    std::uint32_t routes = 0;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        routes |= checks.changedRoutes.at(port) | checks.otherRoutes.at(port);
    }
    return (checks.addresses & NW_SEGCHK_IPV4) != 0 || (routes & ipv4Routes) != 0;
}

NW_RESULT findConflict(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                       const NW_WIFI_ADDR_S &wireless, const SegmentChecks &checks)
{
    NW_RESULT found = NW_OK;
    const auto checkRoutes = [&](const RouteSets &routes) {
        for (unsigned port = 0; port < NW_PORT_COUNT && found == NW_OK; port++) {
            found = LIB_NW_CheckIPv4v6RouteSameSegment(state.ucIfcState, 1U << port,
                                                       routes.at(port), &wireless, &lan);
        }
    };

    checkRoutes(checks.changedRoutes);
    if (found == NW_OK) {
        found = LIB_NW_CheckIPv4v6SameSegment(state.ucIfcState, NW_PORTSET_ALL, checks.addresses,
                                              &wireless, &lan);
    }
    checkRoutes(checks.otherRoutes);
    return found;
}

} // namespace bmc::settings
