// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Changes of settings as the engine takes them. */
#pragma once

#include "manager/engine/engine.hpp"
#include "settings/change.hpp"
#include "settings/difference.hpp"

namespace bmc::manager {

/* The configuration that is asked for. All checks are made; throws Refusal. */
Configuration checked(const Configuration &present, const settings::Change &asked);

/* What is asked for may be touched, whether the records have it already or not. */
Scope scopeOf(const settings::Change &asked);
/* As much; but only what differs may be refused for the sake of an interface that is missing. */
Scope scopeOf(const std::vector<settings::Difference> &differences, const settings::Change &asked);

} // namespace bmc::manager
