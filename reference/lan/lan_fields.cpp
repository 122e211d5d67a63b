// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_fields.hpp"

#include <algorithm>
#include <cstring>

#include "network_mng/check.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* Bytes of the stored entry that only the manager uses. */
constexpr std::size_t keptIpv4Header = offsetof(NW_LAN_CFG_PORT_S, aucReserved775);
constexpr std::size_t keptHopLimit = keptIpv4Header + 3;
constexpr std::size_t keptTrafficClass = keptIpv4Header + 4;
constexpr std::size_t keptVlanEnable = offsetof(NW_LAN_CFG_PORT_S, stVlan.aucReserved0);
constexpr std::size_t keptVlanPriority = offsetof(NW_LAN_CFG_PORT_S, stVlan.aucReserved5);
constexpr std::size_t keptArpControl = offsetof(NW_LAN_CFG_PORT_S, aucReserved787);
constexpr std::size_t keptArpInterval = keptArpControl + 1;
constexpr std::size_t keptArpSuspend = keptArpControl + 2;

constexpr std::uint32_t gatewayFlagsV6 = NW_V6CHK_ALL & ~std::uint32_t{NW_V6CHK_LINKLOCAL};

template <unsigned limit>
bool isUpTo(const std::uint8_t *value)
{
    return *value <= limit;
}

bool isAny(const std::uint8_t *)
{
    return true;
}

bool isVlanId(const std::uint8_t *value)
{
    constexpr unsigned last = 4094;
    return (value[0] | value[1] << 8) <= static_cast<int>(last);
}

/* All zeros mean "none" for every address, mask and gateway. */
bool isHostV4(const std::uint8_t *value)
{
    return LIB_NW_CheckIPIsZero(value, NW_IPV4_SIZE) != 0 ||
           LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, value) != 0;
}

bool isMaskV4(const std::uint8_t *value)
{
    return LIB_NW_CheckV4IsValid(NW_V4CHK_NETMASK, value) != 0;
}

template <std::uint32_t flags>
bool isHostV6(const std::uint8_t *value)
{
    return LIB_NW_CheckIPIsZero(value, NW_IPV6_SIZE) != 0 ||
           LIB_NW_CheckV6IsValid(flags, value) != 0;
}

constexpr std::uint32_t ipv6Addresses = NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;
constexpr Reach none{};
constexpr Reach v4{NW_SEGCHK_IPV4, 0, NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2};
constexpr Reach v6{ipv6Addresses, 0, NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2};
constexpr Reach v6Origin{ipv6Addresses, 0, 0};
constexpr Reach r41{NW_SEGCHK_IPV4, NW_ROUTESET_IPV4_ROUTE1, 0};
constexpr Reach r42{NW_SEGCHK_IPV4, NW_ROUTESET_IPV4_ROUTE2, 0};
constexpr Reach r61{ipv6Addresses, NW_ROUTESET_IPV6_ROUTE1, 0};
constexpr Reach r62{ipv6Addresses, NW_ROUTESET_IPV6_ROUTE2, 0};

constexpr std::size_t ipv4Route(unsigned route, std::size_t member)
{
    return offsetof(NW_LAN_CFG_PORT_S, astIpv4Route) + route * sizeof(NW_LAN_CFG_IPV4_ROUTE_S) +
           member;
}

constexpr std::size_t ipv6Route(unsigned route, std::size_t member)
{
    return offsetof(NW_LAN_CFG_PORT_S, astIpv6Route) + route * sizeof(NW_LAN_CFG_IPV6_ROUTE_S) +
           member;
}

