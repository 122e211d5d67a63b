// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A port's LAN settings and live state as they are shown. */
#pragma once

#include "network_mng/lan.h"
#include "nwctl/stored.hpp"

namespace nwctl {

struct PortView {
    unsigned index;
    NW_ETHER_INS_INFO_S info;
    NW_LAN_CFG_PORT_S stored; /* its settings; the rest is what the library tells of the port */
};

/* Throws Failure: refused for a port that is not served, internal when a record cannot be read. */
PortView readPortView(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

/* Texts that are not there are null: not configured, or not told while the port or the family is
 * off. */
Rows portRows(const PortView &view);

/* "channel 2, LAN enabled, 192.168.20.2, no VLAN" */
std::string portSummary(const PortView &view);

/* Families of which two networks overlap, as "ipv4" and "ipv6". */
std::vector<std::string> conflictsOf(const PortView &view);

} // namespace nwctl
