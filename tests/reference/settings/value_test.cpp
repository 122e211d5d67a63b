// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Each setting: set by its text, found in the record, and told again. */
#include "settings/value.hpp"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "fake_matchers.hpp"
#include "samples.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Stored {
    std::size_t at; /* in the section's entry */
    Bytes bytes;
};

struct Row {
    const char *name;
    Section section;
    const char *key;
    const char *text;
    std::vector<Stored> stored;
    Json value;
};

Bytes text(const char *characters)
{
    return {characters, characters + std::strlen(characters) + 1};
}

const Bytes v6{0x20, 1, 0xD, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 7};
const Bytes router{0xFE, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9};

/* clang-format off */
const Row rows[] = {
    {"Mode",         Section::mode,       "mode",          "active-standby", {{0, {1}}}, "active-standby"},
    {"Switchover",   Section::switchover, "switchover",    "on",             {{1, {1}}}, true},

    {"HostNameMode", Section::hostName,   "mode",          "auto",           {{0, {1}}, {68, text("bmc-000000000000")}}, "auto"},
    {"HostName",     Section::hostName,   "name",          "bmc-1",          {{68, text("bmc-1")}}, "bmc-1"},
    {"BmcName",      Section::hostName,   "bmc-name",      "rack-1",         {{132, text("rack-1")}}, "rack-1"},

    {"LldpState",    Section::lldp,       "state",         "on",             {{0, {1}}}, true},
    {"LldpWorkMode", Section::lldp,       "work-mode",     "rx",             {{1, {2}}}, "rx"},

    {"Lan",          Section::lan,        "lan",           "on",             {{46, {1}}}, true},
    {"Ipv4Enabled",  Section::lan,        "ipv4-enabled",  "on",             {{49, {1}}}, true},
    {"Ipv4",         Section::lan,        "ipv4",          "10.1.2.3/20",    {{60, {10, 1, 2, 3, 255, 255, 240, 0}}}, "10.1.2.3/20"},
    {"Ipv4Gateway",  Section::lan,        "ipv4-gateway",  "10.1.2.9",       {{68, {10, 1, 2, 9}}}, "10.1.2.9"},
    {"Ipv4Origin",   Section::lan,        "ipv4-origin",   "dhcp",           {{58, {2}}}, "dhcp"},
    {"Ipv4Route1",   Section::lan,        "ipv4-route1",   "11.0.0.0/8,10.1.2.9",  {{83, {1, 11, 0, 0, 0, 255, 0, 0, 0, 10, 1, 2, 9}}}, "11.0.0.0/8,10.1.2.9"},
    {"Ipv4Route2",   Section::lan,        "ipv4-route2",   "12.0.0.0/9,10.1.2.9",  {{108, {1, 12, 0, 0, 0, 255, 128, 0, 0, 10, 1, 2, 9}}}, "12.0.0.0/9,10.1.2.9"},
    {"Ipv6Enabled",  Section::lan,        "ipv6-enabled",  "on",             {{50, {1}}}, true},
    {"Ipv6",         Section::lan,        "ipv6",          "2001:db8::7/64", {{272, v6}, {576, {64}}}, "2001:db8::7/64"},
    {"Ipv6Gateway",  Section::lan,        "ipv6-gateway",  "fe80::9",        {{544, router}}, "fe80::9"},
    {"Ipv6Origin",   Section::lan,        "ipv6-origin",   "slaac",          {{269, {3}}}, "slaac"},
    {"Ipv6Route1",   Section::lan,        "ipv6-route1",   "2001:db8::7/128,fe80::9", {{641, {1}}, {642, v6}, {658, {128}}, {659, router}}, "2001:db8::7/128,fe80::9"},
    {"Ipv6Route2",   Section::lan,        "ipv6-route2",   "2001:db8::7/128,fe80::9", {{708, {1}}, {709, v6}, {725, {128}}, {726, router}}, "2001:db8::7/128,fe80::9"},
    {"Vlan",         Section::lan,        "vlan",          "4094",           {{780, {1}}, {783, {0xFE, 0x0F}}}, 4094},
    {"VlanPriority", Section::lan,        "vlan-priority", "7",              {{785, {7}}}, 7},
    {"Ipv4Header",   Section::lan,        "ipv4-header",   "64,2,255",       {{775, {64, 2, 255}}}, "64,2,255"},
    {"HopLimit",     Section::lan,        "hop-limit",     "200",            {{778, {200}}}, 200},
    {"TrafficClass", Section::lan,        "traffic-class", "201",            {{779, {201}}}, 201},
    {"ArpControl",   Section::lan,        "arp-control",   "announcements",  {{787, {1}}}, "announcements"},
    {"ArpInterval",  Section::lan,        "arp-interval",  "255",            {{788, {255}}}, 255},
    {"ArpSuspend",   Section::lan,        "arp-suspend",   "both",           {{789, {3}}}, "both"},

    {"DnsMode4",     Section::dns,        "ipv4-mode",     "manual",         {{4, {1}}}, "manual"},
    {"DnsDomain4",   Section::dns,        "ipv4-domain",   "example.net",    {{20, text("example.net")}}, "example.net"},
    {"DnsServer41",  Section::dns,        "ipv4-server1",  "10.0.0.1",       {{5, {10, 0, 0, 1}}}, "10.0.0.1"},
    {"DnsServer42",  Section::dns,        "ipv4-server2",  "10.0.0.2",       {{9, {10, 0, 0, 2}}}, "10.0.0.2"},
    {"DnsServer43",  Section::dns,        "ipv4-server3",  "10.0.0.3",       {{13, {10, 0, 0, 3}}}, "10.0.0.3"},
    {"DnsMode6",     Section::dns,        "ipv6-mode",     "auto",           {{280, {2}}}, "auto"},
    {"DnsDomain6",   Section::dns,        "ipv6-domain",   "example.net",    {{332, text("example.net")}}, "example.net"},
    {"DnsServer61",  Section::dns,        "ipv6-server1",  "2001:db8::7",    {{281, v6}}, "2001:db8::7"},
    {"DnsServer62",  Section::dns,        "ipv6-server2",  "2001:db8::7",    {{297, v6}}, "2001:db8::7"},
    {"DnsServer63",  Section::dns,        "ipv6-server3",  "2001:db8::7",    {{313, v6}}, "2001:db8::7"},

    {"Auto",         Section::an,         "auto",          "off",            {{0, {0}}, {3, {1}}}, false},
    {"Duplex",       Section::an,         "duplex",        "half",           {{1, {0}}, {3, {1}}}, "half"},
    {"Speed",        Section::an,         "speed",         "100",            {{2, {1}}, {3, {1}}}, "100"},
};
/* clang-format on */

