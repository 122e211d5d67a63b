// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The one way in which a platform function fails: a code for the caller and a line for a human. */
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "common/log.hpp"

namespace bmc {

class Failure : public std::runtime_error {
public:
    /* The code is the caller's answer and never 0. */
    Failure(int code, const std::string &text, Level level = Level::error,
            unsigned line = __builtin_LINE());

    /* The same failure told in other words. */
    Failure(const Failure &failure, const std::string &text);

    int code() const noexcept
    {
        return code_;
    }

    void report() const noexcept;

private:
    int code_;
    Level level_;
    std::uint32_t line_;
};

/* errno as text, for example "No space left on device". */
std::string errnoText(int error);

/* Reports the exception that is being handled and answers its code. */
int reportCurrentException() noexcept;

/* Runs the body of an exported function: 0, or the code of what it threw. */
template <typename Body>
int guarded(Body &&body) noexcept
{
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (...) {
        return reportCurrentException();
    }
}

/* An argument that no caller may pass. */
void require(bool condition, const char *text, unsigned line = __builtin_LINE());

} // namespace bmc
