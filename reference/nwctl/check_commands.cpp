// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "check": the rules that settings obey, for a text or for a port's stored routes. */
#include <cstring>

#include "common/address.hpp"
#include "common/text.hpp"
#include "network_mng/check.h"
#include "nwctl/stored.hpp"
#include "settings/objections.hpp"
#include "settings/wireless.hpp"

#include <sys/socket.h>

namespace nwctl {

namespace {

namespace settings = bmc::settings;

/* What the library's checks say of a text. */
struct Verdict {
    bool isValid;
    std::string detail; /* what the text is, or why it is refused */
};

Verdict refused(const std::optional<std::string> &reason)
{
    return {false, reason.value_or("refused by the library")};
}

Verdict refusedAddress(const std::string &text)
{
    for (const int family : {AF_INET, AF_INET6}) {
        if (const auto address = bmc::parseAddress(family, text)) {
            return refused(settings::whyNotHost(family, address->bytes.data()));
        }
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
    const auto mask = bmc::parseAddress(AF_INET, text);
    if (!mask) {
        return {false, "not four bytes in dotted form"};
    }
    if (LIB_NW_CheckV4IsValid(NW_V4CHK_NETMASK, mask->bytes.data()) == 0) {
        return refused(settings::whyNotMask(mask->bytes.data()));
    }
    return {true,
            "IPv4 mask of prefix length " + std::to_string(bmc::prefixOf(mask->bytes.data()))};
}

Verdict checkHost(const std::string &text)
{
    constexpr std::size_t longest = sizeof(NW_HOSTNAME_DB_INFO_S::szBmcHostName);
    if (text.size() > longest) {
        return {false, "longer than " + std::to_string(longest) + " characters"};
    }
    if (LIB_NW_CheckHostName(text.c_str()) == 0) {
        return {false, settings::nameRule};
    }
    return {true, "host name"};
}

Verdict checkDomain(const std::string &text)
{
    if (LIB_NW_DomainValidityCheck(text.c_str()) == 0) {
        return {false, settings::domainRule};
    }
    return {true, text.empty() ? "no domain" : "domain"};
}

Verdict checkMac(const std::string &text)
{
    std::uint8_t address[NW_MAC_SIZE]{};
    if (LIB_NW_CovMacStrToNet(text.c_str(), address) != NW_OK) {
        return {false, "not six bytes in the form xx:xx:xx:xx:xx:xx"};
    }
    if (LIB_NW_CkeckIsValidMac(address) == 0) {
        constexpr std::uint8_t zeros[NW_MAC_SIZE]{};
        const bool isZero = std::memcmp(address, zeros, sizeof(zeros)) == 0;
        return {false, isZero ? "the all-zero address" : "a group address"};
    }
    return {true, "MAC address " + macText(address)};
}

/* A kind of text that can be checked. */
struct CheckKind {
    const char *name;
    const char *description;
    const char *example; /* a text to show in the help */
    Verdict (*check)(const std::string &text);
};

/* clang-format off */
constexpr CheckKind kinds[] = {
    {"address", "an IPv4 or IPv6 address that a port may have", "192.168.10.2",      checkAddress},
    {"mask",    "an IPv4 mask",                                 "255.255.255.0",     checkMask},
    {"host",    "a host name",                                  "bmc-1",             checkHost},
    {"domain",  "a domain name",                                "rack1.example.net", checkDomain},
    {"mac",     "the MAC address of a port",                    "52:54:00:12:34:56", checkMac},
};
/* clang-format on */

void check(const CheckKind &kind, const std::string &text, Session &session)
{
    const Verdict verdict = kind.check(text);
    session.answer(
        {line(text + ": " + (verdict.isValid ? "valid, " : "not valid, ") + verdict.detail),
         hidden("kind", kind.name), hidden("text", text), hidden("valid", verdict.isValid),
         hidden("detail", verdict.detail)});
    session.status = verdict.isValid ? Exit::success : Exit::refused;
}

struct CheckResult {
    const char *check;
    NW_RESULT result;
};

NW_WIFI_ADDR_S wirelessToCheck()
{
    const auto wireless = settings::knownWireless();
    if (!wireless) {
        constexpr auto unknown = static_cast<NW_RESULT>(settings::Result::wirelessUnknown);
        throw Failure(Exit::internal, "", "", "the check cannot be made", unknown);
    }
    return *wireless;
}

/* Of the stored record: the port's addresses, then its static routes. */
std::vector<CheckResult> checkStored(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    constexpr std::uint32_t addresses = NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;
    constexpr std::uint32_t routes = NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2 |
                                     NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2;
    const NW_LAN_CFG_DB_INFO_S record = readLanRecord();
    const NW_WIFI_ADDR_S wireless = wirelessToCheck();
    const std::uint32_t ports = 1U << port; /* NW_PORTSET_* */
    return {{"addresses", LIB_NW_CheckIPv4v6SameSegment(interfaces.ucIfcState, ports, addresses,
                                                        &wireless, &record)},
            {"routes", LIB_NW_CheckIPv4v6RouteSameSegment(interfaces.ucIfcState, ports, routes,
                                                          &wireless, &record)}};
}

Row resultRow(const std::string &port, const CheckResult &row)
{
    const bool isValid = row.result == NW_OK;
    Rows rows{hidden("check", row.check), hidden("valid", isValid)};
    for (Row &part : codeRows(isValid ? std::nullopt : std::optional(row.result))) {
        rows.push_back(std::move(part));
    }
    return {.value = Object{std::move(rows)},
            .text =
                port + ": " + row.check + ": " + (isValid ? "no conflict" : explained(row.result))};
}

void checkRoutes(const Arguments &arguments, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const NamedPort port = namedPort(interfaces, arguments.value("PORT"));
    requireServed(interfaces, port.index);

    List results;
    for (const CheckResult &row : checkStored(interfaces, port.index)) {
        results.rows.push_back(resultRow(port.name, row));
        session.status = row.result == NW_OK ? session.status : Exit::refused;
    }
    session.answer({hidden("port", port.name),
                    hidden("index", port.index),
                    hidden("valid", session.status == Exit::success),
                    {.key = "checks", .value = std::move(results)}});
}

} // namespace

void addCheckCommands(std::vector<Command> &commands)
{
    for (const CheckKind &kind : kinds) {
        commands.push_back({"check",
                            kind.name,
                            std::string("Is the text ") + kind.description + "?",
                            std::string("check ") + kind.name + " " + kind.example,
                            {{Parameter::Kind::required, "TEXT", kind.description}},
                            [&kind](const Arguments &arguments, Session &session) {
                                check(kind, arguments.value("TEXT"), session);
                            }});
    }
    commands.push_back({"check",
                        "routes",
                        "Do the port's stored addresses and routes meet another's?",
                        "check routes eth1",
                        {portParameter()},
                        inSnapshot(checkRoutes)});
}

} // namespace nwctl
