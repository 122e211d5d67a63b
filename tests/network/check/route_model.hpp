// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the route check must answer and log, written down a second time in another way.
#pragma once

#include "segment_model.hpp"

namespace support {

SegmentVerdict routeSegment(std::uint32_t standby, std::uint32_t portSet, std::uint32_t routeSet,
                            const Wifi &wifi, LanRecord &record);

} // namespace support
