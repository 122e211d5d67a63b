// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fixture for commands that work on this machine: private /tmp, /var and message queues. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs.hpp"

namespace local_test {

using e2e::nwctl;
using nlohmann::json;

/* A command line that takes longer beside the test. */
class Beside : public e2e::Process {
public:
    explicit Beside(const std::string &arguments);

    bool endsWithin(std::chrono::milliseconds time);
};

/* The example of a command's help. */
std::string exampleOf(const std::string &command);

class LocalTest : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    void SetUp() override;
    void TearDown() override;
};

} // namespace local_test
