// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_options.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"
#include "manager_results.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t originStatic = 1;

/* Selects fields. */
void select(const GivenOption &given, LanChange &change, std::uint32_t bits, unsigned word = 0)
{
    mark(given, change.bits[word], bits);
}

constexpr Word originWords[] = {{"static", originStatic}, {"dhcp", NW_ADDR_ORIGIN_DHCP}};

void setWord(const GivenOption &given, LanChange &change, std::uint32_t bit, std::uint8_t &field,
             std::span<const Word> words)
{
    const std::uint8_t value = wordValue(given, words);
    select(given, change, bit);
    field = value;
}

template <typename Address>
void store(const Address &address, std::uint8_t (&field)[std::tuple_size_v<Address>])
{
    std::ranges::copy(address, field);
}

constexpr const char *addressOrSwitch = "ADDR/LEN, on or off";

template <typename Address>
using Parse = std::optional<Address> (*)(const std::string &);
template <typename Address>
using WhyNot = std::optional<std::string> (*)(const Address &);

template <typename Address>
struct Prefixed {
    Address address;
    unsigned prefix;
};

/* The host address and prefix length (1 to all bits) of the text ADDR/LEN. */
template <typename Address>
Prefixed<Address> prefixedHost(const GivenOption &given, std::string_view text,
                               Parse<Address> parse, const std::string &expected)
{
    constexpr unsigned max = std::tuple_size_v<Address> * 8;
    const auto slash = text.find('/');
    const auto address = parse(std::string(text.substr(0, slash)));
    if (!address) {
        misused(given, "expected " + expected);
    }
    if (slash == std::string::npos) {
        misused(given, "the prefix length is missing, expected ADDR/LEN");
    }

    const auto prefix = parseNumber(text.substr(slash + 1), max);
    if (!prefix || *prefix == 0) {
        misused(given, "the prefix length is not a number from 1 to " + std::to_string(max));
    }
    refuseFor(given, whyNotHost(*address));
    return {*address, *prefix};
}

/* ADDR, or "off" for the all-zero address. */
template <typename Address>
void setGateway(const GivenOption &given, LanChange &change, std::uint32_t bit,
                std::uint8_t (&field)[std::tuple_size_v<Address>], Parse<Address> parse,
                WhyNot<Address> whyNot)
{
    const bool off = given.value == "off";
    const auto address = off ? Address{} : parse(given.value);
    if (!address) {
        misused(given, "expected an address of the family or off");
    }
    if (!off) {
        refuseFor(given, whyNot(*address));
    }
    select(given, change, bit);
    store(*address, field);
}

bool isSwitch(const GivenOption &given)
{
    return findWord(switchWords, given.value) != nullptr;
}

void setLan(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_LAN_ENABLE, change.fields.ucLanEnable, switchWords);
}

void setIpv4(const GivenOption &given, LanChange &change)
{
    NW_LAN_SET_PORT_S &fields = change.fields;
    if (isSwitch(given)) {
        setWord(given, change, NW_LAN_BIT_IPV4_ENABLE, fields.ucIpv4Enable, switchWords);
        return;
    }
    const auto [address, prefix] = prefixedHost(given, given.value, parseIpv4, addressOrSwitch);
    const Ipv4 mask = maskOfPrefix(prefix);
    refuseFor(given, whyNotMask(mask));

    select(given, change, NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK);
    store(address, fields.aucIpv4Addr);
    store(mask, fields.aucIpv4Mask);
}

void setIpv4Gateway(const GivenOption &given, LanChange &change)
{
    setGateway<Ipv4>(given, change, NW_LAN_BIT_IPV4_GATEWAY, change.fields.aucIpv4Gateway,
                     parseIpv4, whyNotHost);
}

void setIpv4Origin(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_IPV4_TYPE, change.fields.ucIpv4Type, originWords);
}

