// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A port's view as a table for people and as JSON for programs. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "lan_view.hpp"

namespace nwctl {

using Json = nlohmann::ordered_json;

std::string portTable(const PortView &view);
Json portJson(const PortView &view);

} // namespace nwctl
