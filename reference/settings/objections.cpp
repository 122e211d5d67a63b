// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/addresses.hpp"

#include <bit>
#include <charconv>
#include <numeric>
#include <span>

#include <arpa/inet.h>

#include "network_mng/check.h"
#include "settings/detail/checks.hpp"

namespace bmc::settings {

namespace {

/* One entry of a check and what it means when the check refuses a value for it. */
struct Objection {
    std::uint32_t flag;
    const char *reason;
};

constexpr Objection ipv4Objections[] = {
    {NW_V4CHK_ALL_ZERO, "the all-zero address"},
    {NW_V4CHK_LOOPBACK, "a loopback address"},
    {NW_V4CHK_D_OR_E, "a multicast or reserved address"},
    {NW_V4CHK_FIRST_ZERO, "an address of network 0"},
};

constexpr Objection maskObjections[] = {
    {NW_V4CHK_FIRST_FF, "the first byte of a mask is 255, or the mask is 0.0.0.0"},
    {NW_V4CHK_MASK, "the ones of the mask are not contiguous"},
};

constexpr Objection ipv6Objections[] = {
    {NW_V6CHK_ALL_ZERO, "the all-zero address"},
    {NW_V6CHK_LOOPBACK, "the loopback address"},
    {NW_V6CHK_MULTICAST, "a multicast address"},
    {NW_V6CHK_SITELOCAL, "a site-local address"},
    {NW_V6CHK_LINKLOCAL, "a link-local address"},
    {NW_V6CHK_V4MAPPED, "an IPv4-mapped address"},
    {NW_V6CHK_V4COMPAT, "an IPv4-compatible address"},
};

using Check = std::uint32_t (*)(std::uint32_t flags, const std::uint8_t *address);

std::optional<std::string> firstObjection(std::span<const Objection> objections, Check check,
                                          std::uint32_t flags, const std::uint8_t *address)
{
    for (const Objection &objection : objections) {
        if (check(objection.flag & flags, address) == 0) {
            return objection.reason;
        }
    }
    return std::nullopt;
}

} // namespace

std::size_t addressSize(int family)
{
    return family == AF_INET ? NW_IPV4_SIZE : NW_IPV6_SIZE;
}

std::optional<Bytes> parseAddress(int family, std::string_view text)
{
    Bytes address(addressSize(family));
    const bool isWhole = text.find('\0') == std::string_view::npos;
    if (!isWhole || inet_pton(family, std::string(text).c_str(), address.data()) != 1) {
        return std::nullopt;
    }
    return address;
}

std::string addressText(int family, const std::uint8_t *address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    inet_ntop(family, address, text.data(), text.size());
    return text.data();
}

std::optional<unsigned> parseNumber(std::string_view text, unsigned most)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    if (error != std::errc{} || end != text.end() || number > most) {
        return std::nullopt;
    }
    return number;
}

Bytes maskOf(unsigned prefix)
{
    Bytes mask(NW_IPV4_SIZE);
    for (unsigned bit = 0; bit < prefix; ++bit) {
        mask[bit / 8] = static_cast<std::uint8_t>(mask[bit / 8] | (0x80U >> (bit % 8)));
    }
    return mask;
}

unsigned prefixOf(const std::uint8_t *mask)
{
    return std::accumulate(mask, mask + NW_IPV4_SIZE, 0U, [](unsigned ones, std::uint8_t byte) {
        return ones + static_cast<unsigned>(std::popcount(byte));
    });
}

std::optional<std::string> whyNotHost(int family, const std::uint8_t *address)
{
    return family == AF_INET
               ? firstObjection(ipv4Objections, LIB_NW_CheckV4IsValid, NW_V4CHK_HOST, address)
               : firstObjection(ipv6Objections, LIB_NW_CheckV6IsValid, NW_V6CHK_ALL, address);
}

std::optional<std::string> whyNotRouter(int family, const std::uint8_t *address)
{
    return family == AF_INET
               ? whyNotHost(family, address)
               : firstObjection(ipv6Objections, LIB_NW_CheckV6IsValid, gatewayChecksV6, address);
}

std::optional<std::string> whyNotMask(const std::uint8_t *mask)
{
    return firstObjection(maskObjections, LIB_NW_CheckV4IsValid, NW_V4CHK_NETMASK, mask);
}

} // namespace bmc::settings
