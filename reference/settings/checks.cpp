// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/checks.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "common/address.hpp"
#include "network_mng/settings.h"
#include "settings/detail/parsing.hpp"

namespace bmc::settings {

namespace {

/* What a gateway may have and a port's configured address may not. */
constexpr std::uint32_t gatewayChecksV6 = NW_V6CHK_ALL & ~std::uint32_t{NW_V6CHK_LINKLOCAL};

bool isLabel(const std::string &name)
{
    return !name.empty() && name.size() <= longestName && name.find('\0') == std::string::npos &&
           LIB_NW_CheckHostName(name.c_str()) != 0;
}

struct Range {
    unsigned least;
    unsigned most;
};

unsigned largestOf(std::span<const Word> words)
{
    return std::ranges::max(words, {}, &Word::value).value;
}

/* What requests may have of a part that is a number. */
Range rangeOf(const Setting &setting, const Part &part)
{
    const Kind &kind = *setting.kind;
    switch (kind.shape) {
    case Shape::flag:
    case Shape::words:
    case Shape::heldWords:
        return {kind.least, largestOf(kind.words)};
    case Shape::number:
        return {kind.least, kind.most};
    case Shape::switchedNumber:
        return {0, &part == setting.parts.begin() ? 1 : kind.most};
    case Shape::subnet:
    case Shape::route:
        return {0, longestPrefix(kind.family)};
    case Shape::address:
    case Shape::name:
    case Shape::domain:
    case Shape::header:
        break;
    }
    return {0, std::numeric_limits<unsigned>::max()};
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

unsigned longestPrefix(int family)
{
    return 8 * static_cast<unsigned>(sizeOf(family));
}

bool isValid(const Setting &setting, const Part &part, const std::uint8_t *value)
{
    if (part.isValid != ofKind) {
        return part.isValid(value);
    }
    const Range range = rangeOf(setting, part);
    const std::uint32_t number = numberIn({value, value + part.requestSize});
    return number >= range.least && number <= range.most;
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
