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
