// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every reason to refuse a LAN set: its code, and nothing changed. */
#include <cstring>
#include <filesystem>
#include <fstream>

#include "manager_system.hpp"

namespace nwtest {

namespace {

using Edit = void (*)(NW_LAN_SET_PORT_S &port);

struct Row {
    const char *name;
    unsigned port;
    std::uint32_t word0;
    std::uint32_t word1;
    Edit edit;
    std::uint32_t result;
};

void nothing(NW_LAN_SET_PORT_S &) {}

/* clang-format off */
const Row rows[] = {
    {"UnknownBitOfWord0",    0, 0x00004000, 0, nothing, 0x1E000021},
    {"HighestBitOfWord0",    0, 0x80000000, 0, nothing, 0x1E000021},
    {"UnknownBitOfWord1",    0, 0, 0x40,       nothing, 0x1E000021},
    {"BondWhileSeparate",    2, NW_LAN_BIT_LAN_ENABLE, 0, nothing, 0x1E000004},
    {"LanEnable2",           1, NW_LAN_BIT_LAN_ENABLE, 0, [](auto &port) { port.ucLanEnable = 2; }, 0x1E000009},
    {"Ipv4Enable255",        1, NW_LAN_BIT_IPV4_ENABLE, 0, [](auto &port) { port.ucIpv4Enable = 255; }, 0x1E000009},
    {"Ipv6Enable2",          1, NW_LAN_BIT_IPV6_ENABLE, 0, [](auto &port) { port.ucIpv6Enable = 2; }, 0x1E000009},
    {"VlanEnable2",          1, NW_LAN_BIT_VLAN_ENABLE, 0, [](auto &port) { port.ucVlanEnable = 2; }, 0x1E000009},
    {"Ipv4Origin3",          1, NW_LAN_BIT_IPV4_TYPE, 0, [](auto &port) { port.ucIpv4Type = 3; }, 0x1E00000A},
    {"Ipv6Origin4",          1, NW_LAN_BIT_IPV6_TYPE, 0, [](auto &port) { port.ucIpv6Type = 4; }, 0x1E00000A},
    {"Ipv4Loopback",         1, NW_LAN_BIT_IPV4_ADDR, 0, [](auto &port) { put(port.aucIpv4Addr, "127.0.0.1"); }, 0x1E00000B},
    {"Ipv4Multicast",        1, NW_LAN_BIT_IPV4_ADDR, 0, [](auto &port) { put(port.aucIpv4Addr, "224.0.0.1"); }, 0x1E00000B},
    {"Ipv4FirstByteZero",    1, NW_LAN_BIT_IPV4_ADDR, 0, [](auto &port) { put(port.aucIpv4Addr, "0.1.2.3"); }, 0x1E00000B},
    {"Ipv4MaskWithHole",     1, NW_LAN_BIT_IPV4_MASK, 0, [](auto &port) { put(port.aucIpv4Mask, "255.0.255.0"); }, 0x1E00000C},
    {"Ipv4MaskOfSevenBits",  1, NW_LAN_BIT_IPV4_MASK, 0, [](auto &port) { put(port.aucIpv4Mask, "254.0.0.0"); }, 0x1E00000C},
    {"Ipv4MaskZero",         1, NW_LAN_BIT_IPV4_MASK, 0, nothing, 0x1E00000C},
    {"Ipv4GatewayBroadcast", 1, NW_LAN_BIT_IPV4_GATEWAY, 0, [](auto &port) { put(port.aucIpv4Gateway, "255.255.255.255"); }, 0x1E00000D},
    {"Ipv4GatewayOutside",   1, NW_LAN_BIT_IPV4_GATEWAY, 0, [](auto &port) { put(port.aucIpv4Gateway, "192.168.21.1"); }, 0x1E00000E},
    {"Ipv4GatewayItself",    1, NW_LAN_BIT_IPV4_GATEWAY, 0, [](auto &port) { put(port.aucIpv4Gateway, "192.168.20.2"); }, 0x1E00000E},
    {"Ipv4Route1Loopback",   1, 0, NW_LAN_BIT_IPV4_ROUTE1_ADDR, [](auto &port) { put(port.astIpv4Route[0].aucAddr, "127.0.0.0"); }, 0x1E00000F},
    {"Ipv4Route2Mask",       1, 0, NW_LAN_BIT_IPV4_ROUTE2_MASK, [](auto &port) { put(port.astIpv4Route[1].aucMask, "0.255.0.0"); }, 0x1E00000F},
    {"Ipv4Route1Gateway",    1, 0, NW_LAN_BIT_IPV4_ROUTE1_GATEWAY, [](auto &port) { put(port.astIpv4Route[0].aucGateway, "240.0.0.1"); }, 0x1E00000F},
    {"Ipv4RouteWithoutMask", 1, 0, NW_LAN_BIT_IPV4_ROUTE1_ADDR, [](auto &port) { put(port.astIpv4Route[0].aucAddr, "10.0.0.0"); }, 0x1E00000F},
    {"Ipv6Multicast",        1, NW_LAN_BIT_IPV6_ADDR, 0, [](auto &port) { put(port.aucIpv6Addr, "ff02::1"); }, 0x1E000010},
    {"Ipv6LinkLocal",        1, NW_LAN_BIT_IPV6_ADDR, 0, [](auto &port) { put(port.aucIpv6Addr, "fe80::1"); }, 0x1E000010},
    {"Ipv6Loopback",         1, NW_LAN_BIT_IPV6_ADDR, 0, [](auto &port) { put(port.aucIpv6Addr, "::1"); }, 0x1E000010},
    {"Ipv6Prefix129",        1, NW_LAN_BIT_IPV6_PREFIX, 0, [](auto &port) { port.ucIpv6Prefix = 129; }, 0x1E000011},
    {"Ipv6PrefixZero",       1, NW_LAN_BIT_IPV6_PREFIX, 0, nothing, 0x1E000011},
    {"Ipv6GatewayMulticast", 1, NW_LAN_BIT_IPV6_GATEWAY, 0, [](auto &port) { put(port.aucIpv6Gateway, "ff02::2"); }, 0x1E000012},
    {"Ipv6Route1Mapped",     1, NW_LAN_BIT_IPV6_ROUTE1_ADDR, 0, [](auto &port) { put(port.astIpv6Route[0].aucAddr, "::ffff:10.0.0.1"); }, 0x1E000013},
    {"Ipv6Route2Prefix",     1, NW_LAN_BIT_IPV6_ROUTE2_PREFIX, 0, [](auto &port) { port.astIpv6Route[1].ucPrefix = 200; }, 0x1E000013},
    {"Ipv6Route2Gateway",    1, NW_LAN_BIT_IPV6_ROUTE2_GATEWAY, 0, [](auto &port) { put(port.astIpv6Route[1].aucGateway, "ff05::1"); }, 0x1E000013},
    {"Ipv6RouteNoPrefix",    1, NW_LAN_BIT_IPV6_ROUTE1_ADDR, 0, [](auto &port) { put(port.astIpv6Route[0].aucAddr, "2001:db8:9::"); }, 0x1E000013},
    {"VlanId4095",           1, NW_LAN_BIT_VLAN_ID, 0, [](auto &port) { port.usVlanid = 4095; }, 0x1E000014},
    {"VlanPriority8",        1, NW_LAN_BIT_VLAN_PRIORITY, 0, [](auto &port) { port.ucVlanPriority = 8; }, 0x1E000015},
    {"ArpControl4",          1, NW_LAN_BIT_ARP_CONTROL, 0, [](auto &port) { port.ucArpControl = 4; }, 0x1E000017},
    {"ArpSuspend4",          1, NW_LAN_BIT_ARP_SUSPEND, 0, [](auto &port) { port.ucArpSuspend = 4; }, 0x1E000017},
    {"SegmentOfTheOther",    1, NW_LAN_BIT_IPV4_ADDR, 0, [](auto &port) { put(port.aucIpv4Addr, "192.168.10.3"); }, 0x1E000A27},
    {"SegmentByShorterMask", 1, NW_LAN_BIT_IPV4_MASK, 0, [](auto &port) { put(port.aucIpv4Mask, "255.255.0.0"); }, 0x1E000A27},
    {"Ipv6SegmentOfTheOther", 0, NW_LAN_BIT_IPV6_ENABLE | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX, 0, [](auto &port) { port.ucIpv6Enable = 1; port.ucIpv6Prefix = 48; put(port.aucIpv6Addr, "2001:db8:20:1::9"); }, 0x1E000A28},
};
/* clang-format on */

using Refusals = ManagerTest;

} // namespace

TEST_F(Refusals, EachCheckHasItsCode)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        LanRequest request;
        request.select(row.port, row.word0, row.word1);
        row.edit(request.port(row.port));
        expectUntouched(request, row.result, row.port);
    }
}

