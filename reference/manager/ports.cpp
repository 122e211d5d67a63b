// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "ports.hpp"

#include <algorithm>
#include <cstring>

#include "bmc_platform.h"
#include "network_mng/operate_log.h"
#include "plan.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

std::vector<Change> planFor(const Kernel &kernel, const Interface &interface,
                            const PortState &wanted, const std::vector<Address> &managed)
{
    kernel.keepSecondaryAddresses(interface);
    return planChanges({interface.isUp, kernel.addressesOf(interface), kernel.routesOf(interface)},
                       managed, wanted);
}

void changeInterface(const Context &context, const Interface &interface, const PortState &wanted,
                     const std::vector<Address> &managed)
{
    const Kernel &kernel = context.kernel;
    for (const Change &change : planFor(kernel, interface, wanted, managed)) {
        if (kernel.apply(interface, change)) {
            context.transaction.undoWith(
                [&kernel, on = interface, change] { kernel.apply(on, inverseOf(change)); });
        }
    }
}

bool isMoved(const Draft &draft, unsigned port)
{
    return nameOf(draft.before.state, port) != nameOf(draft.after.state, port);
}

/* Takes a port's addresses and routes off the interface that it leaves or is no longer served on.
 */
void clear(const Context &context, unsigned port)
{
    const Draft &draft = context.draft;
    const auto interface = context.kernel.find(nameOf(draft.before.state, port));
    if (interface) {
        changeInterface(context, *interface, {}, addressesIn(draft.before.lan.astPort[port]));
    }
}

void fill(const Context &context, unsigned port)
{
    const Draft &draft = context.draft;
    const Configuration &wanted = draft.after;
    const bool isNew = isMoved(draft, port) || !isServed(draft.before.state, port);
    const auto managed =
        isNew ? std::vector<Address>{} : addressesIn(draft.before.lan.astPort[port]);
    changeInterface(context, interfaceOf(context.kernel, nameOf(wanted.state, port)),
                    wantedState(wanted.state, wanted.lan, port), managed);
}

/* Makes the bond where the board has not prepared an interface for it. */
void prepareBond(const Context &context, const std::string &name)
{
    if (context.kernel.find(name)) {
        return;
    }
    try {
        context.kernel.addBond(name);
    } catch (const KernelUnsupported &error) {
        throw Refusal(Result::noBond, error.what());
    }
    context.transaction.undoWith([&kernel = context.kernel, name] { kernel.removeLink(name); });
}

void join(const Context &context, const std::string &bond, const std::string &port)
{
    const Kernel &kernel = context.kernel;
    const Interface member = interfaceOf(kernel, port);
    context.transaction.undoWith([&kernel, member] {
        kernel.apply(member, {member.isUp ? Action::linkUp : Action::linkDown});
    });
    kernel.joinBond(interfaceOf(kernel, bond), member);
    context.transaction.undoWith([&kernel, member] { kernel.leaveBond(member); });
}

void leave(const Context &context, const std::string &bond, const std::string &port)
{
    const Kernel &kernel = context.kernel;
    const Interface member = interfaceOf(kernel, port);
    kernel.leaveBond(member);
    context.transaction.undoWith(
        [&kernel, bond, member] { kernel.joinBond(interfaceOf(kernel, bond), member); });
}

/* Puts the members into the bond or takes them out. An interface of another kind that the board has
 * prepared under the bond's name stands for it: then there is nothing to join. */
void changeBond(const Context &context)
{
    const NW_IFC_STATE_DB_INFO_S &state = context.draft.after.state;
    const bool isBonded = state.ucIfcState == NW_IFC_STATE_ADAPTIVE;
    if (isBonded == (context.draft.before.state.ucIfcState == NW_IFC_STATE_ADAPTIVE)) {
        return;
    }

    const std::string bond = nameOf(state, NW_PORT_BOND0);
    if (isBonded) {
        prepareBond(context, bond);
    }
    if (!context.kernel.isBond(bond)) {
        log(Level::information, bond + " is no bond of the kernel's; it stands for one");
        return;
    }
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        if (state.aucPortPresent[port] != 0) {
            (isBonded ? join : leave)(context, bond, nameOf(state, port));
        }
    }
}

} // namespace

std::string nameOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const char *name = state.acIfcName[port];
    return {name, strnlen(name, sizeof(state.acIfcName[port]))};
}

Interface interfaceOf(const Kernel &kernel, const std::string &name)
{
    const auto interface = kernel.find(name);
    if (!interface) {
        throw KernelError("there is no interface " + name);
    }
    return *interface;
}

void applyPorts(const Context &context)
{
    const Draft &draft = context.draft;
    const NW_IFC_STATE_DB_INFO_S &state = draft.after.state;
    for (const unsigned port : draft.ports) {
        if (!isServed(state, port) || isMoved(draft, port)) {
            clear(context, port);
        }
    }
    blaming(NW_LOG_NET_MODE, [&] { changeBond(context); });
    for (const unsigned port : draft.ports) {
        if (isServed(state, port)) {
            fill(context, port);
        }
    }
}

bool bringInLine(const Kernel &kernel, const Configuration &configuration, unsigned port,
                 const std::vector<Address> &managed)
{
    const std::string name = nameOf(configuration.state, port);
    const bool isWanted = isServed(configuration.state, port);
    const auto interface = kernel.find(name);
    if (!interface && isWanted) {
        log(Level::error, "start: there is no interface " + name);
    }
    if (!interface) {
        return !isWanted;
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
    attempt("compare with the record", [&] {
        changes = planFor(kernel, *interface,
                          wantedState(configuration.state, configuration.lan, port), managed);
    });
    for (const Change &change : changes) {
        attempt(textOf(change), [&] { kernel.apply(*interface, change); });
    }
    return isInLine;
}

void noteInterface(const Kernel &kernel, Configuration &configuration, unsigned port)
{
    const std::string name = nameOf(configuration.state, port);
    const Interface interface = kernel.find(name).value_or(Interface{});
    NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    configuration.state.auiIfIndex[port] = static_cast<std::uint32_t>(interface.index);
    std::ranges::copy(interface.mac, entry.aucMacAddr);
    BMC_Strlcpy(entry.szIfcName, name.c_str(), sizeof(entry.szIfcName));

    const auto addresses = kernel.addressesOf(interface);
    const auto linkLocal = std::ranges::find_if(addresses, isLinkLocal);
    /* The sixteenth further address has the same place. */
    if (linkLocal != addresses.end() && entry.ucIpv6FurtherCount < NW_IPV6_FURTHER_COUNT) {
        std::ranges::copy(linkLocal->bytes, entry.stLinkLocal.aucAddr);
    }
}

} // namespace bmc::manager
