// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Does another host on the network have the IPv4 address that a change gives to a port? */
#pragma once

#include <optional>
#include <string>

#include "network_mng/store.h"
#include "settings/change.hpp"

namespace nwctl {

enum class ProbeResult {
    noTool, /* arping, which asks the network, is not installed */
    free,
    taken,
};

struct Probe {
    std::string address;
    ProbeResult result;
};

/* Nothing when the address stays as it is, or the port is down. Reads the LAN record only when the
 * change has an IPv4 address; blocks for about a second. edit: of the port's LAN settings. */
std::optional<Probe> probeAddress(const bmc::settings::Edit &edit,
                                  const NW_IFC_STATE_DB_INFO_S &interfaces);

} // namespace nwctl
