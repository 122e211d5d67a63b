// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "text.hpp"

namespace nwctl {

namespace {

constexpr const char *file = NW_BMC_NAME_FILE;
constexpr std::size_t longest = NW_BMC_NAME_SIZE - 1;

std::string storedName()
{
    char text[NW_BMC_NAME_SIZE]{};
    const NW_RESULT result = LIB_NW_ReadBmcNameFromFile(text);
    if (result != NW_OK) {
        throw Failure(Exit::internal, "", "",
                      std::string("cannot read the BMC's name from ") + file, result);
    }
    const std::string line = text;
    return line.substr(0, line.find('\n'));
}

/* A longer name's end stays in the file, on the lines behind the first one: only that counts. */
void storeName(const std::string &name)
{
    if (name.size() > longest || LIB_NW_CheckHostName(name.c_str()) == 0) {
        throw Failure(Exit::refused, "NAME", name,
                      "a name is made of letters, digits and inner hyphens, at most " +
                          std::to_string(longest),
                      NW_ERR_OUT_OF_RANGE);
    }

    const std::string line = name + "\n";
    const NW_RESULT result =
        NW_WriteBmcNameToFile(line.data(), static_cast<std::uint32_t>(line.size()), file);
    if (result != NW_OK) {
        throw Failure(Exit::internal, "NAME", name,
                      std::string("cannot write the name to ") + file + ", which has to exist",
                      result);
    }
}

void declare(CLI::App &app, Session &session)
{
    const auto name = std::make_shared<std::string>();
    const CLI::Option *given =
        app.add_option("NAME", *name, "new name; without it, the present one is shown")
            ->type_name("");
    app.callback([name, given, &session] {
        if (!given->empty()) {
            storeName(*name);
        }
        const std::string stored = storedName();
        session.answer(Json{{"name", stored}}, escaped(stored) + "\n");
    });
}

} // namespace

void addNameCommand(std::vector<Command> &commands)
{
    commands.push_back(
        {"", "bmc-name", "Show or change the BMC's name", "bmc-name bmc-rack1", declare});
}

} // namespace nwctl
