// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "plan.hpp"

#include <algorithm>
#include <iterator>

#include <sys/socket.h>

namespace bmc::manager {

namespace {

/* Metrics of the ports' routes: each has its own, so that one never stands in another's place. */
constexpr std::uint32_t defaultRouteMetric(unsigned port)
{
    return 100 + port;
}

constexpr std::uint32_t staticRouteMetric(unsigned port, unsigned number)
{
    return 200 + NW_ROUTE_COUNT * port + number;
}

template <typename Item>
bool contains(const std::vector<Item> &items, const Item &item)
{
    return std::ranges::find(items, item) != items.end();
}

Address ipv4AddressOf(const NW_LAN_CFG_PORT_S &port)
{
    return ipv4(port.aucIpv4Addr, prefixOf(port.aucIpv4Mask));
}

Address ipv6AddressOf(const NW_LAN_CFG_PORT_S &port)
{
    return ipv6(port.aucIpv6Addr, port.ucIpv6Prefix);
}

void addFamily(PortState &wanted, const Address &address, const Address &gateway, unsigned port)
{
    if (!isUnset(address)) {
        wanted.addresses.push_back(address);
    }
    if (!isUnset(gateway)) {
        wanted.routes.push_back({{gateway.family, 0, {}}, gateway, defaultRouteMetric(port)});
    }
}

void addIpv4Routes(PortState &wanted, const NW_LAN_CFG_PORT_S &entry, unsigned port)
{
    for (unsigned number = 0; number < NW_ROUTE_COUNT; number++) {
        const NW_LAN_CFG_IPV4_ROUTE_S &route = entry.astIpv4Route[number];
        if (route.ucState == 1) {
            wanted.routes.push_back({networkOf(ipv4(route.aucAddr, prefixOf(route.aucMask))),
                                     ipv4(route.aucGateway), staticRouteMetric(port, number)});
        }
    }
}

void addIpv6Routes(PortState &wanted, const NW_LAN_CFG_PORT_S &entry, unsigned port)
{
    for (unsigned number = 0; number < NW_ROUTE_COUNT; number++) {
        const NW_LAN_CFG_IPV6_ROUTE_S &route = entry.astIpv6Route[number];
        if (route.ucState == 1) {
            wanted.routes.push_back({networkOf(ipv6(route.aucAddr, route.ucPrefix)),
                                     ipv6(route.aucGateway), staticRouteMetric(port, number)});
        }
    }
}

/* The changes of one kind that a list of addresses needs in one family. */
void append(std::vector<Change> &changes, Action action, const std::vector<Address> &addresses,
            int family)
{
    for (const Address &address : addresses) {
        if (address.family == family) {
            changes.push_back({action, address});
        }
    }
}

void append(std::vector<Change> &changes, Action action, const std::vector<Route> &routes)
{
    std::ranges::transform(routes, std::back_inserter(changes), [action](const Route &route) {
        return Change{action, {}, route};
    });
}

template <typename Item, typename Predicate>
std::vector<Item> those(const std::vector<Item> &items, Predicate predicate)
{
    std::vector<Item> kept;
    std::ranges::copy_if(items, std::back_inserter(kept), predicate);
    return kept;
}

} // namespace

bool isServed(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const bool isBond = port == NW_PORT_BOND0;
    const std::uint8_t mode = isBond ? NW_IFC_STATE_ADAPTIVE : NW_IFC_STATE_SEPARATE;
    return state.ucIfcState == mode && state.aucPortPresent[port] != 0;
}

std::vector<Address> addressesIn(const NW_LAN_CFG_PORT_S &port)
{
    return those(std::vector{ipv4AddressOf(port), ipv6AddressOf(port)},
                 [](const Address &address) { return !isUnset(address); });
}

PortState wantedState(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                      unsigned port)
{
    const NW_LAN_CFG_PORT_S &entry = lan.astPort[port];
    PortState wanted;
    wanted.isServed = isServed(state, port);
    wanted.isUp = wanted.isServed && entry.ucLanEnable == 1;
    if (wanted.isUp && entry.ucIpv4Enable == 1) {
        addFamily(wanted, ipv4AddressOf(entry), ipv4(entry.aucIpv4Gateway), port);
        addIpv4Routes(wanted, entry, port);
    }
    if (wanted.isUp && entry.ucIpv6Enable == 1) {
        addFamily(wanted, ipv6AddressOf(entry), ipv6(entry.aucIpv6Gateway), port);
        addIpv6Routes(wanted, entry, port);
    }
    return wanted;
}

std::vector<Change> planChanges(const KernelState &actual, const std::vector<Address> &managed,
                                const PortState &wanted)
{
    const auto missing = those(wanted.addresses, [&](const Address &address) {
        return !contains(actual.addresses, address) || !contains(managed, address);
    });
    const auto stale = those(actual.addresses, [&](const Address &address) {
        return contains(managed, address) && !contains(wanted.addresses, address);
    });
    /* The kernel drops a route with the address it depends on, so a family whose addresses change
     * has its routes taken out first and put back last. */
    const auto stays = [&](const Route &route) {
        const auto isOfFamily = [&](const Address &address) {
            return address.family == route.destination.family;
        };
        return contains(actual.routes, route) && contains(wanted.routes, route) &&
               std::ranges::none_of(missing, isOfFamily) && std::ranges::none_of(stale, isOfFamily);
    };
    const auto moves = [&](const Route &route) { return !stays(route); };

    std::vector<Change> changes;
    if (wanted.isUp && !actual.isUp) {
        changes.push_back({Action::linkUp});
    }
    append(changes, Action::removeRoute, those(actual.routes, moves));
    /* The last IPv4 address takes all routes of the interface with it, others' included: the new
     * one comes first. An IPv6 address may only change its prefix length, which the kernel takes
     * for the same address: the old one goes first. */
    append(changes, Action::addAddress, missing, AF_INET);
    append(changes, Action::removeAddress, stale, AF_INET);
    append(changes, Action::removeAddress, stale, AF_INET6);
    append(changes, Action::addAddress, missing, AF_INET6);
    append(changes, Action::addRoute, those(wanted.routes, moves));
    if (wanted.isServed && !wanted.isUp && actual.isUp) {
        changes.push_back({Action::linkDown});
    }
    return changes;
}

} // namespace bmc::manager
