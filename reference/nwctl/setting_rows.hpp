// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What "show" tells of the settings in an entry of a record, as the table of settings describes it.
 */
#pragma once

#include <functional>

#include "nwctl/output.hpp"
#include "settings/setting.hpp"

namespace nwctl {

/* Adds what is known beside a setting, behind what is told of it. isOn: of its group. */
using Beside = std::function<void(const bmc::settings::Setting &setting, bool isOn, Rows &rows)>;

/* The settings that the command has for its own, in the order of the table; those of a group, and
 * those that form a list, where the first of them stands. */
Rows settingRows(const std::uint8_t *entry, std::string_view command, const Beside &beside = {});

} // namespace nwctl
