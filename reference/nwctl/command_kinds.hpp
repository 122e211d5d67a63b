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

/* What rows make of the options given. */
using CheckGiven = std::function<Sending(const Given &given)>;
using CheckGivenForPort = std::function<Sending(const std::string &port, const Given &given)>;

Command optionsCommand(const CommandText &text, std::vector<OptionText> options, CheckGiven check);
Command portOptionsCommand(const CommandText &text, std::vector<OptionText> options,
                           CheckGivenForPort check);

/* "GROUP set OPTION...": checks the change that the rows make and sends it. */
template <typename Change>
Command changeCommand(const CommandText &text, std::span<const Option<Change>> rows,
                      Sending (*check)(const Change &change, const Given &given))
{
    return optionsCommand(text, optionTexts(rows), [rows, check](const Given &given) {
        return check(buildChange<Change>(rows, given), given);
    });
}

/* "GROUP set PORT OPTION...": the same for the settings of a port. */
template <typename Change>
Command portChangeCommand(const CommandText &text, std::span<const Option<Change>> rows,
                          Sending (*check)(const std::string &port, const Change &change,
                                           const Given &given))
{
    const auto checkGiven = [rows, check](const std::string &port, const Given &given) {
        return check(port, buildChange<Change>(rows, given), given);
    };
    return portOptionsCommand(text, optionTexts(rows), checkGiven);
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
