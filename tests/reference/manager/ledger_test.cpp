// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the manager found in the place of its own comes back, whatever happens in between. */
#include <gtest/gtest.h>

#include "manager/engine/ledger.hpp"
#include "manager/state/plan.hpp"
#include "worlds.hpp"

namespace nwtest {

namespace {

using namespace bmc::manager;

Item valueOf(Kind kind, const std::string &subject, std::uint64_t number)
{
    return {kind, subject, {}, {}, {}, number};
}

/* The ledger after a change that sets the hop limit of an interface to 7. */
Ledger afterSetting(const std::string &subject, const ModelKernel &kernel)
{
    Ledger ledger;
    ledger.claim({{valueOf(Kind::hopLimit, subject, 7)}}, kernel.actual);
    return ledger;
}

} // namespace

TEST(Ledger, KeepsWhatWasFoundOfEveryKind)
{
    unsigned kinds = 0;
    for (unsigned number = 0; isKind(static_cast<std::uint8_t>(number)); number++) {
        const Kind kind = static_cast<Kind>(number);
        const Item found = valueOf(kind, "eth1", 33);
        Ledger ledger;
        ledger.claim({{valueOf(kind, "eth1", 7)}}, {{{"eth1", {}}}, {found}});
        EXPECT_EQ(ledger.withFound({}).items.contains(found), rowOf(kind).comesBack) << number;
        EXPECT_EQ(Ledger(ledger.record()), ledger) << number;
        kinds++;
    }
    EXPECT_GT(kinds, static_cast<unsigned>(Kind::hopLimit));
}

TEST(Ledger, AnEntryOfALaterVersionIsLeftOut)
{
    LedgerRecord record{};
    record.count = 1;
    record.entries[0].kind = 200;
    record.entries[0].isFound = 1;
    EXPECT_EQ(Ledger(record), Ledger());
}

/* Whatever somebody else sets later is not what was there before the manager. */
TEST(Ledger, TheFirstValueFoundIsTheOneThatComesBack)
{
    ModelKernel kernel(true);
    Ledger ledger = afterSetting("eth1", kernel);
    kernel.apply({valueOf(Kind::hopLimit, "eth1", 9)});
    ledger.claim({{valueOf(Kind::hopLimit, "eth1", 7)}}, kernel.actual);
    EXPECT_EQ(ledger.withFound({}).items, Items{valueOf(Kind::hopLimit, "eth1", 64)});
}

TEST(Ledger, OfAnInterfaceToBeMadeItIsWhatTheKernelGivesToNewOnes)
{
    ModelKernel kernel(true);
    kernel.add(valueOf(Kind::hopLimit, newInterface, 60));
    const Ledger ledger = afterSetting("bond0", kernel);
    EXPECT_EQ(ledger.withFound({}).items, Items{valueOf(Kind::hopLimit, "bond0", 60)});
}

TEST(Ledger, OfAnInterfaceThatHasGoneItIsWhatTheKernelGivesToItsSuccessor)
{
    ModelKernel kernel(true);
    Ledger ledger = afterSetting("eth1", kernel);
    kernel.removeLink("eth1");
    kernel.add(valueOf(Kind::hopLimit, newInterface, 60));
    ledger.claim({{valueOf(Kind::hopLimit, "eth1", 7)}}, kernel.actual);
    EXPECT_EQ(ledger.withFound({}).items, Items{valueOf(Kind::hopLimit, "eth1", 60)});
}

/* As with IPv6, which a link of small packets loses. */
TEST(Ledger, WhereThereIsNoValueAnyMoreNoneComesBack)
{
    ModelKernel kernel(true);
    const Ledger ledger = afterSetting("eth1", kernel);
    std::erase_if(kernel.actual.items, [](const Item &item) {
        return item.kind == Kind::hopLimit && item.subject == "eth1";
    });
    EXPECT_TRUE(plan(ledger.withFound({}), kernel.actual, {}).empty());
    EXPECT_FALSE(plan({{valueOf(Kind::hopLimit, "eth1", 7)}}, kernel.actual, {}).empty());
}

/* A driver that fails to tell it once has one all the same. */
TEST(Ledger, ALinkModeThatIsNotToldStillComesBack)
{
    ModelKernel kernel(true);
    kernel.add(valueOf(Kind::linkMode, "eth1", 1000));
    Ledger ledger;
    ledger.claim({{valueOf(Kind::linkMode, "eth1", 100)}}, kernel.actual);
    std::erase_if(kernel.actual.items,
                  [](const Item &item) { return item.kind == Kind::linkMode; });
    EXPECT_FALSE(plan(ledger.withFound({}), kernel.actual, {}).empty());
}

/* On an interface that is not there nothing is made; one that is to be made is another matter. */
TEST(Ledger, WhatCannotBeMadeIsNotClaimed)
{
    ModelKernel kernel(true);
    kernel.removeLink("eth1");
    Ledger ledger;
    ledger.claim({{addressOn("eth1", "192.0.2.1", 24)}}, kernel.actual);
    EXPECT_EQ(ledger, Ledger());

    const Item bond{Kind::bond, "bond0"};
    const Item address = addressOn("bond0", "192.0.2.1", 24);
    ledger.claim({{bond, address}}, kernel.actual);
    EXPECT_EQ(ledger.owned(), (Items{bond, address}));
}

/* Nothing is left to do for it, so that it is forgotten. */
TEST(Ledger, OfAnInterfaceThatIsGoneNothingComesBack)
{
    ModelKernel kernel(true);
    const Ledger ledger = afterSetting("eth1", kernel);
    const World nothing = ledger.withFound({});
    kernel.apply({valueOf(Kind::hopLimit, "eth1", 7)});
    EXPECT_FALSE(plan(nothing, kernel.actual, {}).empty());
    kernel.removeLink("eth1");
    EXPECT_TRUE(plan(nothing, kernel.actual, {}).empty());

    Ledger pruned = ledger;
    pruned.forgetGone({}, kernel.actual);
    pruned.forgetReturned({}, {});
    EXPECT_EQ(pruned, Ledger());
}

} // namespace nwtest
