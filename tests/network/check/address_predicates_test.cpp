// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The predicates on raw addresses, one by one.
#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "nw_address.h"

namespace {

using support::Bytes;
using support::ipv4;
using support::ipv6;
using ::testing::ElementsAre;
using ::testing::Values;

struct Predicate {
    std::string name;
    NW_IP_PREDICATE_FN function;
    int family;
};

/* clang-format off */
const Predicate predicates[] = {
    {"NW_CheckIPv4IsAllZero",   NW_CheckIPv4IsAllZero,   AF_INET},
    {"NW_CheckIPv4IsLoopback",  NW_CheckIPv4IsLoopback,  AF_INET},
    {"NW_CheckIPv4IsDorE",      NW_CheckIPv4IsDorE,      AF_INET},
    {"NW_CheckIPv4IsFirIsZero", NW_CheckIPv4IsFirIsZero, AF_INET},
    {"NW_CheckIPv4IsFirIsFF",   NW_CheckIPv4IsFirIsFF,   AF_INET},
    {"NW_CheckIPv4IsMask",      NW_CheckIPv4IsMask,      AF_INET},
    {"NW_CheckIPv6IsAllZero",   NW_CheckIPv6IsAllZero,   AF_INET6},
    {"NW_CheckIPv6IsLoopback",  NW_CheckIPv6IsLoopback,  AF_INET6},
    {"NW_CheckIPv6IsMulticast", NW_CheckIPv6IsMulticast, AF_INET6},
    {"NW_CheckIPv6IsLinklocal", NW_CheckIPv6IsLinklocal, AF_INET6},
    {"NW_CheckIPv6IsSitelocal", NW_CheckIPv6IsSitelocal, AF_INET6},
    {"NW_CheckIPv6IsV4Mapped",  NW_CheckIPv6IsV4Mapped,  AF_INET6},
    {"NW_CheckIPv6IsV4Compat",  NW_CheckIPv6IsV4Compat,  AF_INET6},
};
/* clang-format on */

const Predicate &predicateOf(const std::string &name)
{
    return *std::ranges::find(predicates, name, &Predicate::name);
}

Bytes addressOf(const Predicate &predicate, const std::string &text)
{
    const auto v4 = predicate.family == AF_INET ? ipv4(text) : support::Ipv4{};
    const auto v6 = predicate.family == AF_INET6 ? ipv6(text) : support::Ipv6{};
    return predicate.family == AF_INET ? Bytes(v4.begin(), v4.end()) : Bytes(v6.begin(), v6.end());
}

struct Verdict {
    std::string name;
    std::string predicate;
    std::string address;
    std::uint32_t expected;
};

using PredicateVerdict = fake::FakePlatformRows<Verdict>;

TEST_P(PredicateVerdict, IsAsTheTableSays)
{
    const Predicate &predicate = predicateOf(GetParam().predicate);
    const support::Guarded address(addressOf(predicate, GetParam().address));

    EXPECT_EQ(predicate.function(address.data()), GetParam().expected);
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Ipv4, PredicateVerdict, Values(
    Verdict{"AllZero",             "NW_CheckIPv4IsAllZero",   "0.0.0.0",         1},
    Verdict{"FirstByteNotZero",    "NW_CheckIPv4IsAllZero",   "1.0.0.0",         0},
    Verdict{"LastByteNotZero",     "NW_CheckIPv4IsAllZero",   "0.0.0.1",         0},
    Verdict{"Loopback",            "NW_CheckIPv4IsLoopback",  "127.0.0.1",       1},
    Verdict{"LoopbackNetwork",     "NW_CheckIPv4IsLoopback",  "127.255.255.255", 1},
    Verdict{"BelowLoopback",       "NW_CheckIPv4IsLoopback",  "126.127.127.127", 0},
    Verdict{"AboveLoopback",       "NW_CheckIPv4IsLoopback",  "128.127.127.127", 0},
    Verdict{"LastUnicast",         "NW_CheckIPv4IsDorE",      "223.255.255.255", 0},
    Verdict{"FirstMulticast",      "NW_CheckIPv4IsDorE",      "224.0.0.0",       1},
    Verdict{"LastMulticast",       "NW_CheckIPv4IsDorE",      "239.1.2.3",       1},
    Verdict{"ClassE",              "NW_CheckIPv4IsDorE",      "240.0.0.0",       1},
    Verdict{"Broadcast",           "NW_CheckIPv4IsDorE",      "255.255.255.255", 1},
    Verdict{"ZeroAddressIsNoZeroNetwork", "NW_CheckIPv4IsFirIsZero", "0.0.0.0",  0},
    Verdict{"ZeroNetworkByte1",    "NW_CheckIPv4IsFirIsZero", "0.1.0.0",         1},
    Verdict{"ZeroNetworkByte2",    "NW_CheckIPv4IsFirIsZero", "0.0.1.0",         1},
    Verdict{"ZeroNetworkByte3",    "NW_CheckIPv4IsFirIsZero", "0.0.0.1",         1},
    Verdict{"NoZeroNetwork",       "NW_CheckIPv4IsFirIsZero", "1.0.0.1",         0},
    Verdict{"FirstAllOnes",        "NW_CheckIPv4IsFirIsFF",   "255.0.255.0",     1},
    Verdict{"FirstAllOnesOrZero",  "NW_CheckIPv4IsFirIsFF",   "0.0.0.0",         1},
    Verdict{"FirstNotAllOnes",     "NW_CheckIPv4IsFirIsFF",   "254.0.0.0",       0},
    Verdict{"FirstZeroOthersNot",  "NW_CheckIPv4IsFirIsFF",   "0.0.0.255",       0},
    Verdict{"FirstByteUnexamined", "NW_CheckIPv4IsMask",      "240.255.0.0",     1},
    Verdict{"ClassA",              "NW_CheckIPv4IsMask",      "255.0.0.0",       1},
    Verdict{"AllOnes",             "NW_CheckIPv4IsMask",      "255.255.255.255", 1},
    Verdict{"NoMask",              "NW_CheckIPv4IsMask",      "0.0.0.0",         1},
    Verdict{"Hole",                "NW_CheckIPv4IsMask",      "255.0.255.0",     0},
    Verdict{"HoleOfOneBit",        "NW_CheckIPv4IsMask",      "255.254.255.0",   0}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(Ipv6, PredicateVerdict, Values(
    Verdict{"AllZero",            "NW_CheckIPv6IsAllZero",   "::",                     1},
    Verdict{"FirstByte",          "NW_CheckIPv6IsAllZero",   "100::",                  0},
    Verdict{"LastByte",           "NW_CheckIPv6IsAllZero",   "::1",                    0},
    Verdict{"Loopback",           "NW_CheckIPv6IsLoopback",  "::1",                    1},
    Verdict{"LoopbackTwo",        "NW_CheckIPv6IsLoopback",  "::2",                    0},
    Verdict{"LoopbackByte14",     "NW_CheckIPv6IsLoopback",  "::101",                  0},
    Verdict{"LoopbackByte12",     "NW_CheckIPv6IsLoopback",  "::100:1",                0},
    Verdict{"LoopbackByte0",      "NW_CheckIPv6IsLoopback",  "100::1",                 0},
    Verdict{"LoopbackReversed",   "NW_CheckIPv6IsLoopback",  "::100:0",                0},
    Verdict{"Multicast",          "NW_CheckIPv6IsMulticast", "ff02::1",                1},
    Verdict{"MulticastNoScope",   "NW_CheckIPv6IsMulticast", "ff00::",                 1},
    Verdict{"BelowMulticast",     "NW_CheckIPv6IsMulticast", "feff::1",                0},
    Verdict{"LinkLocalFirst",     "NW_CheckIPv6IsLinklocal", "fe80::1",                1},
    Verdict{"LinkLocalLast",      "NW_CheckIPv6IsLinklocal", "febf:ffff::1",           1},
    Verdict{"BelowLinkLocal",     "NW_CheckIPv6IsLinklocal", "fe7f::1",                0},
    Verdict{"AboveLinkLocal",     "NW_CheckIPv6IsLinklocal", "fec0::1",                0},
    Verdict{"LinkLocalOtherByte0","NW_CheckIPv6IsLinklocal", "ff80::1",                0},
    Verdict{"SiteLocalFirst",     "NW_CheckIPv6IsSitelocal", "fec0::1",                1},
    Verdict{"SiteLocalLast",      "NW_CheckIPv6IsSitelocal", "feff::1",                1},
    Verdict{"BelowSiteLocal",     "NW_CheckIPv6IsSitelocal", "febf::1",                0},
    Verdict{"SiteLocalOtherByte0","NW_CheckIPv6IsSitelocal", "fdc0::1",                0},
    Verdict{"Mapped",             "NW_CheckIPv6IsV4Mapped",  "::ffff:10.0.0.1",        1},
    Verdict{"MappedZero",         "NW_CheckIPv6IsV4Mapped",  "::ffff:0.0.0.0",         1},
    Verdict{"MappedByte9",        "NW_CheckIPv6IsV4Mapped",  "::1:ffff:10.0.0.1",      0},
    Verdict{"MappedByte0",        "NW_CheckIPv6IsV4Mapped",  "100::ffff:10.0.0.1",     0},
    Verdict{"MappedByte10",       "NW_CheckIPv6IsV4Mapped",  "::ff:10.0.0.1",          0},
    Verdict{"MappedByte11",       "NW_CheckIPv6IsV4Mapped",  "::ff00:10.0.0.1",        0},
    Verdict{"CompatUnspecified",  "NW_CheckIPv6IsV4Compat",  "::",                     0},
    Verdict{"CompatLoopback",     "NW_CheckIPv6IsV4Compat",  "::1",                    1},
    Verdict{"CompatLittleEndianOne", "NW_CheckIPv6IsV4Compat", "::1.0.0.0",            0},
    Verdict{"CompatLittleEndianTwo", "NW_CheckIPv6IsV4Compat", "::2.0.0.0",            1},
    Verdict{"CompatByte13",       "NW_CheckIPv6IsV4Compat",  "::0.1.0.0",              1},
    Verdict{"CompatByte14",       "NW_CheckIPv6IsV4Compat",  "::0.0.1.0",              1},
    Verdict{"CompatHighBit",      "NW_CheckIPv6IsV4Compat",  "::0.0.0.128",            1},
    Verdict{"CompatByte11",       "NW_CheckIPv6IsV4Compat",  "::1:10.0.0.1",           0},
    Verdict{"CompatByte0",        "NW_CheckIPv6IsV4Compat",  "100::10.0.0.1",          0}),
    fake::RowName{});
/* clang-format on */

class PredicateNull : public fake::FakePlatformTest {};

TEST_F(PredicateNull, IsLoggedAndAnsweredWithZero)
{
    for (const Predicate &predicate : predicates) {
        platform.reset();
        EXPECT_EQ(predicate.function(nullptr), 0U) << predicate.name;
        EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pucAddr", predicate.name)));
    }
}

class PredicateAlignment : public fake::FakePlatformTest {};

TEST_F(PredicateAlignment, AnyAddressWillDo)
{
    const struct {
        const char *predicate;
        const char *address;
    } rows[] = {
        {"NW_CheckIPv6IsLoopback", "::1"},       {"NW_CheckIPv6IsV4Mapped", "::ffff:1.2.3.4"},
        {"NW_CheckIPv6IsV4Compat", "::1.2.3.4"}, {"NW_CheckIPv6IsLinklocal", "fe80::1"},
        {"NW_CheckIPv6IsAllZero", "::"},         {"NW_CheckIPv4IsMask", "255.255.0.0"}};

    for (const auto &row : rows) {
        const Predicate &predicate = predicateOf(row.predicate);
        const Bytes address = addressOf(predicate, row.address);
        for (std::size_t shift = 0; shift < 4; ++shift) {
            Bytes shifted(shift, 0xA5);
            shifted.insert(shifted.end(), address.begin(), address.end());
            EXPECT_EQ(predicate.function(shifted.data() + shift), 1U)
                << row.predicate << " at " << shift;
        }
    }
}

// From its second byte on a mask never has a one behind a zero. The first byte only counts as the
// one before: it must not be empty, nor partial before a partial second byte.
bool passesMaskWalk(const Bytes &mask)
{
    std::string bits;
    for (std::size_t byte = 1; byte < 4; ++byte) {
        for (int bit = 7; bit >= 0; --bit) {
            bits += ((mask[byte] >> bit) & 1) != 0 ? '1' : '0';
        }
    }
    const bool contiguous = bits.find("01") == std::string::npos;
    const bool emptyFirst = mask[0] == 0 && bits.find('1') != std::string::npos;
    const bool brokenFirst = mask[0] != 255 && mask[1] != 0 && mask[1] != 255;
    return contiguous && !emptyFirst && !brokenFirst;
}

TEST(MaskWalk, AgreesWithAModelOnEveryPatternOfASmallAlphabet)
{
    const std::uint8_t alphabet[] = {0,   1,   2,   3,   15,  16,  85,  127, 128, 129, 170, 192,
                                     193, 224, 239, 240, 247, 248, 251, 252, 253, 254, 255};
    for (const std::uint8_t b0 : alphabet) {
        for (const std::uint8_t b1 : alphabet) {
            for (const std::uint8_t b2 : alphabet) {
                for (const std::uint8_t b3 : alphabet) {
                    const Bytes mask = {b0, b1, b2, b3};
                    ASSERT_EQ(NW_CheckIPv4IsMask(mask.data()) == 1, passesMaskWalk(mask))
                        << support::addressText(AF_INET, mask.data());
                }
            }
        }
    }
}

TEST(MaskWalk, WithAFullFirstByteAcceptsExactlyTheNetmasks)
{
    std::size_t accepted = 0;
    for (std::uint32_t rest = 0; rest < (1U << 24); ++rest) {
        const std::uint8_t mask[] = {255, static_cast<std::uint8_t>(rest >> 16),
                                     static_cast<std::uint8_t>(rest >> 8),
                                     static_cast<std::uint8_t>(rest)};
        const std::uint32_t inverted = ~rest & 0xFFFFFFU;
        const bool netmask = (inverted & (inverted + 1)) == 0;
        if ((NW_CheckIPv4IsMask(mask) == 1) != netmask) {
            FAIL() << support::addressText(AF_INET, mask);
        }
        accepted += netmask ? 1 : 0;
    }
    EXPECT_EQ(accepted, 25U);
}

} // namespace
