// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_change.hpp"

#include <stdexcept>

#include <arpa/inet.h>

namespace e2e {

namespace {

void parse(int family, const std::string &text, std::uint8_t *address)
{
    if (::inet_pton(family, text.c_str(), address) != 1) {
        throw std::invalid_argument(text);
    }
}

} // namespace

NW_LAN_SET_PORT_S &LanChange::select(std::uint32_t bits)
{
    bitmap_.aauiWord[port_][0] = bitmap_.aauiWord[port_][0] | bits;
    return config_.astPort[port_];
}

LanChange &LanChange::lanEnable(bool on)
{
    select(NW_LAN_BIT_LAN_ENABLE).ucLanEnable = on ? 1 : 0;
    return *this;
}

LanChange &LanChange::ipv4(const std::string &address, const std::string &mask)
{
    NW_LAN_SET_PORT_S &entry = select(NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK);
    parse(AF_INET, address, entry.aucIpv4Addr);
    parse(AF_INET, mask, entry.aucIpv4Mask);
    return *this;
}

LanChange &LanChange::ipv4Gateway(const std::string &gateway)
{
    parse(AF_INET, gateway, select(NW_LAN_BIT_IPV4_GATEWAY).aucIpv4Gateway);
    return *this;
}

LanChange &LanChange::ipv6(const std::string &address, std::uint8_t prefix)
{
    NW_LAN_SET_PORT_S &entry = select(NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
    parse(AF_INET6, address, entry.aucIpv6Addr);
    entry.ucIpv6Prefix = prefix;
    return *this;
}

NW_RESULT LanChange::send()
{
    return LIB_NW_SetLanConfig(&bitmap_, &config_, &log_);
}

} // namespace e2e
