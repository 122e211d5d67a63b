// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the same-segment check and the route check must answer and log, written down a second time
// in another way.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lan_record.hpp"

namespace support {

struct SegmentVerdict {
    std::uint32_t result = 0;
    std::vector<std::string> lines; // all of level 7
};

struct Wifi {
    std::uint8_t enable = 0;
    Ipv4 address{};
};

struct Ipv4Net {
    const std::uint8_t *address;
    const std::uint8_t *mask;
};
struct Ipv6Net {
    const std::uint8_t *address;
    std::uint32_t prefix;
};

// The lines of a comparison: sums up to a byte, or two bytes and the bits behind them.
std::string sumLine(long long sum1, long long sum2, long long byte);
std::string bitLine(long long value1, long long value2, long long left);

bool sameIpv4Segment(Ipv4Net first, Ipv4Net second, std::vector<std::string> &lines);
// Prefix lengths up to 255: what is logged for longer ones is nobody's promise.
bool sameIpv6Segment(Ipv6Net first, Ipv6Net second, std::vector<std::string> &lines);

SegmentVerdict sameSegment(std::uint32_t standby, std::uint32_t portSet, std::uint32_t checkType,
                           const Wifi &wifi, LanRecord &record);

SegmentVerdict routeSegment(std::uint32_t standby, std::uint32_t portSet, std::uint32_t routeSet,
                            const Wifi &wifi, LanRecord &record);

} // namespace support
