// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/change.hpp"

#include <gtest/gtest.h>

#include "fake_matchers.hpp"
#include "network_mng/lan.h"
#include "samples.hpp"

namespace bmc::settings {

namespace {

struct Option {
    const char *key;
    const char *text;
};

Change changeWith(const std::vector<Option> &options, Section section = Section::lan)
{
    Change change;
    for (const Option &option : options) {
        assign(change, settingAt(section, option.key), 1, option.text);
    }
    return change;
}

struct Bits {
    const char *name;
    std::vector<Option> options;
    ChangeBits bits;
};

/* clang-format off */
const Bits rows[] = {
    {"Switch",       {{"ipv4", "on"}},                              {NW_LAN_BIT_IPV4_ENABLE, 0}},
    {"SwitchOff",    {{"ipv6", "off"}},                             {NW_LAN_BIT_IPV6_ENABLE, 0}},
    {"AddressToo",   {{"ipv4", "on"}, {"ipv4", "10.0.0.2/8"}},      {NW_LAN_BIT_IPV4_ENABLE | NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK, 0}},
    {"NoAddress",    {{"ipv6", "none"}},                            {NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX, 0}},
    {"VlanOff",      {{"vlan", "off"}},                             {NW_LAN_BIT_VLAN_ENABLE, 0}},
    {"Vlan",         {{"vlan", "30"}},                              {NW_LAN_BIT_VLAN_ENABLE | NW_LAN_BIT_VLAN_ID, 0}},
    {"RouteOff",     {{"ipv4-route2", "off"}},                      {0, 0x38}},
};
/* clang-format on */

class Assigned : public ::testing::TestWithParam<Bits> {};

} // namespace

TEST_P(Assigned, SelectsWhatTheTextIsAbout)
{
    const Change change = changeWith(GetParam().options);
    ASSERT_EQ(change.size(), 1U);
    EXPECT_EQ(change[0].bits, GetParam().bits);
    EXPECT_EQ(change[0].port, 1U);
    EXPECT_EQ(change[0].request.size(), sizeof(NW_LAN_SET_PORT_S));
}
INSTANTIATE_TEST_SUITE_P(Rows, Assigned, ::testing::ValuesIn(rows), fake::RowName());

TEST(Change, HasOneValueForASetting)
{
    for (const auto &pair : {std::vector<Option>{{"ipv4", "10.0.0.2/8"}, {"ipv4", "10.0.0.3/8"}},
                             {{"ipv4-enabled", "on"}, {"ipv4", "off"}},
                             {{"vlan", "off"}, {"vlan", "30"}}}) {
        try {
            changeWith(pair);
            ADD_FAILURE() << pair[1].key;
        } catch (const BadValue &bad) {
            EXPECT_STREQ(bad.what(), "contradicts another value for the same setting");
            EXPECT_STREQ(bad.setting().key, pair[1].key);
            EXPECT_EQ(bad.text(), pair[1].text);
        }
    }
}

TEST(Change, AValueThatContradictsLeavesItAsItWas)
{
    Change change = changeWith({{"vlan", "off"}});
    const Change before = change;
    EXPECT_THROW(assign(change, settingAt(Section::lan, "vlan"), 1, "30"), BadValue);
    EXPECT_EQ(change[0].bits, before[0].bits);
    EXPECT_EQ(change[0].request, before[0].request);
}

TEST(Change, ANumberHasToFitItsField)
{
    Change change;
    assignNumber(change, settingAt(Section::lan, "arp-interval"), 1, 255);
    EXPECT_EQ(change[0].bits, (ChangeBits{NW_LAN_BIT_ARP_INTERVAL, 0}));
    EXPECT_EQ(change[0].request.at(offsetof(NW_LAN_SET_PORT_S, ucArpInterval)), 255);
    try {
        assignNumber(change, settingAt(Section::lan, "arp-interval"), 1, 256);
        ADD_FAILURE() << "not refused";
    } catch (const Refusal &refusal) {
        EXPECT_EQ(refusal.code(), static_cast<NW_RESULT>(Result::badArpFlags));
        EXPECT_EQ(refusal.port(), 1U);
        EXPECT_STREQ(refusal.setting()->key, "arp-interval");
    }
}

struct Blame {
    std::uint32_t code;
    std::vector<Option> options;
    const char *key; /* null: nobody */
};

constexpr std::uint32_t of(Result result)
{
    return static_cast<std::uint32_t>(result);
}

const Blame blames[] = {
    {NW_ERR_IPV4_SAME_SEGMENT,
     {{"ipv6", "on"}, {"ipv4-gateway", "10.0.0.1"}, {"ipv4", "10.0.0.2/8"}},
     "ipv4"},
    {NW_ERR_IPV6_SAME_SEGMENT, {{"ipv6", "on"}, {"ipv4", "10.0.0.2/8"}}, "ipv6-enabled"},
    {NW_ERR_IPV6_SAME_SEGMENT, {{"ipv6-origin", "slaac"}}, "ipv6-origin"},
    {NW_ERR_RPC_TRANSPORT, {{"ipv4", "10.0.0.2/8"}}, nullptr},
    {of(Result::gatewayOutside),
     {{"ipv4", "10.0.0.2/8"}, {"ipv4-gateway", "11.0.0.1"}},
     "ipv4-gateway"},
    {of(Result::gatewayOutside), {{"lan", "on"}, {"ipv4", "10.0.0.2/8"}}, "ipv4"},
    {NW_ERR_IPV4_ROUTE2,
     {{"ipv4", "10.0.0.2/8"}, {"ipv4-route2", "11.0.0.0/8,10.0.0.1"}},
     "ipv4-route2"},
    {NW_ERR_IPV4_IN_ROUTE1, {{"ipv4-route1", "11.0.0.0/8,10.0.0.1"}}, "ipv4-route1"},
    {NW_ERR_IPV4_ROUTE1, {{"ipv4", "on"}, {"ipv4", "10.0.0.2/8"}}, "ipv4"},
    {NW_ERR_IPV6_HOLDS_GATEWAY2, {{"ipv6-route2", "2001:db8::/32,fe80::1"}}, "ipv6-route2"},
    {of(Result::badIpv4Route),
     {{"ipv4", "10.0.0.2/8"}, {"ipv4-route2", "11.0.0.0/8,10.0.0.1"}},
     "ipv4-route2"},
    {of(Result::badVlanId), {{"lan", "on"}, {"vlan", "7"}}, "vlan"},
    {of(Result::done), {{"hop-limit", "7"}}, nullptr},
};

TEST(Blame, FallsOnTheSettingThatTheCodeIsMostLikelyDueTo)
{
    for (const Blame &row : blames) {
        const auto found = blamed(row.code, changeWith(row.options));
        EXPECT_STREQ(found ? found->setting->key : nullptr, row.key) << describe(row.code).name;
        EXPECT_EQ(found ? found->port : 1, 1U);
    }
}

TEST(Blame, OfAConflictFallsOnTheModeThatBringsItAbout)
{
    const Change change = changeOf(Section::mode, "mode", 0, "separate");
    EXPECT_STREQ(blamed(NW_ERR_IPV4_SAME_SEGMENT, change)->setting->key, "mode");
    EXPECT_FALSE(blamed(NW_ERR_DB_READ, change));
}

} // namespace bmc::settings
