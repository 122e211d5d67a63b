// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a configuration asks of kernel and system. */
#pragma once

#include <map>
#include <string>

#include "manager/state/item.hpp"
#include "settings/configuration.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::manager {

using settings::Configuration;

/* In the place of a port: what the machine has once. */
inline constexpr unsigned wholeMachine = NW_PORT_COUNT;

/* What else than the configuration decides. */
struct Conditions {
    bool isWatchdogRunning = false;
};

/* Whether a port announces itself, or answers; suspended bits rest while the watchdog timer runs.
 */
bool isArpActive(const NW_LAN_CFG_PORT_S &entry, settings::ArpBit bit,
                 const Conditions &conditions);

struct World {
    Items items{};
    std::map<std::string, unsigned> ports{}; /* by the interface that each has */
    Items comingBack{};                      /* items that nobody asks for any more */

    /* The port that an item belongs to, or wholeMachine. */
    unsigned portOf(const Item &item) const;

    bool operator==(const World &) const = default;
};

World wanted(const Configuration &configuration, const Conditions &conditions);

/* The world with the values that were found where only the other world wants any. */
World withValues(World world, const World &other, const Items &found);

/* Which of the port's static routes the item is, by its metric: 1 or 2. */
unsigned routeNumberOf(const Item &route, unsigned port);

/* Every address and VLAN that the configuration names, in use at present or not. */
Items named(const Configuration &configuration);

} // namespace bmc::manager
