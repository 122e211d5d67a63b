// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Payload of NW_CMD_SET_DNS. */
#pragma once

#include <cstdint>

#include "network_mng/settings.h"

namespace bmc::settings {

/* By port, the bits of what changes and an entry like the record's. */
struct NW_PACKED DnsRequest {
    std::uint32_t head; /* not used */
    std::uint16_t bits[NW_PORT_COUNT];
    std::uint8_t reserved[2];
    NW_DNS_PORT_S ports[NW_PORT_COUNT];
};
NW_ASSERT_AT(DnsRequest, bits, 4);
NW_ASSERT_AT(DnsRequest, ports, 12);
NW_ASSERT_SIZE(DnsRequest, NW_DNS_SET_SIZE);

} // namespace bmc::settings
