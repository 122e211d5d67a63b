// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Ownership of the netlink library's objects, and its codes as exceptions. */
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <netlink/errno.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/route/addr.h>
#include <netlink/route/link.h>
#include <netlink/route/route.h>

#include "manager/state/actual.hpp"

namespace bmc::manager {

struct NetlinkRelease {
    void operator()(nl_sock *socket) const
    {
        nl_socket_free(socket);
    }
    void operator()(nl_cb *callbacks) const
    {
        nl_cb_put(callbacks);
    }
    void operator()(nl_addr *address) const
    {
        nl_addr_put(address);
    }
    void operator()(rtnl_addr *address) const
    {
        rtnl_addr_put(address);
    }
    void operator()(rtnl_link *link) const
    {
        rtnl_link_put(link);
    }
    void operator()(rtnl_route *route) const
    {
        rtnl_route_put(route);
    }
};

template <typename Object>
using Owned = std::unique_ptr<Object, NetlinkRelease>;

inline void require(int status, const std::string &what)
{
    if (status < 0) {
        throw MachineError(what + ": " + nl_geterror(status));
    }
}

/* Asks for everything of a kind and calls visit for each message of the answer; it answers the
 * netlink library's code. header begins the request. Throws MachineError unless the answer is
 * whole.
 */
void dump(nl_sock *socket, int type, const void *header, std::size_t size,
          const std::function<int(nl_msg *)> &visit);

/* Changes to links; each answers the netlink library's code. */
int addBond(nl_sock *socket, const Item &bond);
int setBondMode(nl_sock *socket, const Item &mode);
int setBondMonitor(nl_sock *socket, const Item &monitor);
int joinBond(nl_sock *socket, const Item &member);
int leaveBond(nl_sock *socket, const Item &member);
int addVlan(nl_sock *socket, const Item &vlan);
int removeLink(nl_sock *socket, const Item &link);
int setUpOrDown(nl_sock *socket, const Item &link);
int setArpIgnore(nl_sock *socket, const Item &setting);
int setSecondaries(nl_sock *socket, const Item &setting);
int setHopLimit(nl_sock *socket, const Item &setting);

/* Where the kernel has the hop limit of an interface's IPv6 packets. */
inline std::string hopLimitFile(const std::string &interface)
{
    return "/proc/sys/net/ipv6/conf/" + interface + "/hop_limit";
}

/* Index of an interface; throws MissingInterface. */
int indexOf(const std::string &interface);

} // namespace bmc::manager
