// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* ARP on the wire: telling neighbours of an address, and asking them for it. */
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include "network_mng/base.h"

namespace bmc::manager {

using Ipv4Bytes = std::array<std::uint8_t, NW_IPV4_SIZE>;

/* Broadcasts that the interface has the address; a failure is logged. */
void announce(const std::string &interface, const Ipv4Bytes &address);

/* Asks for 200 ms, with two probes, whether a neighbour has the address. Nobody has where there is
 * no interface of that name to ask by, or no link partner, for whom it waits until then. Throws
 * MachineError when it cannot ask. */
bool isTakenByNeighbour(const std::string &interface, const Ipv4Bytes &address,
                        std::chrono::steady_clock::time_point partnerBy);

} // namespace bmc::manager
