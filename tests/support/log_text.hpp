// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Logged lines as texts "module/category/level unit: line", so that whole sequences compare and
// print as they were written.
#pragma once

#include <string>
#include <vector>

#include "fake_platform.hpp"

namespace support {

using Lines = std::vector<std::string>;

inline std::string lineText(const char *shape, const std::string &text)
{
    return std::string(shape) + " libnetwork_mng: " + text;
}
inline std::string debugLine(const std::string &text)
{
    return lineText("10/0/7", text);
}
inline std::string errorLine(const std::string &text)
{
    return lineText("10/0/4", text);
}
inline std::string criticalLine(const std::string &text)
{
    return lineText("10/0/2", text);
}
inline std::string ifcFailLine(const std::string &text)
{
    return lineText("10/4/2", text);
}

inline Lines debugLines(const Lines &texts)
{
    Lines lines;
    for (const std::string &text : texts) {
        lines.push_back(debugLine(text));
    }
    return lines;
}

inline Lines loggedLines()
{
    Lines lines;
    for (const fake::LogLine &line : fake::platform().lines()) {
        lines.push_back(std::to_string(line.module) + "/" + std::to_string(line.category) + "/" +
                        std::to_string(line.level) + " " + line.file + ": " + line.text);
    }
    return lines;
}

inline Lines operator+(Lines first, const Lines &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace support
