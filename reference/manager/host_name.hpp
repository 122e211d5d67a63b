// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 0: host name. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editHostName(Draft &draft, Payload payload);

void applyHostName(const Context &context);

} // namespace bmc::manager
