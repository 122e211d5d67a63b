// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/lan_view.hpp"

#include <algorithm>
#include <cstring>

#include <nlohmann/json.hpp>

#include "common/text.hpp"
#include "settings/value.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;

constexpr std::uint8_t enabled = 1;

using MaybeText = std::optional<std::string>;

template <std::size_t Size>
MaybeText maybe(const char (&field)[Size])
{
    std::string text = bmc::boundedText(field);
    return text.empty() ? MaybeText{} : MaybeText{std::move(text)};
}

/* In the words of the setting; a record that was never set up has the first one. */
std::string originName(const char *key, std::uint8_t origin)
{
    const auto &words = settings::findSetting(settings::Section::lan, key)->kind->words;
    const std::uint32_t value = origin == 0 ? words.front().value : origin;
    const std::string_view word = settings::wordOf(words, value);
    return word.empty() ? "origin " + std::to_string(origin) : std::string(word);
}

const char *stateName(const NW_ETHER_INS_INFO_S &info, unsigned slot)
{
    if (info.ucIpv6Enable != enabled) {
        return "not checked";
    }
    switch (info.astIpv6AddrState[slot].ucState) {
    case NW_IPV6_ADDR_TENTATIVE:
        return "tentative";
    case NW_IPV6_ADDR_DAD_FAILED:
        return "duplicate";
    case NW_IPV6_ADDR_VALID:
        return "valid";
    default:
        return "unknown";
    }
}

/* What is not told while the family is off. */
Value whenOn(bool isOn, Value value)
{
    return isOn ? std::move(value) : Value();
}

/* A line where the family is on, otherwise for programs alone. */
Row lineWhenOn(bool isOn, std::string label, std::string key, const MaybeText &text)
{
    return {isOn ? std::move(label) : "", std::move(key), whenOn(isOn, Value(text))};
}

/* The second of two, shown where there is one. */
Row furtherLine(bool isOn, const std::string &label, std::string key, const MaybeText &text)
{
    return {isOn && text ? label : "", std::move(key), whenOn(isOn, Value(text))};
}

std::string familyText(bool isOn, const std::string &origin)
{
    return onOff(isOn) + (isOn ? ", " + origin : "");
}

struct Route {
    unsigned number;
    std::uint8_t state;
    MaybeText destination;
    MaybeText gateway;
    Row length; /* mask or prefix length */
    std::string text;
};

List routesOf(bool isOn, std::initializer_list<Route> routes)
{
    List list;
    for (const Route &route : routes) {
        if (!isOn || route.state != enabled) {
            continue;
        }
        list.rows.push_back({.label = "route " + std::to_string(route.number),
                             .value = Object{{hidden("number", route.number),
                                              hidden("destination", route.destination),
                                              route.length, hidden("gateway", route.gateway)}},
                             .text = route.destination.value_or("-") + route.text + " via " +
                                     route.gateway.value_or("-")});
    }
    return list;
}

template <std::size_t A, std::size_t B, std::size_t C>
Route ipv4Route(unsigned number, std::uint8_t state, const char (&destination)[A],
                const char (&mask)[B], const char (&gateway)[C])
{
    const std::string maskText = bmc::boundedText(mask);
    return {number,
            state,
            bmc::boundedText(destination),
            bmc::boundedText(gateway),
            hidden("mask", maskText),
            " mask " + maskText};
}

template <std::size_t A, std::size_t C>
Route ipv6Route(unsigned number, std::uint8_t state, const char (&destination)[A],
                std::uint8_t prefix, const char (&gateway)[C])
{
    return {number,
            state,
            maybe(destination),
            maybe(gateway),
            hidden("prefix", prefix),
            "/" + std::to_string(prefix)};
}

