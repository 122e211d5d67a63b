// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a port's record asks of the kernel, and the way there. */
#pragma once

#include <string>
#include <vector>

#include "kernel.hpp"
#include "network_mng/store.h"

namespace bmc::manager {

/* What the kernel holds for an interface. */
struct KernelState {
    bool isUp = false;
    std::vector<Address> addresses;
    std::vector<Route> routes; /* the manager's own */
};

/* What a port's record asks for. */
struct PortState {
    bool isServed = false; /* otherwise the link is left as it is */
    bool isUp = false;
    std::vector<Address> addresses;
    std::vector<Route> routes;
};

/* Ports 0 and 1 are served while the ports work separately, port 2 while they are bonded. */
bool isServed(const NW_IFC_STATE_DB_INFO_S &state, unsigned port);

PortState wantedState(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                      unsigned port);

/* Addresses that the record names for a port, switched on or not. */
std::vector<Address> addressesIn(const NW_LAN_CFG_PORT_S &port);

/* Steps from what the kernel holds to what is wanted. Only addresses in managed are removed; one
 * that is wanted and there, but not in managed, is somebody else's and is left to the kernel's
 * refusal. */
std::vector<Change> planChanges(const KernelState &actual, const std::vector<Address> &managed,
                                const PortState &wanted);

} // namespace bmc::manager
