// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* LAN changes of one port, checked against the stored configuration. */
#pragma once

#include "lan_options.hpp"
#include "sending.hpp"

namespace nwctl {

enum class SegmentCheck { made, skipped };

/* The change, its port still to be found. Throws Failure: usage for a port that does not exist,
 * refused when the change would make two networks overlap, internal when a record cannot be read.
 */
Sending lanSending(const std::string &port, LanChange change, const std::vector<GivenOption> &given,
                   SegmentCheck check);

} // namespace nwctl
