// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Addresses of either family as text and as bytes in network order, and what the library's checks
 * hold against them. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/socket.h>

namespace bmc::settings {

using Bytes = std::vector<std::uint8_t>;

/* Bytes of an address of AF_INET or AF_INET6. */
std::size_t addressSize(int family);

/* Nothing for a text that is no address of the family. */
std::optional<Bytes> parseAddress(int family, std::string_view text);
std::string addressText(int family, const std::uint8_t *address);

/* Decimal digits alone, at most the number. */
std::optional<unsigned> parseNumber(std::string_view text, unsigned most);

/* Mask of a prefix length of 0 to 32, and the ones of a mask of four bytes. */
Bytes maskOf(unsigned prefix);
unsigned prefixOf(const std::uint8_t *mask);

/* Why the library refuses the value as a host's or a router's address, or as a mask; nothing when
 * it accepts it. A router may have a link-local address, a port's configured address may not. */
std::optional<std::string> whyNotHost(int family, const std::uint8_t *address);
std::optional<std::string> whyNotRouter(int family, const std::uint8_t *address);
std::optional<std::string> whyNotMask(const std::uint8_t *mask);

} // namespace bmc::settings
