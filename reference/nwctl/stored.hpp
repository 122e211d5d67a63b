// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is known of the present configuration. */
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "network_mng/store.h"
#include "nwctl/command.hpp"
#include "settings/setting.hpp"

namespace nwctl {

using bmc::settings::Configuration;

/* The port that a command is about. */
struct NamedPort {
    unsigned index;
    std::string name;
};

/* What a command does, and the same on one copy of all records: what it shows was true at one
 * moment. */
using Run = std::function<void(const Arguments &arguments, Session &session)>;
Run inSnapshot(Run run);

/* Throws Failure (internal) unless the result of reading the record is a success. */
void requireRead(NW_RESULT result, const char *record);

/* The readers throw Failure (internal) when a record cannot be read. */
NW_IFC_STATE_DB_INFO_S readInterfaces();
NW_LAN_CFG_DB_INFO_S readLanRecord();
/* All that is stored. A record that is not there counts as zeros, but the interface state and the
 * LAN configuration have to be. */
Configuration readConfiguration();

/* Port index of a port's role ("dedicated", "shared", "bond"), of a name that the record holds, of
 * "0" to "2", or of an IPMI LAN channel ("channel:1"). Throws Failure: usage, refused for a channel
 * without a port. */
unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text);
/* The same as findPort, with the port's name. */
NamedPort namedPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text);
/* Port and index in the order in which they are shown. */
Rows portHeading(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);
/* Port indices that are served in the record's network mode. Throws Failure (internal) for a mode
 * that does not exist. */
std::vector<unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces);
/* "separate" or "active-standby". Throws like portsServed. */
std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces);
/* Throws Failure (refused) for a port that is not on the board, or not served in the present
 * network mode. */
void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

/* Full view of the port. Throws Failure: refused for a port that is not served, internal when a
 * record cannot be read. */
NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port);

using bmc::settings::Word;
/* Name of the value, "unknown (N)" without one. */
std::string wordName(std::span<const Word> words, std::uint32_t value);
/* Value of the word that is given. Throws Failure (usage) for another text. */
std::uint8_t wordValue(const GivenOption &given, std::span<const Word> words);

inline constexpr Word shareLinkWords[] = {
    {"dedicated", NW_SHARE_LINK_DEDICATED},
    {"shared", NW_SHARE_LINK_SHARED},
    {bmc::settings::bondedMode, NW_SHARE_LINK_ACTIVE_STANDBY}};
/* What an ARP setting says of announcements and responses. */
std::span<const Word> arpWords();

/* A fact that cannot be read is null: a board without NC-SI lacks its record and its capability. */
Rows ncsiRows();

} // namespace nwctl
