// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Each step of the same-segment check: when it runs, what it answers, what it says and in which
// order. The lines of the pair comparisons are left out here; they have tests of their own.
#include "segment_check.hpp"

namespace {

using namespace segment;
using ::testing::Values;
namespace at = support::at;

constexpr std::uint32_t sameIpv4 = 0x1E000A27;
constexpr std::uint32_t sameIpv6 = 0x1E000A28;

// Everything is on and nothing conflicts.
Board quiet()
{
    Board board{{}, {1, support::ipv4("10.0.2.1")}};
    board.port(0).ipv4Address("10.0.0.1", "255.255.255.0").ipv6Address("2001:db8:a::1", 64);
    board.port(1).ipv4Address("10.0.1.1", "255.255.255.0").ipv6Address("2001:db8:b::1", 64);
    board.port(2).ipv4Address("10.0.3.1", "255.255.255.0");
    board.port(0).ipv6Further(0, "2001:db8:c::1", 64);
    board.port(1).ipv6Further(0, "2001:db8:d::1", 64);
    return board;
}

using NormalIpv4 = fake::FakePlatformRows<Step>;
TEST_P(NormalIpv4, Step)
{
    expectStep(sameSegment, quiet(), GetParam());
}
using NormalIpv6 = fake::FakePlatformRows<Step>;
TEST_P(NormalIpv6, Step)
{
    expectStep(sameSegment, quiet(), GetParam());
}
using Standby = fake::FakePlatformRows<Step>;
TEST_P(Standby, Step)
{
    expectStep(sameSegment, quiet(), GetParam());
}

const std::string heading = "Check ipv4 segment.";
const std::string summary4 = "Ipv4 address is in the same segment when mode is normal.";
const std::string routeSummary4 = "Ipv4 address is in the same segment with route";
const std::string summary6 = "Ipv6 address is in the same segment when mode is normal.";
const std::string routeSummary6 = "Ipv6 address is in the same segment with route";
const std::string slaacSummary = "Ipv6 slaac address is in the same segment when mode is normal.";
const std::string normalEnd = "Ip address is in the same segment when normal mode.";
const std::string standbyEnd = "Ip address is in the same segment when standby mode.";
const std::string onlyOne = "There is only one netport that is enable.";
const std::string onlyOneStandby = "There is only one net port that ipv4 is enabled.";

const std::string eth0Eth1 = "The ipv4 address of eth0 is at the same segment with eth1.";
const std::string eth0Wifi = "The ipv4 address of eth0 is at the same segment with wifi.";
const std::string eth1Wifi = "The ipv4 address of eth1 is at the same segment with wifi.";

void ports(Board &board)
{
    board.port(1).ipv4Address("10.0.0.9", "255.255.255.128");
}
const Script wifiEth0 = wifiAddress("10.0.0.7");
const Script wifiEth1 = wifiAddress("10.0.1.7");

// A route that holds the address, or whose gateway the address's segment holds.
const Script eth0InEth1Route1 = destination4(1, 0, "10.0.0.0");
const Script eth0InEth1Route2 = destination4(1, 1, "10.0.0.0");
const Script eth1InEth0Route1 = destination4(0, 0, "10.0.1.0");
const Script wifiInEth0Route2 = destination4(0, 1, "10.0.2.0");
const Script wifiInEth1Route1 = destination4(1, 0, "10.0.2.0");
const Script eth0HoldsEth1Gateway1 = gateway4(1, 0, "10.0.0.254");
const Script eth1HoldsEth0Gateway2 = gateway4(0, 1, "10.0.1.254");
const Script wifiHoldsEth0Gateway1 = gateway4(0, 0, "10.0.2.254");
const Script wifiHoldsEth1Gateway2 = gateway4(1, 1, "10.0.2.254");

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Addresses, NormalIpv4, Values(
    Step{"NoConflict",        0, 7, 1, nothing,  0,        {heading}},
    Step{"A1",                0, 7, 1, ports,    sameIpv4, {heading, eth0Eth1, summary4, normalEnd}},
    Step{"A1Eth0Selected",    0, 1, 1, ports,    sameIpv4, {heading, eth0Eth1, summary4, normalEnd}},
    Step{"A1Eth1Selected",    0, 2, 1, ports,    sameIpv4, {heading, eth0Eth1, summary4, normalEnd}},
    Step{"A1WifiSelected",    0, 4, 1, ports,    0,        {heading}},
    Step{"A1Eth0Off",         0, 7, 1, also(ports, flag(0, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A1Eth0Two",         0, 7, 1, also(ports, flag(0, at::ipv4Enable, 2)), 0, {heading}},
    Step{"A1Eth1Off",         0, 7, 1, also(ports, flag(1, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A1Eth1Two",         0, 7, 1, also(ports, flag(1, at::ipv4Enable, 2)), 0, {heading}},
    Step{"A2",                0, 7, 1, wifiEth0, sameIpv4, {heading, eth0Wifi, summary4, normalEnd}},
    Step{"A2Eth0Selected",    0, 1, 1, wifiEth0, sameIpv4, {heading, eth0Wifi, summary4, normalEnd}},
    Step{"A2WifiSelected",    0, 4, 1, wifiEth0, sameIpv4, {heading, eth0Wifi, summary4, normalEnd}},
    Step{"A2Eth1Selected",    0, 2, 1, wifiEth0, 0,        {heading}},
    Step{"A2WifiOff",         0, 7, 1, also(wifiEth0, wifiEnable(0)), 0, {heading}},
    Step{"A2WifiTwo",         0, 7, 1, also(wifiEth0, wifiEnable(2)), 0, {heading}},
    Step{"A2Eth0Two",         0, 7, 1, also(wifiEth0, flag(0, at::ipv4Enable, 2)), 0, {heading}},
    Step{"A2Eth1Off",         0, 7, 1, also(wifiEth0, flag(1, at::ipv4Enable, 0)), sameIpv4,
         {heading, eth0Wifi, summary4, normalEnd}},
    Step{"A3",                0, 7, 1, wifiEth1, sameIpv4, {heading, eth1Wifi, summary4, normalEnd}},
    Step{"A3Eth1Selected",    0, 2, 1, wifiEth1, sameIpv4, {heading, eth1Wifi, summary4, normalEnd}},
    Step{"A3WifiSelected",    0, 4, 1, wifiEth1, sameIpv4, {heading, eth1Wifi, summary4, normalEnd}},
    Step{"A3Eth0Selected",    0, 1, 1, wifiEth1, 0,        {heading}},
    Step{"A3WifiTwo",         0, 7, 1, also(wifiEth1, wifiEnable(2)), 0, {heading}},
    Step{"A3Eth1Two",         0, 7, 1, also(wifiEth1, flag(1, at::ipv4Enable, 2)), 0, {heading}},
    Step{"PortSetZero",       0, 0, 1, ports,    0,        {heading}},
    Step{"OtherPortBits",     0, 0xFFFFFFF8U, 1, ports, 0, {heading}},
    Step{"OtherTypeBits",     0, 7, 0xFFFFFFF8U, ports, 0, {}},
    Step{"NetworkPartZero",   0, 7, 1, [](Board &board) {
             board.port(0).ipv4Address("0.0.0.5", "255.0.0.0");
             board.port(1).ipv4Address("0.0.0.9", "255.0.0.0"); }, 0, {heading}},
    Step{"CommonMask",        0, 7, 1, [](Board &board) {
             board.port(0).ipv4Address("192.168.1.10", "255.255.255.0");
             board.port(1).ipv4Address("192.168.1.20", "255.255.0.0"); }, sameIpv4,
         {heading, eth0Eth1, summary4, normalEnd}},
    Step{"WifiMaskIs24Bits",  0, 7, 1, [](Board &board) {
             board.wifi.address = support::ipv4("10.1.2.3");
             board.port(0).ipv4Address("10.1.2.200", "255.255.255.128"); }, sameIpv4,
         {heading, eth0Wifi, summary4, normalEnd}}),
    fake::RowName{});

const std::string inEth1Route = "Ip address is in the same segment with eth1 route";
const std::string inEth0Route = "Ip address is in the same segment with eth0 route";
const std::string wifiInEth0 = "Wifi address is in the same segment with eth0 route";
const std::string wifiInEth1 = "Wifi address is in the same segment with eth1 route";
const std::string route1 = "Ipv4 address is in the same segment with route1.";
const std::string route2 = "Ipv4 address is in the same segment with route2.";
const std::string gateway1 = "Ipv4 address is in the same segment with route1 gateway.";
const std::string gateway2 = "Ipv4 address is in the same segment with route2 gateway.";

INSTANTIATE_TEST_SUITE_P(Routes, NormalIpv4, Values(
    Step{"A4Route1",        0, 1, 1, eth0InEth1Route1, 0x1E000A51, {heading, route1, inEth1Route, routeSummary4, normalEnd}},
    Step{"A4Route2",        0, 1, 1, eth0InEth1Route2, 0x1E000A52, {heading, route2, inEth1Route, routeSummary4, normalEnd}},
    Step{"A4Gateway1",      0, 1, 1, eth0HoldsEth1Gateway1, 0x1E000A59, {heading, gateway1, inEth1Route, routeSummary4, normalEnd}},
    Step{"A4Eth0NotSelected", 0, 6, 1, eth0InEth1Route1, 0, {heading}},
    Step{"A4Eth0Two",       0, 7, 1, also(eth0InEth1Route1, flag(0, at::ipv4Enable, 2)), 0, {heading}},
    Step{"A4Eth1Off",       0, 1, 1, also(eth0InEth1Route1, flag(1, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A4RouteStateTwo", 0, 1, 1, also(eth0InEth1Route1, flag(1, at::ipv4Route[0], 2)), 0, {heading}},
    Step{"A5Route1",        0, 2, 1, eth1InEth0Route1, 0x1E000A51, {heading, route1, inEth0Route, routeSummary4, normalEnd}},
    Step{"A5Gateway2",      0, 2, 1, eth1HoldsEth0Gateway2, 0x1E000A5A, {heading, gateway2, inEth0Route, routeSummary4, normalEnd}},
    Step{"A5Eth1NotSelected", 0, 5, 1, eth1InEth0Route1, 0, {heading}},
    Step{"A5Eth0Off",       0, 2, 1, also(eth1InEth0Route1, flag(0, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A6Route2",        0, 4, 1, wifiInEth0Route2, 0x1E000A52, {heading, route2, wifiInEth0, routeSummary4, normalEnd}},
    Step{"A6Gateway1",      0, 4, 1, wifiHoldsEth0Gateway1, 0x1E000A59, {heading, gateway1, wifiInEth0, routeSummary4, normalEnd}},
    Step{"A6WifiNotSelected", 0, 3, 1, wifiInEth0Route2, 0, {heading}},
    Step{"A6WifiTwo",       0, 4, 1, also(wifiInEth0Route2, wifiEnable(2)), 0, {heading}},
    Step{"A6Eth0Off",       0, 4, 1, also(wifiInEth0Route2, flag(0, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A6Eth1Off",       0, 4, 1, also(wifiInEth0Route2, flag(1, at::ipv4Enable, 0)), 0x1E000A52,
         {heading, route2, wifiInEth0, routeSummary4, normalEnd}},
    Step{"A7Route1",        0, 4, 1, wifiInEth1Route1, 0x1E000A51, {heading, route1, wifiInEth1, routeSummary4, normalEnd}},
    Step{"A7Gateway2",      0, 4, 1, wifiHoldsEth1Gateway2, 0x1E000A5A, {heading, gateway2, wifiInEth1, routeSummary4, normalEnd}},
    Step{"A7WifiNotSelected", 0, 3, 1, wifiInEth1Route1, 0, {heading}},
    Step{"A7Eth1Off",       0, 4, 1, also(wifiInEth1Route1, flag(1, at::ipv4Enable, 0)), 0, {heading}},
    Step{"A1BeforeA4",      0, 7, 1, also(eth0InEth1Route1, ports), sameIpv4,
         {heading, eth0Eth1, summary4, normalEnd}},
    Step{"A4BeforeA6",      0, 7, 1, also(eth0InEth1Route2, wifiInEth0Route2),
         0x1E000A52, {heading, route2, inEth1Route, routeSummary4, normalEnd}}),
    fake::RowName{});
/* clang-format on */

void addresses6(Board &board)
{
    board.port(1).ipv6Address("2001:db8:a::9", 64);
}
void static0Slaac1(Board &board)
{
    board.port(1).ipv6Further(0, "2001:db8:a::9", 64);
}
void slaac0Static1(Board &board)
{
    board.port(0).ipv6Further(0, "2001:db8:b::9", 64);
}
void slaacs(Board &board)
{
    board.port(1).ipv6Further(0, "2001:db8:c::9", 64);
}
// The address of the first port in, or the gateway of, a route of the other.
const Script eth0InRoute1 = also(flag(0, at::ipv6Type, 1), destination6(1, 0, "2001:db8:a::"));
const Script eth0InRoute2 = also(flag(0, at::ipv6Type, 1), destination6(1, 1, "2001:db8:a::"));
const Script eth0HoldsGateway1 = also(flag(0, at::ipv6Type, 1), gateway6(1, 0, "2001:db8:a::fe"));
const Script eth1InRoute1 = also(flag(1, at::ipv6Type, 1), destination6(0, 0, "2001:db8:b::"));
const Script eth1HoldsGateway2 = also(flag(1, at::ipv6Type, 1), gateway6(0, 1, "2001:db8:b::fe"));

/* clang-format off */
const std::string b1 = "The dhcpv6 address that's eth0 and eth1 is at the same segment.";
const std::string b2 = "The dhcpv6 address of eth0 and the slaacs address of eth1 is at the same segment.";
const std::string b3 = "The slaacs address of eth0 and the dhcpv6 address of eth1 is at the same segment.";
const std::string slaacConflict = "The slaacs that's eth0 and eth1 is at the same segment.";

INSTANTIATE_TEST_SUITE_P(Addresses, NormalIpv6, Values(
    Step{"NoConflict",       0, 7, 6, nothing,       0,        {}},
    Step{"B1",               0, 7, 2, addresses6,    sameIpv6, {b1, summary6, normalEnd}},
    Step{"B1NoPortSelected", 0, 0, 2, addresses6,    sameIpv6, {b1, summary6, normalEnd}},
    Step{"B1FlagsTwo",       0, 7, 2, [](Board &board) { addresses6(board);
             board.port(0)[at::ipv6Enable] = 2; board.port(1)[at::ipv6Enable] = 255; },
         sameIpv6, {b1, summary6, normalEnd}},
    Step{"B1OtherTypes",     0, 7, 5, addresses6,    0,        {heading}},
    Step{"B2",               0, 7, 2, static0Slaac1, sameIpv6, {b2, summary6, normalEnd}},
    Step{"B3",               0, 7, 2, slaac0Static1, sameIpv6, {b3, summary6, normalEnd}},
    Step{"B1BeforeB2",       0, 7, 2, also(static0Slaac1, addresses6), sameIpv6,
         {b1, summary6, normalEnd}},
    Step{"SlaacsNotUnderType2", 0, 7, 2, slaacs,     0,        {}},
    Step{"C",                0, 7, 4, slaacs,        sameIpv6, {slaacConflict, slaacSummary, normalEnd}},
    Step{"CBehindB",         0, 7, 6, slaacs,        sameIpv6, {slaacConflict, slaacSummary, normalEnd}},
    Step{"CNoPortSelected",  0, 0, 4, slaacs,        sameIpv6, {slaacConflict, slaacSummary, normalEnd}},
    Step{"Type2Eth0Off",     0, 7, 2, also(addresses6, flag(0, at::ipv6Enable, 0)), 0, {onlyOne, onlyOne}},
    Step{"Type2Eth1Off",     0, 7, 2, also(addresses6, flag(1, at::ipv6Enable, 0)), 0, {onlyOne, onlyOne}},
    Step{"Type4Eth0Off",     0, 7, 4, also(slaacs, flag(0, at::ipv6Enable, 0)), 0, {onlyOne}},
    Step{"Type4Eth1Off",     0, 7, 4, also(slaacs, flag(1, at::ipv6Enable, 0)), 0, {onlyOne}},
    Step{"Type6Eth0Off",     0, 7, 6, also(slaacs, flag(0, at::ipv6Enable, 0)), 0, {onlyOne, onlyOne, onlyOne}},
    Step{"Type7BothOff",     0, 7, 7, [](Board &board) { board.port(0)[at::ipv6Enable] = 0;
             board.port(1)[at::ipv6Enable] = 0; }, 0, {heading, onlyOne, onlyOne, onlyOne}},
    Step{"Ipv4StageFirst",   0, 7, 7, also(addresses6, ports), sameIpv4,
         {heading, eth0Eth1, summary4, normalEnd}},
    Step{"PrefixAbove128",   0, 7, 6, [](Board &board) { addresses6(board); static0Slaac1(board);
             for (std::size_t port : {0U, 1U}) { board.port(port)[at::ipv6Prefix] = 129;
                                                 board.port(port)[at::ipv6FurtherPrefix] = 255; } },
         0, {}}),
    fake::RowName{});

const std::string with1 = "Ipv6 address is in the same segment with eth1 route";
const std::string with0 = "Ipv6 address is in the same segment with eth0 route";
const std::string sixRoute1 = "Ipv6 address is in the same segment with route1.";
const std::string sixRoute2 = "Ipv6 address is in the same segment with route2.";
const std::string sixGateway1 = "Ipv6 address is in the same segment with route1 gateway.";
const std::string sixGateway2 = "Ipv6 address is in the same segment with route2 gateway.";

INSTANTIATE_TEST_SUITE_P(Routes, NormalIpv6, Values(
    Step{"B4Route1",   0, 0, 2, eth0InRoute1, 0x1E000A53, {sixRoute1, with1, routeSummary6, normalEnd}},
    Step{"B4Route2",   0, 0, 2, eth0InRoute2, 0x1E000A54, {sixRoute2, with1, routeSummary6, normalEnd}},
    Step{"B4Gateway1", 0, 7, 2, eth0HoldsGateway1, 0x1E000A5B, {sixGateway1, with1, routeSummary6, normalEnd}},
    Step{"B4OriginZero", 0, 7, 2, also(eth0InRoute1, flag(0, at::ipv6Type, 0)), 0, {}},
    Step{"B4OriginTwo",  0, 7, 2, also(eth0InRoute1, flag(0, at::ipv6Type, 2)), 0, {}},
    Step{"B5Route1",   0, 7, 2, eth1InRoute1, 0x1E000A53, {sixRoute1, with0, routeSummary6, normalEnd}},
    Step{"B5Gateway2", 0, 0, 2, eth1HoldsGateway2, 0x1E000A5C, {sixGateway2, with0, routeSummary6, normalEnd}},
    Step{"B5OriginZero", 0, 7, 2, also(eth1InRoute1, flag(1, at::ipv6Type, 0)), 0, {}},
    Step{"B5OriginTwo",  0, 7, 2, also(eth1InRoute1, flag(1, at::ipv6Type, 2)), 0, {}},
    Step{"B5RouteStateTwo", 0, 7, 2, also(eth1InRoute1, flag(0, at::ipv6Route[0], 2)), 0, {}},
    Step{"B4BeforeB5", 0, 7, 2, also(eth1InRoute1, eth0InRoute2),
         0x1E000A54, {sixRoute2, with1, routeSummary6, normalEnd}},
    Step{"RoutesNotUnderType4", 0, 7, 4, eth0InRoute1, 0, {}}),
    fake::RowName{});

const std::string standbySummary = "Ipv4 address is in the same segment when mode is standby.";
const std::string withBond0 = "Ipv4 address is in the same segment with bond0";

const Script bondWifi = wifiAddress("10.0.3.7");
const Script wifiInBondRoute1 = destination4(2, 0, "10.0.2.0");
const Script wifiHoldsBondGateway2 = gateway4(2, 1, "10.0.2.254");

INSTANTIATE_TEST_SUITE_P(Rows, Standby, Values(
    Step{"NoConflict",     1, 7, 1, nothing,  0, {}},
    Step{"Ipv6TypeOnly",   1, 7, 6, bondWifi, 0, {}},
    Step{"NoType",         1, 7, 0, bondWifi, 0, {}},
    Step{"OtherTypeBits",  1, 7, 0xFFFFFFFEU, bondWifi, 0, {}},
    Step{"Wifi",           1, 7, 1, bondWifi, sameIpv4, {standbySummary, standbyEnd}},
    Step{"AnyStandby",     0x80000000U, 7, 7, bondWifi, sameIpv4, {standbySummary, standbyEnd}},
    Step{"NoPortSelected", 1, 0, 1, bondWifi, sameIpv4, {standbySummary, standbyEnd}},
    Step{"BondTwoIsOn",    1, 7, 1, also(bondWifi, flag(2, at::ipv4Enable, 2)), sameIpv4, {standbySummary, standbyEnd}},
    Step{"WifiTwoIsOn",    1, 7, 1, also(bondWifi, wifiEnable(2)), sameIpv4, {standbySummary, standbyEnd}},
    Step{"BondOff",        1, 7, 1, also(bondWifi, flag(2, at::ipv4Enable, 0)), 0, {onlyOneStandby}},
    Step{"WifiOff",        1, 7, 1, also(bondWifi, wifiEnable(0)), 0, {onlyOneStandby}},
    Step{"Route1",         1, 4, 1, wifiInBondRoute1, 0x1E000A51, {route1, withBond0, standbyEnd}},
    Step{"Gateway2",       1, 4, 1, wifiHoldsBondGateway2, 0x1E000A5A, {gateway2, withBond0, standbyEnd}},
    Step{"RouteNotSelected", 1, 3, 1, wifiInBondRoute1, 0, {}},
    Step{"RouteWifiTwo",   1, 7, 1, also(wifiInBondRoute1, wifiEnable(2)), 0, {}},
    Step{"RouteWifiOff",   1, 7, 1, also(wifiInBondRoute1, wifiEnable(0)), 0, {onlyOneStandby}},
    Step{"RouteBondOff",   1, 7, 1, also(wifiInBondRoute1, flag(2, at::ipv4Enable, 0)), 0x1E000A51,
         {onlyOneStandby, route1, withBond0, standbyEnd}},
    Step{"RouteStateTwo",  1, 7, 1, also(wifiInBondRoute1, flag(2, at::ipv4Route[0], 2)), 0, {}},
    Step{"OtherPortsDoNotCount", 1, 7, 7, also(ports, addresses6), 0, {}}),
    fake::RowName{});
/* clang-format on */

class SegmentNulls : public fake::FakePlatformTest {};

TEST_F(SegmentNulls, AreErrors)
{
    expectNullsAreErrors(sameSegment, 7, "LIB_NW_CheckIPv4v6SameSegment");
}

// The comparisons' own lines stand between the others, in the order of the steps.
TEST(SegmentLines, OfTheComparisonsStandInOrder)
{
    fake::platform().reset();
    Board board = quiet();
    wifiInEth1Route1(board);
    EXPECT_EQ(Question().ask(sameSegment, {0, 4, 1}, board), 0x1E000A51U);
    EXPECT_EQ(
        support::loggedLines(),
        support::debugLines({"Check segment in normal mode.", heading, support::sumLine(10, 12, 2),
                             support::sumLine(11, 12, 2), support::sumLine(12, 12, 4), route1,
                             wifiInEth1, routeSummary4, normalEnd}));
}

} // namespace
