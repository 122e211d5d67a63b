// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 2: LLDP. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editLldp(Draft &draft, Payload payload);

void applyLldp(const Context &context);

} // namespace bmc::manager
