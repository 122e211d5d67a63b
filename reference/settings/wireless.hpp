// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The wireless interface, as the segment checks look at it. */
#pragma once

#include <optional>

#include "network_mng/check.h"
#include "platform/wireless.hpp"

namespace bmc::settings {

/* All zero, which is switched off, when there is no wireless service. */
NW_WIFI_ADDR_S readWireless();

/* As readWireless; nothing when what the platform has of the interface cannot be understood. */
inline std::optional<NW_WIFI_ADDR_S> knownWireless()
{
    return wirelessState() == WirelessState::malformed ? std::nullopt
                                                       : std::optional(readWireless());
}

} // namespace bmc::settings
