// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "effects.hpp"

#include "arp.hpp"
#include "auto_negotiation.hpp"
#include "dns.hpp"
#include "host_name.hpp"
#include "lldp.hpp"
#include "network_mng/operate_log.h"
#include "ports.hpp"
#include "vlan.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint32_t portModules = NW_LOG_LAN | NW_LOG_NET_MODE | NW_LOG_LAN_REVERSE;

/* In this order; those that cannot fail for outer reasons come last. */
/* clang-format off */
constexpr Effect table[] = {
    {"ports",            portModules,                   applyPorts},
    {"VLAN",             portModules,                   applyVlans},
    {"ARP",              portModules,                   applyArp},
    {"auto-negotiation", NW_LOG_AN,                     applyLinkModes},
    {"host name",        NW_LOG_HOSTNAME,               applyHostName},
    {"DNS",              NW_LOG_DNS | NW_LOG_NET_MODE,  applyDns},
    {"LLDP",             NW_LOG_LLDP,                   applyLldp},
};
/* clang-format on */

} // namespace

std::span<const Effect> effects()
{
    return table;
}

std::uint32_t moduleOf(const Effect &effect, const Draft &draft)
{
    const std::uint32_t asked = effect.modules & draft.modules;
    return asked & ~(asked - 1);
}

} // namespace bmc::manager
