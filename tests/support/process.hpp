// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Programs and forks that a test starts, and waiting for what they bring about.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace support {

// How long a test waits for what has to happen.
inline constexpr std::chrono::seconds patience{30};

// Whether the condition came true within the limit.
[[nodiscard]] bool eventually(const std::function<bool()> &holds,
                              std::chrono::milliseconds limit = patience);

struct Outcome {
    int status;         // exit status, or 128 and the number of the signal that killed it
    std::string output; // standard output
    std::string errors; // standard error
};

// A process whose output is kept, and shown at the end if the test has failed. It is killed when
// the object goes, and dies with this process.
class Process {
public:
    // A program, found in PATH. "NAME=VALUE" replaces what it would inherit.
    explicit Process(const std::vector<std::string> &words,
                     const std::vector<std::string> &environment = {},
                     const std::string &input = {});
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;
    ~Process();

    pid_t pid() const
    {
        return pid_;
    }
    bool isRunning();
    void signal(int number);
    // Its status, once it has ended; throws when it does not.
    int wait();
    // SIGTERM and its status.
    int stop();
    // Ends it as a crash would.
    void kill();

    // What it has written up to now.
    std::string outputText() const;
    std::string errorText() const;
    // All of it, once it has ended.
    Outcome outcome();

protected:
    explicit Process(const std::function<int()> &work);

private:
    // This process's memory, which a program that is about to begin needs no copy of.
    enum class Memory { copied, lent };

    void start(const std::function<int()> &work, const std::string &input, Memory memory);
    void look(int options);

    std::string name_;
    pid_t pid_ = -1;
    std::optional<int> status_;
    int output_ = -1;
    int errors_ = -1;
};

// A fork of this process that runs the function and ends with status 0 unless an expectation in it
// failed. A signal ends it when the test's patience does.
class Child : public Process {
public:
    explicit Child(const std::function<void()> &work);
};

// Runs the function in a child and expects it to succeed there.
void inChild(const std::function<void()> &work);

// Runs a program to its end.
Outcome runProgram(const std::vector<std::string> &words,
                   const std::vector<std::string> &environment = {}, const std::string &input = {});

// Words that run a command line of the shell.
std::vector<std::string> inShell(const std::string &line);

// Runs a command line to its end.
Outcome run(const std::string &line);

// Standard output of a command line that has to succeed; throws otherwise.
std::string shell(const std::string &line);

} // namespace support
