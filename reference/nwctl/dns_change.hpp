// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change of one port's DNS settings. */
#pragma once

#include <span>

#include "dns_request.hpp"
#include "option.hpp"

namespace nwctl {

using bmc::DnsRequest;

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
