// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// One route against one port or the wireless network: order of the comparisons, their arguments,
// and the number of addresses that are looked at.
#include "nw_route_segment.h"
#include "segment_check.hpp"

namespace {

using segment::Entry;
using support::bitLine;
using support::debugLines;
using support::Guarded;
using support::ipv4;
using support::ipv6;
using support::Lines;
using support::sumLine;
using ::testing::Values;
namespace at = support::at;

std::string index(int number)
{
    return fake::formatted("Ipv6 static route is in the same segment with ipv6 address when mode "
                           "is normal, index[%d].",
                           number);
}

const std::string inAddress =
    "Ipv4 static route is in the same segment with ipv4 address when mode is normal.";
const std::string inRoute =
    "Ipv6 static route is in the same segment with other route when mode is normal.";

/* ---- IPv6 route against the addresses ---- */

// All addresses differ in their first byte: the static one begins with 1, further address i with
// 2 + i; every prefix length is 8 bits. Sixteen further addresses fill their place.
void number(support::PortEntry &port)
{
    for (std::size_t address = 0; address <= 16; ++address) {
        port[at::ipv6Addr + 16 * address] = static_cast<std::uint8_t>(1 + address);
        port[at::ipv6Prefix + address] = 8;
    }
}

struct Count {
    std::string name;
    std::uint8_t count;  // as stored
    std::uint8_t wanted; // first byte of the route
    std::uint32_t expected;
    int compared; // addresses looked at
};
using FurtherAddresses = fake::FakePlatformRows<Count>;

TEST_P(FurtherAddresses, AreComparedUpToTheirCount)
{
    const Count &row = GetParam();
    Entry entry;
    number(entry.port);
    entry.port[at::ipv6Count] = row.count;
    const Guarded route(ipv6("::"));
    route.data()[0] = row.wanted;

    EXPECT_EQ(LIB_NW_CheckIpv6SingRoutewithIpSameSeg(route.data(), 8, entry.get()), row.expected);

    Lines expected;
    for (int address = 1; address <= row.compared; ++address) {
        expected.push_back(bitLine(row.wanted, address, 0));
    }
    if (row.expected == 1) {
        expected.push_back(index(row.compared - 1));
    }
    EXPECT_EQ(support::loggedLines(), debugLines(expected));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, FurtherAddresses, Values(
    Count{"None",              0,   200, 0, 1},
    Count{"NoneStatic",        0,   1,   1, 1},
    Count{"NoneSlaac",         0,   2,   0, 1},
    Count{"One",               1,   200, 0, 2},
    Count{"OneSlaac",          1,   2,   1, 2},
    Count{"OneSecondFurther",  1,   3,   0, 2},
    Count{"Fifteen",           15,  200, 0, 16},
    Count{"FifteenSixteenth",  15,  17,  0, 16},
    Count{"Sixteen",           16,  200, 0, 17},
    Count{"SixteenLast",       16,  17,  1, 17},
    Count{"SeventeenEnds",     17,  200, 0, 17},
    Count{"SeventeenLast",     17,  17,  1, 17},
    Count{"TwoHundredFiftyFourEnds", 254, 200, 0, 17},
    Count{"TwoHundredFiftyFourLast", 254, 17,  1, 17},
    Count{"TwoHundredFiftyFiveStatic", 255, 1, 0, 0},
    Count{"TwoHundredFiftyFiveNone", 255, 200, 0, 0}), fake::RowName{});
/* clang-format on */

struct Prefix {
    std::string name;
    std::uint32_t route;
    std::uint8_t address;
    std::uint32_t expected;
};
using AddressPrefixes = fake::FakePlatformRows<Prefix>;

// Route and address differ in bit 64.
TEST_P(AddressPrefixes, ShorterOneCounts)
{
    const Prefix &row = GetParam();
    Entry entry;
    entry.port.ipv6Address("2001:db8:1:2::1", row.address);
    const Guarded route(ipv6("2001:db8:1:2:8000::1"));
    EXPECT_EQ(LIB_NW_CheckIpv6SingRoutewithIpSameSeg(route.data(), row.route, entry.get()),
              row.expected);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, AddressPrefixes, Values(
    Prefix{"Equal64",        64,  64,  1},
    Prefix{"ShorterRoute",   48,  128, 1},
    Prefix{"ShorterAddress", 128, 48,  1},
    Prefix{"Bit64Counts",    65,  65,  0},
    Prefix{"RouteZero",      0,   64,  0},
    Prefix{"AddressZero",    64,  0,   0},
    Prefix{"BothAbove128",   129, 129, 0},
    Prefix{"RouteWide",      0xFFFFFFFFU, 64, 1},
    Prefix{"Route256",       256, 255, 0}), fake::RowName{});
/* clang-format on */

TEST(AddressPrefixesAreOwn, OfEachFurtherAddress)
{
    fake::platform().reset();
    Entry entry;
    entry.port.ipv6Address("fd00::1", 64);
    entry.port.ipv6Further(0, "2001:db8::1", 0).ipv6Further(1, "2001:db8::2", 32);
    entry.port[at::ipv6Count] = 2;
    const Guarded route(ipv6("2001:db8:7::"));
    EXPECT_EQ(LIB_NW_CheckIpv6SingRoutewithIpSameSeg(route.data(), 48, entry.get()), 1U);
    EXPECT_EQ(support::loggedLines().back(), support::debugLine(index(2)));
}

/* ---- IPv6 route against the routes ---- */

struct Sibling {
    std::string name;
    std::string route;
    std::uint32_t prefix;
    std::uint8_t state1, state2;
    std::uint32_t expected;
    Lines lines;
};
using OtherRoutes6 = fake::FakePlatformRows<Sibling>;

TEST_P(OtherRoutes6, AreComparedWhileValid)
{
    const Sibling &row = GetParam();
    Entry entry;
    entry.port.ipv6Route(0, "1000::", 8, "::", row.state1);
    entry.port.ipv6Route(1, "2000::", 8, "::", row.state2);
    const Guarded route(ipv6(row.route));
    EXPECT_EQ(LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(route.data(), row.prefix, entry.get()),
              row.expected);
    EXPECT_EQ(support::loggedLines(), debugLines(row.lines));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, OtherRoutes6, Values(
    Sibling{"Route1",       "1000::1", 64,  1, 1, 1, {bitLine(16, 16, 0), inRoute}},
    Sibling{"Route2",       "2000::1", 128, 1, 1, 1, {bitLine(32, 16, 0), bitLine(32, 32, 0), inRoute}},
    Sibling{"Neither",      "3000::1", 64,  1, 1, 0, {bitLine(48, 16, 0), bitLine(48, 32, 0)}},
    Sibling{"Route1Invalid", "1000::1", 64, 0, 1, 0, {bitLine(16, 32, 0)}},
    Sibling{"Route2Invalid", "2000::1", 64, 1, 2, 0, {bitLine(32, 16, 0)}},
    Sibling{"BothInvalid",  "1000::1", 64,  2, 255, 0, {}},
    Sibling{"PrefixZero",   "1000::1", 0,   1, 1, 0, {}}), fake::RowName{});
/* clang-format on */

class RouteHelperNulls : public fake::FakePlatformTest {};

TEST_F(RouteHelperNulls, AreLoggedAndAnswerZero)
{
    const Entry entry;
    const Guarded route(ipv6("::"));
    const auto withIp = LIB_NW_CheckIpv6SingRoutewithIpSameSeg;
    const auto withRoute = LIB_NW_CheckIpv6SingRoutewithRouteSameSeg;
    EXPECT_EQ(withIp(nullptr, 64, entry.get()), 0U);
    EXPECT_EQ(withIp(route.data(), 64, nullptr), 0U);
    EXPECT_EQ(withIp(nullptr, 0, nullptr), 0U);
    EXPECT_EQ(withRoute(nullptr, 64, entry.get()), 0U);
    EXPECT_EQ(withRoute(route.data(), 64, nullptr), 0U);
    EXPECT_EQ(withRoute(nullptr, 0, nullptr), 0U);

    std::vector<fake::LineMatcher> expected;
    for (const char *function :
         {"LIB_NW_CheckIpv6SingRoutewithIpSameSeg", "LIB_NW_CheckIpv6SingRoutewithRouteSameSeg"}) {
        for (const char *parameter : {"pucRouteAddr", "pstLanEthDB", "pucRouteAddr"}) {
            expected.push_back(fake::isNullLine(parameter, function));
        }
    }
    EXPECT_THAT(lines(), ::testing::ElementsAreArray(expected));
}

/* ---- IPv4 ---- */

// The other port: address 10.0.0.1/8, routes to 20.0.0.0/8 and 30.0.0.0/8.
struct OtherPort : Entry {
    OtherPort()
    {
        port.ipv4Address("10.0.0.1", "255.0.0.0");
        port.ipv4Route(0, "20.0.0.0", "255.0.0.0", "0.0.0.0");
        port.ipv4Route(1, "30.0.0.0", "255.0.0.0", "0.0.0.0");
    }
};
// The port whose routes are checked: 40.0.0.0/8 through 41.0.0.1, 50.0.0.0/8 through 51.0.0.1.
struct OwnPort : Entry {
    OwnPort()
    {
        port.ipv4Route(0, "40.0.0.0", "255.0.0.0", "41.0.0.1");
        port.ipv4Route(1, "50.0.0.0", "255.0.0.0", "51.0.0.1");
    }
};

class RouteHelpers : public fake::FakePlatformTest {
protected:
    OtherPort other;
    OwnPort own;
    const Guarded mask{ipv4("255.255.0.0")};
};

TEST_F(RouteHelpers, DestinationAgainstTheAddress)
{
    const Guarded same(ipv4("10.2.0.0")), different(ipv4("11.2.0.0"));
    EXPECT_EQ(NW_CheckIpv4RouteWithPortIp(same.data(), mask.data(), *other.get()), 1U);
    EXPECT_EQ(NW_CheckIpv4RouteWithPortIp(different.data(), mask.data(), *other.get()), 0U);
    EXPECT_EQ(support::loggedLines(),
              debugLines({sumLine(10, 10, 4), inAddress, sumLine(11, 10, 0)}));
}

TEST_F(RouteHelpers, DestinationAgainstTheRoutes)
{
    const std::string in1 = "Ipv4 static route is in the same segment with other port route1.";
    const std::string in2 = "Ipv4 static route is in the same segment with other port route2.";
    const Guarded to1(ipv4("20.9.0.0")), to2(ipv4("30.9.0.0")), neither(ipv4("10.0.0.0"));
    EXPECT_EQ(NW_CheckIpv4RouteWithPortRoute(to1.data(), mask.data(), *other.get()), 1U);
    EXPECT_EQ(NW_CheckIpv4RouteWithPortRoute(to2.data(), mask.data(), *other.get()), 1U);
    EXPECT_EQ(NW_CheckIpv4RouteWithPortRoute(neither.data(), mask.data(), *other.get()), 0U);
    other.port[at::ipv4Route[0]] = 2;
    EXPECT_EQ(NW_CheckIpv4RouteWithPortRoute(to1.data(), mask.data(), *other.get()), 0U);
    EXPECT_EQ(support::loggedLines(),
              debugLines({sumLine(20, 20, 4), in1, sumLine(30, 20, 0), sumLine(30, 30, 4), in2,
                          sumLine(10, 20, 0), sumLine(10, 30, 0), sumLine(20, 30, 0)}));
}

TEST_F(RouteHelpers, ComparisonsWithAPortStandInOrder)
{
    EXPECT_EQ(NW_CheckIpv4RouteWithPort(0x28, *other.get(), *own.get()), 0U);
    EXPECT_EQ(support::loggedLines(),
              debugLines({sumLine(40, 10, 0), sumLine(41, 10, 0), sumLine(40, 20, 0),
                          sumLine(40, 30, 0), sumLine(50, 10, 0), sumLine(51, 10, 0),
                          sumLine(50, 20, 0), sumLine(50, 30, 0)}));
}

// The wireless side's own mask counts for the destination alone: the gateway's bytes are all
// compared.
TEST_F(RouteHelpers, ComparisonsWithTheWirelessNetworkStandInOrder)
{
    const Guarded address(ipv4("41.0.0.7")), bits24(ipv4("255.255.255.0"));
    EXPECT_EQ(NW_CheckIpv4RouteWithWifi(0x28, address.data(), bits24.data(), *own.get()), 0U);
    EXPECT_EQ(support::loggedLines(), debugLines({sumLine(40, 41, 0), sumLine(42, 48, 3),
                                                  sumLine(50, 41, 0), sumLine(51, 41, 0)}));
}

TEST_F(RouteHelpers, OnlySelectedRoutesAreCompared)
{
    EXPECT_EQ(NW_CheckIpv4RouteWithPort(0xFFFFFFD7U, *other.get(), *own.get()), 0U);
    EXPECT_EQ(NW_CheckIpv6RouteWithPort(0xFFFFFF3FU, *other.get(), *own.get()), 0U);
    EXPECT_EQ(support::loggedLines(), Lines{});
}

// Route fd00::/8 through fe00::1 against address 1000::/8 and the routes 2000::/8 and 3000::/8.
TEST_F(RouteHelpers, Ipv6ComparisonsStandInOrder)
{
    other.port.ipv6Address("1000::1", 8);
    other.port.ipv6Route(0, "2000::", 8, "::").ipv6Route(1, "3000::", 8, "::");
    own.port.ipv6Route(1, "fd00::", 8, "fe00::1");
    EXPECT_EQ(NW_CheckIpv6RouteWithPort(0x80, *other.get(), *own.get()), 0U);
    EXPECT_EQ(support::loggedLines(),
              debugLines({bitLine(253, 16, 0), bitLine(253, 32, 0), bitLine(253, 48, 0),
                          bitLine(254, 16, 0), bitLine(254, 32, 0), bitLine(254, 48, 0)}));
}

} // namespace
