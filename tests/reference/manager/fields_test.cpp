// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every field of a LAN set: where it lands in the record, and what it does to the kernel. */
#include <algorithm>
#include <cstring>
#include <random>

#include "manager_system.hpp"

namespace nwtest {

namespace {

struct Row {
    const char *name;
    std::uint32_t word0;
    std::uint32_t word1;
    void (*edit)(NW_LAN_SET_PORT_S &port);
    void (*expect)(NW_LAN_CFG_PORT_S &port);
};

std::uint8_t *at(NW_LAN_CFG_PORT_S &port, std::size_t offset)
{
    return reinterpret_cast<std::uint8_t *>(&port) + offset;
}

/* On port 1 of the fresh configuration, one after the other. */
/* clang-format off */
const Row rows[] = {
    {"Ipv4Origin", NW_LAN_BIT_IPV4_TYPE, 0, [](auto &from) { from.ucIpv4Type = 2; }, [](auto &to) { *at(to, 58) = 2; }},
    {"Ipv4Address", NW_LAN_BIT_IPV4_ADDR, 0, [](auto &from) { put(from.aucIpv4Addr, "192.168.20.7"); }, [](auto &to) { put(at(to, 60), "192.168.20.7"); }},
    {"Ipv4Mask", NW_LAN_BIT_IPV4_MASK, 0, [](auto &from) { put(from.aucIpv4Mask, "255.255.254.0"); }, [](auto &to) { put(at(to, 64), "255.255.254.0"); }},
    {"Ipv4Gateway", NW_LAN_BIT_IPV4_GATEWAY, 0, [](auto &from) { put(from.aucIpv4Gateway, "192.168.21.1"); }, [](auto &to) { put(at(to, 68), "192.168.21.1"); }},
    {"Ipv4Header", NW_LAN_BIT_IPV4_HEADER, 0, [](auto &from) { from.stIpv4Header = {64, 2, 0xE2}; }, [](auto &to) { *at(to, 775) = 64; *at(to, 776) = 2; *at(to, 777) = 0xE2; }},
    {"HopLimit", NW_LAN_BIT_HOP_LIMIT, 0, [](auto &from) { from.ucHopLimit = 255; }, [](auto &to) { *at(to, 778) = 255; }},
    {"TrafficClass", NW_LAN_BIT_TRAFFIC_CLASS, 0, [](auto &from) { from.ucTrafficClass = 9; }, [](auto &to) { *at(to, 779) = 9; }},
    {"Ipv4Route1", 0, 0x07, [](auto &from) { put(from.astIpv4Route[0].aucAddr, "10.1.0.0"); put(from.astIpv4Route[0].aucMask, "255.255.0.0"); put(from.astIpv4Route[0].aucGateway, "192.168.20.9"); },
        [](auto &to) { *at(to, 83) = 1; put(at(to, 84), "10.1.0.0"); put(at(to, 88), "255.255.0.0"); put(at(to, 92), "192.168.20.9"); }},
    {"Ipv4Route2", 0, 0x38, [](auto &from) { put(from.astIpv4Route[1].aucAddr, "10.2.0.0"); put(from.astIpv4Route[1].aucMask, "255.255.255.0"); put(from.astIpv4Route[1].aucGateway, "192.168.20.8"); },
        [](auto &to) { *at(to, 108) = 1; put(at(to, 109), "10.2.0.0"); put(at(to, 113), "255.255.255.0"); put(at(to, 117), "192.168.20.8"); }},
    {"Ipv4Route2Mask", 0, 0x10, [](auto &from) { put(from.astIpv4Route[1].aucMask, "255.255.0.0"); }, [](auto &to) { put(at(to, 113), "255.255.0.0"); }},
    {"Ipv4Route1Cleared", 0, 0x01, [](auto &) {}, [](auto &to) { *at(to, 83) = 0; put(at(to, 84), "0.0.0.0"); }},
    {"Ipv6Origin", NW_LAN_BIT_IPV6_TYPE, 0, [](auto &from) { from.ucIpv6Type = 3; }, [](auto &to) { *at(to, 269) = 3; }},
    {"Ipv6Address", NW_LAN_BIT_IPV6_ADDR, 0, [](auto &from) { put(from.aucIpv6Addr, "2001:db8:20::9"); }, [](auto &to) { put(at(to, 272), "2001:db8:20::9"); }},
    {"Ipv6Gateway", NW_LAN_BIT_IPV6_GATEWAY, 0, [](auto &from) { put(from.aucIpv6Gateway, "fe80::1"); }, [](auto &to) { put(at(to, 544), "fe80::1"); }},
    {"Ipv6Prefix", NW_LAN_BIT_IPV6_PREFIX, 0, [](auto &from) { from.ucIpv6Prefix = 56; }, [](auto &to) { *at(to, 576) = 56; }},
    {"Ipv6Route1", 0x001C0000, 0, [](auto &from) { put(from.astIpv6Route[0].aucAddr, "2001:db8:a::"); from.astIpv6Route[0].ucPrefix = 48; put(from.astIpv6Route[0].aucGateway, "2001:db8:20::a"); },
        [](auto &to) { *at(to, 641) = 1; put(at(to, 642), "2001:db8:a::"); *at(to, 658) = 48; put(at(to, 659), "2001:db8:20::a"); }},
    {"Ipv6Route2", 0x00E00000, 0, [](auto &from) { put(from.astIpv6Route[1].aucAddr, "2001:db8:b::"); from.astIpv6Route[1].ucPrefix = 40; put(from.astIpv6Route[1].aucGateway, "fe80::b"); },
        [](auto &to) { *at(to, 708) = 1; put(at(to, 709), "2001:db8:b::"); *at(to, 725) = 40; put(at(to, 726), "fe80::b"); }},
    {"Ipv6Route2Cleared", 0x00200000, 0, [](auto &) {}, [](auto &to) { *at(to, 708) = 0; put(at(to, 709), "::"); }},
    {"ArpControl", NW_LAN_BIT_ARP_CONTROL, 0, [](auto &from) { from.ucArpControl = 3; }, [](auto &to) { *at(to, 787) = 3; }},
    {"ArpInterval", NW_LAN_BIT_ARP_INTERVAL, 0, [](auto &from) { from.ucArpInterval = 30; }, [](auto &to) { *at(to, 788) = 30; }},
    {"ArpSuspend", NW_LAN_BIT_ARP_SUSPEND, 0, [](auto &from) { from.ucArpSuspend = 1; }, [](auto &to) { *at(to, 789) = 1; }},
    {"VlanId", NW_LAN_BIT_VLAN_ID, 0, [](auto &from) { from.usVlanid = 0x0123; }, [](auto &to) { *at(to, 783) = 0x23; *at(to, 784) = 1; }},
    {"VlanPriority", NW_LAN_BIT_VLAN_PRIORITY, 0, [](auto &from) { from.ucVlanPriority = 7; }, [](auto &to) { *at(to, 785) = 7; }},
    {"VlanOff", NW_LAN_BIT_VLAN_ENABLE, 0, [](auto &) {}, [](auto &to) { *at(to, 780) = 0; *at(to, 783) = 0; *at(to, 784) = 0; }},
    {"Ipv4Disable", NW_LAN_BIT_IPV4_ENABLE, 0, [](auto &) {}, [](auto &to) { *at(to, 49) = 0; }},
    {"Ipv6Disable", NW_LAN_BIT_IPV6_ENABLE, 0, [](auto &) {}, [](auto &to) { *at(to, 50) = 0; }},
    {"LanDisable", NW_LAN_BIT_LAN_ENABLE, 0, [](auto &) {}, [](auto &to) { *at(to, 46) = 0; }},
};
/* clang-format on */

using Fields = ManagerTest;

LanRequest ipv4Change(const std::string &address)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(1).aucIpv4Addr, address);
    return request;
}

} // namespace

