// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a configuration asks of kernel and system. */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "worlds.hpp"

namespace nwtest {

namespace {

using namespace bmc;
using namespace bmc::manager;

void put(std::uint8_t *field, const Address &value)
{
    std::copy_n(value.bytes.begin(), sizeOf(value.family), field);
}

/* Port 1 with an address and a gateway of each family, two routes and a VLAN. */
Configuration fullPort()
{
    Configuration configuration{};
    std::ranges::fill(configuration.state.aucPortPresent, 1);
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const char *names[] = {"eth0", "eth1", "bond0"};
        std::strcpy(configuration.state.acIfcName[port], names[port]);
    }
    NW_LAN_CFG_PORT_S &port = configuration.lan.astPort[1];
    port.ucLanEnable = port.ucIpv4Enable = port.ucIpv6Enable = 1;
    put(port.aucIpv4Addr, address("192.0.2.1", 24));
    std::ranges::copy(maskOf(24), port.aucIpv4Mask);
    put(port.aucIpv4Gateway, address("192.0.2.254", 32));
    put(port.aucIpv6Addr, address("2001:db8::1", 64));
    port.ucIpv6Prefix = 64;
    put(port.aucIpv6Gateway, address("fe80::1", 128));
    port.astIpv4Route[1].ucState = 1;
    put(port.astIpv4Route[1].aucAddr, address("10.1.2.3", 32));
    std::ranges::copy(maskOf(16), port.astIpv4Route[1].aucMask);
    port.astIpv6Route[0].ucState = 1;
    put(port.astIpv6Route[0].aucAddr, address("2001:db8:5::1", 128));
    port.astIpv6Route[0].ucPrefix = 48;
    port.stVlan.aucReserved0[0] = 1;
    port.stVlan.usVlanid = 7;
    port.stVlan.aucReserved5[0] = 5;
    bmc::settings::putArp(port, {2, 0, 2, 0});
    return configuration;
}

const Items ipv4Items{addressOn("eth1", "192.0.2.1", 24),
                      routeOn("eth1", "0.0.0.0", 0, "192.0.2.254", 101),
                      routeOn("eth1", "10.1.0.0", 16, "", 203)};
const Items ipv6Items{addressOn("eth1", "2001:db8::1", 64),
                      routeOn("eth1", "::", 0, "fe80::1", 101),
                      routeOn("eth1", "2001:db8:5::", 48, "", 202)};
const Item vlan{Kind::vlan, "eth1.7", "eth1", {}, {}, vlanNumber(7, 5)};
const Items vlanItems{vlan, linkOf("eth1.7", true)};

/* Links, addresses, routes and VLANs of eth1. */
Items ofPort(const Configuration &configuration)
{
    Items items;
    for (const Item &item : wanted(configuration, {}).items) {
        const bool isOfPort = item.subject.starts_with("eth1");
        const bool isPart = item.kind == Kind::link || item.kind == Kind::address ||
                            item.kind == Kind::route || item.kind == Kind::vlan;
        if (isOfPort && isPart) {
            items.insert(item);
        }
    }
    return items;
}

Items together(std::initializer_list<Items> parts)
{
    Items all;
    for (const Items &part : parts) {
        all.insert(part.begin(), part.end());
    }
    return all;
}

const Item *valueOf(const World &world, Kind kind, const std::string &subject)
{
    return valueIn(world.items, kind, subject);
}

} // namespace

TEST(Wanted, FollowsTheEnables)
{
    Configuration configuration = fullPort();
    NW_LAN_CFG_PORT_S &port = configuration.lan.astPort[1];
    const Items up{linkOf("eth1", true)};
    EXPECT_EQ(ofPort(configuration), together({up, ipv4Items, ipv6Items, vlanItems}));
    port.ucIpv4Enable = 0;
    EXPECT_EQ(ofPort(configuration), together({up, ipv6Items, vlanItems}));
    port.ucIpv6Enable = 0;
    EXPECT_EQ(ofPort(configuration), together({up, vlanItems}));
    port.ucLanEnable = 0;
    EXPECT_EQ(ofPort(configuration), Items{linkOf("eth1", false)});
    configuration.state.aucPortPresent[1] = 0;
    EXPECT_EQ(ofPort(configuration), Items{});
}

TEST(Wanted, HopLimitWhereIpv6IsOn)
{
    Configuration configuration = fullPort();
    NW_LAN_CFG_PORT_S &port = configuration.lan.astPort[1];
    const auto limit = [&] {
        const Items items = wanted(configuration, {}).items;
        const Item *item = valueIn(items, Kind::hopLimit, "eth1");
        return item == nullptr ? 0U : static_cast<unsigned>(item->number);
    };
    EXPECT_EQ(limit(), 0U);
    port.aucReserved775[3] = 255;
    EXPECT_EQ(limit(), 255U);
    port.ucIpv6Enable = 0;
    EXPECT_EQ(limit(), 0U);
}

