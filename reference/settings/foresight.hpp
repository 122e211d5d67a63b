// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What no check forbids and the kernel is certain to refuse, for those who ask before a change. */
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "common/address.hpp"
#include "settings/refusal.hpp"

namespace bmc::settings {

/* A network that an interface reaches without a gateway. */
struct OnLink {
    std::string interface;
    Address network;

    bool operator==(const OnLink &) const = default;
};

/* Out of the lines of /proc/net/ipv6_route. */
std::vector<OnLink> onLinkIn(std::istream &routes);
/* The kernel's for IPv6, whoever made them; nothing where they cannot be read. */
std::optional<std::vector<OnLink>> knownOnLink();

/* Throws Refusal for an IPv6 gateway that the change gives a port, or whose address it changes,
 * and that is the port's own address or in no network that configuration or kernel know of. What
 * may become reachable with the change, as that of a port that goes up, is not judged. */
void requireGateways(const Configuration &before, const Configuration &after,
                     const std::optional<std::vector<OnLink>> &kernel);

} // namespace bmc::settings
