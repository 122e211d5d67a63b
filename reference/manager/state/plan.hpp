// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The way from what is to what is wanted. */
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "manager/state/actual.hpp"
#include "manager/state/wanted.hpp"

namespace bmc::manager {

/* One thing to do. */
struct Step {
    Item item;
    bool isRemoval = false;
    unsigned port = wholeMachine; /* to which it belongs */

    auto operator<=>(const Step &) const = default;
};

/* "eth0: add address 192.0.2.1/24". */
std::string textOf(const Step &step);

/* Steps in an order that is safe: what a port gives up goes before what another takes; a new
 * address comes before the old one goes, where both can stand; routes follow their addresses.
 *
 * Of addresses, VLANs, bonds and memberships only those in owned are removed. An address that is
 * wanted and there but not owned is somebody else's: the step that adds it is for the kernel to
 * refuse. Empty when everything is as it is wanted. */
std::vector<Step> plan(const World &wanted, const Actual &actual, const Items &owned);

/* Wanted items that are there already, so that they count as the manager's own: all but bonds,
 * which a board prepares. */
Items adopted(const World &wanted, const Actual &actual);

/* What a change may touch, and so may be refused for. */
struct Scope {
    /* NW_OPER_LOG_MODULE_E and a port, wholeMachine for all of it. */
    using Entries = std::set<std::pair<std::uint32_t, unsigned>>;
    Entries selected{};
    /* What is made so along with it, where its interface is there. */
    Entries along{};

    bool isEmpty() const
    {
        return selected.empty() && along.empty();
    }

    void select(std::uint32_t module, unsigned port = wholeMachine)
    {
        selected.emplace(module, port);
    }

    bool has(std::uint32_t module) const;

    /* Module that answers for a failure of the step; 0 when the change doesn't touch it. */
    std::uint32_t moduleOf(const Step &step) const;
    /* Only a change of the port itself needs its interface. */
    bool needsInterfaceFor(const Step &step) const;
};

/* A scope of all settings, as far as there are interfaces for them. */
Scope everything();

std::vector<Step> within(const Scope &scope, std::vector<Step> steps);

} // namespace bmc::manager
