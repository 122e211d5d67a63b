// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "stored.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"
#include "network_mng/settings.h"
#include "text.hpp"

namespace nwctl {

namespace {

constexpr Word modes[] = {{"separate", NW_IFC_STATE_SEPARATE},
                          {"active-standby", NW_IFC_STATE_ADAPTIVE}};

constexpr unsigned separatePorts[] = {NW_PORT_ETH0, NW_PORT_ETH1};
constexpr unsigned bondedPorts[] = {NW_PORT_BOND0};

void requireKnownMode(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    if (interfaces.ucIfcState > NW_IFC_STATE_ADAPTIVE) {
        throw Failure(Exit::internal, "", "",
                      "the interface state record holds the unknown network mode " +
                          std::to_string(interfaces.ucIfcState));
    }
}

constexpr std::string_view channelPrefix = "channel:";

/* Port of the IPMI LAN channel in the present network mode. */
unsigned portOfChannel(const std::string &text)
{
    constexpr unsigned channelMax = 255;
    const auto channel =
        parseNumber(std::string_view(text).substr(channelPrefix.size()), channelMax);
    if (!channel) {
        throw Failure(Exit::usage, "PORT", text, "expected channel:N with a channel number");
    }

    std::uint32_t port = 0;
    const NW_RESULT result = NW_CheckChannel(*channel, &port);
    if (result != NW_OK) {
        throw Failure(Exit::refused, "PORT", text, "the channel selects no port", result);
    }
    return port;
}

} // namespace

void requireRead(NW_RESULT result, const char *record)
{
    if (result != NW_OK) {
        throw Failure(Exit::internal, "", "", std::string("cannot read ") + record, result);
    }
}

NW_IFC_STATE_DB_INFO_S readInterfaces()
{
    NW_IFC_STATE_DB_INFO_S interfaces{};
    requireRead(NW_LMDB_Get_IfcState(&interfaces), "the interface state");
    return interfaces;
}

NW_LAN_CFG_DB_INFO_S readLanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    requireRead(LIB_NW_GetAllLanConfig(&record), "the LAN configuration");
    return record;
}

std::string portName(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    return boundedText(interfaces.acIfcName[port]);
}

unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text)
{
    if (const auto index = parseNumber(text, NW_PORT_COUNT - 1)) {
        return *index;
    }
    if (text.starts_with(channelPrefix)) {
        return portOfChannel(text);
    }

    std::string names;
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        const std::string name = portName(interfaces, port);
        if (!text.empty() && text == name) {
            return port;
        }
        names += name + ", ";
    }
    throw Failure(Exit::usage, "PORT", text,
                  "no such port, expected " + names + "0, 1, 2 or channel:N");
}

NamedPort namedPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text)
{
    const unsigned port = findPort(interfaces, text);
    return {port, portName(interfaces, port)};
}

Facts portHeading(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    return {{"Port", "port", portName(interfaces, port)}, {"Index", "index", port}};
}

std::span<const unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    requireKnownMode(interfaces);
    if (interfaces.ucIfcState == NW_IFC_STATE_SEPARATE) {
        return separatePorts;
    }
    return bondedPorts;
}

std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    requireKnownMode(interfaces);
    return wordName(modes, interfaces.ucIfcState);
}

std::span<const Word> modeWords()
{
    return modes;
}

void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    if (std::ranges::count(portsServed(interfaces), port) == 0) {
        throw Failure(Exit::refused, "PORT", portName(interfaces, port),
                      "the port is not served in network mode " + modeName(interfaces));
    }
}

NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    requireServed(interfaces, port);

    NW_ETHER_INS_INFO_S info{};
    requireRead(LIB_NW_GetLanConfig(portName(interfaces, port).c_str(), &info),
                "the port's LAN settings");
    return info;
}

} // namespace nwctl
