// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Which segment checks a change calls for, and what they find in the record it leads to. */
#pragma once

#include <array>

#include "network_mng/check.h"
#include "settings/change.hpp"

namespace bmc::settings {

/* NW_ROUTESET_* by the routes' port. */
using RouteSets = std::array<std::uint32_t, NW_PORT_COUNT>;

struct SegmentChecks {
    RouteSets changedRoutes{};
    std::uint32_t addresses = 0; /* NW_SEGCHK_*, always of all ports */
    RouteSets otherRoutes{};     /* into which a changed address may have come */
};

/* Adds what the selected settings call for. A new address calls for the check of all addresses of
 * its family and of the other port's routes, which may lead into it; a new route for the check of
 * that route and, since another port's address may lie in it, of the addresses. */
void addChecks(SegmentChecks &checks, const Edit &edit);

/* Every check there is. */
SegmentChecks allChecks();

/* Can one of them end otherwise because of the wireless interface? */
bool concernWireless(const SegmentChecks &checks);

/* Code of the first conflict, NW_OK without one. The checks run in the order of their members, so
 * that the code speaks of what was changed. */
NW_RESULT findConflict(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                       const NW_WIFI_ADDR_S &wireless, const SegmentChecks &checks);

} // namespace bmc::settings