Row ipv4Row(const NW_ETHER_INS_INFO_S &info)
{
    const bool isOn = info.ucIpv4Enable == enabled;
    const std::string origin = originName("ipv4-origin", info.ucIpv4Type);
    Rows rows{
        hidden("enabled", isOn),
        hidden("origin", whenOn(isOn, origin)),
        lineWhenOn(isOn, "address", "address", maybe(info.szIpv4Addr)),
        lineWhenOn(isOn, "mask", "mask", maybe(info.szIpv4Mask)),
        lineWhenOn(isOn, "gateway", "gateway", maybe(info.szIpv4Gateway)),
        furtherLine(isOn, "address 2", "address2", maybe(info.szIpv4Addr2)),
        {.key = "routes",
         .value = routesOf(isOn, {ipv4Route(1, info.ucIpv4Route1State, info.szIpv4Route1Addr,
                                            info.szIpv4Route1Mask, info.szIpv4Route1Gateway),
                                  ipv4Route(2, info.ucIpv4Route2State, info.szIpv4Route2Addr,
                                            info.szIpv4Route2Mask, info.szIpv4Route2Gateway)})}};
    return {"IPv4", "ipv4", Object{std::move(rows)}, familyText(isOn, origin)};
}

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

struct Ipv6Slot {
    unsigned slot;
    unsigned stateSlot;
    std::optional<unsigned> prefix; /* a link-local address has none */
    const char *kind;
};

void addIpv6Address(const NW_ETHER_INS_INFO_S &info, const Ipv6Slot &slot, List &list)
{
    constexpr std::size_t addressWidth = 28;
    constexpr std::size_t kindWidth = 12;
    const MaybeText address = maybe(info.aszIpv6Addr[slot.slot]);
    if (!address) {
        return;
    }
    const char *state = stateName(info, slot.stateSlot);
    const std::string length = slot.prefix ? "/" + std::to_string(*slot.prefix) : "";
    list.rows.push_back(
        {.label = "address",
         .value = Object{{hidden("address", *address), hidden("prefix", slot.prefix),
                          hidden("kind", slot.kind), hidden("state", state)}},
         .text =
             padded(*address + length, addressWidth) + " " + padded(slot.kind, kindWidth) + state});
}

/* The stored count may promise more addresses than the record holds. */
List ipv6Addresses(const NW_ETHER_INS_INFO_S &info)
{
    const unsigned further = std::min<unsigned>(info.ucIpv6AddrCount, NW_IPV6_FURTHER_COUNT);
    List list;
    addIpv6Address(info,
                   {NW_IPV6_SLOT_STATIC, NW_IPV6_STATE_STATIC, info.aucIpv6PrefixLen[0], "static"},
                   list);
    for (unsigned i = 0; i < further; ++i) {
        addIpv6Address(info,
                       {NW_IPV6_SLOT_FURTHER + i, NW_IPV6_STATE_FURTHER + i,
                        info.aucIpv6PrefixLen[1 + i], "further"},
                       list);
    }
    addIpv6Address(info,
                   {NW_IPV6_SLOT_LINK_LOCAL, NW_IPV6_STATE_LINK_LOCAL, std::nullopt, "link-local"},
                   list);
    return list;
}

Row ipv6Row(const NW_ETHER_INS_INFO_S &info)
{
    const bool isOn = info.ucIpv6Enable == enabled;
    const std::string origin = originName("ipv6-origin", info.ucIpv6Type);
    Rows rows{
        hidden("enabled", isOn),
        hidden("origin", whenOn(isOn, origin)),
        {.key = "addresses", .value = ipv6Addresses(info)},
        lineWhenOn(isOn, "gateway", "gateway", maybe(info.szIpv6Gateway)),
        furtherLine(isOn, "gateway 2", "gateway2", maybe(info.szIpv6Gateway2)),
        {.key = "routes",
         .value = routesOf(isOn, {ipv6Route(1, info.ucIpv6Route1State, info.szIpv6Route1Addr,
                                            info.ucIpv6Route1Prefix, info.szIpv6Route1Gateway),
                                  ipv6Route(2, info.ucIpv6Route2State, info.szIpv6Route2Addr,
                                            info.ucIpv6Route2Prefix, info.szIpv6Route2Gateway)})}};
    return {"IPv6", "ipv6", Object{std::move(rows)}, familyText(isOn, origin)};
}

