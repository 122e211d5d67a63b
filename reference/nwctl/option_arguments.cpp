// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "option_arguments.hpp"

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

void OptionArguments::add(CLI::App &app, const char *name, const char *valueName,
                          const char *description)
{
    Values &option = options.emplace_back(Values{name, {}});
    app.add_option(name, option.values, description)
        ->type_name(valueName)
        ->option_text(valueName)
        ->allow_extra_args(false);
}

CLI::Option *addPort(CLI::App &app, std::string &port, const char *remark)
{
    const std::string description =
        "Port: eth0, eth1, bond0, its index 0, 1, 2, or channel:N for the port of a LAN channel";
    return app.add_option("PORT", port, description + remark)->type_name("");
}

} // namespace nwctl
