// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands of the usual kinds, from their rows. */
#pragma once

#include "commands.hpp"
#include "option_arguments.hpp"
#include "sending.hpp"

namespace nwctl {

/* Name and help of a command. */
struct CommandText {
    const char *group;
    const char *name;
    const char *description;
    const char *example;
};

using Given = std::vector<GivenOption>;

/* "GROUP set OPTION...": checks the change that the rows make and sends it. */
template <typename Change>
Command changeCommand(const CommandText &text, std::span<const Option<Change>> rows,
                      Sending (*check)(const Change &change, const Given &given))
{
    const auto declare = [rows, check](CLI::App &app, Session &session) {
        const auto options = std::make_shared<OptionArguments>();
        options->declare(app, rows);
        options->declareDryRun(app);
        app.callback([rows, check, options, &session] {
            const Given given = options->given();
            carryOut(check(buildChange<Change>(rows, given), given), options->dryRun(), session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

/* "GROUP set PORT OPTION...": the same for the settings of a port. */
template <typename Change>
Command portChangeCommand(const CommandText &text, std::span<const Option<Change>> rows,
                          Sending (*check)(const std::string &port, const Change &change,
                                           const Given &given))
{
    const auto declare = [rows, check](CLI::App &app, Session &session) {
        const auto options = std::make_shared<OptionArguments>();
        const auto port = std::make_shared<std::string>();
        addPort(app, *port)->required();
        options->declare(app, rows);
        options->declareDryRun(app);
        app.callback([rows, check, options, port, &session] {
            const Given given = options->given();
            carryOut(check(*port, buildChange<Change>(rows, given), given), options->dryRun(),
                     session);
        });
    };
    return {text.group, text.name, text.description, text.example, declare};
}

/* A positional argument that is the whole change. */
struct ValueText {
    const char *name;
    const char *description;
    const char *whenMissing; /* null: the argument is required */
};

/* "GROUP set VALUE". */
Command valueCommand(const CommandText &text, const ValueText &value,
                     Sending (*check)(const GivenOption &given));

/* "GROUP show [PORT]": without PORT all ports of the present mode. */
Command portShowCommand(const CommandText &text,
                        void (*show)(std::span<const unsigned> ports, Session &session));

/* A command without arguments. */
Command plainCommand(const CommandText &text, void (*run)(Session &session));

} // namespace nwctl