TEST_F(Refusals, OneBadPortRefusesTheOtherToo)
{
    LanRequest request;
    request.select(0, NW_LAN_BIT_IPV4_ADDR).select(1, NW_LAN_BIT_VLAN_ID);
    put(request.port(0).aucIpv4Addr, "192.168.10.77");
    request.port(1).usVlanid = 0xFFFF;

    expectUntouched(request, 0x1E000014, 0);
}

TEST_F(Refusals, AddressInTheOtherPortsRoute)
{
    LanRequest route;
    route.select(0, 0, NW_LAN_BITS_IPV4_ROUTES & 7U);
    put(route.port(0).astIpv4Route[0].aucAddr, "10.1.0.0");
    put(route.port(0).astIpv4Route[0].aucMask, "255.255.0.0");
    put(route.port(0).astIpv4Route[0].aucGateway, "192.168.10.9");
    expectAnswer(route, NW_OK, 0);

    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(1).aucIpv4Addr, "10.1.2.3");
    expectUntouched(request, NW_ERR_IPV4_IN_ROUTE1, 1);
}

TEST_F(Refusals, SegmentOfTheWirelessInterface)
{
    std::ofstream(std::filesystem::path(std::getenv("BMC_STATE_DIR")) / "wireless.json")
        << R"({"enabled": true, "ipv4": "10.5.5.5"})";
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(1).aucIpv4Addr, "10.5.5.6");

    expectUntouched(request, NW_ERR_IPV4_SAME_SEGMENT, 1);
}

