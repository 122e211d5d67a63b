// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Two addresses, or an address and a port's routes, in one segment: answers and lines.
#include "nw_segment.h"
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
using ::testing::ElementsAre;
using ::testing::Values;

struct Ipv4Pair {
    std::string name;
    std::string address1, mask1, address2, mask2;
    std::uint32_t expected;
    std::string line;
};
using Ipv4Segments = fake::FakePlatformRows<Ipv4Pair>;

TEST_P(Ipv4Segments, CompareUnderTheCommonMask)
{
    const Ipv4Pair &row = GetParam();
    const Guarded address1(ipv4(row.address1)), mask1(ipv4(row.mask1));
    const Guarded address2(ipv4(row.address2)), mask2(ipv4(row.mask2));
    EXPECT_EQ(
        NW_CheckDoubleIPv4SameSegment(address1.data(), mask1.data(), address2.data(), mask2.data()),
        row.expected);
    EXPECT_EQ(support::loggedLines(), debugLines({row.line}));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Ipv4Segments, Values(
    Ipv4Pair{"ShorterMaskCounts", "192.168.1.10", "255.255.255.0", "192.168.2.20", "255.255.0.0",
             1, sumLine(360, 360, 4)},
    Ipv4Pair{"DifferentNetworks", "192.168.1.10", "255.255.255.0", "192.168.2.20", "255.255.255.0",
             0, sumLine(361, 362, 2)},
    Ipv4Pair{"FirstByteDiffers",  "10.0.0.1",     "255.0.0.0",     "11.0.0.1",     "255.0.0.0",
             0, sumLine(10, 11, 0)},
    Ipv4Pair{"LastByteDiffers",   "10.0.0.1",     "255.255.255.255", "10.0.0.2",   "255.255.255.255",
             0, sumLine(11, 12, 3)},
    Ipv4Pair{"SameAddress",       "10.0.0.1",     "255.255.255.255", "10.0.0.1",   "255.255.255.255",
             1, sumLine(11, 11, 4)},
    Ipv4Pair{"NetworkPartZero",   "0.0.0.5",      "255.0.0.0",     "0.0.0.9",      "255.0.0.0",
             0, sumLine(0, 0, 4)},
    Ipv4Pair{"NoMasks",           "10.0.0.1",     "0.0.0.0",       "10.0.0.1",     "255.0.0.0",
             0, sumLine(0, 0, 4)},
    Ipv4Pair{"PartialBytes",      "10.1.2.200",   "255.255.255.128", "10.1.2.3",   "255.255.255.0",
             1, sumLine(13, 13, 4)},
    Ipv4Pair{"LargestSum",        "255.255.255.255", "255.255.255.255", "255.255.255.255", "255.255.255.255",
             1, sumLine(1020, 1020, 4)},
    Ipv4Pair{"ZeroOnOneSide",     "0.0.0.0",      "255.255.255.0", "0.1.0.0",      "255.255.255.0",
             0, sumLine(0, 1, 1)}),
    fake::RowName{});
/* clang-format on */

struct Ipv6Pair {
    std::string name;
    std::string address1;
    std::uint32_t prefix1;
    std::string address2;
    std::uint32_t prefix2;
    std::uint32_t expected;
    Lines lines;
};
using Ipv6Segments = fake::FakePlatformRows<Ipv6Pair>;

// Addresses end at a guard page: a seventeenth byte cannot be read.
std::uint32_t sameIpv6(const Ipv6Pair &row)
{
    const Guarded address1(ipv6(row.address1)), address2(ipv6(row.address2));
    return NW_CheckDoubleIPv6SameSegment(address1.data(), row.prefix1, address2.data(),
                                         row.prefix2);
}

