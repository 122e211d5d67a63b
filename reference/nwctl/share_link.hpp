// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Names of the shared-link modes. */
#pragma once

#include "network_mng/settings.h"
#include "option.hpp"

namespace nwctl {

inline constexpr Word shareLinkWords[] = {{"dedicated", NW_SHARE_LINK_DEDICATED},
                                          {"shared", NW_SHARE_LINK_SHARED},
                                          {"active-standby", NW_SHARE_LINK_ACTIVE_STANDBY}};

} // namespace nwctl
