// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/lan_rules.hpp"

#include <algorithm>

#include "network_mng/lan.h"
#include "settings/detail/checks.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

void checkIpv4Gateway(const NW_LAN_CFG_PORT_S &port)
{
    const bool applies =
        !isUnset(port.aucIpv4Addr, NW_IPV4_SIZE) && !isUnset(port.aucIpv4Gateway, NW_IPV4_SIZE);
    bool isInside = true;
    for (unsigned index = 0; index < NW_IPV4_SIZE; ++index) {
        const int differing = port.aucIpv4Addr[index] ^ port.aucIpv4Gateway[index];
        isInside = isInside && (differing & port.aucIpv4Mask[index]) == 0;
    }
    const bool isPortItself = std::ranges::equal(port.aucIpv4Addr, port.aucIpv4Gateway);
    require(!applies || (isInside && !isPortItself), Result::gatewayOutside, "IPv4 gateway");
}

/* A destination needs an extent. */
void checkRoutes(const NW_LAN_CFG_PORT_S &port)
{
    for (const NW_LAN_CFG_IPV4_ROUTE_S &route : port.astIpv4Route) {
        require(route.ucState == 0 || !isUnset(route.aucMask, sizeof(route.aucMask)),
                Result::badIpv4Route, "IPv4 route mask");
    }
    for (const NW_LAN_CFG_IPV6_ROUTE_S &route : port.astIpv6Route) {
        require(route.ucState == 0 || route.ucPrefix != 0, Result::badIpv6Route,
                "IPv6 route prefix length");
    }
}

template <typename Route>
void keepValidity(Route &route)
{
    route.ucState = isUnset(route.aucAddr, sizeof(route.aucAddr)) ? 0 : 1;
}

} // namespace

void keepInStep(const Edit &edit, NW_LAN_CFG_PORT_S &port)
{
    for (NW_LAN_CFG_IPV4_ROUTE_S &route : port.astIpv4Route) {
        keepValidity(route);
    }
    for (NW_LAN_CFG_IPV6_ROUTE_S &route : port.astIpv6Route) {
        keepValidity(route);
    }
    const bool isSwitchedOff =
        (edit.bits[0] & NW_LAN_BIT_VLAN_ENABLE) != 0 && vlanOf(port).isEnabled == 0;
    if (isSwitchedOff && (edit.bits[0] & NW_LAN_BIT_VLAN_ID) == 0) {
        port.stVlan.usVlanid = 0;
    }
    if ((edit.bits[0] & NW_LAN_BIT_ARP_SUSPEND) != 0) {
        ArpBytes arp = arpOf(port);
        arp.isResumed = (edit.held[0] & NW_LAN_BIT_ARP_SUSPEND) != 0 ? 1 : 0;
        putArp(port, arp);
    }
}

void checkLanPort(const NW_LAN_CFG_PORT_S &port)
{
    require(isUnset(port.aucIpv4Addr, NW_IPV4_SIZE) || !isUnset(port.aucIpv4Mask, NW_IPV4_SIZE),
            Result::badIpv4Mask, "IPv4 mask");
    checkIpv4Gateway(port);
    require(isUnset(port.aucIpv6Addr, NW_IPV6_SIZE) || port.ucIpv6Prefix != 0,
            Result::badIpv6Prefix, "IPv6 prefix length");
    checkRoutes(port);
}

} // namespace bmc::settings
