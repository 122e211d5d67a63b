// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A configuration that comes back unless what follows it is confirmed in time. */
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "manager/engine/machine.hpp"
#include "manager/engine/store.hpp"

namespace bmc::manager {

/* In the database, so that neither a restart nor a reboot forgets it. */
struct NW_PACKED CheckpointRecord {
    std::uint32_t version; /* 1 */
    std::uint32_t isOpen;
    std::uint64_t deadline; /* milliseconds of the boot's own clock */
    char boot[40];          /* its name */
    char token[32];
    Configuration before;
};
inline constexpr Record<CheckpointRecord> checkpointRecord{0x18000003, "checkpoint"};

inline constexpr std::chrono::seconds shortestCheckpoint{10};
inline constexpr std::chrono::seconds longestCheckpoint{3600};

/* With a token of its own that nobody can guess. */
CheckpointRecord checkpointOf(const Configuration &before, std::chrono::seconds within,
                              const Moment &now);

/* Zero when the time is over, and after a reboot. */
std::chrono::milliseconds leftOf(const CheckpointRecord &checkpoint, const Moment &now);

std::string tokenOf(const CheckpointRecord &checkpoint);

/* The one that is open. Throws Refusal for one that cannot be read, or is of a format that is not
 * known. */
std::optional<CheckpointRecord> findCheckpoint(const Store &store);

} // namespace bmc::manager
