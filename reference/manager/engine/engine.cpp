// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/engine.hpp"

#include <algorithm>
#include <utility>

#include <sys/socket.h>

#include "manager/engine/facts.hpp"
#include "manager/engine/verdict.hpp"
#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "network_mng/operate_log.h"

namespace bmc::manager {

namespace {

/* In which a link that goes up negotiates with its partner. */
constexpr std::chrono::seconds partnerTime{4};

/* A board's own interface stands for the bond. */
void remarkOnBond(const World &world, const Actual &actual)
{
    for (const Item &item : world.items) {
        const auto link = actual.links.find(item.subject);
        if (item.kind == Kind::bond && link != actual.links.end() && link->second.type != "bond") {
            log(Level::information,
                item.subject + " is no bond of the kernel's; it stands for one");
        }
    }
}

/* A switchover may give the first port another MAC address. */
void nameAnew(Change &change, const Actual &actual)
{
    if (change.scope.has(NW_LOG_LAN_REVERSE)) {
        noteInterfaces(change.after, actual);
        if (settings::isNameKnown(change.after)) {
            settings::nameAutomatically(change.after);
        }
    }
}

/* The steps towards the former configuration that were steps towards the new one, too. */
std::vector<Step> mended(std::vector<Step> differences, const World &now, const Actual &found)
{
    std::erase_if(differences, [&](const Step &step) {
        const bool isWanted = now.items.contains(step.item);
        return step.isRemoval ? isWanted
                              : !isWanted || (!step.item.subject.empty() &&
                                              !found.links.contains(step.item.subject));
    });
    return differences;
}

} // namespace

Engine::Engine(Machine &machine) : machine_(machine)
{
    store_.mend();
}

World Engine::worldOf(const Configuration &configuration) const
{
    return ledger_.withFound(wanted(configuration, conditions_));
}

/* The ledger with what the world that holds has in the machine, and what it lacks there. */
Ledger Engine::claimed(const World &held, const Actual &actual) const
{
    Ledger ledger = ledger_;
    ledger.forgetGone(held, actual);
    ledger.add(adopted(held, actual));
    if (isPending()) { /* what was going back when nothing could be written */
        ledger.add(adopted(wanted(checkpoint_.before, conditions_), actual));
    }
    ledger.claim(held, actual);
    return ledger;
}

/* A new IPv4 address is asked for before it is taken: not one that the configuration had already,
 * nor one that this machine has. */
void Engine::askBefore(const Step &step, const World &former, const Actual &actual)
{
    const Item &item = step.item;
    if (item.kind == Kind::link && item.number != 0) {
        partnerBy_ = Clock::now() + partnerTime;
    }
    const bool isNew = item.kind == Kind::address && !step.isRemoval &&
                       item.address.family == AF_INET && !holds(former.items, item.address) &&
                       !holds(actual.items, item.address) && asked_.insert(item).second;
    Ipv4Bytes bytes{};
    std::copy_n(item.address.bytes.begin(), bytes.size(), bytes.begin());
    try {
        if (isNew && machine_.isTaken(item.subject, bytes, partnerBy_)) {
            throw Refusal(Result::addressTaken, textOf(item.address) + " on " + item.subject);
        }
    } catch (const MachineError &error) {
        throw Refusal(Result::kernelRefused, error.what());
    }
}

/* As far as the links are up already; the others are asked for once they are. */
void Engine::askNeighbours(const Change &change, const World &former, const Actual &actual)
{
    asked_.clear();
    partnerBy_ = {};
    for (const Step &step :
         within(change.scope, plan(worldOf(change.after), actual, ledger_.owned()))) {
        const auto link = actual.links.find(step.item.subject);
        if (link == actual.links.end() || !link->second.hasCarrier) {
            continue;
        }
        try {
            askBefore(step, former, actual);
        } catch (Refusal &refusal) {
            blame(refusal, change.scope.moduleOf(step), step);
            throw;
        }
    }
}

/* The ledger without what is over. */
Ledger Engine::pruned(const Configuration &configuration, const Made &made) const
{
    Ledger ledger = ledger_;
    if (made.isRead) {
        const World world = wanted(configuration, conditions_);
        ledger.forgetGone(world, made.actual);
        ledger.forgetReturned(world, plan(worldOf(configuration), made.actual, ledger_.owned()));
    }
    return ledger;
}

/* The batch with the journal's head, the status that readers see and the ledger. */
void Engine::commit(Batch &batch, const Ledger &ledger, bool isBusy, const char *what,
                    const Store::LastAct &lastly)
{
    batch.put(journalHeadRecord, JournalHead{journalVersion, isOpen_})
        .put(netStatusRecord, {isBusy});
    if (ledger != ledger_ || !store_.find(ledgerRecord)) {
        batch.put(ledgerRecord, ledger.record());
    }
    store_.commit(batch, what, lastly);
    isBusy_ = isBusy;
    ledger_ = ledger;
}

void Engine::commitIntent(const Configuration &from, const Configuration &to, const Ledger &ledger)
{
    const bool wasOpen = std::exchange(isOpen_, true);
    try {
        Batch batch;
        batch.put(journalRecord, Journal{from, to});
        commit(batch, ledger, true, "the change's intent");
    } catch (const Refusal &) {
        isOpen_ = wasOpen;
        throw;
    }
}

/* The records with the facts about the interfaces. */
void Engine::commitOutcome(const Configuration &former, Configuration configuration,
                           const Made &made, bool isOpen)
{
    if (made.isRead) {
        noteInterfaces(configuration, made.actual);
    }
    const bool wasOpen = std::exchange(isOpen_, isOpen);
    try {
        Batch batch;
        batch.put(configuration, former);
        commit(batch, pruned(configuration, made), false, "the change's outcome");
    } catch (const Refusal &) {
        isOpen_ = wasOpen;
        throw;
    }
    announcer_.follow(configuration, conditions_);
}

/* Answers why the change could not be made, if so. */
std::optional<Failure> Engine::makeChange(const Configuration &from, const Change &change,
                                          const World &former, const Actual &found)
{
    const World world = worldOf(change.after);
    const Task task{world, ledger_.owned(), change.scope, true,
                    [&](const Step &step) { askBefore(step, former, found); }};
    try {
        Made made = make(machine_, task);
        if (auto reason = reasonOf(made, change.scope)) {
            return reason;
        }
        logFailures(made, "left out");
        commitOutcome(from, change.after, made);
        if (!made.left.empty()) {
            tryAgainLater();
        }
        if (from.state.ucIfcState != change.after.state.ucIfcState) {
            remarkOnBond(world, made.actual);
        }
        return std::nullopt;
    } catch (const Refusal &refusal) {
        return Failure{refusal.code(), refusal.what()};
    }
}

/* Makes the former configuration so; answers whether all that the change touches is as it was
 * found, read back, and the records say so. */
bool Engine::restore(const Configuration &from, const Change &change, const Actual &found,
                     const std::vector<Step> &differences)
{
    const World world = withValues(worldOf(from), wanted(change.after, conditions_), found.items);
    const Made made = make(machine_, {world, ledger_.owned(), change.scope});
    const bool isRestored = made.isRead && std::ranges::all_of(made.left, [&](const Step &step) {
                                return std::ranges::find(differences, step) != differences.end();
                            });
    isOpen_ = !isRestored;
    backOff_ = {}; /* whatever waited before, this is new */
    try {
        Batch batch;
        commit(batch, pruned(from, made), false, "that nothing was changed");
    } catch (const Refusal &refusal) {
        isOpen_ = true;
        log(Level::error, std::string("the journal stays open: ") + refusal.what());
        tryAgainLater();
    }
    if (!isRestored) {
        logFailures(made, "cannot undo");
        tryAgainLater();
    }
    return isRestored;
}

void Engine::requireStarted() const
{
    if (!isStarted_) {
        throw DatabaseFailure("start");
    }
}

std::vector<Step> Engine::change(const Change &wantedChange)
{
    if (wantedChange.scope.isEmpty()) {
        return {};
    }
    /* Who asks has begun with what is present: going back in between would mix the two. */
    requireStarted();
    Change change = wantedChange;
    repair(change.after.lan);
    conditions_ = machine_.conditions();
    const Configuration from = store_.readConfiguration();
    const World former = worldOf(from);
    Actual actual;
    try {
        actual = readPatiently(machine_, former);
    } catch (const MachineError &error) {
        throw refusalFor({static_cast<std::uint32_t>(Result::kernelRefused), error.what()},
                         change.scope);
    }
    nameAnew(change, actual);
    Ledger ledger = claimed(former, actual);
    const auto differences = within(change.scope, plan(former, actual, ledger.owned()));
    if (change.scope.selected.empty() && differences.empty()) {
        return {};
    }
    askNeighbours(change, former, actual);
    ledger.claim(wanted(change.after, conditions_), actual);
    commitIntent(from, change.after, ledger);

    const auto failure = makeChange(from, change, former, actual);
    if (!failure) {
        return mended(differences, worldOf(change.after), actual);
    }
    const Refusal refusal = refusalFor(*failure, change.scope);
    if (restore(from, change, actual, differences)) {
        throw refusal;
    }
    Refusal worse(static_cast<std::uint32_t>(Result::notRestored),
                  refusal.what() + std::string("; ") + meaningOf(Result::notRestored));
    if (refusal.section()) {
        worse.blame(*refusal.section(), refusal.port(), refusal.setting());
    }
    throw worse;
}

} // namespace bmc::manager