TEST_F(Fields, EachLandsInItsPlaceAndNowhereElse)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        NW_LAN_CFG_DB_INFO_S expected = storedLan();
        row.expect(expected.astPort[1]);

        /* Fields without their bit hold what must not land anywhere. */
        LanRequest request;
        std::memset(&request.port(0), 0x5A, sizeof(request.port(0)));
        request.select(1, row.word0, row.word1);
        row.edit(request.port(1));
        expectAnswer(request, NW_OK, 1);

        const NW_LAN_CFG_DB_INFO_S stored = storedLan();
        EXPECT_EQ(std::memcmp(&expected, &stored, sizeof(stored)), 0);
        EXPECT_EQ(storedStatus(), 0);
    }
}

/* 0 gives back what the interface had before, also to the manager's successor. */
TEST_F(Fields, HopLimitIsTheInterfaces)
{
    const std::string file = "/proc/sys/net/ipv6/conf/eth1/hop_limit";
    std::ofstream(file) << 33;
    LanRequest request;
    request.select(1, NW_LAN_BIT_HOP_LIMIT);
    request.port(1).ucHopLimit = 7;
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(fileText(file), "7\n");

    request.port(1).ucHopLimit = 0;
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(fileText(file), "33\n");

    request.port(1).ucHopLimit = 7;
    expectAnswer(request, NW_OK, 1);
    stopManager();
    std::ofstream(file) << 9;
    startManager();
    EXPECT_EQ(fileText(file), "7\n");
    request.port(1).ucHopLimit = 0;
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(fileText(file), "33\n");
}

