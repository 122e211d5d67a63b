// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is said of a change that could not be made so. */
#pragma once

#include "manager/engine/making.hpp"
#include "manager/refusal.hpp"

namespace bmc::manager {

Refusal refusalFor(const Failure &failure, const Scope &scope);

/* Why a change is not made so, if it isn't: the reason of the first step that is left. What waits
 * for a missing interface is no reason, unless the change is about that port. */
std::optional<Failure> reasonOf(const Made &made, const Scope &scope);

void logFailures(const Made &made, const char *occasion);

} // namespace bmc::manager
