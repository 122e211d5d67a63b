// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/address.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>

namespace {

using bmc::Address;

Address parsed(int family, const char *text, unsigned prefix)
{
    std::array<std::uint8_t, NW_IPV6_SIZE> bytes{};
    EXPECT_EQ(1, inet_pton(family, text, bytes.data()));
    return family == AF_INET ? bmc::ipv4(bytes.data(), prefix) : bmc::ipv6(bytes.data(), prefix);
}

Address four(const char *text, unsigned prefix = 32)
{
    return parsed(AF_INET, text, prefix);
}

Address six(const char *text, unsigned prefix = 128)
{
    return parsed(AF_INET6, text, prefix);
}

TEST(AddressText, HasThePrefixUnlessItIsWhole)
{
    EXPECT_EQ("192.0.2.1/24", textOf(four("192.0.2.1", 24)));
    EXPECT_EQ("192.0.2.1", textOf(four("192.0.2.1")));
    EXPECT_EQ("0.0.0.0/0", textOf(four("0.0.0.0", 0)));
    EXPECT_EQ("2001:db8::1/64", textOf(six("2001:db8::1", 64)));
    EXPECT_EQ("2001:db8::1", textOf(six("2001:db8::1")));
    EXPECT_EQ("2001:db8::1/32", textOf(six("2001:db8::1", 32)));
}

TEST(AddressNetwork, LacksTheBitsBehindThePrefix)
{
    EXPECT_EQ(four("192.0.2.128", 25), networkOf(four("192.0.2.200", 25)));
    EXPECT_EQ(four("192.0.2.200", 32), networkOf(four("192.0.2.200", 32)));
    EXPECT_EQ(six("2001:db8::", 64), networkOf(six("2001:db8::1:2:3:4", 64)));
    EXPECT_EQ(six("::", 0), networkOf(six("ff::1", 0)));
}

TEST(AddressSubnet, HoldsAddressesOfItsFamilyAlone)
{
    EXPECT_TRUE(isInSubnetOf(four("192.0.2.9"), four("192.0.2.1", 28)));
    EXPECT_FALSE(isInSubnetOf(four("192.0.2.16"), four("192.0.2.1", 28)));
    EXPECT_TRUE(isInSubnetOf(six("2001:db8::5"), six("2001:db8::1", 64)));
    EXPECT_FALSE(isInSubnetOf(six("2001:db8:0:1::5"), six("2001:db8::1", 64)));
    EXPECT_FALSE(isInSubnetOf(six("::"), four("0.0.0.0", 0)));
}

TEST(AddressMask, IsThePrefixAndBack)
{
    for (unsigned prefix = 0; prefix <= 32; ++prefix) {
        EXPECT_EQ(prefix, bmc::prefixOf(bmc::maskOf(prefix).data()));
    }
    EXPECT_EQ((std::array<std::uint8_t, 4>{255, 255, 240, 0}), bmc::maskOf(20));
}

TEST(AddressKind, UnsetAndLinkLocal)
{
    EXPECT_TRUE(isUnset(six("::", 64)));
    EXPECT_FALSE(isUnset(four("0.0.0.1")));
    EXPECT_TRUE(isLinkLocal(six("fe80::1", 64)));
    EXPECT_TRUE(isLinkLocal(six("febf::1", 64)));
    EXPECT_FALSE(isLinkLocal(six("fec0::1", 64)));
    EXPECT_FALSE(isLinkLocal(four("254.128.0.1")));
}

} // namespace
