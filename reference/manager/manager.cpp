// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager.hpp"

#include <algorithm>

#include "effects.hpp"
#include "network_mng/operate_log.h"
#include "network_mng/store.h"
#include "plan.hpp"
#include "ports.hpp"
#include "refusal.hpp"
#include "restart.hpp"

namespace bmc::manager {

namespace {

/* Tells the library's readers that a change is under way. */
class StatusBracket {
public:
    StatusBracket()
    {
        if (NW_LMDB_Put_NetStatus(1) != NW_OK) {
            throw Refusal(Result::databaseFailed, "write net status record");
        }
    }

    ~StatusBracket()
    {
        if (NW_LMDB_Put_NetStatus(0) != NW_OK) {
            log(Level::error, "the net status record still says that a change is in progress");
        }
    }

    StatusBracket(const StatusBracket &) = delete;
    StatusBracket &operator=(const StatusBracket &) = delete;
};

/* The journal while a change is under way. Unless the change is kept, the records go back to what
 * they were. */
class JournalEntry {
public:
    JournalEntry(const Store &store, const Configuration &before, const Configuration &after)
        : store_(store), before_(before)
    {
        store_.put(journalRecord, {1, before, after});
    }

    ~JournalEntry()
    {
        try {
            if (!isKept_) {
                store_.putConfiguration(before_);
                store_.put(journalRecord, {0, before_, before_});
            }
        } catch (const Refusal &refusal) {
            log(Level::error, refusal.what());
        }
    }

    JournalEntry(const JournalEntry &) = delete;
    JournalEntry &operator=(const JournalEntry &) = delete;

    /* From here on, and not earlier, a killed manager is found to have made the change. */
    void keep(const Configuration &after)
    {
        store_.put(journalRecord, {0, after, after});
        isKept_ = true;
    }

private:
    const Store &store_;
    const Configuration &before_;
    bool isKept_ = false;
};

/* Records that a change has left half written are the old ones. */
void settle(const Store &store)
{
    const auto journal = store.find(journalRecord);
    if (journal && journal->isUnderWay != 0) {
        log(Level::information, "a change was interrupted; the records go back");
        store.putConfiguration(journal->from);
        store.put(journalRecord, {0, journal->from, journal->to});
    }
}

void repair(NW_LAN_CFG_DB_INFO_S &lan)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        std::uint8_t &count = lan.astPort[port].ucIpv6FurtherCount;
        if (count > NW_IPV6_FURTHER_COUNT) {
            log(Level::error, "port " + std::to_string(port) + ": the record counted " +
                                  std::to_string(count) +
                                  " further IPv6 addresses where 16 fit; it now counts 16");
            count = NW_IPV6_FURTHER_COUNT;
        }
    }
}

/* Addresses that any of the configurations gives to the interface. */
std::vector<Address> addressesOn(const std::string &interface,
                                 std::initializer_list<const Configuration *> configurations)
{
    std::vector<Address> addresses;
    for (const Configuration *configuration : configurations) {
        for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
            if (nameOf(configuration->state, port) == interface) {
                const auto more = addressesIn(configuration->lan.astPort[port]);
                addresses.insert(addresses.end(), more.begin(), more.end());
            }
        }
    }
    return addresses;
}

void noteInterfaces(const Kernel &kernel, Configuration &configuration)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        noteInterface(kernel, configuration, port);
    }
}

} // namespace

Draft Manager::draft() const
{
    settle(store_);
    return Draft(store_.readConfiguration());
}

void Manager::apply(const Draft &draft, Transaction &transaction) const
{
    for (const Effect &effect : effects()) {
        if ((effect.modules & draft.modules) == 0) {
            continue;
        }
        blaming(moduleOf(effect, draft), [&] {
            try {
                effect.apply({kernel_, draft, transaction});
            } catch (const KernelError &error) {
                throw Refusal(static_cast<std::uint32_t>(Result::kernelRefused), error.what());
            }
        });
    }
}

void Manager::change(const Draft &draft)
{
    if (draft.restartDelay) {
        restartAt_ = Clock::now() + *draft.restartDelay;
    }
    if (draft.modules == 0) {
        return;
    }

    Configuration after = draft.after;
    repair(after.lan);
    const StatusBracket busy;
    JournalEntry journal(store_, draft.before, after);
    Transaction transaction;
    apply(draft, transaction);
    noteInterfaces(kernel_, after);
    store_.putConfiguration(after);
    journal.keep(after);
    transaction.commit();
    announcer_.follow(after);
}

void Manager::start()
{
    clearStaleStatus();
    settle(store_);
    Draft draft(store_.readConfiguration());
    repair(draft.after.lan);
    selectEverything(draft);
    const Journal journal =
        store_.find(journalRecord).value_or(Journal{0, draft.after, draft.after});
    draft.before = journal.to;

    const bool isInLine = applyAtStart(draft, journal);
    noteInterfaces(kernel_, draft.after);
    store_.putConfiguration(draft.after);
    if (isInLine) {
        store_.put(journalRecord, {0, draft.after, draft.after});
    }
    announcer_.follow(draft.after);
}

bool Manager::applyAtStart(const Draft &draft, const Journal &journal) const
{
    bool isInLine = true;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const auto managed = addressesOn(nameOf(draft.after.state, port),
                                         {&draft.after, &journal.from, &journal.to});
        isInLine = bringInLine(kernel_, draft.after, port, managed) && isInLine;
    }
    for (const Effect &effect : effects().subspan(1)) {
        Transaction transaction;
        try {
            effect.apply({kernel_, draft, transaction});
            transaction.commit();
        } catch (const std::exception &error) {
            log(Level::error, std::string("start: ") + effect.name + ": " + error.what());
        }
    }
    return isInLine;
}

void Manager::clearStaleStatus() const
{
    const auto status = store_.find(netStatusRecord);
    if (!status || status->ucSetInProgress != 0) {
        log(Level::information, status ? "start: a change was interrupted; its status is cleared"
                                       : "start: there was no net status record");
    }
    /* Written in any case: a predecessor that was killed within a commit may have left a record
     * that readers see only once somebody writes. */
    store_.put(netStatusRecord, {0});
}

void Manager::restart()
{
    try {
        Draft again = draft();
        selectEverything(again);
        change(again);
        log(Level::information, "restart: done");
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("restart: ") + refusal.what());
    }
}

int Manager::work()
{
    if (restartAt_ && *restartAt_ <= Clock::now()) {
        restartAt_.reset();
        restart();
    }

    const Clock::time_point now = Clock::now();
    const int announcement = announcer_.sendDue(now);
    if (!restartAt_) {
        return announcement;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*restartAt_ - now).count();
    const int restart = static_cast<int>(std::max<std::int64_t>(left, 0));
    return announcement < 0 ? restart : std::min(announcement, restart);
}

} // namespace bmc::manager
