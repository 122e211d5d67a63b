// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fixture: a chassis manager that has never run, and what it keeps and publishes. */
#pragma once

#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "network_mng/rpc.h"
#include "programs.hpp"

namespace chassis_test {

using e2e::nwctl;
using nlohmann::json;
using Bytes = std::vector<std::uint8_t>;

/* The object of a file beneath the state directory; null when there is none. */
json kept(const std::string &file = "chassis.json");

/* A request of full size with a command and the beginning of its payload. */
Bytes request(std::uint8_t command, const Bytes &payload = {});

/* What a service answers to bytes of any kind: result word of its response, or nothing when the
 * call failed. */
std::optional<std::uint32_t> call(std::uint32_t service, std::uint32_t function,
                                  const Bytes &bytes);

class ChassisTest : public ::testing::Test {
protected:
    void SetUp() override;

    void start();
    /* SIGTERM; answers the exit status. */
    int stop();

    std::unique_ptr<e2e::Process> daemon;
};

} // namespace chassis_test
