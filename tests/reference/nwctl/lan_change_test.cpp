// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_change.hpp"

#include <gtest/gtest.h>

#include <cstring>

#include "lan_check.hpp"
#include "lan_options.hpp"
#include "samples.hpp"

namespace nwctl {
namespace {

TEST(LanChange, StandsInItsPortsPlacesAlone)
{
    LanChange change;
    change.port = 1;
    change.bits[0] = NW_LAN_BIT_IPV4_ADDR;
    change.bits[1] = NW_LAN_BIT_IPV4_ROUTE1_ADDR;
    change.fields.ucLanEnable = 7;

    const NW_LAN_BITMAP_S bitmap = bitmapOf({&change, 1});
    const NW_LAN_SET_CFG_S config = configOf({&change, 1});

    NW_LAN_BITMAP_S expectedBitmap{};
    expectedBitmap.aauiWord[1][0] = NW_LAN_BIT_IPV4_ADDR;
    expectedBitmap.aauiWord[1][1] = NW_LAN_BIT_IPV4_ROUTE1_ADDR;
    EXPECT_EQ(fake::bytesOf(bitmap), fake::bytesOf(expectedBitmap));
    fake::Bytes expectedConfig(sizeof(config));
    expectedConfig[163] = 7;
    EXPECT_EQ(fake::bytesOf(config), expectedConfig);
}

NW_RESULT checkedWith(const std::vector<GivenOption> &given,
                      const NW_WIFI_ADDR_S &wireless = NW_WIFI_ADDR_S{})
{
    const LanChange change = buildLanChange(1, given);
    return checkSegments({&change, 1}, samples::interfaces(), samples::lanRecord(), wireless);
}

class CheckSegments : public fake::FakePlatformTest {};

TEST_F(CheckSegments, FindsTheOtherPort)
{
    EXPECT_EQ(checkedWith({{"--ipv4", "192.168.10.9/24"}}), NW_ERR_IPV4_SAME_SEGMENT);
    EXPECT_EQ(checkedWith({{"--ipv4", "192.168.30.9/24"}}), NW_OK);
}

TEST_F(CheckSegments, FindsTheWirelessInterface)
{
    const NW_WIFI_ADDR_S wireless{1, {192, 168, 30, 1}};
    EXPECT_EQ(checkedWith({{"--ipv4", "192.168.30.9/24"}}, wireless), NW_ERR_IPV4_SAME_SEGMENT);
}

TEST_F(CheckSegments, SeesTheRecordAsTheChangeLeavesIt)
{
    EXPECT_EQ(checkedWith({{"--ipv4", "192.168.10.9/24"}, {"--ipv4", "off"}}), NW_OK);
}

/* A conflict that the change has nothing to do with does not stand in its way. */
TEST_F(CheckSegments, AsksForWhatTheChangeTouchesAlone)
{
    NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
    samples::storeIpv4(record.astPort[1].aucIpv4Addr, "192.168.10.9");
    const auto checked = [&record](const GivenOption &given) {
        const LanChange change = buildLanChange(1, std::vector{given});
        return checkSegments({&change, 1}, samples::interfaces(), record, NW_WIFI_ADDR_S{});
    };

    EXPECT_EQ(checked({"--lan", "off"}), NW_OK);
    EXPECT_EQ(checked({"--ipv6", "2001:db8:20::9/64"}), NW_OK);
    EXPECT_EQ(checked({"--ipv4", "on"}), NW_ERR_IPV4_SAME_SEGMENT);
}

TEST_F(CheckSegments, FindsARouteToTheOtherPort)
{
    EXPECT_EQ(checkedWith({{"--ipv4-route1", "192.168.10.0/24,192.168.20.9"}}), NW_ERR_IPV4_ROUTE1);
    EXPECT_EQ(checkedWith({{"--ipv4-route2", "10.0.0.0/8,192.168.10.9"}}),
              NW_ERR_IPV4_ROUTE2_GATEWAY);
    EXPECT_EQ(checkedWith({{"--ipv4-route1", "10.0.0.0/8,192.168.20.9"}}), NW_OK);
    EXPECT_EQ(checkedWith({{"--ipv4-route1", "192.168.30.0/24,192.168.20.9"}},
                          NW_WIFI_ADDR_S{1, {192, 168, 30, 1}}),
              NW_ERR_IPV4_ROUTE1);
}

/* What was changed is blamed: the new address for lying in the other port's old route. */
TEST_F(CheckSegments, FindsAnAddressInTheOthersRoute)
{
    NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
    auto &route = record.astPort[0].astIpv4Route[1];
    route.ucState = 1;
    samples::storeIpv4(route.aucAddr, "10.0.0.0");
    samples::storeIpv4(route.aucMask, "255.0.0.0");
    const auto checked = [&record](const std::vector<GivenOption> &given) {
        const LanChange change = buildLanChange(1, given);
        return checkSegments({&change, 1}, samples::interfaces(), record, NW_WIFI_ADDR_S{});
    };

    EXPECT_EQ(checked({{"--ipv4", "10.9.9.9/24"}}), NW_ERR_IPV4_IN_ROUTE2);
    EXPECT_EQ(checked({{"--ipv4-route1", "10.9.9.0/24,192.168.20.9"}}), NW_ERR_IPV4_ROUTE1);

    /* The other port's own IPv4 is off: only the check of its routes still finds the address. */
    record.astPort[0].ucIpv4Enable = 0;
    EXPECT_EQ(checked({{"--ipv4", "10.9.9.9/24"}}), NW_ERR_IPV4_ROUTE2);
}

} // namespace
} // namespace nwctl
