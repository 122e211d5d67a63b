// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "addresses.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nwctl {
namespace {

using ::testing::Optional;

TEST(ParseAddress, AcceptsWholeAddressesAlone)
{
    EXPECT_THAT(parseIpv4("192.168.10.2"), Optional(Ipv4{192, 168, 10, 2}));
    EXPECT_THAT(parseIpv6("::1"), Optional(Ipv6{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
    for (const char *text : {"", "192.168.10", "192.168.10.2 ", "192.168.10.256", "::1"}) {
        EXPECT_EQ(parseIpv4(text), std::nullopt) << text;
    }
    for (const char *text : {"", ":", "::1%eth0", "fe80:::1", "10.0.0.1"}) {
        EXPECT_EQ(parseIpv6(text), std::nullopt) << text;
    }
}

TEST(ParseNumber, AcceptsDigitsUpToTheLimit)
{
    EXPECT_THAT(parseNumber("0", 32), Optional(0U));
    EXPECT_THAT(parseNumber("32", 32), Optional(32U));
    for (const char *text : {"", "33", "-1", "+1", " 1", "1 ", "0x1", "99999999999999999999"}) {
        EXPECT_EQ(parseNumber(text, 32), std::nullopt) << text;
    }
}

TEST(Mask, IsThatOfThePrefixLength)
{
    EXPECT_EQ(maskOfPrefix(0), (Ipv4{0, 0, 0, 0}));
    EXPECT_EQ(maskOfPrefix(9), (Ipv4{255, 128, 0, 0}));
    EXPECT_EQ(maskOfPrefix(24), (Ipv4{255, 255, 255, 0}));
    EXPECT_EQ(maskOfPrefix(32), (Ipv4{255, 255, 255, 255}));
}

TEST(Mask, GivesThePrefixLengthBack)
{
    for (unsigned prefix = 0; prefix <= 32; ++prefix) {
        EXPECT_EQ(prefixOfMask(maskOfPrefix(prefix)), prefix);
    }
}

struct Refusal {
    const char *text;
    const char *reason;
};

TEST(WhyNotHost, NamesTheEntryThatRefusesAnIpv4Address)
{
    const Refusal refusals[] = {
        {"0.0.0.0", "the all-zero address"},
        {"127.0.0.1", "a loopback address"},
        {"224.0.0.1", "a multicast or reserved address"},
        {"255.255.255.255", "a multicast or reserved address"},
        {"0.1.2.3", "an address of network 0"},
    };
    for (const auto &[text, reason] : refusals) {
        EXPECT_THAT(whyNotHost(*parseIpv4(text)), Optional(std::string(reason))) << text;
    }
    EXPECT_EQ(whyNotHost(*parseIpv4("10.0.0.1")), std::nullopt);
}

TEST(WhyNotMask, NamesTheEntryThatRefusesAMask)
{
    EXPECT_THAT(whyNotMask(*parseIpv4("255.0.255.0")),
                Optional(std::string("the ones of the mask are not contiguous")));
    EXPECT_THAT(whyNotMask(*parseIpv4("254.0.0.0")),
                Optional(std::string("the first byte of a mask is 255, or the mask is 0.0.0.0")));
    EXPECT_EQ(whyNotMask(*parseIpv4("255.255.128.0")), std::nullopt);
}

TEST(WhyNotHost, NamesTheEntryThatRefusesAnIpv6Address)
{
    const Refusal refusals[] = {
        {"::", "the all-zero address"},
        {"::1", "the loopback address"},
        {"ff02::1", "a multicast address"},
        {"fec0::1", "a site-local address"},
        {"fe80::1", "a link-local address"},
        {"::ffff:10.0.0.1", "an IPv4-mapped address"},
        {"::10.0.0.1", "an IPv4-compatible address"},
    };
    for (const auto &[text, reason] : refusals) {
        EXPECT_THAT(whyNotHost(*parseIpv6(text)), Optional(std::string(reason))) << text;
    }
    EXPECT_EQ(whyNotHost(*parseIpv6("2001:db8::1")), std::nullopt);
}

TEST(WhyNotRouter, AcceptsALinkLocalAddress)
{
    EXPECT_EQ(whyNotRouter(*parseIpv6("fe80::1")), std::nullopt);
    EXPECT_THAT(whyNotRouter(*parseIpv6("ff02::2")), Optional(std::string("a multicast address")));
}

TEST(FormatMac, WritesLowerCaseHex)
{
    EXPECT_EQ(formatMac({0x52, 0x54, 0x00, 0xAB, 0xCD, 0x0F}), "52:54:00:ab:cd:0f");
}

} // namespace
} // namespace nwctl
