// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager's typed interface, asked. Whoever links the commands without a bus has
 * functions of these names of its own. */
#pragma once

#include <string>

namespace nwctl {

/* The answer to the method of rpc/manager1.hpp. Throws Failure (transport) without one. */
std::string askManager(const char *method, const std::string &document);

/* Does the bus refuse what this user asks the network manager? Then a call without an answer was
 * never delivered. Blocks for a moment. */
bool isDeniedByBus();
inline constexpr const char *deniedReason =
    "the bus does not let you ask the network manager; nothing has changed";

} // namespace nwctl
