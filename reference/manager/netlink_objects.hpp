/* Ownership of the netlink library's objects. */
#pragma once

#include <memory>

#include <netlink/cache.h>
#include <netlink/route/addr.h>
#include <netlink/route/link.h>
#include <netlink/route/route.h>

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

} // namespace bmc::manager
