// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A port's LAN settings as they are shown: texts and flags, nothing raw. */
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "network_mng/lan.h"

namespace nwctl {

using MaybeText = std::optional<std::string>;

struct Ipv4Route {
    unsigned number;
    std::string destination;
    std::string mask;
    std::string gateway;
};

struct Ipv6Route {
    unsigned number;
    MaybeText destination;
    unsigned prefix;
    MaybeText gateway;
};

struct Ipv6Address {
    std::string address;
    std::optional<unsigned> prefix; /* a link-local address has none */
    std::string kind;               /* "static", "link-local" or "further" */
    std::string state; /* "tentative", "duplicate", "valid"; "not checked" with IPv6 off */
};

/* Absent texts: not configured, or not told while the port or the family is off. */
struct PortView {
    unsigned index = 0;
    unsigned channel = 0;
    std::string name;
    bool lanEnabled = false;
    MaybeText mac;

    bool ipv4Enabled = false;
    MaybeText ipv4Origin; /* "static" or "dhcp" */
    MaybeText ipv4Address;
    MaybeText ipv4Mask;
    MaybeText ipv4Gateway;
    MaybeText ipv4SecondAddress;
    std::vector<Ipv4Route> ipv4Routes;

    bool ipv6Enabled = false;
    MaybeText ipv6Origin;
    std::vector<Ipv6Address> ipv6Addresses;
    MaybeText ipv6Gateway;
    MaybeText ipv6SecondGateway;
    std::vector<Ipv6Route> ipv6Routes;

    std::optional<unsigned> vlanId;
    bool ipv4Conflict = false;
    bool ipv6Conflict = false;
};

PortView viewPort(unsigned index, const NW_ETHER_INS_INFO_S &info);

} // namespace nwctl
