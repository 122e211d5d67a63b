// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/kernel/reading.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>
#include <system_error>

#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/ip.h>
#include <linux/ipv6.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/attr.h>
#include <netlink/route/link/inet.h>
#include <netlink/route/link/vlan.h>
#include <netlink/route/nexthop.h>

#include "common/files.hpp"
#include "common/text.hpp"
#include "manager/kernel/netlink_objects.hpp"

namespace bmc::manager {

namespace {

using Visitor = std::function<int(nl_msg *)>;

int visitMessage(nl_msg *message, void *visitor)
{
    return (*static_cast<const Visitor *>(visitor))(message);
}

/* Calls visit with the object that the message describes; answers the netlink library's code. */
template <typename Object, typename Visit>
int parse(nl_msg *message, const Visit &visit)
{
    const auto call = [](nl_object *object, void *context) {
        (*static_cast<const Visit *>(context))(reinterpret_cast<Object *>(object));
    };
    const int status = nl_msg_parse(message, call, const_cast<Visit *>(&visit));
    return status == -NLE_NOMEM ? status : NL_OK; /* what is unknown to it is left out */
}

bool isIp(int family)
{
    return family == AF_INET || family == AF_INET6;
}

Address addressOf(nl_addr *address, unsigned prefix)
{
    const auto *bytes = static_cast<const std::uint8_t *>(nl_addr_get_binary_addr(address));
    return nl_addr_get_family(address) == AF_INET ? ipv4(bytes, prefix) : ipv6(bytes, prefix);
}

/* All zero where the kernel names none, as for the destination of a default route. */
Address addressOrUnset(nl_addr *address, int family, unsigned prefix)
{
    const bool isNamed = address != nullptr && nl_addr_get_len(address) == sizeOf(family);
    return isNamed ? addressOf(address, prefix) : Address{family, prefix, {}};
}

/* The first number of a VLAN's egress map: the priority of what has none of its own. */
std::uint8_t egressPriority(rtnl_link *link)
{
    int count = 0;
    const vlan_map *map = rtnl_link_vlan_get_egress_map(link, &count);
    for (int index = 0; map != nullptr && index < count; index++) {
        if (map[index].vm_from == 0) {
            return static_cast<std::uint8_t>(map[index].vm_to);
        }
    }
    return 0;
}

/* Nested attributes of a kind, by number; null where the message has none. */
nlattr *nested(nlattr *parent, int type)
{
    return parent == nullptr
               ? nullptr
               : nla_find(static_cast<nlattr *>(nla_data(parent)), nla_len(parent), type);
}

class Reader {
public:
    Reader(nl_sock *socket, std::uint8_t protocol) : socket_(socket), protocol_(protocol) {}

    Actual read()
    {
        readLinks();
        addHopLimitOfNewInterfaces();
        readAddresses();
        for (const int family : {AF_INET, AF_INET6}) {
            for (const std::uint8_t protocol : {protocol_, std::uint8_t{RTPROT_KERNEL}}) {
                readRoutes(static_cast<std::uint8_t>(family), protocol);
            }
        }
        return std::move(actual_);
    }

private:
    std::string nameOf(int index) const
    {
        const auto found = names_.find(index);
        return found != names_.end() ? found->second : "";
    }

    void add(const Item &item)
    {
        actual_.items.insert(item);
    }

    void readLinks()
    {
        std::map<std::string, int> lower;   /* index of the link below, by sub-interface */
        std::map<std::string, int> masters; /* by member */
        const ifinfomsg header{};
        dump(socket_, RTM_GETLINK, &header, sizeof(header), [&](nl_msg *message) {
            return parse<rtnl_link>(message, [&](rtnl_link *link) {
                const std::string name = rtnl_link_get_name(link);
                addLink(name, link, message);
                if (const int master = rtnl_link_get_master(link)) {
                    masters[name] = master;
                }
                addHopLimit(name, message);
                if (rtnl_link_is_vlan(link) != 0) {
                    lower[name] = rtnl_link_get_link(link);
                    add({Kind::vlan,
                         name,
                         {},
                         {},
                         {},
                         vlanNumber(static_cast<std::uint16_t>(rtnl_link_vlan_get_id(link)),
                                    egressPriority(link))});
                }
                if (actual_.links[name].type == "bond") {
                    addBond(name, message);
                }
            });
        });
        nameVlans(lower);
        for (const auto &[name, master] : masters) {
            if (actual_.links[nameOf(master)].type == "bond") {
                add({Kind::member, name, nameOf(master)});
            }
        }
    }

