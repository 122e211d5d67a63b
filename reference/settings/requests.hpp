// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Payloads of the network manager's commands as changes, and changes as payloads. */
#pragma once

#include <cstdint>
#include <span>

#include "settings/change.hpp"

namespace bmc::settings {

/* Seconds by which NW_CMD_RESTART may be put off. */
inline constexpr unsigned longestRestartDelay = 3600;

/* What the payload of a command (NW_COMMAND_E) that is about settings asks for: an edit for each
 * port whose change bits are not all clear. Throws Refusal for a combined set with parts that there
 * are not. */
Change changeIn(std::uint32_t command, std::span<const std::uint8_t> payload);

/* The payload by which the section's own command asks for the section's part of the change. */
std::vector<std::uint8_t> payloadOf(Section section, const Change &change);

/* Index of the first port that the change selects in the section, or in the first section that has
 * ports when there is none given; 0 without one. It is what a response tells as its detail. */
unsigned firstPort(const Change &change, std::optional<Section> section = std::nullopt);

} // namespace bmc::settings
