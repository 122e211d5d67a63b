// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Linked with a program whose tests change interfaces, host name and bus. Outside a sandbox they
 * would do that to the machine, which might not be reached any more: not one of them runs there. */
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class Sandboxed : public testing::Environment {
    void SetUp() override
    {
        if (std::getenv("NW_SANDBOX") == nullptr) {
            GTEST_FAIL() << "these tests change interfaces: run them by scripts/sandbox";
        }
    }
};

[[maybe_unused]] const auto *const sandboxed = testing::AddGlobalTestEnvironment(new Sandboxed);

} // namespace