/* Packets too small for IPv6 take it from the interface. */
TEST_F(Fields, HopLimitNeverKeepsAPortFromBeingSwitchedOff)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_HOP_LIMIT);
    request.port(1).ucHopLimit = 7;
    expectAnswer(request, NW_OK, 1);
    shell("ip link set eth1 mtu 1000");

    LanRequest off;
    off.select(1, NW_LAN_BIT_IPV6_ENABLE);
    expectAnswer(off, NW_OK, 1);
    EXPECT_EQ(storedLan().astPort[1].ucIpv6Enable, 0);
}

TEST_F(Fields, NothingSelectedChangesNothing)
{
    const std::string kernel = kernelSnapshot();
    LanRequest request;
    std::memset(&request.port(0), 0xFF, 3 * sizeof(request.port(0)));

    expectAnswer(request, NW_OK, 0);

    EXPECT_EQ(kernel, kernelSnapshot());
}

TEST_F(Fields, Ipv4AddressMaskAndGateway)
{
    LanRequest request = ipv4Change("192.168.21.5");
    request.select(1, NW_LAN_BIT_IPV4_MASK | NW_LAN_BIT_IPV4_GATEWAY);
    put(request.port(1).aucIpv4Mask, "255.255.255.128");
    put(request.port(1).aucIpv4Gateway, "192.168.21.1");
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.21.5/25", "2001:db8:20::2/64"}));
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"192.168.21.1 101"});

    /* Within the subnet: the gateway survives. */
    expectAnswer(ipv4Change("192.168.21.6"), NW_OK, 1);
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"192.168.21.1 101"});

    /* Both ports may have a gateway. */
    LanRequest other;
    other.select(0, NW_LAN_BIT_IPV4_GATEWAY);
    put(other.port(0).aucIpv4Gateway, "192.168.10.1");
    expectAnswer(other, NW_OK, 0);
    EXPECT_EQ(kernelGateways("eth0"), std::vector<std::string>{"192.168.10.1 100"});

    LanRequest none;
    none.select(1, NW_LAN_BIT_IPV4_GATEWAY);
    expectAnswer(none, NW_OK, 1);
    EXPECT_TRUE(kernelGateways("eth1").empty());
}

TEST_F(Fields, Ipv6AddressPrefixAndGateway)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX | NW_LAN_BIT_IPV6_GATEWAY);
    put(request.port(1).aucIpv6Addr, "2001:db8:21::5");
    put(request.port(1).aucIpv6Gateway, "2001:db8:21::1");
    request.port(1).ucIpv6Prefix = 56;
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.2/24", "2001:db8:21::5/56"}));
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"2001:db8:21::1 101"});

    /* The same address with another prefix length is a change too. */
    LanRequest shorter;
    shorter.select(1, NW_LAN_BIT_IPV6_PREFIX);
    shorter.port(1).ucIpv6Prefix = 48;
    expectAnswer(shorter, NW_OK, 1);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.2/24", "2001:db8:21::5/48"}));
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"2001:db8:21::1 101"});
}

