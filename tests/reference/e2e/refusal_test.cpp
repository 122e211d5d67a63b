// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A refused change leaves the database and the kernel as they were. */
#include "system.hpp"

namespace e2e {

struct Row {
    const char *name;
    LanChange (*change)();
    NW_RESULT code; /* 0: any code of the network-configuration family */
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

class Refusal : public System, public ::testing::WithParamInterface<Row> {};

/* Everything that a change could touch. */
struct Picture {
    Bytes record;
    std::string addresses;
    std::string routes;
    bool operator==(const Picture &) const = default;
};

Picture takePicture()
{
    return {storedLanRecord(), shell("ip address show dev eth1 | grep -o 'inet6\\? [^ ]*' | sort"),
            shell("ip route show dev eth1; ip -6 route show dev eth1")};
}

TEST_P(Refusal, LeavesEverythingAsItWas)
{
    /* Whatever the kernel adds of its own accord when a link comes up is there. */
    ASSERT_TRUE(eventually([] { return run("ip address show dev eth1 | grep fe80").status == 0; }));
    const Picture before = takePicture();
    LanChange change = GetParam().change();

    const NW_RESULT result = change.send();

    if (GetParam().code != 0) {
        EXPECT_EQ(result, GetParam().code);
    }
    EXPECT_EQ(result & 0xFFFFF000U, 0x1E000000U);
    EXPECT_STREQ(change.log().szOperLog, "Failed to configure LAN settings for shared port.");
    EXPECT_STREQ(change.log().szLanOtherLog, "");
    EXPECT_EQ(takePicture(), before);
    EXPECT_FALSE(changeIsInProgress());
}

/* The manager still serves after a refusal. */
TEST_P(Refusal, IsFollowedByASuccess)
{
    EXPECT_NE(GetParam().change().send(), NW_OK);
    EXPECT_EQ(changeEth1().ipv4("192.168.20.7", "255.255.255.0").send(), NW_OK);
    EXPECT_EQ(storedAddresses(NW_PORT_ETH1), kernelAddresses("eth1"));
}

const Row rows[] = {
    {"SegmentOfEth0", [] { return changeEth1().ipv4("192.168.10.7", "255.255.255.0"); },
     NW_ERR_IPV4_SAME_SEGMENT},
    {"SegmentOfEth0UnderTheWiderMask",
     [] { return changeEth1().ipv4("192.168.11.7", "255.255.0.0"); }, 0},
    {"MaskWithAHole", [] { return changeEth1().ipv4("192.168.20.7", "255.0.255.0"); }, 0},
    {"MulticastAddress", [] { return changeEth1().ipv4("224.0.0.7", "255.255.255.0"); }, 0},
    {"MulticastIpv6Address", [] { return changeEth1().ipv6("ff02::7", 64); }, 0},
    {"Ipv6PrefixTooLong", [] { return changeEth1().ipv6("2001:db8:20::7", 129); }, 0},
    {"GoodIpv4AndBadIpv6",
     [] { return changeEth1().ipv4("192.168.20.7", "255.255.255.0").ipv6("ff02::7", 64); }, 0},
    {"GatewayOutOfReach", [] { return changeEth1().ipv4Gateway("192.168.99.1"); }, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, Refusal, ::testing::ValuesIn(rows),
                         [](const auto &test) { return test.param.name; });

/* Another program's address is in the way of the last step; the kernel refuses it when the others
 * are done. */
TEST_F(System, RefusalOfTheKernelTakesBackWhatWasApplied)
{
    shell("ip -6 address add 2001:db8:20::7/64 dev eth1 nodad");
    const Picture before = takePicture();
    LanChange change = changeEth1();

    const NW_RESULT result =
        change.ipv4("192.168.20.7", "255.255.255.0").ipv6("2001:db8:20::7", 64).send();

    EXPECT_EQ(result & 0xFFFFF000U, 0x1E000000U);
    EXPECT_STREQ(change.log().szOperLog, "Failed to configure LAN settings for shared port.");
    EXPECT_EQ(takePicture(), before);
    EXPECT_FALSE(changeIsInProgress());
}

} // namespace e2e
