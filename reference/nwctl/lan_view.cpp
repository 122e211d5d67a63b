// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/lan_view.hpp"

#include <algorithm>
#include <cstring>

#include "common/text.hpp"
#include "nwctl/setting_rows.hpp"

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

/* The second of two, shown where there is one. */
Row furtherRow(bool isOn, const char *label, const char *key, const MaybeText &text)
{
    return {isOn && text ? label : "", key, isOn ? Value(text) : Value()};
}

/* What the library tells beside a setting. */
struct LiveFact {
    std::string_view setting;
    Row (*tell)(const NW_ETHER_INS_INFO_S &info, bool isOn);
};

Row macRow(const NW_ETHER_INS_INFO_S &info, bool)
{
    return {"MAC", "mac", maybe(info.szMacAddr)};
}

Row secondAddressRow(const NW_ETHER_INS_INFO_S &info, bool isOn)
{
    return furtherRow(isOn, "address 2", "address2", maybe(info.szIpv4Addr2));
}

Row addressesRow(const NW_ETHER_INS_INFO_S &info, bool)
{
    return {.key = "addresses", .value = ipv6Addresses(info)};
}

Row secondGatewayRow(const NW_ETHER_INS_INFO_S &info, bool isOn)
{
    return furtherRow(isOn, "gateway 2", "gateway2", maybe(info.szIpv6Gateway2));
}

constexpr LiveFact liveFacts[] = {{"lan", macRow},
                                  {"ipv4-gateway", secondAddressRow},
                                  {"ipv6", addressesRow},
                                  {"ipv6-gateway", secondGatewayRow}};

Rows settingsAndFacts(const PortView &view)
{
    return settingRows(reinterpret_cast<const std::uint8_t *>(&view.stored), "lan",
                       [&](const settings::Setting &setting, bool isOn, Rows &rows) {
                           for (const LiveFact &fact : liveFacts) {
                               if (fact.setting == setting.key) {
                                   rows.push_back(fact.tell(view.info, isOn));
                               }
                           }
                       });
}

std::optional<unsigned> vlanIdOf(const NW_ETHER_INS_INFO_S &info)
{
    NW_LAN_CFG_VLAN_S vlan{};
    static_assert(sizeof(vlan) == sizeof(info.aucCfgTail));
    std::memcpy(&vlan, info.aucCfgTail, sizeof(vlan));

    const unsigned id = vlan.usVlanid;
    return id == 0 ? std::nullopt : std::optional{id};
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
    const std::optional<unsigned> vlan = vlanIdOf(info);
    Rows rows{line("Port " + name + ", " + settings::roleTitleOf(view.index) + " (index " +
                   std::to_string(view.index) + ", channel " + std::to_string(info.ucChannel) +
                   ")"),
              hidden("port", name), hidden("role", settings::roleOf(view.index)),
              hidden("index", view.index), hidden("channel", info.ucChannel)};
    for (Row &row : settingsAndFacts(view)) {
        rows.push_back(std::move(row));
    }
    rows.push_back({"VLAN", "vlan", vlan, vlan ? "" : "none"});
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
