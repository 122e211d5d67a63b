// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Kernel and system as the engine sees them. */
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "manager/kernel/arp_packet.hpp"
#include "manager/state/actual.hpp"
#include "manager/state/plan.hpp"

namespace bmc::manager {

/* By a clock that no one sets and that goes on while the machine sleeps. */
struct Moment {
    std::string boot; /* name of the one that the clock began with */
    std::chrono::milliseconds uptime{};
};

class Machine {
public:
    Machine() = default;
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;
    virtual ~Machine() = default;

    /* What is, and the link modes of the ports of that world. Throws MachineError. */
    virtual Actual read(const World &world) = 0;

    /* Throws MachineError; whether something was done all the same is found by reading. */
    virtual void apply(const Step &step) = 0;

    /* What cannot be read counts as unknown, so that it is set again. */
    virtual void forget() = 0;

    /* Whether a neighbour has the address; the link may get its partner until then. Throws
     * MachineError. */
    virtual bool isTaken(const std::string &interface, const Ipv4Bytes &address,
                         std::chrono::steady_clock::time_point partnerBy) = 0;
    virtual void announce(const std::string &interface, const Ipv4Bytes &address) = 0;
    virtual Conditions conditions() = 0;
    virtual Moment moment() = 0;
};

/* The one that the manager runs on. Throws MachineError. */
std::unique_ptr<Machine> thisMachine();

} // namespace bmc::manager