class EachSetting : public ::testing::TestWithParam<Row> {};

} // namespace

TEST_P(EachSetting, IsSetByItsTextAndToldAgain)
{
    const Row &row = GetParam();
    const Setting &setting = settingAt(row.section, row.key);
    const unsigned port = infoOf(row.section).portCount == 0 ? 0 : 1;
    Configuration present = sampleConfiguration();
    ASSERT_NE(valueOf(present, setting, port), row.value) << "the sample has it already";

    Configuration after =
        edited(present, changeOf(row.section, row.key, port, row.text), noWireless);
    EXPECT_EQ(valueOf(after, setting, port), row.value);
    EXPECT_EQ(textOf(setting, valueOf(after, setting, port)), row.text);

    /* Nothing else changes; a switchover exchanges names, too. */
    std::uint8_t *expected = entryOf(present, row.section, port);
    for (const Stored &stored : row.stored) {
        std::memcpy(expected + stored.at, stored.bytes.data(), stored.bytes.size());
    }
    if (row.section == Section::switchover) {
        std::swap(present.state.acIfcName[0], present.state.acIfcName[1]);
    }
    EXPECT_EQ(std::memcmp(&after, &present, sizeof(present)), 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, EachSetting, ::testing::ValuesIn(rows), fake::RowName());

TEST(EachSetting, HasARowHere)
{
    for (const Setting &setting : allSettings()) {
        const bool isTested = std::ranges::any_of(rows, [&](const Row &row) {
            return row.section == setting.section && std::string_view(row.key) == setting.key;
        });
        EXPECT_TRUE(isTested) << infoOf(setting.section).key << " " << setting.key;
    }
}

TEST(Values, AStoredByteWithoutAWordIsTold)
{
    Configuration sample = sampleConfiguration();
    const Setting &origin = settingAt(Section::lan, "ipv4-origin");
    EXPECT_EQ(valueOf(sample, origin, 0), Json());
    sample.lan.astPort[0].ucIpv4Type = 77;
    EXPECT_EQ(valueOf(sample, origin, 0), Json("unknown (77)"));
    sample.lan.astPort[0].ucLanEnable = 2;
    EXPECT_EQ(valueOf(sample, settingAt(Section::lan, "lan"), 0), Json("unknown (2)"));
}

TEST(Values, ASuspensionThatIsLiftedIsToldWhereThereIsOne)
{
    Configuration sample = sampleConfiguration();
    const Setting &suspend = settingAt(Section::lan, "arp-suspend");
    resumeArp(sample.lan.astPort[0], true);
    EXPECT_EQ(valueOf(sample, suspend, 0), Json("none"));
    putArp(sample.lan.astPort[0], {.control = 3, .interval = 0, .suspend = 2, .isResumed = 1});
    EXPECT_EQ(valueOf(sample, suspend, 0), Json("resumed,responses"));
    resumeArp(sample.lan.astPort[0], false);
    EXPECT_EQ(valueOf(sample, suspend, 0), Json("responses"));
}

TEST(Values, ALinkModeThatIsTheDriversIsNone)
{
    const Configuration sample = sampleConfiguration();
    const Setting &speed = settingAt(Section::an, "speed");
    EXPECT_EQ(valueOf(sample, speed, 0), Json());
    EXPECT_EQ(valueAt(entryOf(sample, Section::an, 0), speed), Json("1000"));
}

} // namespace bmc::settings
