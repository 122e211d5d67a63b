// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the network manager answers in the first word of a response, with its meaning for people.
 * The segment checks' codes (NW_ERR_IPV4_SAME_SEGMENT and its neighbours) are answered unchanged.
 */
#pragma once

#include <cstdint>

namespace bmc::manager {

enum class Result : std::uint32_t {
    done = 0,
    badRequest = 0x1E000001,
    kernelRefused = 0x1E000002,
    databaseFailed = 0x1E000003,
    portNotServed = 0x1E000004,
    /* 0x1E000005 to 0x1E000007 are the library's own. */
    badFlag = 0x1E000009,
    badOrigin = 0x1E00000A,
    badIpv4Address = 0x1E00000B,
    badIpv4Mask = 0x1E00000C,
    badIpv4Gateway = 0x1E00000D,
    gatewayOutside = 0x1E00000E,
    badIpv4Route = 0x1E00000F,
    badIpv6Address = 0x1E000010,
    badIpv6Prefix = 0x1E000011,
    badIpv6Gateway = 0x1E000012,
    badIpv6Route = 0x1E000013,
    badVlanId = 0x1E000014,
    badVlanPriority = 0x1E000015,
    systemFailed = 0x1E000016,
    badArpFlags = 0x1E000017,
    badHostName = 0x1E000018,
    badHostNameMode = 0x1E000019,
    badDnsServer = 0x1E00001A,
    notSupported = 0x1E00001C,
    badDnsDomain = 0x1E00001D,
    badDnsMode = 0x1E00001E,
    badNetMode = 0x1E00001F,
    unknownField = 0x1E000021,
    addressTaken = 0x1E000022,
    badDelay = 0x1E000023,
    notRestored = 0x1E000024,
    badLldpMode = 0x1E00002C,
    badLinkMode = 0x1E000036,
    /* Told from notSupported by the mark that a completion code leaves out. */
    noVlan = 0x1E00021C,
    noBond = 0x1E00041C,
    noLinkMode = 0x1E00061C,
};

struct ResultMeaning {
    Result result;
    const char *meaning;
};

/* clang-format off */
inline constexpr ResultMeaning resultMeanings[] = {
    {Result::done,            "done"},
    {Result::badRequest,      "the request is not 3074 bytes long or does not begin with 0"},
    {Result::kernelRefused,   "the kernel refused the change; nothing was changed"},
    {Result::databaseFailed,  "the configuration database failed; nothing was changed"},
    {Result::portNotServed,   "the port is not on this board or not served in the present network mode"},
    {Result::badFlag,         "an enable flag is neither 0 nor 1"},
    {Result::badOrigin,       "an address origin is unknown"},
    {Result::badIpv4Address,  "not an IPv4 address that a port can have"},
    {Result::badIpv4Mask,     "not an IPv4 mask, or the mask 0.0.0.0 beside an address"},
    {Result::badIpv4Gateway,  "not an IPv4 address that a gateway can have"},
    {Result::gatewayOutside,  "the IPv4 gateway is outside the port's own subnet or the port itself"},
    {Result::badIpv4Route,    "not a valid IPv4 static route"},
    {Result::badIpv6Address,  "not an IPv6 address that a port can have"},
    {Result::badIpv6Prefix,   "IPv6 prefix length above 128, or 0 beside an address"},
    {Result::badIpv6Gateway,  "not an IPv6 address that a gateway can have"},
    {Result::badIpv6Route,    "not a valid IPv6 static route"},
    {Result::badVlanId,       "VLAN ID above 4094"},
    {Result::badVlanPriority, "VLAN priority above 7"},
    {Result::systemFailed,    "the system refused the change; nothing was changed"},
    {Result::badArpFlags,     "an ARP setting has bits other than 0 and 1"},
    {Result::badHostName,     "not a name of 1 to 63 letters, digits and inner hyphens"},
    {Result::badHostNameMode, "the host name mode is unknown, or a name is given in automatic mode"},
    {Result::badDnsServer,    "not an address that a DNS server can have"},
    {Result::notSupported,    "the command is not supported"},
    {Result::badDnsDomain,    "not a valid DNS domain"},
    {Result::badDnsMode,      "the DNS mode is not 0, 1 or 2"},
    {Result::badNetMode,      "the network port mode or the switchover flag is neither 0 nor 1"},
    {Result::unknownField,    "a change bit selects no field"},
    {Result::addressTaken,    "a neighbour on the network has the IPv4 address already; nothing was changed"},
    {Result::badDelay,        "the delay of a restart is above 3600 seconds"},
    {Result::notRestored,     "the change failed and could not be taken back as a whole; the manager goes on trying"},
    {Result::badLldpMode,     "the LLDP state is not 0 or 1, or the work mode not 1, 2 or 3"},
    {Result::badLinkMode,     "auto-negotiation, duplex or speed is out of its range"},
    {Result::noVlan,          "the kernel has no VLANs; nothing was changed"},
    {Result::noBond,          "the kernel has no bonds and there is no interface to stand for one"},
    {Result::noLinkMode,      "the interface does not let its speed and duplex be set; nothing was changed"},
};
/* clang-format on */

constexpr const char *meaningOf(Result result)
{
    for (const ResultMeaning &row : resultMeanings) {
        if (row.result == result) {
            return row.meaning;
        }
    }
    return "unknown result";
}

} // namespace bmc::manager
