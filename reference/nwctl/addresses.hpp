// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Addresses as text and bytes, and what the library's checks hold against them. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "network_mng/base.h"

namespace nwctl {

using Ipv4 = std::array<std::uint8_t, NW_IPV4_SIZE>;
using Ipv6 = std::array<std::uint8_t, NW_IPV6_SIZE>;
using Mac = std::array<std::uint8_t, NW_MAC_SIZE>;

std::optional<Ipv4> parseIpv4(const std::string &text);
std::optional<Ipv6> parseIpv6(const std::string &text);
/* Decimal digits alone, at most max. */
std::optional<unsigned> parseNumber(std::string_view text, unsigned max);

std::string formatAddress(const Ipv4 &address);
std::string formatAddress(const Ipv6 &address);
std::string formatMac(const Mac &address);

/* Mask of a prefix length of 0 to 32, and the prefix length of a valid mask. */
Ipv4 maskOfPrefix(unsigned prefix);
unsigned prefixOfMask(const Ipv4 &mask);

/* Why the library refuses the value; nothing when it accepts it. A router may have a link-local
 * address, a port's configured address may not. */
std::optional<std::string> whyNotHost(const Ipv4 &address);
std::optional<std::string> whyNotMask(const Ipv4 &mask);
std::optional<std::string> whyNotHost(const Ipv6 &address);
std::optional<std::string> whyNotRouter(const Ipv6 &address);

} // namespace nwctl
