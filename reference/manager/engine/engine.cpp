// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/engine.hpp"

#include <algorithm>
#include <utility>

#include <sys/socket.h>

#include "manager/engine/facts.hpp"
#include "manager/engine/verdict.hpp"
#include "manager/log.hpp"
#include "network_mng/operate_log.h"

namespace bmc::manager {

namespace {

constexpr std::chrono::seconds firstBackOff{1};
constexpr std::chrono::seconds longestBackOff{60};
constexpr std::chrono::seconds watchdogInterval{1};

/* Everything, as far as there are interfaces for it. */
Scope everything()
{
    Scope scope;
    for (const std::uint32_t module :
         {NW_LOG_HOSTNAME, NW_LOG_LAN, NW_LOG_DNS, NW_LOG_LLDP, NW_LOG_NET_MODE, NW_LOG_AN}) {
        scope.select(module);
    }
    return scope;
}

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

} // namespace

Engine::Engine(Machine &machine) : machine_(machine) {}

World Engine::worldOf(const Configuration &configuration) const
{
    return ledger_.withFound(wanted(configuration, conditions_));
}

/* The ledger with what the world that holds has in the machine, and what it lacks there. */
Ledger Engine::claimed(const World &held, const Actual &actual) const
{
    Ledger ledger = ledger_;
    ledger.add(adopted(held, actual));
    ledger.claim(held, actual);
    return ledger;
}

/* A new IPv4 address is asked for before it is taken: not one that the configuration had already,
 * nor one that this machine has. */
void Engine::askBefore(const Step &step, const World &former, const Actual &actual)
{
    const Item &item = step.item;
    const bool isNew = item.kind == Kind::address && !step.isRemoval &&
                       item.address.family == AF_INET && !holds(former.items, item.address) &&
                       !holds(actual.items, item.address) && asked_.insert(item).second;
    Ipv4Bytes bytes{};
    std::copy_n(item.address.bytes.begin(), bytes.size(), bytes.begin());
    if (isNew && machine_.isTaken(item.subject, bytes)) {
        throw Refusal(Result::addressTaken, textOf(item.address) + " on " + item.subject);
    }
}

/* As far as the links are up already; the others are asked for once they are. */
void Engine::askNeighbours(const Change &change, const World &former, const Actual &actual)
{
    asked_.clear();
    for (const Step &step :
         within(change.scope, plan(worldOf(change.after), actual, ledger_.owned()))) {
        const auto link = actual.links.find(step.item.subject);
        if (link != actual.links.end() && link->second.hasCarrier) {
            blaming(change.scope.moduleOf(step), [&] { askBefore(step, former, actual); });
        }
    }
}

/* What is left to be done keeps its place. */
Ledger Engine::pruned(const Configuration &configuration, const Made &made) const
{
    Ledger ledger = ledger_;
    if (made.isRead && made.left.empty()) {
        ledger.prune(wanted(configuration, conditions_), made.actual);
    }
    return ledger;
}

/* The batch with the journal's head, the status that readers see and the ledger. */
void Engine::commit(Batch &batch, const Ledger &ledger, bool isBusy, const char *what)
{
    batch.put(journalHeadRecord, JournalHead{journalVersion, isOpen_})
        .put(netStatusRecord, {isBusy});
    if (ledger != ledger_ || !store_.find(ledgerRecord)) {
        batch.put(ledgerRecord, ledger.record());
    }
    store_.commit(batch, what);
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

void Engine::change(const Change &wantedChange)
{
    if (wantedChange.scope.selected.empty()) {
        return;
    }
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
    Ledger ledger = claimed(former, actual);
    const auto differences = within(change.scope, plan(former, actual, ledger.owned()));
    askNeighbours(change, former, actual);
    ledger.claim(wanted(change.after, conditions_), actual);
    commitIntent(from, change.after, ledger);

    const auto failure = makeChange(from, change, former, actual);
    if (!failure) {
        return;
    }
    const Refusal refusal = refusalFor(*failure, change.scope);
    if (restore(from, change, actual, differences)) {
        throw refusal;
    }
    Refusal worse(static_cast<std::uint32_t>(Result::notRestored),
                  refusal.what() + std::string("; ") + meaningOf(Result::notRestored));
    worse.blame(refusal.module());
    throw worse;
}

/* Makes the stored configuration so as far as possible. Throws Refusal. */
Made Engine::settle(const char *occasion)
{
    const Configuration stored = store_.readConfiguration();
    Configuration configuration = stored;
    repair(configuration.lan);
    conditions_ = machine_.conditions();
    machine_.forget();
    const World world = worldOf(configuration);
    const Scope scope = everything();
    Made made;
    try {
        const Actual actual = readPatiently(machine_, world);
        Batch batch;
        commit(batch, claimed(world, actual), true, "that a change is under way");
        const Task task{world, ledger_.owned(), scope, false, [&](const Step &step) {
                            log(Level::information, std::string(occasion) + ": " + textOf(step));
                        }};
        made = make(machine_, task);
    } catch (const MachineError &error) {
        made.failures.push_back({static_cast<std::uint32_t>(Result::kernelRefused), error.what()});
    }
    const bool isSo = made.isRead && made.left.empty();
    logFailures(made, occasion);
    commitOutcome(stored, configuration, made, isOpen_ && !isSo);
    backOff_ = {};
    tryAgainAt_.reset();
    if (!isSo) {
        tryAgainLater();
    }
    return made;
}

void Engine::start()
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
    settle("start");
}

void Engine::restart()
{
    restartAt_.reset();
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

/* What is left to do may have become possible. Nothing is written while it hasn't. */
void Engine::tryAgain()
{
    tryAgainAt_.reset();
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
    if (!made.isRead || !made.left.empty()) {
        return tryAgainLater();
    }
    commitOutcome(configuration, configuration, made);
    backOff_ = {};
    log(Level::information, "kernel and system are in line with the records");
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
    announcer_.follow(configuration, conditions_);
}

int Engine::millisecondsTo(std::optional<Clock::time_point> next) const
{
    for (const auto &due : {restartAt_, tryAgainAt_, watchdogAt_}) {
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
    if (tryAgainAt_ && *tryAgainAt_ <= now) {
        attempt("again", [this] { tryAgain(); });
    }
    if (!watchdogAt_ || *watchdogAt_ <= now) {
        attempt("watchdog", [this] { followWatchdog(); });
    }
    return millisecondsTo(announcer_.sendDue(machine_, now));
}

} // namespace bmc::manager