    /* The link below a sub-interface may be told after it. */
    void nameVlans(const std::map<std::string, int> &lower)
    {
        Items vlans;
        std::erase_if(actual_.items, [&](const Item &item) {
            const bool isVlan = item.kind == Kind::vlan;
            if (isVlan) {
                vlans.insert(item);
            }
            return isVlan;
        });
        for (Item vlan : vlans) {
            vlan.text = nameOf(lower.at(vlan.subject));
            add(vlan);
        }
    }

    void addLink(const std::string &name, rtnl_link *link, nl_msg *message)
    {
        Link &entry = actual_.links[name];
        const char *type = rtnl_link_get_type(link);
        entry.index = rtnl_link_get_ifindex(link);
        entry.type = type == nullptr ? "" : type;
        entry.hasCarrier = rtnl_link_get_carrier(link) != 0;
        const nlattr *mac = ownMac(message);
        if (mac != nullptr && nla_len(mac) == static_cast<int>(entry.mac.size())) {
            std::copy_n(static_cast<const std::uint8_t *>(nla_data(mac)), entry.mac.size(),
                        entry.mac.begin());
        }
        names_[entry.index] = name;

        const bool isUp = (rtnl_link_get_flags(link) & IFF_UP) != 0;
        add({Kind::link, name, {}, {}, {}, isUp});
        addIpv4Setting(name, link, Kind::arpIgnore, IPV4_DEVCONF_ARP_IGNORE);
        addIpv4Setting(name, link, Kind::secondaries, IPV4_DEVCONF_PROMOTE_SECONDARIES);
    }

    /* A member of a bond shows the bond's MAC address, and has its own again when it leaves. */
    static const nlattr *ownMac(nl_msg *message)
    {
        nlattr *info = nlmsg_find_attr(nlmsg_hdr(message), sizeof(ifinfomsg), IFLA_LINKINFO);
        const nlattr *own = nested(nested(info, IFLA_INFO_SLAVE_DATA), IFLA_BOND_SLAVE_PERM_HWADDR);
        return own != nullptr
                   ? own
                   : nlmsg_find_attr(nlmsg_hdr(message), sizeof(ifinfomsg), IFLA_ADDRESS);
    }

    void addIpv4Setting(const std::string &name, rtnl_link *link, Kind kind, unsigned setting)
    {
        std::uint32_t value = 0;
        if (rtnl_link_inet_get_conf(link, setting, &value) >= 0) {
            add({kind, name, {}, {}, {}, value});
        }
    }

    /* One of the settings of IPv6, which stand in the kernel's order; none where it is off. */
    void addHopLimit(const std::string &name, nl_msg *message)
    {
        nlattr *families = nlmsg_find_attr(nlmsg_hdr(message), sizeof(ifinfomsg), IFLA_AF_SPEC);
        nlattr *settings = nested(nested(families, AF_INET6), IFLA_INET6_CONF);
        std::array<std::int32_t, DEVCONF_HOPLIMIT + 1> values{};
        if (settings != nullptr && nla_len(settings) >= static_cast<int>(sizeof(values))) {
            std::memcpy(values.data(), nla_data(settings), sizeof(values));
            add({Kind::hopLimit,
                 name,
                 {},
                 {},
                 {},
                 static_cast<std::uint32_t>(values[DEVCONF_HOPLIMIT])});
        }
    }

    /* Netlink tells of those that are there. */
    void addHopLimitOfNewInterfaces()
    {
        try {
            const auto line = findFile(hopLimitFile(newInterface), 16);
            if (!line) { /* a kernel without IPv6 */
                return;
            }
            const std::string_view digits = std::string_view(*line).substr(0, line->find('\n'));
            if (const auto limit = parseNumber(digits, UINT32_MAX)) {
                add({Kind::hopLimit, newInterface, {}, {}, {}, *limit});
            }
        } catch (const std::system_error &error) {
            throw MachineError(error.what());
        }
    }

