// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "dns.hpp"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "address.hpp"
#include "dns_request.hpp"
#include "instance_lock.hpp"
#include "network_mng/check.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "plan.hpp"
#include "refusal.hpp"
#include "system_files.hpp"

namespace bmc::manager {

namespace {

enum Mode : std::uint8_t { disabled = 0, manual = 1, automatic = 2 };

bool isMode(const std::uint8_t *value)
{
    return *value <= automatic;
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

void addServer(std::vector<std::string> &servers, const Address &server)
{
    if (!isUnset(server)) {
        servers.push_back(textOf(server));
    }
}

void addOnce(std::vector<std::string> &domains, const char *domain)
{
    if (*domain != '\0' && std::ranges::find(domains, domain) == domains.end()) {
        domains.emplace_back(domain);
    }
}

/* What the resolver shall use: the manual settings of the ports that are served. An automatic
 * family is the DHCP client's and leaves no line here. */
struct Resolver {
    std::vector<std::string> servers;
    std::vector<std::string> domains;

    void add(const NW_DNS_PORT_S &entry)
    {
        if (entry.ucIpv4DnsMode == manual) {
            for (const auto &server : entry.aucIpv4DnsServer) {
                addServer(servers, ipv4(server));
            }
            addOnce(domains, entry.szIpv4DnsDomain);
        }
        if (entry.ucIpv6DnsMode == manual) {
            for (const auto &server : entry.aucIpv6DnsServer) {
                addServer(servers, ipv6(server));
            }
            addOnce(domains, entry.szIpv6DnsDomain);
        }
    }

    std::string text() const
    {
        std::ostringstream lines;
        lines << "# Written by nwmanagerd.\n";
        for (const std::string &server : servers) {
            lines << "nameserver " << server << '\n';
        }
        for (std::size_t index = 0; index < domains.size(); index++) {
            lines << (index == 0 ? "search " : " ") << domains[index];
        }
        lines << (domains.empty() ? "" : "\n");
        return lines.str();
    }
};

} // namespace

void editDns(Draft &draft, Payload payload)
{
    const auto request = contentOf<DnsRequest>(payload);
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const unsigned bits = request.bits[port];
        if (bits == 0) {
            continue;
        }
        draft.modules |= NW_LOG_DNS;
        draft.details.emplace(NW_LOG_DNS, port);
        require(isServed(draft.after.state, port), Result::portNotServed,
                "port " + std::to_string(port));
        editPort(bits, request.ports[port], draft.after.dns.astPort[port]);
    }
}

void applyDns(const Context &context)
{
    const Configuration &wanted = context.draft.after;
    Resolver resolver;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        if (isServed(wanted.state, port)) {
            resolver.add(wanted.dns.astPort[port]);
        }
    }
    const std::filesystem::path file = stateDirectory() / "resolv.conf";
    restoreLater(file, context.transaction);
    replaceFile(file, resolver.text());
}

} // namespace bmc::manager