TEST_P(Ipv6Segments, CompareTheShorterPrefix)
{
    EXPECT_EQ(sameIpv6(GetParam()), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), debugLines(GetParam().lines));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Ipv6Segments, Values(
    Ipv6Pair{"NoPrefix1",      "2001::", 0,  "2001::", 64, 0, {}},
    Ipv6Pair{"NoPrefix2",      "2001::", 64, "2001::", 0,  0, {}},
    Ipv6Pair{"FirstBit",       "8000::", 1,  "ff00::", 64, 1, {bitLine(1, 1, 0)}},
    Ipv6Pair{"FirstBitDiffers","8000::", 1,  "7f00::", 64, 0, {bitLine(1, 0, 0)}},
    Ipv6Pair{"EightBits",      "2001::", 8,  "2002::", 8,  1, {bitLine(32, 32, 0)}},
    Ipv6Pair{"NineBits",       "2001::", 9,  "2081::", 9,  0, {bitLine(32, 32, 1), bitLine(0, 1, 0)}},
    Ipv6Pair{"SixteenBits",    "2001::", 16, "2001:ffff::", 64, 1, {bitLine(32, 32, 8), bitLine(1, 1, 0)}},
    Ipv6Pair{"TwentyBits",     "2001:a000::", 20, "2001:afff::", 24, 1,
             {bitLine(32, 32, 12), bitLine(1, 1, 4), bitLine(10, 10, 0)}},
    Ipv6Pair{"WholeByteDiffers", "2001::", 24, "2101::", 64, 0, {bitLine(32, 33, 16)}},
    Ipv6Pair{"ZeroAddresses",  "::", 8, "::", 128, 1, {bitLine(0, 0, 0)}}),
    fake::RowName{});
/* clang-format on */

class Segments : public fake::FakePlatformTest {};

TEST_F(Segments, Ipv6PrefixesOf64And48Compare48Bits)
{
    EXPECT_EQ(sameIpv6({"", "2001:db8:1:2::1", 64, "2001:db8:1:3::1", 48, 0, {}}), 1U);
    EXPECT_EQ(lines().size(), 6U);
    EXPECT_EQ(sameIpv6({"", "2001:db8:1:2::1", 64, "2001:db8:2:2::1", 48, 0, {}}), 0U);
}

TEST_F(Segments, EveryPrefixUpTo128SeesExactlyItsBits)
{
    const support::Ipv6 address = ipv6("2001:db8:85a3:8d3:1319:8a2e:370:7348");
    for (std::uint32_t bit = 0; bit < 128; ++bit) {
        support::Ipv6 other = address;
        other[bit / 8] = static_cast<std::uint8_t>(other[bit / 8] ^ (0x80U >> (bit % 8)));
        const Guarded guarded1(address), guarded2(other);
        for (std::uint32_t prefix = 1; prefix <= 128; ++prefix) {
            ASSERT_EQ(NW_CheckDoubleIPv6SameSegment(guarded1.data(), prefix, guarded2.data(), 200),
                      prefix <= bit ? 1U : 0U)
                << "bit " << bit << " prefix " << prefix;
        }
        platform.clearCalls();
    }
}

TEST_F(Segments, Ipv6PrefixesAbove128NeverConflict)
{
    for (const std::uint32_t prefix :
         {129U, 130U, 136U, 137U, 144U, 200U, 248U,        254U,        255U,        256U,
          257U, 264U, 320U, 384U, 385U, 512U, 0x80000000U, 0x80000080U, 0xFFFFFF80U, 0xFFFFFFFFU}) {
        EXPECT_EQ(sameIpv6({"", "2001:db8::1", prefix, "2001:db8::1", 0xFFFFFFFFU, 0, {}}), 0U)
            << prefix;
        EXPECT_EQ(sameIpv6({"", "::", prefix, "::", prefix, 0, {}}), 0U) << prefix;
    }
}

TEST_F(Segments, AnIpv6PrefixAbove128StopsBehindTheSixteenthByte)
{
    EXPECT_EQ(sameIpv6({"", "::", 255, "::", 129, 0, {}}), 0U);
    Lines expected;
    for (int left = 121; left >= 1; left -= 8) {
        expected.push_back(bitLine(0, 0, left));
    }
    ASSERT_EQ(expected.size(), 16U);
    EXPECT_EQ(support::loggedLines(), debugLines(expected));
}

// A route's own lines and code. The address stands second in every comparison.
struct Route4 {
    std::string name;
    std::function<void(support::PortEntry &)> script;
    std::uint32_t expected;
    Lines lines;
};
using Ipv4Routes = fake::FakePlatformRows<Route4>;

const support::Ipv4 ownMask = {255, 255, 255, 0};
const std::string inRoute4 = "Ipv4 address is in the same segment with route";

