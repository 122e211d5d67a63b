// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints: what the engine goes back to unless it is told in time to stay. */
#include <algorithm>
#include <utility>

#include "manager/engine/engine.hpp"
#include "manager/engine/verdict.hpp"
#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "settings/ways_in.hpp"

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

/* The records haven't gone back. */
Refusal halfBack(bool isMachineBack, const Refusal &failure)
{
    const std::string machine = isMachineBack ? "kernel and system have gone back, "
                                              : "nobody has seen all of it go back, ";
    return {static_cast<std::uint32_t>(Result::notRestored),
            machine + "the records not yet: " + failure.what()};
}

} // namespace

bool Engine::isPending() const
{
    return checkpoint_.state == CheckpointState::pending;
}

std::optional<std::chrono::milliseconds> Engine::pending() const
{
    return isPending() ? std::optional(leftOf(checkpoint_, machine_.moment())) : std::nullopt;
}

bool Engine::isCheckpointOver() const
{
    return isPending() && pending()->count() == 0;
}

CheckpointState Engine::checkpointState(const std::string &token) const
{
    return tokenOf(checkpoint_) == token ? checkpoint_.state : CheckpointState::none;
}

std::optional<std::pair<Configuration, Configuration>> Engine::pendingChange()
{
    const Configuration now = present();
    return isPending() ? std::optional(std::pair(checkpoint_.before, now)) : std::nullopt;
}

/* One that is over and could not go back yet is still there. */
std::string Engine::checkpoint(std::chrono::seconds within)
{
    requireStarted();
    if (isPending()) {
        throw Refusal(Result::checkpointPending, secondsText(*pending()) + " are left to confirm");
    }
    require(within >= std::chrono::seconds(settings::shortestToConfirm) &&
                within <= std::chrono::seconds(settings::longestToConfirm),
            Result::badDeadline, secondsText(within));
    const CheckpointRecord set =
        checkpointOf(store_.readConfiguration(), within, machine_.moment());
    store_.put(checkpointRecord, set);
    checkpoint_ = set;
    checkpointAt_ = Clock::now();
    log(Level::information, "checkpoint: what holds now comes back in " + secondsText(within));
    return tokenOf(set);
}

void Engine::confirm()
{
    requireInTime();
    require(isPending(), Result::noCheckpoint, "confirm");
    const CheckpointRecord after = ended(checkpoint_, CheckpointState::confirmed);
    store_.put(checkpointRecord, after);
    checkpoint_ = after;
    log(Level::information, "checkpoint: confirmed");
}

void Engine::revert()
{
    requireStarted();
    require(isPending(), Result::noCheckpoint, "revert");
    const Made made = goBack("asked to");
    const Scope scope = everything();
    if (const auto failure = reasonOf(made, scope)) {
        throw Refusal(Result::notRestored, failure->reason);
    }
}

/* First the records: whoever starts next goes on from there. A disk that cannot be written shall
 * not keep kernel and system from going back. */
Made Engine::goBack(const char *why)
{
    log(Level::information, std::string("checkpoint: ") + why + ", what held before comes back");
    const Configuration before = checkpoint_.before;
    const CheckpointRecord after = ended(checkpoint_, CheckpointState::reverted);
    const auto makeSo = [&] { return makeUnwritten(before, "checkpoint"); };
    const bool wasOpen = isOpen_;
    try {
        const Configuration changed = store_.readConfiguration();
        isOpen_ = true;
        Batch batch;
        batch.put(before, changed)
            .put(journalRecord, Journal{before, changed})
            .put(checkpointRecord, after);
        commit(batch, ledger_, true, "that the checkpoint is over", makeSo);
    } catch (const Refusal &failure) {
        isOpen_ = wasOpen;
        checkpoint_.deadline = 0; /* the time to confirm is over, asked for or not */
        checkpointAt_ = Clock::now() + checkpointRetry;
        throw halfBack(makeSo(), failure);
    }
    checkpoint_ = after;
    try {
        return settle("checkpoint");
    } catch (const Refusal &failure) {
        const bool isBack = makeSo();
        tryAgainLater();
        throw halfBack(isBack, failure);
    }
}

void Engine::endOverdue()
{
    if (isStarted_ && isCheckpointOver()) {
        goBack("it was not confirmed in time");
    }
}

/* No answer comes before what is due. */
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
    const auto left = pending();
    checkpointAt_.reset();
    if (left) {
        checkpointAt_ = Clock::now() + (left->count() == 0 ? checkpointRetry
                                                           : std::min(*left, checkpointInterval));
        requireInTime();
    }
}

} // namespace bmc::manager
