// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A combined change of LAN, DNS and network mode, from a JSON document:
 *
 *     {"mode": "separate",
 *      "lan": {"eth1": {"lan": true, "ipv4": ["on", "192.168.20.7/24"], "vlan": 30}},
 *      "dns": {"eth1": {"ipv4-mode": "manual", "ipv4-server1": "192.168.20.53"}}}
 *
 * Each part may be missing. The keys beneath a port are the options of "lan set" and "dns set";
 * true and false stand for on and off, a list gives an option again. */
#pragma once

#include <optional>

#include "dns_change.hpp"
#include "lan_change.hpp"
#include "stored.hpp"

namespace nwctl {

struct CombinedChange {
    std::vector<LanChange> lan; /* one for each port named */
    std::optional<DnsRequest> dns;
    std::optional<std::uint8_t> mode;
    std::vector<GivenOption> settings; /* by their keys: "lan.eth1.vlan" */
};

/* Throws Failure with the key and the value: usage for what cannot be understood, refused for what
 * a check of the library refuses. */
CombinedChange parseCombined(const std::string &text, const NW_IFC_STATE_DB_INFO_S &interfaces);

/* The record that carries the change to the network manager. */
NW_SET_NETWORK_ALL_S requestOf(const CombinedChange &change);

} // namespace nwctl
