// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a command prints, and what is of interest in it. */
#ifndef TOOL_OUTPUT_HPP
#define TOOL_OUTPUT_HPP

#include <array>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace support {

inline std::string outputOf(const std::string &command)
{
    FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }

    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t length = fread(part.data(), 1, part.size(), pipe)) {
        output.append(part.data(), length);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error("failed: " + command);
    }
    return output;
}

inline std::string contentsOf(const std::string &path)
{
    std::ifstream file(path);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

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
