// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Where the system keeps its state, as the process's environment says. */
#pragma once

#include <filesystem>

namespace bmc {

/* Value of an environment variable; the fallback when it is unset or empty. */
const char *environmentOr(const char *name, const char *fallback) noexcept;

/* BMC_STATE_DIR. */
std::filesystem::path stateDirectory();

} // namespace bmc
