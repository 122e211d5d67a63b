// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* DNS settings of a port. The entry of a request is laid out like that of the record. */
#include "network_mng/settings.h"
#include "settings/detail/rows.hpp"

namespace bmc::settings {

namespace {

constexpr Word modeWords[] = {
    {"disabled", 0}, {"manual", 1}, {"auto", 2, "is stored, but brings no servers"}};

/* clang-format off */
constexpr Kind modeKind{.shape = Shape::words, .words = modeWords};
constexpr Kind domainKind{.shape = Shape::domain, .valueName = "DOMAIN|off", .unset = "off"};

#define PART(name, bit, member, isValid, refusal) \
    {part(name, 0, bit, PLACE(NW_DNS_PORT_S, member), PLACE(NW_DNS_PORT_S, member), isValid, Result::refusal)}

constexpr Setting dnsRows[] = {
    {Section::dns, "ipv4-mode",    {"IPv4 mode", "ipv4Mode"},       "where the IPv4 DNS settings come from", &modeKind,      PART("IPv4 DNS mode",     0x0001, ucIpv4DnsMode,       ofKind,      badDnsMode)},
    {Section::dns, "ipv4-domain",  {"IPv4 domain", "ipv4Domain"},   "IPv4 DNS domain suffix",                &domainKind,    PART("IPv4 DNS domain",   0x0002, szIpv4DnsDomain,     isDomain,    badDnsDomain)},
    {Section::dns, "ipv4-server1", {"IPv4 servers", "ipv4Servers"}, "first IPv4 DNS server",                 &addressV4Kind, PART("IPv4 DNS server 1", 0x0004, aucIpv4DnsServer[0], isAddressV4, badDnsServer)},
    {Section::dns, "ipv4-server2", {"IPv4 servers", "ipv4Servers"}, "second IPv4 DNS server",                &addressV4Kind, PART("IPv4 DNS server 2", 0x0008, aucIpv4DnsServer[1], isAddressV4, badDnsServer)},
    {Section::dns, "ipv4-server3", {"IPv4 servers", "ipv4Servers"}, "third IPv4 DNS server",                 &addressV4Kind, PART("IPv4 DNS server 3", 0x0010, aucIpv4DnsServer[2], isAddressV4, badDnsServer)},
    {Section::dns, "ipv6-mode",    {"IPv6 mode", "ipv6Mode"},       "where the IPv6 DNS settings come from", &modeKind,      PART("IPv6 DNS mode",     0x0100, ucIpv6DnsMode,       ofKind,      badDnsMode)},
    {Section::dns, "ipv6-domain",  {"IPv6 domain", "ipv6Domain"},   "IPv6 DNS domain suffix",                &domainKind,    PART("IPv6 DNS domain",   0x0200, szIpv6DnsDomain,     isDomain,    badDnsDomain)},
    {Section::dns, "ipv6-server1", {"IPv6 servers", "ipv6Servers"}, "first IPv6 DNS server",                 &addressV6Kind, PART("IPv6 DNS server 1", 0x0400, aucIpv6DnsServer[0], isAddressV6, badDnsServer)},
    {Section::dns, "ipv6-server2", {"IPv6 servers", "ipv6Servers"}, "second IPv6 DNS server",                &addressV6Kind, PART("IPv6 DNS server 2", 0x0800, aucIpv6DnsServer[1], isAddressV6, badDnsServer)},
    {Section::dns, "ipv6-server3", {"IPv6 servers", "ipv6Servers"}, "third IPv6 DNS server",                 &addressV6Kind, PART("IPv6 DNS server 3", 0x1000, aucIpv6DnsServer[2], isAddressV6, badDnsServer)},
};
#undef PART
/* clang-format on */

} // namespace

std::span<const Setting> dnsSettings()
{
    return dnsRows;
}

} // namespace bmc::settings
