// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/plan.hpp"

#include <algorithm>
#include <set>
#include <tuple>

#include <linux/ethtool.h>
#include <sys/socket.h>

#include "settings/setting.hpp"

namespace bmc::manager {

namespace {

/* When a step has its turn. */
enum Phase : unsigned {
    bondComes,
    settings,      /* before addresses go: the other addresses of a subnet shall stay */
    viaRouteGoes,  /* the kernel drops routes without their address, so they go before it */
    linkRouteGoes, /* a gateway may be reached over it */
    vlanGoes,      /* what a port gives up ... */
    addressGoes,
    memberLeaves,
    bondGoes,
    memberJoins, /* ... before what another takes */
    linkGoesUp,
    vlanComes,
    addressComes,
    addressFollows, /* an old one, once the new one is there */
    subnetComes,
    linkRouteComes,
    viaRouteComes,
    linkGoesDown,
    systemChanges,
};

/* The kernel's own route of a subnet goes with the address. */
bool mayGo(const Item &item)
{
    return !rowOf(item.kind).isValue && item.kind != Kind::subnet;
}

/* A VLAN of the manager's is known by its name: the kernel may show other numbers than it was told.
 */
bool isOwned(const Item &item, const Items &owned)
{
    const auto isSameVlan = [&](const Item &other) {
        return item.kind == Kind::vlan && other.kind == Kind::vlan && other.subject == item.subject;
    };
    return item.kind == Kind::route || owned.contains(item) ||
           std::ranges::any_of(owned, isSameVlan);
}

/* The link mode of a port without link partner may be unknown; one that is negotiated is whatever
 * both ends agree on. */
bool isSameLinkMode(std::uint64_t wanted, std::uint64_t actual)
{
    constexpr std::uint64_t autoNegotiation = linkModeNumber(true, 0, 0);
    const auto isAuto = [](std::uint64_t number) { return (number & autoNegotiation) != 0; };
    const auto speed = static_cast<std::uint32_t>(actual);
    const auto duplex = static_cast<std::uint8_t>(actual >> 32);
    const bool isSameSpeed = speed == static_cast<std::uint32_t>(wanted) ||
                             speed == static_cast<std::uint32_t>(SPEED_UNKNOWN);
    const bool isSameDuplex =
        duplex == static_cast<std::uint8_t>(wanted >> 32) || duplex == DUPLEX_UNKNOWN;
    return isAuto(wanted) == isAuto(actual) && (isAuto(wanted) || (isSameSpeed && isSameDuplex));
}

/* An interface that the board has prepared under the bond's name may be of another kind. */
bool standsForABond(const Actual &actual, const std::string &name)
{
    const auto link = actual.links.find(name);
    return link != actual.links.end() && link->second.type != "bond";
}

bool hasMembers(const Actual &actual, const std::string &bond)
{
    return std::ranges::any_of(actual.items, [&](const Item &item) {
        return item.kind == Kind::member && item.text == bond;
    });
}

using Families = std::set<std::pair<std::string, int>>; /* interface and family */

class Planner {
public:
    Planner(const World &wanted, const Actual &actual, const Items &owned)
        : wanted_(wanted), actual_(actual), owned_(owned)
    {
        compare();
        moveRoutes();
        order();
    }

    std::vector<Step> steps() &&
    {
        return std::move(steps_);
    }

private:
    bool exists(const std::string &interface) const
    {
        return actual_.links.contains(interface);
    }

    bool isValueSo(const Item &item) const
    {
        const Item *value = valueIn(actual_.items, item.kind, item.subject);
        const bool isSame =
            value != nullptr && value->text == item.text &&
            (item.kind == Kind::linkMode ? isSameLinkMode(item.number, value->number)
                                         : item.number == value->number);
        switch (item.kind) {
        case Kind::bondMode: /* a bond with members keeps the mode that it has */
            return isSame || !exists(item.subject) || standsForABond(actual_, item.subject) ||
                   hasMembers(actual_, item.subject);
        case Kind::bondMonitor: /* a new bond comes with both */
            return isSame || !exists(item.subject) || standsForABond(actual_, item.subject);
        case Kind::secondaries: /* also of interfaces that nothing else is wanted of */
            return isSame || !exists(item.subject);
        default:
            return isSame ||
                   (value == nullptr && wanted_.comingBack.contains(item) && isGone(item));
        }
    }

