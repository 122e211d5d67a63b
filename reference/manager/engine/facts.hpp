// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the records say about the machine, beside what is configured. */
#pragma once

#include "manager/engine/store.hpp"
#include "manager/state/actual.hpp"

namespace bmc::manager {

/* Limits counts of further IPv6 addresses to those that the record holds. */
void repair(NW_LAN_CFG_DB_INFO_S &lan);

/* Copies the kernel's facts about the ports' interfaces. */
void noteInterfaces(Configuration &configuration, const Actual &actual);

} // namespace bmc::manager
