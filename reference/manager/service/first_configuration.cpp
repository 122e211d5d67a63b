// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/first_configuration.hpp"

#include "manager/engine/checkpoint.hpp"
#include "manager/engine/journal.hpp"
#include "manager/refusal.hpp"
#include "settings/document.hpp"
#include "settings/wireless.hpp"

namespace bmc::manager {

namespace {

/* What holds where the document says nothing. */
Configuration baseOf(const Store &store)
{
    Configuration base = settings::blankConfiguration();
    settings::forEachRecord([&](const settings::RecordName &row, auto member) {
        using Content = std::remove_reference_t<decltype(base.*member)>;
        if (!row.isRequired) {
            const Record<Content> record{row.key, row.name};
            base.*member = store.find(record).value_or(base.*member);
        }
    });
    return base;
}

} // namespace

void writeFirstConfiguration(std::string_view document, bool isForced)
{
    const Store store;
    store.mend();
    const bool isLost = isForced && store.isLost();
    const Configuration base = isLost ? settings::blankConfiguration() : baseOf(store);
    const Configuration first =
        settings::firstConfiguration(document, settings::knownWireless(), base);
    if (isLost) {
        store.abandon();
    }
    if (!isForced && (!store.isVacant(ifcStateRecord) || !store.isVacant(lanRecord))) {
        throw Refusal(static_cast<std::uint32_t>(Result::databaseFailed),
                      "the database holds a configuration already; --force replaces it");
    }

    /* A change that was under way is over: what it left in kernel and system is in the ledger. */
    if (!isForced || isJournalKnown(store)) {
        inherit(store);
    }
    Batch batch;
    batch.put(first)
        .put(netStatusRecord, {0})
        .put(ncsiRecord, store.find(ncsiRecord).value_or(NW_NCSI_DB_INFO_S{}));
    if (!store.isVacant(journalHeadRecord)) {
        batch.put(journalHeadRecord, {journalVersion, 0})
            .put(ledgerRecord, store.find(ledgerRecord).value_or(Ledger().record()));
    }
    if (!store.isVacant(checkpointRecord)) {
        batch.put(checkpointRecord, {});
    }
    store.commit(batch, "first configuration");
}

} // namespace bmc::manager
