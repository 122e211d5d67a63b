// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the platform's tests share. */
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/types.h>

namespace bmc::test {

/* A directory that goes away with its owner. */
class TemporaryDirectory {
public:
    TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;
    ~TemporaryDirectory();

    const std::filesystem::path &path() const
    {
        return m_path;
    }

private:
    std::filesystem::path m_path;
};

/* Sets an environment variable, or unsets it for null, until the end of the scope. */
class Environment {
public:
    Environment(const char *name, const char *value);
    Environment(const char *name, const std::string &value) : Environment(name, value.c_str()) {}
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    ~Environment();

private:
    std::string m_name;
    std::string m_before;
    bool m_wasSet;
};

/* Tests that need a state directory. */
class StateTest : public ::testing::Test {
protected:
    const std::filesystem::path &state() const
    {
        return m_directory.path();
    }

    void write(const std::filesystem::path &file, std::string_view text) const;

private:
    TemporaryDirectory m_directory;
    Environment m_variable{"BMC_STATE_DIR", m_directory.path().string()};
};

/* What the function writes to standard error. */
std::string stderrOf(const std::function<void()> &function);

/* A forked child that runs the function and ends with status 0 unless an expectation in it failed.
 * It is killed after a while, whatever it does, and at the latest with its owner. */
class Child {
public:
    explicit Child(const std::function<void()> &function);
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;
    ~Child();

    pid_t pid() const
    {
        return m_pid;
    }

    /* Exit status as waitpid gives it. */
    int wait();

private:
    pid_t m_pid;
};

/* Runs the function in a child and expects it to succeed there. */
void inChild(const std::function<void()> &function);

/* Expects the condition to become true within a few seconds. */
void eventually(const std::function<bool()> &condition);

} // namespace bmc::test
