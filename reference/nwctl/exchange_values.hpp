// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Numbers, bytes and time limits that the user gives for a message. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace nwctl {

/* Decimal number of min to max; name is the option's or argument's. Throws Failure (usage). */
unsigned numberIn(const std::string &name, const std::string &text, unsigned min, unsigned max);

/* Pairs of hexadecimal digits. Throws Failure (usage). */
std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text);
/* The same, exactly size bytes. */
std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text,
                                  std::size_t size);

/* The option --timeout of a command that blocks, and its value in seconds; 0 waits. */
void declareLimit(CLI::App &app, std::string &text);
unsigned limitIn(const std::string &text);

} // namespace nwctl
