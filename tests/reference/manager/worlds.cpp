// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "worlds.hpp"

#include <algorithm>
#include <cstdio>

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include "settings/manager_bytes.hpp"

namespace nwtest {

using namespace bmc;
using namespace bmc::manager;

Address address(const std::string &text, unsigned prefix)
{
    const int family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    Address result{family, prefix, {}};
    EXPECT_EQ(inet_pton(family, text.c_str(), result.bytes.data()), 1) << text;
    return result;
}

Item addressOn(const std::string &interface, const std::string &text, unsigned prefix)
{
    return {Kind::address, interface, {}, address(text, prefix)};
}

Item routeOn(const std::string &interface, const std::string &text, unsigned prefix,
             const std::string &gateway, std::uint32_t metric)
{
    const Address destination = address(text, prefix);
    const bool isV4 = destination.family == AF_INET;
    return {Kind::route,
            interface,
            {},
            destination,
            address(gateway.empty() ? (isV4 ? "0.0.0.0" : "::") : gateway, isV4 ? 32 : 128),
            metric};
}

Item linkOf(const std::string &interface, bool isUp)
{
    return {Kind::link, interface, {}, {}, {}, isUp};
}

namespace {

class Chooser {
public:
    explicit Chooser(std::mt19937 &random) : random_(random) {}

