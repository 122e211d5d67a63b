// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The part "ports" of a document: what the machine's three ports are. */
#pragma once

#include <functional>

#include "settings/detail/json_text.hpp"

namespace bmc::settings {

Json identitiesOf(const NW_IFC_STATE_DB_INFO_S &state);

/* Throw DocumentError. */

/* All three ports, into a configuration that has none yet. */
void readIdentities(const Node &ports, Configuration &configuration);

/* Where the ports are otherwise than after the change, one sentence each; nothing of them is taken
 * over. Keys name ports as they are before. */
std::vector<std::string> compareIdentities(const Node &ports, const NW_IFC_STATE_DB_INFO_S &before,
                                           const NW_IFC_STATE_DB_INFO_S &after);

/* Calls read(node, port) for each port that the object's keys name, each once. */
void forEachPort(const Node &ports, const NW_IFC_STATE_DB_INFO_S &state,
                 const std::function<void(const Node &node, unsigned port)> &read);

} // namespace bmc::settings
