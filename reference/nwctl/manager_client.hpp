// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager's typed interface, asked. */
#pragma once

#include <string>

namespace nwctl {

/* The answer to the method of rpc/manager1.hpp. Throws Failure (transport) without one. Whoever
 * links the commands without a bus has a function of this name of its own. */
std::string askManager(const char *method, const std::string &document);

} // namespace nwctl
