// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fixture for commands that work on this machine: private /tmp, /var and message queues. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell.hpp"

namespace local_test {

using nlohmann::json;

inline e2e::CommandResult nwctl(const std::string &arguments)
{
    return e2e::run(NW_BINARY_DIR "/nwctl " + arguments);
}

/* Runs a command line that takes longer beside the test; its status and output are files of the
 * name beneath /run. */
void startBeside(const std::string &name, const std::string &arguments);
bool hasEnded(const std::string &name);
e2e::CommandResult resultBeside(const std::string &name);

/* The example of a command's help. */
std::string exampleOf(const std::string &command);

class LocalTest : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    void SetUp() override;
    void TearDown() override;
};

} // namespace local_test
