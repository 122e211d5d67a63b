// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* By which ways the machine is reached over its ports, for those who ask before a change. */
#pragma once

#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "common/address.hpp"
#include "settings/configuration.hpp"

namespace bmc::settings {

/* An address that a port answers for. */
struct WayIn {
    unsigned port;
    std::string interface;
    Address address;

    bool operator==(const WayIn &) const = default;
};

/* As configured, of ports that are served and on. */
std::vector<WayIn> waysIn(const Configuration &configuration);

/* Whether an interface has a link; nothing for one that is down, and may get it. */
using LinkOf = std::function<std::optional<bool>(const std::string &interface)>;
std::optional<bool> knownLink(const std::string &interface);

/* Throws Refusal when there is a way in before the change and none after it. A way without a link
 * is none; of what is down that is not known, nor of a bond, which may fail over. */
void requireWayIn(const Configuration &before, const Configuration &after, const LinkOf &linkOf);

/* Addresses of this machine in the lines of /proc/net/tcp or tcp6 to which somebody is connected.
 */
std::vector<Address> connectedIn(std::istream &lines);
/* The kernel's, as far as they can be read. */
std::vector<Address> knownConnected();

/* Those of the addresses that the change takes away. */
std::vector<Address> cutOff(const Configuration &before, const Configuration &after,
                            const std::vector<Address> &connected);

/* Whether the change touches the port, or which interface it has. */
bool touches(const Configuration &before, const Configuration &after, unsigned port);

/* Time to confirm a change before it goes back, and that of one by which somebody may be cut off.
 */
inline constexpr unsigned shortestToConfirm = 10;
inline constexpr unsigned longestToConfirm = 3600;
inline constexpr unsigned usualToConfirm = 120;
/* "10 to 3600 seconds" */
inline std::string secondsToConfirm()
{
    return std::to_string(shortestToConfirm) + " to " + std::to_string(longestToConfirm) +
           " seconds";
}

} // namespace bmc::settings
