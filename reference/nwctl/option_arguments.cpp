// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "option_arguments.hpp"

#include <CLI/CLI.hpp>

namespace nwctl {

void OptionArguments::declareDryRun(CLI::App &app)
{
    app.add_flag("--dry-run", dryRunWanted, "make every check, send nothing, tell what would be");
}

std::vector<GivenOption> OptionArguments::given() const
{
    std::vector<GivenOption> all;
    for (const Values &option : options) {
        for (const std::string &value : option.values) {
            all.push_back({option.name, value});
        }
    }
    return all;
}

void OptionArguments::declare(CLI::App &app, std::span<const OptionText> texts)
{
    for (const OptionText &text : texts) {
        Values &option = options.emplace_back(Values{text.name, {}});
        app.add_option(text.name, option.values, text.description)
            ->type_name(text.valueName)
            ->option_text(text.valueName)
            ->allow_extra_args(false);
    }
}

CLI::Option *addPort(CLI::App &app, std::string &port, const char *remark)
{
    const std::string description =
        "Port: eth0, eth1, bond0, its index 0, 1, 2, or channel:N for the port of a LAN channel";
    return app.add_option("PORT", port, description + remark)->type_name("");
}

} // namespace nwctl
