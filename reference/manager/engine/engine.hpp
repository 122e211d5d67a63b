// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Keeps records, kernel and system the same: one change at a time, made so or taken back. */
#pragma once

#include <chrono>
#include <optional>

#include "manager/engine/announcer.hpp"
#include "manager/engine/checkpoint.hpp"
#include "manager/engine/journal.hpp"
#include "manager/engine/making.hpp"
#include "manager/state/discrepancy.hpp"

namespace bmc::manager {

/* The configuration that shall hold, and what of it may touch the machine. */
struct Change {
    Configuration after;
    Scope scope;
};

class Engine {
public:
    /* Mends the database if need be. */
    explicit Engine(Machine &machine);

    /* Ends what a predecessor left half done and makes the stored configuration so, as far as
     * kernel and system let it: what they refuse is logged and tried again. Where the database
     * cannot be read or written, or the journal is not known, that holds for the last good
     * configuration, changes are refused, and the start is tried again. Throws Refusal when there
     * is no configuration. */
    void start();

    /* Two durable commits: before anything is touched the intent, and the outcome once kernel and
     * system show it. Throws Refusal: when it cannot be made so, everything it touches is as it was
     * before, or the code is notRestored and the engine goes on trying. Answers the steps that made
     * so what was in the records before and not in kernel or system. */
    std::vector<Step> change(const Change &change);

    /* What is stored now comes back after that time, or after a reboot, unless it is confirmed:
     * records, kernel and system, whoever changes them until then. Durable when it returns. Answers
     * the token by which it may be confirmed. Throws Refusal: while there is another, and for a
     * time out of its bounds. */
    std::string checkpoint(std::chrono::seconds within);
    /* What has changed since stays. Throws Refusal without a checkpoint. */
    void confirm();
    /* What has changed since goes. Throws Refusal: without a checkpoint, when the records cannot be
     * written, or when kernel or system don't let all of it go; the engine then goes on trying. */
    void revert();
    /* What has become of the one with that token; none where it is not the last one. */
    CheckpointState checkpointState(const std::string &token) const;
    /* What has changed since it was set, the former configuration first; only with a checkpoint. */
    std::optional<std::pair<Configuration, Configuration>> pendingChange();
    /* How long there is left to confirm, if there is a checkpoint. */
    std::optional<std::chrono::milliseconds> pending() const;

    /* What of the machine is not as it is stored. Throws Refusal when nobody can tell. */
    std::vector<Discrepancy> differences();

    /* Makes the stored configuration so, all of it, whatever others have changed. A port whose
     * interface is missing is reported and left out. Takes the place of one that waits. */
    void restart();
    void restartIn(std::chrono::seconds delay);

    /* Does what is due by now; answers the milliseconds until the next time, -1 for none. */
    int work();

    /* What is stored, once what is due to go back has gone. Throws Refusal. */
    Configuration present();

    const Store &store() const
    {
        return store_;
    }

private:
    using Clock = Announcer::Clock;

    World worldOf(const Configuration &configuration) const;
    Ledger claimed(const World &held, const Actual &actual) const;
    void askBefore(const Step &step, const World &former, const Actual &actual);
    void askNeighbours(const Change &change, const World &former, const Actual &actual);
    Ledger pruned(const Configuration &configuration, const Made &made) const;
    void commit(Batch &batch, const Ledger &ledger, bool isBusy, const char *what,
                const Store::LastAct &lastly = {});
    void commitIntent(const Configuration &from, const Configuration &to, const Ledger &ledger);
    void commitOutcome(const Configuration &former, Configuration configuration, const Made &made,
                       bool isOpen = false);
    std::optional<Failure> makeChange(const Configuration &from, const Change &change,
                                      const World &former, const Actual &found);
    bool restore(const Configuration &from, const Change &change, const Actual &found,
                 const std::vector<Step> &differences);
    Made settle(const char *occasion);
    void startFromRecords();
    bool isPending() const;
    bool isCheckpointOver() const;
    Made goBack(const char *why);
    void endOverdue();
    void requireInTime();
    void followCheckpoint();
    Configuration lastGood();
    void makeLastGood();
    bool makeUnwritten(const Configuration &configuration, const char *occasion);
    void requireStarted() const;
    void tryAgainLater();
    void rest();
    void tryAgain();
    void followWatchdog();
    int millisecondsTo(std::optional<Clock::time_point> next) const;

    Machine &machine_;
    Store store_;
    Ledger ledger_;       /* as it is stored */
    bool isOpen_ = false; /* the journal is */
    bool isBusy_ = false; /* the status that readers see */
    bool isStarted_ = false;
    Items asked_;                   /* addresses that no neighbour has */
    Clock::time_point partnerBy_{}; /* of links that the change has set up */
    Announcer announcer_;
    Conditions conditions_;
    std::optional<Clock::time_point> restartAt_;
    std::optional<Clock::time_point> tryAgainAt_;
    std::chrono::seconds backOff_{};
    std::optional<Clock::time_point> watchdogAt_;
    CheckpointRecord checkpoint_{};                 /* as it is stored */
    std::optional<Clock::time_point> checkpointAt_; /* when to look at its time */
};

} // namespace bmc::manager
