// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/system/lldp_agent.hpp"

#include <system_error>

#include "common/spawn.hpp"
#include "manager/log.hpp"

namespace bmc::manager {

void tellLldpAgent(const std::string &settings)
{
    constexpr std::chrono::seconds patience{2};
    const std::size_t gap = settings.find(' ');
    try {
        const int status = runProgram({"lldpcli", "configure", "ports", settings.substr(0, gap),
                                       "lldp", "status", settings.substr(gap + 1)},
                                      {Streams::closed, patience});
        if (status != 0) {
            log(Level::error, "LLDP: lldpcli ends with status " + std::to_string(status) +
                                  "; the settings are kept");
        }
    } catch (const std::system_error &) {
        log(Level::information, "LLDP: there is no lldpcli; the settings are kept");
    }
}

} // namespace bmc::manager
