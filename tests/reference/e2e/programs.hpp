// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The system's own programs as processes of the test. */
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "network_mng/rpc.h"
#include "process.hpp"

namespace e2e {

using support::eventually;
using support::Outcome;
using support::Process;
using support::run;
using support::shell;

/* The arguments as for a shell. */
std::string nwctlLine(const std::string &arguments);
Outcome nwctl(const std::string &arguments);

/* A daemon that answers on the bus; throws when it doesn't get that far. */
std::unique_ptr<Process> startDaemon(const std::string &arguments = "nwmanagerd",
                                     std::uint32_t service = NW_RPC_SERVICE_NETWORK);

} // namespace e2e
