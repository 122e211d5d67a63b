// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "random_configuration.hpp"

#include <algorithm>
#include <cstring>

#include "samples.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

class Dice {
public:
    explicit Dice(std::mt19937 &chance) : chance_(chance) {}

    /* 0 to most. */
    unsigned upTo(unsigned most)
    {
        return std::uniform_int_distribution<unsigned>(0, most)(chance_);
    }
    bool flip()
    {
        return upTo(1) == 1;
    }
    std::uint8_t byte(unsigned most = 255)
    {
        return static_cast<std::uint8_t>(upTo(most));
    }

private:
    std::mt19937 &chance_;
};

template <std::size_t size>
void put(std::uint8_t (&field)[size], const std::array<unsigned, size> &bytes)
{
    std::ranges::transform(bytes, field,
                           [](unsigned byte) { return static_cast<std::uint8_t>(byte); });
}

void putMask(std::uint8_t (&mask)[NW_IPV4_SIZE], unsigned prefix)
{
    const std::uint32_t bits = prefix == 0 ? 0 : 0xFFFFFFFFU << (32 - prefix);
    put(mask, {bits >> 24, bits >> 16 & 255, bits >> 8 & 255, bits & 255});
}

void putV6(std::uint8_t (&field)[NW_IPV6_SIZE], unsigned net, unsigned host)
{
    put(field, {0x20, 1, 0xD, 0xB8, net, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, host});
}

template <std::size_t size>
void putText(char (&field)[size], const std::string &text)
{
    text.copy(field, size - 1);
}

/* An address that is set, or a mask alone, or neither; a gateway inside its network. */
void fillIpv4(Dice &dice, unsigned number, NW_LAN_CFG_PORT_S &port)
{
    port.ucIpv4Enable = dice.byte(1);
    port.ucIpv4Type = dice.byte(2);
    const bool isSet = dice.flip();
    if (isSet || dice.flip()) {
        putMask(port.aucIpv4Mask, 16 + dice.upTo(8));
    }
    if (isSet) {
        put(port.aucIpv4Addr, {10, 1 + number, 4, 2 + dice.upTo(100)});
    }
    if (dice.flip()) {
        put(port.aucIpv4Gateway, {10, 1 + number, 4, 1});
    }
    for (unsigned index = 0; index < NW_ROUTE_COUNT; ++index) {
        NW_LAN_CFG_IPV4_ROUTE_S &route = port.astIpv4Route[index];
        route.ucState = dice.byte(1);
        if (route.ucState == 1) {
            put(route.aucAddr, {20 + 4 * number + index, dice.upTo(255), 0, 0});
        }
        if (route.ucState == 1 || dice.flip()) {
            putMask(route.aucMask, 16 + dice.upTo(16));
        }
        if (dice.flip()) {
            put(route.aucGateway, {10, 1 + number, 4, 200});
        }
    }
}

void fillIpv6(Dice &dice, unsigned number, NW_LAN_CFG_PORT_S &port)
{
    port.ucIpv6Enable = dice.byte(1);
    port.ucIpv6Type = dice.byte(3);
    const bool isSet = dice.flip();
    port.ucIpv6Prefix = static_cast<std::uint8_t>(isSet ? 48 + dice.upTo(80) : dice.upTo(128));
    if (isSet) {
        putV6(port.aucIpv6Addr, number, 1 + dice.upTo(200));
    }
    if (dice.flip()) {
        putV6(port.aucIpv6Gateway, number, 254);
    }
    for (unsigned index = 0; index < NW_ROUTE_COUNT; ++index) {
        NW_LAN_CFG_IPV6_ROUTE_S &route = port.astIpv6Route[index];
        route.ucState = dice.byte(1);
        if (route.ucState == 1) {
            putV6(route.aucAddr, 16 + 4 * number + index, dice.upTo(255));
        }
        if (route.ucState == 1 || dice.flip()) {
            route.ucPrefix = static_cast<std::uint8_t>(48 + dice.upTo(80));
        }
        if (dice.flip()) {
            putV6(route.aucGateway, number, 253);
        }
    }
}

