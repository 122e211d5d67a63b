// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints: what the engine goes back to unless it is told in time to stay. */
#include <algorithm>
#include <utility>

#include "manager/engine/engine.hpp"
#include "manager/engine/verdict.hpp"
#include "manager/log.hpp"
#include "manager/refusal.hpp"

namespace bmc::manager {

namespace {

/* The time is looked at so often, since waiting doesn't count the machine's sleep. */
constexpr std::chrono::milliseconds checkpointInterval{1000};
/* ... and what could not be written is tried again. */
constexpr std::chrono::milliseconds checkpointRetry{10'000};

std::string secondsText(std::chrono::milliseconds time)
{
    return std::to_string(std::chrono::ceil<std::chrono::seconds>(time).count()) + " s";
}

} // namespace

std::string Engine::checkpoint(std::chrono::seconds within)
{
    requireInTime();
    if (checkpoint_) {
        throw Refusal(Result::checkpointPending, secondsText(*pending()) + " are left to confirm");
    }
    require(within >= shortestCheckpoint && within <= longestCheckpoint, Result::badDeadline,
            secondsText(within));
    const CheckpointRecord checkpoint = checkpointOf(present(), within, machine_.moment());
    store_.put(checkpointRecord, checkpoint);
    checkpoint_ = checkpoint;
    checkpointAt_ = Clock::now();
    log(Level::information, "checkpoint: what holds now comes back in " + secondsText(within));
    return tokenOf(checkpoint);
}

void Engine::confirm()
{
    requireInTime();
    require(checkpoint_.has_value(), Result::noCheckpoint, "confirm");
    store_.put(checkpointRecord, CheckpointRecord{});
    checkpoint_.reset();
    log(Level::information, "checkpoint: confirmed");
}

void Engine::revert()
{
    requireStarted();
    require(checkpoint_.has_value(), Result::noCheckpoint, "revert");
    const Made made = goBack("asked to");
    if (!made.isRead || !made.left.empty()) {
        throw Refusal(Result::notRestored, meaningOf(Result::notRestored));
    }
}

bool Engine::isToken(const std::string &token) const
{
    return checkpoint_ && tokenOf(*checkpoint_) == token;
}

std::optional<std::chrono::milliseconds> Engine::pending() const
{
    return checkpoint_ ? std::optional(leftOf(*checkpoint_, machine_.moment())) : std::nullopt;
}

bool Engine::isCheckpointOver() const
{
    return checkpoint_ && pending()->count() == 0;
}

/* First the records: whoever starts next goes on from there. A disk that cannot be written shall
 * not keep kernel and system from going back. */
Made Engine::goBack(const char *why)
{
    log(Level::information, std::string("checkpoint: ") + why + ", what held before comes back");
    const Configuration before = checkpoint_->before;
    const Configuration present = store_.readConfiguration();
    const bool wasOpen = std::exchange(isOpen_, true);
    Batch batch;
    batch.put(before, present)
        .put(journalRecord, Journal{before, present})
        .put(checkpointRecord, CheckpointRecord{});
    const auto makeSo = [&] { makeUnwritten(before, "checkpoint"); };
    try {
        commit(batch, ledger_, true, "that the checkpoint is over", makeSo);
    } catch (const Refusal &) {
        isOpen_ = wasOpen;
        checkpoint_->deadline = 0; /* the time to confirm is over, asked for or not */
        checkpointAt_ = Clock::now() + checkpointRetry;
        makeSo();
        throw;
    }
    checkpoint_.reset();
    try {
        return settle("checkpoint");
    } catch (const Refusal &) {
        makeSo();
        tryAgainLater();
        throw;
    }
}

void Engine::endOverdue()
{
    if (isStarted_ && isCheckpointOver()) {
        goBack("it was not confirmed in time");
    }
}

/* No change and no answer comes before what is due. */
void Engine::requireInTime()
{
    requireStarted();
    endOverdue();
}

Configuration Engine::present()
{
    endOverdue();
    return store_.readConfiguration();
}

void Engine::followCheckpoint()
{
    if (checkpoint_) {
        checkpointAt_ = Clock::now() + std::min(*pending(), checkpointInterval);
        requireInTime();
    }
    if (!checkpoint_) {
        checkpointAt_.reset();
    }
}

} // namespace bmc::manager
