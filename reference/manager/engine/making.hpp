// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Compare and make it so: the loop that brings kernel and system to a wanted world. */
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "manager/engine/machine.hpp"

namespace bmc::manager {

/* A step that could not be taken. */
struct Failure {
    std::uint32_t code = 0;
    std::string reason{}; /* with the step's text */
    std::optional<Step> step{};
    bool isMissingInterface = false;
};

/* What is there afterwards, read back; and what is still to do, with the reasons. */
struct Made {
    Actual actual{};
    bool isRead = false; /* otherwise nobody knows what is there */
    std::vector<Step> left{};
    std::vector<Failure> failures{}; /* in the order in which they happened */
};

struct Task {
    const World &wanted;
    const Items &owned;
    const Scope &scope;
    /* Stops at the first step that fails; otherwise leaves it out and goes on. */
    bool isStrict = false;
    /* Called before a step; what it throws ends the work. */
    std::function<void(const Step &step)> before{};
};

/* Reads the machine; an answer that is lost on the way is asked for again. Throws MachineError. */
Actual readPatiently(Machine &machine, const World &world);

/* Takes steps and reads back what came of them until nothing is left to do, or nothing can be done.
 * A step that fails is taken once more, unless the reading shows that it was done all the same: the
 * kernel's answer may have been lost. */
Made make(Machine &machine, const Task &task);

} // namespace bmc::manager
