// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "segments.hpp"

namespace bmc::manager {

namespace {

/* The port whose routes a new address of the port may lie in. The bond has nobody beside it but
 * the wireless interface, into which its own routes may lead. */
unsigned neighbourOf(unsigned port)
{
    return port == NW_PORT_BOND0 ? port : NW_PORT_ETH0 + NW_PORT_ETH1 - port;
}

} // namespace

void addChecks(SegmentChecks &checks, unsigned port, const ChangeBits &bits)
{
    for (const LanField &field : lanFields()) {
        if (isSelected(field, bits)) {
            checks.changedRoutes[port] |= field.reach.ownRoutes;
            checks.addresses |= field.reach.addresses;
            checks.otherRoutes[neighbourOf(port)] |= field.reach.neighboursRoutes;
        }
    }
}

SegmentChecks allChecks()
{
    SegmentChecks checks;
    checks.addresses = NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;
    checks.otherRoutes.fill(ipv4Routes | ipv6Routes);
    return checks;
}

NW_RESULT findConflict(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                       const NW_WIFI_ADDR_S &wireless, const SegmentChecks &checks)
{
    NW_RESULT found = NW_OK;
    const auto checkRoutes = [&](const RouteSets &routes) {
        for (unsigned port = 0; port < NW_PORT_COUNT && found == NW_OK; port++) {
            found = LIB_NW_CheckIPv4v6RouteSameSegment(state.ucIfcState, portSetOf(port),
                                                       routes[port], &wireless, &lan);
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

} // namespace bmc::manager