TEST_P(Ipv4Routes, AreComparedInOrder)
{
    Entry entry;
    GetParam().script(entry.port);
    const Guarded address(ipv4("10.1.2.3")), mask(ownMask);

    EXPECT_EQ(NW_CheckIpv4SameSegIpwithRoute(address.data(), mask.data(), entry.get()),
              GetParam().expected);
    EXPECT_EQ(support::loggedLines(), debugLines(GetParam().lines));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Ipv4Routes, Values(
    Route4{"NoRoutes", [](auto &) {}, 0, {}},
    Route4{"StateNotOne",
        [](auto &port) { port.ipv4Route(0, "10.1.2.0", "255.255.255.0", "10.1.2.9", 2)
                             .ipv4Route(1, "10.1.2.0", "255.255.255.0", "10.1.2.9", 255); }, 0, {}},
    Route4{"Route1", [](auto &port) { port.ipv4Route(0, "10.0.0.0", "255.0.0.0", "10.1.2.9"); },
        0x1E000A51, {sumLine(10, 10, 4), inRoute4 + "1."}},
    Route4{"Gateway1", [](auto &port) { port.ipv4Route(0, "11.0.0.0", "255.0.0.0", "10.1.2.9"); },
        0x1E000A59, {sumLine(11, 10, 0), sumLine(13, 13, 4), inRoute4 + "1 gateway."}},
    Route4{"Route2", [](auto &port) { port.ipv4Route(0, "11.0.0.0", "255.0.0.0", "12.0.0.1")
                                          .ipv4Route(1, "10.1.0.0", "255.255.0.0", "12.0.0.1"); },
        0x1E000A52, {sumLine(11, 10, 0), sumLine(12, 10, 0), sumLine(11, 11, 4), inRoute4 + "2."}},
    Route4{"Gateway2", [](auto &port) { port.ipv4Route(1, "11.0.0.0", "255.0.0.0", "10.1.2.1"); },
        0x1E000A5A, {sumLine(11, 10, 0), sumLine(13, 13, 4), inRoute4 + "2 gateway."}},
    Route4{"None", [](auto &port) { port.ipv4Route(0, "11.0.0.0", "255.0.0.0", "12.0.0.1")
                                        .ipv4Route(1, "13.0.0.0", "255.0.0.0", "14.0.0.1"); },
        0, {sumLine(11, 10, 0), sumLine(12, 10, 0), sumLine(13, 10, 0), sumLine(14, 10, 0)}},
    Route4{"ZeroRouteNeverConflicts", [](auto &port) { port.ipv4Route(0, "0.0.0.0", "0.0.0.0", "0.0.0.0"); },
        0, {sumLine(0, 0, 4), sumLine(0, 10, 0)}}),
    fake::RowName{});
/* clang-format on */

struct Route6 {
    std::string name;
    std::function<void(support::PortEntry &)> script;
    std::uint32_t expected;
    Lines lines;
};
using Ipv6Routes = fake::FakePlatformRows<Route6>;

const std::string inRoute6 = "Ipv6 address is in the same segment with route";

// The address 2000::1 under a prefix of 12 bits.
TEST_P(Ipv6Routes, AreComparedInOrder)
{
    Entry entry;
    GetParam().script(entry.port);
    const Guarded address(ipv6("2000::1"));

    EXPECT_EQ(NW_CheckIpv6SameSegIpwithRoute(address.data(), 12, entry.get()), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), debugLines(GetParam().lines));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Ipv6Routes, Values(
    Route6{"NoRoutes", [](auto &) {}, 0, {}},
    Route6{"StateNotOne", [](auto &port) { port.ipv6Route(0, "2000::", 8, "2000::9", 2)
                                               .ipv6Route(1, "2000::", 8, "2000::9", 0xFF); }, 0, {}},
    Route6{"Route1", [](auto &port) { port.ipv6Route(0, "20ff::", 8, "2000::9"); },
        0x1E000A53, {bitLine(32, 32, 0), inRoute6 + "1."}},
    Route6{"Gateway1", [](auto &port) { port.ipv6Route(0, "3000::", 8, "200f::9"); },
        0x1E000A5B, {bitLine(48, 32, 0), bitLine(32, 32, 4), bitLine(0, 0, 0), inRoute6 + "1 gateway."}},
    Route6{"Route2", [](auto &port) { port.ipv6Route(0, "3000::", 8, "3100::")
                                          .ipv6Route(1, "2000::", 3, "3100::"); },
        0x1E000A54, {bitLine(48, 32, 0), bitLine(49, 32, 4), bitLine(1, 1, 0), inRoute6 + "2."}},
    Route6{"Gateway2", [](auto &port) { port.ipv6Route(1, "3000::", 8, "2000::9"); },
        0x1E000A5C, {bitLine(48, 32, 0), bitLine(32, 32, 4), bitLine(0, 0, 0), inRoute6 + "2 gateway."}},
    Route6{"NoRoutePrefix", [](auto &port) { port.ipv6Route(0, "2000::", 0, "3000::"); },
        0, {bitLine(48, 32, 4)}}),
    fake::RowName{});
