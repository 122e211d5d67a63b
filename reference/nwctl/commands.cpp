// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/command.hpp"

#include <algorithm>

#include "common/hex.hpp"
#include "common/text.hpp"
#include "nwctl/stored.hpp"

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

/* Of the names in the record, which nobody wants to wait for in a help text. */
constexpr const char *usualInterfaces = "eth0, eth1, bond0";

} // namespace

std::span<const Group> groups()
{
    return groupRows;
}

std::vector<Command> commands()
{
    std::vector<Command> rows;
    for (const auto add :
         {addStatusCommands, addShowCommands, addSetCommands, addRequestCommands, addApplyCommands,
          addDiffCommand, addCheckpointCommands, addCheckCommands, addDiscoveryCommands,
          addChassisCommands, addQueueCommands, addHeartbeatCommands}) {
        add(rows);
    }
    return rows;
}

bool Arguments::has(std::string_view name) const
{
    return std::ranges::count(given_, name, &GivenOption::name) != 0;
}

std::string Arguments::value(std::string_view name, std::string_view otherwise) const
{
    const auto found = std::ranges::find(given_, name, &GivenOption::name);
    return found == given_.end() ? std::string(otherwise) : found->value;
}

std::vector<std::string> Arguments::values(std::string_view name) const
{
    std::vector<std::string> values;
    for (const GivenOption &each : given(name)) {
        values.push_back(each.value);
    }
    return values;
}

Given Arguments::given(std::string_view name) const
{
    Given found;
    std::ranges::copy_if(given_, std::back_inserter(found),
                         [&](const GivenOption &each) { return each.name == name; });
    return found;
}

Parameter flag(std::string name, std::string help)
{
    return {Parameter::Kind::flag, std::move(name), std::move(help)};
}

Parameter portParameter(Parameter::Kind kind, const std::string &remark)
{
    /* Completion offers what stands in front of the index. */
    return {kind, "PORT",
            "Port: " + bmc::settings::portRoles() + usualInterfaces +
                ", its index 0, 1, 2, or channel:N for the port of a LAN channel" + remark};
}

unsigned numberIn(const std::string &name, const std::string &text, unsigned min, unsigned max)
{
    const auto number = bmc::parseNumber(text, max);
    if (!number || *number < min) {
        throw Failure(Exit::usage, name, text,
                      "expected a number from " + std::to_string(min) + " to " +
                          std::to_string(max));
    }
    return *number;
}

std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text)
{
    const auto bytes = bmc::parseHex(text);
    if (!bytes) {
        throw Failure(Exit::usage, name, text, "expected pairs of hexadecimal digits");
    }
    return *bytes;
}

std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text,
                                  std::size_t size)
{
    auto bytes = bytesIn(name, text);
    if (bytes.size() != size) {
        throw Failure(Exit::usage, name, text,
                      "expected " + std::to_string(size) + " bytes, two hexadecimal digits each");
    }
    return bytes;
}

Parameter limitParameter()
{
    return {Parameter::Kind::option, "--timeout",
            "give up after so many seconds; 0, the default, waits", "SECONDS"};
}

unsigned limitIn(const Arguments &arguments)
{
    constexpr unsigned longest = 86400;
    return numberIn("--timeout", arguments.value("--timeout", "0"), 0, longest);
}

} // namespace nwctl
