// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Options of a change on the command line. */
#pragma once

#include <list>

#include "option.hpp"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace nwctl {

/* The arguments that every change has, and the options of its rows. Outlives the parsing. */
class OptionArguments {
public:
    void declare(CLI::App &app, std::span<const OptionText> texts);
    void declareDryRun(CLI::App &app);

    /* In the order of the rows, an option that was given again once for each value. */
    std::vector<GivenOption> given() const;
    bool dryRun() const
    {
        return dryRunWanted;
    }

private:
    struct Values {
        std::string name;
        std::vector<std::string> values;
    };

    std::list<Values> options; /* the app refers to the entries */
    bool dryRunWanted = false;
};

/* The positional PORT. */
CLI::Option *addPort(CLI::App &app, std::string &port, const char *remark = "");

} // namespace nwctl
