// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/kernel/kernel.hpp"

#include <algorithm>
#include <system_error>

#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/route/nexthop.h>

#include "manager/kernel/netlink_objects.hpp"
#include "manager/kernel/reading.hpp"

namespace bmc::manager {

namespace {

/* Metric of the routes that the kernel makes for IPv6 addresses. */
constexpr std::uint64_t ipv6SubnetMetric = 256;

Owned<nl_addr> netlinkAddress(const Address &address, unsigned prefix)
{
    Owned<nl_addr> built(
        nl_addr_build(address.family, address.bytes.data(), sizeOf(address.family)));
    nl_addr_set_prefixlen(built.get(), static_cast<int>(prefix));
    return built;
}

Owned<rtnl_addr> interfaceAddress(const Item &item)
{
    Owned<rtnl_addr> built(rtnl_addr_alloc());
    rtnl_addr_set_ifindex(built.get(), indexOf(item.subject));
    const auto local = netlinkAddress(item.address, item.address.prefix);
    require(rtnl_addr_set_local(built.get(), local.get()), "address");
    return built;
}

Owned<rtnl_route> netlinkRoute(const Item &item)
{
    Owned<rtnl_route> route(rtnl_route_alloc());
    rtnl_route_set_family(route.get(), static_cast<std::uint8_t>(item.address.family));
    rtnl_route_set_table(route.get(), RT_TABLE_MAIN);
    rtnl_route_set_protocol(route.get(), routeProtocol);
    rtnl_route_set_priority(route.get(), static_cast<std::uint32_t>(item.number));
    rtnl_route_set_dst(route.get(), netlinkAddress(item.address, item.address.prefix).get());

    const int index = indexOf(item.subject);
    rtnl_nexthop *hop = rtnl_route_nh_alloc(); /* the route owns it */
    rtnl_route_nh_set_ifindex(hop, index);
    if (!isUnset(item.gateway)) {
        rtnl_route_nh_set_gateway(hop, netlinkAddress(item.gateway, item.gateway.prefix).get());
    }
    rtnl_route_add_nexthop(route.get(), hop);
    return route;
}

int addAddress(nl_sock *socket, const Item &item)
{
    return rtnl_addr_add(socket, interfaceAddress(item).get(), NLM_F_CREATE | NLM_F_EXCL);
}

int removeAddress(nl_sock *socket, const Item &item)
{
    return rtnl_addr_delete(socket, interfaceAddress(item).get(), 0);
}

int addRoute(nl_sock *socket, const Item &item)
{
    return rtnl_route_add(socket, netlinkRoute(item).get(), NLM_F_CREATE | NLM_F_EXCL);
}

int removeRoute(nl_sock *socket, const Item &item)
{
    return rtnl_route_delete(socket, netlinkRoute(item).get(), 0);
}

/* As the kernel makes it: it goes with the address. */
int addSubnet(nl_sock *socket, const Item &item)
{
    Item route = item;
    route.gateway = {};
    route.number = item.address.family == AF_INET6 ? ipv6SubnetMetric : 0;
    const Owned<rtnl_route> built = netlinkRoute(route);
    rtnl_route_set_protocol(built.get(), RTPROT_KERNEL);
    if (item.address.family == AF_INET) {
        rtnl_route_set_pref_src(built.get(), netlinkAddress(item.gateway, 32).get());
    }
    return rtnl_route_add(socket, built.get(), NLM_F_CREATE | NLM_F_EXCL);
}

struct Action {
    Kind kind;
    int (*come)(nl_sock *socket, const Item &item);
    int (*go)(nl_sock *socket, const Item &item); /* null for values */
};

/* clang-format off */
constexpr Action actions[] = {
    {Kind::bond,        addBond,        removeLink},
    {Kind::bondMode,    setBondMode,    nullptr},
    {Kind::bondMonitor, setBondMonitor, nullptr},
    {Kind::member,      joinBond,       leaveBond},
    {Kind::link,        setUpOrDown,    nullptr},
    {Kind::arpIgnore,   setArpIgnore,   nullptr},
    {Kind::secondaries, setSecondaries, nullptr},
    {Kind::vlan,        addVlan,        removeLink},
    {Kind::address,     addAddress,     removeAddress},
    {Kind::route,       addRoute,       removeRoute},
    {Kind::subnet,      addSubnet,      nullptr},
    {Kind::hopLimit,    setHopLimit,    nullptr},
};
/* clang-format on */

bool isAbsent(int status)
{
    return status == -NLE_NOADDR || status == -NLE_OBJ_NOTFOUND || status == -NLE_NODEV;
}

} // namespace

Kernel::Kernel()
{
    open();
}

void Kernel::open()
{
    socket_.reset(nl_socket_alloc());
    const int status = socket_ == nullptr ? -NLE_NOMEM : nl_connect(socket_.get(), NETLINK_ROUTE);
    if (status < 0) {
        socket_.reset();
    }
    require(status, "cannot open the kernel's route socket");
    /* Lets the kernel leave out others' routes, of which there may be very many. An old kernel
     * doesn't know it and sends all. */
    const int on = 1;
    /* Nor does it know how to give its reasons in words. */
    for (const int option : {NETLINK_GET_STRICT_CHK, NETLINK_EXT_ACK}) {
        setsockopt(nl_socket_get_fd(socket_.get()), SOL_NETLINK, option, &on, sizeof(on));
    }
    nl_socket_modify_err_cb(socket_.get(), NL_CB_CUSTOM, keepReason, &reason_);
}

std::string Kernel::Reason::words() const
{
    const std::string code = std::generic_category().message(error);
    return text.empty() ? code : text + " (" + code + ")";
}

/* The words stand among the attributes behind the refused message, which is repeated whole or by
 * its header alone. */
int Kernel::keepReason(sockaddr_nl *, nlmsgerr *answer, void *reason)
{
    auto &kept = *static_cast<Reason *>(reason);
    kept = {-answer->error, {}};
    auto *bytes = reinterpret_cast<char *>(answer);
    const auto *header = reinterpret_cast<const nlmsghdr *>(bytes - NLMSG_HDRLEN);
    const std::size_t repeated =
        (header->nlmsg_flags & NLM_F_CAPPED) != 0 ? NLMSG_HDRLEN : answer->msg.nlmsg_len;
    const std::size_t begin = sizeof(answer->error) + NLMSG_ALIGN(repeated);
    const std::size_t end = header->nlmsg_len - NLMSG_HDRLEN;
    if ((header->nlmsg_flags & NLM_F_ACK_TLVS) != 0 && begin < end) {
        nlattr *text = nla_find(reinterpret_cast<nlattr *>(bytes + begin),
                                static_cast<int>(end - begin), NLMSGERR_ATTR_MSG);
        kept.text = text != nullptr ? nla_get_string(text) : "";
    }
    return NL_STOP;
}

template <typename Call>
auto Kernel::guarded(const Call &call)
{
    if (!socket_) {
        open();
    }
    try {
        return call(socket_.get());
    } catch (...) {
        socket_.reset();
        throw;
    }
}

Actual Kernel::read()
{
    return guarded([](nl_sock *socket) { return readKernel(socket, routeProtocol); });
}

void Kernel::apply(const Step &step)
{
    const auto *action = std::ranges::find(actions, step.item.kind, &Action::kind);
    guarded([&](nl_sock *socket) {
        if (step.isRemoval && if_nametoindex(step.item.subject.c_str()) == 0) {
            return;
        }
        reason_ = {};
        const int status = (step.isRemoval ? action->go : action->come)(socket, step.item);
        if (step.isRemoval && isAbsent(status)) {
            return;
        }
        if (status == -NLE_OPNOTSUPP) {
            throw Unsupported(nl_geterror(status));
        }
        if (status < 0) {
            throw MachineError(reason_.error != 0 ? reason_.words() : nl_geterror(status));
        }
    });
}

} // namespace bmc::manager