    /* Where an interface has no such value any more, none comes back. A driver may fail to tell the
     * link mode that it has. */
    bool isGone(const Item &value) const
    {
        return !value.subject.empty() && (!exists(value.subject) || value.kind != Kind::linkMode);
    }

    bool isSo(const Item &item) const
    {
        switch (item.kind) {
        case Kind::bond:
            return exists(item.subject);
        case Kind::member:
            return standsForABond(actual_, item.text) || actual_.items.contains(item);
        case Kind::address:
            return actual_.items.contains(item) && isOwned(item, owned_);
        case Kind::subnet:
            return hasSubnet(item);
        default:
            return rowOf(item.kind).isValue ? isValueSo(item) : actual_.items.contains(item);
        }
    }

    void compare()
    {
        for (const Item &item : actual_.items) {
            if (mayGo(item) && !wanted_.items.contains(item) && isOwned(item, owned_)) {
                gone_.insert(item);
            }
        }
        for (const Item &item : wanted_.items) {
            if (!isSo(item) || isLinkToBeTakenUp(item)) {
                comes_.insert(item);
            }
        }
        const Items comes = comes_;
        std::erase_if(comes_, [&](const Item &item) { return comesWithAnother(item, comes); });
    }

    /* A sub-interface comes up with what it is, a subnet with its address. */
    static bool comesWithAnother(const Item &item, const Items &comes)
    {
        return std::ranges::any_of(comes, [&](const Item &other) {
            const bool isOfVlan = item.kind == Kind::link && other.kind == Kind::vlan;
            const bool isOfAddress = item.kind == Kind::subnet && other.kind == Kind::address &&
                                     item.gateway == other.address;
            const bool isOfLink = item.kind == Kind::subnet && other.kind == Kind::link;
            return other.subject == item.subject && (isOfVlan || isOfAddress || isOfLink);
        });
    }

    bool hasSubnet(Item item) const
    {
        item.gateway = {};
        return actual_.items.contains(item);
    }

    /* A bond takes its members' links down when they leave. */
    bool isLinkToBeTakenUp(const Item &item) const
    {
        return item.kind == Kind::link && item.number == 1 &&
               std::ranges::any_of(gone_, [&](const Item &other) {
                   return other.kind == Kind::member && other.subject == item.subject;
               });
    }

    /* A family whose addresses change has its routes taken out and put back, so that the kernel
     * checks anew whether their gateways can be reached. */
    void moveRoutes()
    {
        Families changed;
        for (const Items *items : {&gone_, &comes_}) {
            for (const Item &item : *items) {
                if (item.kind == Kind::address) {
                    changed.emplace(item.subject, item.address.family);
                }
            }
        }
        for (const Item &item : wanted_.items) {
            if (item.kind == Kind::route && actual_.items.contains(item) &&
                changed.contains({item.subject, item.address.family})) {
                gone_.insert(item);
                comes_.insert(item);
            }
        }
    }

    /* An old address stays until a new one of its family is there, unless another port waits for
     * it or the kernel takes both for one. */
    bool mayStayAWhile(const Item &old) const
    {
        bool hasSuccessor = false;
        for (const Item &item : comes_) {
            if (item.kind != Kind::address || item.address.family != old.address.family) {
                continue;
            }
            const bool isHere = item.subject == old.subject;
            const bool isSame = item.address.bytes == old.address.bytes;
            const bool overlaps =
                isInSubnetOf(item.address, old.address) || isInSubnetOf(old.address, item.address);
            if (isHere ? isSame && old.address.family == AF_INET6 : overlaps) {
                return false;
            }
            hasSuccessor = hasSuccessor || isHere;
        }
        return hasSuccessor;
    }

