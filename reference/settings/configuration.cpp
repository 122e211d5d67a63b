// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/configuration.hpp"

#include <cstring>

#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr std::string_view roles[] = {"dedicated", "shared", "bond"};
static_assert(std::size(roles) == NW_PORT_COUNT);

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

std::string_view roleOf(unsigned port)
{
    return roles[port];
}

std::string titleOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    const std::string role(roleOf(port));
    return nameOf(state, port) + ", " + (port == NW_PORT_BOND0 ? role : role + " port");
}

unsigned findPort(const NW_IFC_STATE_DB_INFO_S &state, std::string_view text)
{
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

} // namespace bmc::settings
