// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Exported checks on raw addresses, masks and MAC addresses.
#include <functional>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "network_mng/check.h"

namespace {

using support::Bytes;
using support::Guarded;
using support::ipv4;
using support::ipv6;
using ::testing::ElementsAre;
using ::testing::Values;

template <typename ADDRESS>
Bytes bytesOf(const ADDRESS &address)
{
    return Bytes(address.begin(), address.end());
}

class Addresses : public fake::FakePlatformTest {};

struct Validity {
    std::string name;
    std::uint32_t flags;
    std::string address;
    std::uint32_t expected;
};

using Ipv4Validity = fake::FakePlatformRows<Validity>;

TEST_P(Ipv4Validity, IsTheWalkOfTheSelectedEntries)
{
    const Guarded address(bytesOf(ipv4(GetParam().address)));
    EXPECT_EQ(LIB_NW_CheckV4IsValid(GetParam().flags, address.data()), GetParam().expected);
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Host, Ipv4Validity, Values(
    Validity{"Zero",          15, "0.0.0.0",         0},
    Validity{"Loopback",      15, "127.0.0.1",       0},
    Validity{"Multicast",     15, "224.0.0.1",       0},
    Validity{"Broadcast",     15, "255.255.255.255", 0},
    Validity{"ZeroNetwork",   15, "0.1.2.3",         0},
    Validity{"Private",       15, "10.0.0.1",        1},
    Validity{"LastClassC",    15, "223.255.255.254", 1}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(Netmask, Ipv4Validity, Values(
    Validity{"ClassC",        48, "255.255.255.0",   1},
    Validity{"ClassA",        48, "255.0.0.0",       1},
    Validity{"AllOnes",       48, "255.255.255.255", 1},
    Validity{"Zero",          48, "0.0.0.0",         1},
    Validity{"ShortFirst",    48, "254.0.0.0",       0},
    Validity{"Hole",          48, "255.0.255.0",     0},
    Validity{"HoleInThird",   48, "255.255.0.255",   0},
    Validity{"PartialFirst",  48, "240.255.0.0",     0}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(OneFlag, Ipv4Validity, Values(
    Validity{"ZeroRefused",         0x01, "0.0.0.0",      0},
    Validity{"ZeroElse",            0x3E & ~0x30, "0.0.0.0", 1},
    Validity{"LoopbackRefused",     0x02, "127.0.0.1",    0},
    Validity{"LoopbackElse",        0x0D, "127.0.0.1",    1},
    Validity{"MulticastRefused",    0x04, "224.0.0.1",    0},
    Validity{"MulticastElse",       0x0B, "224.0.0.1",    1},
    Validity{"ZeroNetworkRefused",  0x08, "0.0.0.1",      0},
    Validity{"ZeroNetworkElse",     0x07, "0.0.0.1",      1},
    Validity{"MaskRequired",        0x10, "255.0.255.0",  0},
    Validity{"MaskElse",            0x20, "255.0.255.0",  1},
    Validity{"MaskFirstUnexamined", 0x10, "240.255.0.0",  1},
    Validity{"FirstFFRequired",     0x20, "240.255.0.0",  0},
    Validity{"NothingSelected",     0,    "0.0.0.0",      1},
    Validity{"BitsOutsideTheTable", 0xFFFFFFC0U, "127.0.0.1", 1}),
    fake::RowName{});
/* clang-format on */

using Ipv6Validity = fake::FakePlatformRows<Validity>;

TEST_P(Ipv6Validity, IsTheWalkOfTheSelectedEntriesAtAnyAlignment)
{
    const Bytes address = bytesOf(ipv6(GetParam().address));
    for (std::size_t shift = 0; shift < 4; ++shift) {
        const Guarded buffer(16 + shift);
        std::ranges::copy(address, buffer.data()); // ends up to three bytes before the guard
        EXPECT_EQ(LIB_NW_CheckV6IsValid(GetParam().flags, buffer.data()), GetParam().expected);
    }
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(All, Ipv6Validity, Values(
    Validity{"Unspecified",     127, "::",                0},
    Validity{"Loopback",        127, "::1",               0},
    Validity{"Multicast",       127, "ff02::1",           0},
    Validity{"SiteLocal",       127, "fec0::1",           0},
    Validity{"LinkLocal",       127, "fe80::1",           0},
    Validity{"V4Mapped",        127, "::ffff:10.0.0.1",   0},
    Validity{"V4Compat",        127, "::0.0.0.2",         0},
    Validity{"LittleEndianOne", 127, "::1.0.0.0",         1},
    Validity{"Documentation",   127, "2001:db8::1",       1},
    Validity{"UniqueLocal",     127, "fd00::1",           1}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(OneFlag, Ipv6Validity, Values(
    Validity{"UnspecifiedRefused", 0x01, "::",              0},
    Validity{"UnspecifiedElse",    0x7E, "::",              1},
    Validity{"LoopbackRefused",    0x02, "::1",             0},
    Validity{"LoopbackIsCompat",   0x40, "::1",             0},
    Validity{"LoopbackElse",       0x3D, "::1",             1},
    Validity{"MulticastRefused",   0x04, "ff02::1",         0},
    Validity{"MulticastElse",      0x7B, "ff02::1",         1},
    Validity{"SiteLocalRefused",   0x08, "fec0::1",         0},
    Validity{"SiteLocalElse",      0x77, "fec0::1",         1},
    Validity{"LinkLocalRefused",   0x10, "fe80::1",         0},
    Validity{"LinkLocalElse",      0x6F, "fe80::1",         1},
    Validity{"MappedRefused",      0x20, "::ffff:10.0.0.1", 0},
    Validity{"MappedElse",         0x5F, "::ffff:10.0.0.1", 1},
    Validity{"CompatRefused",      0x40, "::10.0.0.1",      0},
    Validity{"CompatElse",         0x3F, "::10.0.0.1",      1},
    Validity{"NothingSelected",    0,    "::",              1},
    Validity{"BitsOutsideTheTable", 0xFFFFFF80U, "::1",     1}),
    fake::RowName{});
/* clang-format on */

struct Firewall {
    std::string name;
    std::string address;
    std::uint32_t expected;
};
using FirewallAddress = fake::FakePlatformRows<Firewall>;

TEST_P(FirewallAddress, IsGlobalOrNotAtAnyAlignment)
{
    const Bytes address = bytesOf(ipv6(GetParam().address));
    for (std::size_t shift = 0; shift < 4; ++shift) {
        const Guarded buffer(16 + shift);
        std::ranges::copy(address, buffer.data());
        EXPECT_EQ(LIB_CheckIsValidGlobalIPv6AddrFireWall(buffer.data()), GetParam().expected);
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, FirewallAddress, Values(
    Firewall{"Unspecified",       "::",                    0},
    Firewall{"Loopback",          "::1",                   0},
    Firewall{"Multicast",         "ff02::1",               0},
    Firewall{"SiteLocal",         "fec0::1",               0},
    Firewall{"SiteLocalLast",     "feff:ffff::1",          0},
    Firewall{"LinkLocalAccepted", "fe80::1",               1},
    Firewall{"LinkLocalLast",     "febf::1",               1},
    Firewall{"V4Mapped",          "::ffff:10.0.0.1",       0},
    Firewall{"V4Compat",          "::0.0.0.2",             0},
    Firewall{"V4CompatTen",       "::10.0.0.1",            0},
    Firewall{"LittleEndianOne",   "::1.0.0.0",             1},
    Firewall{"Documentation",     "2001:db8::1",           1},
    Firewall{"SecondWordSet",     "0:0:0:1::1",            1},
    Firewall{"SecondWordMapped",  "0:0:1::ffff:10.0.0.1",  1},
    Firewall{"ThirdWordOther",    "::1:10.0.0.1",          1},
    Firewall{"LoopbackByte0",     "100::1",                1}),
    fake::RowName{});
/* clang-format on */

// The boolean checks with a null address: what they log and answer.
struct NullAddress {
    std::string name;
    std::function<std::uint32_t()> call;
    const char *parameter;
    std::uint32_t expected;
};
using NullAddressAnswer = fake::FakePlatformRows<NullAddress>;

TEST_P(NullAddressAnswer, IsFixedAndLogged)
{
    EXPECT_EQ(GetParam().call(), GetParam().expected);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine(GetParam().parameter, GetParam().name)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NullAddressAnswer, Values(
    NullAddress{"NW_CheckIpIsEmpty",    [] { return NW_CheckIpIsEmpty(7, nullptr); }, "pucIpArry", 0},
    NullAddress{"LIB_NW_CheckIPIsZero", [] { return LIB_NW_CheckIPIsZero(nullptr, 4); }, "pucIP", 1},
    NullAddress{"LIB_NW_CheckIPIsFull", [] { return LIB_NW_CheckIPIsFull(nullptr, 4); }, "pucIP", 1},
    NullAddress{"LIB_CheckIsValidGlobalIPv6AddrFireWall",
                [] { return LIB_CheckIsValidGlobalIPv6AddrFireWall(nullptr); }, "pucIPv6Addr", 0},
    NullAddress{"LIB_NW_CheckV6IsValid", [] { return LIB_NW_CheckV6IsValid(0, nullptr); }, "pucAddr", 0},
    NullAddress{"LIB_NW_CheckV4IsValid", [] { return LIB_NW_CheckV4IsValid(0, nullptr); }, "pucAddr", 0},
    NullAddress{"CalNETPrefix",          [] { return CalNETPrefix(nullptr, 4); }, "pucVar", 0},
    NullAddress{"LIB_NW_CkeckIsValidMac", [] { return LIB_NW_CkeckIsValidMac(nullptr); }, "pucMacAddr", 0}),
    fake::RowName{});
/* clang-format on */

TEST_F(Addresses, EmptyTestDependsOnTheFamily)
{
    for (std::size_t byte = 0; byte < 16; ++byte) {
        support::Ipv6 address{};
        address[byte] = 1;
        EXPECT_EQ(NW_CheckIpIsEmpty(10, address.data()), 0U) << byte;
        EXPECT_EQ(NW_CheckIpIsEmpty(2, address.data()), byte < 4 ? 0U : 1U) << byte;
        EXPECT_EQ(NW_CheckIpIsEmpty(7, address.data()), 1U) << byte;
    }
    const Guarded zero4(4);
    const Guarded zero16(16);
    EXPECT_EQ(NW_CheckIpIsEmpty(2, zero4.data()), 1U);
    EXPECT_EQ(NW_CheckIpIsEmpty(10, zero16.data()), 1U);
    const std::uint8_t full[16] = {255};
    for (const std::uint32_t family : {0U, 1U, 3U, 9U, 11U, 0x10002U, 0xFFFFFFFFU}) {
        EXPECT_EQ(NW_CheckIpIsEmpty(family, full), 1U) << family;
    }
    EXPECT_TRUE(lines().empty());
}

TEST_F(Addresses, ZeroAndFullLookAtEveryByteOfTheLength)
{
    for (const int length : {1, 4, 6, 16}) {
        const auto size = static_cast<std::size_t>(length);
        const Guarded zero(size, 0);
        const Guarded full(size, 255);
        EXPECT_EQ(LIB_NW_CheckIPIsZero(zero.data(), length), 1U);
        EXPECT_EQ(LIB_NW_CheckIPIsFull(full.data(), length), 1U);
        for (std::size_t byte = 0; byte < size; ++byte) {
            zero.data()[byte] = 0x80;
            full.data()[byte] = 0x7F;
            EXPECT_EQ(LIB_NW_CheckIPIsZero(zero.data(), length), 0U) << byte;
            EXPECT_EQ(LIB_NW_CheckIPIsFull(full.data(), length), 0U) << byte;
            zero.data()[byte] = 0;
            full.data()[byte] = 255;
        }
    }
}

TEST_F(Addresses, NoLengthIsBothZeroAndFull)
{
    const Guarded nothing(std::size_t{0});
    for (const std::int32_t length : {0, -1, INT32_MIN}) {
        EXPECT_EQ(LIB_NW_CheckIPIsZero(nothing.data(), length), 1U);
        EXPECT_EQ(LIB_NW_CheckIPIsFull(nothing.data(), length), 1U);
    }
    EXPECT_TRUE(lines().empty());
}

struct Prefix {
    std::string name;
    Bytes mask; // what may be read, the byte behind an all-ones mask included
    std::uint32_t length;
    std::uint32_t expected;
};
using PrefixLength = fake::FakePlatformRows<Prefix>;

TEST_P(PrefixLength, CountsUpToTheFirstPartialByte)
{
    const Guarded mask(GetParam().mask);
    EXPECT_EQ(CalNETPrefix(mask.data(), GetParam().length), GetParam().expected);
}

Bytes ones(std::size_t count, const Bytes &behind = {})
{
    Bytes mask(count, 255);
    mask.insert(mask.end(), behind.begin(), behind.end());
    return mask;
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, PrefixLength, Values(
    Prefix{"ClassC",              {255, 255, 255, 0},      4,  24},
    Prefix{"Zero",                {0, 0, 0, 0},            4,  0},
    Prefix{"FirstPartial",        {254, 0, 0, 0},          4,  7},
    Prefix{"Seventeen",           {255, 255, 128, 0},      4,  17},
    Prefix{"ThirtyOne",           {255, 255, 255, 254},    4,  31},
    Prefix{"BehindFullIsZero",    ones(4, {0}),            4,  32},
    Prefix{"BehindFullCounts",    ones(4, {0xFE}),         4,  39},
    Prefix{"BehindFullNotBit0",   ones(4, {0xFF}),         4,  39},
    Prefix{"BehindFullBit0Only",  ones(4, {0x01}),         4,  32},
    Prefix{"LowestBitNotCounted", {0x01},                  1,  0},
    Prefix{"HolesAreCounted",     {0xAA},                  1,  4},
    Prefix{"HalfIpv6",            ones(8, Bytes(8, 0)),    16, 64},
    Prefix{"FullIpv6",            ones(16),                16, 128},
    Prefix{"LengthZero",          {255},                   0,  7},
    Prefix{"LengthOneFull",       ones(1, {0xC0}),         1,  10},
    Prefix{"StopsAtTheLength",    ones(5, {0}),            2,  23},
    Prefix{"LengthAboveSixteen",  ones(19),                18, 151},
    Prefix{"SixteenOfEighteen",   ones(16, {0xF0, 0}),     18, 128},
    Prefix{"StopsAtFirstPartial", {255, 0, 255, 255},      4,  8}),
    fake::RowName{});
/* clang-format on */

struct Mac {
    std::string name;
    Bytes address;
    std::uint32_t expected;
    const char *line; // null: none
};
using MacValidity = fake::FakePlatformRows<Mac>;

TEST_P(MacValidity, RefusesZeroAndGroupAddresses)
{
    const Guarded address(GetParam().address);
    EXPECT_EQ(LIB_NW_CkeckIsValidMac(address.data()), GetParam().expected);
    if (GetParam().line != nullptr) {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(GetParam().line)));
    } else {
        EXPECT_TRUE(lines().empty());
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, MacValidity, Values(
    Mac{"Unicast",     {0x02, 0, 0, 0, 0, 0},                   1, nullptr},
    Mac{"LastByte",    {0, 0, 0, 0, 0, 1},                      1, nullptr},
    Mac{"Zero",        {0, 0, 0, 0, 0, 0},                      0, "net mac address is all zero."},
    Mac{"Group",       {0x01, 0, 0x5E, 0, 0, 1},                0, "net mac address is a mutilcast address."},
    Mac{"Broadcast",   {255, 255, 255, 255, 255, 255},          0, "net mac address is a mutilcast address."},
    Mac{"EvenFirst",   {0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},    1, nullptr}),
    fake::RowName{});
/* clang-format on */

} // namespace
