#include "commands.hpp"
#include "lan_sending.hpp"
#include "option_arguments.hpp"
#include "stored.hpp"

namespace nwctl {

namespace {

struct ShowArguments {
    std::string port;
    bool allPorts = true;
};

struct SetArguments {
    std::string port;
    OptionArguments options;
    bool unchecked = false;
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

    if (session.json()) {
        session.print(Json{{"mode", modeName(interfaces)}, {"ports", documents}});
    } else {
        session.print(tables);
    }
}

void set(const SetArguments &arguments, Session &session)
{
    const std::vector<GivenOption> given = arguments.options.given();
    const SegmentCheck check = arguments.unchecked ? SegmentCheck::skipped : SegmentCheck::made;
    const LanChange change = buildLanChange(0, given);
    carryOut(lanSending(arguments.port, change, given, check), arguments.options.dryRun(), session);
}

void declareShow(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<ShowArguments>();
    const CLI::Option *port =
        addPort(app, arguments->port, "; without it, all ports of the present mode");
    app.callback([arguments, port, &session] {
        arguments->allPorts = port->empty();
        show(*arguments, session);
    });
}

void declareSet(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<SetArguments>();
    addPort(app, arguments->port)->required();
    arguments->options.declare(app, lanOptions());
    arguments->options.declareDryRun(app);
    app.add_flag("--no-check", arguments->unchecked,
                 "send the change even when it makes two networks overlap");
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
