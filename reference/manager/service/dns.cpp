// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include "dns_request.hpp"
#include "network_mng/check.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint8_t lastMode = 2; /* automatic */

bool isMode(const std::uint8_t *value)
{
    return *value <= lastMode;
}

bool isServerV4(const std::uint8_t *value)
{
    return LIB_NW_CheckIPIsZero(value, NW_IPV4_SIZE) != 0 ||
           LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, value) != 0;
}

bool isServerV6(const std::uint8_t *value)
{
    return LIB_NW_CheckIPIsZero(value, NW_IPV6_SIZE) != 0 ||
           LIB_NW_CheckV6IsValid(NW_V6CHK_ALL, value) != 0;
}

bool isDomain(const std::uint8_t *value)
{
    const auto *text = reinterpret_cast<const char *>(value);
    return strnlen(text, NW_DNS_DOMAIN_SIZE) < NW_DNS_DOMAIN_SIZE &&
           LIB_NW_DomainValidityCheck(text) != 0;
}

struct Field {
    const char *name;
    unsigned bit;
    std::size_t at; /* in NW_DNS_PORT_S, of the request and of the record */
    std::size_t size;
    bool (*isValid)(const std::uint8_t *value);
    Result refusal;
};

/* clang-format off */
#define AT(field) offsetof(NW_DNS_PORT_S, field)
constexpr Field fields[] = {
    {"IPv4 DNS mode",     0x0001, AT(ucIpv4DnsMode),       1,                  isMode,     Result::badDnsMode},
    {"IPv4 DNS domain",   0x0002, AT(szIpv4DnsDomain),     NW_DNS_DOMAIN_SIZE, isDomain,   Result::badDnsDomain},
    {"IPv4 DNS server 1", 0x0004, AT(aucIpv4DnsServer),    4,                  isServerV4, Result::badDnsServer},
    {"IPv4 DNS server 2", 0x0008, AT(aucIpv4DnsServer[1]), 4,                  isServerV4, Result::badDnsServer},
    {"IPv4 DNS server 3", 0x0010, AT(aucIpv4DnsServer[2]), 4,                  isServerV4, Result::badDnsServer},
    {"IPv6 DNS mode",     0x0100, AT(ucIpv6DnsMode),       1,                  isMode,     Result::badDnsMode},
    {"IPv6 DNS domain",   0x0200, AT(szIpv6DnsDomain),     NW_DNS_DOMAIN_SIZE, isDomain,   Result::badDnsDomain},
    {"IPv6 DNS server 1", 0x0400, AT(aucIpv6DnsServer),    16,                 isServerV6, Result::badDnsServer},
    {"IPv6 DNS server 2", 0x0800, AT(aucIpv6DnsServer[1]), 16,                 isServerV6, Result::badDnsServer},
    {"IPv6 DNS server 3", 0x1000, AT(aucIpv6DnsServer[2]), 16,                 isServerV6, Result::badDnsServer},
};
#undef AT
/* clang-format on */

void editPort(unsigned bits, const NW_DNS_PORT_S &request, NW_DNS_PORT_S &record)
{
    const auto *from = reinterpret_cast<const std::uint8_t *>(&request);
    auto *to = reinterpret_cast<std::uint8_t *>(&record);
    for (const Field &field : fields) {
        if ((bits & field.bit) != 0) {
            require(field.isValid(from + field.at), field.refusal, field.name);
            std::memcpy(to + field.at, from + field.at, field.size);
        }
        bits &= ~field.bit;
    }
    require(bits == 0, Result::unknownField, "DNS");
}

} // namespace

void editDns(Change &change, Payload payload)
{
    const auto request = contentOf<DnsRequest>(payload);
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const unsigned bits = request.bits[port];
        if (bits == 0) {
            continue;
        }
        change.scope.select(NW_LOG_DNS, port);
        require(isServed(change.after.state, port), Result::portNotServed,
                "port " + std::to_string(port));
        editPort(bits, request.ports[port], change.after.dns.astPort[port]);
    }
}

} // namespace bmc::manager
