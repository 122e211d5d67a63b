// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/run.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <list>
#include <map>

#include "nwctl/command.hpp"

namespace nwctl {

namespace {

constexpr const char *statusHelp = "Exit status:\n"
                                   "  0  success\n"
                                   "  1  internal failure, or the configuration cannot be read\n"
                                   "  2  usage error\n"
                                   "  3  refused by a check, nothing was sent\n"
                                   "  4  refused by the network manager\n"
                                   "  5  the network manager cannot be reached\n"
                                   "  6  what was asked for was not found\n"
                                   "  7  kernel or system are not as it is stored";

/* --json is known before the command line is understood, since errors obey it too. */
bool wantsJson(std::span<const std::string> arguments)
{
    const auto end = std::ranges::find(arguments, "--");
    return std::find(arguments.begin(), end, "--json") != end;
}

/* Where the values of a parameter are kept while the command line is parsed. */
struct Slot {
    std::string name;
    std::string value{};               /* the only one, */
    std::vector<std::string> values{}; /* or each of several */
    CLI::Option *option = nullptr;
};
using Slots = std::list<Slot>; /* the app refers to the entries */

CLI::Option *declare(CLI::App &app, const Parameter &parameter, Slot &slot)
{
    const auto one = [&] { return app.add_option(parameter.name, slot.value, parameter.help); };
    const auto many = [&] { return app.add_option(parameter.name, slot.values, parameter.help); };
    switch (parameter.kind) {
    case Parameter::Kind::required:
        return one()->type_name("")->required();
    case Parameter::Kind::optional:
        return one()->type_name("");
    case Parameter::Kind::several:
        return many()->type_name("")->required()->expected(1, parameter.most);
    case Parameter::Kind::option:
        return one()->type_name(parameter.valueName);
    case Parameter::Kind::repeated:
        return many()
            ->type_name(parameter.valueName)
            ->option_text(parameter.valueName)
            ->allow_extra_args(false);
    case Parameter::Kind::flag:
        return app.add_flag(parameter.name)->description(parameter.help);
    }
    throw std::logic_error("no such kind of parameter");
}

Arguments argumentsIn(const Slots &slots)
{
    Given given;
    for (const Slot &slot : slots) {
        for (const std::string &value : slot.values) {
            given.push_back({slot.name, value});
        }
        if (slot.values.empty() && !slot.option->empty()) {
            given.push_back({slot.name, slot.value});
        }
    }
    return Arguments(std::move(given));
}

void addGlobals(CLI::App &app)
{
    app.add_flag("--json")->description("Answer with one JSON document, errors included");
    app.set_version_flag("--version", "nwctl " NWCTL_VERSION);
    app.footer(statusHelp);
    app.require_subcommand(1);
}

void addCommand(CLI::App &parent, const Command &command, Session &session)
{
    CLI::App *app = parent.add_subcommand(command.name, command.description);
    app->fallthrough();
    app->footer("Example:\n  nwctl " + command.example);

    const auto slots = std::make_shared<Slots>();
    for (const Parameter &parameter : command.parameters) {
        Slot &slot = slots->emplace_back(Slot{parameter.name});
        slot.option = declare(*app, parameter, slot);
    }
    app->callback([slots, run = command.run, &session] { run(argumentsIn(*slots), session); });
}

void addCommands(CLI::App &app, Session &session)
{
    std::map<std::string, CLI::App *> parents{{"", &app}};
    for (const Group &group : groups()) {
        CLI::App *parent = app.add_subcommand(group.name, group.description);
        parent->require_subcommand(1)->fallthrough();
        parents[group.name] = parent;
    }
    for (const Command &command : commands()) {
        addCommand(*parents.at(command.group), command, session);
    }
}

/* What CLI11 found wrong, with the option and the value that it is about. Its own texts begin with
 * the option: "--vlan: 1 required ID missing", "PORT is required". */
Failure misuse(const CLI::App &app, const CLI::ParseError &error)
{
    const std::vector<std::string> unknown = app.remaining(true);
    if (!unknown.empty()) {
        const bool option = unknown.front().starts_with('-');
        return {Exit::usage, option ? unknown.front() : "argument",
                option && unknown.size() > 1 ? unknown[1]
                : option                     ? ""
                                             : unknown.front(),
                option ? "no such option" : "not expected here"};
    }

    const std::string text = error.what();
    for (const std::string separator : {": ", " is required"}) {
        const auto end = text.find(separator);
        if (end != std::string::npos && text.find(' ') >= end) {
            const std::string reason = separator == ": " ? text.substr(end + 2) : "is missing";
            return {Exit::usage, text.substr(0, end), "", reason};
        }
    }
    return {Exit::usage, "", "", text};
}

void parse(CLI::App &app, std::span<const std::string> arguments)
{
    /* CLI11 takes them from the back. */
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
}

} // namespace

Exit run(std::span<const std::string> arguments, std::ostream &out, std::ostream &err)
{
    Session session(out, err, wantsJson(arguments));
    CLI::App app("Reads and changes the network configuration of the management controller.",
                 "nwctl");

    try {
        addGlobals(app);
        addCommands(app, session);
        parse(app, arguments);
    } catch (const CLI::Success &success) {
        app.exit(success, out, err);
    } catch (const CLI::ParseError &error) {
        session.report(misuse(app, error));
    } catch (const Failure &failure) {
        session.report(failure);
    } catch (const std::exception &exception) {
        session.report(Failure(Exit::internal, "", "", exception.what()));
    }
    if (!out.flush()) {
        err << "nwctl: the answer could not be written\n";
        return Exit::internal;
    }
    return session.status;
}

} // namespace nwctl