    Phase goingPhase(const Item &item) const
    {
        switch (item.kind) {
        case Kind::route:
            return isUnset(item.gateway) ? linkRouteGoes : viaRouteGoes;
        case Kind::vlan:
            return vlanGoes;
        case Kind::member:
            return memberLeaves;
        case Kind::bond:
            return bondGoes;
        default:
            return mayStayAWhile(item) ? addressFollows : addressGoes;
        }
    }

    static Phase comingPhase(const Item &item)
    {
        switch (item.kind) {
        case Kind::bond:
            return bondComes;
        case Kind::bondMode:
        case Kind::bondMonitor:
        case Kind::arpIgnore:
        case Kind::secondaries:
        case Kind::hopLimit:
            return settings;
        case Kind::member:
            return memberJoins;
        case Kind::link:
            return item.number == 1 ? linkGoesUp : linkGoesDown;
        case Kind::vlan:
            return vlanComes;
        case Kind::address:
            return addressComes;
        case Kind::subnet:
            return subnetComes;
        case Kind::route:
            return isUnset(item.gateway) ? linkRouteComes : viaRouteComes;
        case Kind::linkMode:
        case Kind::hostName:
        case Kind::bmcName:
        case Kind::resolver:
        case Kind::lldp:
            return systemChanges;
        }
        return systemChanges;
    }

    void order()
    {
        std::set<std::tuple<Phase, Item, bool>> turns;
        for (const Item &item : gone_) {
            turns.emplace(goingPhase(item), item, true);
        }
        for (const Item &item : comes_) {
            turns.emplace(comingPhase(item), item, false);
        }
        for (const auto &[phase, item, isRemoval] : turns) {
            steps_.push_back({item, isRemoval, wanted_.portOf(item)});
        }
    }

    const World &wanted_;
    const Actual &actual_;
    const Items &owned_;
    Items gone_;
    Items comes_;
    std::vector<Step> steps_;
};

} // namespace

std::string textOf(const Step &step)
{
    const std::string place = step.item.subject.empty() ? "" : step.item.subject + ": ";
    if (step.item.kind == Kind::link) {
        return place + (step.item.number == 1 ? "enable link" : "disable link");
    }
    const char *verb = rowOf(step.item.kind).isValue ? "set " : "add ";
    return place + (step.isRemoval ? "remove " : verb) + textOf(step.item);
}

std::vector<Step> plan(const World &wanted, const Actual &actual, const Items &owned)
{
    return Planner(wanted, actual, owned).steps();
}

Items adopted(const World &wanted, const Actual &actual)
{
    Items items;
    std::ranges::copy_if(wanted.items, std::inserter(items, items.end()), [&](const Item &item) {
        return mayGo(item) && item.kind != Kind::bond && item.kind != Kind::route &&
               actual.items.contains(item);
    });
    return items;
}

bool Scope::has(std::uint32_t module) const
{
    return std::ranges::any_of(selected,
                               [module](const auto &entry) { return entry.first == module; });
}

namespace {

bool touches(const std::pair<std::uint32_t, unsigned> &entry, const Step &step)
{
    const bool isOfModule = (entry.first & rowOf(step.item.kind).modules) != 0;
    return isOfModule &&
           (entry.second == wholeMachine || step.port == wholeMachine || entry.second == step.port);
}

} // namespace

std::uint32_t Scope::moduleOf(const Step &step) const
{
    for (const Entries *entries : {&selected, &along}) {
        for (const auto &entry : *entries) {
            if (touches(entry, step)) {
                return entry.first;
            }
        }
    }
    return 0;
}

bool Scope::needsInterfaceFor(const Step &step) const
{
    return std::ranges::any_of(selected, [&](const auto &entry) {
        return entry.second != wholeMachine && touches(entry, step);
    });
}

Scope everything()
{
    Scope scope;
    for (const settings::SectionInfo &section : settings::sections()) {
        scope.select(section.module);
    }
    return scope;
}

std::vector<Step> within(const Scope &scope, std::vector<Step> steps)
{
    std::erase_if(steps, [&](const Step &step) { return scope.moduleOf(step) == 0; });
    return steps;
}

} // namespace bmc::manager
