// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "addresses.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "network_mng/check.h"

namespace nwctl {

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

template <typename Address>
std::optional<Address> parseAddress(int family, const std::string &text)
{
    Address address{};
    const bool whole = text.find('\0') == std::string::npos;
    if (!whole || inet_pton(family, text.c_str(), address.data()) != 1) {
        return std::nullopt;
    }
    return address;
}

template <typename Address>
std::string addressText(int family, const Address &address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    inet_ntop(family, address.data(), text.data(), text.size());
    return text.data();
}

} // namespace

std::optional<Ipv4> parseIpv4(const std::string &text)
{
    return parseAddress<Ipv4>(AF_INET, text);
}

std::optional<Ipv6> parseIpv6(const std::string &text)
{
    return parseAddress<Ipv6>(AF_INET6, text);
}

std::optional<unsigned> parseNumber(std::string_view text, unsigned max)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);

    if (error != std::errc{} || end != text.end() || number > max) {
        return std::nullopt;
    }
    return number;
}

std::string formatAddress(const Ipv4 &address)
{
    return addressText(AF_INET, address);
}

std::string formatAddress(const Ipv6 &address)
{
    return addressText(AF_INET6, address);
}

std::string formatMac(const Mac &address)
{
    std::array<char, sizeof("00:11:22:33:44:55")> text{};
    std::snprintf(text.data(), text.size(), "%02x:%02x:%02x:%02x:%02x:%02x", address[0], address[1],
                  address[2], address[3], address[4], address[5]);
    return text.data();
}

Ipv4 maskOfPrefix(unsigned prefix)
{
    Ipv4 mask{};
    for (unsigned bit = 0; bit < prefix; ++bit) {
        mask[bit / 8] |= static_cast<std::uint8_t>(0x80U >> (bit % 8));
    }
    return mask;
}

unsigned prefixOfMask(const Ipv4 &mask)
{
    /* The byte behind an all-ones mask is read too. */
    std::array<std::uint8_t, NW_IPV4_SIZE + 1> bytes{};
    std::ranges::copy(mask, bytes.begin());
    return CalNETPrefix(bytes.data(), NW_IPV4_SIZE);
}

std::optional<std::string> whyNotHost(const Ipv4 &address)
{
    return firstObjection(ipv4Objections, LIB_NW_CheckV4IsValid, NW_V4CHK_HOST, address.data());
}

std::optional<std::string> whyNotMask(const Ipv4 &mask)
{
    return firstObjection(maskObjections, LIB_NW_CheckV4IsValid, NW_V4CHK_NETMASK, mask.data());
}

std::optional<std::string> whyNotHost(const Ipv6 &address)
{
    return firstObjection(ipv6Objections, LIB_NW_CheckV6IsValid, NW_V6CHK_ALL, address.data());
}

std::optional<std::string> whyNotRouter(const Ipv6 &address)
{
    constexpr std::uint32_t flags = NW_V6CHK_ALL & ~std::uint32_t{NW_V6CHK_LINKLOCAL};
    return firstObjection(ipv6Objections, LIB_NW_CheckV6IsValid, flags, address.data());
}

} // namespace nwctl