TEST_F(Fields, DisabledFamilyLeavesTheKernelButNotTheRecord)
{
    LanRequest off;
    off.select(1, NW_LAN_BIT_IPV4_ENABLE | NW_LAN_BIT_IPV6_ENABLE);
    expectAnswer(off, NW_OK, 1);
    EXPECT_TRUE(kernelAddresses("eth1").empty());
    EXPECT_TRUE(isUp("eth1"));
    EXPECT_TRUE(std::ranges::equal(storedLan().astPort[1].aucIpv4Addr, raw("192.168.20.2")));

    LanRequest on = off;
    on.port(1).ucIpv4Enable = 1;
    on.port(1).ucIpv6Enable = 1;
    expectAnswer(on, NW_OK, 1);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.2/24", "2001:db8:20::2/64"}));
}

TEST_F(Fields, LanEnableMovesTheLink)
{
    LanRequest off;
    off.select(1, NW_LAN_BIT_LAN_ENABLE);
    expectAnswer(off, NW_OK, 1);
    EXPECT_FALSE(isUp("eth1"));
    EXPECT_TRUE(kernelAddresses("eth1").empty());

    LanRequest on = off;
    on.port(1).ucLanEnable = 1;
    expectAnswer(on, NW_OK, 1);
    EXPECT_TRUE(isUp("eth1"));
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.2/24", "2001:db8:20::2/64"}));
}

TEST_F(Fields, TwoPortsInOneRequestMaySwapTheirSegments)
{
    LanRequest request = ipv4Change("192.168.10.2");
    request.select(0, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(0).aucIpv4Addr, "192.168.20.2");

    expectAnswer(request, NW_OK, 0);

    EXPECT_EQ(kernelAddresses("eth0"), std::vector<std::string>{"192.168.20.2/24"});
    EXPECT_EQ(kernelAddresses("eth1").front(), "192.168.10.2/24");
}

/* Random requests out of small pools: refused or not, record and kernel stay the same. */
TEST_F(Fields, RandomRequestsKeepRecordAndKernelTheSame)
{
    std::mt19937 random(20);
    const std::uint32_t known0 = 0x07FFBFFF;
    unsigned accepted = 0;
    for (int round = 0; round < 400; round++) {
        LanRequest request;
        request.select(1, random() & random() & random() & known0, random() & random() & 0x3F);
        auto *bytes = reinterpret_cast<std::uint8_t *>(&request.port(1));
        for (std::size_t index = 0; index < sizeof(request.port(1)); index++) {
            bytes[index] = static_cast<std::uint8_t>(random() % 3);
        }
        put(request.port(1).aucIpv4Addr, "192.168.2" + std::to_string(random() % 3) + ".4");
        put(request.port(1).aucIpv4Mask, random() % 4 == 0 ? "255.255.0.0" : "255.255.255.0");
        put(request.port(1).aucIpv6Addr, "2001:db8:" + std::to_string(random() % 3) + "::4");
        put(request.port(1).aucIpv6Gateway, random() % 2 == 0 ? "::" : "fe80::1");
        request.port(1).ucIpv6Prefix = static_cast<std::uint8_t>(63 + random() % 67);

        const auto response = call(request.bytes());
        ASSERT_TRUE(response.has_value());
        accepted += response->uiResult == NW_OK;
    }
    EXPECT_GT(accepted, 20U);
    EXPECT_LT(accepted, 400U);

    const std::string kernel = kernelSnapshot();
    stopManager();
    startManager();
    EXPECT_EQ(kernel, kernelSnapshot());
}

TEST_F(Fields, RandomBytesNeverStopTheManager)
{
    std::mt19937 random(21);
    for (int round = 0; round < 2000; round++) {
        std::vector<std::uint8_t> request(random() % 4 == 0 ? random() % 4000 : 3074);
        for (std::uint8_t &byte : request) {
            byte = static_cast<std::uint8_t>(random());
        }
        if (request.size() > 1 && random() % 2 == 0) {
            request[0] = 0;
            request[1] = NW_CMD_SET_LAN;
        }
        ASSERT_TRUE(call(request).has_value()) << round;
    }
    EXPECT_TRUE(manager_->isRunning());
}

} // namespace nwtest
