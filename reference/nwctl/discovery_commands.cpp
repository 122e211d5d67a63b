// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include <sstream>

#include "addresses.hpp"
#include "commands.hpp"
#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "option_arguments.hpp"
#include "stored.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

struct ResolveArguments {
    std::string name;
    std::string preferred; /* empty: none */
};

/* The address as the system writes it. */
std::string canonicalAddress(const std::string &text)
{
    if (const auto address = parseIpv4(text)) {
        return formatAddress(*address);
    }
    if (const auto address = parseIpv6(text)) {
        return formatAddress(*address);
    }
    throw Failure(Exit::usage, "--prefer", text, "neither an IPv4 nor an IPv6 address");
}

void resolve(const ResolveArguments &arguments, Session &session)
{
    const std::string preferred =
        arguments.preferred.empty() ? "" : canonicalAddress(arguments.preferred);
    char address[NW_RESOLVED_TEXT_SIZE]{};
    const NW_RESULT result =
        LIB_NW_ParseHostnameToIP(arguments.name.c_str(), preferred.c_str(), address);
    if (result != NW_OK || *address == '\0') {
        throw Failure(Exit::notFound, "NAME", arguments.name, "the name has no address",
                      result == NW_OK ? std::nullopt : std::optional(result));
    }

    session.answer(Json{{"name", arguments.name}, {"address", address}},
                   std::string(address) + "\n");
}

void declareResolve(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<ResolveArguments>();
    app.add_option("NAME", arguments->name, "host name")->required()->type_name("");
    app.add_option("--prefer", arguments->preferred,
                   "address to keep to while the name still resolves to it")
        ->type_name("ADDR");
    app.callback([arguments, &session] { resolve(*arguments, session); });
}

/* A port as the user named it. */
struct NamedPort {
    unsigned index;
    std::string name;
};

NamedPort namedPort(const std::string &text)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const unsigned index = findPort(interfaces, text);
    return {index, portName(interfaces, index)};
}

void showGatewayMac(const std::string &text, Session &session)
{
    const NamedPort port = namedPort(text);
    Ipv4 gateway{};
    std::ranges::copy(readLanRecord().astPort[port.index].aucIpv4Gateway, gateway.begin());
    if (gateway == Ipv4{}) {
        throw Failure(Exit::notFound, "PORT", port.name, "the port has no IPv4 gateway");
    }

    Mac mac{};
    NW_GetV4DefaultGwMacAddr(static_cast<std::uint8_t>(port.index), mac.data());
    if (mac == Mac{}) {
        throw Failure(Exit::notFound, "PORT", port.name,
                      "the gateway " + formatAddress(gateway) + " does not answer");
    }
    session.answer(Json{{"port", port.name},
                        {"index", port.index},
                        {"gateway", formatAddress(gateway)},
                        {"mac", formatMac(mac)}},
                   formatMac(mac) + "\n");
}

/* Empty where the family's address does not come from DHCP or the lease names no server. */
std::vector<std::string> ntpServers(std::uint8_t family, const NamedPort &port)
{
    constexpr std::size_t longest = 256; /* a line of a lease is shorter */
    char text[longest]{};
    LIB_NW_ParseNTPInfo(family, port.name.c_str(), static_cast<std::uint8_t>(port.index), longest,
                        text);

    std::istringstream words(text);
    std::vector<std::string> servers;
    for (std::string word; words >> word;) {
        servers.push_back(word);
    }
    return servers;
}

void showNtp(const std::string &text, Session &session)
{
    const NamedPort port = namedPort(text);
    const auto ipv4 = ntpServers(NW_FAMILY_IPV4, port);
    const auto ipv6 = ntpServers(NW_FAMILY_IPV6, port);
    if (ipv4.empty() && ipv6.empty()) {
        throw Failure(Exit::notFound, "PORT", port.name, "DHCP gave the port no NTP server");
    }

    std::string lines;
    for (const auto *servers : {&ipv4, &ipv6}) {
        for (const std::string &server : *servers) {
            lines += (servers == &ipv4 ? "IPv4 " : "IPv6 ") + escaped(server) + "\n";
        }
    }
    session.answer(Json{{"port", port.name}, {"index", port.index}, {"ipv4", ipv4}, {"ipv6", ipv6}},
                   lines);
}

template <void (*run)(const std::string &port, Session &session)>
void declareForPort(CLI::App &app, Session &session)
{
    const auto port = std::make_shared<std::string>();
    addPort(app, *port)->required();
    app.callback([port, &session] { run(*port, session); });
}

/* clang-format off */
const Command rows[] = {
    {"", "resolve",     "Show the address of a host name",                       "resolve ntp.example.net --prefer 192.0.2.5", declareResolve},
    {"", "gateway-mac", "Show the MAC address of a port's IPv4 gateway",         "gateway-mac eth1", declareForPort<showGatewayMac>},
    {"", "ntp",         "Show the NTP servers that a port was given by DHCP",    "ntp eth1",         declareForPort<showNtp>},
};
/* clang-format on */

} // namespace

void addDiscoveryCommands(std::vector<Command> &commands)
{
    commands.insert(commands.end(), std::begin(rows), std::end(rows));
}

} // namespace nwctl
