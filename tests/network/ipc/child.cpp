// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "child.hpp"

#include <iostream>

namespace ipc {

std::string outcome(std::uint32_t result, const std::vector<fake::LogLine> &lines)
{
    std::string text = fake::formatted("%x:", result);
    for (const fake::LogLine &line : lines) {
        text += fake::formatted(" (%u, %u, %u) %s", line.module, line.category, line.level,
                                line.text.c_str());
    }
    return text;
}

Child::Child(const std::function<std::string()> &run)
    : support::Child([&] {
          fake::platform().clearCalls();
          std::cout << run();
      })
{
}

bool Child::endsWithin(std::chrono::milliseconds time)
{
    return support::eventually([this] { return !isRunning(); }, time);
}

std::string Child::report()
{
    const int status = wait();
    return status < 128 ? outputText() : fake::formatted("ended by signal %d", status - 128);
}

} // namespace ipc
