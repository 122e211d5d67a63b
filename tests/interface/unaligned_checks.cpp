// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Checks of addresses, names and segments.
#include "lan_record.hpp"
#include "unaligned.hpp"

namespace unaligned {

namespace {

Bytes ipv4(const std::string &address)
{
    const support::Ipv4 bytes = support::ipv4(address);
    return Bytes(bytes.begin(), bytes.end());
}

Bytes ipv6(const std::string &address)
{
    const support::Ipv6 bytes = support::ipv6(address);
    return Bytes(bytes.begin(), bytes.end());
}

const Bytes wireless{1, 10, 9, 8, 7};

// Both ports in one segment, and a route of the first into it.
Bytes ports()
{
    support::LanRecord record;
    record.port(0)
        .set(support::at::lanEnable, 1)
        .ipv4Address("192.168.1.2", "255.255.255.0")
        .ipv4Route(0, "192.168.1.0", "255.255.255.0", "192.168.1.1");
    record.port(1)
        .set(support::at::lanEnable, 1)
        .ipv4Address("192.168.1.3", "255.255.255.0")
        .ipv6Address("2001:db8:1::3", 64)
        .ipv6Route(0, "2001:db8:2::", 64, "2001:db8:1::1");
    return record.bytes();
}

Bytes port(std::size_t index)
{
    const Bytes record = ports();
    const auto entry =
        std::span(record).subspan(4 + support::kPortEntrySize * index, support::kPortEntrySize);
    return Bytes(entry.begin(), entry.end());
}

std::vector<Row> addressRows()
{
    using Address = const std::uint8_t *;
    const Bytes global = ipv6("2001:db8::5");
    const Bytes host = ipv4("192.168.20.7");
    return {
        row(
            "NW_CheckIpIsEmpty",
            +[](Address address) { return NW_CheckIpIsEmpty(NW_FAMILY_IPV6, address); },
            {Bytes(16)}, 1),
        row(
            "LIB_NW_CheckIPIsZero",
            +[](Address address) { return LIB_NW_CheckIPIsZero(address, 16); }, {Bytes(16)}, 1),
        row(
            "LIB_NW_CheckIPIsFull",
            +[](Address address) { return LIB_NW_CheckIPIsFull(address, 16); }, {Bytes(16, 0xFF)},
            1),
        UNALIGNED_ROW(LIB_CheckIsValidGlobalIPv6AddrFireWall, {global}, 1),
        row(
            "LIB_NW_CheckV6IsValid",
            +[](Address address) { return LIB_NW_CheckV6IsValid(NW_V6CHK_ALL, address); }, {global},
            1),
        row(
            "LIB_NW_CheckV4IsValid",
            +[](Address address) { return LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, address); }, {host},
            1),
        row(
            "CalNETPrefix", +[](Address mask) { return CalNETPrefix(mask, 4); },
            {ipv4("255.255.240.0")}, 20),
        UNALIGNED_ROW(LIB_NW_CkeckIsValidMac, {Bytes{2, 1, 2, 3, 4, 5}}, 1),
        UNALIGNED_ROW(LIB_NW_CovMacStrToNet, {text("02:aa:bb:cc:dd:0e"), Bytes(NW_MAC_SIZE)}),
        UNALIGNED_ROW(LIB_CheckIpv4v6AndDomain, {text("2001:db8::5"), Bytes{setters::poison}}),
        UNALIGNED_ROW(LIB_NW_CheckHostName, {text("bmc-7")}, 1),
        UNALIGNED_ROW(LIB_NW_DomainValidityCheck, {text("bmc.example.org")}, 1),
        UNALIGNED_ROW(LIB_NW_ConverHostnameToIP, {text("127.0.0.1"), Bytes(NW_RESOLVED_TEXT_SIZE)}),
        UNALIGNED_ROW(LIB_NW_ParseHostnameToIP,
                      {text("127.0.0.1"), text("0.0.0.0"), Bytes(NW_RESOLVED_TEXT_SIZE)}),
    };
}

std::vector<Row> segmentRows()
{
    using Address = const std::uint8_t *;
    using Wireless = const NW_WIFI_ADDR_S *;
    using Record = const NW_LAN_CFG_DB_INFO_S *;
    using Port = const NW_LAN_CFG_PORT_S *;
    return {
        row(
            "LIB_NW_CheckIPv4v6SameSegment",
            +[](Wireless wifi, Record lan) {
                return LIB_NW_CheckIPv4v6SameSegment(
                    0, NW_PORTSET_ALL, NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC, wifi,
                    lan);
            },
            {wireless, ports()}, NW_ERR_IPV4_SAME_SEGMENT),
        row(
            "LIB_NW_CheckIPv4v6RouteSameSegment",
            +[](Wireless wifi, Record lan) {
                return LIB_NW_CheckIPv4v6RouteSameSegment(0, NW_PORTSET_ALL,
                                                          NW_ROUTESET_IPV4_ROUTE1, wifi, lan);
            },
            {wireless, ports()}, NW_ERR_IPV4_ROUTE1),
        row(
            "LIB_NW_CheckIpv6SingRoutewithIpSameSeg",
            +[](Address route, Port entry) {
                return LIB_NW_CheckIpv6SingRoutewithIpSameSeg(route, 64, entry);
            },
            {ipv6("2001:db8:1::"), port(1)}, 1),
        row(
            "LIB_NW_CheckIpv6SingRoutewithRouteSameSeg",
            +[](Address route, Port entry) {
                return LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(route, 64, entry);
            },
            {ipv6("2001:db8:2::"), port(1)}, 1),
    };
}

} // namespace

std::vector<Row> checkRows()
{
    return joined({addressRows(), segmentRows()});
}

} // namespace unaligned