/* A conflict that the database holds already stops only changes that could have made it. */
TEST_F(Refusals, OldConflictStopsItsOwnFamilyOnly)
{
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    put(lan.astPort[0].aucIpv4Addr, "192.168.20.9");
    putLan(lan);

    LanRequest unrelated;
    unrelated.select(1, NW_LAN_BIT_IPV6_PREFIX | NW_LAN_BIT_TRAFFIC_CLASS);
    unrelated.port(1).ucIpv6Prefix = 80;
    expectAnswer(unrelated, NW_OK, 1);

    LanRequest related;
    related.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(related.port(1).aucIpv4Addr, "192.168.20.8");
    expectUntouched(related, NW_ERR_IPV4_SAME_SEGMENT, 1);

    LanRequest cure;
    cure.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(cure.port(1).aucIpv4Addr, "192.168.21.8");
    expectAnswer(cure, NW_OK, 1);
}

TEST_F(Refusals, PortMissingOnTheBoard)
{
    stopManager();
    std::string json = separatePorts;
    json.replace(json.find("\"eth1\","), 7, "\"eth1\", \"present\": false,");
    configure(json);
    startManager();

    LanRequest request;
    request.select(1, NW_LAN_BIT_LAN_ENABLE);
    expectUntouched(request, 0x1E000004, 1);
}

TEST_F(Refusals, SeparatePortsWhileBonded)
{
    stopManager();
    configure(bondedPorts);
    startManager();
    for (const unsigned port : {0U, 1U}) {
        LanRequest request;
        request.select(port, NW_LAN_BIT_LAN_ENABLE);
        expectUntouched(request, 0x1E000004, port);
    }

    LanRequest request;
    request.select(2, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(2).aucIpv4Addr, "192.168.30.3");
    expectAnswer(request, NW_OK, 2);
    EXPECT_EQ(kernelAddresses("bond0"), std::vector<std::string>{"192.168.30.3/24"});
}

/* Requests that are no LAN set. */
TEST_F(Refusals, MalformedRequests)
{
    const auto resultOf = [](const std::vector<std::uint8_t> &request) {
        const auto response = call(request);
        const std::uint32_t result = response ? response->uiResult : 0xFFFFFFFF;
        return result;
    };
    const std::vector<std::uint8_t> good = LanRequest().bytes();

    for (const std::size_t size : {0UL, 1UL, 2UL, 508UL, 3073UL, 3075UL, 10000UL}) {
        std::vector<std::uint8_t> request = good;
        request.resize(size);
        EXPECT_EQ(resultOf(request), 0x1E000001) << size;
    }
    for (unsigned command = 0; command < 256; command++) {
        std::vector<std::uint8_t> request = good;
        request[1] = static_cast<std::uint8_t>(command);
        const bool isKnown = command <= NW_CMD_SET_ALL && command != 10;
        EXPECT_EQ(resultOf(request), isKnown ? NW_OK : 0x1E00001C) << command;
    }
    std::vector<std::uint8_t> badHead = good;
    badHead[0] = 1;
    EXPECT_EQ(resultOf(badHead), 0x1E000001);
}

TEST_F(Refusals, OtherFunctionIsAFailedCall)
{
    EXPECT_FALSE(call(LanRequest().bytes(), 27).has_value());
    EXPECT_TRUE(call(LanRequest().bytes()).has_value());
}

} // namespace nwtest
