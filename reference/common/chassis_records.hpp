// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the chassis manager puts into the records that the library passes through, for it and for
 * those who show them. */
#pragma once

#include <cstdint>
#include <cstring>

#include "network_mng/chassis.h"

namespace bmc::chassis {

/* Of NW_OA_TEMPERA_INFO_S: degrees Celsius; sensor 0 is the inlet. */
struct NW_PACKED Temperatures {
    static constexpr unsigned capacity = 30;

    std::uint8_t count; /* sensors that have reported, from the first */
    std::uint8_t reserved[3];
    std::uint16_t celsius[capacity];
};
NW_ASSERT_AT(Temperatures, celsius, 4);
NW_ASSERT_SIZE(Temperatures, 64);

/* Of NW_ALL_OCP_TEMP_S: degrees Celsius of the first adapters, as they were sent. */
struct NW_PACKED OcpTemperatures {
    static constexpr unsigned capacity = 16;

    std::uint16_t celsius[capacity];
};
NW_ASSERT_SIZE(OcpTemperatures, 32);

/* Of NW_ALL_FAN_INFO_S: revolutions per minute. */
struct NW_PACKED Fans {
    static constexpr unsigned capacity = 54;

    std::uint8_t count; /* fans that have reported, from the first */
    std::uint8_t reserved[3];
    std::uint32_t speed[capacity];
};
NW_ASSERT_AT(Fans, speed, 4);
NW_ASSERT_SIZE(Fans, 220);

/* Either form of a record as the other. */
template <typename To, typename From>
To recordAs(const From &from)
{
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof(to));
    return to;
}

} // namespace bmc::chassis
