// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_view.hpp"

#include <algorithm>
#include <cstring>

#include "text.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t enabled = 1;

template <std::size_t Size>
MaybeText maybe(const char (&field)[Size])
{
    std::string text = boundedText(field);
    return text.empty() ? MaybeText{} : MaybeText{std::move(text)};
}

/* As the manager's configuration file names them. */
std::string originName(std::uint8_t origin)
{
    switch (origin) {
    case 0:
    case 1:
        return "static";
    case NW_ADDR_ORIGIN_DHCP:
        return "dhcp";
    case 3:
        return "slaac";
    default:
        return "origin " + std::to_string(origin);
    }
}

std::string stateName(const NW_ETHER_INS_INFO_S &info, unsigned slot)
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

void viewIpv4(const NW_ETHER_INS_INFO_S &info, PortView &view)
{
    view.ipv4Enabled = info.ucIpv4Enable == enabled;
    if (!view.ipv4Enabled) {
        return;
    }

    view.ipv4Origin = originName(info.ucIpv4Type);
    view.ipv4Address = maybe(info.szIpv4Addr);
    view.ipv4Mask = maybe(info.szIpv4Mask);
    view.ipv4Gateway = maybe(info.szIpv4Gateway);
    view.ipv4SecondAddress = maybe(info.szIpv4Addr2);
    if (info.ucIpv4Route1State == enabled) {
        view.ipv4Routes.push_back({1, boundedText(info.szIpv4Route1Addr),
                                   boundedText(info.szIpv4Route1Mask),
                                   boundedText(info.szIpv4Route1Gateway)});
    }
    if (info.ucIpv4Route2State == enabled) {
        view.ipv4Routes.push_back({2, boundedText(info.szIpv4Route2Addr),
                                   boundedText(info.szIpv4Route2Mask),
                                   boundedText(info.szIpv4Route2Gateway)});
    }
}

void addIpv6Address(const NW_ETHER_INS_INFO_S &info, unsigned slot, unsigned stateSlot,
                    std::optional<unsigned> prefix, const char *kind, PortView &view)
{
    if (auto address = maybe(info.aszIpv6Addr[slot])) {
        view.ipv6Addresses.push_back({*address, prefix, kind, stateName(info, stateSlot)});
    }
}

/* The stored count may promise more addresses than the record holds. */
void viewIpv6Addresses(const NW_ETHER_INS_INFO_S &info, PortView &view)
{
    const unsigned further = std::min<unsigned>(info.ucIpv6AddrCount, NW_IPV6_FURTHER_COUNT);

    addIpv6Address(info, NW_IPV6_SLOT_STATIC, NW_IPV6_STATE_STATIC, info.aucIpv6PrefixLen[0],
                   "static", view);
    for (unsigned i = 0; i < further; ++i) {
        addIpv6Address(info, NW_IPV6_SLOT_FURTHER + i, NW_IPV6_STATE_FURTHER + i,
                       info.aucIpv6PrefixLen[1 + i], "further", view);
    }
    addIpv6Address(info, NW_IPV6_SLOT_LINK_LOCAL, NW_IPV6_STATE_LINK_LOCAL, std::nullopt,
                   "link-local", view);
}

void viewIpv6(const NW_ETHER_INS_INFO_S &info, PortView &view)
{
    view.ipv6Enabled = info.ucIpv6Enable == enabled;
    viewIpv6Addresses(info, view);
    if (!view.ipv6Enabled) {
        return;
    }

    view.ipv6Origin = originName(info.ucIpv6Type);
    view.ipv6Gateway = maybe(info.szIpv6Gateway);
    view.ipv6SecondGateway = maybe(info.szIpv6Gateway2);
    if (info.ucIpv6Route1State == enabled) {
        view.ipv6Routes.push_back({1, maybe(info.szIpv6Route1Addr), info.ucIpv6Route1Prefix,
                                   maybe(info.szIpv6Route1Gateway)});
    }
    if (info.ucIpv6Route2State == enabled) {
        view.ipv6Routes.push_back({2, maybe(info.szIpv6Route2Addr), info.ucIpv6Route2Prefix,
                                   maybe(info.szIpv6Route2Gateway)});
    }
}

std::optional<unsigned> vlanOf(const NW_ETHER_INS_INFO_S &info)
{
    NW_LAN_CFG_VLAN_S vlan{};
    static_assert(sizeof(vlan) == sizeof(info.aucCfgTail));
    std::memcpy(&vlan, info.aucCfgTail, sizeof(vlan));

    const unsigned id = vlan.usVlanid;
    return id == 0 ? std::nullopt : std::optional{id};
}

} // namespace

PortView viewPort(unsigned index, const NW_ETHER_INS_INFO_S &info)
{
    PortView view;
    view.index = index;
    view.channel = info.ucChannel;
    view.name = boundedText(info.szEthName);
    view.lanEnabled = info.ucLanEnable == enabled;
    view.mac = maybe(info.szMacAddr);

    viewIpv4(info, view);
    viewIpv6(info, view);
    view.vlanId = vlanOf(info);
    view.ipv4Conflict = (info.ucSameSegment & NW_SAME_SEGMENT_IPV4) != 0;
    view.ipv6Conflict = (info.ucSameSegment & NW_SAME_SEGMENT_IPV6) != 0;
    return view;
}

} // namespace nwctl
