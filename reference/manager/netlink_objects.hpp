// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Ownership of the netlink library's objects. */
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <netlink/cache.h>
#include <netlink/errno.h>
#include <netlink/route/addr.h>
#include <netlink/route/link.h>
#include <netlink/route/route.h>

#include "kernel.hpp"

namespace bmc::manager {

struct NetlinkRelease {
    void operator()(nl_cache *cache) const
    {
        nl_cache_free(cache);
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
        throw KernelError(what + ": " + nl_geterror(status));
    }
}

/* Changes what set puts into an empty link. */
inline int setLink(nl_sock *socket, const Interface &interface,
                   const std::function<int(rtnl_link *)> &set)
{
    Owned<rtnl_link> present(rtnl_link_alloc());
    rtnl_link_set_ifindex(present.get(), interface.index);
    Owned<rtnl_link> wanted(rtnl_link_alloc());
    const int status = set(wanted.get());
    return status < 0 ? status : rtnl_link_change(socket, present.get(), wanted.get(), 0);
}

} // namespace bmc::manager
