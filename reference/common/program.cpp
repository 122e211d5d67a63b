// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/program.hpp"

#include <csignal>
#include <iostream>
#include <optional>
#include <vector>

#include <getopt.h>

#include "common/print.hpp"
#include "common/standard_descriptors.hpp"

namespace bmc {

namespace {

constexpr const char *environment =
    "\n"
    "Environment: BMC_STATE_DIR (/var/lib/bmc), DBUS_SYSTEM_BUS_ADDRESS, BMC_LOG_LEVEL (0 to 7),\n"
    "BMC_LOG_TARGET (stderr or journal).\n";

constexpr Option common[] = {{"help", false}, {"version", false}};

/* Nothing for a word that is no option, and for an option that is unknown or given twice. */
std::optional<Given> parse(const Program &program, int count, char **arguments)
{
    std::vector<option> known;
    for (const auto options : {program.options, std::span<const Option>(common)}) {
        for (const Option &each : options) {
            known.push_back(
                {each.name, each.hasValue ? required_argument : no_argument, nullptr, 0});
        }
    }
    known.push_back({});

    Given given;
    opterr = 0;
    int row = 0;
    int result = 0;
    while ((result = getopt_long(count, arguments, "", known.data(), &row)) == 0) {
        const char *name = known.at(static_cast<std::size_t>(row)).name;
        if (!given.emplace(name, optarg == nullptr ? "" : optarg).second) {
            return std::nullopt;
        }
    }
    const bool isWhole = result == -1 && optind == count;
    return isWhole ? std::optional(given) : std::nullopt;
}

int refuseUsage(const Program &program)
{
    std::cerr << program.name << ": see " << program.name << " --help\n";
    return wrongUsage;
}

} // namespace

int runProgram(const Program &program, int count, char **arguments,
               const std::function<void(const Given &)> &task)
{
    occupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN);
    const std::optional<Given> given = parse(program, count, arguments);
    if (!given) {
        return refuseUsage(program);
    }
    if (given->contains("help")) {
        return print(program.name, std::string(program.usage) + environment);
    }
    if (given->contains("version")) {
        return print(program.name, std::string(program.name) + " " + program.version + "\n");
    }
    try {
        task(*given);
        return done;
    } catch (const WrongUsage &) {
        return refuseUsage(program);
    } catch (const std::exception &error) {
        std::cerr << program.name << ": " << error.what() << '\n';
        return failed;
    }
}

} // namespace bmc
