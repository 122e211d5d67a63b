// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/wanted.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include <linux/ethtool.h>

#include "manager/state/resolver.hpp"

namespace bmc::manager {

namespace {

using settings::isServed;
using settings::nameOf;

/* Metrics of the ports' routes: each has its own, so that one never stands in another's place. */
constexpr std::uint32_t defaultRouteMetric(unsigned port)
{
    return 100 + port;
}

constexpr std::uint32_t staticRouteMetric(unsigned port, unsigned number)
{
    return 200 + NW_ROUTE_COUNT * port + number;
}

/* Values of arp_ignore: answer for no address of the host, or for each. */
constexpr std::uint32_t ignoreAll = 8;
constexpr std::uint32_t ignoreNone = 0;

/* Mbit/s by the value of the record. */
constexpr std::array<std::uint32_t, 3> speeds{10, 100, 1000};

/* Status by LLDP work mode; a work mode of 0 stands for none that was ever set. */
constexpr std::array<const char *, 4> lldpWords{"rx-and-tx", "tx-only", "rx-only", "rx-and-tx"};

template <std::size_t size>
std::string textIn(const char (&field)[size])
{
    return {field, strnlen(field, size)};
}

/* The items of one port, put together. */
class Port {
public:
    Port(const Configuration &configuration, unsigned port, Items &items)
        : entry_(configuration.lan.astPort[port]), port_(port),
          name_(nameOf(configuration.state, port)), items_(items)
    {
    }

    void addAll(const Conditions &conditions)
    {
        const bool isUp = entry_.ucLanEnable == 1;
        add({Kind::link, name_, {}, {}, {}, isUp});
        add({Kind::arpIgnore,
             name_,
             {},
             {},
             {},
             isArpActive(entry_, settings::arpResponses, conditions) ? ignoreNone : ignoreAll});
        if (isUp) {
            addVlan();
            addIpv4();
            addIpv6();
        }
    }

    void addNamed()
    {
        addVlan();
        addAddress(ipv4Address());
        addAddress(ipv6Address());
    }

private:
    void add(const Item &item)
    {
        items_.insert(item);
    }

    Address ipv4Address() const
    {
        return ipv4(entry_.aucIpv4Addr, prefixOf(entry_.aucIpv4Mask));
    }

    Address ipv6Address() const
    {
        return ipv6(entry_.aucIpv6Addr, entry_.ucIpv6Prefix);
    }

    void addAddress(const Address &address)
    {
        if (!isUnset(address)) {
            add({Kind::address, name_, {}, address});
            if (address.prefix < 8 * sizeOf(address.family)) {
                add({Kind::subnet, name_, {}, networkOf(address), address});
            }
        }
    }

    void addRoute(const Address &destination, const Address &gateway, std::uint32_t metric)
    {
        add({Kind::route, name_, {}, networkOf(destination), gateway, metric});
    }

    void addGateway(const Address &gateway)
    {
        if (!isUnset(gateway)) {
            addRoute({gateway.family, 0, {}}, gateway, defaultRouteMetric(port_));
        }
    }

    void addVlan()
    {
        const settings::VlanBytes vlan = settings::vlanOf(entry_);
        if (vlan.isEnabled == 1 && vlan.id != 0) {
            const std::string name = name_ + "." + std::to_string(vlan.id);
            add({Kind::vlan, name, name_, {}, {}, vlanNumber(vlan.id, vlan.priority)});
            add({Kind::link, name, {}, {}, {}, 1});
        }
    }

    /* 0 leaves the kernel its own. */
    void addHopLimit()
    {
        if (const std::uint8_t limit = settings::headersOf(entry_).hopLimit; limit != 0) {
            add({Kind::hopLimit, name_, {}, {}, {}, limit});
        }
    }

    void addIpv4()
    {
        if (entry_.ucIpv4Enable != 1) {
            return;
        }
        addAddress(ipv4Address());
        addGateway(ipv4(entry_.aucIpv4Gateway));
        for (unsigned number = 0; number < NW_ROUTE_COUNT; number++) {
            const NW_LAN_CFG_IPV4_ROUTE_S &route = entry_.astIpv4Route[number];
            if (route.ucState == 1) {
                addRoute(ipv4(route.aucAddr, prefixOf(route.aucMask)), ipv4(route.aucGateway),
                         staticRouteMetric(port_, number));
            }
        }
    }

    void addIpv6()
    {
        if (entry_.ucIpv6Enable != 1) {
            return;
        }
        addHopLimit();
        addAddress(ipv6Address());
        addGateway(ipv6(entry_.aucIpv6Gateway));
        for (unsigned number = 0; number < NW_ROUTE_COUNT; number++) {
            const NW_LAN_CFG_IPV6_ROUTE_S &route = entry_.astIpv6Route[number];
            if (route.ucState == 1) {
                addRoute(ipv6(route.aucAddr, route.ucPrefix), ipv6(route.aucGateway),
                         staticRouteMetric(port_, number));
            }
        }
    }

