// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager: keeps the records of the configuration database, the kernel and the system's
 * files the same. */
#pragma once

#include <chrono>
#include <optional>

#include "arp.hpp"
#include "draft.hpp"
#include "kernel.hpp"
#include "store.hpp"

namespace bmc::manager {

class Manager {
public:
    /* Throws Refusal or KernelError. */
    Manager() = default;

    /* Ends a change that a killed manager left half done, refreshes what the records say about the
     * interfaces and brings kernel and system in line with them. What these refuse is logged.
     * Throws Refusal when a record is missing. */
    void start();

    /* A change of what holds now. */
    Draft draft() const;

    /* Carries out what the draft asks for, in the kernel, the system and the database, or throws
     * Refusal with nothing changed. */
    void change(const Draft &draft);

    /* Does what is due by now; answers the milliseconds until the next time, -1 for none. */
    int work();

    const Store &store() const
    {
        return store_;
    }

private:
    using Clock = std::chrono::steady_clock;

    void clearStaleStatus() const;
    void apply(const Draft &draft, Transaction &transaction) const;
    bool applyAtStart(const Draft &draft, const Journal &journal) const;
    void restart();

    Store store_;
    Kernel kernel_;
    Announcer announcer_;
    std::optional<Clock::time_point> restartAt_;
};

} // namespace bmc::manager
