// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change of one port's DNS settings. */
#pragma once

#include <span>

#include "network_mng/settings.h"
#include "option.hpp"

namespace nwctl {

/* Payload of NW_CMD_SET_DNS: by port, the bits of what changes and an entry like the record's. */
struct NW_PACKED DnsRequest {
    std::uint32_t head; /* not used */
    std::uint16_t bits[NW_PORT_COUNT];
    std::uint8_t reserved[2];
    NW_DNS_PORT_S ports[NW_PORT_COUNT];
};
NW_ASSERT_AT(DnsRequest, bits, 4);
NW_ASSERT_AT(DnsRequest, ports, 12);
NW_ASSERT_SIZE(DnsRequest, NW_DNS_SET_SIZE);

struct DnsChange {
    std::uint16_t bits = 0;
    NW_DNS_PORT_S fields{};
};
using DnsOption = Option<DnsChange>;

std::span<const DnsOption> dnsOptions();
std::span<const Word> dnsModeWords();

/* Puts the change in its port's places. Throws Failure (refused) when the library has no DNS
 * settings for the port. */
void addToRequest(unsigned port, const DnsChange &change, DnsRequest &request);

} // namespace nwctl
