// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Does another host on the network have the IPv4 address that a change gives to a port? */
#pragma once

#include "lan_change.hpp"
#include "network_mng/store.h"

namespace nwctl {

enum class ProbeResult {
    notAsked, /* the address stays as it is, or the port is down */
    noTool,   /* arping, which asks the network, is not installed */
    free,
    taken,
};

/* Reads the LAN record only when the change has an IPv4 address; blocks for about a second. */
ProbeResult probeAddress(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces);

} // namespace nwctl
