// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* From the kernel's messages to items. */
#pragma once

#include <cstdint>

#include "manager/state/actual.hpp"

struct nl_sock;

namespace bmc::manager {

/* Links, their addresses, and the routes of the main table that carry the protocol. Throws
 * MachineError. */
Actual readKernel(nl_sock *socket, std::uint8_t ownProtocol);

} // namespace bmc::manager
