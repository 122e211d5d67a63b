// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the tests of the settings begin with. */
#pragma once

#include "settings/change.hpp"
#include "settings/configuration.hpp"

namespace bmc::settings {

/* Two separate ports on the board and a bond: eth0, eth1 and bond0. */
Configuration sampleConfiguration();

inline constexpr NW_WIFI_ADDR_S noWireless{};

/* A setting that there is. */
const Setting &settingAt(Section section, const char *key);

/* The change that an option on a command line makes. */
Change changeOf(Section section, const char *key, unsigned port, const std::string &text);

} // namespace bmc::settings
