// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/state_directory.hpp"

#include <cstdlib>

namespace bmc {

const char *environmentOr(const char *name, const char *fallback) noexcept
{
    const char *value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : fallback;
}

std::filesystem::path stateDirectory()
{
    return environmentOr("BMC_STATE_DIR", "/var/lib/bmc");
}

} // namespace bmc
