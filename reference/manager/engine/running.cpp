// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the engine does without being asked for a change: start, restart, and try again. */
#include <algorithm>

#include "manager/engine/engine.hpp"
#include "manager/engine/facts.hpp"
#include "manager/engine/verdict.hpp"
#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "network_mng/operate_log.h"
#include "platform/records.hpp"

namespace bmc::manager {

namespace {

constexpr std::chrono::seconds firstBackOff{1};
constexpr std::chrono::seconds longestBackOff{60};
constexpr std::chrono::seconds watchdogInterval{1};

} // namespace

/* Makes the stored configuration so as far as possible. Throws Refusal. */
Made Engine::settle(const char *occasion)
{
    const Configuration stored = store_.readConfiguration();
    Configuration configuration = stored;
    repair(configuration.lan);
    conditions_ = machine_.conditions();
    machine_.forget();
    const Scope scope = everything();
    Made made;
    try {
        const Actual actual = readPatiently(machine_, worldOf(configuration));
        noteInterfaces(configuration, actual);
        if (settings::isNameKnown(configuration)) {
            settings::nameAutomatically(configuration);
        }
        const World world = worldOf(configuration);
        const Ledger ledger = claimed(world, actual);
        const Task task{world, ledger.owned(), scope, false, [&](const Step &step) {
                            log(Level::information, std::string(occasion) + ": " + textOf(step));
                        }};
        Batch batch;
        /* A disk that fails for good shall not leave the machine without its addresses. */
        commit(batch, ledger, true, "that a change is under way",
               [&] { logFailures(make(machine_, task), occasion); });
        made = make(machine_, task);
    } catch (const MachineError &error) {
        made.failures.push_back({static_cast<std::uint32_t>(Result::kernelRefused), error.what()});
    }
    const bool isSo = made.isRead && made.left.empty();
    logFailures(made, occasion);
    backOff_ = {};
    tryAgainLater(); /* unless all of it succeeds */
    commitOutcome(stored, configuration, made, isOpen_ && !isSo);
    if (isSo) {
        rest();
    }
    return made;
}

/* A checkpoint that is over counts as far as it can be read. */
Configuration Engine::lastGood()
{
    try {
        checkpoint_ = readCheckpoint(store_, machine_.moment());
    } catch (const Refusal &) {
        checkpoint_ = {};
    }
    return isCheckpointOver() ? checkpoint_.before : store_.readConfiguration();
}

/* Makes the configuration so as far as possible, with records that cannot be written; answers
 * whether all of it was seen to be so. Nothing that this takes over is noted: what is wanted and
 * there is adopted by the next start. */
bool Engine::makeUnwritten(const Configuration &configuration, const char *occasion)
{
    const World world = worldOf(configuration);
    try {
        const Ledger ledger = claimed(world, readPatiently(machine_, world));
        const Scope scope = everything();
        const Made made = make(machine_, {world, ledger.owned(), scope});
        logFailures(made, occasion);
        announcer_.follow(configuration, conditions_);
        return made.isRead && made.left.empty();
    } catch (const MachineError &error) {
        log(Level::error, std::string(occasion) + ": " + error.what());
        return false;
    }
}

void Engine::makeLastGood()
{
    const Snapshot backup;
    const auto ledger = store_.find(ledgerRecord);
    ledger_ = ledger ? Ledger(*ledger) : Ledger();
    conditions_ = machine_.conditions();
    machine_.forget();
    makeUnwritten(lastGood(), "last good configuration");
}

void Engine::start()
{
    try {
        startFromRecords();
        isStarted_ = true;
        followCheckpoint();
    } catch (const Refusal &failure) {
        log(Level::error, std::string("start: ") + failure.what() +
                              "; the last good configuration holds and cannot be changed");
        if (!tryAgainAt_) {
            tryAgainLater();
        }
        makeLastGood();
    }
}

void Engine::startFromRecords()
{
    const auto status = store_.find(netStatusRecord);
    if (!status || status->ucSetInProgress != 0) {
        log(Level::information, status ? "start: a change was interrupted; its status is cleared"
                                       : "start: there was no net status record");
    }
    const Inheritance inherited = inherit(store_);
    if (inherited.isOpen) {
        log(Level::information, "a change was interrupted; the former configuration holds");
    }
    ledger_ = inherited.ledger;
    isOpen_ = inherited.isOpen;
    checkpoint_ = readCheckpoint(store_, machine_.moment());
    if (isCheckpointOver()) {
        goBack("its time ended or the machine was started anew");
    } else {
        settle("start");
    }
}

std::vector<Discrepancy> Engine::differences()
{
    conditions_ = machine_.conditions();
    const World world = worldOf(present());
    try {
        const Actual actual = readPatiently(machine_, world);
        return discrepancies(world, actual, claimed(world, actual).owned());
    } catch (const MachineError &error) {
        throw Refusal(Result::kernelRefused, error.what());
    }
}

void Engine::restart()
{
    restartAt_.reset();
    requireInTime();
    const Made made = settle("restart");
    const Scope scope = everything();
    if (const auto failure = reasonOf(made, scope)) {
        throw refusalFor(*failure, scope);
    }
}

void Engine::restartIn(std::chrono::seconds delay)
{
    restartAt_ = Clock::now() + delay;
}

void Engine::tryAgainLater()
{
    backOff_ = std::clamp(2 * backOff_, firstBackOff, longestBackOff);
    tryAgainAt_ = Clock::now() + backOff_;
}

/* Nothing is left to do. */
void Engine::rest()
{
    tryAgainAt_.reset();
    backOff_ = {};
}

/* What is left to do may have become possible. Nothing is written while it hasn't, but for an
 * outcome that could not be written. */
void Engine::tryAgain()
{
    tryAgainLater(); /* unless all of it succeeds */
    if (!isStarted_) {
        store_.mend();
        return start();
    }
    requireInTime();
    conditions_ = machine_.conditions();
    const Configuration configuration = store_.readConfiguration();
    const World world = worldOf(configuration);
    Made made;
    try {
        const Ledger ledger = claimed(world, readPatiently(machine_, world));
        if (ledger != ledger_) {
            store_.put(ledgerRecord, ledger.record());
            ledger_ = ledger;
        }
        made = make(machine_, {world, ledger_.owned(), everything()});
    } catch (const MachineError &) {
        made.isRead = false;
    }
    const bool isSo = made.isRead && made.left.empty();
    if (isSo || isBusy_) {
        commitOutcome(configuration, configuration, made, isOpen_ && !isSo);
    }
    if (isSo) {
        rest();
        log(Level::information, "kernel and system are in line with the records");
    }
}

/* Suspended bits rest while the watchdog timer runs. */
void Engine::followWatchdog()
{
    const Configuration configuration = store_.readConfiguration();
    const bool matters = std::ranges::any_of(configuration.lan.astPort, [](const auto &entry) {
        return settings::suspendedArp(entry) != 0;
    });
    watchdogAt_.reset();
    if (!matters) {
        return;
    }
    watchdogAt_ = Clock::now() + watchdogInterval;
    const bool isRunning = machine_.conditions().isWatchdogRunning;
    if (isRunning == conditions_.isWatchdogRunning) {
        return;
    }
    conditions_.isWatchdogRunning = isRunning;
    log(Level::information,
        isRunning ? "the watchdog timer runs: ARP is suspended" : "the watchdog timer is over");
    tryAgain();
    announcer_.follow(store_.readConfiguration(), conditions_);
}

int Engine::millisecondsTo(std::optional<Clock::time_point> next) const
{
    const auto checkpointAt = isStarted_ ? checkpointAt_ : std::nullopt;
    for (const auto &due : {restartAt_, tryAgainAt_, watchdogAt_, checkpointAt}) {
        if (due) {
            next = std::min(next.value_or(*due), *due);
        }
    }
    if (!next) {
        return -1;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

int Engine::work()
{
    const auto attempt = [](const char *what, const auto &task) {
        try {
            task();
        } catch (const Refusal &refusal) {
            log(Level::error, std::string(what) + ": " + refusal.what());
        }
    };
    const Clock::time_point now = Clock::now();
    if (restartAt_ && *restartAt_ <= now) {
        attempt("restart", [this] {
            restart();
            log(Level::information, "restart: done");
        });
    }
    if (isStarted_ && checkpointAt_ && *checkpointAt_ <= now) {
        attempt("checkpoint", [this] { followCheckpoint(); });
    }
    if (tryAgainAt_ && *tryAgainAt_ <= now) {
        attempt("again", [this] { tryAgain(); });
    }
    if (isStarted_ && (!watchdogAt_ || *watchdogAt_ <= now)) {
        attempt("watchdog", [this] { followWatchdog(); });
    }
    return millisecondsTo(announcer_.sendDue(machine_, now));
}

} // namespace bmc::manager
