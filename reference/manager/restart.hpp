// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 8: apply the whole configuration again. */
#pragma once

#include "draft.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editRestart(Draft &draft, Payload payload);

/* Lets the draft apply everything that the records hold. */
void selectEverything(Draft &draft);

} // namespace bmc::manager
