// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "verdict.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "network_mng/check.h"
#include "network_mng/store.h"

namespace nwctl {

namespace {

constexpr std::size_t hostNameMax = sizeof(NW_HOSTNAME_DB_INFO_S::szBmcHostName);

Verdict refused(const std::optional<std::string> &reason)
{
    return {false, reason.value_or("refused by the library")};
}

Verdict refusedAddress(const std::string &text)
{
    if (const auto address = parseIpv4(text)) {
        return refused(whyNotHost(*address));
    }
    if (const auto address = parseIpv6(text)) {
        return refused(whyNotHost(*address));
    }
    return {false, "neither an IPv4 nor an IPv6 address"};
}

Verdict checkAddress(const std::string &text)
{
    std::uint8_t kind = NW_ADDR_KIND_INVALID;
    LIB_CheckIpv4v6AndDomain(text.c_str(), &kind);

    switch (kind) {
    case NW_ADDR_KIND_IPV4:
        return {true, "IPv4 address"};
    case NW_ADDR_KIND_IPV6:
        return {true, "IPv6 address"};
    default:
        return refusedAddress(text);
    }
}

Verdict checkMask(const std::string &text)
{
    const auto mask = parseIpv4(text);
    if (!mask) {
        return {false, "not four bytes in dotted form"};
    }
    if (LIB_NW_CheckV4IsValid(NW_V4CHK_NETMASK, mask->data()) == 0) {
        return refused(whyNotMask(*mask));
    }
    return {true, "IPv4 mask of prefix length " + std::to_string(prefixOfMask(*mask))};
}

Verdict checkHost(const std::string &text)
{
    if (text.size() > hostNameMax) {
        return {false, "longer than " + std::to_string(hostNameMax) + " characters"};
    }
    if (LIB_NW_CheckHostName(text.c_str()) == 0) {
        return {false, "a host name is made of letters, digits and inner hyphens"};
    }
    return {true, "host name"};
}

Verdict checkDomain(const std::string &text)
{
    if (LIB_NW_DomainValidityCheck(text.c_str()) == 0) {
        return {false, "a domain is made of two labels or more, with points between them: letters, "
                       "digits and inner hyphens, 63 characters a label, 255 in all"};
    }
    return {true, text.empty() ? "no domain" : "domain"};
}

Verdict checkMac(const std::string &text)
{
    Mac address{};
    if (LIB_NW_CovMacStrToNet(text.c_str(), address.data()) != NW_OK) {
        return {false, "not six bytes in the form xx:xx:xx:xx:xx:xx"};
    }
    if (LIB_NW_CkeckIsValidMac(address.data()) == 0) {
        return {false, address == Mac{} ? "the all-zero address" : "a group address"};
    }
    return {true, "MAC address " + formatMac(address)};
}

/* clang-format off */
constexpr CheckKind rows[] = {
    {"address", "an IPv4 or IPv6 address that a port may have", "192.168.10.2",      checkAddress},
    {"mask",    "an IPv4 mask",                                 "255.255.255.0",     checkMask},
    {"host",    "a host name",                                  "bmc-1",             checkHost},
    {"domain",  "a domain name",                                "rack1.example.net", checkDomain},
    {"mac",     "the MAC address of a port",                    "52:54:00:12:34:56", checkMac},
};
/* clang-format on */

} // namespace

std::span<const CheckKind> checkKinds()
{
    return rows;
}

std::optional<std::string> whyNotText(std::string_view kind, const std::string &text)
{
    const Verdict verdict = std::ranges::find(rows, kind, &CheckKind::name)->check(text);
    return verdict.valid ? std::nullopt : std::optional{verdict.detail};
}

} // namespace nwctl
