// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 1: DNS. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editDns(Draft &draft, Payload payload);

void applyDns(const Context &context);

} // namespace bmc::manager
