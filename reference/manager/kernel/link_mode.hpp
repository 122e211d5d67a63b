// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Auto-negotiation, duplex and speed of an interface, by way of the kernel's ethtool call. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bmc::manager {

/* As linkModeNumber puts it together; nothing for an interface that doesn't tell. Throws
 * MachineError when it cannot be asked. */
std::optional<std::uint64_t> linkModeOf(const std::string &interface);

/* Throws Unsupported for an interface without link modes, otherwise MachineError. */
void setLinkMode(const std::string &interface, std::uint64_t number);

} // namespace bmc::manager
