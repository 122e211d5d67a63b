// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What in the kernel and the system is the manager's own, and what it found in the place of its
 * own: learned, never configured. */
#pragma once

#include <array>

#include "manager/engine/store.hpp"
#include "manager/state/plan.hpp"
#include "manager/state/wanted.hpp"

namespace bmc::manager {

/* An item as it is stored. */
struct NW_PACKED LedgerEntry {
    std::uint8_t isFound; /* a value found; otherwise an item that is owned */
    std::uint8_t kind;
    std::uint8_t family;
    std::uint8_t prefix;
    std::uint8_t address[NW_IPV6_SIZE];
    std::uint64_t number;
    char subject[NW_IFC_NAME_SIZE + 8]; /* of a sub-interface, too */
    char text[144];
};

struct NW_PACKED LedgerRecord {
    std::uint32_t version; /* 1 */
    std::uint32_t count;
    std::array<LedgerEntry, 48> entries;
};
inline constexpr Record<LedgerRecord> ledgerRecord{0x18000002, "manager's ledger"};

class Ledger {
public:
    Ledger() = default;
    explicit Ledger(const LedgerRecord &record);

    LedgerRecord record() const;

    const Items &owned() const
    {
        return owned_;
    }

    void add(const Items &items);

    /* What is going to be added is the manager's own, but for what is there already and what waits
     * for its interface. Values that it is going to set for the first time are noted as they are
     * found; those of an interface that has gone are forgotten. */
    void claim(const World &wanted, const Actual &actual);

    /* What is neither wanted nor there is no longer the manager's: who makes it so from now on is
     * somebody else. An interface that is awaited may come back with it. */
    void forgetGone(const World &wanted, const Actual &actual);

    /* What was found has come back where nothing is left to do for it. */
    void forgetReturned(const World &wanted, const std::vector<Step> &left);

    /* The world with the values found, wherever nothing else is wanted. */
    World withFound(World world) const;

    bool operator==(const Ledger &) const = default;

private:
    Items owned_;
    Items found_;
};

} // namespace bmc::manager
