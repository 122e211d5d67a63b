// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The commands for ARP, which no file has. */
#pragma once

#include "manager/engine/engine.hpp"
#include "manager/service/request.hpp"

namespace bmc::manager {

/* Each carries out its command and fills the response's detail and data. All throw Refusal. */
void suspendArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response);
void updateArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response);
void resumeArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response);

} // namespace bmc::manager
