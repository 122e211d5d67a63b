// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a change does to those who come in over the ports. */
#pragma once

#include <string>

#include "nwctl/command.hpp"
#include "nwctl/stored.hpp"

namespace nwctl {

/* The flag of commands that may leave no way in. */
inline constexpr const char *forceName = "--force";
Parameter forceFlag();

/* Why somebody may be cut off by the change, in a sentence; empty when nothing speaks for it.
 * Throws Failure (refused) when nobody could come in any more, unless --force is given. */
std::string dangerOf(const Configuration &present, const Configuration &after,
                     const Arguments &arguments);

} // namespace nwctl
