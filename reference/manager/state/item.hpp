// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The things that the manager makes so: one item is one fact about kernel or system. */
#pragma once

#include <compare>
#include <cstdint>
#include <set>
#include <string>

#include "common/address.hpp"
#include "settings/codes.hpp"

namespace bmc::manager {

/* The numbers are stored in the database: new kinds come last. */
enum class Kind : std::uint8_t {
    bond = 0,        /* subject: the bond */
    bondMode = 1,    /* number: of the kernel's bonding driver */
    bondMonitor = 2, /* number: milliseconds between two looks at the members' links */
    member = 3,      /* subject: the port, text: the bond */
    link = 4,        /* number: 1 up, 0 down */
    arpIgnore = 5,   /* number: the kernel's setting of that name */
    secondaries = 6, /* number: 1, other addresses of a subnet outlive the first one */
    vlan = 7,        /* subject: the sub-interface, text: the interface below, number: vlanNumber */
    address = 8,
    route = 9,     /* address: the destination, gateway: unset on the link, number: the metric */
    linkMode = 10, /* number: linkModeNumber */
    hostName = 11, /* text: the name */
    bmcName = 12,  /* text: content of the file, empty without a file */
    resolver = 13, /* text: content of the file, empty without a file */
    lldp = 14,     /* text: interfaces and status word, as the agent is told */
    /* The route that the kernel itself makes for an address. address: the network, gateway: the
     * address, where it is known */
    subnet = 15,
    hopLimit = 16, /* number: of the IPv6 packets that the interface sends */
};

struct Item {
    Kind kind{};
    std::string subject{}; /* an interface; empty for what the machine has once */
    std::string text{};
    Address address{};
    Address gateway{};
    std::uint64_t number = 0;

    auto operator<=>(const Item &) const = default;
};

using Items = std::set<Item>;

/* What holds for all items of a kind. */
struct KindRow {
    Kind kind;
    /* A value: there is one for each subject, and setting it replaces what was there. Otherwise
     * there may be any number, which come and go. */
    bool isValue;
    /* What others had set comes back when the manager no longer wants anything. */
    bool comesBack;
    std::uint32_t modules;        /* NW_OPER_LOG_MODULE_E whose changes may touch it */
    const char *text;             /* for people */
    const char *setting;          /* key of the one that asks for it, if it is one alone */
    settings::Result refused;     /* answered when it cannot be made so */
    settings::Result unsupported; /* ... because kernel or interface lack it */
};

const KindRow &rowOf(Kind kind);

/* Whether a kind has the number. */
bool isKind(std::uint8_t number);

/* In the place of an interface: values that each has when it is made. */
inline constexpr const char *newInterface = "default";

/* "address 192.0.2.1/24", "route default via 192.0.2.254". */
std::string textOf(const Item &item);

/* The value with that kind and subject, or null. */
const Item *valueIn(const Items &items, Kind kind, const std::string &subject);

/* Whether any interface has the address, with whatever prefix length. */
bool holds(const Items &items, const Address &address);

/* The one bond mode there is here, by the number of the kernel's bonding driver. */
inline constexpr std::uint8_t activeBackup = 1;
/* Without looking at its members' links a bond would never fail over. */
inline constexpr std::uint32_t bondMonitorInterval = 100;

constexpr std::uint64_t vlanNumber(std::uint16_t id, std::uint8_t priority)
{
    return std::uint64_t{priority} << 16 | id;
}

/* Speed in Mbit/s; duplex and autoNegotiation as the kernel's ethtool call has them. */
constexpr std::uint64_t linkModeNumber(bool autoNegotiation, std::uint8_t duplex,
                                       std::uint32_t speed)
{
    return std::uint64_t{autoNegotiation} << 40 | std::uint64_t{duplex} << 32 | speed;
}

} // namespace bmc::manager
