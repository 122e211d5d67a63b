// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_render.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string shown(const MaybeText &text)
{
    return text ? escaped(*text) : "-";
}

/* "enabled, static" */
std::string family(bool on, const MaybeText &origin)
{
    return onOff(on) + (origin ? ", " + *origin : "");
}

std::string ipv4Rows(const PortView &view)
{
    std::string rows = labelled("IPv4", family(view.ipv4Enabled, view.ipv4Origin));
    if (!view.ipv4Enabled) {
        return rows;
    }

    rows += labelled("  address", shown(view.ipv4Address));
    rows += labelled("  mask", shown(view.ipv4Mask));
    rows += labelled("  gateway", shown(view.ipv4Gateway));
    if (view.ipv4SecondAddress) {
        rows += labelled("  address 2", shown(view.ipv4SecondAddress));
    }
    for (const Ipv4Route &route : view.ipv4Routes) {
        rows += labelled("  route " + std::to_string(route.number),
                         escaped(route.destination) + " mask " + escaped(route.mask) + " via " +
                             escaped(route.gateway));
    }
    return rows;
}

std::string ipv6AddressRow(const Ipv6Address &address)
{
    constexpr std::size_t addressWidth = 28;
    constexpr std::size_t kindWidth = 12;
    const std::string prefix = address.prefix ? "/" + std::to_string(*address.prefix) : "";

    return labelled("  address", padded(escaped(address.address) + prefix, addressWidth) + " " +
                                     padded(address.kind, kindWidth) + address.state);
}

std::string ipv6Rows(const PortView &view)
{
    std::string rows = labelled("IPv6", family(view.ipv6Enabled, view.ipv6Origin));
    for (const Ipv6Address &address : view.ipv6Addresses) {
        rows += ipv6AddressRow(address);
    }
    if (!view.ipv6Enabled) {
        return rows;
    }

    rows += labelled("  gateway", shown(view.ipv6Gateway));
    if (view.ipv6SecondGateway) {
        rows += labelled("  gateway 2", shown(view.ipv6SecondGateway));
    }
    for (const Ipv6Route &route : view.ipv6Routes) {
        rows += labelled("  route " + std::to_string(route.number),
                         shown(route.destination) + "/" + std::to_string(route.prefix) + " via " +
                             shown(route.gateway));
    }
    return rows;
}

std::string conflictRows(const PortView &view)
{
    std::string rows;
    if (view.ipv4Conflict) {
        rows += labelled("Conflict",
                         "IPv4: two ports, or a port and the wireless interface, share a segment");
    }
    if (view.ipv6Conflict) {
        rows += labelled("Conflict", "IPv6: two ports share a segment");
    }
    return rows.empty() ? labelled("Conflicts", "none") : rows;
}

} // namespace

std::string portTable(const PortView &view)
{
    return "Port " + escaped(view.name) + " (index " + std::to_string(view.index) + ", channel " +
           std::to_string(view.channel) + ")\n" + labelled("LAN", onOff(view.lanEnabled)) +
           labelled("MAC", shown(view.mac)) + ipv4Rows(view) + ipv6Rows(view) +
           labelled("VLAN", view.vlanId ? std::to_string(*view.vlanId) : "none") +
           conflictRows(view);
}

} // namespace nwctl
