// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "SECTION set": a change of settings out of the table, through the library's setter. */
#include <algorithm>
#include <cstring>

#include "network_mng/settings.h"
#include "nwctl/address_probe.hpp"
#include "nwctl/sending.hpp"
#include "settings/requests.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Change;
using settings::Section;

/* The library's setter of a section, and what is sent by it. */
struct Setter {
    Section section;
    NW_COMMAND_E command;
    NW_RESULT (*send)(const Change &change, NW_OPER_LOG_S &log);
};

/* What the network manager would get for the change. */
template <typename Request>
Request requestOf(Section section, const Change &change)
{
    Request request{};
    const std::vector<std::uint8_t> payload = settings::payloadOf(section, change);
    std::memcpy(&request, payload.data(), std::min(sizeof(request), payload.size()));
    return request;
}

NW_RESULT sendMode(const Change &change, NW_OPER_LOG_S &log)
{
    const auto request = requestOf<NW_NET_MODE_SET_S>(Section::mode, change);
    return LIB_NW_SetNetMode(reinterpret_cast<const std::uint8_t *>(&request), &log);
}

NW_RESULT sendSwitchover(const Change &change, NW_OPER_LOG_S &log)
{
    const auto request = requestOf<NW_LAN_REVERSE_SET_S>(Section::switchover, change);
    return LIB_NW_SetLanReverse(&request, &log);
}

NW_RESULT sendHostName(const Change &change, NW_OPER_LOG_S &log)
{
    const auto request = requestOf<NW_HOSTNAME_SET_REQ_S>(Section::hostName, change);
    NW_HOSTNAME_CONF_S fields{};
    fields.ucByte4 = request.ucByte4;
    fields.ucLength = request.ucLength;
    std::memcpy(fields.acHostName, request.acHostName, sizeof(fields.acHostName));
    std::memcpy(fields.acTail, request.acTail, sizeof(fields.acTail));
    return LIB_NW_SetHostName(request.ucSetMask, &fields, &log);
}

NW_RESULT sendLldp(const Change &change, NW_OPER_LOG_S &log)
{
    const auto request = requestOf<NW_LLDP_SET_S>(Section::lldp, change);
    return LIB_NW_SetLLDP(&request, &log);
}

NW_RESULT sendLan(const Change &change, NW_OPER_LOG_S &log)
{
    const auto request = requestOf<NW_LAN_SET_REQ_S>(Section::lan, change);
    NW_LAN_BITMAP_S bitmap = request.stBitmap;
    NW_LAN_SET_CFG_S config = request.stConfig;
    return LIB_NW_SetLanConfig(&bitmap, &config, &log);
}

NW_RESULT sendDns(const Change &change, NW_OPER_LOG_S &log)
{
    const std::vector<std::uint8_t> payload = settings::payloadOf(Section::dns, change);
    return LIB_NW_SetAllDnsConf(payload.data(), &log);
}

/* The library takes the request's tail: the bits of both ports, then both ports' settings behind a
 * head. */
NW_RESULT sendLinkMode(const Change &change, NW_OPER_LOG_S &log)
{
    const std::vector<std::uint8_t> payload = settings::payloadOf(Section::an, change);
    return LIB_NW_SetAnPortConfig(payload.data() + offsetof(NW_AN_SET_REQ_S, auiBitmap),
                                  payload.data() + offsetof(NW_AN_SET_REQ_S, aucConfigHead), &log);
}

/* clang-format off */
constexpr Setter setters[] = {
    {Section::mode,       NW_CMD_SET_NET_MODE,    sendMode},
    {Section::switchover, NW_CMD_SET_LAN_REVERSE, sendSwitchover},
    {Section::hostName,   NW_CMD_SET_HOSTNAME,    sendHostName},
    {Section::lldp,       NW_CMD_SET_LLDP,        sendLldp},
    {Section::lan,        NW_CMD_SET_LAN,         sendLan},
    {Section::dns,        NW_CMD_SET_DNS,         sendDns},
    {Section::an,         NW_CMD_SET_AN,          sendLinkMode},
};

/* A command of settings of a section. A scalar section's one setting is the argument. */
struct SetCommand {
    Section section;
    const char *group;
    const char *argument;
    const char *description;
    const char *example;
};

