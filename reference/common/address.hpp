// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* An IP address with its prefix length. */
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/socket.h>

#include "network_mng/base.h"

namespace bmc {

struct Address {
    int family = 0;                                 /* AF_INET or AF_INET6 */
    unsigned prefix = 0;                            /* 0 to 32 or 128 */
    std::array<std::uint8_t, NW_IPV6_SIZE> bytes{}; /* network order; IPv4 in the first four */

    auto operator<=>(const Address &) const = default;
};

/* Nothing for a text that is no address of the family. */
std::optional<Address> parseAddress(int family, std::string_view text);

/* From the raw bytes of a record; the prefix is a whole address's. */
Address addressOf(int family, const std::uint8_t *bytes);
Address ipv4(const std::uint8_t *bytes, unsigned prefix = 32);
Address ipv6(const std::uint8_t *bytes, unsigned prefix = 128);

std::size_t sizeOf(int family);
bool isUnset(const Address &address);
bool isLinkLocal(const Address &address);
/* Without the bits behind the prefix. */
Address networkOf(Address address);
bool isInSubnetOf(const Address &address, const Address &subnet);

/* Ones of a contiguous mask of four bytes. */
unsigned prefixOf(const std::uint8_t *mask);
std::array<std::uint8_t, NW_IPV4_SIZE> maskOf(unsigned prefix);

/* "192.0.2.1/24"; a full-length prefix is left out. */
std::string textOf(const Address &address);

} // namespace bmc
