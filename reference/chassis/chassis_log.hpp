// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines of the chassis manager and the IPMI sink. */
#pragma once

#include <cstdint>
#include <string>

#include "bmc_platform.h"

namespace bmc::chassis {

enum class Level : std::uint32_t { error = 4, information = 6 };

inline void log(Level level, const std::string &text, std::uint32_t line = __builtin_LINE())
{
    constexpr std::uint32_t module = 52;
    BMC_DiagLogOut(module, 0, static_cast<std::uint32_t>(level), line, "nwchassisd", "%s",
                   text.c_str());
}

} // namespace bmc::chassis