std::optional<unsigned> vlanIdOf(const NW_ETHER_INS_INFO_S &info)
{
    NW_LAN_CFG_VLAN_S vlan{};
    static_assert(sizeof(vlan) == sizeof(info.aucCfgTail));
    std::memcpy(&vlan, info.aucCfgTail, sizeof(vlan));

    const unsigned id = vlan.usVlanid;
    return id == 0 ? std::nullopt : std::optional{id};
}

/* What the view has places of its own for, and what other commands show. */
bool isShownElsewhere(const settings::Setting &setting)
{
    const std::string_view key = setting.key;
    return setting.showKey == nullptr || key == "lan" || key.starts_with("vlan") ||
           key.starts_with("arp-");
}

void addFurtherSettings(Rows &rows, const PortView &view)
{
    for (const settings::Setting &setting : settings::settingsOf(settings::Section::lan)) {
        if (!isShownElsewhere(setting)) {
            const auto *entry = reinterpret_cast<const std::uint8_t *>(&view.stored);
            rows.push_back(
                {setting.label, setting.showKey, Value(settings::valueAt(entry, setting))});
        }
    }
}

Row conflictsRow(const PortView &view)
{
    List list;
    for (const std::string &family : conflictsOf(view)) {
        list.rows.push_back({.label = "Conflict",
                             .value = family,
                             .text = family == "ipv4"
                                         ? "IPv4: two ports, or a port and the wireless interface, "
                                           "share a segment"
                                         : "IPv6: two ports share a segment"});
    }
    const bool isNone = list.rows.empty();
    return {isNone ? "Conflicts" : "", "conflicts", std::move(list)};
}

} // namespace

PortView readPortView(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    const NW_ETHER_INS_INFO_S info = readPort(interfaces, port);
    return {port, info, readLanRecord().astPort[port]};
}

Rows portRows(const PortView &view)
{
    const NW_ETHER_INS_INFO_S &info = view.info;
    const std::string name = bmc::boundedText(info.szEthName);
    const std::string role(settings::roleOf(view.index));
    const std::optional<unsigned> vlan = vlanIdOf(info);
    Rows rows{line("Port " + name + ", " + role + (view.index == NW_PORT_BOND0 ? "" : " port") +
                   " (index " + std::to_string(view.index) + ", channel " +
                   std::to_string(info.ucChannel) + ")"),
              hidden("port", name),
              hidden("role", role),
              hidden("index", view.index),
              hidden("channel", info.ucChannel),
              {"LAN", "lan", info.ucLanEnable == enabled},
              {"MAC", "mac", maybe(info.szMacAddr)},
              ipv4Row(info),
              ipv6Row(info),
              {"VLAN", "vlan", vlan, vlan ? "" : "none"}};
    addFurtherSettings(rows, view);
    rows.push_back(conflictsRow(view));
    return rows;
}

std::string portSummary(const PortView &view)
{
    const NW_ETHER_INS_INFO_S &info = view.info;
    const bool isOn = info.ucIpv4Enable == enabled;
    const MaybeText ipv4 = isOn ? maybe(info.szIpv4Addr) : std::nullopt;
    std::string addresses = ipv4.value_or("no IPv4");
    for (const Row &row : ipv6Addresses(info).rows) {
        const Rows &address = std::get<Object>(row.value.content()).rows;
        addresses += ", " + std::get<std::string>(address.front().value.content());
    }
    const auto vlan = vlanIdOf(info);
    return "channel " + std::to_string(info.ucChannel) + ", LAN " +
           onOff(info.ucLanEnable == enabled) + ", " + addresses + ", " +
           (vlan ? "VLAN " + std::to_string(*vlan) : "no VLAN");
}

std::vector<std::string> conflictsOf(const PortView &view)
{
    std::vector<std::string> families;
    if ((view.info.ucSameSegment & NW_SAME_SEGMENT_IPV4) != 0) {
        families.emplace_back("ipv4");
    }
    if ((view.info.ucSameSegment & NW_SAME_SEGMENT_IPV6) != 0) {
        families.emplace_back("ipv6");
    }
    return families;
}

} // namespace nwctl
