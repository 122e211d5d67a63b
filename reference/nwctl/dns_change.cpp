// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "dns_change.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"
#include "network_mng/check.h"
#include "verdict.hpp"

namespace nwctl {

namespace {

/* Settings of a family; the bits of IPv6 stand one byte higher. */
enum Setting : std::uint16_t { modeBit = 0x01, domainBit = 0x02, firstServerBit = 0x04 };
constexpr unsigned ipv6Shift = 8;

constexpr Word modeWords[] = {{"disabled", 0}, {"manual", 1}, {"auto", 2}};

struct Ipv4Family {
    using Address = Ipv4;
    static constexpr unsigned shift = 0;
    static constexpr auto parse = parseIpv4;
    static std::uint8_t &mode(DnsChange &change)
    {
        return change.fields.ucIpv4DnsMode;
    }
    static std::span<char> domain(DnsChange &change)
    {
        return change.fields.szIpv4DnsDomain;
    }
    static std::span<std::uint8_t> server(DnsChange &change, unsigned slot)
    {
        return change.fields.aucIpv4DnsServer[slot];
    }
};

struct Ipv6Family {
    using Address = Ipv6;
    static constexpr unsigned shift = ipv6Shift;
    static constexpr auto parse = parseIpv6;
    static std::uint8_t &mode(DnsChange &change)
    {
        return change.fields.ucIpv6DnsMode;
    }
    static std::span<char> domain(DnsChange &change)
    {
        return change.fields.szIpv6DnsDomain;
    }
    static std::span<std::uint8_t> server(DnsChange &change, unsigned slot)
    {
        return change.fields.aucIpv6DnsServer[slot];
    }
};

template <typename Family>
void setMode(const GivenOption &given, DnsChange &change)
{
    Family::mode(change) = wordValue(given, modeWords);
    mark(given, change.bits, modeBit << Family::shift);
}

template <typename Family>
void setDomain(const GivenOption &given, DnsChange &change)
{
    if (given.value != "off") {
        refuseFor(given, whyNotText("domain", given.value));
        std::ranges::copy(given.value, Family::domain(change).begin());
    }
    mark(given, change.bits, domainBit << Family::shift);
}

template <typename Family, unsigned slot>
void setServer(const GivenOption &given, DnsChange &change)
{
    if (given.value != "off") {
        const auto address = Family::parse(given.value);
        if (!address) {
            misused(given, "expected an address of the family or off");
        }
        refuseFor(given, whyNotHost(*address));
        std::ranges::copy(*address, Family::server(change, slot).begin());
    }
    mark(given, change.bits, (firstServerBit << slot) << Family::shift);
}

/* clang-format off */
constexpr DnsOption rows[] = {
    {"--ipv4-mode",    "disabled|manual|auto", "where the IPv4 DNS settings come from", Subject::ipv4, setMode<Ipv4Family>},
    {"--ipv4-domain",  "DOMAIN|off",           "IPv4 DNS domain suffix",                Subject::ipv4, setDomain<Ipv4Family>},
    {"--ipv4-server1", "ADDR|off",             "first IPv4 DNS server",                 Subject::ipv4, setServer<Ipv4Family, 0>},
    {"--ipv4-server2", "ADDR|off",             "second IPv4 DNS server",                Subject::ipv4, setServer<Ipv4Family, 1>},
    {"--ipv4-server3", "ADDR|off",             "third IPv4 DNS server",                 Subject::ipv4, setServer<Ipv4Family, 2>},
    {"--ipv6-mode",    "disabled|manual|auto", "where the IPv6 DNS settings come from", Subject::ipv6, setMode<Ipv6Family>},
    {"--ipv6-domain",  "DOMAIN|off",           "IPv6 DNS domain suffix",                Subject::ipv6, setDomain<Ipv6Family>},
    {"--ipv6-server1", "ADDR|off",             "first IPv6 DNS server",                 Subject::ipv6, setServer<Ipv6Family, 0>},
    {"--ipv6-server2", "ADDR|off",             "second IPv6 DNS server",                Subject::ipv6, setServer<Ipv6Family, 1>},
    {"--ipv6-server3", "ADDR|off",             "third IPv6 DNS server",                 Subject::ipv6, setServer<Ipv6Family, 2>},
};
/* clang-format on */

constexpr std::uint32_t families[] = {0, 1}; /* as the library's check counts them */

} // namespace

std::span<const DnsOption> dnsOptions()
{
    return rows;
}

std::span<const Word> dnsModeWords()
{
    return modeWords;
}

void addToRequest(unsigned port, const DnsChange &change, DnsRequest &request)
{
    for (const std::uint32_t family : families) {
        const bool touched = ((change.bits >> (family * ipv6Shift)) & 0xFFU) != 0;
        if (touched && LIB_DnsCheckReqIndexField(port, family) == 0) {
            throw Failure(Exit::refused, "PORT", std::to_string(port),
                          "there are no DNS settings for the port", NW_ERR_OUT_OF_RANGE);
        }
    }
    request.bits[port] = change.bits;
    request.ports[port] = change.fields;
}

} // namespace nwctl
