// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Values of settings, out of the records. */
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "settings/setting.hpp"

namespace bmc::settings {

using Json = nlohmann::ordered_json;

/* true or false, a number or a text; null while there is no value. A stored byte that no value
 * stands for gives "unknown (N)". */
Json valueAt(const std::uint8_t *entry, const Setting &setting);
/* Of one of the setting's parts: a number, or the text of an address, a mask too. */
Json partValueAt(const std::uint8_t *entry, const Setting &setting, std::size_t part);
/* Of a configuration; null also for a link mode that is the driver's. */
Json valueOf(const Configuration &configuration, const Setting &setting, unsigned port);

/* The value as it is written on a command line. */
std::string textOf(const Setting &setting, const Json &value);

} // namespace bmc::settings
