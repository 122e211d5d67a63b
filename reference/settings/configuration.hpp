// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Everything that can be set, as one value: the records of the configuration database that a change
 * may touch. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "network_mng/store.h"

namespace bmc::settings {

struct NW_PACKED Configuration {
    NW_IFC_STATE_DB_INFO_S state;
    NW_LAN_CFG_DB_INFO_S lan;
    NW_HOSTNAME_DB_INFO_S hostName;
    NW_DNS_DB_INFO_S dns;
    NW_LLDP_DB_INFO_S lldp;
    NW_AN_CFG_DB_INFO_S an;
};

struct RecordName {
    std::uint32_t key;
    const char *name;
    bool isRequired; /* without it there is no configuration; any other counts as zeros */
};

/* Calls visit(RecordName, member) for each record of the configuration, the same order each time.
 */
template <typename Visit>
void forEachRecord(const Visit &visit)
{
    visit(RecordName{NW_KEY_HOSTNAME, "host name", false}, &Configuration::hostName);
    visit(RecordName{NW_KEY_DNS, "DNS", false}, &Configuration::dns);
    visit(RecordName{NW_KEY_LLDP, "LLDP", false}, &Configuration::lldp);
    visit(RecordName{NW_KEY_AN_CFG, "auto-negotiation", false}, &Configuration::an);
    visit(RecordName{NW_KEY_IFC_STATE, "interface state", true}, &Configuration::state);
    visit(RecordName{NW_KEY_LAN_CFG, "LAN configuration", true}, &Configuration::lan);
}

/* What a machine has that was never set up: no ports, the link modes of a driver, LLDP for both
 * directions, ARP that answers and does not announce. */
Configuration blankConfiguration();

/* Ports 0 and 1 are served while the ports work separately, port 2 while they are bonded, and each
 * only where it is on the board. */
bool isServed(const NW_IFC_STATE_DB_INFO_S &state, unsigned port);

/* What a switchover does: ports 0 and 1 exchange their interfaces. Settings and channels stay with
 * the port. */
void exchangeInterfaces(NW_IFC_STATE_DB_INFO_S &state);

/* In automatic mode: writes the host name, "bmc-" and the MAC address of the first port that is on
 * the board; and whether that address is known. */
void nameAutomatically(Configuration &configuration);
bool isNameKnown(const Configuration &configuration);

/* Name of the port's interface. */
std::string nameOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port);

/* What a port is for: "dedicated", "shared" or "bond". It stands for the port in files, whatever
 * its interface is called. */
std::string_view roleOf(unsigned port);
/* "shared port", "bond". */
std::string roleTitleOf(unsigned port);
/* "eth1, shared port". */
std::string titleOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port);

/* The port that a text names: its role, its index, the name of its interface, or "channel:N", the
 * port served that has the LAN channel; NW_PORT_COUNT when there is none. */
unsigned findPort(const NW_IFC_STATE_DB_INFO_S &state, std::string_view text);
/* "dedicated, shared, bond, " */
std::string portRoles();
/* All texts that name a port, for whoever gave another one. */
std::string expectedPorts(const NW_IFC_STATE_DB_INFO_S &state);

} // namespace bmc::settings
