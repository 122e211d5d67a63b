// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Where what is there is not what is wanted, for people. */
#pragma once

#include <string>
#include <vector>

#include "manager/state/plan.hpp"

namespace bmc::manager {

struct Discrepancy {
    std::string interface {
    };                      /* empty for what the machine has once */
    std::string stored{};   /* "address 192.0.2.1/24"; empty: nothing is */
    std::string live{};     /* the same of kernel or system; empty: nothing, or nobody knows */
    bool isForeign = false; /* somebody else's, left alone */

    bool operator==(const Discrepancy &) const = default;
};

/* What is not as it is wanted, and what is not the manager's own among the addresses of its ports.
 */
std::vector<Discrepancy> discrepancies(const World &wanted, const Actual &actual,
                                       const Items &owned);

} // namespace bmc::manager
