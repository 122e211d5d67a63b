// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The wireless interface, as the segment checks look at it. */
#pragma once

#include "network_mng/check.h"

namespace bmc::settings {

/* All zero, which is switched off, when there is no wireless service. */
NW_WIFI_ADDR_S readWireless();

} // namespace bmc::settings
