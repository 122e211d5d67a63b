// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A limit for calls that block. */
#pragma once

#include <csignal>

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

} // namespace nwctl
