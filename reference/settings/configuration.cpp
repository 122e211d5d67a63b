// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/configuration.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "common/text.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr std::string_view roles[] = {"dedicated", "shared", "bond"};
static_assert(std::size(roles) == NW_PORT_COUNT);

/* Of the first port that is on the board. */
const std::uint8_t *namingAddress(const Configuration &configuration)
{
    const auto *present = std::ranges::find_if(configuration.state.aucPortPresent,
                                               [](std::uint8_t byte) { return byte != 0; });
    const auto port =
        static_cast<std::size_t>(present - std::begin(configuration.state.aucPortPresent));
    return configuration.lan.astPort[port % NW_PORT_COUNT].aucMacAddr;
}

unsigned portOfChannel(const NW_IFC_STATE_DB_INFO_S &state, std::string_view number)
{
    const auto channel = parseNumber(number, UINT8_MAX);
    unsigned port = 0;
    while (port < NW_PORT_COUNT && (state.aucChannel[port] != channel || !isServed(state, port))) {
        port++;
    }
    return port;
}

} // namespace

Configuration blankConfiguration()
{
    constexpr std::uint8_t bothDirections = 3;
    Configuration blank{};
    blank.lldp.ucLldpWorkMode = bothDirections;
    for (NW_LAN_CFG_PORT_S &port : blank.lan.astPort) {
        putArp(port, {.control = arpResponses, .interval = 0, .suspend = 0, .isResumed = 0});
    }
    for (NW_AN_CFG_PORT_S &port : blank.an.astPort) {
        port = {.ucAutoNeg = 1, .ucDuplex = 1, .ucSpeed = 2, .aucAnReserved = {}};
    }
    return blank;
}

bool isServed(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const bool isBond = port == NW_PORT_BOND0;
    const std::uint8_t mode = isBond ? NW_IFC_STATE_ADAPTIVE : NW_IFC_STATE_SEPARATE;
    return state.ucIfcState == mode && state.aucPortPresent[port] != 0;
}

std::string nameOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const char *name = state.acIfcName[port];
    return {name, strnlen(name, NW_IFC_NAME_SIZE)};
}

void exchangeInterfaces(NW_IFC_STATE_DB_INFO_S &state)
{
    std::swap(state.acIfcName[NW_PORT_ETH0], state.acIfcName[NW_PORT_ETH1]);
    std::swap(state.aucPortPresent[NW_PORT_ETH0], state.aucPortPresent[NW_PORT_ETH1]);
}

bool isNameKnown(const Configuration &configuration)
{
    const std::uint8_t *mac = namingAddress(configuration);
    return std::any_of(mac, mac + NW_MAC_SIZE, [](std::uint8_t byte) { return byte != 0; });
}

void nameAutomatically(Configuration &configuration)
{
    constexpr std::uint8_t manual = 0;
    NW_HOSTNAME_DB_INFO_S &record = configuration.hostName;
    if (record.ucHostNameMode == manual) {
        return;
    }
    const std::uint8_t *mac = namingAddress(configuration);
    std::ranges::fill(record.szBmcHostName, '\0');
    std::snprintf(record.szBmcHostName, sizeof(record.szBmcHostName),
                  "bmc-%02x%02x%02x%02x%02x%02x", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

std::string_view roleOf(unsigned port)
{
    return roles[port];
}

std::string roleTitleOf(unsigned port)
{
    const std::string role(roleOf(port));
    return port == NW_PORT_BOND0 ? role : role + " port";
}

std::string titleOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    return nameOf(state, port) + ", " + roleTitleOf(port);
}

unsigned findPort(const NW_IFC_STATE_DB_INFO_S &state, std::string_view text)
{
    constexpr std::string_view channel = "channel:";
    if (text.starts_with(channel)) {
        return portOfChannel(state, text.substr(channel.size()));
    }
    unsigned named = NW_PORT_COUNT;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        if (text == roleOf(port) || text == std::to_string(port)) {
            return port;
        }
        if (!text.empty() && text == nameOf(state, port)) {
            named = port;
        }
    }
    return named;
}

std::string portRoles()
{
    std::string list;
    for (const std::string_view role : roles) {
        list += std::string(role) + ", ";
    }
    return list;
}

std::string expectedPorts(const NW_IFC_STATE_DB_INFO_S &state)
{
    std::string names;
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        const std::string name = nameOf(state, port);
        names += name.empty() ? "" : name + ", ";
    }
    return names + portRoles() + (names.empty() ? "0, 1 or 2" : "0, 1, 2 or channel:N");
}

} // namespace bmc::settings