void setIpv6(const GivenOption &given, LanChange &change)
{
    NW_LAN_SET_PORT_S &fields = change.fields;
    if (isSwitch(given)) {
        setWord(given, change, NW_LAN_BIT_IPV6_ENABLE, fields.ucIpv6Enable, switchWords);
        return;
    }
    const auto [address, prefix] = prefixedHost(given, given.value, parseIpv6, addressOrSwitch);
    select(given, change, NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
    store(address, fields.aucIpv6Addr);
    fields.ucIpv6Prefix = static_cast<std::uint8_t>(prefix);
}

void setIpv6Gateway(const GivenOption &given, LanChange &change)
{
    setGateway<Ipv6>(given, change, NW_LAN_BIT_IPV6_GATEWAY, change.fields.aucIpv6Gateway,
                     parseIpv6, whyNotRouter);
}

void setIpv6Origin(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_IPV6_TYPE, change.fields.ucIpv6Type, originWords);
}

template <typename Address>
struct GivenRoute {
    Prefixed<Address> destination{};
    Address gateway{};
};

/* DEST/LEN,GATEWAY, or "off" for zeros in every field. */
template <typename Address>
GivenRoute<Address> givenRoute(const GivenOption &given, Parse<Address> parse,
                               WhyNot<Address> whyNotGateway)
{
    constexpr const char *expected = "DEST/LEN,GATEWAY of the family or off";
    if (given.value == "off") {
        return {};
    }
    const std::string_view text = given.value;
    const auto comma = text.find(',');
    const auto gateway =
        comma == text.npos ? std::nullopt : parse(std::string(text.substr(comma + 1)));
    if (!gateway) {
        misused(given, std::string("expected ") + expected);
    }
    const auto destination = prefixedHost(given, text.substr(0, comma), parse, expected);
    refuseFor(given, whyNotGateway(*gateway));
    return {destination, *gateway};
}

/* number: 0 or 1; the second route's bits stand above the first one's. */
template <unsigned number>
void setIpv4Route(const GivenOption &given, LanChange &change)
{
    constexpr std::uint32_t bits =
        NW_LAN_BIT_IPV4_ROUTE1_ADDR | NW_LAN_BIT_IPV4_ROUTE1_MASK | NW_LAN_BIT_IPV4_ROUTE1_GATEWAY;
    const auto [destination, gateway] = givenRoute<Ipv4>(given, parseIpv4, whyNotHost);
    const Ipv4 mask = maskOfPrefix(destination.prefix);
    refuseFor(given, whyNotMask(mask));

    auto &route = change.fields.astIpv4Route[number];
    select(given, change, bits << (3 * number), 1);
    store(destination.address, route.aucAddr);
    store(mask, route.aucMask);
    store(gateway, route.aucGateway);
}

template <unsigned number>
void setIpv6Route(const GivenOption &given, LanChange &change)
{
    constexpr std::uint32_t bits = NW_LAN_BIT_IPV6_ROUTE1_ADDR | NW_LAN_BIT_IPV6_ROUTE1_PREFIX |
                                   NW_LAN_BIT_IPV6_ROUTE1_GATEWAY;
    const auto [destination, gateway] = givenRoute<Ipv6>(given, parseIpv6, whyNotRouter);

    auto &route = change.fields.astIpv6Route[number];
    select(given, change, bits << (3 * number));
    store(destination.address, route.aucAddr);
    route.ucPrefix = static_cast<std::uint8_t>(destination.prefix);
    store(gateway, route.aucGateway);
}

/* clang-format off */
constexpr const char *routeValue = "DEST/LEN,GATEWAY|off";
constexpr LanOption rows[] = {
    {"--lan",           "on|off",          "switch the port",                        Subject::none, setLan},
    {"--ipv4",          "ADDR/LEN|on|off", "IPv4 address with its mask, or switch IPv4", Subject::ipv4, setIpv4},
    {"--ipv4-gateway",  "ADDR|off",        "IPv4 default gateway",                   Subject::ipv4, setIpv4Gateway},
    {"--ipv4-origin",   "static|dhcp",     "where the IPv4 address comes from",      Subject::ipv4, setIpv4Origin},
    {"--ipv4-route1",   routeValue,        "first IPv4 static route",                Subject::ipv4, setIpv4Route<0>},
    {"--ipv4-route2",   routeValue,        "second IPv4 static route",               Subject::ipv4, setIpv4Route<1>},
    {"--ipv6",          "ADDR/LEN|on|off", "IPv6 address with its prefix length, or switch IPv6", Subject::ipv6, setIpv6},
    {"--ipv6-gateway",  "ADDR|off",        "IPv6 default gateway",                   Subject::ipv6, setIpv6Gateway},
    {"--ipv6-origin",   "static|dhcp",     "where the IPv6 address comes from",      Subject::ipv6, setIpv6Origin},
    {"--ipv6-route1",   routeValue,        "first IPv6 static route",                Subject::ipv6, setIpv6Route<0>},
    {"--ipv6-route2",   routeValue,        "second IPv6 static route",               Subject::ipv6, setIpv6Route<1>},
};
/* clang-format on */

