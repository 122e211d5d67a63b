// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "vlan" and "arp": further LAN settings of the ports, and the requests that ARP has of its own. */
#include "command_kinds.hpp"
#include "facts.hpp"
#include "lan_fields.hpp"
#include "lan_sending.hpp"
#include "network_mng/settings.h"

namespace nwctl {

namespace {

Sending check(const std::string &port, const LanChange &change, const Given &given)
{
    return lanSending(port, change, given, SegmentCheck::made);
}

/* The stored value that the bit of word 0 changes, of at most two bytes. */
unsigned storedValue(const NW_LAN_CFG_PORT_S &port, std::uint32_t bit)
{
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&port);
    for (const bmc::manager::LanField &field : bmc::manager::lanFields()) {
        if (field.word == 0 && field.bit == bit) {
            return field.size == 1 ? bytes[field.to]
                                   : bytes[field.to] | unsigned{bytes[field.to + 1]} << 8;
        }
    }
    throw std::logic_error("no such LAN field");
}

using AddFacts = void (*)(const NW_LAN_CFG_PORT_S &port, Facts &facts);

template <AddFacts add>
void show(std::span<const unsigned> ports, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const NW_LAN_CFG_DB_INFO_S record = readLanRecord();
    std::vector<Facts> shown;
    for (const unsigned port : ports) {
        shown.push_back(portHeading(interfaces, port));
        add(record.astPort[port], shown.back());
    }
    printPorts(session, shown);
}

void addVlanFacts(const NW_LAN_CFG_PORT_S &port, Facts &facts)
{
    const unsigned id = storedValue(port, NW_LAN_BIT_VLAN_ID);
    facts.push_back({"VLAN", "enabled", storedValue(port, NW_LAN_BIT_VLAN_ENABLE) == 1});
    facts.push_back({"VLAN ID", "id", id == 0 ? Json() : Json(id)});
    facts.push_back({"VLAN priority", "priority", storedValue(port, NW_LAN_BIT_VLAN_PRIORITY)});
}

void addArpFacts(const NW_LAN_CFG_PORT_S &port, Facts &facts)
{
    const auto flags = [&port](std::uint32_t bit) {
        return wordName(arpWords(), storedValue(port, bit));
    };
    facts.push_back({"ARP control", "control", flags(NW_LAN_BIT_ARP_CONTROL)});
    facts.push_back({"ARP interval", "interval", storedValue(port, NW_LAN_BIT_ARP_INTERVAL)});
    facts.push_back({"ARP suspend", "suspend", flags(NW_LAN_BIT_ARP_SUSPEND)});
}

/* The answer's status byte: what rests now. */
void completeWith(Sending &sending, const std::shared_ptr<std::uint8_t> &status)
{
    sending.complete = [status](Json &answer, std::string &text) {
        const std::string suspended = wordName(arpWords(), *status);
        answer["suspended"] = suspended;
        text += "ARP suspended: " + suspended + "\n";
    };
}

Sending checkSuspend(const std::string &port, const LanChange &change, const Given &given)
{
    Sending sending;
    sending.what = "ARP suspension";
    sending.commands = {NW_CMD_SUSPEND_ARP};
    sending.module = NW_LOG_LAN;
    sending.port = namedPort(readInterfaces(), port);
    sending.settings = given;

    const auto status = std::make_shared<std::uint8_t>();
    const NW_ARP_SUSPEND_REQ_S request{static_cast<std::uint8_t>(sending.port->index),
                                       change.fields.ucArpSuspend};
    sending.send = [request, status](NW_OPER_LOG_S &log) {
        return LIB_NW_SuspendBMCArp(reinterpret_cast<const std::uint8_t *>(&request), status.get(),
                                    &log);
    };
    completeWith(sending, status);
    return sending;
}

/* Asks for the status by an update that changes nothing. */
Sending checkStatus(const GivenOption &given)
{
    constexpr std::uint8_t changeNothing = 0;
    Sending sending;
    sending.what = "nothing; asks for the ARP status";
    sending.commands = {NW_CMD_UPDATE_ARP};
    sending.port = namedPort(readInterfaces(), given.value);

    const auto status = std::make_shared<std::uint8_t>();
    const unsigned port = sending.port->index;
    sending.send = [port, status](NW_OPER_LOG_S &) {
        return LIB_NW_UpdateArpStatus(port, changeNothing, 0, status.get());
    };
    completeWith(sending, status);
    return sending;
}

Sending checkResume(const GivenOption &given)
{
    constexpr Word words[] = {{"resume", 0}, {"suspend", 1}};
    const std::uint32_t request = wordValue(given, words);
    Sending sending;
    sending.what = "ARP suspensions of all ports";
    sending.commands = {NW_CMD_RESUME_ARP};
    sending.settings = {given};
    sending.send = [request](NW_OPER_LOG_S &) { return LIB_NW_ResumeSuspendBMCArps(request); };
    return sending;
}

} // namespace

void addVlanCommands(std::vector<Command> &commands)
{
    commands.push_back(portShowCommand(
        {"vlan", "show", "Show the VLAN of a port", "vlan show eth1"}, show<addVlanFacts>));
    commands.push_back(portChangeCommand<LanChange>(
        {"vlan", "set", "Change the VLAN of a port", "vlan set eth1 --vlan 30 --vlan-priority 2"},
        vlanOptions(), check));
}

void addArpCommands(std::vector<Command> &commands)
{
    commands.push_back(portShowCommand(
        {"arp", "show", "Show the ARP settings of a port", "arp show eth1"}, show<addArpFacts>));
    commands.push_back(
        portChangeCommand<LanChange>({"arp", "set", "Change the ARP settings of a port",
                                      "arp set eth1 --arp-control both --arp-interval 10"},
                                     arpOptions(), check));
    commands.push_back(portChangeCommand<LanChange>(
        {"arp", "suspend", "Suspend ARP on a port at once", "arp suspend eth1 --arp-suspend both"},
        arpOptions().last(1), checkSuspend));
    commands.push_back(
        valueCommand({"arp", "status", "Ask what is suspended on a port", "arp status eth1"},
                     {"PORT", "Port, as for the other commands", nullptr}, checkStatus));
    commands.push_back(valueCommand(
        {"arp", "resume", "Resume ARP on all ports, whatever is suspended, or suspend it again",
         "arp resume"},
        {"WHAT", "resume or suspend; resume without it", "resume"}, checkResume));
}

} // namespace nwctl
