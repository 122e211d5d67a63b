// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 3: change LAN settings of one or more ports. */
#pragma once

#include "draft.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editLan(Draft &draft, Payload payload);

} // namespace bmc::manager
