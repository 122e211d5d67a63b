// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/codes.hpp"

#include <algorithm>

namespace bmc::settings {

namespace {

constexpr std::array<std::string_view, 2> none{};

constexpr std::array<std::string_view, 2> about(std::string_view likely, std::string_view next = "")
{
    return {likely, next};
}

/* What IPMI has for success; the library's names are those of failures. */
constexpr std::uint32_t completionOfSuccess = 0x00;

/* clang-format off */
#define NAMED(code, completion, subject, meaning) \
    {code, #code, meaning, NW_IPMI_CC_##completion, subject}
#define MANAGER(result, name, completion, subject, meaning) \
    {static_cast<NW_RESULT>(Result::result), name, meaning, NW_IPMI_CC_##completion, subject}

constexpr Code rows[] = {
    {NW_OK, "NW_OK", "success", completionOfSuccess, none},
    NAMED(NW_ERR_FAILED,                                      UNSPECIFIED,     none,                          "the network status could not be written, or null pointer argument of the LLDP query"),
    NAMED(NW_ERR_PORT_NOT_SUPPORTED,                          INVALID_COMMAND, none,                          "the port is not present on this board"),
    MANAGER(badRequest, "NW_MANAGER_BAD_REQUEST",             INVALID_DATA,    none,                          "the request is not 3074 bytes long or does not begin with 0"),
    MANAGER(kernelRefused, "NW_MANAGER_KERNEL_REFUSED",       UNSPECIFIED,     none,                          "the kernel refused the change; nothing was changed"),
    MANAGER(databaseFailed, "NW_MANAGER_DATABASE_FAILED",     UNSPECIFIED,     none,                          "the configuration database failed; nothing was changed"),
    MANAGER(portNotServed, "NW_MANAGER_PORT_NOT_SERVED",      NOT_IN_STATE,    none,                          "the port is not on this board or not served in the present network mode"),
    NAMED(NW_ERR_ARP_SUSPEND,                                 UNSPECIFIED,     none,                          "the ARP replies could not be suspended"),
    NAMED(NW_ERR_ARP_UPDATE,                                  UNSPECIFIED,     none,                          "the ARP state could not be updated"),
    NAMED(NW_ERR_ARP_RESUME,                                  UNSPECIFIED,     none,                          "the suspended ARP replies could not be resumed"),
    MANAGER(badFlag, "NW_MANAGER_BAD_FLAG",                   INVALID_DATA,    none,                          "an enable flag is neither 0 nor 1"),
    MANAGER(badOrigin, "NW_MANAGER_BAD_ORIGIN",               INVALID_DATA,    none,                          "an address origin is unknown"),
    MANAGER(badIpv4Address, "NW_MANAGER_BAD_IPV4_ADDRESS",    INVALID_DATA,    about("ipv4"),                 "not an IPv4 address that a port can have"),
    MANAGER(badIpv4Mask, "NW_MANAGER_BAD_IPV4_MASK",          INVALID_DATA,    about("ipv4"),                 "not an IPv4 mask, or the mask 0.0.0.0 beside an address"),
    MANAGER(badIpv4Gateway, "NW_MANAGER_BAD_IPV4_GATEWAY",    INVALID_DATA,    about("ipv4"),                 "not an IPv4 address that a gateway can have"),
    MANAGER(gatewayOutside, "NW_MANAGER_GATEWAY_OUTSIDE",     INVALID_DATA,    about("ipv4-gateway", "ipv4"), "the IPv4 gateway is outside the port's own subnet or the port itself"),
    MANAGER(badIpv4Route, "NW_MANAGER_BAD_IPV4_ROUTE",        INVALID_DATA,    about("ipv4"),                 "not a valid IPv4 static route"),
    MANAGER(badIpv6Address, "NW_MANAGER_BAD_IPV6_ADDRESS",    INVALID_DATA,    about("ipv6"),                 "not an IPv6 address that a port can have"),
    MANAGER(badIpv6Prefix, "NW_MANAGER_BAD_IPV6_PREFIX",      INVALID_DATA,    about("ipv6"),                 "IPv6 prefix length above 128, or 0 beside an address"),
    MANAGER(badIpv6Gateway, "NW_MANAGER_BAD_IPV6_GATEWAY",    INVALID_DATA,    about("ipv6"),                 "not an IPv6 address that a gateway can have"),
    MANAGER(badIpv6Route, "NW_MANAGER_BAD_IPV6_ROUTE",        INVALID_DATA,    about("ipv6"),                 "not a valid IPv6 static route"),
    MANAGER(badVlanId, "NW_MANAGER_BAD_VLAN_ID",              INVALID_DATA,    none,                          "VLAN ID above 4094"),
    MANAGER(badVlanPriority, "NW_MANAGER_BAD_VLAN_PRIORITY",  INVALID_DATA,    none,                          "VLAN priority above 7"),
    MANAGER(systemFailed, "NW_MANAGER_SYSTEM_FAILED",         UNSPECIFIED,     none,                          "the system refused the change; nothing was changed"),
    MANAGER(badArpFlags, "NW_MANAGER_BAD_ARP_FLAGS",          INVALID_DATA,    none,                          "an ARP setting has bits other than 0 and 1, or an ARP interval is above 255"),
    MANAGER(badHostName, "NW_MANAGER_BAD_HOST_NAME",          INVALID_DATA,    none,                          "not a name of 1 to 63 letters, digits and inner hyphens"),
    MANAGER(badHostNameMode, "NW_MANAGER_BAD_HOST_NAME_MODE", INVALID_DATA,    none,                          "the host name mode is unknown, or a name is given in automatic mode"),
    MANAGER(badDnsServer, "NW_MANAGER_BAD_DNS_SERVER",        INVALID_DATA,    none,                          "not an address that a DNS server can have"),
    MANAGER(notSupported, "NW_MANAGER_NOT_SUPPORTED",         NOT_IN_STATE,    none,                          "the command is not supported"),
    MANAGER(badDnsDomain, "NW_MANAGER_BAD_DNS_DOMAIN",        INVALID_DATA,    none,                          "not a valid DNS domain"),
    MANAGER(badDnsMode, "NW_MANAGER_BAD_DNS_MODE",            INVALID_DATA,    none,                          "the DNS mode is not 0, 1 or 2"),
    MANAGER(badNetMode, "NW_MANAGER_BAD_NET_MODE",            INVALID_DATA,    none,                          "the network port mode or the switchover flag is neither 0 nor 1"),
    MANAGER(unknownField, "NW_MANAGER_UNKNOWN_FIELD",         INVALID_DATA,    none,                          "a change bit selects no field"),
    MANAGER(addressTaken, "NW_MANAGER_ADDRESS_TAKEN",         UNSPECIFIED,     about("ipv4"),                 "a neighbour on the network has the IPv4 address already; nothing was changed"),
    MANAGER(badDelay, "NW_MANAGER_BAD_DELAY",                 OUT_OF_RANGE,    none,                          "the delay of a restart is above 3600 seconds"),
    MANAGER(notRestored, "NW_MANAGER_NOT_RESTORED",           UNSPECIFIED,     none,                          "not everything could be taken back; the manager goes on trying"),
    MANAGER(badDocument, "NW_MANAGER_BAD_DOCUMENT",           UNSPECIFIED,     none,                          "the document is not JSON, or not of the form of a configuration"),
    MANAGER(wirelessUnknown, "NW_MANAGER_WIRELESS_UNKNOWN",   UNSPECIFIED,     about("ipv4"),                 "what is known of the wireless interface cannot be understood, so nobody can tell whether addresses overlap"),
    MANAGER(badLldpMode, "NW_MANAGER_BAD_LLDP_MODE",          INVALID_DATA,    none,                          "the LLDP state is not 0 or 1, or the work mode not 1, 2 or 3"),
    MANAGER(badLinkMode, "NW_MANAGER_BAD_LINK_MODE",          INVALID_DATA,    none,                          "auto-negotiation, duplex or speed is out of its range"),
    MANAGER(noVlan, "NW_MANAGER_NO_VLAN",                     NOT_IN_STATE,    none,                          "the kernel has no VLANs; nothing was changed"),
    MANAGER(badToken, "NW_MANAGER_BAD_TOKEN",                 INVALID_DATA,    none,                          "no checkpoint has that token"),
    MANAGER(badDeadline, "NW_MANAGER_BAD_DEADLINE",           OUT_OF_RANGE,    none,                          "a checkpoint lasts 10 to 3600 seconds"),
    MANAGER(noBond, "NW_MANAGER_NO_BOND",                     NOT_IN_STATE,    none,                          "the kernel has no bonds and there is no interface to stand for one"),
    MANAGER(noLinkMode, "NW_MANAGER_NO_LINK_MODE",            NOT_IN_STATE,    none,                          "the interface does not let its speed and duplex be set; nothing was changed"),
    MANAGER(checkpointPending, "NW_MANAGER_CHECKPOINT_PENDING", NOT_IN_STATE,  none,                          "there is a checkpoint already that waits to be confirmed"),
    MANAGER(noCheckpoint, "NW_MANAGER_NO_CHECKPOINT",         NOT_IN_STATE,    none,                          "there is no checkpoint to confirm or to go back to"),
    NAMED(NW_ERR_IPV4_SAME_SEGMENT,                           UNSPECIFIED,     about("ipv4", "ipv4-enabled"), "the IPv4 address lies in the segment of another port or of the wireless interface"),
    NAMED(NW_ERR_IPV6_SAME_SEGMENT,                           UNSPECIFIED,     about("ipv6", "ipv6-enabled"), "the IPv6 address lies in the segment of the other port"),
    NAMED(NW_ERR_IFC_NO_DB,                                   UNSPECIFIED,     none,                          "no configuration database for the interface state"),
    NAMED(NW_ERR_IFC_WRITE,                                   UNSPECIFIED,     none,                          "the interface state could not be written"),
    NAMED(NW_ERR_IPV4_ROUTE1,                                 UNSPECIFIED,     about("ipv4-route1", "ipv4"),  "IPv4 static route 1 lies in the segment of an address, of another route or of the wireless interface"),
    NAMED(NW_ERR_IPV4_ROUTE2,                                 UNSPECIFIED,     about("ipv4-route2", "ipv4"),  "IPv4 static route 2 lies in the segment of an address, of another route or of the wireless interface"),
    NAMED(NW_ERR_IPV6_ROUTE1,                                 UNSPECIFIED,     about("ipv6-route1", "ipv6"),  "IPv6 static route 1 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV6_ROUTE2,                                 UNSPECIFIED,     about("ipv6-route2", "ipv6"),  "IPv6 static route 2 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV4_IN_ROUTE1,                              UNSPECIFIED,     about("ipv4", "ipv4-route1"),  "the IPv4 address lies in the segment of static route 1"),
    NAMED(NW_ERR_IPV4_IN_ROUTE2,                              UNSPECIFIED,     about("ipv4", "ipv4-route2"),  "the IPv4 address lies in the segment of static route 2"),
    NAMED(NW_ERR_IPV6_IN_ROUTE1,                              UNSPECIFIED,     about("ipv6", "ipv6-route1"),  "the IPv6 address lies in the segment of static route 1"),
    NAMED(NW_ERR_IPV6_IN_ROUTE2,                              UNSPECIFIED,     about("ipv6", "ipv6-route2"),  "the IPv6 address lies in the segment of static route 2"),
    NAMED(NW_ERR_IPV4_ROUTE1_GATEWAY,                         UNSPECIFIED,     about("ipv4-route1", "ipv4"),  "the gateway of IPv4 static route 1 lies in the segment of an address or of the wireless interface"),
    NAMED(NW_ERR_IPV4_ROUTE2_GATEWAY,                         UNSPECIFIED,     about("ipv4-route2", "ipv4"),  "the gateway of IPv4 static route 2 lies in the segment of an address or of the wireless interface"),
    NAMED(NW_ERR_IPV6_ROUTE1_GATEWAY,                         UNSPECIFIED,     about("ipv6-route1", "ipv6"),  "the gateway of IPv6 static route 1 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV6_ROUTE2_GATEWAY,                         UNSPECIFIED,     about("ipv6-route2", "ipv6"),  "the gateway of IPv6 static route 2 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV4_HOLDS_GATEWAY1,                         UNSPECIFIED,     about("ipv4", "ipv4-route1"),  "the segment of the IPv4 address holds the gateway of static route 1"),
    NAMED(NW_ERR_IPV4_HOLDS_GATEWAY2,                         UNSPECIFIED,     about("ipv4", "ipv4-route2"),  "the segment of the IPv4 address holds the gateway of static route 2"),
    NAMED(NW_ERR_IPV6_HOLDS_GATEWAY1,                         UNSPECIFIED,     about("ipv6", "ipv6-route1"),  "the segment of the IPv6 address holds the gateway of static route 1"),
    NAMED(NW_ERR_IPV6_HOLDS_GATEWAY2,                         UNSPECIFIED,     about("ipv6", "ipv6-route2"),  "the segment of the IPv6 address holds the gateway of static route 2"),
    MANAGER(locksOut, "NW_MANAGER_LOCKS_OUT",                 NOT_IN_STATE,    none,                          "no port would have an address and a link any more; force makes the change all the same"),
    NAMED(NW_ERR_MAC_NULL_POINTER,                            UNSPECIFIED,     none,                          "null pointer argument of the MAC conversion"),
    NAMED(NW_ERR_GENERAL,                                     UNSPECIFIED,     none,                          "general failure"),
    NAMED(NW_ERR_NULL_POINTER,                                UNSPECIFIED,     none,                          "null pointer argument"),
    NAMED(NW_ERR_OUT_OF_RANGE,                                INVALID_DATA,    none,                          "parameter out of range"),
    NAMED(NW_ERR_DB_ENVIRONMENT,                              UNSPECIFIED,     none,                          "the configuration database has no environment"),
    NAMED(NW_ERR_DB_READ,                                     UNSPECIFIED,     none,                          "a configuration record could not be read"),
    NAMED(NW_ERR_DB_WRITE,                                    UNSPECIFIED,     none,                          "a configuration record could not be written"),
    NAMED(NW_ERR_RPC_TRANSPORT,                               UNSPECIFIED,     none,                          "the service cannot be reached or did not answer properly"),
    NAMED(NW_OPERLOG_LOCAL_FAIL,                              UNSPECIFIED,     none,                          "refused by the library before anything was sent"),
};
#undef NAMED
#undef MANAGER
static_assert(std::ranges::is_sorted(rows, {}, &Code::value));

/* Codes without a row, by the family in their upper half. */
constexpr Code families[] = {
    {0x1E000000, "NW_MANAGER_OTHER", "refused by the network manager for a reason without a name here", 0, none},
    {0x81000000, "NW_ERR_OTHER",     "library failure without a name here",                             0, none},
    {0x9E000000, "NW_MANAGER_OTHER", "refused by the network manager for a reason without a name here", 0, none},
};
constexpr Code platformCode{0, "PLATFORM", "a code of the platform's own, such as the configuration database's", 0, none};
/* clang-format on */

constexpr NW_RESULT familyBits = 0xFFFF0000;
constexpr NW_RESULT networkFamily = 0x1E000000;
constexpr NW_RESULT markBits = 0x00000E00;

const Code *findRow(std::span<const Code> table, NW_RESULT code)
{
    const auto row = std::ranges::find(table, code, &Code::value);
    return row == table.end() ? nullptr : &*row;
}

/* The row that the code differs from in nothing but its mark. */
const Code *findMarked(NW_RESULT code)
{
    if ((code & familyBits) != networkFamily) {
        return nullptr;
    }
    const auto *row = std::ranges::find_if(
        rows, [code](const Code &each) { return (each.value & ~markBits) == (code & ~markBits); });
    return row == std::end(rows) ? nullptr : row;
}

} // namespace

std::span<const Code> codes()
{
    return rows;
}

Code describe(NW_RESULT code)
{
    if (const Code *row = findRow(rows, code)) {
        return *row;
    }
    const Code *row = findMarked(code);
    row = row == nullptr ? findRow(families, code & familyBits) : row;
    Code described = row == nullptr ? platformCode : *row;
    described.value = code;
    described.completion = LIB_NW_ChangeInvErr2IpmiCC(code);
    return described;
}

std::string meaningOf(Result result)
{
    return std::string(describe(static_cast<NW_RESULT>(result)).meaning);
}

} // namespace bmc::settings
