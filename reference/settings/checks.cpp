// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/checks.hpp"

#include <cstring>
#include <string>

#include "network_mng/settings.h"

namespace bmc::settings {

namespace {

/* What a gateway may have and a port's configured address may not. */
constexpr std::uint32_t gatewayChecksV6 = NW_V6CHK_ALL & ~std::uint32_t{NW_V6CHK_LINKLOCAL};

bool isLabel(const std::string &name)
{
    return !name.empty() && name.size() <= longestName && name.find('\0') == std::string::npos &&
           LIB_NW_CheckHostName(name.c_str()) != 0;
}

const char *textAt(const std::uint8_t *value)
{
    return reinterpret_cast<const char *>(value);
}

} // namespace

bool isUnset(const std::uint8_t *value, std::size_t size)
{
    return LIB_NW_CheckIPIsZero(value, static_cast<std::int32_t>(size)) != 0;
}

bool isAny(const std::uint8_t *)
{
    return true;
}

bool isVlanId(const std::uint8_t *value)
{
    constexpr int last = 4094;
    return (value[0] | value[1] << 8) <= last;
}

bool isLinkSpeed(const std::uint8_t *value)
{
    constexpr std::uint32_t last = 2;
    std::uint32_t speed = 0;
    std::memcpy(&speed, value, sizeof(speed));
    return speed <= last;
}

bool isAddressV4(const std::uint8_t *value)
{
    return isUnset(value, NW_IPV4_SIZE) || LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, value) != 0;
}

bool isMaskV4(const std::uint8_t *value)
{
    return LIB_NW_CheckV4IsValid(NW_V4CHK_NETMASK, value) != 0;
}

bool isAddressV6(const std::uint8_t *value)
{
    return isUnset(value, NW_IPV6_SIZE) || LIB_NW_CheckV6IsValid(NW_V6CHK_ALL, value) != 0;
}

bool isGatewayV6(const std::uint8_t *value)
{
    return isUnset(value, NW_IPV6_SIZE) || LIB_NW_CheckV6IsValid(gatewayChecksV6, value) != 0;
}

bool isCountedName(const std::uint8_t *value)
{
    return *value <= longestName && isLabel({textAt(value + 1), *value});
}

bool isName(const std::uint8_t *value)
{
    constexpr std::size_t size = sizeof(NW_HOSTNAME_SET_REQ_S::acTail);
    return isLabel({textAt(value), strnlen(textAt(value), size)});
}

bool isDomain(const std::uint8_t *value)
{
    const char *text = textAt(value);
    return strnlen(text, NW_DNS_DOMAIN_SIZE) < NW_DNS_DOMAIN_SIZE &&
           LIB_NW_DomainValidityCheck(text) != 0;
}

} // namespace bmc::settings
