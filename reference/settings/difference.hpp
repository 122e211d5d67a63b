// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What two configurations have that is not the same. */
#pragma once

#include <vector>

#include "settings/value.hpp"

namespace bmc::settings {

struct Difference {
    const Setting *setting;
    unsigned port; /* 0 where the setting is the machine's */
    Json before;
    Json after;
};

/* Settings alone, in the order of the table, each port's together. */
std::vector<Difference> differences(const Configuration &from, const Configuration &to);

/* Where a setting stands: "lan.shared.ipv4-gateway", "hostname.mode", "mode". */
std::string placeOf(const Setting &setting, unsigned port);

} // namespace bmc::settings
