// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "time_limit.hpp"

namespace nwctl {

namespace {

constexpr suseconds_t repeatMicroseconds = 50000;

volatile std::sig_atomic_t over = 0;

void noteEnd(int)
{
    over = 1;
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

} // namespace nwctl
