// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "command_kinds.hpp"

#include <CLI/CLI.hpp>

#include "stored.hpp"

namespace nwctl {

Command optionsCommand(const CommandText &text, std::vector<OptionText> options, CheckGiven check)
{
    const auto declare = [options, check](CLI::App &app, Session &session) {
        const auto arguments = std::make_shared<OptionArguments>();
        arguments->declare(app, options);
        arguments->declareDryRun(app);
        app.callback([check, arguments, &session] {
            carryOut(check(arguments->given()), arguments->dryRun(), session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

Command portOptionsCommand(const CommandText &text, std::vector<OptionText> options,
                           CheckGivenForPort check)
{
    const auto declare = [options, check](CLI::App &app, Session &session) {
        const auto arguments = std::make_shared<OptionArguments>();
        const auto port = std::make_shared<std::string>();
        addPort(app, *port)->required();
        arguments->declare(app, options);
        arguments->declareDryRun(app);
        app.callback([check, arguments, port, &session] {
            carryOut(check(*port, arguments->given()), arguments->dryRun(), session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

Command valueCommand(const CommandText &text, const ValueText &value,
                     Sending (*check)(const GivenOption &given))
{
    const auto declare = [value, check](CLI::App &app, Session &session) {
        const auto options = std::make_shared<OptionArguments>();
        const auto given = std::make_shared<GivenOption>();
        given->name = value.name;
        given->value = value.whenMissing != nullptr ? value.whenMissing : "";
        app.add_option(value.name, given->value, value.description)
            ->required(value.whenMissing == nullptr)
            ->type_name("");
        options->declareDryRun(app);
        app.callback([check, given, options, &session] {
            carryOut(check(*given), options->dryRun(), session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

Command portShowCommand(const CommandText &text,
                        void (*show)(std::span<const unsigned> ports, Session &session))
{
    const auto declare = [show](CLI::App &app, Session &session) {
        const auto port = std::make_shared<std::string>();
        const CLI::Option *given =
            addPort(app, *port, "; without it, all ports of the present mode");
        app.callback([show, port, given, &session] {
            const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
            if (given->empty()) {
                show(portsServed(interfaces), session);
                return;
            }
            const unsigned one = findPort(interfaces, *port);
            show({&one, 1}, session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

Command plainCommand(const CommandText &text, void (*run)(Session &session))
{
    const auto declare = [run](CLI::App &app, Session &session) {
        app.callback([run, &session] { run(session); });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

} // namespace nwctl