constexpr SetCommand setCommands[] = {
    {Section::lan,        "lan",        nullptr, "Change settings of a port",                      "lan set eth1 --ipv4 192.168.20.5/24 --ipv4-gateway 192.168.20.1"},
    {Section::hostName,   "hostname",   nullptr, "Change the host name, its mode or the BMC name", "hostname set --mode manual --name bmc-1"},
    {Section::dns,        "dns",        nullptr, "Change DNS settings of a port",                  "dns set eth1 --ipv4-mode manual --ipv4-server1 192.168.20.53"},
    {Section::lldp,       "lldp",       nullptr, "Change the LLDP settings",                       "lldp set --state on --work-mode txrx"},
    {Section::mode,       "mode",       "MODE",  "Let the ports work separately or as one bond",   "mode set active-standby"},
    {Section::switchover, "switchover", "STATE", "Exchange the numbers of the two ports",          "switchover set on"},
    {Section::lan,        "vlan",       nullptr, "Change the VLAN of a port",                      "vlan set eth1 --vlan 30 --vlan-priority 2"},
    {Section::lan,        "arp",        nullptr, "Change the ARP settings of a port",              "arp set eth1 --arp-control both --arp-interval 10"},
    {Section::an,         "an",         nullptr, "Change auto-negotiation, duplex or speed of a port", "an set eth0 --auto off --speed 100 --duplex full"},
};
/* clang-format on */

constexpr const char *receiveOption = "--receive"; /* of LLDP; the library makes the request */

std::string optionOf(const SetCommand &row, const settings::Setting &setting)
{
    return row.argument != nullptr ? row.argument : "--" + std::string(setting.key);
}

void assignGiven(Change &change, const settings::Setting &setting, const GivenOption &given)
{
    try {
        settings::assign(change, setting, 0, given.value);
    } catch (const settings::BadValue &bad) {
        throw Failure(
            bad.isRefused() ? Exit::refused : Exit::usage, given.name, given.value, bad.what(),
            bad.isRefused() ? std::optional<NW_RESULT>(NW_ERR_OUT_OF_RANGE) : std::nullopt);
    }
}

/* The settings given, of port 0 as long as nobody knows the port. */
Change changeOf(const SetCommand &row, const Arguments &arguments, Given &given)
{
    Change change;
    for (const settings::Setting *setting : settings::settingsOf(row.group)) {
        for (const GivenOption &each : arguments.given(optionOf(row, *setting))) {
            given.push_back(each);
            assignGiven(change, *setting, each);
        }
    }
    return change;
}

void requireSomething(const Given &given)
{
    if (given.empty()) {
        throw Failure(Exit::usage, "", "", "nothing to change: give at least one setting");
    }
}

NamedPort portFor(const settings::SectionInfo &info, const Arguments &arguments)
{
    NamedPort port = namedPort(readInterfaces(), arguments.value("PORT"));
    if (port.index >= info.portCount) {
        throw Failure(Exit::refused, "PORT", port.name, "the port has no PHY of its own",
                      NW_ERR_OUT_OF_RANGE);
    }
    return port;
}

/* State and work mode as the library makes them of the stored ones. */
Change receiveChange(const NW_LLDP_DB_INFO_S &stored, bool isReceiving)
{
    constexpr unsigned receiveBit = 2;
    const unsigned mode = stored.ucLldpWorkMode;
    const bool isReceiveOnly = mode == receiveBit;
    const bool isOn = isReceiving || (stored.ucLldpEnable == 1 && !isReceiveOnly);
    const unsigned next = isReceiving     ? mode | receiveBit
                          : isReceiveOnly ? mode
                                          : mode & ~receiveBit;

    Change change;
    const settings::Setting &workMode = *settings::findSetting(Section::lldp, "work-mode");
    settings::assign(change, *settings::findSetting(Section::lldp, "state"), 0,
                     isOn ? "on" : "off");
    if (const auto word = settings::wordOf(workMode.kind->words, next); !word.empty()) {
        settings::assign(change, workMode, 0, word);
    }
    return change;
}

/* The agent is switched by it, in the same words. */
const settings::Setting &receiveSwitch()
{
    return *settings::findSetting(Section::lldp, "state");
}

void addReceive(const Arguments &arguments, Sending &sending)
{
    const GivenOption given{receiveOption, arguments.value(receiveOption)};
    const std::uint8_t isReceiving = wordValue(given, receiveSwitch().kind->words);
    if (!sending.given.empty() || arguments.values(receiveOption).size() > 1) {
        throw Failure(Exit::usage, given.name, given.value,
                      "contradicts another value for the same setting");
    }

    NW_LLDP_DB_INFO_S stored{}; /* the new settings depend on it */
    requireRead(LIB_NW_GetLLDP(&stored), "the LLDP settings");
    sending.given = {given};
    sending.changes = {receiveChange(stored, isReceiving == 1)};
    sending.send = [isReceiving](NW_OPER_LOG_S &log) {
        return LIB_NW_LLDPRxEnable(isReceiving, &log);
    };
}

