// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library's checks hold against addresses and masks, in words. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bmc::settings {

/* Why the library refuses the value as an address of a host, or as a mask; nothing when it accepts
 * it. */
std::optional<std::string> whyNotHost(int family, const std::uint8_t *address);
std::optional<std::string> whyNotMask(const std::uint8_t *mask);

} // namespace bmc::settings
