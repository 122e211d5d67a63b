/* The kernel's interfaces, addresses and default routes, through rtnetlink. */
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

struct Interface {
    int index = 0;
    bool isUp = false;
    std::array<std::uint8_t, NW_MAC_SIZE> mac{};
};

/* Default route over an interface. */
struct Gateway {
    Address address;
    std::uint32_t metric = 0;

    auto operator<=>(const Gateway &) const = default;
};

enum class Action { linkUp, linkDown, addAddress, removeAddress, addGateway, removeGateway };

/* One thing to do to an interface. */
struct Change {
    Action action;
    Gateway subject{}; /* the address alone for address actions, unused for link actions */

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
    std::vector<Gateway> gatewaysOf(const Interface &interface) const;

    /* Lets the other IPv4 addresses of a subnet stay when the first one is removed. */
    void keepSecondaryAddresses(const Interface &interface) const;

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
