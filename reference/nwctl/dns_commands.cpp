// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "dns": DNS settings of the ports. */
#include "command_kinds.hpp"
#include "dns_change.hpp"
#include "facts.hpp"
#include "stored.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

Sending check(const std::string &port, const DnsChange &change, const Given &given)
{
    const NamedPort named = namedPort(readInterfaces(), port);
    DnsRequest request{};
    addToRequest(named.index, change, request);

    Sending sending;
    sending.what = "DNS settings";
    sending.commands = {NW_CMD_SET_DNS};
    sending.module = NW_LOG_DNS;
    sending.port = named;
    sending.settings = given;
    sending.send = [request](NW_OPER_LOG_S &log) { return LIB_NW_SetAllDnsConf(&request, &log); };
    return sending;
}

/* Mode, domain and the servers that are set, of one family. */
void addFamily(Facts &facts, const std::string &label, const std::string &key, std::uint8_t mode,
               const std::string &domain,
               const char (&servers)[NW_DNS_SERVER_COUNT][NW_ADDR_TEXT_SIZE])
{
    Json texts = Json::array();
    for (const auto &server : servers) {
        texts.push_back(textOrNull(boundedText(server)));
    }
    facts.push_back({label + " mode", key + "Mode", wordName(dnsModeWords(), mode)});
    facts.push_back({label + " domain", key + "Domain", textOrNull(domain)});
    facts.push_back({label + " servers", key + "Servers", texts});
}

Facts portFacts(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port,
                const NW_DNS_INFO_PORT_S &info)
{
    Facts facts = portHeading(interfaces, port);
    addFamily(facts, "IPv4", "ipv4", info.ucIpv4DnsMode, boundedText(info.szIpv4DnsDomain),
              info.szIpv4DnsServer);
    addFamily(facts, "IPv6", "ipv6", info.ucIpv6DnsMode, boundedText(info.szIpv6DnsDomain),
              info.szIpv6DnsServer);
    return facts;
}

void show(std::span<const unsigned> ports, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    NW_DNS_INFO_S info{};
    requireRead(LIB_NW_GetAllDnsInfo(&info), "the DNS settings");

    std::vector<Facts> shown;
    for (const unsigned port : ports) {
        requireServed(interfaces, port);
        shown.push_back(portFacts(interfaces, port, info.astPort[port]));
    }
    printPorts(session, shown);
}

} // namespace

void addDnsCommands(std::vector<Command> &commands)
{
    commands.push_back(
        portShowCommand({"dns", "show", "Show the DNS settings of a port", "dns show eth1"}, show));
    commands.push_back(portChangeCommand<DnsChange>(
        {"dns", "set", "Change DNS settings of a port",
         "dns set eth1 --ipv4-mode manual --ipv4-server1 192.168.20.53"},
        dnsOptions(), check));
}

} // namespace nwctl