    /* What the netlink library keeps to itself. */
    void addBond(const std::string &name, nl_msg *message)
    {
        nlattr *info = nested(nlmsg_find_attr(nlmsg_hdr(message), sizeof(ifinfomsg), IFLA_LINKINFO),
                              IFLA_INFO_DATA);
        add({Kind::bond, name});
        if (nlattr *mode = nested(info, IFLA_BOND_MODE)) {
            add({Kind::bondMode, name, {}, {}, {}, nla_get_u8(mode)});
        }
        if (nlattr *monitor = nested(info, IFLA_BOND_MIIMON)) {
            add({Kind::bondMonitor, name, {}, {}, {}, nla_get_u32(monitor)});
        }
    }

    void readAddresses()
    {
        const ifaddrmsg header{};
        dump(socket_, RTM_GETADDR, &header, sizeof(header), [&](nl_msg *message) {
            return parse<rtnl_addr>(message, [&](rtnl_addr *address) {
                nl_addr *local = rtnl_addr_get_local(address);
                const std::string name = nameOf(rtnl_addr_get_ifindex(address));
                if (isIp(rtnl_addr_get_family(address)) && local != nullptr && !name.empty()) {
                    const int prefix = rtnl_addr_get_prefixlen(address);
                    add({Kind::address, name, {}, addressOf(local, static_cast<unsigned>(prefix))});
                }
            });
        });
    }

    void readRoutes(std::uint8_t family, std::uint8_t protocol)
    {
        rtmsg header{};
        header.rtm_family = family;
        header.rtm_protocol = protocol;
        dump(socket_, RTM_GETROUTE, &header, sizeof(header), [&](nl_msg *message) {
            const auto *route = static_cast<const rtmsg *>(nlmsg_data(nlmsg_hdr(message)));
            /* Others' routes are not worth the reading. */
            return route->rtm_protocol != protocol
                       ? NL_OK
                       : parse<rtnl_route>(message,
                                           [this](rtnl_route *parsed) { addRoute(parsed); });
        });
    }

    void addRoute(rtnl_route *route)
    {
        nl_addr *destination = rtnl_route_get_dst(route);
        if (rtnl_route_get_table(route) != RT_TABLE_MAIN || destination == nullptr ||
            rtnl_route_get_nnexthops(route) != 1) {
            return;
        }
        const int family = rtnl_route_get_family(route);
        rtnl_nexthop *hop = rtnl_route_nexthop_n(route, 0);
        const std::string name = nameOf(rtnl_route_nh_get_ifindex(hop));
        if (!name.empty() && rtnl_route_get_protocol(route) == RTPROT_KERNEL) {
            add({Kind::subnet,
                 name,
                 {},
                 addressOrUnset(destination, family, nl_addr_get_prefixlen(destination))});
        } else if (!name.empty()) {
            add({Kind::route,
                 name,
                 {},
                 addressOrUnset(destination, family, nl_addr_get_prefixlen(destination)),
                 addressOrUnset(rtnl_route_nh_get_gateway(hop), family,
                                static_cast<unsigned>(8 * sizeOf(family))),
                 rtnl_route_get_priority(route)});
        }
    }

    nl_sock *socket_;
    std::uint8_t protocol_;
    std::map<int, std::string> names_;
    Actual actual_;
};

} // namespace

void dump(nl_sock *socket, int type, const void *header, std::size_t size, const Visitor &visit)
{
    constexpr const char *what = "cannot read the kernel's state";
    const Owned<nl_cb> callbacks(nl_cb_alloc(NL_CB_DEFAULT));
    if (!callbacks) {
        require(-NLE_NOMEM, what);
    }
    nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, visitMessage,
              const_cast<Visitor *>(&visit));
    require(nl_send_simple(socket, type, NLM_F_DUMP, const_cast<void *>(header), size), what);
    require(nl_recvmsgs(socket, callbacks.get()), what);
}

Actual readKernel(nl_sock *socket, std::uint8_t ownProtocol)
{
    return Reader(socket, ownProtocol).read();
}

} // namespace bmc::manager
