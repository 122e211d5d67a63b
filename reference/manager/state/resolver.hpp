// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The text of resolv.conf. */
#pragma once

#include <string>

#include "settings/configuration.hpp"

namespace bmc::manager {

/* The manual settings of the ports that are served. An automatic family is the DHCP client's and
 * leaves no line. */
std::string resolverText(const settings::Configuration &configuration);

} // namespace bmc::manager
