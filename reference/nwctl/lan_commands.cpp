// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "address_probe.hpp"
#include "addresses.hpp"
#include "command_kinds.hpp"
#include "failure.hpp"
#include "lan_sending.hpp"

namespace nwctl {

namespace {

struct SetArguments {
    std::string port;
    OptionArguments options;
    bool unchecked = false;
    bool unprobed = false;
};

void show(std::span<const unsigned> ports, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    std::string tables;
    Json documents = Json::array();
    for (const unsigned port : ports) {
        const PortView view = viewPort(port, readPort(interfaces, port));
        tables += (tables.empty() ? "" : "\n") + portTable(view);
        documents.push_back(portJson(view));
    }

    session.answer(Json{{"mode", modeName(interfaces)}, {"ports", documents}}, tables);
}

void requireFreeAddress(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                        Session &session)
{
    const ProbeResult result = probeAddress(change, interfaces);
    if (result == ProbeResult::noTool) {
        session.remark("arping is not installed: whether another host has the address is unknown");
    }
    if (result == ProbeResult::taken) {
        throw Failure(Exit::refused, "--ipv4",
                      formatAddress(std::to_array(change.fields.aucIpv4Addr)),
                      "another host on the network of " + portName(interfaces, change.port) +
                          " has this address");
    }
}

void set(const SetArguments &arguments, Session &session)
{
    const std::vector<GivenOption> given = arguments.options.given();
    const SegmentCheck check = arguments.unchecked ? SegmentCheck::skipped : SegmentCheck::made;
    LanChange change = buildLanChange(0, given);
    const Sending sending = lanSending(arguments.port, change, given, check);
    if (!arguments.unprobed) {
        change.port = sending.port->index;
        requireFreeAddress(change, readInterfaces(), session);
    }
    carryOut(sending, arguments.options.dryRun(), session);
}

void declareSet(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<SetArguments>();
    addPort(app, arguments->port)->required();
    arguments->options.declare(app, optionTexts(lanOptions()));
    arguments->options.declareDryRun(app);
    app.add_flag(
        "--no-check", arguments->unchecked,
        "send the change even when it makes two networks overlap or a route meet another port");
    app.add_flag("--no-probe", arguments->unprobed,
                 "send a new IPv4 address without asking the network whether it is taken");
    app.callback([arguments, &session] { set(*arguments, session); });
}

} // namespace

void addLanCommands(std::vector<Command> &commands)
{
    commands.push_back(portShowCommand(
        {"lan", "show", "Show the settings of a port and its live IPv6 state", "lan show eth1"},
        show));
    commands.push_back({"lan", "set", "Change settings of a port",
                        "lan set eth1 --ipv4 192.168.20.5/24 --ipv4-gateway 192.168.20.1",
                        declareSet});
}

} // namespace nwctl
