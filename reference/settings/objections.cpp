// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/objections.hpp"

#include <span>

#include <sys/socket.h>

#include "network_mng/check.h"

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

std::optional<std::string> whyNotHost(int family, const std::uint8_t *address)
{
    return family == AF_INET
               ? firstObjection(ipv4Objections, LIB_NW_CheckV4IsValid, NW_V4CHK_HOST, address)
               : firstObjection(ipv6Objections, LIB_NW_CheckV6IsValid, NW_V6CHK_ALL, address);
}

std::optional<std::string> whyNotMask(const std::uint8_t *mask)
{
    return firstObjection(maskObjections, LIB_NW_CheckV4IsValid, NW_V4CHK_NETMASK, mask);
}

} // namespace bmc::settings
