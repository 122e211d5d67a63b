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

/* As programs are told them, an array of
 *   { "setting": place, "port": interface or null, "before": value, "after": value }
 * with the interfaces' names before the change. */
Json changesOf(const std::vector<Difference> &differences, const NW_IFC_STATE_DB_INFO_S &before);

/* One of the array; also of something that is no setting. */
Json changeOf(const std::string &place, const Json &port, const Json &before, const Json &after);

inline constexpr const char *changePlaceKey = "setting";
inline constexpr const char *changePortKey = "port";
inline constexpr const char *changeBeforeKey = "before";
inline constexpr const char *changeAfterKey = "after";

/* Where a setting stands: "lan.shared.ipv4-gateway", "hostname.mode", "mode". */
std::string placeOf(const Setting &setting, unsigned port);
/* The setting of a place; null for one that is unknown. */
const Setting *settingAt(std::string_view place);

} // namespace bmc::settings