    unsigned below(unsigned count)
    {
        return static_cast<unsigned>(random_() % count);
    }
    std::uint8_t flag(unsigned likely = 2)
    {
        return below(likely) != 0 ? 1 : 0;
    }

private:
    std::mt19937 &random_;
};

void put(std::uint8_t *field, const std::string &text)
{
    const Address value = address(text, 0);
    std::copy_n(value.bytes.begin(), sizeOf(value.family), field);
}

/* Few addresses, so that ports often want what another has. */
void fillIpv4(Chooser &any, NW_LAN_CFG_PORT_S &port)
{
    const std::string net = "10.0." + std::to_string(any.below(2)) + ".";
    port.ucIpv4Enable = any.flag(4);
    put(port.aucIpv4Addr, net + std::to_string(1 + any.below(2)));
    put(port.aucIpv4Mask, "255.255.255.0");
    if (any.flag() != 0) {
        put(port.aucIpv4Gateway, net + "254");
    }
    NW_LAN_CFG_IPV4_ROUTE_S &route = port.astIpv4Route[any.below(2)];
    route.ucState = any.flag();
    put(route.aucAddr, "172.16.0.0");
    put(route.aucMask, "255.255.0.0");
    if (any.flag() != 0) {
        put(route.aucGateway, net + "253");
    }
}

void fillIpv6(Chooser &any, NW_LAN_CFG_PORT_S &port)
{
    const std::string net = "2001:db8:" + std::to_string(any.below(2)) + "::";
    port.ucIpv6Enable = any.flag(4);
    put(port.aucIpv6Addr, net + std::to_string(1 + any.below(2)));
    port.ucIpv6Prefix = any.flag() != 0 ? 64 : 56;
    if (any.flag() != 0) {
        put(port.aucIpv6Gateway, net + "99");
    }
    NW_LAN_CFG_IPV6_ROUTE_S &route = port.astIpv6Route[any.below(2)];
    route.ucState = any.flag();
    put(route.aucAddr, "2001:db8:f::");
    route.ucPrefix = 48;
    if (any.flag() != 0) {
        put(route.aucGateway, net + "98");
    }
}

} // namespace

Configuration anyConfiguration(std::mt19937 &random)
{
    Chooser any(random);
    Configuration configuration{};
    NW_IFC_STATE_DB_INFO_S &state = configuration.state;
    state.ucIfcState = any.flag(3) != 0 ? NW_IFC_STATE_SEPARATE : NW_IFC_STATE_ADAPTIVE;
    std::ranges::fill(state.aucPortPresent, 1);
    const bool isSwitched = any.flag(3) == 0;
    std::snprintf(state.acIfcName[0], NW_IFC_NAME_SIZE, "eth%d", isSwitched ? 1 : 0);
    std::snprintf(state.acIfcName[1], NW_IFC_NAME_SIZE, "eth%d", isSwitched ? 0 : 1);
    std::snprintf(state.acIfcName[2], NW_IFC_NAME_SIZE, "bond0");
    for (NW_LAN_CFG_PORT_S &port : configuration.lan.astPort) {
        port.ucLanEnable = any.flag(4);
        fillIpv4(any, port);
        fillIpv6(any, port);
        port.stVlan.aucReserved0[0] = any.flag();
        port.stVlan.usVlanid = static_cast<std::uint16_t>(100 + any.below(2));
        port.stVlan.aucReserved5[0] = static_cast<std::uint8_t>(any.below(2));
        port.aucReserved775[offsetof(bmc::settings::HeaderBytes, hopLimit)] =
            any.flag() != 0 ? 7 : 0;
        bmc::settings::putArp(port, {static_cast<std::uint8_t>(any.below(4)), 0, 0, 0});
    }
    return configuration;
}

ModelKernel::ModelKernel(bool makesBonds)
{
    addLink("eth0", "");
    addLink("eth1", "");
    if (!makesBonds) {
        addLink("bond0", "veth");
    }
}

void ModelKernel::addLink(const std::string &name, const std::string &type)
{
    actual.links[name] = {static_cast<int>(actual.links.size()) + 1, type, {}, false};
    add(linkOf(name, false));
    add({Kind::arpIgnore, name});
    add({Kind::secondaries, name});
    add({Kind::hopLimit, name, {}, {}, {}, 64});
}

void ModelKernel::removeLink(const std::string &name)
{
    actual.links.erase(name);
    std::erase_if(actual.items, [&](const Item &item) {
        return item.subject == name || (item.kind == Kind::vlan && item.text == name) ||
               (item.kind == Kind::member && item.text == name);
    });
}

bool ModelKernel::isUp(const std::string &interface) const
{
    return actual.items.contains(linkOf(interface, true));
}

void ModelKernel::dropRoutes(const std::string &interface, int family)
{
    std::erase_if(actual.items, [&](const Item &item) {
        return item.kind == Kind::route && item.subject == interface &&
               item.address.family == family;
    });
}

/* Of each address of a link that is up. */
void ModelKernel::makeSubnets(const std::string &interface)
{
    for (const Item &item : Items(actual.items)) {
        const bool hasSubnet = item.kind == Kind::address && item.subject == interface &&
                               item.address.prefix < 8 * sizeOf(item.address.family);
        if (hasSubnet && isUp(interface)) {
            add({Kind::subnet, interface, {}, networkOf(item.address)});
        }
    }
}

/* IPv4 addresses outlive their link, IPv6 addresses and routes don't. */
void ModelKernel::takeDown(const std::string &interface)
{
    set(linkOf(interface, false));
    std::erase_if(actual.items, [&](const Item &item) {
        return item.subject == interface && (item.address.family == AF_INET6 ||
                                             item.kind == Kind::route || item.kind == Kind::subnet);
    });
    for (const Item &item : Items(actual.items)) {
        if (item.kind == Kind::vlan && item.text == interface) {
            set(linkOf(item.subject, false));
        }
    }
}

void ModelKernel::set(const Item &item)
{
    std::erase_if(actual.items, [&](const Item &other) {
        return other.kind == item.kind && other.subject == item.subject;
    });
    add(item);
}

void ModelKernel::addAddress(const Item &item)
{
    for (const Item &other : actual.items) {
        const bool isSame = other.kind == Kind::address && other.subject == item.subject &&
                            other.address.bytes == item.address.bytes;
        if (isSame && (item.address.family == AF_INET6 || other == item)) {
            throw MachineError("exists");
        }
    }
    add(item);
    makeSubnets(item.subject);
}

void ModelKernel::addRoute(const Item &item)
{
    const bool isReachable =
        isUnset(item.gateway) || std::ranges::any_of(actual.items, [&](const Item &other) {
            return other.kind == Kind::subnet && other.subject == item.subject &&
                   isInSubnetOf(item.gateway, other.address);
        });
    if (!isUp(item.subject) || !isReachable) {
        throw MachineError("unreachable");
    }
    add(item);
}

void ModelKernel::come(const Item &item)
{
    switch (item.kind) {
    case Kind::address:
        return addAddress(item);
    case Kind::route:
        return addRoute(item);
    case Kind::bond:
        addLink(item.subject, "bond");
        set({Kind::bondMode, item.subject, {}, {}, {}, activeBackup});
        set({Kind::bondMonitor, item.subject, {}, {}, {}, bondMonitorInterval});
        return add(item);
    case Kind::member:
        if (!actual.links.contains(item.text)) {
            throw MissingInterface(item.text);
        }
        takeDown(item.subject);
        set(linkOf(item.subject, true));
        return add(item);
    case Kind::vlan:
        if (!isUp(item.text) || actual.links.contains(item.subject)) {
            throw MachineError("link is down");
        }
        addLink(item.subject, "vlan");
        set(linkOf(item.subject, true));
        return add(item);
    case Kind::link:
        if (item.number == 0) {
            return takeDown(item.subject);
        }
        set(item);
        return makeSubnets(item.subject);
    case Kind::subnet:
        return add({Kind::subnet, item.subject, {}, item.address});
    default:
        return set(item);
    }
}

void ModelKernel::go(const Item &item)
{
    if (actual.items.erase(item) == 0) {
        return;
    }
    switch (item.kind) {
    case Kind::bond:
    case Kind::vlan:
        return removeLink(item.subject);
    case Kind::member:
        return takeDown(item.subject);
    case Kind::address: {
        const bool isLast = std::ranges::none_of(actual.items, [&](const Item &other) {
            return other.kind == Kind::address && other.subject == item.subject &&
                   other.address.family == AF_INET;
        });
        if (isLast) {
            dropRoutes(item.subject, AF_INET);
        }
        actual.items.erase({Kind::subnet, item.subject, {}, networkOf(item.address)});
        return makeSubnets(item.subject);
    }
    default:
        return;
    }
}

void ModelKernel::apply(const Step &step)
{
    const bool isPlaced =
        !step.item.subject.empty() && step.item.kind != Kind::vlan && step.item.kind != Kind::bond;
    if (isPlaced && !actual.links.contains(step.item.subject)) {
        throw MissingInterface(step.item.subject);
    }
    step.isRemoval ? go(step.item) : come(step.item);
}

} // namespace nwtest
