#include "manager.hpp"

#include <algorithm>
#include <cstring>

#include "network_mng/store.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

std::string nameOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const char *name = state.acIfcName[port];
    return {name, strnlen(name, sizeof(state.acIfcName[port]))};
}

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

/* The journal while a change is under way: both configurations. Afterwards it names the one that
 * holds, the old one unless the change was kept. */
class JournalEntry {
public:
    JournalEntry(const Store &store, const NW_LAN_CFG_DB_INFO_S &before,
                 const NW_LAN_CFG_DB_INFO_S &after)
        : store_(store), holds_(before)
    {
        store_.put(journalRecord, {before, after});
    }

    ~JournalEntry()
    {
        try {
            store_.put(journalRecord, {holds_, holds_});
        } catch (const Refusal &refusal) {
            log(Level::error, refusal.what());
        }
    }

    JournalEntry(const JournalEntry &) = delete;
    JournalEntry &operator=(const JournalEntry &) = delete;

    void keep(const NW_LAN_CFG_DB_INFO_S &after)
    {
        holds_ = after;
    }

private:
    const Store &store_;
    NW_LAN_CFG_DB_INFO_S holds_;
};

void append(std::vector<Address> &addresses, const std::vector<Address> &more)
{
    addresses.insert(addresses.end(), more.begin(), more.end());
}

} // namespace

std::vector<Change> Manager::planFor(const Interface &interface, const PortState &wanted,
                                     const std::vector<Address> &managed) const
{
    kernel_.keepSecondaryAddresses(interface);
    return planChanges(
        {interface.isUp, kernel_.addressesOf(interface), kernel_.routesOf(interface)}, managed,
        wanted);
}

void Manager::changePort(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &before,
                         const NW_LAN_CFG_DB_INFO_S &after, unsigned port,
                         Transaction &transaction) const
{
    const auto interface = kernel_.find(nameOf(state, port));
    if (!interface) {
        throw KernelError("there is no interface " + nameOf(state, port));
    }

    const PortState wanted = wantedState(state, after, port);
    for (const Change &change : planFor(*interface, wanted, addressesIn(before.astPort[port]))) {
        if (kernel_.apply(*interface, change)) {
            transaction.undoWith(
                [this, on = *interface, change] { kernel_.apply(on, inverseOf(change)); });
        }
    }
}

void Manager::changeLan(const NW_LAN_CFG_DB_INFO_S &before, NW_LAN_CFG_DB_INFO_S after,
                        const std::set<unsigned> &ports)
{
    NW_IFC_STATE_DB_INFO_S state = store_.read(ifcStateRecord);
    repair(after);
    const StatusBracket busy;
    JournalEntry journal(store_, before, after);
    Transaction transaction;

    try {
        for (const unsigned port : ports) {
            changePort(state, before, after, port, transaction);
            noteInterface(state, after, port);
        }
    } catch (const KernelError &error) {
        throw Refusal(static_cast<std::uint32_t>(Result::kernelRefused), error.what());
    }
    store_.put(ifcStateRecord, state);
    store_.put(lanRecord, after);
    transaction.commit();
    journal.keep(after);
}

void Manager::start()
{
    NW_IFC_STATE_DB_INFO_S state = store_.read(ifcStateRecord);
    NW_LAN_CFG_DB_INFO_S lan = store_.read(lanRecord);
    const Journal journal = store_.find(journalRecord).value_or(Journal{lan, lan});
    clearStaleStatus();
    repair(lan);

    bool isInLine = true;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        std::vector<Address> managed = addressesIn(lan.astPort[port]);
        append(managed, addressesIn(journal.from.astPort[port]));
        append(managed, addressesIn(journal.to.astPort[port]));
        isInLine = bringInLine(state, lan, port, managed) && isInLine;
        noteInterface(state, lan, port);
    }
    store_.put(ifcStateRecord, state);
    store_.put(lanRecord, lan);
    if (isInLine) {
        store_.put(journalRecord, {lan, lan});
    }
}

bool Manager::bringInLine(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                          unsigned port, const std::vector<Address> &managed) const
{
    const std::string name = nameOf(state, port);
    const auto interface = kernel_.find(name);
    if (!interface && isServed(state, port)) {
        log(Level::error, "start: there is no interface " + name);
    }
    if (!interface) {
        return !isServed(state, port);
    }

    bool isInLine = true;
    const auto attempt = [&](const std::string &what, const auto &step) {
        try {
            step();
            log(Level::information, "start: " + name + ": " + what);
        } catch (const KernelError &error) {
            log(Level::error, "start: " + name + ": " + error.what());
            isInLine = false;
        }
    };
    std::vector<Change> changes;
    attempt("compare with the record",
            [&] { changes = planFor(*interface, wantedState(state, lan, port), managed); });
    for (const Change &change : changes) {
        attempt(textOf(change), [&] { kernel_.apply(*interface, change); });
    }
    return isInLine;
}

void Manager::clearStaleStatus() const
{
    const auto status = store_.find(netStatusRecord);
    if (status && status->ucSetInProgress == 0) {
        return;
    }

    log(Level::information, status ? "start: a change was interrupted; its status is cleared"
                                   : "start: there was no net status record");
    store_.put(netStatusRecord, {0});
}

void Manager::repair(NW_LAN_CFG_DB_INFO_S &lan) const
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

/* Copies the kernel's facts about a port's interface into the records. */
void Manager::noteInterface(NW_IFC_STATE_DB_INFO_S &state, NW_LAN_CFG_DB_INFO_S &lan,
                            unsigned port) const
{
    const std::string name = nameOf(state, port);
    const Interface interface = kernel_.find(name).value_or(Interface{});
    NW_LAN_CFG_PORT_S &entry = lan.astPort[port];
    state.auiIfIndex[port] = static_cast<std::uint32_t>(interface.index);
    std::ranges::copy(interface.mac, entry.aucMacAddr);
    BMC_Strlcpy(entry.szIfcName, name.c_str(), sizeof(entry.szIfcName));

    const auto addresses = kernel_.addressesOf(interface);
    const auto linkLocal = std::ranges::find_if(addresses, isLinkLocal);
    /* The sixteenth further address has the same place. */
    if (linkLocal != addresses.end() && entry.ucIpv6FurtherCount < NW_IPV6_FURTHER_COUNT) {
        std::ranges::copy(linkLocal->bytes, entry.stLinkLocal.aucAddr);
    }
}

} // namespace bmc::manager
