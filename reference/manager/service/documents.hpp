// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Configurations as documents: what Check and Apply of rpc/manager1.hpp answer. */
#pragma once

#include <string>

#include "manager/engine/engine.hpp"

namespace bmc::manager {

/* Makes every check that can be made beforehand and changes nothing. */
std::string checkDocument(Engine &engine, const std::string &document);

/* Makes the change, all of it or nothing. */
std::string applyDocument(Engine &engine, const std::string &document);

} // namespace bmc::manager
