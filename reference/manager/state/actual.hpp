// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What kernel and system hold: read, never remembered. */
#pragma once

#include <array>
#include <map>
#include <stdexcept>
#include <string>

#include "manager/state/item.hpp"

namespace bmc::manager {

/* An interface of the kernel's. */
struct Link {
    int index = 0;
    std::string type{}; /* "bond", "vlan" and so on; empty for a physical one */
    std::array<std::uint8_t, NW_MAC_SIZE> mac{};
    bool hasCarrier = false;

    bool operator==(const Link &) const = default;
};

struct Actual {
    std::map<std::string, Link> links{}; /* by name */
    /* Addresses are everybody's, routes only those with the manager's mark. */
    Items items{};

    bool operator==(const Actual &) const = default;
};

/* Kernel or system refuse a step, or cannot be read. */
class MachineError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* There is no such interface. */
class MissingInterface : public MachineError {
public:
    explicit MissingInterface(const std::string &name)
        : MachineError("there is no interface " + name)
    {
    }
};

/* Kernel or interface were made without it. */
class Unsupported : public MachineError {
    using MachineError::MachineError;
};

} // namespace bmc::manager
