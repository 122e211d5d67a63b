// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/resolver.hpp"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <vector>

#include "common/address.hpp"
#include "network_mng/settings.h"

namespace bmc::manager {

namespace {

constexpr std::uint8_t manualMode = 1;

struct Resolver {
    std::vector<std::string> servers;
    std::vector<std::string> domains;

    void addServer(const Address &server)
    {
        if (!isUnset(server)) {
            servers.push_back(textOf(server));
        }
    }

    void addDomain(const char *field)
    {
        const std::string domain(field, strnlen(field, NW_DNS_DOMAIN_SIZE));
        if (!domain.empty() && std::ranges::find(domains, domain) == domains.end()) {
            domains.push_back(domain);
        }
    }

    void add(const NW_DNS_PORT_S &entry)
    {
        if (entry.ucIpv4DnsMode == manualMode) {
            for (const auto &server : entry.aucIpv4DnsServer) {
                addServer(ipv4(server));
            }
            addDomain(entry.szIpv4DnsDomain);
        }
        if (entry.ucIpv6DnsMode == manualMode) {
            for (const auto &server : entry.aucIpv6DnsServer) {
                addServer(ipv6(server));
            }
            addDomain(entry.szIpv6DnsDomain);
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

std::string resolverText(const settings::Configuration &configuration)
{
    Resolver resolver;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        if (settings::isServed(configuration.state, port)) {
            resolver.add(configuration.dns.astPort[port]);
        }
    }
    return resolver.text();
}

} // namespace bmc::manager
