// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_render.hpp"

namespace nwctl {

namespace {

template <typename Value>
Json orNull(const std::optional<Value> &value)
{
    return value ? Json(*value) : Json();
}

Json ipv4Json(const PortView &view)
{
    Json routes = Json::array();
    for (const Ipv4Route &route : view.ipv4Routes) {
        routes.push_back({{"number", route.number},
                          {"destination", route.destination},
                          {"mask", route.mask},
                          {"gateway", route.gateway}});
    }
    return {{"enabled", view.ipv4Enabled},
            {"origin", orNull(view.ipv4Origin)},
            {"address", orNull(view.ipv4Address)},
            {"mask", orNull(view.ipv4Mask)},
            {"gateway", orNull(view.ipv4Gateway)},
            {"address2", orNull(view.ipv4SecondAddress)},
            {"routes", routes}};
}

Json ipv6Json(const PortView &view)
{
    Json addresses = Json::array();
    for (const Ipv6Address &address : view.ipv6Addresses) {
        addresses.push_back({{"address", address.address},
                             {"prefix", orNull(address.prefix)},
                             {"kind", address.kind},
                             {"state", address.state}});
    }
    Json routes = Json::array();
    for (const Ipv6Route &route : view.ipv6Routes) {
        routes.push_back({{"number", route.number},
                          {"destination", orNull(route.destination)},
                          {"prefix", route.prefix},
                          {"gateway", orNull(route.gateway)}});
    }
    return {{"enabled", view.ipv6Enabled},
            {"origin", orNull(view.ipv6Origin)},
            {"addresses", addresses},
            {"gateway", orNull(view.ipv6Gateway)},
            {"gateway2", orNull(view.ipv6SecondGateway)},
            {"routes", routes}};
}

Json conflictsJson(const PortView &view)
{
    Json conflicts = Json::array();
    if (view.ipv4Conflict) {
        conflicts.push_back("ipv4");
    }
    if (view.ipv6Conflict) {
        conflicts.push_back("ipv6");
    }
    return conflicts;
}

} // namespace

Json portJson(const PortView &view)
{
    return {{"port", view.name},
            {"index", view.index},
            {"channel", view.channel},
            {"lan", view.lanEnabled},
            {"mac", orNull(view.mac)},
            {"ipv4", ipv4Json(view)},
            {"ipv6", ipv6Json(view)},
            {"vlan", orNull(view.vlanId)},
            {"conflicts", conflictsJson(view)}};
}

} // namespace nwctl
