// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines of the chassis manager and the IPMI sink. */
#pragma once

#include "common/log.hpp"

namespace bmc::chassis {

inline constexpr Log log{52, "nwchassisd"};

} // namespace bmc::chassis
