// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The change that is under way, as the next manager finds it. */
#pragma once

#include "manager/engine/ledger.hpp"
#include "manager/engine/store.hpp"

namespace bmc::manager {

/* Whether a change is under way, and the format of the journal, whatever that is: the size of this
 * record never changes. */
struct NW_PACKED JournalHead {
    std::uint32_t version;
    std::uint32_t isOpen;
};
inline constexpr Record<JournalHead> journalHeadRecord{0x18000001, "head of the manager's journal"};
inline constexpr std::uint32_t journalVersion = 2;

/* While it is open kernel and system may hold parts of both configurations. The records are those
 * of from until they are, all at once, those of to. */
struct NW_PACKED Journal {
    Configuration from;
    Configuration to;
};
inline constexpr Record<Journal> journalRecord{0x18000000, "manager's journal"};

/* The format before there was a head. While such a change was under way the
 * records could hold parts of both, and counted as those of from. */
struct NW_PACKED FirstJournal {
    std::uint8_t isUnderWay;
    Configuration from;
    Configuration to;
};
inline constexpr Record<FirstJournal> firstJournalRecord{journalRecord.key,
                                                         "manager's first journal"};

/* What a manager that starts inherits. */
struct Inheritance {
    bool isOpen = false; /* the predecessor was interrupted */
    Ledger ledger{};
};

/* Not that of a later manager. */
bool isJournalKnown(const Store &store);

/* Reads the journal and the ledger; those of the first format are brought to the present one, with
 * the records that its change may have left half written. Throws DatabaseFailure for a format that
 * is not known, and Refusal for a journal that is there and cannot be read. */
Inheritance inherit(const Store &store);

} // namespace bmc::manager
