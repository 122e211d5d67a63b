// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the platform's tests share. */
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "files.hpp"
#include "process.hpp"

namespace bmc::test {

using support::Child;
using support::eventually;
using support::inChild;
using support::TemporaryDirectory;

/* Sets an environment variable, or unsets it for null, until the end of the scope. */
class Environment {
public:
    Environment(const char *name, const char *value);
    Environment(const char *name, const std::string &value) : Environment(name, value.c_str()) {}
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    ~Environment();

private:
    std::string name_;
    std::string before_;
    bool wasSet_;
};

/* Tests that need a state directory. */
class StateTest : public ::testing::Test {
protected:
    const std::filesystem::path &state() const
    {
        return directory_.path();
    }

    void write(const std::filesystem::path &file, std::string_view text) const;

private:
    TemporaryDirectory directory_;
    Environment variable_{"BMC_STATE_DIR", directory_.path().string()};
};

/* What the function writes to standard error. */
std::string stderrOf(const std::function<void()> &function);

} // namespace bmc::test
