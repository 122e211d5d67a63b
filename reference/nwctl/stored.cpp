// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/stored.hpp"

#include <algorithm>

#include "common/text.hpp"
#include "network_mng/check.h"
#include "network_mng/settings.h"
#include "platform/records.hpp"

namespace nwctl {

namespace {

using bmc::settings::Section;

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
        bmc::parseNumber(std::string_view(text).substr(channelPrefix.size()), channelMax);
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

const bmc::settings::Kind &kindOf(Section section, const char *key)
{
    return *bmc::settings::findSetting(section, key)->kind;
}

/* Of each record the library's getter. */
NW_RESULT read(NW_IFC_STATE_DB_INFO_S &record)
{
    return NW_LMDB_Get_IfcState(&record);
}
NW_RESULT read(NW_LAN_CFG_DB_INFO_S &record)
{
    return LIB_NW_GetAllLanConfig(&record);
}
NW_RESULT read(NW_HOSTNAME_DB_INFO_S &record)
{
    return LIB_NW_GetHostName(&record);
}
NW_RESULT read(NW_DNS_DB_INFO_S &record)
{
    return NW_LMDB_Get_DNS(&record);
}
NW_RESULT read(NW_LLDP_DB_INFO_S &record)
{
    return NW_LMDB_Get_LLDP(&record);
}
NW_RESULT read(NW_AN_CFG_DB_INFO_S &record)
{
    return NW_LMDB_GetAnCfgInfo(&record);
}

} // namespace

Run inSnapshot(Run run)
{
    return [run = std::move(run)](const Arguments &arguments, Session &session) {
        const bmc::Snapshot snapshot;
        run(arguments, session);
    };
}

void requireRead(NW_RESULT result, const char *record)
{
    if (result != NW_OK) {
        throw Failure(Exit::internal, "", "", std::string("cannot read ") + record, result);
    }
}

NW_IFC_STATE_DB_INFO_S readInterfaces()
{
    NW_IFC_STATE_DB_INFO_S interfaces{};
    requireRead(read(interfaces), "the interface state");
    return interfaces;
}

NW_LAN_CFG_DB_INFO_S readLanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    requireRead(read(record), "the LAN configuration");
    return record;
}

Configuration readConfiguration()
{
    Configuration stored{};
    bmc::settings::forEachRecord([&](const bmc::settings::RecordName &record, auto member) {
        const NW_RESULT result = read(stored.*member);
        if (record.isRequired) {
            requireRead(result, (std::string("the ") + record.name).c_str());
        } else if (result != NW_OK) {
            stored.*member = {}; /* some getters read straight into it */
        }
    });
    return stored;
}

unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text)
{
    if (text.starts_with(channelPrefix)) {
        return portOfChannel(text);
    }
    const unsigned port = bmc::settings::findPort(interfaces, text);
    if (port < NW_PORT_COUNT) {
        return port;
    }

    throw Failure(Exit::usage, "PORT", text,
                  "no such port, expected " + bmc::settings::expectedPorts(interfaces));
}

NamedPort namedPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text)
{
    const unsigned port = findPort(interfaces, text);
    return {port, bmc::settings::nameOf(interfaces, port)};
}

Rows portHeading(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    return {{"Port", "port", bmc::settings::nameOf(interfaces, port),
             bmc::settings::titleOf(interfaces, port)},
            hidden("role", bmc::settings::roleOf(port)),
            {"Index", "index", port}};
}

std::vector<unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    requireKnownMode(interfaces);
    std::vector<unsigned> ports;
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        if (bmc::settings::isServed(interfaces, port)) {
            ports.push_back(port);
        }
    }
    return ports;
}

std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    requireKnownMode(interfaces);
    return wordName(kindOf(Section::mode, "mode").words, interfaces.ucIfcState);
}

void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    requireKnownMode(interfaces);
    if (bmc::settings::isServed(interfaces, port)) {
        return;
    }
    throw Failure(Exit::refused, "PORT", bmc::settings::nameOf(interfaces, port),
                  interfaces.aucPortPresent[port] == 0
                      ? "the port is not on this board"
                      : "the port is not served in network mode " + modeName(interfaces));
}

NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    requireServed(interfaces, port);

    NW_ETHER_INS_INFO_S info{};
    requireRead(LIB_NW_GetLanConfig(bmc::settings::nameOf(interfaces, port).c_str(), &info),
                "the port's LAN settings");
    return info;
}

std::string wordName(std::span<const Word> words, std::uint32_t value)
{
    const std::string_view name = bmc::settings::wordOf(words, value);
    return name.empty() ? "unknown (" + std::to_string(value) + ")" : std::string(name);
}

std::uint8_t wordValue(const GivenOption &given, std::span<const Word> words)
{
    const Word *word = bmc::settings::findWord(words, given.value);
    if (word == nullptr) {
        throw Failure(Exit::usage, given.name, given.value,
                      "expected " + bmc::settings::listed(words));
    }
    return static_cast<std::uint8_t>(word->value);
}

std::span<const Word> arpWords()
{
    return kindOf(Section::lan, "arp-suspend").words;
}

Rows ncsiRows()
{
    NW_NCSI_DB_INFO_S record{};
    const bool isKnown = LIB_NW_GetNcsiConfig(&record) == NW_OK;
    const auto orNull = [isKnown](Value value) { return isKnown ? value : Value(); };
    std::uint16_t offset = 0;
    const bool hasOffset = LIB_NW_GetNcsiChannelIdOffset(&offset) == 0;
    const unsigned channel = record.ucChannel + (hasOffset ? unsigned{offset} : 0U);

    return {{"NC-SI", "enabled", orNull(record.ucNcsiEnable == 1)},
            {"NC-SI init", "initialisation",
             LIB_NW_NcsiIsInitComplete() == 1 ? "complete" : "not complete"},
            {"Auto port", "automaticPort", orNull(record.ucAutoPort == 1)},
            {"Auto card", "automaticCard", orNull(record.ucAutoCard == 1)},
            {"Adapter", "adapter", orNull(unsigned{record.ucNicIndex})},
            {"Port", "selectedPort", orNull(channel)},
            {"Port offset", "channelOffset", hasOffset ? Value(offset) : Value()}};
}

} // namespace nwctl
