// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "process.hpp"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

namespace support {

namespace {

// A file in memory. Appending keeps apart what several processes write.
int newStream(const std::string &content = {})
{
    const int stream = memfd_create("stream", MFD_CLOEXEC);
    fcntl(stream, F_SETFL, O_APPEND);
    const auto written = write(stream, content.data(), content.size());
    if (stream < 0 || written != static_cast<ssize_t>(content.size())) {
        throw std::runtime_error("no file in memory");
    }
    lseek(stream, 0, SEEK_SET);
    return stream;
}

// The writers' position is their own.
std::string textOf(int stream)
{
    std::string text(4096, '\0');
    std::size_t length = 0;
    for (ssize_t got = 0; (got = pread(stream, text.data() + length, text.size() - length,
                                       static_cast<off_t>(length))) > 0;) {
        length += static_cast<std::size_t>(got);
        text.resize(length + 4096);
    }
    text.resize(length);
    return text;
}

bool isReplaced(std::string_view variable, const std::vector<std::string> &changes)
{
    const std::string_view name = variable.substr(0, variable.find('=') + 1);
    return std::ranges::any_of(
        changes, [name](const std::string &change) { return change.starts_with(name); });
}

std::vector<std::string> environmentWith(const std::vector<std::string> &changes)
{
    std::vector<std::string> variables = changes;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        if (!isReplaced(*variable, changes)) {
            variables.emplace_back(*variable);
        }
    }
    return variables;
}

// Null-terminated; valid as long as the words are.
std::vector<char *> pointersTo(std::vector<std::string> &words)
{
    std::vector<char *> pointers;
    for (std::string &word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

int failuresSoFar()
{
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    return info == nullptr ? 0 : info->result()->total_part_count();
}

int succeedsIn(const std::function<void()> &work)
{
    alarm(static_cast<unsigned>(patience.count()));
    const int before = failuresSoFar();
    EXPECT_NO_THROW(work());
    std::cout.flush();
    std::fflush(nullptr);
    return failuresSoFar() == before ? 0 : 1;
}

} // namespace

bool eventually(const std::function<bool()> &holds, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!holds()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

Process::Process(const std::vector<std::string> &words, const std::vector<std::string> &environment,
                 const std::string &input)
    : name_(words.at(0))
{
    std::vector<std::string> arguments = words;
    std::vector<std::string> variables = environmentWith(environment);
    const auto argumentPointers = pointersTo(arguments);
    const auto variablePointers = pointersTo(variables);
    start(
        [&] {
            execvpe(argumentPointers[0], argumentPointers.data(), variablePointers.data());
            return 127;
        },
        input, Memory::lent);
}

Process::Process(const std::function<int()> &work) : name_("a child")
{
    start(work, {}, Memory::copied);
}

void Process::start(const std::function<int()> &work, const std::string &input, Memory memory)
{
    const int stdinStream = newStream(input);
    output_ = newStream();
    errors_ = newStream();
    std::cout.flush();
    std::fflush(nullptr); // or both would write what stands in the buffers

    pid_ = memory == Memory::lent ? vfork() : fork();
    if (pid_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(stdinStream, STDIN_FILENO);
        dup2(output_, STDOUT_FILENO);
        dup2(errors_, STDERR_FILENO);
        _exit(work());
    }
    close(stdinStream);
    if (pid_ < 0) {
        throw std::runtime_error("no second process");
    }
}

Process::~Process()
{
    kill();
    if (::testing::Test::HasFailure()) {
        std::cout << outputText() << errorText() << std::flush;
    }
    close(output_);
    close(errors_);
}

void Process::look(int options)
{
    int waited = 0;
    if (!status_ && waitpid(pid_, &waited, options) == pid_) {
        status_ = WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
    }
}

bool Process::isRunning()
{
    look(WNOHANG);
    return !status_;
}

void Process::signal(int number)
{
    if (isRunning()) {
        ::kill(pid_, number);
    }
}

int Process::wait()
{
    if (!eventually([this] { return !isRunning(); })) {
        throw std::runtime_error(name_ + " does not end");
    }
    return *status_;
}

int Process::stop()
{
    signal(SIGTERM);
    return wait();
}

void Process::kill()
{
    signal(SIGKILL);
    look(0);
}

std::string Process::outputText() const
{
    return textOf(output_);
}

std::string Process::errorText() const
{
    return textOf(errors_);
}

Outcome Process::outcome()
{
    const int status = wait();
    return {status, outputText(), errorText()};
}

Child::Child(const std::function<void()> &work) : Process([&] { return succeedsIn(work); }) {}

void inChild(const std::function<void()> &work)
{
    Child child(work);
    EXPECT_EQ(0, child.wait());
}

Outcome runProgram(const std::vector<std::string> &words,
                   const std::vector<std::string> &environment, const std::string &input)
{
    return Process(words, environment, input).outcome();
}

std::vector<std::string> inShell(const std::string &line)
{
    return {"sh", "-c", line};
}

Outcome run(const std::string &line)
{
    return runProgram(inShell(line));
}

std::string shell(const std::string &line)
{
    const Outcome outcome = run(line);
    if (outcome.status != 0) {
        throw std::runtime_error(line + ": status " + std::to_string(outcome.status) + ", " +
                                 outcome.errors);
    }
    return outcome.output;
}

} // namespace support
