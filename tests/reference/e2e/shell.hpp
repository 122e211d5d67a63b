// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands that the tests run, and waiting for what they bring about. */
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace e2e {

struct CommandResult {
    int status = 0;     /* exit status, 128 + signal for one that was killed */
    std::string output; /* standard output */
    std::string errors; /* standard error output */
};

CommandResult run(const std::string &command);

/* Output of a command that has to succeed; throws otherwise. */
std::string outputOf(const std::string &command);

/* Whether the condition came true within the limit. */
bool eventually(const std::function<bool()> &condition,
                std::chrono::milliseconds limit = std::chrono::seconds(10));

/* The kernel's addresses of an interface as "ADDRESS/LENGTH", sorted, link-local ones left out. */
std::vector<std::string> kernelAddresses(const std::string &interface);

} // namespace e2e
