// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "child.hpp"

#include <array>
#include <csignal>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace ipc {

namespace {

constexpr unsigned lifetime = 30; /* s */

[[noreturn]] void serve(const std::function<std::string()> &run, int pipe)
{
    alarm(lifetime);
    fake::platform().clearCalls();
    const std::string report = run();
    const auto written = write(pipe, report.data(), report.size());
    _exit(written == static_cast<ssize_t>(report.size()) ? 0 : 1);
}

} // namespace

std::string outcome(std::uint32_t result, const std::vector<fake::LogLine> &lines)
{
    std::string text = fake::formatted("%x:", result);
    for (const fake::LogLine &line : lines) {
        text += fake::formatted(" (%u, %u, %u) %s", line.module, line.category, line.level,
                                line.text.c_str());
    }
    return text;
}

Child::Child(const std::function<std::string()> &run)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe");
    }

    pid_ = fork();
    if (pid_ == 0) {
        close(ends[0]);
        serve(run, ends[1]);
    }
    close(ends[1]);
    pipe_ = ends[0];
    if (pid_ < 0) {
        throw std::runtime_error("no second process");
    }
}

Child::~Child()
{
    if (!ended_) {
        kill(pid_, SIGKILL);
        waitpid(pid_, &status_, 0);
    }
    close(pipe_);
}

bool Child::endsWithin(std::chrono::milliseconds time)
{
    const auto deadline = std::chrono::steady_clock::now() + time;
    while (!ended_) {
        ended_ = waitpid(pid_, &status_, WNOHANG) == pid_;
        if (ended_ || std::chrono::steady_clock::now() >= deadline) {
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return ended_;
}

std::string Child::report()
{
    if (!endsWithin(std::chrono::seconds(lifetime + 5))) {
        return "still running";
    }
    if (WIFSIGNALED(status_)) {
        return fake::formatted("ended by signal %d", WTERMSIG(status_));
    }

    std::string report;
    std::array<char, 4096> part{};
    for (ssize_t length = 0; (length = read(pipe_, part.data(), part.size())) > 0;) {
        report.append(part.data(), static_cast<std::size_t>(length));
    }
    return report;
}

} // namespace ipc
