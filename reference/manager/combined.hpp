// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 12: LAN, DNS and network port mode in one change. */
#pragma once

#include "draft.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editAll(Draft &draft, Payload payload);

} // namespace bmc::manager