void fillLan(Dice &dice, unsigned number, NW_LAN_CFG_PORT_S &port)
{
    port.ucLanEnable = dice.byte(1);
    fillIpv4(dice, number, port);
    fillIpv6(dice, number, port);
    const VlanBytes vlan{dice.byte(1),
                         {},
                         static_cast<std::uint16_t>(dice.flip() ? dice.upTo(4094) : 0),
                         dice.byte(7),
                         0};
    std::memcpy(&port.stVlan, &vlan, sizeof(vlan));
    const std::uint8_t suspend = dice.byte(3);
    putArp(port, {dice.byte(3), dice.byte(), suspend, dice.byte(suspend == 0 ? 0 : 1)});
    std::ranges::generate(port.aucReserved775, [&] { return dice.byte(); });
}

void fillDns(Dice &dice, NW_DNS_PORT_S &port)
{
    port.ucIpv4DnsMode = dice.byte(2);
    port.ucIpv6DnsMode = dice.byte(2);
    for (unsigned index = 0; index < 3; ++index) {
        if (dice.flip()) {
            put(port.aucIpv4DnsServer[index], {9, dice.upTo(255), dice.upTo(255), dice.upTo(255)});
        }
        if (dice.flip()) {
            putV6(port.aucIpv6DnsServer[index], 9, dice.upTo(255));
        }
    }
    putText(port.szIpv4DnsDomain,
            dice.flip() ? "rack" + std::to_string(dice.upTo(99)) + ".net" : "");
    putText(port.szIpv6DnsDomain, dice.flip() ? std::string(63, 'a') + ".example.net" : "");
}

void fillHostName(Dice &dice, NW_HOSTNAME_DB_INFO_S &record)
{
    record.ucHostNameMode = dice.byte(1);
    if (record.ucHostNameMode == 1) {
        putText(record.szBmcHostName, "bmc-000000000000");
    } else {
        putText(record.szBmcHostName, std::string(dice.upTo(63), 'h'));
    }
    putText(record.szBmcName, dice.flip() ? "off" : "");
}

void fillLinkMode(Dice &dice, NW_AN_CFG_PORT_S &port)
{
    if (dice.flip()) {
        port = {.ucAutoNeg = dice.byte(1),
                .ucDuplex = dice.byte(1),
                .ucSpeed = dice.byte(2),
                .aucAnReserved = {1, 0, 0, 0}};
    }
}

Configuration anyConfiguration(Dice &dice)
{
    Configuration drawn = sampleConfiguration();
    drawn.state.ucIfcState = dice.byte(1);
    drawn.state.ucIfcValue1 = dice.byte(1);
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        drawn.state.aucChannel[port] = dice.byte();
        fillLan(dice, port, drawn.lan.astPort[port]);
        fillDns(dice, drawn.dns.astPort[port]);
    }
    fillLinkMode(dice, drawn.an.astPort[0]);
    fillLinkMode(dice, drawn.an.astPort[1]);
    fillHostName(dice, drawn.hostName);
    drawn.lldp.ucLldpEnable = dice.byte(1);
    drawn.lldp.ucLldpWorkMode = dice.byte(3);
    return drawn;
}

bool hasConflict(const Configuration &drawn)
{
    const std::uint32_t routes = NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2 |
                                 NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2;
    bool found = LIB_NW_CheckIPv4v6SameSegment(drawn.state.ucIfcState, NW_PORTSET_ALL,
                                               NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC,
                                               &noWireless, &drawn.lan) != NW_OK;
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        found =
            found || LIB_NW_CheckIPv4v6RouteSameSegment(drawn.state.ucIfcState, 1U << port, routes,
                                                        &noWireless, &drawn.lan) != NW_OK;
    }
    return found;
}

} // namespace

Configuration randomConfiguration(std::mt19937 &chance)
{
    Dice dice(chance);
    Configuration drawn = anyConfiguration(dice);
    while (hasConflict(drawn)) {
        drawn = anyConfiguration(dice);
    }
    return drawn;
}

} // namespace bmc::settings
