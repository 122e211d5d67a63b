// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Valid configurations by chance: bytes of records, written without any of the code under test. */
#pragma once

#include <random>

#include "settings/configuration.hpp"

namespace bmc::settings {

Configuration randomConfiguration(std::mt19937 &chance);

} // namespace bmc::settings
