// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "kernel.hpp"

#include <algorithm>
#include <functional>

#include <linux/ip.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/netlink.h>
#include <netlink/route/nexthop.h>

#include "netlink_objects.hpp"

namespace bmc::manager {

namespace {

Owned<nl_addr> netlinkAddress(const Address &address, unsigned prefix)
{
    Owned<nl_addr> built(
        nl_addr_build(address.family, address.bytes.data(), sizeOf(address.family)));
    nl_addr_set_prefixlen(built.get(), static_cast<int>(prefix));
    return built;
}

Address addressOf(nl_addr *address, int prefix)
{
    const auto *bytes = static_cast<const std::uint8_t *>(nl_addr_get_binary_addr(address));
    const auto length = static_cast<unsigned>(prefix);
    return nl_addr_get_family(address) == AF_INET ? ipv4(bytes, length) : ipv6(bytes, length);
}

bool isIp(int family)
{
    return family == AF_INET || family == AF_INET6;
}

Owned<rtnl_addr> interfaceAddress(const Interface &interface, const Address &address)
{
    Owned<rtnl_addr> built(rtnl_addr_alloc());
    rtnl_addr_set_ifindex(built.get(), interface.index);
    const auto local = netlinkAddress(address, address.prefix);
    require(rtnl_addr_set_local(built.get(), local.get()), "address");
    return built;
}

Owned<rtnl_route> netlinkRoute(const Interface &interface, const Route &wanted)
{
    const Address &destination = wanted.destination;
    Owned<rtnl_route> route(rtnl_route_alloc());
    rtnl_route_set_family(route.get(), static_cast<std::uint8_t>(destination.family));
    rtnl_route_set_table(route.get(), RT_TABLE_MAIN);
    rtnl_route_set_protocol(route.get(), routeProtocol);
    rtnl_route_set_priority(route.get(), wanted.metric);
    rtnl_route_set_dst(route.get(), netlinkAddress(destination, destination.prefix).get());

    /* The route owns its hop. */
    rtnl_nexthop *hop = rtnl_route_nh_alloc();
    rtnl_route_nh_set_ifindex(hop, interface.index);
    if (!isUnset(wanted.gateway)) {
        rtnl_route_nh_set_gateway(hop, netlinkAddress(wanted.gateway, wanted.gateway.prefix).get());
    }
    rtnl_route_add_nexthop(route.get(), hop);
    return route;
}

int setUp(nl_sock *socket, const Interface &interface, const Change &)
{
    return setLink(socket, interface, [](rtnl_link *link) {
        rtnl_link_set_flags(link, IFF_UP);
        return 0;
    });
}

int setDown(nl_sock *socket, const Interface &interface, const Change &)
{
    return setLink(socket, interface, [](rtnl_link *link) {
        rtnl_link_unset_flags(link, IFF_UP);
        return 0;
    });
}

int addAddress(nl_sock *socket, const Interface &interface, const Change &change)
{
    return rtnl_addr_add(socket, interfaceAddress(interface, change.address).get(),
                         NLM_F_CREATE | NLM_F_EXCL);
}

int removeAddress(nl_sock *socket, const Interface &interface, const Change &change)
{
    return rtnl_addr_delete(socket, interfaceAddress(interface, change.address).get(), 0);
}

int addRoute(nl_sock *socket, const Interface &interface, const Change &change)
{
    return rtnl_route_add(socket, netlinkRoute(interface, change.route).get(),
                          NLM_F_CREATE | NLM_F_EXCL);
}

int removeRoute(nl_sock *socket, const Interface &interface, const Change &change)
{
    return rtnl_route_delete(socket, netlinkRoute(interface, change.route).get(), 0);
}

struct ActionRow {
    Action action;
    Action inverse;
    const char *text;
    bool isRemoval;
    int (*run)(nl_sock *socket, const Interface &interface, const Change &change);
};

/* By action. */
/* clang-format off */
constexpr ActionRow actions[] = {
    {Action::linkUp,        Action::linkDown,      "enable link",    false, setUp},
    {Action::linkDown,      Action::linkUp,        "disable link",   false, setDown},
    {Action::addAddress,    Action::removeAddress, "add address",    false, addAddress},
    {Action::removeAddress, Action::addAddress,    "remove address", true,  removeAddress},
    {Action::addRoute,      Action::removeRoute,   "add route",      false, addRoute},
    {Action::removeRoute,   Action::addRoute,      "remove route",   true,  removeRoute},
};
/* clang-format on */

const ActionRow &rowOf(Action action)
{
    return actions[static_cast<std::size_t>(action)];
}

bool isAbsent(int status)
{
    return status == -NLE_NOADDR || status == -NLE_OBJ_NOTFOUND;
}

/* Calls visit for each object of a dump. */
template <typename Object>
void forEach(nl_cache *cache, const std::function<void(Object *)> &visit)
{
    for (nl_object *object = nl_cache_get_first(cache); object != nullptr;
         object = nl_cache_get_next(object)) {
        visit(reinterpret_cast<Object *>(object));
    }
}

/* The route's one hop, if it is a route of the manager's over the interface. */
rtnl_nexthop *ownHop(rtnl_route *route, const Interface &interface)
{
    const bool isOwn = rtnl_route_get_protocol(route) == routeProtocol &&
                       rtnl_route_get_table(route) == RT_TABLE_MAIN &&
                       rtnl_route_get_dst(route) != nullptr && rtnl_route_get_nnexthops(route) == 1;
    rtnl_nexthop *hop = isOwn ? rtnl_route_nexthop_n(route, 0) : nullptr;
    return hop != nullptr && rtnl_route_nh_get_ifindex(hop) == interface.index ? hop : nullptr;
}

/* All zero where the kernel names none, as for the destination of a default route. */
Address addressOrUnset(nl_addr *address, int family, unsigned prefix)
{
    const bool isNamed = address != nullptr && nl_addr_get_len(address) == sizeOf(family);
    return isNamed ? addressOf(address, static_cast<int>(prefix)) : Address{family, prefix, {}};
}

Route routeOf(rtnl_route *route, rtnl_nexthop *hop)
{
    const int family = rtnl_route_get_family(route);
    nl_addr *destination = rtnl_route_get_dst(route);
    return {addressOrUnset(destination, family, nl_addr_get_prefixlen(destination)),
            addressOrUnset(rtnl_route_nh_get_gateway(hop), family,
                           static_cast<unsigned>(8 * sizeOf(family))),
            rtnl_route_get_priority(route)};
}

std::string textOf(const Route &route)
{
    return (route.destination.prefix == 0 ? "default" : textOf(route.destination)) +
           (isUnset(route.gateway) ? "" : " via " + textOf(route.gateway));
}

} // namespace

Change inverseOf(const Change &change)
{
    return {rowOf(change.action).inverse, change.address, change.route};
}

std::string textOf(const Change &change)
{
    std::string text = rowOf(change.action).text;
    if (change.address.family != 0) {
        text += " " + textOf(change.address);
    }
    if (change.route.destination.family != 0) {
        text += " " + textOf(change.route);
    }
    return text;
}

void Kernel::Release::operator()(nl_sock *socket) const
{
    nl_socket_free(socket);
}

Kernel::Kernel() : socket_(nl_socket_alloc())
{
    require(nl_connect(socket_.get(), NETLINK_ROUTE), "cannot open the kernel's route socket");
}

std::optional<Interface> Kernel::find(const std::string &name) const
{
    if (name.size() >= IFNAMSIZ) {
        return std::nullopt; /* longer than any interface's */
    }
    rtnl_link *found = nullptr;
    const int status = rtnl_link_get_kernel(socket_.get(), 0, name.c_str(), &found);
    if (status == -NLE_NODEV || status == -NLE_OBJ_NOTFOUND) {
        return std::nullopt;
    }
    require(status, "cannot read interface " + name);

    const Owned<rtnl_link> link(found);
    Interface interface {
        rtnl_link_get_ifindex(found), (rtnl_link_get_flags(found) & IFF_UP) != 0, {}
    };
    nl_addr *mac = rtnl_link_get_addr(found);
    if (mac != nullptr && nl_addr_get_len(mac) == interface.mac.size()) {
        std::copy_n(static_cast<const std::uint8_t *>(nl_addr_get_binary_addr(mac)),
                    interface.mac.size(), interface.mac.begin());
    }
    return interface;
}

std::vector<Address> Kernel::addressesOf(const Interface &interface) const
{
    nl_cache *filled = nullptr;
    require(rtnl_addr_alloc_cache(socket_.get(), &filled), "cannot read addresses");
    const Owned<nl_cache> cache(filled);

    std::vector<Address> addresses;
    forEach<rtnl_addr>(filled, [&](rtnl_addr *address) {
        if (rtnl_addr_get_ifindex(address) == interface.index &&
            isIp(rtnl_addr_get_family(address)) && rtnl_addr_get_local(address) != nullptr) {
            addresses.push_back(
                addressOf(rtnl_addr_get_local(address), rtnl_addr_get_prefixlen(address)));
        }
    });
    return addresses;
}

std::vector<Route> Kernel::routesOf(const Interface &interface) const
{
    nl_cache *filled = nullptr;
    require(rtnl_route_alloc_cache(socket_.get(), AF_UNSPEC, 0, &filled), "cannot read routes");
    const Owned<nl_cache> cache(filled);

    std::vector<Route> routes;
    forEach<rtnl_route>(filled, [&](rtnl_route *route) {
        if (rtnl_nexthop *hop = ownHop(route, interface)) {
            routes.push_back(routeOf(route, hop));
        }
    });
    return routes;
}

bool Kernel::apply(const Interface &interface, const Change &change) const
{
    const ActionRow &row = rowOf(change.action);
    const int status = row.run(socket_.get(), interface, change);
    if (row.isRemoval && isAbsent(status)) {
        return false;
    }
    require(status, textOf(change));
    return true;
}

} // namespace bmc::manager