/* clang-format off */
#define BIT(name)   NW_LAN_BIT_##name
#define FROM(field) offsetof(NW_LAN_SET_PORT_S, field)
#define TO(field)   offsetof(NW_LAN_CFG_PORT_S, field)
#define R4(route, field) ipv4Route(route, offsetof(NW_LAN_CFG_IPV4_ROUTE_S, field))
#define R6(route, field) ipv6Route(route, offsetof(NW_LAN_CFG_IPV6_ROUTE_S, field))
constexpr LanField fields[] = {
    {"LAN enable",            0, BIT(LAN_ENABLE),          FROM(ucLanEnable),    TO(ucLanEnable),    1,  isUpTo<1>,                  Result::badFlag,         none},
    {"IPv4 enable",           0, BIT(IPV4_ENABLE),         FROM(ucIpv4Enable),   TO(ucIpv4Enable),   1,  isUpTo<1>,                  Result::badFlag,         v4},
    {"IPv4 origin",           0, BIT(IPV4_TYPE),           FROM(ucIpv4Type),     TO(ucIpv4Type),     1,  isUpTo<2>,                  Result::badOrigin,       none},
    {"IPv4 address",          0, BIT(IPV4_ADDR),           FROM(aucIpv4Addr),    TO(aucIpv4Addr),    4,  isHostV4,                   Result::badIpv4Address,  v4},
    {"IPv4 mask",             0, BIT(IPV4_MASK),           FROM(aucIpv4Mask),    TO(aucIpv4Mask),    4,  isMaskV4,                   Result::badIpv4Mask,     v4},
    {"IPv4 gateway",          0, BIT(IPV4_GATEWAY),        FROM(aucIpv4Gateway), TO(aucIpv4Gateway), 4,  isHostV4,                   Result::badIpv4Gateway,  none},
    {"IPv4 header",           0, BIT(IPV4_HEADER),         FROM(stIpv4Header),   keptIpv4Header,     3,  isAny,                      Result::done,            none},
    {"IPv6 enable",           0, BIT(IPV6_ENABLE),         FROM(ucIpv6Enable),   TO(ucIpv6Enable),   1,  isUpTo<1>,                  Result::badFlag,         v6},
    {"IPv6 origin",           0, BIT(IPV6_TYPE),           FROM(ucIpv6Type),     TO(ucIpv6Type),     1,  isUpTo<3>,                  Result::badOrigin,       v6Origin},
    {"IPv6 address",          0, BIT(IPV6_ADDR),           FROM(aucIpv6Addr),    TO(aucIpv6Addr),    16, isHostV6<NW_V6CHK_ALL>,     Result::badIpv6Address,  v6},
    {"IPv6 gateway",          0, BIT(IPV6_GATEWAY),        FROM(aucIpv6Gateway), TO(aucIpv6Gateway), 16, isHostV6<gatewayFlagsV6>,   Result::badIpv6Gateway,  none},
    {"IPv6 prefix length",    0, BIT(IPV6_PREFIX),         FROM(ucIpv6Prefix),   TO(ucIpv6Prefix),   1,  isUpTo<128>,                Result::badIpv6Prefix,   v6},
    {"ARP control",           0, BIT(ARP_CONTROL),         FROM(ucArpControl),   keptArpControl,     1,  isUpTo<3>,                  Result::badArpFlags,     none},
    {"ARP interval",          0, BIT(ARP_INTERVAL),        FROM(ucArpInterval),  keptArpInterval,    1,  isAny,                      Result::done,            none},
    {"ARP suspend",           0, BIT(ARP_SUSPEND),         FROM(ucArpSuspend),   keptArpSuspend,     1,  isUpTo<3>,                  Result::badArpFlags,     none},
    {"VLAN enable",           0, BIT(VLAN_ENABLE),         FROM(ucVlanEnable),   keptVlanEnable,     1,  isUpTo<1>,                  Result::badFlag,         none},
    {"VLAN ID",               0, BIT(VLAN_ID),             FROM(usVlanid),       TO(stVlan.usVlanid),2,  isVlanId,                   Result::badVlanId,       none},
    {"VLAN priority",         0, BIT(VLAN_PRIORITY),       FROM(ucVlanPriority), keptVlanPriority,   1,  isUpTo<7>,                  Result::badVlanPriority, none},
    {"hop limit",             0, BIT(HOP_LIMIT),           FROM(ucHopLimit),     keptHopLimit,       1,  isAny,                      Result::done,            none},
    {"traffic class",         0, BIT(TRAFFIC_CLASS),       FROM(ucTrafficClass), keptTrafficClass,   1,  isAny,                      Result::done,            none},
    {"IPv6 route 1",          0, BIT(IPV6_ROUTE1_ADDR),    FROM(astIpv6Route[0].aucAddr),    R6(0, aucAddr),    16, isHostV6<NW_V6CHK_ALL>,   Result::badIpv6Route, r61},
    {"IPv6 route 1 prefix",   0, BIT(IPV6_ROUTE1_PREFIX),  FROM(astIpv6Route[0].ucPrefix),   R6(0, ucPrefix),   1,  isUpTo<128>,              Result::badIpv6Route, r61},
    {"IPv6 route 1 gateway",  0, BIT(IPV6_ROUTE1_GATEWAY), FROM(astIpv6Route[0].aucGateway), R6(0, aucGateway), 16, isHostV6<gatewayFlagsV6>, Result::badIpv6Route, r61},
    {"IPv6 route 2",          0, BIT(IPV6_ROUTE2_ADDR),    FROM(astIpv6Route[1].aucAddr),    R6(1, aucAddr),    16, isHostV6<NW_V6CHK_ALL>,   Result::badIpv6Route, r62},
    {"IPv6 route 2 prefix",   0, BIT(IPV6_ROUTE2_PREFIX),  FROM(astIpv6Route[1].ucPrefix),   R6(1, ucPrefix),   1,  isUpTo<128>,              Result::badIpv6Route, r62},
    {"IPv6 route 2 gateway",  0, BIT(IPV6_ROUTE2_GATEWAY), FROM(astIpv6Route[1].aucGateway), R6(1, aucGateway), 16, isHostV6<gatewayFlagsV6>, Result::badIpv6Route, r62},
    {"IPv4 route 1",          1, BIT(IPV4_ROUTE1_ADDR),    FROM(astIpv4Route[0].aucAddr),    R4(0, aucAddr),    4,  isHostV4, Result::badIpv4Route, r41},
    {"IPv4 route 1 mask",     1, BIT(IPV4_ROUTE1_MASK),    FROM(astIpv4Route[0].aucMask),    R4(0, aucMask),    4,  isMaskV4, Result::badIpv4Route, r41},
    {"IPv4 route 1 gateway",  1, BIT(IPV4_ROUTE1_GATEWAY), FROM(astIpv4Route[0].aucGateway), R4(0, aucGateway), 4,  isHostV4, Result::badIpv4Route, r41},
    {"IPv4 route 2",          1, BIT(IPV4_ROUTE2_ADDR),    FROM(astIpv4Route[1].aucAddr),    R4(1, aucAddr),    4,  isHostV4, Result::badIpv4Route, r42},
    {"IPv4 route 2 mask",     1, BIT(IPV4_ROUTE2_MASK),    FROM(astIpv4Route[1].aucMask),    R4(1, aucMask),    4,  isMaskV4, Result::badIpv4Route, r42},
    {"IPv4 route 2 gateway",  1, BIT(IPV4_ROUTE2_GATEWAY), FROM(astIpv4Route[1].aucGateway), R4(1, aucGateway), 4,  isHostV4, Result::badIpv4Route, r42},
};
#undef BIT
#undef FROM
#undef TO
#undef R4
#undef R6
/* clang-format on */

