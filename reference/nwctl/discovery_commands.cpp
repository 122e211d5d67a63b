// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the network knows: "resolve", "gateway-mac", "ntp"; and the BMC's name in its file. */
#include <algorithm>
#include <sstream>

#include <nlohmann/json.hpp>
#include <sys/socket.h>

#include "common/address.hpp"
#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "nwctl/sending.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Json;

/* The address as the system writes it. */
std::string canonicalAddress(const std::string &text)
{
    for (const int family : {AF_INET, AF_INET6}) {
        if (const auto address = bmc::parseAddress(family, text)) {
            return textOf(*address);
        }
    }
    throw Failure(Exit::usage, "--prefer", text, "neither an IPv4 nor an IPv6 address");
}

void resolve(const Arguments &arguments, Session &session)
{
    const std::string name = arguments.value("NAME");
    const std::string preferred = arguments.value("--prefer");
    const std::string canonical = preferred.empty() ? "" : canonicalAddress(preferred);
    char address[NW_RESOLVED_TEXT_SIZE]{};
    const NW_RESULT result = LIB_NW_ParseHostnameToIP(name.c_str(), canonical.c_str(), address);
    if (result != NW_OK || *address == '\0') {
        throw Failure(Exit::notFound, "NAME", name, "the name has no address",
                      result == NW_OK ? std::nullopt : std::optional(result));
    }
    session.answer({line(address), hidden("name", name), hidden("address", address)});
}

NamedPort portIn(const Arguments &arguments)
{
    return namedPort(readInterfaces(), arguments.value("PORT"));
}

void showGatewayMac(const Arguments &arguments, Session &session)
{
    const NamedPort port = portIn(arguments);
    const NW_LAN_CFG_DB_INFO_S stored = readLanRecord();
    const auto &gateway = stored.astPort[port.index].aucIpv4Gateway;
    if (LIB_NW_CheckIPIsZero(gateway, NW_IPV4_SIZE) != 0) {
        throw Failure(Exit::notFound, "PORT", port.name, "the port has no IPv4 gateway");
    }

    const std::string gatewayText = textOf(bmc::ipv4(gateway));
    std::uint8_t mac[NW_MAC_SIZE]{};
    NW_GetV4DefaultGwMacAddr(static_cast<std::uint8_t>(port.index), mac);
    if (std::ranges::all_of(mac, [](std::uint8_t byte) { return byte == 0; })) {
        throw Failure(Exit::notFound, "PORT", port.name,
                      "the gateway " + gatewayText + " does not answer");
    }
    session.answer({line(macText(mac)), hidden("port", port.name), hidden("index", port.index),
                    hidden("gateway", gatewayText), hidden("mac", macText(mac))});
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

Row serversRow(const std::string &key, const std::string &family,
               const std::vector<std::string> &servers)
{
    List list;
    for (const std::string &server : servers) {
        list.rows.push_back({.value = server, .text = family + " " + server});
    }
    return {.key = key, .value = std::move(list)};
}

void showNtp(const Arguments &arguments, Session &session)
{
    const NamedPort port = portIn(arguments);
    const auto ipv4 = ntpServers(NW_FAMILY_IPV4, port);
    const auto ipv6 = ntpServers(NW_FAMILY_IPV6, port);
    if (ipv4.empty() && ipv6.empty()) {
        throw Failure(Exit::notFound, "PORT", port.name, "DHCP gave the port no NTP server");
    }
    session.answer({hidden("port", port.name), hidden("index", port.index),
                    serversRow("ipv4", "IPv4", ipv4), serversRow("ipv6", "IPv6", ipv6)});
}

constexpr const char *nameFile = NW_BMC_NAME_FILE;
constexpr std::size_t longestBmcName = NW_BMC_NAME_SIZE - 1;

std::string storedName()
{
    char text[NW_BMC_NAME_SIZE]{};
    const NW_RESULT result = LIB_NW_ReadBmcNameFromFile(text);
    if (result != NW_OK) {
        throw Failure(Exit::internal, "", "",
                      std::string("cannot read the BMC's name from ") + nameFile, result);
    }
    const std::string line = text;
    return line.substr(0, line.find('\n'));
}

void requireName(const std::string &name)
{
    if (name.size() > longestBmcName || LIB_NW_CheckHostName(name.c_str()) == 0) {
        throw Failure(Exit::refused, "NAME", name,
                      "a name is made of letters, digits and inner hyphens, at most " +
                          std::to_string(longestBmcName),
                      NW_ERR_OUT_OF_RANGE);
    }
}

/* A longer name's end stays in the file, on the lines behind the first one: only that counts. */
void storeName(const std::string &name)
{
    const std::string line = name + "\n";
    const NW_RESULT result =
        NW_WriteBmcNameToFile(line.data(), static_cast<std::uint32_t>(line.size()), nameFile);
    if (result != NW_OK) {
        throw Failure(Exit::internal, "NAME", name,
                      std::string("cannot write the name to ") + nameFile + ", which has to exist",
                      result);
    }
}

void tellName(const std::string &name, Session &session)
{
    const std::string stored = storedName();
    Json changes = Json::array();
    if (name != stored) {
        changes.push_back(settings::changeOf("bmc-name", nullptr, stored, name));
    }
    session.answer({line(std::string("Dry run, nothing was written. Would change the BMC's name") +
                         (changes.empty() ? "; nothing is different from what is stored." : ":")),
                    hidden("dryRun", true), hidden("name", stored), changesRow(changes)});
}

void showName(const Arguments &arguments, Session &session)
{
    const std::string name = arguments.value("NAME");
    if (arguments.has("NAME")) {
        requireName(name);
    } else if (arguments.has("--dry-run")) {
        throw Failure(Exit::usage, "NAME", "", "is missing");
    }
    if (arguments.has("--dry-run")) {
        tellName(name, session);
        return;
    }
    if (arguments.has("NAME")) {
        storeName(name);
    }
    const std::string stored = storedName();
    session.answer({line(stored), hidden("name", stored)});
}

} // namespace

void addDiscoveryCommands(std::vector<Command> &commands)
{
    using Kind = Parameter::Kind;
    const Parameter host{Kind::required, "NAME", "host name"};
    const Parameter prefer{Kind::option, "--prefer",
                           "address to keep to while the name still resolves to it", "ADDR"};
    const Parameter name{Kind::optional, "NAME", "new name; without it, the present one is shown"};
    /* clang-format off */
    commands.insert(commands.end(), {
        {"", "resolve",     "Show the address of a host name",                    "resolve ntp.example.net --prefer 192.0.2.5", {host, prefer},    resolve},
        {"", "gateway-mac", "Show the MAC address of a port's IPv4 gateway",      "gateway-mac eth1",                           {portParameter()}, inSnapshot(showGatewayMac)},
        {"", "ntp",         "Show the NTP servers that a port was given by DHCP", "ntp eth1",                                   {portParameter()}, inSnapshot(showNtp)},
        {"", "bmc-name",    "Show or change the BMC's name",                      "bmc-name bmc-rack1",                         {name, dryRunFlag()}, showName},
    });
    /* clang-format on */
}

} // namespace nwctl