    const NW_LAN_CFG_PORT_S &entry_;
    unsigned port_;
    std::string name_;
    Items &items_;
};

void addBond(const NW_IFC_STATE_DB_INFO_S &state, Items &items)
{
    if (!isServed(state, NW_PORT_BOND0)) {
        return;
    }
    const std::string bond = nameOf(state, NW_PORT_BOND0);
    items.insert({Kind::bond, bond});
    items.insert({Kind::bondMode, bond, {}, {}, {}, activeBackup});
    items.insert({Kind::bondMonitor, bond, {}, {}, {}, bondMonitorInterval});
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        if (state.aucPortPresent[port] != 0) {
            items.insert({Kind::member, nameOf(state, port), bond});
        }
    }
}

/* The driver keeps its own mode until one has been set. */
void addLinkModes(const Configuration &configuration, Items &items)
{
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        const NW_AN_CFG_PORT_S &entry = configuration.an.astPort[port];
        if (settings::hasLinkMode(entry) && entry.ucSpeed < speeds.size()) {
            const std::uint8_t duplex = entry.ucDuplex == 0 ? DUPLEX_HALF : DUPLEX_FULL;
            items.insert({Kind::linkMode,
                          nameOf(configuration.state, port),
                          {},
                          {},
                          {},
                          linkModeNumber(entry.ucAutoNeg == 1, duplex, speeds[entry.ucSpeed])});
        }
    }
}

/* Names that no configuration holds stay the kernel's and the file's own. */
void addNames(const NW_HOSTNAME_DB_INFO_S &record, Items &items)
{
    const std::string hostName = textIn(record.szBmcHostName);
    if (!hostName.empty()) {
        items.insert({Kind::hostName, {}, hostName});
    }
    const std::string bmcName = textIn(record.szBmcName);
    if (!bmcName.empty()) {
        items.insert({Kind::bmcName, {}, bmcName + '\n'});
    }
}

void addLldp(const Configuration &configuration, Items &items)
{
    const NW_LLDP_DB_INFO_S &lldp = configuration.lldp;
    const std::string names =
        nameOf(configuration.state, NW_PORT_ETH0) + "," + nameOf(configuration.state, NW_PORT_ETH1);
    const char *word = lldp.ucLldpEnable == 1 ? lldpWords[lldp.ucLldpWorkMode & 3U] : "disabled";
    items.insert({Kind::lldp, {}, names + " " + word});
}

} // namespace

unsigned World::portOf(const Item &item) const
{
    const auto port = ports.find(item.kind == Kind::vlan ? item.text : item.subject);
    const auto above = ports.find(item.subject.substr(0, item.subject.rfind('.')));
    const auto found = port != ports.end() ? port : above;
    return found != ports.end() ? found->second : wholeMachine;
}

bool isArpActive(const NW_LAN_CFG_PORT_S &entry, settings::ArpBit bit, const Conditions &conditions)
{
    const unsigned resting = conditions.isWatchdogRunning ? settings::suspendedArp(entry) : 0U;
    return (settings::arpOf(entry).control & ~resting & bit) != 0;
}

World wanted(const Configuration &configuration, const Conditions &conditions)
{
    World world;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const std::string name = nameOf(configuration.state, port);
        world.ports.emplace(name, port);
        world.items.insert({Kind::secondaries, name, {}, {}, {}, 1});
        if (isServed(configuration.state, port)) {
            Port(configuration, port, world.items).addAll(conditions);
        }
    }
    addBond(configuration.state, world.items);
    addLinkModes(configuration, world.items);
    addNames(configuration.hostName, world.items);
    world.items.insert({Kind::resolver, {}, resolverText(configuration)});
    addLldp(configuration, world.items);
    return world;
}

unsigned routeNumberOf(const Item &route, unsigned port)
{
    return static_cast<unsigned>(route.number) - staticRouteMetric(port, 0) + 1;
}

Items named(const Configuration &configuration)
{
    Items items;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        Port(configuration, port, items).addNamed();
    }
    std::erase_if(items, [](const Item &item) {
        return item.kind == Kind::link || item.kind == Kind::subnet;
    });
    return items;
}

World withValues(World world, const World &other, const Items &found)
{
    for (const Item &item : other.items) {
        const Item *value = valueIn(found, item.kind, item.subject);
        const bool isOther = rowOf(item.kind).isValue && value != nullptr &&
                             valueIn(world.items, item.kind, item.subject) == nullptr;
        if (isOther) {
            world.items.insert(*value);
        }
    }
    return world;
}

} // namespace bmc::manager
