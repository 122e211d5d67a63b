// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Each step of the route check: when it runs, what it answers, what it says and in which order. The
// lines of the pair comparisons are left out here; they have tests of their own.
#include "segment_check.hpp"

namespace {

using namespace segment;
using ::testing::Values;
namespace at = support::at;

constexpr std::uint32_t routes4 = 0x28;
constexpr std::uint32_t routes6 = 0xC0;

// Every port is on and has all its routes; nothing conflicts.
Board quiet()
{
    Board board{{}, {1, support::ipv4("10.9.0.1")}};
    for (std::size_t port = 0; port < 3; ++port) {
        const std::string number = std::to_string(port);
        support::PortEntry entry = board.port(port);
        entry.ipv4Address("10." + number + ".0.1", "255.255.255.0");
        entry.ipv6Address("2001:db8:" + number + "::1", 64);
        for (std::size_t route = 0; route < 2; ++route) {
            const std::string net = std::to_string(10 * port + route);
            entry.ipv4Route(route, "172.16." + net + ".0", "255.255.255.0", "172.20." + net + ".1");
            entry.ipv6Route(route, "fd00:" + net + "::", 64, "fd99:" + net + "::1");
        }
    }
    return board;
}

using RouteSteps = fake::FakePlatformRows<Step>;

TEST_P(RouteSteps, AnswerAndSpeak)
{
    expectStep(routeSegment, quiet(), GetParam());
}

/* clang-format off */
const std::string heading4 = "Check ipv4 route segment.";
const std::string heading6 = "Check ipv6 route segment.";
const std::string end4 = "Ipv4 static route is in the same segment when mode is normal.";
const std::string end6 = "Ipv6 static route is in the same segment when mode is normal.";
const std::string end = "Route address is in the same segment when normal mode";
const std::string eth1 = "Route address is in the same segment with eth1 when normal mode";
const std::string eth0 = "Route address is in the same segment with eth0 when normal mode";
const std::string wifi = "Route address is in the same segment with wifi when normal mode";

const std::string toAddress = "Ipv4 static route is in the same segment with ipv4 address when mode is normal.";
const std::string toRoute1 = "Ipv4 static route is in the same segment with other port route1.";
const std::string toRoute2 = "Ipv4 static route is in the same segment with other port route2.";
const std::string r1Address = "Ipv4 static route1 is in the same segment with ipv4 address when mode is normal.";
const std::string r1Gateway = "Ipv4 static route1 gateway is in the same segment with ipv4 address when mode is normal.";
const std::string r1Route = "Ipv4 static route1 is in the same segment with other route when mode is normal.";
const std::string r2Address = "Ipv4 static route2 is in the same segment with ipv4 address when mode is normal.";
const std::string r2Gateway = "Ipv4 static route2 gateway is in the same segment with ipv4 address when mode is normal.";
const std::string r2Route = "Ipv4 static route2 is in the same segment with other route when mode is normal.";

INSTANTIATE_TEST_SUITE_P(Ipv4Ports, RouteSteps, Values(
    Step{"NoConflict",   0, 3, 0xE8, nothing, 0, {heading4, heading6}},
    Step{"Eth0Route1Address", 0, 1, 0x08, destination4(0, 0, "10.1.0.0"), 0x1E000A49,
         {heading4, toAddress, r1Address, eth1, end4, end}},
    Step{"Eth0Route1Gateway", 0, 1, 0x08, gateway4(0, 0, "10.1.0.9"), 0x1E000A55,
         {heading4, toAddress, r1Gateway, eth1, end4, end}},
    Step{"Eth0Route1Route1",  0, 1, 0x08, destination4(0, 0, "172.16.10.0"), 0x1E000A49,
         {heading4, toRoute1, r1Route, eth1, end4, end}},
    Step{"Eth0Route1Route2",  0, 1, 0x08, destination4(0, 0, "172.16.11.0"), 0x1E000A49,
         {heading4, toRoute2, r1Route, eth1, end4, end}},
    Step{"Eth0Route2Address", 0, 1, 0x20, destination4(0, 1, "10.1.0.0"), 0x1E000A4A,
         {heading4, toAddress, r2Address, eth1, end4, end}},
    Step{"Eth0Route2Gateway", 0, 1, 0x20, gateway4(0, 1, "10.1.0.9"), 0x1E000A56,
         {heading4, toAddress, r2Gateway, eth1, end4, end}},
    Step{"Eth0Route2Route1",  0, 1, 0x20, destination4(0, 1, "172.16.10.0"), 0x1E000A4A,
         {heading4, toRoute1, r2Route, eth1, end4, end}},
    Step{"Eth1Route1Address", 0, 2, 0x08, destination4(1, 0, "10.0.0.0"), 0x1E000A49,
         {heading4, toAddress, r1Address, eth0, end4, end}},
    Step{"Eth1Route2Gateway", 0, 2, 0x20, gateway4(1, 1, "10.0.0.9"), 0x1E000A56,
         {heading4, toAddress, r2Gateway, eth0, end4, end}},
    Step{"Eth1Route2Route2",  0, 2, 0x20, destination4(1, 1, "172.16.1.0"), 0x1E000A4A,
         {heading4, toRoute2, r2Route, eth0, end4, end}},
    Step{"CommonMask",        0, 1, 0x08, also([](Board &board) {
             board.port(1).ipv4Address("10.20.30.40", "255.255.0.0"); },
         destination4(0, 0, "10.0.0.0", "255.0.0.0")), 0x1E000A49,
         {heading4, toAddress, r1Address, eth1, end4, end}},
    Step{"GatewayIsNotComparedWithRoutes", 0, 3, routes4, gateway4(0, 0, "172.16.10.9"), 0, {heading4}},
    Step{"OwnAddressDoesNotCount", 0, 3, routes4, destination4(0, 0, "10.0.0.0"), 0, {heading4}},
    Step{"OwnRouteDoesNotCount",   0, 3, routes4, destination4(0, 0, "172.16.1.0"), 0, {heading4}},
    Step{"BondDoesNotCount",       0, 3, routes4, destination4(0, 0, "10.2.0.0"), 0, {heading4}},
    Step{"Route1BeforeRoute2", 0, 1, routes4, also(destination4(0, 1, "10.1.0.0"), destination4(0, 0, "172.16.11.0")),
         0x1E000A49, {heading4, toRoute2, r1Route, eth1, end4, end}},
    Step{"AddressBeforeGateway", 0, 1, 0x08, [](Board &board) {
             board.port(0).ipv4Route(0, "10.1.0.0", "255.255.255.0", "10.1.0.9"); }, 0x1E000A49,
         {heading4, toAddress, r1Address, eth1, end4, end}},
    Step{"GatewayBeforeRoute", 0, 1, 0x08, [](Board &board) {
             board.port(0).ipv4Route(0, "172.16.10.0", "255.255.255.0", "10.1.0.9"); }, 0x1E000A55,
         {heading4, toAddress, r1Gateway, eth1, end4, end}},
    Step{"Eth0BeforeEth1", 0, 3, routes4, also(destination4(1, 0, "10.0.0.0"), destination4(0, 1, "10.1.0.0")),
         0x1E000A4A, {heading4, toAddress, r2Address, eth1, end4, end}}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(Ipv4Selection, RouteSteps, Values(
    Step{"NothingSelected",     0, 7, 0, destination4(0, 0, "10.1.0.0"), 0, {}},
    Step{"OtherRouteBits",      0, 7, 0xFFFFFF17U, destination4(0, 0, "10.1.0.0"), 0, {}},
    Step{"Route1NotSelected",   0, 3, 0x20, destination4(0, 0, "10.1.0.0"), 0, {heading4}},
    Step{"Route2NotSelected",   0, 3, 0x08, destination4(0, 1, "10.1.0.0"), 0, {heading4}},
    Step{"Eth0NotSelected",     0, 2, routes4, destination4(0, 0, "10.1.0.0"), 0, {heading4}},
    Step{"Eth1NotSelected",     0, 1, routes4, destination4(1, 0, "10.0.0.0"), 0, {heading4}},
    Step{"OtherPortBits",       0, 0xFFFFFFFCU, routes4, also(destination4(0, 0, "10.1.0.0"), destination4(1, 0, "10.9.0.0")), 0, {heading4}},
    Step{"RouteStateZero",      0, 3, routes4, also(destination4(0, 0, "10.1.0.0"), flag(0, at::ipv4Route[0], 0)), 0, {heading4}},
    Step{"RouteStateTwo",       0, 3, routes4, also(destination4(0, 1, "10.1.0.0"), flag(0, at::ipv4Route[1], 2)), 0, {heading4}},
    Step{"OtherRouteStateTwo",  0, 3, 0x08, also(destination4(0, 0, "172.16.10.0"), flag(1, at::ipv4Route[0], 2)), 0, {heading4}},
    Step{"Eth1Off",             0, 1, routes4, also(destination4(0, 0, "10.1.0.0"), flag(1, at::ipv4Enable, 0)), 0, {heading4}},
    Step{"Eth1Two",             0, 1, routes4, also(destination4(0, 0, "10.1.0.0"), flag(1, at::ipv4Enable, 2)), 0, {heading4}},
    Step{"Eth0Off",             0, 2, routes4, also(destination4(1, 0, "10.0.0.0"), flag(0, at::ipv4Enable, 0)), 0, {heading4}},
    Step{"Eth0Two",             0, 2, routes4, also(destination4(1, 0, "10.0.0.0"), flag(0, at::ipv4Enable, 2)), 0, {heading4}},
    Step{"OwnEnableDoesNotCount", 0, 1, 0x08, also(destination4(0, 0, "10.1.0.0"), flag(0, at::ipv4Enable, 0)),
         0x1E000A49, {heading4, toAddress, r1Address, eth1, end4, end}}),
    fake::RowName{});

const std::string r1Wifi = "Ipv4 static route1 is in the same segment with wifi when mode is normal.";
const std::string g1Wifi = "Ipv4 static route1 gateway is in the same segment with wifi when mode is normal.";
const std::string r2Wifi = "Ipv4 static route2 is in the same segment with wifi when mode is normal.";
const std::string g2Wifi = "Ipv4 static route2 gateway is in the same segment with wifi when mode is normal.";

INSTANTIATE_TEST_SUITE_P(Ipv4Wifi, RouteSteps, Values(
    Step{"Eth0Route1",       0, 1, 0x08, destination4(0, 0, "10.9.0.0"), 0x1E000A49, {heading4, r1Wifi, wifi, end4, end}},
    Step{"Eth0Gateway1",     0, 1, 0x08, gateway4(0, 0, "10.9.0.1"),     0x1E000A55, {heading4, g1Wifi, wifi, end4, end}},
    Step{"Eth0Route2",       0, 1, 0x20, destination4(0, 1, "10.9.0.0"), 0x1E000A4A, {heading4, r2Wifi, wifi, end4, end}},
    Step{"Eth0Gateway2",     0, 1, 0x20, gateway4(0, 1, "10.9.0.1"),     0x1E000A56, {heading4, g2Wifi, wifi, end4, end}},
    Step{"Eth1Route1",       0, 2, 0x08, destination4(1, 0, "10.9.0.0"), 0x1E000A49, {heading4, r1Wifi, wifi, end4, end}},
    Step{"Eth1Gateway2",     0, 2, 0x20, gateway4(1, 1, "10.9.0.1"),     0x1E000A56, {heading4, g2Wifi, wifi, end4, end}},
    Step{"GatewayMustEqual", 0, 3, routes4, gateway4(0, 0, "10.9.0.7"),  0, {heading4}},
    Step{"WifiBitsSelectNothing", 0, 4, routes4, destination4(0, 0, "10.9.0.0"), 0, {heading4}},
    Step{"Off",              0, 3, routes4, also(destination4(0, 0, "10.9.0.0"), wifiEnable(0)), 0, {heading4}},
    Step{"Two",              0, 3, routes4, also(destination4(0, 0, "10.9.0.0"), wifiEnable(2)), 0, {heading4}},
    Step{"RouteStateTwo",    0, 3, routes4, also(destination4(0, 0, "10.9.0.0"), flag(0, at::ipv4Route[0], 2)), 0, {heading4}},
    Step{"Route1NotSelected", 0, 3, 0x20, destination4(0, 0, "10.9.0.0"), 0, {heading4}},
    Step{"OwnAndOtherOff",   0, 1, 0x08, also(destination4(0, 0, "10.9.0.0"), also(flag(0, at::ipv4Enable, 0), flag(1, at::ipv4Enable, 0))),
         0x1E000A49, {heading4, r1Wifi, wifi, end4, end}},
    Step{"Eth1BeforeWifi",   0, 1, routes4, also(destination4(0, 0, "10.9.0.0"), destination4(0, 1, "10.1.0.0")),
         0x1E000A4A, {heading4, toAddress, r2Address, eth1, end4, end}},
    Step{"WifiBeforeEth1Routes", 0, 3, routes4, also(destination4(0, 1, "10.9.0.0"), destination4(1, 0, "10.0.0.0")),
         0x1E000A4A, {heading4, r2Wifi, wifi, end4, end}},
    Step{"Ipv4BeforeIpv6",   0, 1, 0x48, also(destination4(0, 0, "10.9.0.0"), destination6(0, 0, "2001:db8:1::")),
         0x1E000A49, {heading4, r1Wifi, wifi, end4, end}}),
    fake::RowName{});

const std::string sixEth1 = "IPv6 route address is in the same segment with eth1 when normal mode";
const std::string sixEth0 = "IPv6 route address is in the same segment with eth0 when normal mode";
const std::string toSix0 = "Ipv6 static route is in the same segment with ipv6 address when mode is normal, index[0].";
const std::string toSixRoute = "Ipv6 static route is in the same segment with other route when mode is normal.";
const std::string s1Address = "Ipv6 static route1 is in the same segment with ipv6 address when mode is normal.";
const std::string s1Route = "Ipv6 static route1 is in the same segment with other route when mode is normal.";
const std::string s1GwAddress = "Ipv6 static route1 gateway is in the same segment with ipv6 address when mode is normal.";
const std::string s1GwRoute = "Ipv6 static route1 gateway is in the same segment with other route when mode is normal.";
const std::string s2Address = "Ipv6 static route2 is in the same segment with ipv6 address when mode is normal.";
const std::string s2Route = "Ipv6 static route2 is in the same segment with other route when mode is normal.";
const std::string s2GwAddress = "Ipv6 static route2 gateway is in the same segment with ipv6 address when mode is normal.";
const std::string s2GwRoute = "Ipv6 static route2 gateway is in the same segment with other route when mode is normal.";

INSTANTIATE_TEST_SUITE_P(Ipv6, RouteSteps, Values(
    Step{"NoConflict",        0, 0, routes6, nothing, 0, {heading6}},
    Step{"Eth0Route1Address", 0, 0, 0x40, destination6(0, 0, "2001:db8:1::"), 0x1E000A4D, {heading6, toSix0, s1Address, sixEth1, end6, end}},
    Step{"Eth0Route1Route",   0, 0, 0x40, destination6(0, 0, "fd00:10::"),    0x1E000A4D, {heading6, toSixRoute, s1Route, sixEth1, end6, end}},
    Step{"Eth0Route1OtherRoute2", 0, 0, 0x40, destination6(0, 0, "fd00:11::"), 0x1E000A4D, {heading6, toSixRoute, s1Route, sixEth1, end6, end}},
    Step{"Eth0Gateway1Address", 0, 0, 0x40, gateway6(0, 0, "2001:db8:1::9"),  0x1E000A57, {heading6, toSix0, s1GwAddress, sixEth1, end6, end}},
    Step{"Eth0Gateway1Route", 0, 0, 0x40, gateway6(0, 0, "fd00:11::9"),       0x1E000A57, {heading6, toSixRoute, s1GwRoute, sixEth1, end6, end}},
    Step{"Eth0Route2Address", 0, 0, 0x80, destination6(0, 1, "2001:db8:1::"), 0x1E000A4E, {heading6, toSix0, s2Address, sixEth1, end6, end}},
    Step{"Eth0Route2Route",   0, 0, 0x80, destination6(0, 1, "fd00:10::"),    0x1E000A4E, {heading6, toSixRoute, s2Route, sixEth1, end6, end}},
    Step{"Eth0Gateway2Address", 0, 0, 0x80, gateway6(0, 1, "2001:db8:1::9"),  0x1E000A58, {heading6, toSix0, s2GwAddress, sixEth1, end6, end}},
    Step{"Eth0Gateway2Route", 0, 0, 0x80, gateway6(0, 1, "fd00:10::9"),       0x1E000A58, {heading6, toSixRoute, s2GwRoute, sixEth1, end6, end}},
    Step{"Eth1Route1Address", 0, 0, 0x40, destination6(1, 0, "2001:db8::"),   0x1E000A4D, {heading6, toSix0, s1Address, sixEth0, end6, end}},
    Step{"Eth1Gateway2Route", 0, 0, 0x80, gateway6(1, 1, "fd00:1::9"),       0x1E000A58, {heading6, toSixRoute, s2GwRoute, sixEth0, end6, end}},
    Step{"Route1NotSelected", 0, 7, 0x80, destination6(0, 0, "2001:db8:1::"), 0, {heading6}},
    Step{"Route2NotSelected", 0, 7, 0x40, destination6(0, 1, "2001:db8:1::"), 0, {heading6}},
    Step{"RouteStateTwo",     0, 7, routes6, also(destination6(0, 0, "2001:db8:1::"), flag(0, at::ipv6Route[0], 2)), 0, {heading6}},
    Step{"OtherRouteStateTwo", 0, 7, 0x40, also(destination6(0, 0, "fd00:10::"), flag(1, at::ipv6Route[0], 2)), 0, {heading6}},
    Step{"PrefixZero",        0, 7, routes6, also(destination6(0, 0, "2001:db8:1::"), flag(0, at::ipv6Route[0] + 17, 0)), 0, {heading6}},
    Step{"DestinationBeforeGateway", 0, 7, 0x40, [](Board &board) {
             board.port(0).ipv6Route(0, "fd00:10::", 64, "2001:db8:1::9"); }, 0x1E000A4D,
         {heading6, toSixRoute, s1Route, sixEth1, end6, end}},
    Step{"AddressBeforeRoute", 0, 7, 0x40, also(destination6(0, 0, "2001:db8:1::"), [](Board &board) {
             board.port(1).ipv6Route(0, "2001:db8:1::", 64, "fd96::1"); }), 0x1E000A4D,
         {heading6, toSix0, s1Address, sixEth1, end6, end}},
    Step{"Route1BeforeRoute2", 0, 7, routes6, also(gateway6(0, 0, "fd00:11::9"), destination6(0, 1, "2001:db8:1::")), 0x1E000A57,
         {heading6, toSixRoute, s1GwRoute, sixEth1, end6, end}},
    Step{"Eth0BeforeEth1",    0, 7, routes6, also(destination6(0, 1, "2001:db8:1::"), destination6(1, 0, "2001:db8::")), 0x1E000A4E,
         {heading6, toSix0, s2Address, sixEth1, end6, end}},
    Step{"Eth1Off",           0, 7, routes6, also(destination6(0, 0, "2001:db8:1::"), flag(1, at::ipv6Enable, 0)), 0, {heading6}},
    Step{"Eth1Two",           0, 7, routes6, also(destination6(0, 0, "2001:db8:1::"), flag(1, at::ipv6Enable, 2)), 0, {heading6}},
    Step{"Eth0Off",           0, 7, routes6, also(destination6(1, 0, "2001:db8::"), flag(0, at::ipv6Enable, 0)), 0, {heading6}},
    Step{"Eth0Two",           0, 7, routes6, also(destination6(1, 0, "2001:db8::"), flag(0, at::ipv6Enable, 2)), 0, {heading6}},
    Step{"Eth0OffStillChecked", 0, 7, 0x40, also(destination6(0, 0, "2001:db8:1::"), flag(0, at::ipv6Enable, 0)), 0x1E000A4D,
         {heading6, toSix0, s1Address, sixEth1, end6, end}},
    Step{"OnlyEth1WhenEth1IsOff", 0, 7, 0x40, also(destination6(1, 0, "2001:db8::"), flag(1, at::ipv6Enable, 0)), 0x1E000A4D,
         {heading6, toSix0, s1Address, sixEth0, end6, end}},
    Step{"PortSetPlaysNoPart", 0, 1, 0x40, destination6(1, 0, "2001:db8::"), 0x1E000A4D,
         {heading6, toSix0, s1Address, sixEth0, end6, end}},
    Step{"BehindIpv4",        0, 7, 0x48, destination6(0, 0, "2001:db8:1::"), 0x1E000A4D,
         {heading4, heading6, toSix0, s1Address, sixEth1, end6, end}}),
    fake::RowName{});

const std::string onlyOne = "There is only one net port that ipv4 is enabled.";
const std::string bondEnd = "Ipv4 route address is in the same segment when mode is standby.";
const std::string standbyEnd = "Route address is in the same segment when standby mode";
const std::string b1 = "The IPv4 static route1 is in the same segment with wifi.";
const std::string bg1 = "The IPv4 static route1 gateway is in the same segment with wifi.";
const std::string b2 = "The IPv4 static route2 is in the same segment with wifi.";
const std::string bg2 = "The IPv4 static route2 gateway is in the same segment with wifi.";

INSTANTIATE_TEST_SUITE_P(Standby, RouteSteps, Values(
    Step{"NoConflict",   1, 7, 0xE8, nothing, 0, {}},
    Step{"Route1",       1, 7, 0x08, destination4(2, 0, "10.9.0.0"), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"Gateway1InTheSegment", 1, 7, 0x08, gateway4(2, 0, "10.9.0.7"), 0x1E000A55, {bg1, bondEnd, standbyEnd}},
    Step{"Route2",       1, 7, 0x20, destination4(2, 1, "10.9.0.0"), 0x1E000A4A, {b2, bondEnd, standbyEnd}},
    Step{"Gateway2InTheSegment", 1, 7, 0x20, gateway4(2, 1, "10.9.0.7"), 0x1E000A56, {bg2, bondEnd, standbyEnd}},
    Step{"Route1UnderBitOfRoute2", 1, 7, 0x20, destination4(2, 0, "10.9.0.0"), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"Route2UnderBitOfRoute1", 1, 7, 0x08, destination4(2, 1, "10.9.0.0"), 0x1E000A4A, {b2, bondEnd, standbyEnd}},
    Step{"Route1BeforeRoute2", 1, 7, routes4, also(gateway4(2, 0, "10.9.0.7"), destination4(2, 1, "10.9.0.0")),
         0x1E000A55, {bg1, bondEnd, standbyEnd}},
    Step{"DestinationBeforeGateway", 1, 7, routes4, [](Board &board) {
             board.port(2).ipv4Route(1, "10.9.0.0", "255.255.255.0", "10.9.0.7"); }, 0x1E000A4A, {b2, bondEnd, standbyEnd}},
    Step{"PortSetPlaysNoPart", 1, 0, 0x08, destination4(2, 0, "10.9.0.0"), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"AnyStandby",   0x80000000U, 7, 0x08, destination4(2, 0, "10.9.0.0"), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"Ipv6BitsOnly", 1, 7, routes6, also(destination4(2, 0, "10.9.0.0"), wifiEnable(0)), 0, {}},
    Step{"OtherBits",    1, 7, 0xFFFFFFD7U, also(destination4(2, 0, "10.9.0.0"), wifiEnable(0)), 0, {}},
    Step{"BondOff",      1, 7, routes4, also(destination4(2, 0, "10.9.0.0"), flag(2, at::ipv4Enable, 0)), 0, {onlyOne}},
    Step{"WifiOff",      1, 7, routes4, also(destination4(2, 0, "10.9.0.0"), wifiEnable(0)), 0, {onlyOne}},
    Step{"BondTwoIsOn",  1, 7, 0x08, also(destination4(2, 0, "10.9.0.0"), flag(2, at::ipv4Enable, 2)), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"WifiTwoIsOn",  1, 7, 0x08, also(destination4(2, 0, "10.9.0.0"), wifiEnable(2)), 0x1E000A49, {b1, bondEnd, standbyEnd}},
    Step{"RouteStateTwo", 1, 7, routes4, also(destination4(2, 0, "10.9.0.0"), flag(2, at::ipv4Route[0], 2)), 0, {}},
    Step{"OtherPortsDoNotCount", 1, 7, 0xE8, also(destination4(0, 0, "10.9.0.0"), destination6(0, 0, "2001:db8:1::")), 0, {}}),
    fake::RowName{});
/* clang-format on */

class RouteNulls : public fake::FakePlatformTest {};

TEST_F(RouteNulls, AreErrors)
{
    expectNullsAreErrors(routeSegment, 0xE8, "LIB_NW_CheckIPv4v6RouteSameSegment");
}

} // namespace
