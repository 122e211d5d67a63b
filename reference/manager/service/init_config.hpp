// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwmanagerd --init: the first records of a configuration database. */
#pragma once

#include <istream>

#include "network_mng/store.h"

namespace bmc::manager {

struct InitialConfig {
    NW_IFC_STATE_DB_INFO_S state;
    NW_LAN_CFG_DB_INFO_S lan;
};

/* Throws ConfigError, which names the key and the reason. */
InitialConfig readConfig(std::istream &file);

/* Writes the records; those that the manager doesn't fill are written only where they are missing.
 * Throws Refusal, also when there is a configuration already and isForced isn't set. */
void writeConfig(const InitialConfig &config, bool isForced);

} // namespace bmc::manager
