// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/sending.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace nwctl {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

NW_OPER_LOG_S logOf(const char *other, const char *ipv4Routes, const char *ipv6Routes)
{
    NW_OPER_LOG_S log{};
    std::strcpy(log.szLanOtherLog, other);
    std::strcpy(log.szLanIpv4RouteLog, ipv4Routes);
    std::strcpy(log.szLanIpv6RouteLog, ipv6Routes);
    return log;
}

TEST(LanSentences, AreEmptyForEmptySlots)
{
    EXPECT_THAT(lanSentences(logOf("", "", "")), IsEmpty());
}

TEST(LanSentences, SayARepeatedSentenceOnce)
{
    const char *text = "LAN settings configured successfully for shared port, LAN: Enabled.";
    EXPECT_THAT(lanSentences(logOf(text, text, "")), ElementsAre(text));
}

TEST(LanSentences, LeaveOutASlotWhoseFieldsStandInAnother)
{
    const char *address = "Done for shared port, IPv4 address: 10.0.0.2.";
    const char *both =
        "Done for shared port, IPv4 address: 10.0.0.2, IPv4 static route 1 address: 10.1.0.0.";
    const char *route = "Done for shared port, IPv4 static route 1 address: 10.1.0.0.";

    EXPECT_THAT(lanSentences(logOf(address, both, route)), ElementsAre(both));
    EXPECT_THAT(lanSentences(logOf("", route, route)), ElementsAre(route));
}

TEST(LanSentences, KeepsSlotsThatSayDifferentThings)
{
    const char *one = "Done for shared port, IPv6 static route 1 prefix: 64.";
    const char *two = "Done for shared port, IPv4 address: 10.0.0.2.";

    EXPECT_THAT(lanSentences(logOf(two, two, one)), ElementsAre(two, one));
}

TEST(LanSentences, ReadNoFurtherThanTheirSlots)
{
    NW_OPER_LOG_S log{};
    std::memset(log.szLanOtherLog, 'x', sizeof(log.szLanOtherLog));

    EXPECT_THAT(lanSentences(log), ElementsAre(std::string(NW_OPER_LOG_SLOT_SIZE, 'x')));
}

TEST(SaysFailure, KnowsTheSentencesOfItsModuleAlone)
{
    NW_OPER_LOG_S log{};
    EXPECT_FALSE(saysFailure(log, NW_LOG_HOSTNAME));

    std::strcpy(log.szOperLog, "Failed to configure host name settings.");
    EXPECT_TRUE(saysFailure(log, NW_LOG_HOSTNAME));
    EXPECT_FALSE(saysFailure(log, NW_LOG_AN));
    EXPECT_FALSE(saysFailure(log, 0));

    std::strcpy(log.szOperLog, "Host name set successfully, host name BMC: Failed.");
    EXPECT_FALSE(saysFailure(log, NW_LOG_HOSTNAME));
}

} // namespace
} // namespace nwctl