const std::uint8_t *bytesOf(const NW_LAN_SET_PORT_S &request)
{
    return reinterpret_cast<const std::uint8_t *>(&request);
}

void checkBits(const ChangeBits &bits)
{
    ChangeBits unknown{bits[0], bits[1]};
    for (const LanField &field : fields) {
        unknown[field.word] &= ~field.bit;
    }
    if ((unknown[0] | unknown[1]) != 0) {
        throw Refusal(Result::unknownField);
    }
}

std::uint8_t validity(const std::uint8_t *destination, std::size_t size)
{
    return LIB_NW_CheckIPIsZero(destination, static_cast<std::int32_t>(size)) != 0 ? 0 : 1;
}

} // namespace

std::span<const LanField> lanFields()
{
    return fields;
}

bool isSelected(const LanField &field, const ChangeBits &bits)
{
    return (bits[field.word] & field.bit) != 0;
}

void checkFields(const ChangeBits &bits, const NW_LAN_SET_PORT_S &request)
{
    checkBits(bits);
    for (const LanField &field : fields) {
        if (isSelected(field, bits) && !field.isValid(bytesOf(request) + field.from)) {
            throw Refusal(field.refusal, field.name);
        }
    }
}

void applyFields(const ChangeBits &bits, const NW_LAN_SET_PORT_S &request, NW_LAN_CFG_PORT_S &port)
{
    auto *stored = reinterpret_cast<std::uint8_t *>(&port);
    for (const LanField &field : fields) {
        if (isSelected(field, bits)) {
            std::memcpy(stored + field.to, bytesOf(request) + field.from, field.size);
        }
    }

    for (NW_LAN_CFG_IPV4_ROUTE_S &route : port.astIpv4Route) {
        route.ucState = validity(route.aucAddr, sizeof(route.aucAddr));
    }
    for (NW_LAN_CFG_IPV6_ROUTE_S &route : port.astIpv6Route) {
        route.ucState = validity(route.aucAddr, sizeof(route.aucAddr));
    }
    if ((bits[0] & NW_LAN_BIT_VLAN_ENABLE) != 0 && stored[keptVlanEnable] == 0) {
        port.stVlan.usVlanid = 0;
    }
}

} // namespace bmc::manager
