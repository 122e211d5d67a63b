// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/lan_checks.hpp"

#include "common/address.hpp"
#include "network_mng/check.h"
#include "refusal.hpp"
#include "wireless.hpp"

namespace bmc::manager {

namespace {

bool isZero(const std::uint8_t *bytes, std::size_t size)
{
    return LIB_NW_CheckIPIsZero(bytes, static_cast<std::int32_t>(size)) != 0;
}

void checkIpv4Gateway(const NW_LAN_CFG_PORT_S &port)
{
    const Address address = ipv4(port.aucIpv4Addr, prefixOf(port.aucIpv4Mask));
    const Address gateway = ipv4(port.aucIpv4Gateway);
    const bool applies = !isUnset(address) && !isUnset(gateway);
    const bool fits = isInSubnetOf(gateway, address) && gateway.bytes != address.bytes;
    require(!applies || fits, Result::gatewayOutside, "IPv4 gateway");
}

/* A destination needs an extent. */
void checkRoutes(const NW_LAN_CFG_PORT_S &port)
{
    for (const NW_LAN_CFG_IPV4_ROUTE_S &route : port.astIpv4Route) {
        require(route.ucState == 0 || !isZero(route.aucMask, sizeof(route.aucMask)),
                Result::badIpv4Route, "IPv4 route mask");
    }
    for (const NW_LAN_CFG_IPV6_ROUTE_S &route : port.astIpv6Route) {
        require(route.ucState == 0 || route.ucPrefix != 0, Result::badIpv6Route,
                "IPv6 route prefix length");
    }
}

} // namespace

void checkPort(const NW_LAN_CFG_PORT_S &port)
{
    require(isZero(port.aucIpv4Addr, NW_IPV4_SIZE) || !isZero(port.aucIpv4Mask, NW_IPV4_SIZE),
            Result::badIpv4Mask, "IPv4 mask");
    checkIpv4Gateway(port);
    require(isZero(port.aucIpv6Addr, NW_IPV6_SIZE) || port.ucIpv6Prefix != 0, Result::badIpv6Prefix,
            "IPv6 prefix length");
    checkRoutes(port);
}

void checkSegments(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                   const SegmentChecks &checks)
{
    const NW_RESULT verdict = findConflict(state, lan, readWireless(), checks);
    if (verdict != NW_OK) {
        throw Refusal(verdict, "an address or a route in another's segment");
    }
}

} // namespace bmc::manager
