// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/guards.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace nwctl {

namespace {

constexpr suseconds_t repeatMicroseconds = 50000;

volatile std::sig_atomic_t over = 0;

void noteEnd(int)
{
    over = 1;
}

int required(int descriptor, const char *what)
{
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return descriptor;
}

} // namespace

TimeLimit::TimeLimit(unsigned seconds)
{
    over = 0;
    struct sigaction action {};
    action.sa_handler = noteEnd; /* without SA_RESTART: the call returns */
    sigaction(SIGALRM, &action, &before_);

    const itimerval timer{{0, repeatMicroseconds}, {static_cast<time_t>(seconds), 0}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

TimeLimit::~TimeLimit()
{
    const itimerval none{};
    setitimer(ITIMER_REAL, &none, nullptr);
    sigaction(SIGALRM, &before_, nullptr);
}

bool TimeLimit::isOver() const
{
    return over != 0;
}

OutputCapture::OutputCapture()
    : file_(required(memfd_create("output", MFD_CLOEXEC), "memfd_create")),
      output_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{
    std::fflush(stdout);
    dup2(file_, STDOUT_FILENO);
}

OutputCapture::~OutputCapture()
{
    std::fflush(stdout);
    if (output_ < 0) {
        close(STDOUT_FILENO); /* as it was */
    } else {
        dup2(output_, STDOUT_FILENO);
        close(output_);
    }
    close(file_);
}

std::string OutputCapture::text() const
{
    std::fflush(stdout);
    std::array<char, 4096> buffer;
    const ssize_t size = pread(file_, buffer.data(), buffer.size(), 0);
    return {buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
}

} // namespace nwctl
