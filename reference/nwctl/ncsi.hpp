// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is known of NC-SI. */
#pragma once

#include "facts.hpp"

namespace nwctl {

/* A fact that cannot be read is null: a board without NC-SI lacks its record and its capability. */
Facts ncsiFacts();

} // namespace nwctl
