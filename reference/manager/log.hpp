/* Diagnostic lines of the manager, with the source line of the caller. */
#pragma once

#include <source_location>
#include <string>

#include "bmc_platform.h"

namespace bmc::manager {

enum class Level : std::uint32_t { error = 4, information = 6 };

inline void log(Level level, const std::string &text,
                const std::source_location &where = std::source_location::current())
{
    constexpr std::uint32_t module = 24;
    BMC_DiagLogOut(module, 0, static_cast<std::uint32_t>(level), where.line(), "nwmanagerd", "%s",
                   text.c_str());
}

} // namespace bmc::manager
