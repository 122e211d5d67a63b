// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The kernel's interfaces, addresses and routes, through rtnetlink. */
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "address.hpp"

struct nl_sock;

namespace bmc::manager {

/* Marks the routes that are the manager's own. */
inline constexpr std::uint8_t routeProtocol = 124;

class KernelError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* The kernel was built without it. */
class KernelUnsupported : public KernelError {
    using KernelError::KernelError;
};

struct Vlan {
    std::string name; /* of the sub-interface */
    std::uint16_t id = 0;
    std::uint8_t priority = 0;

    auto operator<=>(const Vlan &) const = default;
};

struct Interface {
    int index = 0;
    bool isUp = false;
    std::array<std::uint8_t, NW_MAC_SIZE> mac{};
};

/* Route over an interface. */
struct Route {
    Address destination; /* a network; the default route has prefix length 0 */
    Address gateway;     /* unset: the destination is on the link */
    std::uint32_t metric = 0;

    auto operator<=>(const Route &) const = default;
};

enum class Action { linkUp, linkDown, addAddress, removeAddress, addRoute, removeRoute };

/* One thing to do to an interface. */
struct Change {
    Action action;
    Address address{}; /* of address actions */
    Route route{};     /* of route actions */

    auto operator<=>(const Change &) const = default;
};

Change inverseOf(const Change &change);
std::string textOf(const Change &change);

class Kernel {
public:
    Kernel();

    std::optional<Interface> find(const std::string &name) const;
    std::vector<Address> addressesOf(const Interface &interface) const;
    /* Those that carry routeProtocol. */
    std::vector<Route> routesOf(const Interface &interface) const;

    /* Lets the other IPv4 addresses of a subnet stay when the first one is removed. */
    void keepSecondaryAddresses(const Interface &interface) const;

    /* IPv4 setting of an interface (ARP_IGNORE and the like, of linux/ip.h). */
    std::uint32_t ipv4Setting(const Interface &interface, unsigned setting) const;
    void setIpv4Setting(const Interface &interface, unsigned setting, std::uint32_t value) const;

    /* Sub-interface "eth1.100" of an interface, up. KernelUnsupported without VLANs. */
    void addVlan(const Interface &interface, const Vlan &vlan) const;
    void removeLink(const std::string &name) const;

    bool isBond(const std::string &name) const;
    /* An active/standby bond. KernelUnsupported without bonds. */
    void addBond(const std::string &name) const;
    /* A port joins while it is down; the bond takes it up. */
    void joinBond(const Interface &bond, const Interface &port) const;
    void leaveBond(const Interface &port) const;

    /* Answers whether the kernel changed: removing what isn't there changes nothing. Throws
     * KernelError when the kernel refuses, also for adding what is there already. */
    bool apply(const Interface &interface, const Change &change) const;

private:
    struct Release {
        void operator()(nl_sock *socket) const;
    };
    std::unique_ptr<nl_sock, Release> socket_;
};

} // namespace bmc::manager
