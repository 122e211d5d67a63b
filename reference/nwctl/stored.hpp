// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library knows of the present configuration. */
#pragma once

#include <span>
#include <string>

#include "facts.hpp"
#include "network_mng/check.h"
#include "network_mng/lan.h"
#include "network_mng/store.h"
#include "option.hpp"

namespace nwctl {

/* The port that a change is about. */
struct NamedPort {
    unsigned index;
    std::string name;
};

/* Throws Failure (internal) unless the result of reading the record is a success. */
void requireRead(NW_RESULT result, const char *record);

/* The readers throw Failure (internal) when a record cannot be read. */
NW_IFC_STATE_DB_INFO_S readInterfaces();
NW_LAN_CFG_DB_INFO_S readLanRecord();

/* Name of the port, at most the field's width. */
std::string portName(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);
/* Port index of "0" to "2", of a name that the record holds, or of an IPMI LAN channel
 * ("channel:1"). Throws Failure: usage, refused for a channel without a port. */
unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text);
/* The same, with the port's name. */
NamedPort namedPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text);
/* Name and index of the port, for what is shown of it. */
Facts portHeading(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);
/* Port indices that answer in the record's network mode. Throws Failure (internal) for a mode that
 * does not exist. */
std::span<const unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces);
/* "separate" or "active-standby". Throws like portsServed. */
std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces);

/* The modes' names and values. */
std::span<const Word> modeWords();
/* Throws Failure (refused) for a port that is not served in the present network mode. */
void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

/* Full view of the port. Throws Failure: refused for a port that is not served, internal when a
 * record cannot be read. */
NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

} // namespace nwctl
