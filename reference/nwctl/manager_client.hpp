// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager's typed interface, asked. Whoever links the commands without a bus has
 * functions of these names of its own. All throw Failure: transport without an answer, manager for
 * a refusal that is no answer of its own. */
#pragma once

#include <optional>
#include <string>

namespace nwctl {

/* The answer of rpc/manager1.hpp to a document that shall be applied: by force, or within a
 * checkpoint of so many seconds, 0 for none. */
std::string applyByManager(const std::string &document, bool isForced, unsigned seconds);

/* Where kernel and system are not as it is stored, as rpc/manager1.hpp has it. */
std::string differencesByManager();

/* What holds now comes back in that time unless it is confirmed. Answers the checkpoint's token. */
std::string setCheckpoint(unsigned seconds);
enum class CheckpointEnd { confirm, revert };
/* With an empty token as one who may change the network. */
void endCheckpoint(CheckpointEnd end, const std::string &token);
/* Seconds that are left to confirm, if there is a checkpoint. A manager that makes a change answers
 * when it is done; inPassing waits a second at most. */
enum class Patience { usual, inPassing };
std::optional<unsigned> pendingSeconds(Patience patience = Patience::usual);
/* What has changed since, as rpc/manager1.hpp has it. */
std::string pendingChanges();
/* What has become of the checkpoint with that token: "pending", with the seconds left, "confirmed",
 * "reverted" or "none". */
struct CheckpointState {
    std::string state;
    unsigned secondsLeft = 0;
};
CheckpointState checkpointState(const std::string &token);

/* Does the bus refuse what this user asks the network manager? Then a call without an answer was
 * never delivered. Blocks for a moment. */
bool isDeniedByBus();
inline constexpr const char *deniedReason =
    "the bus does not let you ask the network manager; nothing has changed";

} // namespace nwctl
