// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines of the manager. */
#pragma once

#include "common/log.hpp"

namespace bmc::manager {

inline constexpr Log log{24, "nwmanagerd"};

} // namespace bmc::manager
