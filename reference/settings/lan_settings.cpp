// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* LAN settings of a port. */
#include "network_mng/lan.h"
#include "settings/detail/rows.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr std::uint32_t ipv6Addresses = NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;

/* A new address may lie in a route of the port beside it; where a new route leads, another port's
 * address may lie. */
constexpr Reach v4{NW_SEGCHK_IPV4, 0, NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2};
constexpr Reach v6{ipv6Addresses, 0, NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2};
constexpr Reach v6Origin{ipv6Addresses, 0, 0};
constexpr Reach route41{NW_SEGCHK_IPV4, NW_ROUTESET_IPV4_ROUTE1, 0};
constexpr Reach route42{NW_SEGCHK_IPV4, NW_ROUTESET_IPV4_ROUTE2, 0};
constexpr Reach route61{ipv6Addresses, NW_ROUTESET_IPV6_ROUTE1, 0};
constexpr Reach route62{ipv6Addresses, NW_ROUTESET_IPV6_ROUTE2, 0};

constexpr ShowGroup ipv4{"ipv4", "IPv4"};
constexpr ShowGroup ipv6{"ipv6", "IPv6"};

constexpr Word originV4Words[] = {{"static", 1}, {"dhcp", NW_ADDR_ORIGIN_DHCP, withoutEffect}};
constexpr Word originV6Words[] = {
    {"static", 1}, {"dhcp", NW_ADDR_ORIGIN_DHCP, withoutEffect}, {"slaac", 3, withoutEffect}};
constexpr Word arpWords[] = {{"none", 0},
                             {"announcements", arpAnnouncements},
                             {"responses", arpResponses},
                             {"both", arpAll}};

/* clang-format off */
constexpr Kind subnetV4Kind{.shape = Shape::subnet, .valueName = "ADDR/LEN|on|off|none", .family = AF_INET, .unset = "none"};
constexpr Kind subnetV6Kind{.shape = Shape::subnet, .valueName = "ADDR/LEN|on|off|none", .family = AF_INET6, .unset = "none"};
constexpr Kind routeV4Kind{.shape = Shape::route, .valueName = "DEST/LEN,GATEWAY|off", .family = AF_INET, .unset = "off"};
constexpr Kind routeV6Kind{.shape = Shape::route, .valueName = "DEST/LEN,GATEWAY|off", .family = AF_INET6, .unset = "off"};
constexpr Kind originV4Kind{.shape = Shape::words, .words = originV4Words};
constexpr Kind originV6Kind{.shape = Shape::words, .words = originV6Words};
constexpr Kind vlanKind{.shape = Shape::switchedNumber, .valueName = "ID|off", .least = 1, .most = 4094, .unset = "off"};
constexpr Kind priorityKind{.shape = Shape::number, .valueName = "N", .most = 7};
constexpr Kind headerKind{.shape = Shape::header, .valueName = "TTL,FLAGS,TOS", .most = 255};
constexpr Kind arpKind{.shape = Shape::words, .words = arpWords};
constexpr Kind suspendKind{.shape = Shape::heldWords, .words = arpWords};
constexpr Kind intervalKind{.shape = Shape::number, .valueName = "N", .most = 255, .unit = "500 ms"};

#define FROM(member)   PLACE(NW_LAN_SET_PORT_S, member)
#define TO(member)     PLACE(NW_LAN_CFG_PORT_S, member)
#define NOWHERE        Place {0, 0}
#define HEADER(member) within(headerBytesAt, PLACE(HeaderBytes, member))
#define ARP(member)    within(arpBytesAt, PLACE(ArpBytes, member))
#define VLAN(member)   within(vlanBytesAt, PLACE(VlanBytes, member))
#define PART(name, bit, ...) part(name, 0, NW_LAN_BIT_##bit, __VA_ARGS__)

