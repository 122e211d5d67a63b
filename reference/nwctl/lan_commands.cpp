#include "address_probe.hpp"
#include "addresses.hpp"
#include "commands.hpp"
#include "lan_check.hpp"
#include "lan_options.hpp"
#include "sentences.hpp"
#include "stored.hpp"
#include "text.hpp"
#include "wireless.hpp"

namespace nwctl {

namespace {

struct ShowArguments {
    std::string port;
    bool allPorts = true;
};

struct SetArguments {
    std::string port;
    std::vector<std::vector<std::string>> values; /* by row of lanOptions() */
    bool unchecked = false;
    bool unprobed = false;
};

void show(const ShowArguments &arguments, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const auto served = portsServed(interfaces);
    std::vector<unsigned> ports(served.begin(), served.end());
    if (!arguments.allPorts) {
        ports = {findPort(interfaces, arguments.port)};
    }

    std::string tables;
    Json documents = Json::array();
    for (const unsigned port : ports) {
        const PortView view = viewPort(port, readPort(interfaces, port));
        tables += (tables.empty() ? "" : "\n") + portTable(view);
        documents.push_back(portJson(view));
    }

    session.answer(Json{{"mode", modeName(interfaces)}, {"ports", documents}}, tables);
}

std::vector<GivenOption> givenOptions(const SetArguments &arguments)
{
    std::vector<GivenOption> given;
    for (std::size_t row = 0; row < lanOptions().size(); ++row) {
        for (const std::string &value : arguments.values[row]) {
            given.push_back({lanOptions()[row].name, value});
        }
    }
    return given;
}

/* The failure of a change, put down to the option that the result is about. */
Failure changeFailure(Exit status, NW_RESULT result, const std::string &reason,
                      const std::string &port, std::span<const GivenOption> given)
{
    const GivenOption *option = optionAbout(result, given);
    return option != nullptr ? Failure(status, option->name, option->value, reason, result)
                             : Failure(status, "PORT", port, reason, result);
}

void requireNoConflict(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                       std::span<const GivenOption> given)
{
    const NW_RESULT result =
        checkSegments(change, interfaces, readLanRecord(), bmc::manager::readWireless());
    if (result != NW_OK) {
        throw changeFailure(Exit::refused, result, "the change would make two networks overlap",
                            portName(interfaces, change.port), given);
    }
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

std::vector<std::string> send(const LanChange &change, const std::string &port,
                              std::span<const GivenOption> given)
{
    NW_LAN_BITMAP_S bitmap = bitmapOf(change);
    NW_LAN_SET_CFG_S config = configOf(change);
    NW_OPER_LOG_S log{};

    const NW_RESULT result = LIB_NW_SetLanConfig(&bitmap, &config, &log);
    if (result != NW_OK) {
        const bool unreached = result == NW_ERR_RPC_TRANSPORT;
        Failure failure = changeFailure(
            unreached ? Exit::transport : Exit::manager, result,
            unreached ? "no answer from the network manager; the change may still take effect"
                      : "the network manager refused the change",
            port, given);
        failure.sentence = failureSentence(log);
        throw failure;
    }
    return lanSentences(log);
}

void set(const SetArguments &arguments, Session &session)
{
    const std::vector<GivenOption> given = givenOptions(arguments);
    LanChange change = buildLanChange(0, given);
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    change.port = findPort(interfaces, arguments.port);
    const std::string port = portName(interfaces, change.port);
    if (!arguments.unchecked) {
        requireNoConflict(change, interfaces, given);
    }
    if (!arguments.unprobed) {
        requireFreeAddress(change, interfaces, session);
    }

    const std::vector<std::string> sentences = send(change, port, given);
    std::string lines;
    for (const std::string &sentence : sentences) {
        lines += escaped(sentence) + "\n";
    }
    session.answer(Json{{"port", port}, {"index", change.port}, {"sentences", sentences}}, lines);
}

void declareShow(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<ShowArguments>();
    const CLI::Option *port =
        app.add_option("PORT", arguments->port,
                       std::string(portDescription) + "; without it, all ports of the present mode")
            ->type_name("");
    app.callback([arguments, port, &session] {
        arguments->allPorts = port->empty();
        show(*arguments, session);
    });
}

void declareSet(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<SetArguments>();
    arguments->values.resize(lanOptions().size());
    app.add_option("PORT", arguments->port, portDescription)->required()->type_name("");

    for (std::size_t row = 0; row < lanOptions().size(); ++row) {
        const LanOption &option = lanOptions()[row];
        app.add_option(option.name, arguments->values[row], option.description)
            ->type_name(option.valueName)
            ->option_text(option.valueName)
            ->allow_extra_args(false);
    }
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
    commands.push_back({"lan", "show", "Show the settings of a port and its live IPv6 state",
                        "lan show eth1", declareShow});
    commands.push_back({"lan", "set", "Change settings of a port",
                        "lan set eth1 --ipv4 192.168.20.5/24 --ipv4-gateway 192.168.20.1",
                        declareSet});
}

} // namespace nwctl
