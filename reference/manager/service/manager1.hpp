// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The object of the interface io.networkmng.Manager1. */
#pragma once

#include <memory>

#include "manager/engine/engine.hpp"
#include "rpc/rpc_server.hpp"

namespace bmc::manager {

/* The engine has to outlive it. */
std::unique_ptr<sdbus::IObject> makeManager1(sdbus::IConnection &connection, Engine &engine);

} // namespace bmc::manager