/* clang-format on */

struct NullCase {
    std::string name;
    std::function<std::uint32_t(const std::uint8_t *, const NW_LAN_CFG_PORT_S *)> call;
    const char *function;
    const char *parameter;
    std::uint32_t expected;
};
using SegmentNulls = fake::FakePlatformRows<NullCase>;

TEST_P(SegmentNulls, AreLoggedWithTheirNames)
{
    const std::uint8_t address[16] = {};
    const NW_LAN_CFG_PORT_S entry{};
    EXPECT_EQ(GetParam().call(address, &entry), GetParam().expected);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine(GetParam().parameter, GetParam().function)));
}

/* clang-format off */
const char *const pair4 = "NW_CheckDoubleIPv4SameSegment";
const char *const pair6 = "NW_CheckDoubleIPv6SameSegment";
const char *const route4 = "NW_CheckIpv4SameSegIpwithRoute";
const char *const route6 = "NW_CheckIpv6SameSegIpwithRoute";
INSTANTIATE_TEST_SUITE_P(Rows, SegmentNulls, Values(
    NullCase{"Ipv4Address1", [](auto *a, auto *) { return NW_CheckDoubleIPv4SameSegment(nullptr, a, a, a); }, pair4, "pucAddr1", 0},
    NullCase{"Ipv4Mask1",    [](auto *a, auto *) { return NW_CheckDoubleIPv4SameSegment(a, nullptr, a, a); }, pair4, "pucMask1", 0},
    NullCase{"Ipv4Address2", [](auto *a, auto *) { return NW_CheckDoubleIPv4SameSegment(a, a, nullptr, a); }, pair4, "pucAddr2", 0},
    NullCase{"Ipv4Mask2",    [](auto *a, auto *) { return NW_CheckDoubleIPv4SameSegment(a, a, a, nullptr); }, pair4, "pucMask2", 0},
    NullCase{"Ipv4Order",    [](auto *, auto *) { return NW_CheckDoubleIPv4SameSegment(nullptr, nullptr, nullptr, nullptr); }, pair4, "pucAddr1", 0},
    NullCase{"Ipv6Address1", [](auto *a, auto *) { return NW_CheckDoubleIPv6SameSegment(nullptr, 64, a, 64); }, pair6, "pucAddr1", 0},
    NullCase{"Ipv6Address2", [](auto *a, auto *) { return NW_CheckDoubleIPv6SameSegment(a, 0, nullptr, 0); }, pair6, "pucAddr2", 0},
    NullCase{"Route4Address", [](auto *a, auto *e) { return NW_CheckIpv4SameSegIpwithRoute(nullptr, a, e); }, route4, "pucAddr", 0},
    NullCase{"Route4Entry",  [](auto *a, auto *) { return NW_CheckIpv4SameSegIpwithRoute(a, a, nullptr); }, route4, "pstLanEthDB", 0},
    NullCase{"Route6Address", [](auto *, auto *e) { return NW_CheckIpv6SameSegIpwithRoute(nullptr, 64, e); }, route6, "pucAddr", 0x81000002},
    NullCase{"Route6Entry",  [](auto *a, auto *) { return NW_CheckIpv6SameSegIpwithRoute(a, 64, nullptr); }, route6, "pstLanEthDB", 0x81000002}),
    fake::RowName{});
/* clang-format on */

} // namespace
