// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What holds while an object lives: a limit for calls that block, and a catch for what library code
 * prints to the process's standard output. */
#pragma once

#include <csignal>
#include <string>

#include <sys/time.h>

namespace nwctl {

/* While the object lives, SIGALRM interrupts what blocks once the limit is over, again and again,
 * so that a call that begins late is interrupted too. One at a time in a process. */
class TimeLimit {
public:
    /* In seconds; 0: no limit. */
    explicit TimeLimit(unsigned seconds);
    ~TimeLimit();
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;

    bool isOver() const;

private:
    struct sigaction before_ {};
};

class OutputCapture {
public:
    /* Throws std::system_error. */
    OutputCapture();
    /* Gives standard output back. */
    ~OutputCapture();
    OutputCapture(const OutputCapture &) = delete;
    OutputCapture &operator=(const OutputCapture &) = delete;

    /* What was printed since the capture began. */
    std::string text() const;

private:
    int file_;
    int output_;
};

} // namespace nwctl
