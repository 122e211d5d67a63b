// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines of a program, with the source line of the caller. */
#pragma once

#include <cstdint>
#include <string>

#include "bmc_platform.h"

namespace bmc {

/* As syslog counts. */
enum class Level : std::uint32_t { critical = 2, error = 4, information = 6, debug = 7 };

/* A program has one of its own and calls it log: log(Level::error, "text"). */
struct Log {
    std::uint32_t module;
    const char *unit;

    void operator()(Level level, const std::string &text,
                    std::uint32_t line = __builtin_LINE()) const
    {
        BMC_DiagLogOut(module, 0, static_cast<std::uint32_t>(level), line, unit, "%s",
                       text.c_str());
    }
};

} // namespace bmc
