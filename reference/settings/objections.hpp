// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library's checks hold against addresses, masks and names, in words. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bmc::settings {

/* Why the library refuses the value as an address of a host, or as a mask; nothing when it accepts
 * it. */
std::optional<std::string> whyNotHost(int family, const std::uint8_t *address);
std::optional<std::string> whyNotMask(const std::uint8_t *mask);

/* What a host name and a domain have to be. */
inline constexpr const char *nameRule = "a host name is made of letters, digits and inner hyphens";
inline constexpr const char *domainRule =
    "a domain is made of two labels or more, with points between them: letters, digits and inner "
    "hyphens, 63 characters a label, 255 in all";

} // namespace bmc::settings
