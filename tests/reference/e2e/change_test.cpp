// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change travels to the manager, the kernel and the database, and is told in words. */
#include "system.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace e2e {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class Change : public System {};

TEST_F(Change, StartsFromTheInitialConfiguration)
{
    EXPECT_THAT(kernelAddresses("eth0"), ElementsAre("192.168.10.2/24"));
    EXPECT_THAT(kernelAddresses("eth1"), ElementsAre("192.168.20.2/24", "2001:db8:20::2/64"));
    EXPECT_FALSE(changeIsInProgress());
}

TEST_F(Change, ReachesTheKernelAndTheRecord)
{
    ASSERT_EQ(changeEth1().ipv4("192.168.20.7", "255.255.255.128").send(), NW_OK);

    EXPECT_THAT(kernelAddresses("eth1"), ElementsAre("192.168.20.7/25", "2001:db8:20::2/64"));
    EXPECT_EQ(storedAddresses(NW_PORT_ETH1), kernelAddresses("eth1"));
    const NW_ETHER_INS_INFO_S info = queryPort("eth1");
    EXPECT_STREQ(info.szIpv4Addr, "192.168.20.7");
    EXPECT_STREQ(info.szIpv4Mask, "255.255.255.128");
    EXPECT_FALSE(changeIsInProgress());
}

TEST_F(Change, LeavesOtherPortsAlone)
{
    const std::vector<std::string> before = storedAddresses(NW_PORT_ETH0);

    ASSERT_EQ(changeEth1().ipv4("192.168.20.7", "255.255.255.0").send(), NW_OK);

    EXPECT_EQ(storedAddresses(NW_PORT_ETH0), before);
    EXPECT_EQ(kernelAddresses("eth0"), before);
}

TEST_F(Change, IsToldInTheOperationLog)
{
    LanChange change = changeEth1();
    ASSERT_EQ(change.ipv4("192.168.20.7", "255.255.255.0").send(), NW_OK);

    const char *sentence = "LAN settings configured successfully for shared port, "
                           "IPv4 address: 192.168.20.7, IPv4 mask: 255.255.255.0.";
    EXPECT_STREQ(change.log().szLanOtherLog, sentence);
    /* The words of the other changes are left in this slot, but not in the next one. */
    EXPECT_STREQ(change.log().szLanIpv4RouteLog, sentence);
    EXPECT_STREQ(change.log().szLanIpv6RouteLog, "");
    EXPECT_STREQ(change.log().szOperLog, "");
}

TEST_F(Change, SurvivesARestartOfTheManager)
{
    ASSERT_EQ(changeEth1().ipv4("192.168.20.7", "255.255.255.0").ipv6("2001:db8:20::7", 56).send(),
              NW_OK);

    stopManager();
    shell("ip address flush dev eth1");
    startManager();

    EXPECT_THAT(kernelAddresses("eth1"), ElementsAre("192.168.20.7/24", "2001:db8:20::7/56"));
    EXPECT_STREQ(queryPort("eth1").szIpv4Addr, "192.168.20.7");
}

TEST_F(Change, OfAnIpv6AddressBecomesValid)
{
    ASSERT_EQ(changeEth1().ipv6("2001:db8:20::7", 64).send(), NW_OK);

    EXPECT_THAT(kernelAddresses("eth1"), ElementsAre("192.168.20.2/24", "2001:db8:20::7/64"));
    EXPECT_TRUE(eventually([] {
        const NW_ETHER_INS_INFO_S info = queryPort("eth1");
        return info.astIpv6AddrState[NW_IPV6_STATE_STATIC].ucState == NW_IPV6_ADDR_VALID;
    }));
    EXPECT_STREQ(queryPort("eth1").aszIpv6Addr[NW_IPV6_SLOT_STATIC], "2001:db8:20::7");
}

TEST_F(Change, OfTheGatewayBecomesTheDefaultRoute)
{
    ASSERT_EQ(changeEth1().ipv4Gateway("192.168.20.254").send(), NW_OK);

    EXPECT_THAT(shell("ip route show default dev eth1"), HasSubstr("via 192.168.20.254"));
    EXPECT_STREQ(queryPort("eth1").szIpv4Gateway, "192.168.20.254");
}

TEST_F(Change, OfLanEnableTakesTheLinkDownAndUp)
{
    const auto flags = [] {
        return nlohmann::json::parse(shell("ip -json link show dev eth1"))[0]["flags"];
    };
    ASSERT_THAT(flags(), Contains("UP"));

    ASSERT_EQ(changeEth1().lanEnable(false).send(), NW_OK);
    EXPECT_THAT(flags(), Not(Contains("UP")));
    EXPECT_EQ(queryPort("eth1").ucLanEnable, 0);

    ASSERT_EQ(changeEth1().lanEnable(true).send(), NW_OK);
    EXPECT_THAT(flags(), Contains("UP"));
    EXPECT_THAT(kernelAddresses("eth1"), ElementsAre("192.168.20.2/24", "2001:db8:20::2/64"));
}

TEST_F(Change, OfNothingSucceedsAndSaysNothing)
{
    const Bytes before = storedLanRecord();
    LanChange change = changeEth1();

    EXPECT_EQ(change.send(), NW_OK);

    EXPECT_STREQ(change.log().szLanOtherLog, "");
    EXPECT_EQ(storedLanRecord(), before);
}

} // namespace e2e