/* What was found wrong, and an option that would have said so; the first of those given counts. */
struct Cause {
    NW_RESULT result;
    const char *option;
};

constexpr Cause cause(bmc::manager::Result result, const char *option)
{
    return {static_cast<NW_RESULT>(result), option};
}

using bmc::manager::Result;
constexpr Cause causes[] = {
    cause(Result::badIpv4Address, "--ipv4"),
    cause(Result::badIpv4Mask, "--ipv4"),
    cause(Result::badIpv4Gateway, "--ipv4-gateway"),
    cause(Result::gatewayOutside, "--ipv4-gateway"),
    cause(Result::badIpv4Route, "--ipv4-route1"),
    cause(Result::badIpv4Route, "--ipv4-route2"),
    cause(Result::badIpv6Address, "--ipv6"),
    cause(Result::badIpv6Prefix, "--ipv6"),
    cause(Result::badIpv6Gateway, "--ipv6-gateway"),
    cause(Result::badIpv6Route, "--ipv6-route1"),
    cause(Result::badIpv6Route, "--ipv6-route2"),
    cause(Result::badVlanId, "--vlan"),
    cause(Result::badVlanPriority, "--vlan-priority"),
    {NW_ERR_IPV4_ROUTE1, "--ipv4-route1"},
    {NW_ERR_IPV4_ROUTE1_GATEWAY, "--ipv4-route1"},
    {NW_ERR_IPV4_ROUTE2, "--ipv4-route2"},
    {NW_ERR_IPV4_ROUTE2_GATEWAY, "--ipv4-route2"},
    {NW_ERR_IPV6_ROUTE1, "--ipv6-route1"},
    {NW_ERR_IPV6_ROUTE1_GATEWAY, "--ipv6-route1"},
    {NW_ERR_IPV6_ROUTE2, "--ipv6-route2"},
    {NW_ERR_IPV6_ROUTE2_GATEWAY, "--ipv6-route2"},
};

const GivenOption *findGiven(std::span<const GivenOption> given, const char *name)
{
    const auto option = std::ranges::find(given, name, &GivenOption::name);
    return option == given.end() ? nullptr : &*option;
}

} // namespace

std::span<const LanOption> lanOptions()
{
    static const std::vector<LanOption> all = [] {
        std::vector<LanOption> options(std::begin(rows), std::end(rows));
        for (const auto group : {vlanOptions(), headerOptions(), arpOptions()}) {
            options.insert(options.end(), group.begin(), group.end());
        }
        return options;
    }();
    return all;
}

LanChange buildLanChange(unsigned port, std::span<const GivenOption> given)
{
    return buildChange<LanChange>(lanOptions(), given, LanChange{.port = port});
}

const GivenOption *optionAbout(NW_RESULT result, std::span<const GivenOption> given)
{
    Subject subject = describeResult(result).subject;
    for (const Cause &cause : causes) {
        const GivenOption *option = findGiven(given, cause.option);
        if (cause.result == result && option != nullptr) {
            return option;
        }
        if (cause.result == result) {
            subject =
                std::ranges::find(lanOptions(), std::string_view(cause.option), &LanOption::name)
                    ->subject;
        }
    }

    for (const LanOption &row : lanOptions()) {
        const GivenOption *option = findGiven(given, row.name);
        if (subject != Subject::none && row.subject == subject && option != nullptr) {
            return option;
        }
    }
    return nullptr;
}

} // namespace nwctl
