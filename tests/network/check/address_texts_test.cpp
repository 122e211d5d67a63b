// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Texts sorted into MAC addresses, IP addresses and domain names.
#include <functional>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "network_mng/check.h"

namespace {

using support::Bytes;
using support::Guarded;
using ::testing::ElementsAre;
using ::testing::Values;

const Bytes untouched(6, 0xA5);

struct MacText {
    std::string name;
    std::string text;
    std::uint32_t result;
    Bytes address;
};
using MacTextToBytes = fake::FakePlatformRows<MacText>;

TEST_P(MacTextToBytes, NeedsSixFields)
{
    const Guarded address(6, 0xA5);
    EXPECT_EQ(LIB_NW_CovMacStrToNet(GetParam().text.c_str(), address.data()), GetParam().result);
    EXPECT_EQ(Bytes(address.bytes().begin(), address.bytes().end()), GetParam().address);
    if (GetParam().result == 0) {
        EXPECT_TRUE(lines().empty());
    } else {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Mac Addr[%s] is not intacted.",
                                                           GetParam().text.c_str())));
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, MacTextToBytes, Values(
    MacText{"UpperCase",       "AA:BB:CC:DD:EE:FF",      0, {0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}},
    MacText{"LowerCase",       "0a:1b:2c:3d:4e:5f",      0, {0x0A, 0x1B, 0x2C, 0x3D, 0x4E, 0x5F}},
    MacText{"SingleDigits",    "1:2:3:4:5:6",            0, {1, 2, 3, 4, 5, 6}},
    MacText{"TextBehind",      "01:02:03:04:05:06:07x",  0, {1, 2, 3, 4, 5, 6}},
    MacText{"ThirdDigitLast",  "01:02:03:04:05:067",     0, {1, 2, 3, 4, 5, 6}},
    MacText{"LeadingBlanks",   " 01: 02:03:04:05:06",    0, {1, 2, 3, 4, 5, 6}},
    MacText{"SignTakesADigit", "-1:02:03:04:05:06",      0, {0xFF, 2, 3, 4, 5, 6}},
    MacText{"FiveFields",      "aa:bb:cc:dd:ee",         0x81000001, untouched},
    MacText{"FiveAndColon",    "aa:bb:cc:dd:ee:",        0x81000001, untouched},
    MacText{"NoHexDigit",      "aa:bb:cg:dd:ee:ff",      0x81000001, untouched},
    MacText{"ThreeDigits",     "aaa:bb:cc:dd:ee:ff",     0x81000001, untouched},
    MacText{"OtherSeparator",  "aa-bb-cc-dd-ee-ff",      0x81000001, untouched},
    MacText{"Empty",           "",                       0x81000001, untouched}),
    fake::RowName{});
/* clang-format on */

struct NullText {
    std::string name;
    std::function<std::uint32_t(std::uint8_t *)> call;
    std::uint32_t result;
    const char *function;
    const char *parameter;
};
using NullTextAnswer = fake::FakePlatformRows<NullText>;

TEST_P(NullTextAnswer, NamesTheFirstAndWritesNothing)
{
    Bytes output = untouched;
    EXPECT_EQ(GetParam().call(output.data()), GetParam().result);
    EXPECT_EQ(output, untouched);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine(GetParam().parameter, GetParam().function)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NullTextAnswer, Values(
    NullText{"MacText", [](auto *out) { return LIB_NW_CovMacStrToNet(nullptr, out); },
             0x31000001, "LIB_NW_CovMacStrToNet", "pcMacStr"},
    NullText{"MacOutput", [](auto *) { return LIB_NW_CovMacStrToNet("1:2:3:4:5:6", nullptr); },
             0x31000001, "LIB_NW_CovMacStrToNet", "pucMacAddr"},
    NullText{"MacBoth", [](auto *) { return LIB_NW_CovMacStrToNet(nullptr, nullptr); },
             0x31000001, "LIB_NW_CovMacStrToNet", "pcMacStr"},
    NullText{"KindText", [](auto *out) { return LIB_CheckIpv4v6AndDomain(nullptr, out); },
             0x81000002, "LIB_CheckIpv4v6AndDomain", "pcSrc"},
    NullText{"KindOutput", [](auto *) { return LIB_CheckIpv4v6AndDomain("a.b", nullptr); },
             0x81000002, "LIB_CheckIpv4v6AndDomain", "pucResult"},
    NullText{"KindBoth", [](auto *) { return LIB_CheckIpv4v6AndDomain(nullptr, nullptr); },
             0x81000002, "LIB_CheckIpv4v6AndDomain", "pcSrc"}),
    fake::RowName{});
/* clang-format on */

struct Kind {
    std::string name;
    std::string text;
    std::uint8_t kind;
};
using TextKind = fake::FakePlatformRows<Kind>;

TEST_P(TextKind, IsStoredInOneByte)
{
    Bytes output = untouched;
    EXPECT_EQ(LIB_CheckIpv4v6AndDomain(GetParam().text.c_str(), output.data() + 2), 0U);
    EXPECT_EQ(output, (Bytes{0xA5, 0xA5, GetParam().kind, 0xA5, 0xA5, 0xA5}));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, TextKind, Values(
    Kind{"Ipv4",                 "10.0.0.1",          1},
    Kind{"Ipv4Loopback",         "127.0.0.1",         0},
    Kind{"Ipv4Zero",             "0.0.0.0",           0},
    Kind{"Ipv4ZeroNetwork",      "0.1.2.3",           0},
    Kind{"Ipv4Multicast",        "224.0.0.1",         0},
    Kind{"Ipv4NetmaskIsClassE",  "255.255.255.0",     0},
    Kind{"Ipv6",                 "2001:db8::1",       2},
    Kind{"Ipv6LinkLocal",        "fe80::1",           0},
    Kind{"Ipv6Loopback",         "::1",               0},
    Kind{"Ipv6Mapped",           "::ffff:10.0.0.1",   0},
    Kind{"ColonRulesOutDomain",  "a:b",               0},
    Kind{"ColonInDomain",        "a.example:80",      0},
    Kind{"Domain",               "bmc.example.com",   3},
    Kind{"FourNumbersTooLarge",  "10.0.0.256",        3},
    Kind{"LeadingZeros",         "10.0.0.01",         3},
    Kind{"ThreeNumbers",         "10.0.1",            3},
    Kind{"Empty",                "",                  3},
    Kind{"OneLabel",             "example",           0},
    Kind{"Underscore",           "a_b.com",           0}),
    fake::RowName{});
/* clang-format on */

class TextKindLines : public fake::FakePlatformTest {};

TEST_F(TextKindLines, OnlyTheDomainCheckSaysWhy)
{
    std::uint8_t kind = 0;
    for (const char *text : {"::1", "a:b", "127.0.0.1", "10.0.0.1", "2001:db8::1"}) {
        EXPECT_EQ(LIB_CheckIpv4v6AndDomain(text, &kind), 0U);
    }
    EXPECT_TRUE(lines().empty());

    EXPECT_EQ(LIB_CheckIpv4v6AndDomain("example", &kind), 0U);
    EXPECT_EQ(LIB_CheckIpv4v6AndDomain("", &kind), 0U);
    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Domain has no point"),
                                     fake::isErrorLine("Domain length is zero.")));
}

} // namespace
