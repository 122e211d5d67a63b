// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* One process of a program for each state directory. */
#pragma once

#include <string>

#include "common/descriptor.hpp"

namespace bmc {

/* Held as long as the object or, when the process dies, as long as it and what it has forked. */
class InstanceLock {
public:
    /* Makes the directory where it is missing; one that is read-only and has no file for the lock
     * gives none. Throws std::runtime_error when another process has held the lock for a second. */
    explicit InstanceLock(const std::string &program);

private:
    Descriptor file_;
};

} // namespace bmc
