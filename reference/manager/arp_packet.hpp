// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* An ARP announcement on the wire. */
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "network_mng/base.h"

namespace bmc::manager {

/* Broadcasts that the interface has the address; a failure is logged. */
void announce(const std::string &interface, const std::array<std::uint8_t, NW_IPV4_SIZE> &address);

} // namespace bmc::manager
