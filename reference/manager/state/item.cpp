// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/item.hpp"

#include <algorithm>
#include <iterator>

#include "network_mng/operate_log.h"

namespace bmc::manager {

namespace {

using settings::Result;

constexpr std::uint32_t ports = NW_LOG_LAN | NW_LOG_NET_MODE | NW_LOG_LAN_REVERSE;
constexpr std::uint32_t files = NW_LOG_DNS | NW_LOG_NET_MODE | NW_LOG_LAN_REVERSE;
constexpr Result kernel = Result::kernelRefused;
constexpr Result file = Result::systemFailed;

/* By kind. */
/* clang-format off */
constexpr KindRow rows[] = {
    /*                  value  back   modules                          text              setting         refused  unsupported */
    {Kind::bond,        false, false, NW_LOG_NET_MODE,                 "bond",           "",              kernel,  Result::noBond},
    {Kind::bondMode,    true,  false, NW_LOG_NET_MODE,                 "bond mode",      "",              kernel,  kernel},
    {Kind::bondMonitor, true,  false, NW_LOG_NET_MODE,                 "bond monitor",   "",              kernel,  kernel},
    {Kind::member,      false, false, NW_LOG_NET_MODE | NW_LOG_LAN_REVERSE, "member of",  "",              kernel,  kernel},
    {Kind::link,        true,  false, ports,                           "link",           "lan",           kernel,  kernel},
    {Kind::arpIgnore,   true,  true,  ports,                           "arp_ignore",     "arp-control",   kernel,  kernel},
    {Kind::secondaries, true,  false, ports,                           "promote_secondaries", "",              kernel, kernel},
    {Kind::vlan,        false, false, ports,                           "VLAN",           "vlan",          kernel,  Result::noVlan},
    {Kind::address,     false, false, ports,                           "address",        "",              kernel,  kernel},
    {Kind::route,       false, false, ports,                           "route",          "",              kernel,  kernel},
    {Kind::linkMode,    true,  true,  NW_LOG_AN | NW_LOG_LAN_REVERSE,  "link mode",      "speed",         kernel,  Result::noLinkMode},
    {Kind::hostName,    true,  true,  NW_LOG_HOSTNAME | NW_LOG_LAN_REVERSE, "host name",      "name",          kernel,  kernel},
    {Kind::bmcName,     true,  true,  NW_LOG_HOSTNAME,                 "BMC name file",  "bmc-name",      file,    file},
    {Kind::resolver,    true,  false, files,                           "resolv.conf",    "",              file,    file},
    {Kind::lldp,        true,  false, NW_LOG_LLDP | NW_LOG_LAN_REVERSE, "LLDP",          "state",         file,    file},
    {Kind::subnet,      false, false, ports,                           "subnet",         "",              kernel,  kernel},
    {Kind::hopLimit,    true,  true,  ports,                           "hop_limit",      "hop-limit",     kernel,  kernel},
};
/* clang-format on */
static_assert([] {
    for (std::size_t kind = 0; kind < std::size(rows); kind++) {
        if (static_cast<std::size_t>(rows[kind].kind) != kind) {
            return false;
        }
    }
    return true;
}());

std::string routeText(const Item &item)
{
    return (item.address.prefix == 0 ? "default" : textOf(item.address)) +
           (isUnset(item.gateway) ? "" : " via " + textOf(item.gateway));
}

} // namespace

const KindRow &rowOf(Kind kind)
{
    return rows[static_cast<std::size_t>(kind)];
}

bool isKind(std::uint8_t number)
{
    return number < std::size(rows);
}

std::string textOf(const Item &item)
{
    const std::string name = rowOf(item.kind).text;
    switch (item.kind) {
    case Kind::address:
    case Kind::subnet:
        return name + " " + textOf(item.address);
    case Kind::route:
        return name + " " + routeText(item);
    case Kind::member:
    case Kind::hostName:
        return name + " " + item.text;
    case Kind::bondMode:
    case Kind::bondMonitor:
    case Kind::arpIgnore:
    case Kind::secondaries:
    case Kind::hopLimit:
        return name + " " + std::to_string(item.number);
    case Kind::bond:
    case Kind::vlan:
        return name + " " + item.subject;
    case Kind::link:
    case Kind::linkMode:
    case Kind::bmcName:
    case Kind::resolver:
    case Kind::lldp:
        return name;
    }
    return name;
}

const Item *valueIn(const Items &items, Kind kind, const std::string &subject)
{
    const auto found = items.lower_bound(Item{kind, subject});
    const bool isThere = found != items.end() && found->kind == kind && found->subject == subject;
    return isThere ? &*found : nullptr;
}

bool holds(const Items &items, const Address &address)
{
    return std::ranges::any_of(items, [&](const Item &item) {
        return item.kind == Kind::address && item.address.family == address.family &&
               item.address.bytes == address.bytes;
    });
}

} // namespace bmc::manager
