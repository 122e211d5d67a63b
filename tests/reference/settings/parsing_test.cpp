// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Texts on a command line that are no values. */
#include <gtest/gtest.h>

#include "fake_matchers.hpp"
#include "samples.hpp"

namespace bmc::settings {

namespace {

struct Row {
    const char *name;
    Section section;
    const char *key;
    std::string text;
    std::string reason;
};

using enum Section;
const std::string subnetReason = "expected ADDR/LEN, on, off or none";
const std::string routeReason = "expected DEST/LEN,GATEWAY of the family or off";
const std::string headerReason = "expected TTL,FLAGS,TOS with a number from 0 to 255 each";
const std::string noPrefix = "the prefix length is missing, expected ADDR/LEN";
const std::string badPrefix4 = "the prefix length is not a number from 1 to 32";
const std::string badPrefix6 = "the prefix length is not a number from 1 to 128";
const std::string badAddress = "expected an address of the family or off";
const std::string shortMask = "the first byte of a mask is 255, or the mask is 0.0.0.0";
const std::string badName = "a host name is made of letters, digits and inner hyphens";
const std::string badDomain =
    "a domain is made of two labels or more, with points between them: "
    "letters, digits and inner hyphens, 63 characters a label, 255 in all";

/* clang-format off */
const Row misused[] = {
    {"Mode",             mode, "mode", "bonded",                "expected separate or active-standby"},
    {"Switchover",       switchover, "switchover", "1",         "expected off or on"},
    {"NameEmpty",        hostName, "name", "",                  "expected a name"},
    {"WorkMode",         lldp, "work-mode", "both",             "expected tx, rx or txrx"},
    {"Speed",            an, "speed", "25",                     "expected 10, 100 or 1000"},
    {"DnsMode",          dns, "ipv4-mode", "dhcp",              "expected disabled, manual or auto"},
    {"Lan",              lan, "lan", "yes",                     "expected off or on"},
    {"LanEmpty",         lan, "lan", "",                        "expected off or on"},
    {"Ipv4Text",         lan, "ipv4", "host/24",                subnetReason},
    {"Ipv4Empty",        lan, "ipv4", "",                       subnetReason},
    {"Ipv4WrongFamily",  lan, "ipv4", "2001:db8::1/64",         subnetReason},
    {"Ipv4NoPrefix",     lan, "ipv4", "10.0.0.2",               noPrefix},
    {"Ipv4EmptyPrefix",  lan, "ipv4", "10.0.0.2/",              badPrefix4},
    {"Ipv4ZeroPrefix",   lan, "ipv4", "10.0.0.2/0",             badPrefix4},
    {"Ipv4LongPrefix",   lan, "ipv4", "10.0.0.2/33",            badPrefix4},
    {"Ipv4Mask",         lan, "ipv4", "10.0.0.2/255.0.0.0",     badPrefix4},
    {"Ipv4Zero",         lan, "ipv4", std::string("10.0.0.2\0/8", 11), subnetReason},
    {"Ipv4Gateway",      lan, "ipv4-gateway", "router",         badAddress},
    {"Ipv4Gateway6",     lan, "ipv4-gateway", "fe80::1",        badAddress},
    {"Ipv4Origin",       lan, "ipv4-origin", "auto",            "expected static or dhcp"},
    {"Ipv6Text",         lan, "ipv6", "x/64",                   subnetReason},
    {"Ipv6NoPrefix",     lan, "ipv6", "2001:db8::1",            noPrefix},
    {"Ipv6ZeroPrefix",   lan, "ipv6", "2001:db8::1/0",          badPrefix6},
    {"Ipv6LongPrefix",   lan, "ipv6", "2001:db8::1/129",        badPrefix6},
    {"Ipv6Gateway",      lan, "ipv6-gateway", "10.0.0.1",       badAddress},
    {"Ipv6Origin",       lan, "ipv6-origin", "auto",            "expected static, dhcp or slaac"},
    {"Route4Empty",      lan, "ipv4-route1", "",                routeReason},
    {"Route4NoGateway",  lan, "ipv4-route1", "10.0.0.0/8",      routeReason},
    {"Route4BadGateway", lan, "ipv4-route2", "10.0.0.0/8,x",    routeReason},
    {"Route4ThreeParts", lan, "ipv4-route1", "10.0.0.0/8,10.9.9.9,1", routeReason},
    {"Route4NoPrefix",   lan, "ipv4-route2", "10.0.0.0,192.168.20.9", noPrefix},
    {"Route4LongPrefix", lan, "ipv4-route1", "10.0.0.0/33,192.168.20.9", badPrefix4},
    {"Route4Family",     lan, "ipv4-route1", "2001:db8::/48,192.168.20.9", routeReason},
    {"Route6Family",     lan, "ipv6-route1", "2001:db8::/48,192.168.20.9", routeReason},
    {"Route6LongPrefix", lan, "ipv6-route2", "2001:db8::/129,fe80::1", badPrefix6},
    {"VlanZero",         lan, "vlan", "0",                      "expected off or a number from 1 to 4094"},
    {"VlanLarge",        lan, "vlan", "4095",                   "expected off or a number from 1 to 4094"},
    {"VlanText",         lan, "vlan", "on",                     "expected off or a number from 1 to 4094"},
    {"VlanKept",         lan, "vlan", "off,30",                 "expected off or a number from 1 to 4094"},
    {"VlanPriority",     lan, "vlan-priority", "8",             "expected a number from 0 to 7"},
    {"HopLimit",         lan, "hop-limit", "-1",                "expected a number from 0 to 255"},
    {"HopLimitHuge",     lan, "hop-limit", "4294967297",        "expected a number from 0 to 255"},
    {"HeaderTwo",        lan, "ipv4-header", "64,0",            headerReason},
    {"HeaderFour",       lan, "ipv4-header", "64,0,0,0",        headerReason},
    {"HeaderLarge",      lan, "ipv4-header", "64,0,256",        headerReason},
    {"Arp",              lan, "arp-control", "all",             "expected none, announcements, responses or both"},
};

const Row refused[] = {
    {"Ipv4Loopback",     lan, "ipv4", "127.0.0.1/8",            "a loopback address"},
    {"Ipv4Multicast",    lan, "ipv4", "224.0.0.1/24",           "a multicast or reserved address"},
    {"Ipv4Zero",         lan, "ipv4", "0.0.0.0/24",             "the all-zero address"},
    {"Ipv4NetworkZero",  lan, "ipv4", "0.1.2.3/24",             "an address of network 0"},
    {"Ipv4ShortMask",    lan, "ipv4", "10.0.0.2/7",             shortMask},
    {"Ipv4Gateway",      lan, "ipv4-gateway", "224.0.0.1",      "a multicast or reserved address"},
    {"Ipv4GatewayZero",  lan, "ipv4-gateway", "0.0.0.0",        "the all-zero address"},
    {"Route4Loopback",   lan, "ipv4-route1", "127.0.0.0/8,192.168.20.9", "a loopback address"},
    {"Route4Default",    lan, "ipv4-route1", "0.0.0.0/8,192.168.20.9", "the all-zero address"},
    {"Route4ShortMask",  lan, "ipv4-route2", "10.0.0.0/7,192.168.20.9", shortMask},
    {"Route4Gateway",    lan, "ipv4-route2", "10.0.0.0/8,224.0.0.1", "a multicast or reserved address"},
    {"Route6LinkLocal",  lan, "ipv6-route1", "fe80::/64,fe80::1", "a link-local address"},
    {"Route6Gateway",    lan, "ipv6-route2", "2001:db8:a::/48,ff02::1", "a multicast address"},
    {"Ipv6LinkLocal",    lan, "ipv6", "fe80::1/64",             "a link-local address"},
    {"Ipv6Multicast",    lan, "ipv6", "ff02::1/64",             "a multicast address"},
    {"Ipv6Loopback",     lan, "ipv6", "::1/128",                "the loopback address"},
    {"Ipv6Gateway",      lan, "ipv6-gateway", "::",             "the all-zero address"},
    {"DnsServer",        dns, "ipv6-server1", "fe80::1",        "a link-local address"},
    {"DnsDomain",        dns, "ipv4-domain", "net",             badDomain},
    {"DnsDomainLong",    dns, "ipv4-domain", std::string(300, 'a'), badDomain},
    {"DnsDomainZero",    dns, "ipv4-domain", std::string("a.b\0c", 5), badDomain},
    {"Name",             hostName, "name", "-bmc",              badName},
    {"NameZero",         hostName, "name", std::string("b\0c", 3), badName},
    {"NameLong",         hostName, "name", std::string(64, 'a'), "longer than 63 characters"},
    {"BmcName",          hostName, "bmc-name", "b.c",           badName},
    {"BmcNameZero",      hostName, "bmc-name", std::string("b\0c", 3), badName},
};
/* clang-format on */

void expectBad(const Row &row, bool isRefused)
{
    try {
        changeOf(row.section, row.key, 0, row.text);
        FAIL() << "no BadValue";
    } catch (const BadValue &bad) {
        EXPECT_EQ(&bad.setting(), &settingAt(row.section, row.key));
        EXPECT_EQ(bad.text(), row.text);
        EXPECT_EQ(bad.what(), row.reason);
        EXPECT_EQ(bad.isRefused(), isRefused);
    }
}

class Misused : public ::testing::TestWithParam<Row> {};
class Refused : public ::testing::TestWithParam<Row> {};

} // namespace

TEST_P(Misused, TextIsNotUnderstood)
{
    expectBad(GetParam(), false);
}
INSTANTIATE_TEST_SUITE_P(Rows, Misused, ::testing::ValuesIn(misused), fake::RowName());

TEST_P(Refused, TextIsUnderstoodAndRefusedByTheLibrarysCheck)
{
    expectBad(GetParam(), true);
}
INSTANTIATE_TEST_SUITE_P(Rows, Refused, ::testing::ValuesIn(refused), fake::RowName());

} // namespace bmc::settings
