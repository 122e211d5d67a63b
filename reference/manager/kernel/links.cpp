// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Links that the manager makes, and settings of links. */
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <linux/if_link.h>
#include <linux/ip.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/attr.h>
#include <netlink/errno.h>
#include <netlink/route/link/bonding.h>
#include <netlink/route/link/inet.h>
#include <unistd.h>

#include "common/descriptor.hpp"
#include "manager/kernel/netlink_objects.hpp"

namespace bmc::manager {

namespace {

/* Changes what set puts into an empty link. */
int setLink(nl_sock *socket, int index, const std::function<int(rtnl_link *)> &set)
{
    Owned<rtnl_link> present(rtnl_link_alloc());
    rtnl_link_set_ifindex(present.get(), index);
    Owned<rtnl_link> wanted(rtnl_link_alloc());
    const int status = set(wanted.get());
    return status < 0 ? status : rtnl_link_change(socket, present.get(), wanted.get(), 0);
}

int setFlag(nl_sock *socket, const std::string &interface, bool isUp)
{
    return setLink(socket, indexOf(interface), [isUp](rtnl_link *link) {
        (isUp ? rtnl_link_set_flags : rtnl_link_unset_flags)(link, IFF_UP);
        return 0;
    });
}

int setIpv4(nl_sock *socket, const Item &item, unsigned setting)
{
    return setLink(socket, indexOf(item.subject), [&](rtnl_link *link) {
        return rtnl_link_inet_set_conf(link, setting, static_cast<std::uint32_t>(item.number));
    });
}

/* A message about a link of a kind that the kernel's own drivers make. */
struct LinkMessage {
    const char *kind;
    const std::string &name;
    int index; /* of the link, 0 for a new one */
    int lower; /* index of the link below, 0 without one */
    int flags; /* of the message */
};

/* Sends it with the settings that put adds. */
int send(nl_sock *socket, const LinkMessage &link, const std::function<void(nl_msg *)> &put)
{
    nl_msg *message = nlmsg_alloc_simple(RTM_NEWLINK, link.flags);
    ifinfomsg header{};
    header.ifi_index = link.index;
    nlmsg_append(message, &header, sizeof(header), NLMSG_ALIGNTO);
    nla_put_string(message, IFLA_IFNAME, link.name.c_str());
    if (link.lower != 0) {
        nla_put_u32(message, IFLA_LINK, static_cast<std::uint32_t>(link.lower));
    }
    nlattr *kind = nla_nest_start(message, IFLA_LINKINFO);
    nla_put_string(message, IFLA_INFO_KIND, link.kind);
    nlattr *settings = nla_nest_start(message, IFLA_INFO_DATA);
    put(message);
    nla_nest_end(message, settings);
    nla_nest_end(message, kind);
    return nl_send_sync(socket, message); /* takes the message over */
}

int sendBond(nl_sock *socket, const std::string &name, int index, int flags,
             const std::function<void(nl_msg *)> &put)
{
    return send(socket, {"bond", name, index, 0, flags}, put);
}

/* What has no priority of its own leaves with this one. */
void putEgressPriority(nl_msg *message, std::uint32_t priority)
{
    const ifla_vlan_qos_mapping mapping{.from = 0, .to = priority};
    nlattr *map = nla_nest_start(message, IFLA_VLAN_EGRESS_QOS);
    nla_put(message, IFLA_VLAN_QOS_MAPPING, sizeof(mapping), &mapping);
    nla_nest_end(message, map);
}

} // namespace

int indexOf(const std::string &interface)
{
    /* A name that is too long for any interface would be cut. */
    const unsigned index = interface.size() < IFNAMSIZ ? if_nametoindex(interface.c_str()) : 0;
    if (index == 0) {
        throw MissingInterface(interface);
    }
    return static_cast<int>(index);
}

int addBond(nl_sock *socket, const Item &bond)
{
    return sendBond(socket, bond.subject, 0, NLM_F_CREATE | NLM_F_EXCL, [](nl_msg *message) {
        nla_put_u8(message, IFLA_BOND_MODE, activeBackup);
        nla_put_u32(message, IFLA_BOND_MIIMON, bondMonitorInterval);
    });
}

/* The kernel takes another mode only while the bond is down. */
int setBondMode(nl_sock *socket, const Item &mode)
{
    const int index = indexOf(mode.subject);
    const int status = setFlag(socket, mode.subject, false);
    return status < 0 ? status : sendBond(socket, mode.subject, index, 0, [&](nl_msg *message) {
        nla_put_u8(message, IFLA_BOND_MODE, static_cast<std::uint8_t>(mode.number));
    });
}

int setBondMonitor(nl_sock *socket, const Item &monitor)
{
    return sendBond(socket, monitor.subject, indexOf(monitor.subject), 0, [&](nl_msg *message) {
        nla_put_u32(message, IFLA_BOND_MIIMON, static_cast<std::uint32_t>(monitor.number));
    });
}

/* A port joins while it is down; the bond takes it up. */
int joinBond(nl_sock *socket, const Item &member)
{
    const int status = setFlag(socket, member.subject, false);
    return status < 0 ? status
                      : rtnl_link_bond_enslave_ifindex(socket, indexOf(member.text),
                                                       indexOf(member.subject));
}

int leaveBond(nl_sock *socket, const Item &member)
{
    return rtnl_link_bond_release_ifindex(socket, indexOf(member.subject));
}

/* The link library loses the priority on its way, hence a message of our own. */
int addVlan(nl_sock *socket, const Item &vlan)
{
    const int lower = indexOf(vlan.text);
    const LinkMessage link{"vlan", vlan.subject, 0, lower, NLM_F_CREATE | NLM_F_EXCL};
    return send(socket, link, [&](nl_msg *message) {
        nla_put_u16(message, IFLA_VLAN_ID, static_cast<std::uint16_t>(vlan.number));
        putEgressPriority(message, static_cast<std::uint32_t>(vlan.number >> 16));
    });
}

int removeLink(nl_sock *socket, const Item &link)
{
    const Owned<rtnl_link> present(rtnl_link_alloc());
    rtnl_link_set_ifindex(present.get(), indexOf(link.subject));
    return rtnl_link_delete(socket, present.get());
}

int setUpOrDown(nl_sock *socket, const Item &link)
{
    return setFlag(socket, link.subject, link.number == 1);
}

int setArpIgnore(nl_sock *socket, const Item &setting)
{
    return setIpv4(socket, setting, IPV4_DEVCONF_ARP_IGNORE);
}

int setSecondaries(nl_sock *socket, const Item &setting)
{
    return setIpv4(socket, setting, IPV4_DEVCONF_PROMOTE_SECONDARIES);
}

/* Netlink sets what belongs to IPv4 alone. */
int setHopLimit(nl_sock *, const Item &setting)
{
    indexOf(setting.subject);
    const std::string path = hopLimitFile(setting.subject);
    const std::string text = std::to_string(setting.number);
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file || write(file.get(), text.data(), text.size()) < 0) {
        throw MachineError(std::generic_category().message(errno));
    }
    return 0;
}

} // namespace bmc::manager
