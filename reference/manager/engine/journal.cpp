// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/journal.hpp"

#include "manager/log.hpp"
#include "manager/refusal.hpp"

namespace bmc::manager {

namespace {

/* The first format had no ledger: whatever its configurations name may be the manager's. */
Ledger ledgerOf(const FirstJournal &journal)
{
    Ledger ledger;
    ledger.add(named(journal.from));
    ledger.add(named(journal.to));
    return ledger;
}

Inheritance migrate(const Store &store, const FirstJournal &first)
{
    const bool isOpen = first.isUnderWay != 0;
    const Inheritance inherited{isOpen, ledgerOf(first)};
    log(Level::information, "start: the journal is brought from format 1 to 2");
    Batch batch;
    if (isOpen) {
        batch.put(first.from);
    }
    batch.put(journalRecord, Journal{first.from, first.to})
        .put(journalHeadRecord, JournalHead{journalVersion, isOpen})
        .put(ledgerRecord, inherited.ledger.record());
    store.commit(batch, journalRecord.name);
    return inherited;
}

} // namespace

bool isJournalKnown(const Store &store)
{
    const auto head = store.find(journalHeadRecord);
    return head ? head->version == journalVersion : store.isVacant(journalHeadRecord);
}

Inheritance inherit(const Store &store)
{
    if (store.isVacant(journalHeadRecord)) {
        if (!store.isVacant(firstJournalRecord)) {
            return migrate(store, store.read(firstJournalRecord));
        }
        const auto ledger = store.find(ledgerRecord);
        return {false, ledger ? Ledger(*ledger) : Ledger()};
    }
    const JournalHead head = store.read(journalHeadRecord);
    if (head.version != journalVersion) {
        throw DatabaseFailure("the journal has the format " +
                              std::to_string(std::uint32_t{head.version}) +
                              ", which this manager doesn't know");
    }
    return {head.isOpen != 0, Ledger(store.read(ledgerRecord))};
}

} // namespace bmc::manager