void requireFreeAddress(const Sending &sending, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const std::optional<Probe> probe = probeAddress(sending.changes.front().front(), interfaces);
    if (!probe) {
        return;
    }
    if (probe->result == ProbeResult::noTool) {
        session.remark("arping is not installed: only the network manager asks for the address");
    }
    if (probe->result == ProbeResult::taken) {
        throw Failure(Exit::refused, "--ipv4", probe->address,
                      "another host on the network of " + sending.port->name + " has this address");
    }
}

/* Whole LAN settings of a port: overlaps and taken addresses are refused before anything is sent,
 * unless the user knows better. */
void checkLan(const SetCommand &row, const Sending &sending, const Arguments &arguments,
              Session &session)
{
    if (!arguments.has("--no-check") && !arguments.has("--dry-run")) {
        requireNoOverlap(readConfiguration(), sending);
    }
    if (std::string_view(row.group) == "lan" && !arguments.has("--no-probe")) {
        requireFreeAddress(sending, session);
    }
}

std::vector<std::string> notesOf(const SetCommand &row, const Arguments &arguments,
                                 const NamedPort &port)
{
    const std::string title = settings::titleOf(readInterfaces(), port.index);
    std::vector<std::string> notes;
    for (const settings::Setting *setting : settings::settingsOf(row.group)) {
        for (const GivenOption &given : arguments.given(optionOf(row, *setting))) {
            if (auto note = settings::effectNote(*setting, given.value, title); !note.empty()) {
                notes.push_back(std::move(note));
            }
        }
    }
    return notes;
}

Sending prepare(const SetCommand &row, const Arguments &arguments, Session &session)
{
    const settings::SectionInfo &info = settings::infoOf(row.section);
    const Setter &setter = *std::ranges::find(setters, row.section, &Setter::section);
    Sending sending{.what = info.title, .commands = {setter.command}, .module = info.module};

    Change change = changeOf(row, arguments, sending.given);
    if (arguments.has(receiveOption)) {
        addReceive(arguments, sending);
        return sending;
    }
    requireSomething(sending.given);
    if (info.portCount != 0) {
        sending.port = portFor(info, arguments);
        change.front().port = sending.port->index;
        sending.notes = notesOf(row, arguments, *sending.port);
    }
    sending.changes = {change};
    sending.isGuarded = true;
    sending.send = [change, &setter](NW_OPER_LOG_S &log) { return setter.send(change, log); };
    if (row.section == Section::lan) {
        sending.sentences = lanSentences;
        checkLan(row, sending, arguments, session);
    }
    return sending;
}

std::vector<Parameter> parametersOf(const SetCommand &row)
{
    using Kind = Parameter::Kind;
    std::vector<Parameter> parameters;
    if (settings::infoOf(row.section).portCount != 0) {
        parameters.push_back(portParameter());
    }
    for (const settings::Setting *setting : settings::settingsOf(row.group)) {
        if (row.argument != nullptr) {
            parameters.push_back(
                {Kind::required, row.argument, settings::listed(setting->kind->words)});
        } else {
            parameters.push_back({Kind::repeated, optionOf(row, *setting),
                                  settings::helpOf(*setting), settings::valueNameOf(*setting)});
        }
    }
    if (row.section == Section::lldp) {
        parameters.push_back({Kind::repeated, receiveOption,
                              "reception alone; what it sends stays as it is",
                              settings::valueNameOf(receiveSwitch())});
    }
    parameters.push_back(dryRunFlag());
    std::ranges::copy(guardParameters(), std::back_inserter(parameters));
    if (std::string_view(row.group) == "lan") {
        parameters.push_back(flag("--no-check", "send the change even when it makes two networks "
                                                "overlap or a route meet another port"));
        parameters.push_back(flag("--no-probe", "let the network manager alone ask whether a "
                                                "new IPv4 address is taken"));
    }
    return parameters;
}

} // namespace

void addSetCommands(std::vector<Command> &commands)
{
    for (const SetCommand &row : setCommands) {
        commands.push_back({row.group, "set", row.description, row.example, parametersOf(row),
                            [&row](const Arguments &arguments, Session &session) {
                                carryOut([&] { return prepare(row, arguments, session); },
                                         arguments, session);
                            }});
    }
}

} // namespace nwctl
