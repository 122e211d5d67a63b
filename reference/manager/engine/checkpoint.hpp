// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A configuration that comes back unless what follows it is confirmed in time. */
#pragma once

#include <chrono>
#include <string>

#include "manager/engine/machine.hpp"
#include "manager/engine/store.hpp"

namespace bmc::manager {

enum class CheckpointState : std::uint32_t { none = 0, pending = 1, confirmed = 2, reverted = 3 };

/* In the database, so that neither a restart nor a reboot forgets it. Of one that has ended only
 * how it did is kept. */
struct NW_PACKED CheckpointRecord {
    std::uint32_t version; /* 1 */
    CheckpointState state;
    std::uint64_t deadline; /* milliseconds of the boot's own clock */
    char boot[40];          /* its name */
    char token[32];
    Configuration before;
};
inline constexpr Record<CheckpointRecord> checkpointRecord{0x18000003, "checkpoint"};

/* With a token of its own that nobody can guess. */
CheckpointRecord checkpointOf(const Configuration &before, std::chrono::seconds within,
                              const Moment &now);

/* Zero when the time is over, and after a reboot. */
std::chrono::milliseconds leftOf(const CheckpointRecord &checkpoint, const Moment &now);

std::string tokenOf(const CheckpointRecord &checkpoint);

/* What is kept of one that has ended. */
CheckpointRecord ended(const CheckpointRecord &checkpoint, CheckpointState state);

/* The last one, or one of no state. Its time is no longer than any may be. Throws Refusal when it
 * cannot be read, or is of a format that is not known. */
CheckpointRecord readCheckpoint(const Store &store, const Moment &now);

} // namespace bmc::manager
