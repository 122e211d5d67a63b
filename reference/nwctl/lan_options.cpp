#include "lan_options.hpp"

#include <algorithm>
#include <cstring>

#include "addresses.hpp"
#include "failure.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t originStatic = 1;
constexpr unsigned vlanIdMax = 4094;
constexpr unsigned vlanPriorityMax = 7;

[[noreturn]] void misused(const GivenOption &given, const std::string &reason)
{
    throw Failure(Exit::usage, given.name, given.value, reason);
}

/* Refuses the option for the reason, if there is one. */
void refuseFor(const GivenOption &given, const std::optional<std::string> &reason)
{
    if (reason) {
        throw Failure(Exit::refused, given.name, given.value, *reason, NW_ERR_OUT_OF_RANGE);
    }
}

/* Selects fields of word 0; a field has one new value at most. */
void select(const GivenOption &given, LanChange &change, std::uint32_t bits)
{
    if ((change.bits[0] & bits) != 0) {
        misused(given, "contradicts another value for the same setting");
    }
    change.bits[0] |= bits;
}

struct Word {
    std::string_view text;
    std::uint8_t value;
};
constexpr Word switchWords[] = {{"off", 0}, {"on", 1}};
constexpr Word originWords[] = {{"static", originStatic}, {"dhcp", NW_ADDR_ORIGIN_DHCP}};

const Word *findWord(std::span<const Word> words, const std::string &text)
{
    const auto word = std::ranges::find(words, text, &Word::text);
    return word == words.end() ? nullptr : &*word;
}

void setWord(const GivenOption &given, LanChange &change, std::uint32_t bit, std::uint8_t &field,
             std::span<const Word> words)
{
    const Word *word = findWord(words, given.value);
    if (word == nullptr) {
        misused(given,
                "expected " + std::string(words[0].text) + " or " + std::string(words[1].text));
    }
    select(given, change, bit);
    field = word->value;
}

template <typename Address>
void store(const Address &address, std::uint8_t (&field)[std::tuple_size_v<Address>])
{
    std::ranges::copy(address, field);
}

/* ADDR/LEN with a prefix length of 1 to max. */
template <typename Address>
struct Prefixed {
    Address address;
    unsigned prefix;
};

template <typename Address>
Prefixed<Address> parsePrefixed(const GivenOption &given,
                                std::optional<Address> (*parse)(const std::string &))
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
    return {*address, *prefix};
}

/* ADDR, or "off" for the all-zero address. */
template <typename Address>
Address parseGateway(const GivenOption &given, std::optional<Address> (*parse)(const std::string &),
                     std::optional<std::string> (*whyNot)(const Address &))
{
    if (given.value == "off") {
        return Address{};
    }
    const auto address = parse(given.value);
    if (!address) {
        misused(given, "expected an address of the family or off");
    }
    refuseFor(given, whyNot(*address));
    return *address;
}

void setLan(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_LAN_ENABLE, change.fields.ucLanEnable, switchWords);
}

void setIpv4(const GivenOption &given, LanChange &change)
{
    if (findWord(switchWords, given.value) != nullptr) {
        setWord(given, change, NW_LAN_BIT_IPV4_ENABLE, change.fields.ucIpv4Enable, switchWords);
        return;
    }
    const auto [address, prefix] = parsePrefixed(given, parseIpv4);
    const Ipv4 mask = maskOfPrefix(prefix);
    refuseFor(given, whyNotHost(address));
    refuseFor(given, whyNotMask(mask));

    select(given, change, NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK);
    store(address, change.fields.aucIpv4Addr);
    store(mask, change.fields.aucIpv4Mask);
}

void setIpv4Gateway(const GivenOption &given, LanChange &change)
{
    const Ipv4 gateway = parseGateway<Ipv4>(given, parseIpv4, whyNotHost);
    select(given, change, NW_LAN_BIT_IPV4_GATEWAY);
    store(gateway, change.fields.aucIpv4Gateway);
}

void setIpv4Origin(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_IPV4_TYPE, change.fields.ucIpv4Type, originWords);
}

void setIpv6(const GivenOption &given, LanChange &change)
{
    if (findWord(switchWords, given.value) != nullptr) {
        setWord(given, change, NW_LAN_BIT_IPV6_ENABLE, change.fields.ucIpv6Enable, switchWords);
        return;
    }
    const auto [address, prefix] = parsePrefixed(given, parseIpv6);
    refuseFor(given, whyNotHost(address));

    select(given, change, NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
    store(address, change.fields.aucIpv6Addr);
    change.fields.ucIpv6Prefix = static_cast<std::uint8_t>(prefix);
}

void setIpv6Gateway(const GivenOption &given, LanChange &change)
{
    const Ipv6 gateway = parseGateway<Ipv6>(given, parseIpv6, whyNotRouter);
    select(given, change, NW_LAN_BIT_IPV6_GATEWAY);
    store(gateway, change.fields.aucIpv6Gateway);
}

void setIpv6Origin(const GivenOption &given, LanChange &change)
{
    setWord(given, change, NW_LAN_BIT_IPV6_TYPE, change.fields.ucIpv6Type, originWords);
}

void setVlan(const GivenOption &given, LanChange &change)
{
    const bool off = given.value == "off";
    const auto id = off ? 0U : parseNumber(given.value, vlanIdMax);
    if (!id || (*id == 0 && !off)) {
        misused(given, "expected off or a number from 1 to " + std::to_string(vlanIdMax));
    }
    select(given, change, NW_LAN_BIT_VLAN_ENABLE | NW_LAN_BIT_VLAN_ID);
    change.fields.ucVlanEnable = off ? 0 : 1;
    change.fields.usVlanid = static_cast<std::uint16_t>(*id);
}

void setVlanPriority(const GivenOption &given, LanChange &change)
{
    const auto priority = parseNumber(given.value, vlanPriorityMax);
    if (!priority) {
        misused(given, "expected a number from 0 to " + std::to_string(vlanPriorityMax));
    }
    select(given, change, NW_LAN_BIT_VLAN_PRIORITY);
    change.fields.ucVlanPriority = static_cast<std::uint8_t>(*priority);
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
    {"--vlan",          "ID|off",          "VLAN of the port, 1 to 4094",            Subject::none, setVlan},
    {"--vlan-priority", "N",               "VLAN priority, 0 to 7",                  Subject::none, setVlanPriority},
};
/* clang-format on */

} // namespace

std::span<const LanOption> lanOptions()
{
    return rows;
}

LanChange buildLanChange(unsigned port, std::span<const GivenOption> given)
{
    LanChange change{.port = port};
    for (const LanOption &row : rows) {
        for (const GivenOption &option : given) {
            if (option.name == row.name) {
                row.apply(option, change);
            }
        }
    }
    if (given.empty()) {
        throw Failure(Exit::usage, "", "", "nothing to change: give at least one setting");
    }
    return change;
}

const GivenOption *optionAbout(Subject subject, std::span<const GivenOption> given)
{
    for (const LanOption &row : rows) {
        if (subject == Subject::none || row.subject != subject) {
            continue;
        }
        const auto option = std::ranges::find(given, row.name, &GivenOption::name);
        if (option != given.end()) {
            return &*option;
        }
    }
    return nullptr;
}

} // namespace nwctl
