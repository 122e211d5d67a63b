// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Links that the manager makes, and settings of links. */
#include <linux/if_link.h>
#include <linux/ip.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/route/link/bonding.h>
#include <netlink/route/link/inet.h>
#include <netlink/route/link/vlan.h>

#include "netlink_objects.hpp"

namespace bmc::manager {

namespace {

/* Of "active-backup" in the kernel's bonding driver. */
constexpr std::uint8_t activeBackup = 1;

/* Tells a kernel that lacks the kind of a new link from other refusals. */
void requireMade(int status, const std::string &what)
{
    if (status == -NLE_OPNOTSUPP) {
        throw KernelUnsupported(what + ": " + nl_geterror(status));
    }
    require(status, what);
}

Owned<rtnl_link> linkNamed(nl_sock *socket, const std::string &name)
{
    rtnl_link *found = nullptr;
    return Owned<rtnl_link>(rtnl_link_get_kernel(socket, 0, name.c_str(), &found) < 0 ? nullptr
                                                                                      : found);
}

} // namespace

std::uint32_t Kernel::ipv4Setting(const Interface &interface, unsigned setting) const
{
    rtnl_link *found = nullptr;
    require(rtnl_link_get_kernel(socket_.get(), interface.index, nullptr, &found),
            "cannot read IPv4 settings");
    const Owned<rtnl_link> link(found);
    std::uint32_t value = 0;
    require(rtnl_link_inet_get_conf(found, setting, &value), "cannot read an IPv4 setting");
    return value;
}

void Kernel::setIpv4Setting(const Interface &interface, unsigned setting, std::uint32_t value) const
{
    require(setLink(socket_.get(), interface,
                    [&](rtnl_link *link) { return rtnl_link_inet_set_conf(link, setting, value); }),
            "cannot set an IPv4 setting");
}

void Kernel::keepSecondaryAddresses(const Interface &interface) const
{
    setIpv4Setting(interface, IPV4_DEVCONF_PROMOTE_SECONDARIES, 1);
}

void Kernel::addVlan(const Interface &interface, const Vlan &vlan) const
{
    const Owned<rtnl_link> link(rtnl_link_vlan_alloc());
    rtnl_link_set_link(link.get(), interface.index);
    rtnl_link_set_name(link.get(), vlan.name.c_str());
    rtnl_link_set_flags(link.get(), IFF_UP);
    require(rtnl_link_vlan_set_id(link.get(), vlan.id), vlan.name);
    require(rtnl_link_vlan_set_egress_map(link.get(), 0, vlan.priority), vlan.name);
    requireMade(rtnl_link_add(socket_.get(), link.get(), NLM_F_CREATE | NLM_F_EXCL),
                "add " + vlan.name);
}

void Kernel::removeLink(const std::string &name) const
{
    const auto link = linkNamed(socket_.get(), name);
    if (link) {
        require(rtnl_link_delete(socket_.get(), link.get()), "remove " + name);
    }
}

bool Kernel::isBond(const std::string &name) const
{
    const auto link = linkNamed(socket_.get(), name);
    const char *type = link ? rtnl_link_get_type(link.get()) : nullptr;
    return type != nullptr && std::string(type) == "bond";
}

void Kernel::addBond(const std::string &name) const
{
    nl_msg *message = nlmsg_alloc_simple(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL);
    ifinfomsg header{};
    nlmsg_append(message, &header, sizeof(header), NLMSG_ALIGNTO);
    nla_put_string(message, IFLA_IFNAME, name.c_str());
    nlattr *kind = nla_nest_start(message, IFLA_LINKINFO);
    nla_put_string(message, IFLA_INFO_KIND, "bond");
    nlattr *settings = nla_nest_start(message, IFLA_INFO_DATA);
    nla_put_u8(message, IFLA_BOND_MODE, activeBackup);
    nla_nest_end(message, settings);
    nla_nest_end(message, kind);
    /* Takes the message over. */
    requireMade(nl_send_sync(socket_.get(), message), "add " + name);
}

void Kernel::joinBond(const Interface &bond, const Interface &port) const
{
    apply(port, {Action::linkDown});
    require(rtnl_link_bond_enslave_ifindex(socket_.get(), bond.index, port.index), "join the bond");
}

void Kernel::leaveBond(const Interface &port) const
{
    require(rtnl_link_bond_release_ifindex(socket_.get(), port.index), "leave the bond");
}

} // namespace bmc::manager
