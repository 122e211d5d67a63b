// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "commands.hpp"

namespace nwctl {

namespace {

constexpr Group groupRows[] = {
    {"lan", "LAN settings of the management ports"},
    {"hostname", "Host name and BMC name"},
    {"dns", "DNS settings of the ports"},
    {"lldp", "LLDP agent"},
    {"mode", "Network port mode: separate ports or one bond"},
    {"switchover", "Exchange of the two ports' numbers"},
    {"share-link", "Shared-link mode: which ports reach the controller"},
    {"vlan", "VLAN of the ports"},
    {"arp", "ARP announcements and responses of the ports"},
    {"an", "Auto-negotiation, duplex and speed of the ports"},
    {"ncsi", "NC-SI, the way over the host's network adapter"},
    {"check", "Check a text or a port's routes with the rules that settings obey"},
    {"chassis", "Status exchanged with the chassis manager"},
    {"lock", "The network lock"},
    {"queue", "Message queues between local processes"},
    {"heartbeat", "The platform's heartbeat queue"},
};

} // namespace

std::span<const Group> groups()
{
    return groupRows;
}

std::vector<Command> commands()
{
    std::vector<Command> rows;
    for (const auto add :
         {addStatusCommands, addLanCommands, addHostNameCommands, addDnsCommands, addLldpCommands,
          addModeCommands, addVlanCommands, addArpCommands, addAnCommands, addNcsiCommands,
          addCombinedCommands, addCheckCommands, addRouteCheckCommand, addDiscoveryCommands,
          addNameCommand, addChassisCommands, addLockCommands, addQueueCommands,
          addHeartbeatCommands}) {
        add(rows);
    }
    return rows;
}

} // namespace nwctl