TEST(Wanted, NamedIsEveryAddressInUseOrNot)
{
    Configuration configuration = fullPort();
    configuration.lan.astPort[1].ucLanEnable = 0;
    EXPECT_EQ(named(configuration), (Items{addressOn("eth1", "192.0.2.1", 24),
                                           addressOn("eth1", "2001:db8::1", 64), vlan}));
}

TEST(Wanted, BondWithItsMembers)
{
    Configuration configuration = fullPort();
    configuration.state.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    const World world = wanted(configuration, {});
    EXPECT_EQ(ofPort(configuration), Items{});
    EXPECT_TRUE(world.items.contains({Kind::bond, "bond0"}));
    EXPECT_TRUE(world.items.contains({Kind::member, "eth0", "bond0"}));
    EXPECT_TRUE(world.items.contains({Kind::member, "eth1", "bond0"}));
    EXPECT_EQ(valueOf(world, Kind::bondMode, "bond0")->number, 1U);
    EXPECT_EQ(valueOf(world, Kind::bondMonitor, "bond0")->number, 100U);
    EXPECT_FALSE(wanted(fullPort(), {}).items.contains({Kind::bond, "bond0"}));
}

TEST(Wanted, SuspendedArpRestsWhileTheWatchdogRuns)
{
    Configuration configuration = fullPort();
    const auto ignored = [&](bool isRunning) {
        return valueOf(wanted(configuration, {isRunning}), Kind::arpIgnore, "eth1")->number;
    };
    EXPECT_EQ(ignored(false), 0U);
    EXPECT_EQ(ignored(true), 8U);
    bmc::settings::putArp(configuration.lan.astPort[1], {2, 0, 2, 1});
    EXPECT_EQ(ignored(true), 0U);
    bmc::settings::putArp(configuration.lan.astPort[1], {1, 0, 0, 0});
    EXPECT_EQ(ignored(false), 8U);
}

TEST(Wanted, PortsOfItems)
{
    const World world = wanted(fullPort(), {});
    EXPECT_EQ(world.portOf(linkOf("eth1", true)), 1U);
    EXPECT_EQ(world.portOf(linkOf("eth1.7", true)), 1U);
    EXPECT_EQ(world.portOf(vlan), 1U);
    EXPECT_EQ(world.portOf(linkOf("eth7", true)), wholeMachine);
    EXPECT_EQ(world.portOf({Kind::hostName}), wholeMachine);
}

TEST(Wanted, NamesAndAgents)
{
    Configuration configuration = fullPort();
    const World none = wanted(configuration, {});
    EXPECT_EQ(valueOf(none, Kind::hostName, ""), nullptr);
    EXPECT_EQ(valueOf(none, Kind::bmcName, ""), nullptr);
    EXPECT_EQ(valueOf(none, Kind::linkMode, "eth0"), nullptr);
    EXPECT_EQ(valueOf(none, Kind::lldp, "")->text, "eth0,eth1 disabled");
    EXPECT_EQ(valueOf(none, Kind::resolver, "")->text, "# Written by nwmanagerd.\n");

    std::memset(configuration.hostName.szBmcHostName, 'a', 64);
    std::strcpy(configuration.hostName.szBmcName, "rack");
    configuration.lldp = {};
    configuration.lldp.ucLldpEnable = 1;
    configuration.an.astPort[0] = {0, 1, 1, {1}};
    const World all = wanted(configuration, {});
    EXPECT_EQ(valueOf(all, Kind::hostName, "")->text, std::string(64, 'a'));
    EXPECT_EQ(valueOf(all, Kind::bmcName, "")->text, "rack\n");
    EXPECT_EQ(valueOf(all, Kind::lldp, "")->text, "eth0,eth1 rx-and-tx");
    EXPECT_NE(valueOf(all, Kind::linkMode, "eth0"), nullptr);
}

TEST(AddressTest, SubnetsAndMasks)
{
    const Address one = address("192.0.2.1", 24);
    EXPECT_TRUE(isInSubnetOf(address("192.0.2.2", 24), one));
    EXPECT_FALSE(isInSubnetOf(address("192.0.3.1", 24), one));
    EXPECT_TRUE(isInSubnetOf(address("192.0.3.1", 24), address("192.0.2.1", 23)));
    EXPECT_FALSE(isInSubnetOf(address("2001:db8::2", 64), one));
    EXPECT_EQ(networkOf(address("10.255.255.255", 9)), address("10.128.0.0", 9));
    EXPECT_EQ(networkOf(address("2001:db8:ffff::1", 33)), address("2001:db8:8000::", 33));
    EXPECT_EQ(networkOf(address("fe80::1", 128)), address("fe80::1", 128));
    for (unsigned prefix = 0; prefix <= 32; prefix++) {
        EXPECT_EQ(prefixOf(maskOf(prefix).data()), prefix);
    }
    EXPECT_EQ(textOf(address("2001:db8::1", 64)), "2001:db8::1/64");
    EXPECT_EQ(textOf(address("fe80::1", 128)), "fe80::1");
}

} // namespace nwtest
