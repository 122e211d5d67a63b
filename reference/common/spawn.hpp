// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Programs, run without a shell. */
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace bmc {

enum class Streams { inherited, closed /* /dev/null instead */ };

struct SpawnOptions {
    Streams streams = Streams::inherited;
    std::optional<std::chrono::milliseconds> patience; /* then it is killed; none: wait for ever */
};

/* Runs a program, found in PATH, with its arguments and waits for its end: its exit status, or 128
 * and the number of the signal that killed it. It starts with signals as a login gives them,
 * whatever this process blocks or ignores. Throws std::system_error when it cannot be started. */
int runProgram(std::vector<std::string> words, const SpawnOptions &options = {});

} // namespace bmc
