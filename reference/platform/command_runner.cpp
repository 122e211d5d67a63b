// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Runs programs, without a shell. */
#include <system_error>

#include "bmc_platform.h"
#include "common/spawn.hpp"
#include "platform/command_words.hpp"
#include "platform/failure.hpp"

namespace {

/* A program that is missing is an error here, unlike a file of state. */
int run(std::vector<std::string> words)
{
    try {
        return bmc::runProgram(std::move(words));
    } catch (const std::system_error &error) {
        throw bmc::Failure(error.code().value(), std::string("command ") + error.what());
    }
}

} // namespace

/* 128 and the signal's number when the program was killed. */
int BMC_SafeSystem(const char *pcCommand)
{
    int status = -1;
    const int failed = bmc::guarded([&] {
        bmc::require(pcCommand != nullptr, "command: null argument");
        std::vector<std::string> words = bmc::splitCommand(pcCommand);
        bmc::require(!words.empty(), "command: empty");
        status = run(std::move(words));
    });
    return failed != 0 ? -1 : status;
}
