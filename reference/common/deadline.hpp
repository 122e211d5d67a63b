// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The moment by which something must be done. */
#pragma once

#include <chrono>
#include <ctime>
#include <system_error>

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
        : end_(std::chrono::steady_clock::now() + timeout)
    {
    }

    /* What is left, never 0; throws std::system_error with ETIMEDOUT when nothing is. */
    std::chrono::microseconds remaining() const
    {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
            end_ - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            throw std::system_error(std::make_error_code(std::errc::timed_out));
        }
        return left;
    }

private:
    std::chrono::steady_clock::time_point end_;
};

} // namespace bmc
