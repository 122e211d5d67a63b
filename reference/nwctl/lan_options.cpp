#include "lan_options.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"
#include "manager_results.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t originStatic = 1;

/* Selects fields of word 0. */
void select(const GivenOption &given, LanChange &change, std::uint32_t bits)
{
    mark(given, change.bits[0], bits);
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

template <typename Address>
using Parse = std::optional<Address> (*)(const std::string &);
template <typename Address>
using WhyNot = std::optional<std::string> (*)(const Address &);

template <typename Address>
struct Prefixed {
    Address address;
    unsigned prefix;
};

/* The host address and prefix length (1 to all bits) of ADDR/LEN. */
template <typename Address>
Prefixed<Address> prefixedHost(const GivenOption &given, Parse<Address> parse)
{
    constexpr unsigned max = std::tuple_size_v<Address> * 8;
    const auto slash = given.value.find('/');
    const auto address = parse(given.value.substr(0, slash));
    if (!address) {
        misused(given, "expected ADDR/LEN, on or off");
    }
    if (slash == std::string::npos) {
        misused(given, "the prefix length is missing, expected ADDR/LEN");
    }

    const auto prefix = parseNumber(std::string_view(given.value).substr(slash + 1), max);
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
    const auto [address, prefix] = prefixedHost(given, parseIpv4);
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
    const auto [address, prefix] = prefixedHost(given, parseIpv6);
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

/* clang-format off */
constexpr LanOption rows[] = {
    {"--lan",           "on|off",          "switch the port",                        Subject::none, setLan},
    {"--ipv4",          "ADDR/LEN|on|off", "IPv4 address with its mask, or switch IPv4", Subject::ipv4, setIpv4},
    {"--ipv4-gateway",  "ADDR|off",        "IPv4 default gateway",                   Subject::ipv4, setIpv4Gateway},
    {"--ipv4-origin",   "static|dhcp",     "where the IPv4 address comes from",      Subject::ipv4, setIpv4Origin},
    {"--ipv6",          "ADDR/LEN|on|off", "IPv6 address with its prefix length, or switch IPv6", Subject::ipv6, setIpv6},
    {"--ipv6-gateway",  "ADDR|off",        "IPv6 default gateway",                   Subject::ipv6, setIpv6Gateway},
    {"--ipv6-origin",   "static|dhcp",     "where the IPv6 address comes from",      Subject::ipv6, setIpv6Origin},
};
/* clang-format on */

/* What the network manager found wrong, and the option that would have said so. */
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
    cause(Result::badIpv6Address, "--ipv6"),
    cause(Result::badIpv6Prefix, "--ipv6"),
    cause(Result::badIpv6Gateway, "--ipv6-gateway"),
    cause(Result::badVlanId, "--vlan"),
    cause(Result::badVlanPriority, "--vlan-priority"),
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
    const auto cause = std::ranges::find(causes, result, &Cause::result);
    if (cause != std::end(causes)) {
        if (const GivenOption *option = findGiven(given, cause->option)) {
            return option;
        }
        subject = std::ranges::find(lanOptions(), std::string_view(cause->option), &LanOption::name)
                      ->subject;
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
