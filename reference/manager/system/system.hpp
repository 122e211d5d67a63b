// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the manager keeps beside the kernel's network: host name, files, the LLDP agent. */
#pragma once

#include <chrono>
#include <string>

#include "manager/state/actual.hpp"
#include "manager/state/plan.hpp"

namespace bmc::manager {

class System {
public:
    /* Adds what the system holds. What the LLDP agent was told last stands for what it does, since
     * it doesn't say. Throws MachineError. */
    void read(Items &items) const;

    /* Sets a value. Throws MachineError. */
    void apply(const Item &item);

    /* Whatever the LLDP agent was told, it shall be told again. */
    void forget();

private:
    std::string told_;
};

/* What the kernel calls the time from this boot to the next; empty when it doesn't say. */
std::string bootName();
/* How long that has lasted, sleep included. */
std::chrono::milliseconds uptime();

/* Whether the watchdog timer runs: the platform's file watchdog-running in the state directory
 * begins with 1. Throws MachineError. */
bool isWatchdogRunning();

} // namespace bmc::manager
