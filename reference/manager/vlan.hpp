// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* VLAN sub-interfaces of the ports. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

void applyVlans(const Context &context);

} // namespace bmc::manager