/* Number and index of a route. */
#define ROUTE_V4(number, index, reach)                                                             \
    {Section::lan, "ipv4-route" #number, {"route", "routes", &ipv4}, "IPv4 static route " #number, &routeV4Kind, { \
        part("IPv4 route " #number,            1, NW_LAN_BIT_IPV4_ROUTE##number##_ADDR,    FROM(astIpv4Route[index].aucAddr),    TO(astIpv4Route[index].aucAddr),    isAddressV4, Result::badIpv4Route), \
        part("IPv4 route " #number " mask",    1, NW_LAN_BIT_IPV4_ROUTE##number##_MASK,    FROM(astIpv4Route[index].aucMask),    TO(astIpv4Route[index].aucMask),    isMaskV4,    Result::badIpv4Route), \
        part("IPv4 route " #number " gateway", 1, NW_LAN_BIT_IPV4_ROUTE##number##_GATEWAY, FROM(astIpv4Route[index].aucGateway), TO(astIpv4Route[index].aucGateway), isAddressV4, Result::badIpv4Route)}, \
        reach}
#define ROUTE_V6(number, index, reach)                                                             \
    {Section::lan, "ipv6-route" #number, {"route", "routes", &ipv6}, "IPv6 static route " #number, &routeV6Kind, { \
        part("IPv6 route " #number,                  0, NW_LAN_BIT_IPV6_ROUTE##number##_ADDR,    FROM(astIpv6Route[index].aucAddr),    TO(astIpv6Route[index].aucAddr),    isAddressV6, Result::badIpv6Route), \
        part("IPv6 route " #number " prefix length", 0, NW_LAN_BIT_IPV6_ROUTE##number##_PREFIX,  FROM(astIpv6Route[index].ucPrefix),   TO(astIpv6Route[index].ucPrefix),   ofKind,      Result::badIpv6Route), \
        part("IPv6 route " #number " gateway",       0, NW_LAN_BIT_IPV6_ROUTE##number##_GATEWAY, FROM(astIpv6Route[index].aucGateway), TO(astIpv6Route[index].aucGateway), isGatewayV6, Result::badIpv6Route)}, \
        reach}

constexpr Setting lanRows[] = {
    {Section::lan, "lan",           {"LAN", "lan"},                                 "switch the port",                                     &switchKind,    {PART("LAN enable", LAN_ENABLE, FROM(ucLanEnable), TO(ucLanEnable), ofKind, Result::badFlag)}},

    {Section::lan, "ipv4-enabled",  {nullptr, "enabled", &ipv4},                    "switch IPv4",                                         &switchKind,    {PART("IPv4 enable", IPV4_ENABLE, FROM(ucIpv4Enable), TO(ucIpv4Enable), ofKind, Result::badFlag)}, v4},
    {Section::lan, "ipv4-origin",   {nullptr, "origin", &ipv4},                     "where the IPv4 address comes from",                   &originV4Kind,  {PART("IPv4 origin", IPV4_TYPE, FROM(ucIpv4Type), TO(ucIpv4Type), ofKind, Result::badOrigin)}},
    {Section::lan, "ipv4",          {"address", "address", &ipv4},                  "IPv4 address with its mask, or switch IPv4",          &subnetV4Kind,  {
        PART("IPv4 address", IPV4_ADDR, FROM(aucIpv4Addr), TO(aucIpv4Addr), isAddressV4, Result::badIpv4Address),
        PART("IPv4 mask",    IPV4_MASK, FROM(aucIpv4Mask), TO(aucIpv4Mask), isMaskV4,    Result::badIpv4Mask)}, v4, "ipv4-enabled"},
    {Section::lan, "ipv4-gateway",  {"gateway", "gateway", &ipv4},                  "IPv4 default gateway",                                &addressV4Kind, {PART("IPv4 gateway", IPV4_GATEWAY, FROM(aucIpv4Gateway), TO(aucIpv4Gateway), isAddressV4, Result::badIpv4Gateway)}},
    ROUTE_V4(1, 0, route41),
    ROUTE_V4(2, 1, route42),

    {Section::lan, "ipv6-enabled",  {nullptr, "enabled", &ipv6},                    "switch IPv6",                                         &switchKind,    {PART("IPv6 enable", IPV6_ENABLE, FROM(ucIpv6Enable), TO(ucIpv6Enable), ofKind, Result::badFlag)}, v6},
    {Section::lan, "ipv6-origin",   {nullptr, "origin", &ipv6},                     "where the IPv6 address comes from",                   &originV6Kind,  {PART("IPv6 origin", IPV6_TYPE, FROM(ucIpv6Type), TO(ucIpv6Type), ofKind, Result::badOrigin)}, v6Origin},
    {Section::lan, "ipv6",          {nullptr, nullptr, &ipv6},                      "IPv6 address with its prefix length, or switch IPv6", &subnetV6Kind,  {
        PART("IPv6 address",       IPV6_ADDR,   FROM(aucIpv6Addr),  TO(aucIpv6Addr),  isAddressV6, Result::badIpv6Address),
        PART("IPv6 prefix length", IPV6_PREFIX, FROM(ucIpv6Prefix), TO(ucIpv6Prefix), ofKind,      Result::badIpv6Prefix)}, v6, "ipv6-enabled"},
    {Section::lan, "ipv6-gateway",  {"gateway", "gateway", &ipv6},                  "IPv6 default gateway",                                &addressV6Kind, {PART("IPv6 gateway", IPV6_GATEWAY, FROM(aucIpv6Gateway), TO(aucIpv6Gateway), isGatewayV6, Result::badIpv6Gateway)}},
    ROUTE_V6(1, 0, route61),
    ROUTE_V6(2, 1, route62),

    {Section::lan, "vlan",          {"VLAN", "id", nullptr, "vlan"},                "VLAN of the port",                                    &vlanKind,      {
        PART("VLAN enable", VLAN_ENABLE, FROM(ucVlanEnable), VLAN(isEnabled), ofKind, Result::badFlag),
        PART("VLAN ID",     VLAN_ID,     FROM(usVlanid),     VLAN(id),        ofKind, Result::badVlanId)}},
    {Section::lan, "vlan-priority", {"VLAN priority", "priority", nullptr, "vlan"}, "VLAN priority",                                       &priorityKind,  {PART("VLAN priority", VLAN_PRIORITY, FROM(ucVlanPriority), VLAN(priority), ofKind, Result::badVlanPriority)}},

    {Section::lan, "ipv4-header",   {"header", "header", &ipv4},                    "IPv4 header of what the port sends: three numbers",   &headerKind,    {PART("IPv4 header", IPV4_HEADER, FROM(stIpv4Header), HEADER(ipv4), isAny, Result::done)}, {}, nullptr, false},
    {Section::lan, "hop-limit",     {"hop limit", "hopLimit", &ipv6},               "IPv6 hop limit of what the port sends (0: the kernel's)",    &byteKind,      {PART("hop limit", HOP_LIMIT, FROM(ucHopLimit), HEADER(hopLimit), ofKind, Result::done)}},
    {Section::lan, "traffic-class", {"traffic class", "trafficClass", &ipv6},       "IPv6 traffic class of what the port sends",           &byteKind,      {PART("traffic class", TRAFFIC_CLASS, FROM(ucTrafficClass), HEADER(trafficClass), ofKind, Result::done)}, {}, nullptr, false},

    {Section::lan, "arp-control",   {"ARP control", "control", nullptr, "arp"},     "what the port sends of its own",                      &arpKind,       {PART("ARP control", ARP_CONTROL, FROM(ucArpControl), ARP(control), ofKind, Result::badArpFlags)}},
    {Section::lan, "arp-interval",  {"ARP interval", "interval", nullptr, "arp"},   "time between two announcements",                      &intervalKind,  {PART("ARP interval", ARP_INTERVAL, FROM(ucArpInterval), ARP(interval), ofKind, Result::badArpFlags)}},
    {Section::lan, "arp-suspend",   {"ARP suspend", "suspend", nullptr, "arp"},     "what rests while the watchdog timer runs",            &suspendKind,   {
        PART("ARP suspend", ARP_SUSPEND, FROM(ucArpSuspend), ARP(suspend), ofKind, Result::badArpFlags),
        part("ARP resumed", 0, 0, NOWHERE, ARP(isResumed), isAny, Result::done)}},
};
#undef FROM
#undef TO
#undef NOWHERE
#undef HEADER
#undef ARP
#undef VLAN
#undef PART
#undef ROUTE_V4
#undef ROUTE_V6
/* clang-format on */

} // namespace

std::span<const Setting> lanSettings()
{
    return lanRows;
}

} // namespace bmc::settings
