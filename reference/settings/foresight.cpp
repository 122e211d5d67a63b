// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/foresight.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "common/hex.hpp"

namespace bmc::settings {

namespace {

constexpr const char *routeKeys[] = {"ipv6-route1", "ipv6-route2"};
static_assert(std::size(routeKeys) == NW_ROUTE_COUNT);

/* A route that a port wants, and the setting that asks for it. */
struct Way {
    std::string key;
    Address destination;
    Address gateway; /* unset: on the link */

    bool operator==(const Way &) const = default;
};

/* What a port has of IPv6; nothing while it is off. */
struct Ipv6Side {
    std::string interface;
    Address address;
    std::vector<Way> ways;
};

std::optional<Ipv6Side> ipv6SideOf(const Configuration &configuration, unsigned port)
{
    const NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    if (!isServed(configuration.state, port) || entry.ucLanEnable != 1 || entry.ucIpv6Enable != 1) {
        return std::nullopt;
    }
    Ipv6Side side{nameOf(configuration.state, port),
                  ipv6(entry.aucIpv6Addr, entry.ucIpv6Prefix),
                  {{"ipv6-gateway", {AF_INET6, 0, {}}, ipv6(entry.aucIpv6Gateway)}}};
    for (unsigned number = 0; number < NW_ROUTE_COUNT; number++) {
        const NW_LAN_CFG_IPV6_ROUTE_S &route = entry.astIpv6Route[number];
        if (route.ucState == 1) {
            side.ways.push_back(
                {routeKeys[number], ipv6(route.aucAddr, route.ucPrefix), ipv6(route.aucGateway)});
        }
    }
    std::erase_if(side.ways, [](const Way &way) {
        return isUnset(way.gateway) && way.destination.prefix == 0;
    });
    return side;
}

bool isOnLink(const Address &gateway, const Ipv6Side &side, const std::vector<OnLink> &kernel)
{
    const bool isBesidePort = !isUnset(side.address) && isInSubnetOf(gateway, side.address);
    return isBesidePort ||
           std::ranges::any_of(side.ways,
                               [&](const Way &way) {
                                   return isUnset(way.gateway) &&
                                          isInSubnetOf(gateway, way.destination);
                               }) ||
           std::ranges::any_of(kernel, [&](const OnLink &known) {
               return known.interface == side.interface && isInSubnetOf(gateway, known.network);
           });
}

/* Why the kernel refuses the gateway, null where it may take it. */
const char *objectionTo(const Address &gateway, const Ipv6Side &side,
                        const std::vector<OnLink> *kernel)
{
    if (gateway.bytes == side.address.bytes) {
        return "is the port's own address";
    }
    const bool isReachable =
        kernel == nullptr || isLinkLocal(gateway) || isOnLink(gateway, side, *kernel);
    return isReachable ? nullptr : "is in no network of the port";
}

void requireGatewaysOf(unsigned port, const std::optional<Ipv6Side> &before, const Ipv6Side &after,
                       const std::optional<std::vector<OnLink>> &kernel)
{
    const bool wasThere = before && before->interface == after.interface;
    const bool hasSameAddress = wasThere && before->address == after.address;
    for (const Way &way : after.ways) {
        const bool isOld =
            hasSameAddress && std::ranges::find(before->ways, way) != before->ways.end();
        if (isOld || isUnset(way.gateway)) {
            continue;
        }
        const auto *known = wasThere && kernel ? &*kernel : nullptr;
        if (const char *objection = objectionTo(way.gateway, after, known)) {
            Refusal refusal(static_cast<std::uint32_t>(Result::kernelRefused),
                            after.interface + ": the kernel would refuse the gateway " +
                                textOf(way.gateway) + ", which " + objection);
            refusal.blame(Section::lan, port, findSetting(Section::lan, way.key));
            throw refusal;
        }
    }
}

} // namespace

/* destination length source length gateway metric references uses flags interface, numbers and
 * addresses in hexadecimal */
std::vector<OnLink> onLinkIn(std::istream &routes)
{
    constexpr unsigned long reject = 0x200;
    std::vector<OnLink> found;
    for (std::string line; std::getline(routes, line);) {
        std::istringstream fields(line);
        std::string destination;
        std::string gateway;
        std::string ignored;
        std::string interface;
        unsigned prefix = 0;
        unsigned long flags = 0;
        fields >> destination >> std::hex >> prefix >> ignored >> ignored >> gateway >> ignored >>
            ignored >> ignored >> flags >> interface;
        const auto bytes = parseHex(destination);
        const bool isWhole = fields && bytes && bytes->size() == NW_IPV6_SIZE;
        const bool hasGateway = gateway.find_first_not_of('0') != std::string::npos;
        if (isWhole && !hasGateway && (flags & reject) == 0) {
            found.push_back({interface, ipv6(bytes->data(), prefix)});
        }
    }
    return found;
}

std::optional<std::vector<OnLink>> knownOnLink()
{
    std::ifstream routes("/proc/net/ipv6_route");
    return routes ? std::optional(onLinkIn(routes)) : std::nullopt;
}

void requireGateways(const Configuration &before, const Configuration &after,
                     const std::optional<std::vector<OnLink>> &kernel)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        if (const auto side = ipv6SideOf(after, port)) {
            requireGatewaysOf(port, ipv6SideOf(before, port), *side, kernel);
        }
    }
}

} // namespace bmc::settings
