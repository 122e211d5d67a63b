/* What the library knows of the present configuration. */
#pragma once

#include <span>
#include <string>

#include "network_mng/check.h"
#include "network_mng/lan.h"
#include "network_mng/store.h"

namespace nwctl {

/* The readers throw Failure (internal) when a record cannot be read. */
NW_IFC_STATE_DB_INFO_S readInterfaces();
NW_LAN_CFG_DB_INFO_S readLanRecord();

/* Name of the port, at most the field's width. */
std::string portName(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);
/* Port index of "0" to "2" or of a name that the record holds. Throws Failure (usage). */
unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text);
/* Port indices that answer in the record's network mode. Throws Failure (internal) for a mode that
 * does not exist. */
std::span<const unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces);
/* "separate" or "active-standby". Throws like portsServed. */
std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces);

/* Throws Failure: refused for a port that does not answer in the record's network mode. */
void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

/* Full view of the port. Throws Failure: refused for a port that is not served, internal when a
 * record cannot be read. */
NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

} // namespace nwctl
