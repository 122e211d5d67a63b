// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The commands that the manager carries out. */
#pragma once

#include "manager/engine/engine.hpp"
#include "rpc/rpc_server.hpp"

namespace bmc::manager {

/* Answers the response to one request of service 24, function 28. */
rpc::Bytes answer(Engine &engine, rpc::Request request);

} // namespace bmc::manager
