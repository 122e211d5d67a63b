// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The moment by which a call must be done. */
#pragma once

#include <cerrno>
#include <chrono>
#include <ctime>

#include "failure.hpp"

namespace bmc {

/* Of a time that a caller is ready to wait: its seconds fit a time_t of 32 bits too. */
inline timespec timespecOf(std::chrono::nanoseconds duration)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    return {static_cast<std::time_t>(seconds.count()),
            static_cast<long>((duration - seconds).count())};
}

class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds timeout)
        : m_end(std::chrono::steady_clock::now() + timeout)
    {
    }

    /* What is left, never 0; Failure when nothing is. */
    std::chrono::microseconds remaining() const
    {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
            m_end - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            throw Failure(ETIMEDOUT, errnoText(ETIMEDOUT));
        }
        return left;
    }

private:
    std::chrono::steady_clock::time_point m_end;
};

} // namespace bmc
