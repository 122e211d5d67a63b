// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is of interest in what a tool prints. */
#ifndef TOOL_OUTPUT_HPP
#define TOOL_OUTPUT_HPP

#include <regex>
#include <set>
#include <string>

namespace support {

/* The first group of every match. */
inline std::set<std::string> allMatches(const std::string &text, const std::string &pattern)
{
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
         ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

} // namespace support

#endif
