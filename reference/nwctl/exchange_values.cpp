// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "exchange_values.hpp"

#include <CLI/CLI.hpp>

#include "addresses.hpp"
#include "common/hex.hpp"
#include "failure.hpp"

namespace nwctl {

unsigned numberIn(const std::string &name, const std::string &text, unsigned min, unsigned max)
{
    const auto number = parseNumber(text, max);
    if (!number || *number < min) {
        throw Failure(Exit::usage, name, text,
                      "expected a number from " + std::to_string(min) + " to " +
                          std::to_string(max));
    }
    return *number;
}

std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text)
{
    const auto bytes = bmc::parseHex(text);
    if (!bytes) {
        throw Failure(Exit::usage, name, text, "expected pairs of hexadecimal digits");
    }
    return *bytes;
}

std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text,
                                  std::size_t size)
{
    auto bytes = bytesIn(name, text);
    if (bytes.size() != size) {
        throw Failure(Exit::usage, name, text,
                      "expected " + std::to_string(size) + " bytes, two hexadecimal digits each");
    }
    return bytes;
}

void declareLimit(CLI::App &app, std::string &text)
{
    app.add_option("--timeout", text, "give up after so many seconds; 0, the default, waits")
        ->type_name("SECONDS");
}

unsigned limitIn(const std::string &text)
{
    constexpr unsigned longest = 86400;
    return numberIn("--timeout", text, 0, longest);
}

} // namespace nwctl
