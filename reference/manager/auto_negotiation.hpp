// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 9: auto-negotiation, duplex and speed. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editLinkModes(Draft &draft, Payload payload);

void applyLinkModes(const Context &context);

/* Ports whose link mode has been set; the others' is the driver's own. */
std::set<unsigned> portsWithLinkMode(const NW_AN_CFG_DB_INFO_S &record);

} // namespace bmc::manager
